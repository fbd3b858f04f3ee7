; The installer: for one user, without an administrator. scripts/windows/installer.sh gives PRODUCT, MAKER, SITE, VERSION,
; FOLDER (the program), FILES (the list of what is in it), KILOBYTES, ICON and OUT.
; Exit codes, also of the uninstaller: 0 done, 1 cancelled, 2 failed and as before.
Unicode true
Target amd64-unicode
SetCompressor /SOLID lzma
ManifestDPIAware true
RequestExecutionLevel user

!include MUI2.nsh
!include LogicLib.nsh
!include FileFunc.nsh
!include TextFunc.nsh

!define EXE lumivar.exe
; Names for what lies in the program's folder beside the program itself. The folders are there while it is replaced.
!define LIST installed-files.txt
!define NEW .installing
!define OLD .replaced
!define UNINSTALL "Software\Microsoft\Windows\CurrentVersion\Uninstall\${PRODUCT}"
!define RUN "Software\Microsoft\Windows\CurrentVersion\Run"
!define RUN_APPROVED "Software\Microsoft\Windows\CurrentVersion\Explorer\StartupApproved\Run"
!define ERROR_ALREADY_EXISTS 183
!define SEM_NO_BOXES 0x8003

Name "${PRODUCT}"
OutFile "${OUT}"
InstallDir "$LOCALAPPDATA\Programs\${PRODUCT}"
BrandingText "${PRODUCT} ${VERSION}"
AutoCloseWindow true
VIProductVersion "${VERSION}.0"
VIAddVersionKey ProductName "${PRODUCT}"
VIAddVersionKey ProductVersion "${VERSION}"
VIAddVersionKey FileVersion "${VERSION}"
VIAddVersionKey FileDescription "${PRODUCT} Setup"
VIAddVersionKey CompanyName "${MAKER}"
VIAddVersionKey LegalCopyright "${MAKER}"

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_PAGE_CUSTOMFUNCTION_SHOW showDirectory
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
; Pages of our own take the texts of these.
!define MUI_FINISHPAGE
!define MUI_UNCONFIRMPAGE
Page custom showFinish leaveFinish
UninstPage custom un.showOptions un.leaveOptions
!insertmacro MUI_UNPAGE_INSTFILES
!include languages.nsh

Var wasRunning
Var isPurge
Var startBox
Var desktopBox
Var purgeBox

; ---- Lists of files: paths below the folder, those of folders first, the deepest first, each with a "\" at its end.

!macro EACH_LINE_OF LISTFILE LINE
    ClearErrors
    FileOpen $R8 "${LISTFILE}" r
    ${IfNot} ${Errors}
        ${Do}
            ClearErrors
            FileRead $R8 ${LINE}
            ${If} ${Errors}
                ${Break}
            ${EndIf}
            ${TrimNewLines} ${LINE} ${LINE}
            StrCpy $R7 ${LINE} 1 -1
!macroend
!macro END_LINE
        ${Loop}
        FileClose $R8
    ${EndIf}
    ClearErrors
!macroend
!define EachLineOf "!insertmacro EACH_LINE_OF"
!define EndLine "!insertmacro END_LINE"
!define IsFolder `$R7 == "\"`

; Moves what list $0 names from folder $1 to folder $2, where its place is free. $R9 is 1 when something of it stays.
Function moveListed
    StrCpy $R9 0
    ${EachLineOf} $0 $R0
        ${If} ${IsFolder}
            CreateDirectory "$2\$R0"
        ${ElseIf} ${FileExists} "$1\$R0"
            ${For} $R5 1 10 ; a virus scanner may look at it just now
                Rename "$1\$R0" "$2\$R0"
                ${IfNot} ${FileExists} "$1\$R0"
                ${OrIf} ${FileExists} "$2\$R0"
                    ${Break}
                ${EndIf}
                Sleep 200
            ${Next}
            ${If} ${FileExists} "$1\$R0"
                StrCpy $R9 1
            ${EndIf}
        ${EndIf}
    ${EndLine}
FunctionEnd

; FILE is what cannot be written to while a program runs that is in the way.
!macro SHARED un FILE
; The folders that list $0 names, where nothing is left in them.
Function ${un}removeFolders
    ${EachLineOf} $0 $R0
        ${If} ${IsFolder}
            RMDir "$INSTDIR\$R0"
        ${EndIf}
    ${EndLine}
FunctionEnd

; One installer or uninstaller of a user at a time.
Function ${un}beAlone
    System::Call 'kernel32::CreateMutexW(p 0, i 0, w "${PRODUCT}Setup") p .r1 ?e'
    Pop $0
    ${If} $0 = ${ERROR_ALREADY_EXISTS}
        FindWindow $0 "#32770" "$(^SetupCaption)"
        System::Call "user32::SetForegroundWindow(p r0)"
        SetErrorLevel 2
        Quit
    ${EndIf}
FunctionEnd

; $R9 is 1 while such a program runs.
Function ${un}checkInUse
    StrCpy $R9 0
    ${If} ${FileExists} "$INSTDIR\${FILE}"
        ClearErrors
        FileOpen $R8 "$INSTDIR\${FILE}" a
        ${If} ${Errors}
            StrCpy $R9 1
        ${Else}
            FileClose $R8
        ${EndIf}
        ClearErrors
    ${EndIf}
FunctionEnd

; Asks the program to end, strips dark and settings written, and waits for that. Gives up where it does not.
Function ${un}endProgram
    Call ${un}checkInUse
    ${DoWhile} $R9 = 1
        StrCpy $0 1
        System::Call "kernel32::SetErrorMode(i ${SEM_NO_BOXES}) i .R6"
        ExecWait '"$INSTDIR\${EXE}" --quit' $0
        System::Call "kernel32::SetErrorMode(i R6)"
        ${If} $0 = 0 ; from here on this user's own does not run, be the file in another user's hands
            StrCpy $wasRunning 1
        ${EndIf}
        ${For} $R5 1 25 ; the process lives on for a moment
            Call ${un}checkInUse
            ${If} $R9 = 0
                Return
            ${EndIf}
            Sleep 200
        ${Next}
        MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "$(textRunning)" /SD IDCANCEL IDRETRY again
        SetErrorLevel 2
        Abort "$(textRunning)"
        again:
    ${Loop}
FunctionEnd
!macroend
!insertmacro SHARED "" ${EXE}
; Files in use can be moved but not removed, so here the crash reporter is in the way as well.
!insertmacro SHARED un. Qt5Core.dll

; ---- Installing: all is unpacked beside the program first, then files change places, so that a full disk or a program
; that does not end leaves what was there.

; Leads back from an exchange that did not come to its end, now or at an earlier time. The list is the last to come.
; $3 is 1 when something could not: all stays for another attempt.
Function restore
    StrCpy $3 0
    ${If} ${FileExists} "$INSTDIR\${LIST}"
    ${OrIfNot} ${FileExists} "$INSTDIR\${OLD}"
        Return
    ${EndIf}
    StrCpy $0 "$INSTDIR\${NEW}\${LIST}"
    StrCpy $1 "$INSTDIR"
    StrCpy $2 "$INSTDIR\${NEW}"
    Call moveListed
    StrCpy $1 "$INSTDIR\${OLD}"
    StrCpy $2 "$INSTDIR"
    Call moveListed
    StrCpy $3 $R9
    Call removeFolders
    StrCpy $0 "$INSTDIR\${OLD}\${LIST}"
    Call moveListed
    IntOp $3 $3 | $R9
    ${If} $3 = 0
    ${AndIf} ${FileExists} "$0"
        Rename "$0" "$INSTDIR\${LIST}"
        ${If} ${FileExists} "$0"
            StrCpy $3 1
        ${EndIf}
    ${EndIf}
FunctionEnd

Function fail
    SetErrorLevel 2
    Abort "$(textFailed)"
FunctionEnd

Function exchange
    CreateDirectory "$INSTDIR\${OLD}"
    ${If} ${FileExists} "$INSTDIR\${LIST}"
        Rename "$INSTDIR\${LIST}" "$INSTDIR\${OLD}\${LIST}"
        ${If} ${FileExists} "$INSTDIR\${LIST}"
            Call fail
        ${EndIf}
    ${EndIf}
    StrCpy $1 "$INSTDIR"
    StrCpy $2 "$INSTDIR\${OLD}"
    StrCpy $0 "$INSTDIR\${OLD}\${LIST}"
    Call moveListed
    StrCpy $3 $R9
    StrCpy $0 "$INSTDIR\${NEW}\${LIST}" ; what lies there under the same name
    Call moveListed
    IntOp $3 $3 | $R9
    StrCpy $0 "$INSTDIR\${OLD}\${LIST}" ; now, as a new folder may be empty
    Call removeFolders
    StrCpy $0 "$INSTDIR\${NEW}\${LIST}"
    StrCpy $1 "$INSTDIR\${NEW}"
    StrCpy $2 "$INSTDIR"
    Call moveListed
    IntOp $3 $3 | $R9
    ${If} $3 = 0
        Rename "$INSTDIR\${NEW}\${LIST}" "$INSTDIR\${LIST}"
    ${EndIf}
    ${IfNot} ${FileExists} "$INSTDIR\${LIST}"
        Call fail
    ${EndIf}
FunctionEnd

; Ours alone; the folder itself may be anybody's.
Function removeLeftovers
    SetOutPath "$INSTDIR" ; no process may stand in what is removed
    RMDir /r "$INSTDIR\${NEW}"
    RMDir /r "$INSTDIR\${OLD}"
FunctionEnd

Section
    Call restore
    ${If} $3 = 1
        Call fail
    ${EndIf}
    Call removeLeftovers
    ClearErrors
    SetOutPath "$INSTDIR\${NEW}"
    File /r "${FOLDER}/*"
    File "/oname=${LIST}" "${FILES}"
    WriteUninstaller "$INSTDIR\${NEW}\Uninstall.exe"
    ${If} ${Errors}
        Call fail
    ${EndIf}
    SetOutPath "$INSTDIR"
    Call endProgram
    Call exchange
    Call removeLeftovers

    CreateShortcut "$SMPROGRAMS\${PRODUCT}.lnk" "$INSTDIR\${EXE}"
    WriteRegStr HKCU "${UNINSTALL}" DisplayName "${PRODUCT}"
    WriteRegStr HKCU "${UNINSTALL}" DisplayVersion "${VERSION}"
    WriteRegStr HKCU "${UNINSTALL}" DisplayIcon "$INSTDIR\${EXE}"
    WriteRegStr HKCU "${UNINSTALL}" Publisher "${MAKER}"
!if "${SITE}" != ""
    WriteRegStr HKCU "${UNINSTALL}" URLInfoAbout "http://${SITE}"
!endif
    WriteRegStr HKCU "${UNINSTALL}" InstallLocation "$INSTDIR"
    WriteRegStr HKCU "${UNINSTALL}" UninstallString '"$INSTDIR\Uninstall.exe"'
    WriteRegStr HKCU "${UNINSTALL}" QuietUninstallString '"$INSTDIR\Uninstall.exe" /S'
    WriteRegDWORD HKCU "${UNINSTALL}" EstimatedSize ${KILOBYTES}
    WriteRegDWORD HKCU "${UNINSTALL}" NoModify 1
    WriteRegDWORD HKCU "${UNINSTALL}" NoRepair 1
    ${If} ${Silent}
    ${AndIf} $wasRunning = 1
        Exec '"$INSTDIR\${EXE}" --auto_startup'
    ${EndIf}
SectionEnd

Function .onInit
    Call beAlone
    ; An upgrade stays where the program is, or what an upgrade that was cut has left of it.
    ReadRegStr $0 HKCU "${UNINSTALL}" InstallLocation
    ${If} $0 != ""
    ${AndIf} ${FileExists} "$0\*.*"
        StrCpy $INSTDIR $0
    ${EndIf}
FunctionEnd

Function .onInstFailed
    Call restore
    ${If} $3 = 0
        Call removeLeftovers
    ${EndIf}
    SetOutPath "$TEMP"
    RMDir "$INSTDIR" ; where nothing else is in it
    ${If} $wasRunning = 1
        Exec '"$INSTDIR\${EXE}" --auto_startup'
    ${EndIf}
FunctionEnd

; ---- Pages

Function showDirectory
    ${If} ${FileExists} "$INSTDIR\${LIST}"
        EnableWindow $mui.DirectoryPage.Directory 0
        EnableWindow $mui.DirectoryPage.BrowseButton 0
        SendMessage $HWNDPARENT ${WM_NEXTDLGCTL} $mui.Button.Next 1
    ${EndIf}
FunctionEnd

Function showFinish
    !insertmacro MUI_HEADER_TEXT "$(MUI_TEXT_FINISH_TITLE)" "$(MUI_TEXT_FINISH_SUBTITLE)"
    nsDialogs::Create 1018
    Pop $0
    nsDialogs::SetRTL $(^RTL)
    ${NSD_CreateCheckbox} 0 10u 100% 12u "$(MUI_TEXT_FINISH_RUN)"
    Pop $startBox
    ${NSD_Check} $startBox
    ${NSD_CreateCheckbox} 0 28u 100% 12u "$(textDesktop)"
    Pop $desktopBox
    GetDlgItem $0 $HWNDPARENT 1
    SendMessage $0 ${WM_SETTEXT} 0 "STR:$(MUI_BUTTONTEXT_FINISH)"
    GetDlgItem $0 $HWNDPARENT 3
    ShowWindow $0 ${SW_HIDE}
    nsDialogs::Show
FunctionEnd

Function leaveFinish
    SetOutPath "$INSTDIR"
    ${NSD_GetState} $desktopBox $0
    ${If} $0 = ${BST_CHECKED}
        CreateShortcut "$DESKTOP\${PRODUCT}.lnk" "$INSTDIR\${EXE}"
    ${EndIf}
    ${NSD_GetState} $startBox $0
    ${If} $0 = ${BST_CHECKED}
        Exec '"$INSTDIR\${EXE}"'
    ${EndIf}
FunctionEnd

; ---- Uninstalling

Function un.onInit
    Call un.beAlone
    ${GetParameters} $0
    ClearErrors
    ${GetOptions} $0 "/PURGE" $1
    ${IfNot} ${Errors}
        StrCpy $isPurge 1
    ${EndIf}
    ClearErrors
FunctionEnd

Function un.showOptions
    !insertmacro MUI_HEADER_TEXT "$(MUI_UNTEXT_CONFIRM_TITLE)" "$(MUI_UNTEXT_CONFIRM_SUBTITLE)"
    nsDialogs::Create 1018
    Pop $0
    nsDialogs::SetRTL $(^RTL)
    ${NSD_CreateLabel} 0 10u 100% 24u "$INSTDIR"
    Pop $0
    ${NSD_CreateCheckbox} 0 36u 100% 12u "$(textPurge)"
    Pop $purgeBox
    ${If} $isPurge = 1
        ${NSD_Check} $purgeBox
    ${EndIf}
    GetDlgItem $0 $HWNDPARENT 1
    SendMessage $0 ${WM_SETTEXT} 0 "STR:$(^UninstallBtn)"
    nsDialogs::Show
FunctionEnd

Function un.leaveOptions
    ${NSD_GetState} $purgeBox $isPurge
FunctionEnd

Section Uninstall
    SetAutoClose false
    Call un.endProgram
    SetOutPath "$TEMP"
    StrCpy $0 "$INSTDIR\${LIST}"
    ${EachLineOf} $0 $R0
        ${IfNot} ${IsFolder}
            Delete "$INSTDIR\$R0"
        ${EndIf}
    ${EndLine}
    Call un.removeFolders
    Delete "$0"
    RMDir /r "$INSTDIR\${NEW}"
    RMDir /r "$INSTDIR\${OLD}"
    RMDir "$INSTDIR"

    Delete "$SMPROGRAMS\${PRODUCT}.lnk"
    Delete "$DESKTOP\${PRODUCT}.lnk"
    DeleteRegKey HKCU "${UNINSTALL}"
    ; A value that starts another copy is that copy's.
    ReadRegStr $1 HKCU "${RUN}" "${PRODUCT}"
    StrCpy $2 '"$INSTDIR\${EXE}"'
    StrLen $3 $2
    StrCpy $1 $1 $3
    ${If} $1 == $2
        DeleteRegValue HKCU "${RUN}" "${PRODUCT}"
        DeleteRegValue HKCU "${RUN_APPROVED}" "${PRODUCT}"
    ${EndIf}
    ${If} $isPurge = 1
        RMDir /r "$LOCALAPPDATA\${PRODUCT}"
    ${EndIf}
SectionEnd

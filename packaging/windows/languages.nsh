; The program's languages; the system's chooses, and the first stands in for others.
!macro LANGUAGE NAME RUNNING FAILED DESKTOP PURGE
    !insertmacro MUI_LANGUAGE ${NAME}
    LangString textRunning ${LANG_${NAME}} "${RUNNING}"
    LangString textFailed ${LANG_${NAME}} "${FAILED}"
    LangString textDesktop ${LANG_${NAME}} "${DESKTOP}"
    LangString textPurge ${LANG_${NAME}} "${PURGE}"
!macroend
!insertmacro LANGUAGE English \
    "$(^Name) is still running. Please quit it, then try again." \
    "$(^Name) could not be installed. What was there before has been kept." \
    "Put a shortcut on the desktop" \
    "Also delete my settings and logs"
!insertmacro LANGUAGE SimpChinese \
    "$(^Name) 仍在运行。请先退出它，然后重试。" \
    "无法安装 $(^Name)。原有的版本保持不变。" \
    "在桌面上创建快捷方式" \
    "同时删除我的设置和日志"
!insertmacro LANGUAGE TradChinese \
    "$(^Name) 仍在執行。請先結束它，然後再試一次。" \
    "無法安裝 $(^Name)。原有的版本維持不變。" \
    "在桌面上建立捷徑" \
    "同時刪除我的設定和記錄檔"
!insertmacro LANGUAGE German \
    "$(^Name) läuft noch. Bitte beenden Sie es und versuchen Sie es dann erneut." \
    "$(^Name) konnte nicht installiert werden. Was vorher da war, ist unverändert." \
    "Verknüpfung auf dem Desktop anlegen" \
    "Auch meine Einstellungen und Protokolle löschen"
!insertmacro LANGUAGE Japanese \
    "$(^Name) はまだ実行中です。終了してから、もう一度お試しください。" \
    "$(^Name) をインストールできませんでした。以前の状態のままです。" \
    "デスクトップにショートカットを作成する" \
    "設定とログも削除する"
!insertmacro LANGUAGE Korean \
    "$(^Name)이(가) 아직 실행 중입니다. 종료한 후 다시 시도하세요." \
    "$(^Name)을(를) 설치하지 못했습니다. 이전 상태는 그대로입니다." \
    "바탕 화면에 바로 가기 만들기" \
    "설정과 로그도 삭제"
!insertmacro LANGUAGE Spanish \
    "$(^Name) todavía se está ejecutando. Ciérrelo y vuelva a intentarlo." \
    "No se ha podido instalar $(^Name). Lo que había antes sigue igual." \
    "Crear un acceso directo en el escritorio" \
    "Eliminar también mis ajustes y registros"
!insertmacro LANGUAGE Portuguese \
    "$(^Name) ainda está em execução. Feche-o e tente novamente." \
    "Não foi possível instalar o $(^Name). O que havia antes continua igual." \
    "Criar um atalho no ambiente de trabalho" \
    "Eliminar também as minhas definições e registos"
!insertmacro LANGUAGE PortugueseBR \
    "$(^Name) ainda está em execução. Feche-o e tente novamente." \
    "Não foi possível instalar o $(^Name). O que havia antes continua igual." \
    "Criar um atalho na área de trabalho" \
    "Excluir também minhas configurações e registros"
!insertmacro LANGUAGE Russian \
    "$(^Name) ещё работает. Закройте программу и повторите попытку." \
    "Не удалось установить $(^Name). То, что было раньше, осталось без изменений." \
    "Создать ярлык на рабочем столе" \
    "Удалить также мои настройки и журналы"
!insertmacro LANGUAGE Arabic \
    "لا يزال $(^Name) قيد التشغيل. أغلقه ثم أعد المحاولة." \
    "تعذر تثبيت $(^Name). ما كان موجودًا بقي كما هو." \
    "إنشاء اختصار على سطح المكتب" \
    "حذف إعداداتي وسجلاتي أيضًا"
!insertmacro LANGUAGE Vietnamese \
    "$(^Name) vẫn đang chạy. Hãy thoát chương trình rồi thử lại." \
    "Không thể cài đặt $(^Name). Những gì có trước đó vẫn giữ nguyên." \
    "Tạo lối tắt trên màn hình nền" \
    "Xóa cả cài đặt và nhật ký của tôi"

# One folder that holds the whole program, laid out as in the build tree; scripts/windows/build.sh adds the libraries
# it stands on. The toolkit's own plug-ins keep to a folder that qt.conf names.
set(programs lumivar CrashReporter)
add_custom_target(lumivar_installed DEPENDS ${programs} lumivar_archive lumivar_data lumivar_pictures)
install(TARGETS ${programs} LibLumivar lumivar_devices lumivar_effect_contract lumivar_archive
    RUNTIME DESTINATION . LIBRARY DESTINATION .)
install(FILES ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/defaults.json ${CMAKE_SOURCE_DIR}/packaging/windows/qt.conf
    DESTINATION .)
foreach(folder controler_config deviceEnumerators effects images styles)
    install(DIRECTORY ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/${folder} DESTINATION .)
endforeach()

foreach(plugin platforms/qwindows platforms/qoffscreen styles/qwindowsvistastyle
        imageformats/qgif imageformats/qico imageformats/qjpeg)
    get_filename_component(folder ${plugin} DIRECTORY)
    install(FILES ${LUMIVAR_WINDOWS_PREFIX}/plugins/${plugin}.dll DESTINATION plugins/${folder})
endforeach()

# A program with a window of its own and no console; icon, version and manifest are compiled into it.
enable_language(RC)
function(lumivar_windows_program target description)
    set(LUMIVAR_WINDOWS_MANIFEST ${CMAKE_SOURCE_DIR}/packaging/windows/program.manifest)
    set(LUMIVAR_WINDOWS_ICON ${CMAKE_BINARY_DIR}/generated/icons/lumivar.ico)
    set(resources ${CMAKE_BINARY_DIR}/generated/${target}.rc)
    configure_file(${CMAKE_SOURCE_DIR}/packaging/windows/program.rc.in ${resources} @ONLY)
    set_source_files_properties(${resources} PROPERTIES
        OBJECT_DEPENDS "${LUMIVAR_WINDOWS_ICON};${LUMIVAR_WINDOWS_MANIFEST}")
    target_sources(${target} PRIVATE ${resources})
    set_target_properties(${target} PROPERTIES WIN32_EXECUTABLE ON)
    add_dependencies(${target} lumivar_pictures)
endfunction()

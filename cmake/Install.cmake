# What an installed program consists of: the shape of the build tree under one private folder, a link in the
# path, and what the desktop wants to know. Developer's tools, example plug-ins and tests stay behind.
# `cmake --build ... --target lumivar_installed` builds just that.
include(GNUInstallDirs)
set(home lib/lumivar) # fixed: the policy names the place of grant-access, which tools/ installs there
set(linux ${CMAKE_SOURCE_DIR}/packaging/linux)
set(programs lumivar CrashReporter)
add_custom_target(lumivar_installed DEPENDS ${programs} lumivar_archive lumivar_data lumivar_pictures)

install(TARGETS ${programs} RUNTIME DESTINATION ${home}/bin)
install(TARGETS LibLumivar lumivar_devices lumivar_effect_contract lumivar_archive LIBRARY DESTINATION ${home}/lib)
install(FILES ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/defaults.json DESTINATION ${home}/bin)
foreach(folder controler_config deviceEnumerators effects images styles)
    install(DIRECTORY ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/${folder} DESTINATION ${home}/bin)
endforeach()

file(RELATIVE_PATH program ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_PREFIX}/${home}/bin/lumivar)
set(link ${CMAKE_BINARY_DIR}/generated/link/lumivar)
file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/generated/link)
file(CREATE_LINK ${program} ${link} SYMBOLIC)
install(FILES ${link} DESTINATION ${CMAKE_INSTALL_BINDIR})

string(TIMESTAMP RELEASE_DATE %Y-%m-%d UTC)
set(metainfo org.lumivar.Lumivar.metainfo.xml)
configure_file(${linux}/${metainfo}.in ${CMAKE_BINARY_DIR}/generated/${metainfo} @ONLY)
install(FILES ${CMAKE_BINARY_DIR}/generated/${metainfo} DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES ${linux}/org.lumivar.Lumivar.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(DIRECTORY ${LUMIVAR_ICON_THEME} DESTINATION ${CMAKE_INSTALL_DATADIR}/icons)
install(FILES ${linux}/lumivar.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES ${linux}/70-lumivar.rules DESTINATION lib/udev/rules.d)
install(FILES ${linux}/org.lumivar.Lumivar.policy DESTINATION ${CMAKE_INSTALL_DATADIR}/polkit-1/actions)

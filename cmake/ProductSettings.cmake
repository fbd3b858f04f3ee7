# What a maker who ships the program fills in. Everything may stay empty: then no request ever leaves the
# machine, and the rows of the help dialog that would show nothing are hidden.
set(LUMIVAR_SERVICE_ADDRESS "" CACHE STRING
    "Base address of the online service, such as https://example.org/lumivar; docs/online.md tells what it answers")
set(LUMIVAR_SERVICE_KEY "" CACHE STRING
    "Ed25519 public key of the service in base64; without it no version is looked for and none downloaded")
set(LUMIVAR_SUPPORT_MAIL "" CACHE STRING "Mail address for users")
set(LUMIVAR_WEB_SITE "" CACHE STRING "Web site for users, without http://")
set(LUMIVAR_MAKER "Lumivar developers" CACHE STRING "Who ships it, as Windows names him in its lists and file properties")
set(LUMIVAR_PRODUCT "Lumivar" CACHE INTERNAL "What it is called; the program's own texts and folders bear the name as well")
configure_file(${CMAKE_SOURCE_DIR}/src/support/net/ProductSettings.in.h
    ${CMAKE_BINARY_DIR}/generated/CompiledProductSettings.h @ONLY)

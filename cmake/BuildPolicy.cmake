# One place for language level, warnings and Qt's strict defines: every target links lumivar_policy.
option(LUMIVAR_TESTS "Build the tests" ON)
option(LUMIVAR_BENCH "Build the benchmarks" OFF)
option(LUMIVAR_FUZZ "Link the fuzzer's engine to the fuzz targets; needs clang" OFF)
option(LUMIVAR_WERROR "Treat warnings as errors" ON)
option(LUMIVAR_PICTURE_GENERATOR_ALONE "Build nothing but picture-generator" OFF)
set(LUMIVAR_PICTURE_GENERATOR "" CACHE FILEPATH "For a cross-build: a picture-generator that runs on this machine")
set(LUMIVAR_SANITIZE "" CACHE STRING "Sanitizers for -fsanitize=, empty for none")

set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_AUTOMOC ON)
set(CMAKE_AUTORCC ON)
set(CMAKE_AUTOUIC ON)
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)
set(CMAKE_INSTALL_RPATH $ORIGIN/../lib) # bin/ and lib/ stay beside each other
if(NOT CMAKE_BUILD_TYPE)
    set(CMAKE_BUILD_TYPE RelWithDebInfo)
endif()

find_program(CCACHE ccache)
if(CCACHE)
    # Paths are made relative so that several checkouts share one cache.
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env CCACHE_BASEDIR=${CMAKE_SOURCE_DIR}
        CCACHE_NOHASHDIR=1 ${CCACHE})
endif()

add_library(lumivar_policy INTERFACE)
target_include_directories(lumivar_policy INTERFACE ${CMAKE_SOURCE_DIR}/src)
target_compile_options(lumivar_policy INTERFACE -Wall -Wextra -Wshadow -Woverloaded-virtual
    $<$<NOT:$<BOOL:${WIN32}>>:-Wnon-virtual-dtor> # the system's own interfaces there have none
    $<$<BOOL:${LUMIVAR_WERROR}>:-Werror>)
target_compile_definitions(lumivar_policy INTERFACE
    QT_MESSAGELOGCONTEXT        # file and line in every log line, in release as well
    QT_DEPRECATED_WARNINGS QT_DISABLE_DEPRECATED_BEFORE=0x050F00
    QT_NO_CAST_TO_ASCII QT_NO_CAST_FROM_BYTEARRAY QT_NO_URL_CAST_FROM_STRING
    QT_NO_FOREACH QT_NO_NARROWING_CONVERSIONS_IN_CONNECT QT_STRICT_ITERATORS)
if(WIN32)
    target_compile_definitions(lumivar_policy INTERFACE _WIN32_WINNT=0x0A00 WINVER=0x0A00 NOMINMAX WIN32_LEAN_AND_MEAN)
    include(WindowsResources)
endif()
if(LUMIVAR_SANITIZE)
    add_compile_options(-fsanitize=${LUMIVAR_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=undefined)
    add_link_options(-fsanitize=${LUMIVAR_SANITIZE})
endif()

# The sources of one platform concern: <name>_win.cpp on Windows, <name>_<suffix>.cpp elsewhere.
function(lumivar_platform_source out name suffix)
    if(WIN32)
        set(${out} ${name}_win.cpp PARENT_SCOPE)
    else()
        set(${out} ${name}_${suffix}.cpp PARENT_SCOPE)
    endif()
endfunction()

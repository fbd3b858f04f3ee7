# Cross-builds for 64-bit Windows with Debian's mingw compilers. LUMIVAR_WINDOWS_PREFIX, from the environment on the
# first configuration, names the folder that scripts/windows/dependencies.sh filled.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_SYSTEM_VERSION 10.0)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

if(DEFINED ENV{LUMIVAR_WINDOWS_PREFIX})
    set(LUMIVAR_WINDOWS_PREFIX $ENV{LUMIVAR_WINDOWS_PREFIX} CACHE PATH "The dependencies, built for Windows")
endif()
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES LUMIVAR_WINDOWS_PREFIX)
set(CMAKE_FIND_ROOT_PATH ${LUMIVAR_WINDOWS_PREFIX} /usr/x86_64-w64-mingw32)
set(CMAKE_PREFIX_PATH ${LUMIVAR_WINDOWS_PREFIX})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
# Not one package of the system that builds may be taken for one of the target.
set(ENV{PKG_CONFIG_LIBDIR} ${LUMIVAR_WINDOWS_PREFIX}/lib/pkgconfig:/usr/x86_64-w64-mingw32/lib/pkgconfig)
set(ENV{PKG_CONFIG_PATH} "")

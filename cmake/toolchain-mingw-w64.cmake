# Cross-building for 64-bit Windows with Debian's MinGW-w64. The variant with POSIX threads is the one that has
# std::thread and std::mutex, on which Qt insists.

set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

# LETTERLIFT_CROSS_PREFIXES: where the libraries for Windows are installed, see tools/windows.
set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES LETTERLIFT_CROSS_PREFIXES)
set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32 ${LETTERLIFT_CROSS_PREFIXES})
list(PREPEND CMAKE_PREFIX_PATH ${LETTERLIFT_CROSS_PREFIXES})
# The packages of the machine that builds are of no use here.
list(TRANSFORM LETTERLIFT_CROSS_PREFIXES APPEND "/lib/pkgconfig" OUTPUT_VARIABLE _pkgconfig)
list(JOIN _pkgconfig ":" _pkgconfig)
set(ENV{PKG_CONFIG_LIBDIR} "${_pkgconfig}")
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

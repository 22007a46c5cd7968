# Windows, 32 bits, by Debian's mingw-w64. The posix compilers are the ones with std::thread.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR i686)

set(CMAKE_C_COMPILER i686-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER i686-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER i686-w64-mingw32-windres)

set(CMAKE_FIND_ROOT_PATH /usr/i686-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# Resource scripts are UTF-8.
set(CMAKE_RC_FLAGS_INIT "-c 65001")
# One file that needs nothing but Windows, without symbols.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static -s")
# SSE2 is not this compiler's default, and Windows keeps the stack of callbacks aligned to 4 bytes.
set(CMAKE_CXX_FLAGS_INIT "-msse2 -mfpmath=sse -mstackrealign")

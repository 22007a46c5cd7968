# Debian's mingw-w64, for the processor that the including file names in TALLOWMERE_PROCESSOR. The
# posix compilers are the ones with std::thread.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR ${TALLOWMERE_PROCESSOR})
set(prefix ${TALLOWMERE_PROCESSOR}-w64-mingw32)

set(CMAKE_C_COMPILER ${prefix}-gcc-posix)
set(CMAKE_CXX_COMPILER ${prefix}-g++-posix)
set(CMAKE_RC_COMPILER ${prefix}-windres)

set(CMAKE_FIND_ROOT_PATH /usr/${prefix})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# Resource scripts are UTF-8.
set(CMAKE_RC_FLAGS_INIT "-c 65001")
# The compiler notes what they include, as for C++.
set(CMAKE_DEPFILE_FLAGS_RC "--preprocessor-arg=-MD")
foreach(argument -MF <DEP_FILE> -MT <DEP_TARGET>)
  string(APPEND CMAKE_DEPFILE_FLAGS_RC " --preprocessor-arg=${argument}")
endforeach()
# The program is one file without symbols that needs only Windows.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static -s")

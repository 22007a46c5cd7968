# Windows, 32 bits.
set(TALLOWMERE_PROCESSOR i686)
include(${CMAKE_CURRENT_LIST_DIR}/mingw.cmake)
# SSE2 is not this compiler's default, and Windows keeps the stack of callbacks aligned to 4 bytes.
set(CMAKE_CXX_FLAGS_INIT "-msse2 -mfpmath=sse -mstackrealign")

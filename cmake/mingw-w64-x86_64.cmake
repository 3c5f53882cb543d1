# Cross-compiling for 64-bit Windows with MinGW-w64 from Debian, running the results under Wine.
#   cmake -S . -B build-windows -DCMAKE_TOOLCHAIN_FILE=cmake/mingw-w64-x86_64.cmake
# The -posix thread model compilers: the -win32 ones have no std::mutex.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# Programs built here run under Wine: test discovery, ctest and the whole-program tests alike.
# The wrapper keeps Wine quiet and its prefix inside the build folder.
set(CMAKE_CROSSCOMPILING_EMULATOR
    env VFC_WINEPREFIX=${CMAKE_BINARY_DIR}/wineprefix ${CMAKE_CURRENT_LIST_DIR}/wine-run.sh)

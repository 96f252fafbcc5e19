# Cross build for 64-bit Windows with Debian's MinGW-w64. The posix variant has std::thread and std::mutex.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(kx_triplet x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${kx_triplet}-gcc-posix)
set(CMAKE_CXX_COMPILER ${kx_triplet}-g++-posix)
set(CMAKE_RC_COMPILER ${kx_triplet}-windres)

set(CMAKE_FIND_ROOT_PATH /usr/${kx_triplet})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)

# What windres reads is UTF-8.
set(CMAKE_RC_FLAGS_INIT "-c 65001")

set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../scripts/wine-run)

# The MinGW-w64 cross toolchain for the triple in VV_MINGW_TRIPLE, with the
# posix-thread compilers (the win32-thread variant lacks std::mutex, which
# GoogleTest needs). Included by the per-architecture toolchain files.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_C_COMPILER ${VV_MINGW_TRIPLE}-gcc-posix)
set(CMAKE_CXX_COMPILER ${VV_MINGW_TRIPLE}-g++-posix)
set(CMAKE_RC_COMPILER ${VV_MINGW_TRIPLE}-windres)
set(CMAKE_FIND_ROOT_PATH /usr/${VV_MINGW_TRIPLE})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
# Tests run under Wine, through a wrapper that picks the prefix and silences it.
set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../scripts/wine-run.sh)

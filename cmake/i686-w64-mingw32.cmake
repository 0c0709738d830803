# Cross toolchain: 32-bit Windows, the product's architecture.
set(CMAKE_SYSTEM_PROCESSOR i686)
set(VV_MINGW_TRIPLE i686-w64-mingw32)
include(${CMAKE_CURRENT_LIST_DIR}/mingw-w64.cmake)

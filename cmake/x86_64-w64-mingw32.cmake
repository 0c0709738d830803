# Cross toolchain: 64-bit Windows. Not the product (Metadata.dll is 32-bit);
# it runs the Windows suites on machines that cannot execute 32-bit programs,
# where only 64-bit Wine works.
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(VV_MINGW_TRIPLE x86_64-w64-mingw32)
include(${CMAKE_CURRENT_LIST_DIR}/mingw-w64.cmake)

# Cross compilation for 32-bit Windows with Clang.
include(${CMAKE_CURRENT_LIST_DIR}/win32.cmake)
include(${CMAKE_CURRENT_LIST_DIR}/clang.cmake)

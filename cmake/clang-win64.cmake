# Cross compilation for 64-bit Windows with Clang.
include(${CMAKE_CURRENT_LIST_DIR}/win64.cmake)
include(${CMAKE_CURRENT_LIST_DIR}/clang.cmake)

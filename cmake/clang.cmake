# Clang in the place of GCC. The platform's headers and libraries stay MinGW-w64's, and the standard
# library stays that of its GCC, whose folder's name ("12-posix") Clang does not look for by itself.
set(mingw ${CMAKE_SYSTEM_PROCESSOR}-w64-mingw32)
file(GLOB gcc /usr/lib/gcc/${mingw}/*-posix)
set(CMAKE_C_COMPILER clang)
set(CMAKE_CXX_COMPILER clang++)
set(CMAKE_C_COMPILER_TARGET ${CMAKE_SYSTEM_PROCESSOR}-w64-windows-gnu)
set(CMAKE_CXX_COMPILER_TARGET ${CMAKE_C_COMPILER_TARGET})

set(platform "-nostdlibinc -idirafter /usr/${mingw}/include -Wno-unused-command-line-argument")
string(APPEND CMAKE_C_FLAGS_INIT " ${platform}")
# The last two tell what GCC built the standard library with: thread-local variables that are reached
# through calls, and a comparison of types that is not inline.
string(APPEND CMAKE_CXX_FLAGS_INIT " -isystem ${gcc}/include/c++"
       " -isystem ${gcc}/include/c++/${mingw} ${platform}"
       " -femulated-tls -D__GXX_TYPEINFO_EQUALITY_INLINE=0")
set(linking "-B${gcc} -L${gcc} -pthread -fuse-ld=/usr/bin/${mingw}-ld")
set(CMAKE_EXE_LINKER_FLAGS_INIT ${linking})
set(CMAKE_SHARED_LINKER_FLAGS_INIT ${linking})

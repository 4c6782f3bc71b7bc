# The compiler and what holds for every target.

if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    message(FATAL_ERROR
        "This is g++ ${CMAKE_CXX_COMPILER_VERSION}, which destroys closures twice in co_await expressions: the program would "
        "corrupt its memory. Use clang 19 (package clang-19): cmake --preset release, or -DCMAKE_CXX_COMPILER=clang++-19.")
endif()

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

if(NOT CMAKE_BUILD_TYPE)
    set(CMAKE_BUILD_TYPE Release CACHE STRING "Release, RelWithDebInfo or Debug" FORCE)
endif()

option(FOLVANE_SANITIZE "Build with AddressSanitizer and UndefinedBehaviorSanitizer" OFF)
if(FOLVANE_SANITIZE)
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
endif()

find_program(FOLVANE_LLD NAMES ld.lld-19 ld.lld)
mark_as_advanced(FOLVANE_LLD)
if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang" AND FOLVANE_LLD)
    add_link_options(-fuse-ld=lld)
endif()

# Libraries of which nothing is called (Qt names OpenGL for every program with pictures) are not loaded at start.
add_link_options(-Wl,--as-needed)

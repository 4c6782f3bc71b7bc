# Linked privately by every target of our own. Headers of libraries are system headers and stay silent.

add_library(folvane-warnings INTERFACE)
target_compile_options(folvane-warnings INTERFACE
    -Werror
    -Wall
    -Wextra
    -Wpedantic
    -Wshadow
    -Wnon-virtual-dtor
    -Woverloaded-virtual
    -Wold-style-cast
    -Wcast-align
    -Wextra-semi
    -Wimplicit-fallthrough
    $<$<CXX_COMPILER_ID:Clang>:-Wshorten-64-to-32>
    $<$<CXX_COMPILER_ID:Clang>:-Wfloat-conversion>)

# Documents are parsed into very many small objects on a thread of their own, which the C library's allocator serves slowly:
# with jemalloc a document of 5,000 pages opens in three quarters of the time. The sanitizers bring an allocator of their own.

add_library(folvane-allocator INTERFACE)
if(NOT FOLVANE_SANITIZE)
    pkg_check_modules(jemalloc REQUIRED IMPORTED_TARGET jemalloc)
    target_link_libraries(folvane-allocator INTERFACE PkgConfig::jemalloc)
    # Its settings (src/platform/tasks/allocator.cpp): nothing else names them, so the linker would pass over them.
    target_link_options(folvane-allocator INTERFACE LINKER:--undefined=malloc_conf)
endif()

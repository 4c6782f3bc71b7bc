// Read by jemalloc when the program starts (see cmake/allocator.cmake): large blocks are kept for the next picture of a
// page instead of going back to the system, which would hand them out again page by page. What nobody has taken for a
// second goes back, by a thread of its own: an idle program would otherwise hold for ever what its last job took.
extern "C" {
extern const char* malloc_conf;
const char* malloc_conf = "oversize_threshold:0,background_thread:true,dirty_decay_ms:1000,muzzy_decay_ms:0";
}

# What Debian hardens its programs with: this one opens files that strangers made. The sanitizers watch for the same in
# ways of their own.

if(NOT FOLVANE_SANITIZE)
    add_compile_options(-fstack-protector-strong $<$<NOT:$<CONFIG:Debug>>:-D_FORTIFY_SOURCE=2>)
    add_link_options(-Wl,-z,relro -Wl,-z,now)
endif()

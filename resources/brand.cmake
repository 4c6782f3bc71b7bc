# Draws the logo in all sizes: some stand in the program (":/brand"), the icons for the desktop lie where the
# installation takes them, in icons/hicolor of the build folder. Needs the target folvane-controls.

add_executable(folvane-draw-logo "${CMAKE_CURRENT_LIST_DIR}/drawLogo.cpp")
target_link_libraries(folvane-draw-logo PRIVATE folvane-warnings Qt6::Gui Qt6::Svg)

set(brand_embedded)

# Draws `source` as `picture`, `size` pixels wide and high.
function(folvane_draw source size picture)
    get_filename_component(folder "${picture}" DIRECTORY)
    file(MAKE_DIRECTORY "${folder}")
    add_custom_command(OUTPUT "${picture}"
        COMMAND ${CMAKE_COMMAND} -E env ASAN_OPTIONS=detect_leaks=0
                $<TARGET_FILE:folvane-draw-logo> "${source}" ${size} "${picture}"
        DEPENDS folvane-draw-logo "${source}"
        VERBATIM)
endfunction()

# The same, as a file of the program under `name`.
macro(folvane_embed source size name)
    set(picture "${CMAKE_BINARY_DIR}/brand/${name}")
    folvane_draw("${source}" ${size} "${picture}")
    set_source_files_properties("${picture}" PROPERTIES QT_RESOURCE_ALIAS "${name}")
    list(APPEND brand_embedded "${picture}")
endmacro()

foreach(size 64 128 256)
    folvane_embed("${PROJECT_SOURCE_DIR}/resources/logo.svg" ${size} BrandLogo-${size}.png)
endforeach()
foreach(size 32 48 64 128)
    folvane_embed("${PROJECT_SOURCE_DIR}/resources/logo-rounded.svg" ${size} AppIcon-${size}.png)
endforeach()
folvane_embed("${PROJECT_SOURCE_DIR}/resources/logo-small.svg" 16 AppIcon-16.png)
qt_add_resources(folvane-controls brand PREFIX /brand FILES ${brand_embedded})

set(brand_icons)
foreach(size 16 22 24 32 48 64 128 256 512)
    set(drawing logo-rounded)
    if(size EQUAL 16)
        set(drawing logo-small)
    elseif(size LESS 32)
        set(drawing logo-medium)
    endif()
    set(icon "${CMAKE_BINARY_DIR}/icons/hicolor/${size}x${size}/apps/${FOLVANE_BUNDLE_IDENTIFIER}.png")
    folvane_draw("${PROJECT_SOURCE_DIR}/resources/${drawing}.svg" ${size} "${icon}")
    list(APPEND brand_icons "${icon}")
endforeach()
add_custom_target(folvane-icons ALL DEPENDS ${brand_icons})

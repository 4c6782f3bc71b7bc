# Only these two modules of OpenCV: its own configuration file comes with all of them.

find_path(OPENCV_INCLUDE_DIR opencv2/imgproc.hpp PATH_SUFFIXES opencv4 REQUIRED)
find_library(OPENCV_CORE opencv_core REQUIRED)
find_library(OPENCV_IMGPROC opencv_imgproc REQUIRED)
mark_as_advanced(OPENCV_INCLUDE_DIR OPENCV_CORE OPENCV_IMGPROC)

add_library(folvane-opencv INTERFACE)
target_include_directories(folvane-opencv SYSTEM INTERFACE "${OPENCV_INCLUDE_DIR}")
target_link_libraries(folvane-opencv INTERFACE "${OPENCV_IMGPROC}" "${OPENCV_CORE}")

# The comparison with other libraries. Its peers come with Debian's libopencv-core-dev, libopencv-imgproc-dev,
# libyuv-dev, libswscale-dev, libzimg-dev and libleptonica-dev; only the last three bring pkg-config files.
pkg_check_modules(SWSCALE REQUIRED IMPORTED_TARGET libswscale libavutil)
pkg_check_modules(ZIMG REQUIRED IMPORTED_TARGET zimg)
pkg_check_modules(LEPTONICA REQUIRED IMPORTED_TARGET lept)
find_path(OPENCV_INCLUDE_DIR opencv2/imgproc.hpp PATH_SUFFIXES opencv4 REQUIRED)
find_library(OPENCV_CORE_LIBRARY opencv_core REQUIRED)
find_library(OPENCV_IMGPROC_LIBRARY opencv_imgproc REQUIRED)
find_path(YUV_INCLUDE_DIR libyuv.h REQUIRED)
find_library(YUV_LIBRARY yuv REQUIRED)

add_executable(zum_bench_peers ${CMAKE_CURRENT_LIST_DIR}/peers.cc)
target_include_directories(zum_bench_peers SYSTEM PRIVATE ${OPENCV_INCLUDE_DIR} ${YUV_INCLUDE_DIR})
target_link_libraries(zum_bench_peers PRIVATE zumcc::zumcc zum_build_options zum_targets PkgConfig::HWY
                                              ${OPENCV_IMGPROC_LIBRARY} ${OPENCV_CORE_LIBRARY} ${YUV_LIBRARY}
                                              PkgConfig::SWSCALE PkgConfig::ZIMG PkgConfig::LEPTONICA)

# SPDX-License-Identifier: MIT
# The OpenCV modules core and imgproc as imported targets opencv_core and opencv_imgproc, from the two small
# development packages; the configuration file of OpenCV itself comes only with the package of all modules.
find_path(OpenCV_INCLUDE_DIR opencv2/core.hpp PATH_SUFFIXES opencv4)
find_library(OpenCV_core_LIBRARY opencv_core)
find_library(OpenCV_imgproc_LIBRARY opencv_imgproc)
include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(OpenCVModules
  REQUIRED_VARS OpenCV_core_LIBRARY OpenCV_imgproc_LIBRARY OpenCV_INCLUDE_DIR)
foreach(module core imgproc)
  if(OpenCVModules_FOUND AND NOT TARGET opencv_${module})
    add_library(opencv_${module} UNKNOWN IMPORTED)
    set_target_properties(opencv_${module} PROPERTIES
      IMPORTED_LOCATION "${OpenCV_${module}_LIBRARY}"
      INTERFACE_INCLUDE_DIRECTORIES "${OpenCV_INCLUDE_DIR}")
  endif()
endforeach()
mark_as_advanced(OpenCV_INCLUDE_DIR OpenCV_core_LIBRARY OpenCV_imgproc_LIBRARY)

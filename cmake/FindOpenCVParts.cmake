# OpenCV's core and imgproc alone. The distribution's own package file comes only with the package of all
# modules, which pulls in several hundred megabytes that this program never loads.
find_path(OpenCVParts_INCLUDE_DIR opencv2/core.hpp PATH_SUFFIXES opencv4)
foreach(part core imgproc)
    find_library(OpenCVParts_${part}_LIBRARY NAMES opencv_${part} opencv_${part}460)
    if(OpenCVParts_${part}_LIBRARY AND NOT TARGET OpenCVParts::${part})
        add_library(OpenCVParts::${part} UNKNOWN IMPORTED)
        set_target_properties(OpenCVParts::${part} PROPERTIES
            IMPORTED_LOCATION ${OpenCVParts_${part}_LIBRARY}
            INTERFACE_INCLUDE_DIRECTORIES ${OpenCVParts_INCLUDE_DIR})
    endif()
endforeach()
include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(OpenCVParts
    REQUIRED_VARS OpenCVParts_INCLUDE_DIR OpenCVParts_core_LIBRARY OpenCVParts_imgproc_LIBRARY)

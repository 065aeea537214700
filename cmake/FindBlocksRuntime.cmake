# BlocksRuntime::BlocksRuntime: what code with blocks is linked with. macOS has it in its system
# library; on Debian libblocksruntime-dev does.
include(FindPackageHandleStandardArgs)

if(APPLE)
    set(BlocksRuntime_LIBRARY "" CACHE INTERNAL "")
    find_package_handle_standard_args(BlocksRuntime REQUIRED_VARS APPLE)
else()
    find_library(BlocksRuntime_LIBRARY BlocksRuntime)
    find_package_handle_standard_args(BlocksRuntime REQUIRED_VARS BlocksRuntime_LIBRARY
        REASON_FAILURE_MESSAGE "the Debian package libblocksruntime-dev has it")
    mark_as_advanced(BlocksRuntime_LIBRARY)
endif()

if(BlocksRuntime_FOUND AND NOT TARGET BlocksRuntime::BlocksRuntime)
    add_library(BlocksRuntime::BlocksRuntime INTERFACE IMPORTED)
    set_property(TARGET BlocksRuntime::BlocksRuntime
        PROPERTY INTERFACE_LINK_LIBRARIES ${BlocksRuntime_LIBRARY})
endif()

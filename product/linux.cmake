set_target_properties(TvDelay PROPERTIES
    LIBRARY_OUTPUT_DIRECTORY ${bundle_contents}/x86_64-linux
    LINK_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/exports.map)
target_link_options(TvDelay PRIVATE
    -Wl,--version-script=${CMAKE_CURRENT_SOURCE_DIR}/exports.map
    # The runtime keeps classes for good: their code must outlive a host's dlclose.
    -Wl,-z,nodelete)
# The sanitizers' runtime is in the program that loads the plug-in.
if(NOT TVDELAY_SANITIZERS)
    target_link_options(TvDelay PRIVATE -Wl,--no-undefined)
endif()

set(installed_contents lib/vst/TvDelay.vst/Contents)
install(TARGETS TvDelay LIBRARY
    DESTINATION ${installed_contents}/x86_64-linux COMPONENT plugin)
install(FILES ${pictures} DESTINATION ${installed_contents}/Resources COMPONENT plugin)

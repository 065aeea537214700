# What `find_package(TvDelaySoundLibrary)` finds after an installation.
include(CMakePackageConfigHelpers)
include(GNUInstallDirs)
set(package ${CMAKE_INSTALL_LIBDIR}/cmake/TvDelaySoundLibrary)

set(headers
    BiquadDesigner.h BiquadRunner.h ChorusUnit.h ChorusUnitMaker.h NotWavAlert.h
    SmoothingFilter.h WavFileInfo.h WavHeaderWalker.h)
if(has_dispatch)
    list(APPEND headers WavPlayer.h WavStreamReader.h WavStreamReaderMaker.h)
endif()
install(FILES ${headers} DESTINATION include/tvdelay/soundlib COMPONENT soundlib)

set(archives tvdelay_soundlib)
foreach(supply IN ITEMS tvdelay_core_foundation tvdelay_dispatch)
    if(TARGET ${supply})
        list(APPEND archives ${supply})
    endif()
endforeach()
install(TARGETS ${archives} EXPORT TvDelaySoundLibrary
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT soundlib)
install(EXPORT TvDelaySoundLibrary FILE TvDelaySoundLibraryTargets.cmake NAMESPACE TvDelay::
    DESTINATION ${package} COMPONENT soundlib)

configure_package_config_file(TvDelaySoundLibraryConfig.cmake.in
    ${CMAKE_CURRENT_BINARY_DIR}/TvDelaySoundLibraryConfig.cmake INSTALL_DESTINATION ${package})
write_basic_package_version_file(
    ${CMAKE_CURRENT_BINARY_DIR}/TvDelaySoundLibraryConfigVersion.cmake
    COMPATIBILITY SameMinorVersion)
install(FILES
    ${CMAKE_CURRENT_BINARY_DIR}/TvDelaySoundLibraryConfig.cmake
    ${CMAKE_CURRENT_BINARY_DIR}/TvDelaySoundLibraryConfigVersion.cmake
    ${root}/cmake/FindBlocksRuntime.cmake
    DESTINATION ${package} COMPONENT soundlib)

set_target_properties(TvDelay PROPERTIES
    BUNDLE ON
    BUNDLE_EXTENSION vst
    LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}
    MACOSX_BUNDLE_INFO_PLIST ${CMAKE_SOURCE_DIR}/resources/Info.plist.in
    MACOSX_BUNDLE_GUI_IDENTIFIER com.tarnvalemusic.TvDelay
    MACOSX_BUNDLE_BUNDLE_NAME TvDelay
    MACOSX_BUNDLE_BUNDLE_VERSION ${PROJECT_VERSION}
    MACOSX_BUNDLE_SHORT_VERSION_STRING ${PROJECT_VERSION})
target_link_options(TvDelay PRIVATE -Wl,-exported_symbol,_VSTPluginMain)
tvdelay_bundle_file(${CMAKE_SOURCE_DIR}/resources/PkgInfo .)

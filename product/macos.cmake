set_target_properties(TvDelay PROPERTIES
    BUNDLE ON
    BUNDLE_EXTENSION vst
    LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}
    MACOSX_BUNDLE_INFO_PLIST ${PROJECT_SOURCE_DIR}/resources/Info.plist.in
    MACOSX_BUNDLE_GUI_IDENTIFIER com.tarnvalemusic.TvDelay
    MACOSX_BUNDLE_BUNDLE_NAME TvDelay
    MACOSX_BUNDLE_BUNDLE_VERSION ${PROJECT_VERSION}
    MACOSX_BUNDLE_SHORT_VERSION_STRING ${PROJECT_VERSION})
target_link_options(TvDelay PRIVATE
    -Wl,-exported_symbol,_VSTPluginMain
    # The identifier is made of the file and this name, wherever the file is written to.
    -Wl,-final_output,TvDelay)
if(CMAKE_CROSSCOMPILING)
    file(GLOB_RECURSE stubs CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/platform/macos/sdk/*.tbd)
    set_target_properties(TvDelay PROPERTIES LINK_DEPENDS "${stubs}")
endif()
tvdelay_bundle_file(${PROJECT_SOURCE_DIR}/resources/PkgInfo .)

install(TARGETS TvDelay LIBRARY DESTINATION Library/Audio/Plug-Ins/VST COMPONENT plugin)

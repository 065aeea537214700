# What of the supply knows no window: CoreFoundation and, where the compiler has blocks, the
# dispatch queues. Stands without GNUstep and X11, since the sound library takes it along into other
# people's projects.
include_guard(GLOBAL)
include(CheckCXXCompilerFlag)
get_filename_component(root ${CMAKE_CURRENT_LIST_DIR}/../.. ABSOLUTE)
include(${root}/cmake/CompileFlags.cmake)
list(APPEND CMAKE_MODULE_PATH ${root}/cmake)
find_package(Threads REQUIRED)

add_library(tvdelay_core_foundation STATIC
    ${CMAKE_CURRENT_LIST_DIR}/CFBundle.cpp
    ${CMAKE_CURRENT_LIST_DIR}/CFObject.cpp
    ${CMAKE_CURRENT_LIST_DIR}/CFString.cpp
    ${CMAKE_CURRENT_LIST_DIR}/CFURL.cpp
    ${CMAKE_CURRENT_LIST_DIR}/CFUserNotification.cpp)
set(core_targets tvdelay_core_foundation)
target_link_libraries(tvdelay_core_foundation PUBLIC ${CMAKE_DL_LIBS})

check_cxx_compiler_flag(-fblocks TVDELAY_COMPILER_HAS_BLOCKS)
find_package(BlocksRuntime MODULE)
if(TVDELAY_COMPILER_HAS_BLOCKS AND BlocksRuntime_FOUND)
    add_library(tvdelay_dispatch STATIC ${CMAKE_CURRENT_LIST_DIR}/dispatch.cpp)
    target_compile_options(tvdelay_dispatch PUBLIC $<BUILD_INTERFACE:-fblocks>)
    target_link_libraries(tvdelay_dispatch PUBLIC BlocksRuntime::BlocksRuntime Threads::Threads)
    list(APPEND core_targets tvdelay_dispatch)
endif()

foreach(target IN LISTS core_targets)
    target_compile_features(${target} PUBLIC cxx_std_17)
    target_include_directories(${target} PUBLIC
        $<BUILD_INTERFACE:${CMAKE_CURRENT_LIST_DIR}/include>)
    target_link_libraries(${target} PRIVATE $<BUILD_INTERFACE:tvdelay_flags>)
    set_target_properties(${target} PROPERTIES POSITION_INDEPENDENT_CODE ON
        CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
endforeach()

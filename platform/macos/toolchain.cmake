# Builds for macOS on Linux: Debian's clang and lld, and the SDK that fetch-headers.sh puts together.
set(CMAKE_SYSTEM_NAME Darwin)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

if(NOT TVDELAY_MACOS_SDK)
    get_filename_component(TVDELAY_MACOS_SDK ${CMAKE_CURRENT_LIST_DIR}/../../build/macos-sdk ABSOLUTE)
endif()
if(NOT EXISTS ${TVDELAY_MACOS_SDK}/made-from)
    message(FATAL_ERROR "There is no SDK in ${TVDELAY_MACOS_SDK}. "
        "platform/macos/fetch-headers.sh FOLDER puts one together; "
        "-DTVDELAY_MACOS_SDK=FOLDER names it if it is not build/macos-sdk.")
endif()
set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES TVDELAY_MACOS_SDK)
set(CMAKE_OSX_SYSROOT ${TVDELAY_MACOS_SDK} CACHE PATH "")

foreach(language C CXX)
    set(CMAKE_${language}_COMPILER_TARGET x86_64-apple-macosx${CMAKE_OSX_DEPLOYMENT_TARGET})
endforeach()
set(CMAKE_C_COMPILER clang)
set(CMAKE_CXX_COMPILER clang++)
set(CMAKE_CXX_FLAGS_INIT -stdlib=libc++)
# clang looks beside itself for the C++ headers first, and Debian's may be there.
set(CMAKE_CXX_STANDARD_INCLUDE_DIRECTORIES ${TVDELAY_MACOS_SDK}/usr/include/c++/v1)
add_compile_options($<$<COMPILE_LANGUAGE:CXX>:-nostdinc++>)
add_compile_definitions(_LIBCPP_ABI_VERSION=1 _LIBCPP_ABI_NAMESPACE=__1)

# Nothing built here runs here, and an executable would ask for more of the stubs than a bundle does.
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)
# The linker of LLVM 14 writes unwind data that points outside the code, and an identifier that
# depends on the number of cores. clang takes that of LLVM 19 from its folder: named as a file, it
# would not pass for lld.
find_program(TVDELAY_MACOS_LINKER NAMES ld64.lld-19 REQUIRED)
file(REAL_PATH ${TVDELAY_MACOS_LINKER} linker)
get_filename_component(linker_folder ${linker} DIRECTORY)
add_link_options(-fuse-ld=lld -B${linker_folder})
find_program(CMAKE_AR NAMES llvm-ar llvm-ar-14 REQUIRED)
find_program(CMAKE_RANLIB NAMES llvm-ranlib llvm-ranlib-14 REQUIRED)
find_program(CMAKE_INSTALL_NAME_TOOL NAMES llvm-install-name-tool llvm-install-name-tool-19
             llvm-install-name-tool-14 REQUIRED)

# What Linux has installed is of no use for macOS.
set(CMAKE_FIND_ROOT_PATH ${TVDELAY_MACOS_SDK})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# tvdelay_flags: what every target of ours is compiled with, and nothing that is linked elsewhere.
include_guard(GLOBAL)

get_filename_component(root ${CMAKE_CURRENT_LIST_DIR} DIRECTORY)

add_library(tvdelay_flags INTERFACE)
target_include_directories(tvdelay_flags INTERFACE ${root})
target_compile_options(tvdelay_flags INTERFACE
    -Wall -Wextra -Wshadow -Wconversion -Wno-sign-conversion -Wno-unused-parameter
    # Results are bit-exact: a fused multiply-add would round once where two roundings are meant.
    -ffp-contract=off
    # Debian 12's valgrind can't read what clang writes by itself, DWARF 5.
    $<$<CONFIG:Debug,RelWithDebInfo>:-gdwarf-4>)

if(TVDELAY_SANITIZERS)
    add_compile_options(-fsanitize=${TVDELAY_SANITIZERS} -fno-omit-frame-pointer
                        -fno-sanitize-recover=all)
    add_link_options(-fsanitize=${TVDELAY_SANITIZERS})
endif()

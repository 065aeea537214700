# tvdelay_flags: what every target of ours is compiled with.
add_library(tvdelay_flags INTERFACE)
target_include_directories(tvdelay_flags INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_options(tvdelay_flags INTERFACE
    -Wall -Wextra -Wshadow -Wconversion -Wno-sign-conversion -Wno-unused-parameter
    # Results are bit-exact: a fused multiply-add would round once where two roundings are meant.
    -ffp-contract=off)

if(TVDELAY_SANITIZERS)
    add_compile_options(-fsanitize=${TVDELAY_SANITIZERS} -fno-omit-frame-pointer
                        -fno-sanitize-recover=all)
    add_link_options(-fsanitize=${TVDELAY_SANITIZERS})
endif()

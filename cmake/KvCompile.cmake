# What every target of this project is compiled with.
add_library(kv_compile INTERFACE)
target_compile_options(kv_compile INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Werror
                       $<$<COMPILE_LANGUAGE:CXX>:-Wnon-virtual-dtor -Woverloaded-virtual>)
# Where the compiler inlines much it sees ghosts in the standard library's strings and functions.
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_BUILD_TYPE STREQUAL Release)
    target_compile_options(kv_compile INTERFACE -Wno-stringop-overflow -Wno-restrict
                           -Wno-maybe-uninitialized -Wno-uninitialized)
endif()
# 4-byte pragma-packed records are read in place: never assume a record's alignment.
target_compile_options(kv_compile INTERFACE -fno-strict-aliasing)
if(KV_SANITIZE)
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all
                        -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
endif()
if(KV_FUZZ)
    add_compile_options(-fsanitize=fuzzer-no-link)
endif()

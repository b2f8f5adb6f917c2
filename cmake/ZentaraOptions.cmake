# Compiler options shared by every target of the project.

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM)
    # The environment makes ccache accept precompiled headers and share results between build folders.
    set(ccache_launcher ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
        CCACHE_BASEDIR=${CMAKE_SOURCE_DIR} CCACHE_NOHASHDIR=1 ${CCACHE_PROGRAM})
    set(CMAKE_C_COMPILER_LAUNCHER ${ccache_launcher})
    set(CMAKE_CXX_COMPILER_LAUNCHER ${ccache_launcher})
endif()

add_library(zt_options INTERFACE)
target_compile_options(zt_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Werror
    # Bit-identical results whatever the instruction set: no contraction of a*b+c.
    -ffp-contract=off)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # -Wrestrict is wrong about joined strings in this compiler's optimised builds (its bug 105651).
    target_compile_options(zt_options INTERFACE -fpch-preprocess -Wno-restrict)
else()
    # A class with several feeds has one OnUpdate for each: that none hides another is no fault here.
    target_compile_options(zt_options INTERFACE -Wno-overloaded-virtual)
endif()
target_compile_definitions(zt_options INTERFACE QT_NO_FOREACH
    ZT_VERSION="${PROJECT_VERSION}")

# Compiles the target's sources in batches, each one file to the compiler: file-local names are unique in a target.
function(zt_unity target)
    set_target_properties(${target} PROPERTIES UNITY_BUILD ${ZT_UNITY} UNITY_BUILD_BATCH_SIZE 16)
endfunction()

if(ZT_SANITIZE)
    add_compile_options(-fsanitize=${ZT_SANITIZE} -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${ZT_SANITIZE})
    if(ZT_SANITIZE MATCHES "undefined")
        add_compile_options(-fno-sanitize-recover=undefined)
    endif()
    if(ZT_SANITIZE MATCHES "thread")
        # Qt's own locks are not instrumented: core/locks.h takes the standard ones instead.
        add_compile_definitions(ZT_STD_LOCKS)
    endif()
endif()
if(ZT_FUZZ AND ZT_FUZZ_LONG)
    # Without a look at every comparison: twice the executions, for long runs over a corpus that has grown.
    add_compile_options(-fsanitize-coverage=inline-8bit-counters,indirect-calls,pc-table)
elseif(ZT_FUZZ)
    add_compile_options(-fsanitize=fuzzer-no-link)
endif()
if(ZT_COVERAGE)
    add_compile_options(--coverage)
    add_link_options(--coverage)
endif()

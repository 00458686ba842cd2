# SPDX-License-Identifier: LGPL-2.1-or-later

# sorrel_target(TARGET): sets the warnings and the sanitizers for all code of this project.
function(sorrel_target target)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wconversion)
    if(SORREL_WARNINGS_AS_ERRORS)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
    if(SORREL_SANITIZERS)
        target_compile_options(${target} PRIVATE
            -fsanitize=${SORREL_SANITIZERS} -fno-sanitize-recover=all -fno-omit-frame-pointer)
        target_link_options(${target} PRIVATE -fsanitize=${SORREL_SANITIZERS})
    endif()
endfunction()

# sorrel_reproducible(TARGET): makes the installed files independent of the build directory. The debug information has paths
# below the top of the checkout for sources, and below "build" for generated files.
function(sorrel_reproducible target)
    if(SORREL_COVERAGE) # its reports need full paths
        return()
    endif()
    target_compile_options(${target} PRIVATE
        "-ffile-prefix-map=${PROJECT_SOURCE_DIR}=." "-ffile-prefix-map=${PROJECT_BINARY_DIR}=./build")
endfunction()

# sorrel_internal(TARGET): sets the options of code that goes into the libraries, besides the above.
function(sorrel_internal target)
    sorrel_target(${target})
    sorrel_reproducible(${target})
    target_compile_definitions(${target} PRIVATE $<$<NOT:$<BOOL:${SORREL_ASSERTIONS}>>:QT_NO_DEBUG>)
    # Only the libraries need debug information: the ABI check reads it. The presets with sanitizers choose their own.
    if(NOT SORREL_SANITIZERS)
        target_compile_options(${target} PRIVATE $<$<CONFIG:RelWithDebInfo>:-g>)
    endif()
    if(SORREL_FUZZERS)
        target_compile_options(${target} PRIVATE -fsanitize=fuzzer-no-link)
    endif()
    if(SORREL_COVERAGE)
        target_compile_options(${target} PRIVATE ${SORREL_COVERAGE_OPTIONS})
        target_link_options(${target} INTERFACE --coverage)
    endif()
endfunction()

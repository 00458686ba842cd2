# SPDX-License-Identifier: LGPL-2.1-or-later

# sorrel_target(TARGET): the warnings, and the sanitizers, that all code of this project is compiled with.
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

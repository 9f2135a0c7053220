# Warnings of everything that this project compiles itself.
function(vexlor_warnings target)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion -Wshadow
                                             $<$<BOOL:${VEXLOR_WERROR}>:-Werror>)
endfunction()

# vfc_target_warnings(<target>): the project's warning set, applied to every target it builds but
# never passed on to consumers of the installed package.
function(vfc_target_warnings target)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic)
    if(VFC_WERROR)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
endfunction()

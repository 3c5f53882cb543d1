# vfc_readme_examples(): every example of README.md becomes a test. An example is marked with
# "<!-- example: NAME -->" (or "<!-- example: NAME; posix only: REASON -->") and consists of the
# first code block after the marker and the
# ```text block that follows it, which holds exactly what the example prints on standard output.
#   ```cpp  compiled against vfc::vfc and run in a scratch directory; a block without a main()
#           is the body of one, with <vfc/vfc.h>, <iostream> and <cstdio> included.
#   ```sh   run by bash from the source root with the installed vfc tool first in PATH (needs
#           the FIXTURE that installs it).
# When cross-compiling, both run under the emulator through vfc_host_program().
# Blocks marked "<!-- ci: NAME -->" (build and install commands) are run by .ci/run instead.
function(vfc_readme_examples fixture prefix_bin)
    set(readme ${PROJECT_SOURCE_DIR}/README.md)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${readme})
    file(READ ${readme} rest)
    set(dir ${CMAKE_CURRENT_BINARY_DIR}/readme)
    set(count 0)
    # The folder whose "vfc" the shell examples run: the installed tool, or a script that runs
    # it under the emulator.
    set(tool_dir ${prefix_bin})
    if(CMAKE_CROSSCOMPILING)
        vfc_host_program(tool vfc ${prefix_bin}/vfc${CMAKE_EXECUTABLE_SUFFIX})
        set(tool_dir ${VFC_HOST_PROGRAM_DIR})
    endif()
    while(TRUE)
        string(FIND "${rest}" "<!-- example: " at)
        if(at EQUAL -1)
            break()
        endif()
        math(EXPR at "${at} + 14")
        string(SUBSTRING "${rest}" ${at} -1 rest)
        string(FIND "${rest}" " -->" end)
        string(SUBSTRING "${rest}" 0 ${end} name)
        # "NAME; posix only: REASON" marks an example that runs POSIX programs: Windows builds
        # it but does not run it.
        set(posix_only FALSE)
        string(FIND "${name}" "; posix only: " cut)
        if(NOT cut EQUAL -1)
            set(posix_only TRUE)
            string(SUBSTRING "${name}" 0 ${cut} name)
        endif()
        # The code block, then its output.
        string(FIND "${rest}" "\n```" open)
        math(EXPR open "${open} + 4")
        string(SUBSTRING "${rest}" ${open} -1 rest)
        string(FIND "${rest}" "\n" eol)
        string(SUBSTRING "${rest}" 0 ${eol} kind)
        math(EXPR eol "${eol} + 1")
        string(SUBSTRING "${rest}" ${eol} -1 rest)
        string(FIND "${rest}" "\n```" close)
        string(SUBSTRING "${rest}" 0 ${close} code)
        math(EXPR close "${close} + 4")
        string(SUBSTRING "${rest}" ${close} -1 rest)
        string(FIND "${rest}" "```text\n" open)
        if(open EQUAL -1)
            message(FATAL_ERROR "README.md example ${name} has no ```text block")
        endif()
        math(EXPR open "${open} + 8")
        string(SUBSTRING "${rest}" ${open} -1 rest)
        string(FIND "${rest}" "\n```" close)
        string(SUBSTRING "${rest}" 0 ${close} expected)
        string(SUBSTRING "${rest}" ${close} -1 rest)
        file(CONFIGURE OUTPUT ${dir}/${name}.expected CONTENT "${expected}\n" @ONLY)

        if(kind STREQUAL "cpp")
            string(FIND "${code}" "int main(" has_main)
            if(has_main EQUAL -1)
                string(REPLACE "\n" "\n    " code "    ${code}")
                set(code "#include <cstdio>\n#include <fstream>\n#include <iostream>\n\n#include <vfc/vfc.h>\n\nint main() {\n${code}\n}")
            endif()
            file(CONFIGURE OUTPUT ${dir}/${name}.cpp CONTENT "${code}\n" @ONLY)
            add_executable(readme_${name} ${dir}/${name}.cpp)
            target_link_libraries(readme_${name} PRIVATE vfc::vfc)
            vfc_target_warnings(readme_${name})
            vfc_host_program(program readme_${name} $<TARGET_FILE:readme_${name}>)
            if(posix_only AND WIN32)
                math(EXPR count "${count} + 1")
                continue()
            endif()
            add_test(NAME readme_${name}
                COMMAND ${CMAKE_COMMAND} -DPROGRAM=${program}
                        -DEXPECTED=${dir}/${name}.expected -DWORKDIR=${dir}/${name}.d
                        -P ${PROJECT_SOURCE_DIR}/cmake/vfcRunAndCompare.cmake)
        elseif(kind STREQUAL "sh")
            file(CONFIGURE OUTPUT ${dir}/${name}.sh CONTENT "${code}\n" @ONLY)
            add_test(NAME readme_${name}
                COMMAND ${CMAKE_COMMAND} -E env "PATH=${tool_dir}:$ENV{PATH}"
                        ${CMAKE_COMMAND} -DPROGRAM=bash -DARGS=${dir}/${name}.sh
                        -DEXPECTED=${dir}/${name}.expected -DWORKDIR=${PROJECT_SOURCE_DIR}
                        -P ${PROJECT_SOURCE_DIR}/cmake/vfcRunAndCompare.cmake)
            set_tests_properties(readme_${name} PROPERTIES FIXTURES_REQUIRED ${fixture})
        else()
            message(FATAL_ERROR "README.md example ${name}: unknown block kind \"${kind}\"")
        endif()
        math(EXPR count "${count} + 1")
    endwhile()
    if(count EQUAL 0)
        message(FATAL_ERROR "README.md has no examples")
    endif()
    # No shell or C++ block may go untested: each is an example or a CI block.
    file(READ ${readme} text)
    string(REGEX MATCHALL "\n```(sh|cpp)\n" blocks "${text}")
    string(REGEX MATCHALL "<!-- ci: [a-z-]+ -->\n```sh\n" ci_blocks "${text}")
    list(LENGTH blocks nblocks)
    list(LENGTH ci_blocks nci)
    math(EXPR covered "${count} + ${nci}")
    if(NOT nblocks EQUAL covered)
        message(FATAL_ERROR "README.md has ${nblocks} sh/cpp blocks but only ${count} examples "
                            "and ${nci} CI blocks: mark every block")
    endif()
endfunction()

# cmake -DPROGRAM=<exe> [-DARGS=<arg>] -DEXPECTED=<file> [-DWORKDIR=<dir>] -P vfcRunAndCompare.cmake
# Runs PROGRAM (in WORKDIR, created when missing) and fails unless it exits 0 and prints exactly
# the content of EXPECTED on standard output.
if(NOT WORKDIR)
    set(WORKDIR .)
endif()
file(MAKE_DIRECTORY ${WORKDIR})
execute_process(COMMAND ${PROGRAM} ${ARGS} WORKING_DIRECTORY ${WORKDIR}
    OUTPUT_VARIABLE actual RESULT_VARIABLE rc)
file(READ ${EXPECTED} expected)
if(NOT rc EQUAL 0)
    message(FATAL_ERROR "${PROGRAM} ${ARGS} exited with ${rc}; it printed:\n${actual}")
endif()
if(NOT actual STREQUAL expected)
    message(FATAL_ERROR "${PROGRAM} ${ARGS} printed:\n${actual}\nbut README.md shows:\n${expected}")
endif()

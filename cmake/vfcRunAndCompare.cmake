# cmake -DPROGRAM=<exe> -DEXPECTED=<file> -P vfcRunAndCompare.cmake
# Runs PROGRAM and fails unless it exits 0 and prints exactly the content of EXPECTED.
execute_process(COMMAND ${PROGRAM} OUTPUT_VARIABLE actual RESULT_VARIABLE rc)
file(READ ${EXPECTED} expected)
if(NOT rc EQUAL 0)
    message(FATAL_ERROR "${PROGRAM} exited with ${rc}")
endif()
if(NOT actual STREQUAL expected)
    message(FATAL_ERROR "${PROGRAM} printed:\n${actual}\nbut README.md shows:\n${expected}")
endif()

# Runs qmllint over the QML module and fails on any warning.
execute_process(COMMAND ${CMAKE_COMMAND} --build ${BUILD_DIR} --target all_qmllint
    OUTPUT_VARIABLE out ERROR_VARIABLE err RESULT_VARIABLE rc)
string(REGEX MATCH "(Warning|Error):[^\n]*" problem "${out}${err}")
if(NOT rc EQUAL 0 OR problem)
    message(FATAL_ERROR "qmllint is not clean:\n${out}${err}")
endif()

# tallyvane-cli as a whole process: results on stdout with exit 0, errors
# on stderr with exit 1.
file(REMOVE_RECURSE ${HOME_DIR})
set(ENV{TALLYVANE_HOME} ${HOME_DIR})

execute_process(COMMAND ${CLI} reports list --json
    OUTPUT_VARIABLE out ERROR_VARIABLE err RESULT_VARIABLE rc)
string(STRIP "${out}" out)
if(NOT rc EQUAL 0 OR NOT out STREQUAL "[\n]" OR NOT err STREQUAL "")
    message(FATAL_ERROR "empty list: rc=${rc} out='${out}' err='${err}'")
endif()

execute_process(COMMAND ${CLI} reports show 0
    OUTPUT_VARIABLE out ERROR_VARIABLE err RESULT_VARIABLE rc)
if(NOT rc EQUAL 1 OR NOT out STREQUAL "" OR err STREQUAL "")
    message(FATAL_ERROR "show of a missing report: rc=${rc} out='${out}' err='${err}'")
endif()

execute_process(COMMAND ${CLI} --help OUTPUT_VARIABLE out RESULT_VARIABLE rc)
if(NOT rc EQUAL 0 OR NOT out MATCHES "reports list")
    message(FATAL_ERROR "--help: rc=${rc} out='${out}'")
endif()

# Solving TVM draws a chart on screen; the command line has no fonts and
# must still answer (and save the report).
execute_process(COMMAND ${CLI} calc tvm presentValue=1000 interestRate=12 period=12 --solve FV
    --save "Plan"
    OUTPUT_VARIABLE out ERROR_VARIABLE err RESULT_VARIABLE rc)
if(NOT rc EQUAL 0 OR NOT out MATCHES "futureValue: 3895.976")
    message(FATAL_ERROR "calc tvm --solve FV: rc=${rc} out='${out}' err='${err}'")
endif()

# Cash flows with no IRR (a single outlay) have no answer: NaN, and why.
execute_process(COMMAND ${CLI} keys CF -1 ENTER CPT IRR
    OUTPUT_VARIABLE out ERROR_VARIABLE err RESULT_VARIABLE rc)
if(NOT rc EQUAL 0 OR NOT out STREQUAL
        "display: NaN\nlabel: IRR\nnote: No IRR: the cash flows never change sign.\n")
    message(FATAL_ERROR "keys CF -1 ENTER CPT IRR: rc=${rc} out='${out}' err='${err}'")
endif()

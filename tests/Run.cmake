# What the tests that are scripts share. They work below the folder WORK, in WORK/run.

# run(STATUS WORDS command...): ends the test unless the command ends so and prints a match of WORDS.
function(run expected words)
    execute_process(COMMAND ${ARGN} WORKING_DIRECTORY "${WORK}/run" RESULT_VARIABLE result
        OUTPUT_VARIABLE output ERROR_VARIABLE output)
    if(NOT result EQUAL expected OR NOT output MATCHES "${words}")
        message(FATAL_ERROR "${ARGN}\nended with ${result}, not ${expected} and \"${words}\":\n${output}")
    endif()
endfunction()

# run_with_server(WORDS ZGLOBAL CONTENT PROGRAM): runs a program with the address of a content server.
function(run_with_server words zglobal content program)
    set(script [[rm -f address
        "$0" serve "$1" >address &
        trap "kill $! && wait" EXIT
        until [ -s address ] || ! sleep 0.1
        do kill -0 $! || exit
        done
        "$2" "$(cat address)"]]) # no semicolon: it would end an argument here
    run(0 "${words}" bash -c "${script}" "${zglobal}" "${content}" "${program}")
endfunction()

# Installs the build into a folder of its own, builds the programs of examples/ against it and runs
# them and the installed program. Quiet as long as all is well.
# cmake -DBUILD=<build folder> -DSOURCE=<source folder> -DWORK=<scratch folder>
#     [-DFLAGS=<compiler flags>] [-DPYTHON=<interpreter>] -P this file
file(REMOVE_RECURSE "${WORK}")
file(MAKE_DIRECTORY "${WORK}/client")
set(installed "${WORK}/installed")

function(run expected words)
    execute_process(COMMAND ${ARGN} WORKING_DIRECTORY "${WORK}/client" RESULT_VARIABLE result
        OUTPUT_VARIABLE output ERROR_VARIABLE output)
    if(NOT result EQUAL expected OR NOT output MATCHES "${words}")
        message(FATAL_ERROR "${ARGN}\nended with ${result}, not ${expected} and \"${words}\":\n${output}")
    endif()
endfunction()

run(0 "" ${CMAKE_COMMAND} --install "${BUILD}" --prefix "${installed}")
foreach(example embed giftshop guide managers testing)
    run(0 "" ${CMAKE_COMMAND} -G Ninja -S "${SOURCE}/examples/${example}" -B "${WORK}/${example}"
        "-DCMAKE_PREFIX_PATH=${installed}" "-DCMAKE_CXX_FLAGS=${FLAGS}")
    run(0 "" ${CMAKE_COMMAND} --build "${WORK}/${example}")
endforeach()

run(1 "could not be learnt" "${WORK}/embed/embed" "http://127.0.0.1:9")
run(1 "failure 1: .*could not be learnt" "${WORK}/giftshop/giftshop" "http://127.0.0.1:9")
run(1 "网络不给力，请重试" "${WORK}/managers/managers" "http://127.0.0.1:9")
run(0 "rose" "${WORK}/testing/testing")
if(UNIX)
    set(with_server [[rm -f address
        "$0" serve "$1" >address &
        trap "kill $! && wait" EXIT
        until [ -s address ] || ! sleep 0.1
        do kill -0 $! || exit
        done
        "$2" "$(cat address)"]]) # no semicolon: it would end an argument here
    foreach(example embed giftshop guide managers)
        run(0 "星光皇冠" bash -c "${with_server}" "${installed}/bin/zglobal"
            "${installed}/share/zglobal/content" "${WORK}/${example}/${example}")
    endforeach()
endif()
if(PYTHON AND UNIX)
    run(0 "" "${PYTHON}" "${SOURCE}/tests/check_docs.py" "${installed}/bin" docs/demo.md)
else()
    run(0 "" "${installed}/bin/zglobal" demo)
endif()
file(REMOVE_RECURSE "${WORK}")

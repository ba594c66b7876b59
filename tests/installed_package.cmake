# Installs the build into a folder of its own, builds examples/embed against it and runs that
# against the installed content.
# cmake -DBUILD=<build folder> -DEXAMPLE=<examples/embed> -DWORK=<scratch folder> -P this file
file(REMOVE_RECURSE "${WORK}")
file(MAKE_DIRECTORY "${WORK}/client")

function(run folder)
    execute_process(COMMAND ${ARGN} WORKING_DIRECTORY "${folder}" RESULT_VARIABLE result
        OUTPUT_VARIABLE output ERROR_VARIABLE output)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "${ARGN}\n${output}")
    endif()
    message("${output}")
endfunction()

run("${BUILD}" ${CMAKE_COMMAND} --install "${BUILD}" --prefix "${WORK}/installed")
run("${BUILD}" ${CMAKE_COMMAND} -G Ninja -S "${EXAMPLE}" -B "${WORK}/build"
    "-DCMAKE_PREFIX_PATH=${WORK}/installed" "-DCMAKE_CXX_FLAGS=${FLAGS}")
run("${BUILD}" ${CMAKE_COMMAND} --build "${WORK}/build")
# Without a server it has to say so and fail; the installed program shows that the rest works.
execute_process(COMMAND "${WORK}/build/embed" "http://127.0.0.1:9" WORKING_DIRECTORY "${WORK}/client"
    RESULT_VARIABLE result ERROR_VARIABLE output)
if(NOT result EQUAL 1 OR NOT output MATCHES "网络不给力，请重试")
    message(FATAL_ERROR "embed without a server: ${result}\n${output}")
endif()
run("${WORK}/client" "${WORK}/installed/bin/zglobal" demo)
file(REMOVE_RECURSE "${WORK}")

# Installs the build into a folder of its own, builds the consumer against it and runs it.
# cmake -DBUILD=<build folder> -DWORK=<scratch folder> -P run.cmake
file(REMOVE_RECURSE "${WORK}")
foreach(step IN ITEMS
        "${CMAKE_COMMAND};--install;${BUILD};--prefix;${WORK}/installed"
        "${CMAKE_COMMAND};-G;Ninja;-S;${CMAKE_CURRENT_LIST_DIR};-B;${WORK}/build;-DCMAKE_PREFIX_PATH=${WORK}/installed;-DCMAKE_CXX_FLAGS=${FLAGS}"
        "${CMAKE_COMMAND};--build;${WORK}/build"
        "${WORK}/build/consumer")
    execute_process(COMMAND ${step} WORKING_DIRECTORY "${BUILD}" RESULT_VARIABLE result
        OUTPUT_VARIABLE output ERROR_VARIABLE output)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "${step}\n${output}")
    endif()
endforeach()
message("${output}")
file(REMOVE_RECURSE "${WORK}")

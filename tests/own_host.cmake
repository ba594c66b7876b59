# A client with a host of its own: the library built inside the client's project, then installed as a
# package of the client's. Nothing of our host is beside it, and the same program runs on both.
# cmake -DPROGRAM=<zglobal> -DSOURCE=<source folder> -DWORK=<scratch folder> -DQT=<5 or 6>
#     [-DFLAGS=<compiler flags>] -P this file
include("${CMAKE_CURRENT_LIST_DIR}/Run.cmake")

set(client "${WORK}/client")
set(installed "${WORK}/installed")
set(promise "-DQtPromise_INCLUDE_DIR=${SOURCE}/src/qtpromise") # as if it were the client's own
set(settings -G Ninja "${promise}" -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS_DEBUG=-O0
    "-DCMAKE_CXX_FLAGS=${FLAGS}")
file(REMOVE_RECURSE "${installed}" "${WORK}/giftshop" "${WORK}/run")
file(MAKE_DIRECTORY "${WORK}/run")

foreach(install OFF ON)
    run(0 "" ${CMAKE_COMMAND} ${settings} -S "${SOURCE}/tests/embedding" -B "${client}"
        "-DSOURCE=${SOURCE}" -DOWN_HOST_QT=${QT} -DZGLOBAL_QT=${QT} -DZGLOBAL_INSTALL=${install})
    run(0 "" ${CMAKE_COMMAND} --build "${client}")
    run(0 "" ${CMAKE_COMMAND} --install "${client}" --prefix "${installed}")
    file(GLOB_RECURSE files RELATIVE "${installed}" "${installed}/*")
    set(ours ${files})
    list(FILTER ours INCLUDE REGEX "ZGlobal/|libZGlobal|ZUtility|HostLimits|Export\\.h")
    if(NOT install AND ours)
        message(FATAL_ERROR "Installed without being asked for: ${ours}")
    endif()
endforeach()
list(FILTER ours INCLUDE REGEX "ZNetWorkExport|ZUtility|HostLimits|ZGlobal/host|libZGlobalTesting|bin/")
if(ours)
    message(FATAL_ERROR "Of our host there is beside the client's: ${ours}")
endif()

run(0 "" ${CMAKE_COMMAND} ${settings} -S "${SOURCE}/examples/giftshop" -B "${WORK}/giftshop"
    "-DCMAKE_PREFIX_PATH=${installed}")
run(0 "" ${CMAKE_COMMAND} --build "${WORK}/giftshop")
if(UNIX)
    foreach(program "${client}/giftshop" "${WORK}/giftshop/giftshop")
        run_with_server("星光" "${PROGRAM}" "${SOURCE}/examples/content" "${program}")
    endforeach()
endif()
file(REMOVE_RECURSE "${installed}" "${WORK}/giftshop" "${WORK}/run")

# Installs the build into a folder of its own, builds the programs of examples/ against it and runs
# them and the installed program. Quiet as long as all is well.
# cmake -DBUILD=<build folder> -DSOURCE=<source folder> -DWORK=<scratch folder>
#     [-DFLAGS=<compiler flags>] [-DPYTHON=<interpreter>] [-DQMAKE=<qmake>] -P this file
file(REMOVE_RECURSE "${WORK}")
file(MAKE_DIRECTORY "${WORK}/run" "${WORK}/qmake")
set(installed "${WORK}/installed")
include("${CMAKE_CURRENT_LIST_DIR}/Run.cmake")

run(0 "" ${CMAKE_COMMAND} --install "${BUILD}" --prefix "${installed}")
foreach(example embed giftshop guide managers testing)
    run(0 "" ${CMAKE_COMMAND} -G Ninja -S "${SOURCE}/examples/${example}" -B "${WORK}/${example}"
        "-DCMAKE_PREFIX_PATH=${installed}" "-DCMAKE_CXX_FLAGS=${FLAGS}")
    run(0 "" ${CMAKE_COMMAND} --build "${WORK}/${example}")
endforeach()

# Without CMake: qmake and the pkg-config file.
if(QMAKE AND UNIX)
    file(GLOB pkg_config "${installed}/lib*/pkgconfig" "${installed}/lib/*/pkgconfig")
    get_filename_component(libraries "${pkg_config}" DIRECTORY)
    run(0 "" ${CMAKE_COMMAND} -E chdir "${WORK}/qmake"
        ${CMAKE_COMMAND} -E env "PKG_CONFIG_PATH=${pkg_config}"
        "${QMAKE}" "QMAKE_CXXFLAGS+=${FLAGS}" "QMAKE_LFLAGS+=${FLAGS}" "QMAKE_RPATHDIR=${libraries}"
        "${SOURCE}/examples/embed/embed.pro")
    run(0 "" make -C "${WORK}/qmake")
    run(1 "could not be learnt" "${WORK}/qmake/embed" "http://127.0.0.1:9")
endif()

run(1 "could not be learnt" "${WORK}/embed/embed" "http://127.0.0.1:9")
run(1 "failure 1: .*could not be learnt" "${WORK}/giftshop/giftshop" "http://127.0.0.1:9")
run(1 "网络不给力，请重试" "${WORK}/managers/managers" "http://127.0.0.1:9")
run(0 "rose" "${WORK}/testing/testing")
if(UNIX)
    foreach(example embed giftshop guide managers)
        run_with_server("星光" "${installed}/bin/zglobal" "${installed}/share/zglobal/content"
            "${WORK}/${example}/${example}")
    endforeach()
endif()
if(PYTHON AND UNIX)
    run(0 "" "${PYTHON}" "${SOURCE}/tests/check_docs.py" "${installed}/bin" docs/demo.md)
else()
    run(0 "" "${installed}/bin/zglobal" demo)
endif()
file(REMOVE_RECURSE "${WORK}")

# Target "lint": clang-tidy over every source of ours, one stamp per source so that only what
# changed is looked at again; target "format-check": clang-format over the whole tree.

find_program(CLANG_TIDY clang-tidy)
find_program(CLANG_FORMAT clang-format)

file(GLOB_RECURSE format_files CONFIGURE_DEPENDS
    "${PROJECT_SOURCE_DIR}/src/*.h" "${PROJECT_SOURCE_DIR}/src/*.cpp"
    "${PROJECT_SOURCE_DIR}/apps/*.h" "${PROJECT_SOURCE_DIR}/apps/*.cpp"
    "${PROJECT_SOURCE_DIR}/tests/*.h" "${PROJECT_SOURCE_DIR}/tests/*.cpp"
    "${PROJECT_SOURCE_DIR}/bench/*.h" "${PROJECT_SOURCE_DIR}/bench/*.cpp")
if(CLANG_FORMAT)
    string(REPLACE ";" "\n" format_list "${format_files}")
    file(WRITE "${CMAKE_BINARY_DIR}/format-files" "${format_list}\n")
    add_custom_target(format-check
        COMMAND ${CLANG_FORMAT} --dry-run --Werror "--files=${CMAKE_BINARY_DIR}/format-files"
        COMMENT "clang-format" VERBATIM)
endif()

if(CLANG_TIDY)
    set(stamps "")
    set(headers ${format_files})
    list(FILTER headers INCLUDE REGEX "\\.h$")
    set(sources ${format_files})
    list(FILTER sources INCLUDE REGEX "/(src|apps)/.*\\.cpp$")
    foreach(source IN LISTS sources)
        file(RELATIVE_PATH relative "${PROJECT_SOURCE_DIR}" "${source}")
        set(stamp "${CMAKE_BINARY_DIR}/lint/${relative}.stamp")
        get_filename_component(folder "${stamp}" DIRECTORY)
        file(MAKE_DIRECTORY "${folder}")
        add_custom_command(OUTPUT "${stamp}"
            COMMAND ${CLANG_TIDY} --quiet -p "${CMAKE_BINARY_DIR}" "${source}"
            COMMAND ${CMAKE_COMMAND} -E touch "${stamp}"
            DEPENDS "${source}" ${headers} "${PROJECT_SOURCE_DIR}/.clang-tidy"
            COMMENT "clang-tidy ${relative}" VERBATIM)
        list(APPEND stamps "${stamp}")
    endforeach()
    add_custom_target(lint DEPENDS ${stamps})
endif()

# Run by CPack when a package's files are together: Debian wants manual pages and changelogs
# compressed, and without the time, which would make each build another package.
file(GLOB_RECURSE pages "${CPACK_TEMPORARY_DIRECTORY}/*/man/*.1" "${CPACK_TEMPORARY_DIRECTORY}/*/changelog")
foreach(page IN LISTS pages)
    execute_process(COMMAND gzip -9nf "${page}" COMMAND_ERROR_IS_FATAL ANY)
endforeach()

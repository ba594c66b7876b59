# Run by CPack when a package's files are together: Debian wants manual pages and changelogs
# compressed, and without the time, which would make of each build another package.
file(GLOB_RECURSE files "${CPACK_TEMPORARY_DIRECTORY}/*")
list(FILTER files INCLUDE REGEX "/man/man[0-9]/|/changelog$")
foreach(file IN LISTS files)
    execute_process(COMMAND gzip -9nf "${file}" COMMAND_ERROR_IS_FATAL ANY)
endforeach()

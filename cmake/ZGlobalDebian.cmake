# Debian packages by CPack: the libraries, what compiling against them needs, and the programs. The
# preset "package" has what the whole build has to know of it.
set(debian "${CMAKE_CURRENT_LIST_DIR}/debian")
set(library libzglobal${PROJECT_VERSION_MAJOR})
set(same_version "${library} (= ${PROJECT_VERSION})")
set(qt_development qtbase5-dev)
set(qt_vectors libqt5svg5)
set(qt_words qttranslations5-l10n)
if(ZGLOBAL_QT EQUAL 6)
    set(qt_development qt6-base-dev)
    set(qt_vectors libqt6svg6)
    set(qt_words qt6-translations-l10n)
endif()

file(STRINGS "${debian}/changelog" newest LIMIT_COUNT 1)
if(NOT newest MATCHES "\\(${PROJECT_VERSION}\\)")
    message(FATAL_ERROR "${debian}/changelog does not tell of ${PROJECT_VERSION}: ${newest}")
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_CONTACT
    "ZGlobal maintainers <maintainers@zglobal.example>")
set(CPACK_OUTPUT_FILE_PREFIX "${PROJECT_BINARY_DIR}/packages")
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_PRE_BUILD_SCRIPTS "${CMAKE_CURRENT_LIST_DIR}/CompressPages.cmake")

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL runtime development tools inspector)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${CMAKE_LIBRARY_OUTPUT_DIRECTORY}")
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")

# zglobal_package(COMPONENT NAME SECTION MULTIARCH DEPENDS DESCRIPTION) declares one. CMake knows the
# field Multi-Arch from 3.31 on only, so it goes with the section before it.
function(zglobal_package component name section multiarch depends description)
    string(TOUPPER ${component} upper)
    set(CPACK_DEBIAN_${upper}_PACKAGE_NAME ${name} PARENT_SCOPE)
    set(CPACK_DEBIAN_${upper}_PACKAGE_SECTION "${section}\nMulti-Arch: ${multiarch}" PARENT_SCOPE)
    set(CPACK_DEBIAN_${upper}_PACKAGE_DEPENDS "${depends}" PARENT_SCOPE)
    set(CPACK_DEBIAN_${upper}_DESCRIPTION "${description}" PARENT_SCOPE)
    install(FILES "${debian}/changelog" "${debian}/copyright"
        DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/${name}" COMPONENT ${component})
    set(overrides "${debian}/${component}.overrides")
    if(EXISTS "${overrides}")
        install(FILES "${overrides}" DESTINATION "${CMAKE_INSTALL_DATADIR}/lintian/overrides"
            RENAME ${name} COMPONENT ${component})
    endif()
endfunction()

set(about "ZGlobal owns the data tables of a live-streaming desktop client. It keeps
the versions of some thirty published tables, downloads a table when its
version changes, reads it into typed records and answers the client: names,
prices, addresses, masked chat lines, banners.")

zglobal_package(runtime ${library} libs same ""
"data tables of a live-streaming client: libraries
${about}
.
This package has the shared libraries.")

zglobal_package(development libzglobal-dev libdevel same "${same_version}, ${qt_development}"
"data tables of a live-streaming client: headers
${about}
.
This package has what a client compiles and tests against: the headers, the
files for CMake and pkg-config, a content server for tests, documentation and
examples.")

zglobal_package(tools zglobal-tools utils foreign "${same_version}"
"data tables of a live-streaming client: program
${about}
.
This package has the program zglobal, which updates and shows a client's
tables and masks chat lines with them, and example content for it to serve.")

zglobal_package(inspector zglobal-inspector devel foreign "${same_version}, zglobal-tools (= ${PROJECT_VERSION})"
"data tables of a live-streaming client: desktop program
${about}
.
This package has zglobal-inspector, which shows the tables, pictures, masks
and caches of a client as it sees them, and why it sees them so.")
# Chinese content in its own script, the words of Qt's own widgets, and the program's own icon.
set(CPACK_DEBIAN_INSPECTOR_PACKAGE_RECOMMENDS
    "fonts-wqy-microhei | fonts-noto-cjk, ${qt_vectors}, ${qt_words}")

# The packages with libraries in the folders where the loader looks.
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA "${debian}/triggers")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_CONTROL_EXTRA "${debian}/triggers")

set(documents "${CMAKE_INSTALL_DATADIR}/doc/libzglobal-dev")
install(FILES "${PROJECT_SOURCE_DIR}/README.md" DESTINATION "${documents}" COMPONENT development)
install(DIRECTORY "${PROJECT_SOURCE_DIR}/docs" DESTINATION "${documents}" COMPONENT development)
install(DIRECTORY "${PROJECT_SOURCE_DIR}/examples" DESTINATION "${documents}" COMPONENT development
    PATTERN "content" EXCLUDE PATTERN "__pycache__" EXCLUDE PATTERN "*.py" EXCLUDE
    PATTERN ".git*" EXCLUDE)

include(CPack)

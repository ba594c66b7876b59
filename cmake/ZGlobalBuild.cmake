# How every target of this project is built; the CMakeLists below only name sources and links.

set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_AUTOMOC ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
if(alone)
    if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
        set(CMAKE_BUILD_TYPE Release)
    endif()
    set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")
    set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")
endif()
# An installed program finds the libraries installed beside it.
if(APPLE)
    set(CMAKE_INSTALL_RPATH "@loader_path/../${CMAKE_INSTALL_LIBDIR}")
else()
    set(CMAKE_INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")
endif()

add_library(zglobal_strict INTERFACE)
target_compile_definitions(zglobal_strict INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_URL_CAST_FROM_STRING QT_NO_KEYWORDS
    QT_NO_FOREACH QT_STRICT_ITERATORS QT_USE_STRINGBUILDER
    QT_DEPRECATED_WARNINGS QT_DISABLE_DEPRECATED_BEFORE=0x050E00)
set(warnings_are_errors "")
if(ZGLOBAL_STRICT)
    set(warnings_are_errors $<$<CONFIG:Debug>:$<IF:$<CXX_COMPILER_ID:MSVC>,/WX,-Werror>>)
endif()
if(MSVC)
    target_compile_options(zglobal_strict INTERFACE /W4 /utf-8 ${warnings_are_errors})
else()
    target_compile_options(zglobal_strict INTERFACE
        -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
        -Wcast-align -Wunused ${warnings_are_errors})
endif()
if(ZGLOBAL_SANITIZE)
    add_compile_options(-fsanitize=${ZGLOBAL_SANITIZE} -fno-omit-frame-pointer
        -fno-sanitize-recover=all)
    add_link_options(-fsanitize=${ZGLOBAL_SANITIZE})
endif()

# What nearly every source includes, compiled once for all targets. A cache of compiled objects does
# without: it would have to look into the precompiled header instead of hashing what is included.
if(CMAKE_CXX_COMPILER_LAUNCHER)
    set(precompile OFF)
else()
    set(precompile ON)
endif()
option(ZGLOBAL_PRECOMPILE "Precompile the headers of Qt that most sources include" ${precompile})
function(zglobal_precompile target)
    if(NOT ZGLOBAL_PRECOMPILE)
        return()
    endif()
    if(NOT TARGET zglobal_precompiled)
        file(WRITE "${PROJECT_BINARY_DIR}/generated/precompiled.cpp" "")
        add_library(zglobal_precompiled OBJECT "${PROJECT_BINARY_DIR}/generated/precompiled.cpp")
        set_target_properties(zglobal_precompiled PROPERTIES AUTOMOC OFF)
        target_link_libraries(zglobal_precompiled PRIVATE zglobal_strict Qt${ZGLOBAL_QT}::Core)
        target_precompile_headers(zglobal_precompiled PRIVATE
            <functional> <memory> <QDateTime> <QDebug> <QDir> <QFile> <QHash> <QJsonArray>
            <QJsonDocument> <QJsonObject> <QMap> <QObject> <QSharedPointer> <QStringList> <QUrl>
            <QVector>)
    endif()
    target_precompile_headers(${target} REUSE_FROM zglobal_precompiled)
endfunction()

# zglobal_install(...) is install(), where anything is installed at all.
function(zglobal_install)
    if(ZGLOBAL_INSTALL)
        install(${ARGN})
    endif()
endfunction()

# zglobal_version_header() makes ZGlobalVersion.h of the project's version.
function(zglobal_version_header)
    set(header "${PROJECT_BINARY_DIR}/generated/ZGlobalVersion.h")
    configure_file("${PROJECT_SOURCE_DIR}/cmake/ZGlobalVersion.h.in" "${header}" @ONLY)
    zglobal_install(FILES "${header}"
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/ZGlobal COMPONENT development)
endfunction()

# zglobal_part(NAME SOURCES files... LINKS targets...) declares a static library that goes into shared
# ones of ours and is not installed.
function(zglobal_part name)
    cmake_parse_arguments(arg "" "" "SOURCES;LINKS" ${ARGN})
    add_library(${name} STATIC ${arg_SOURCES})
    set_target_properties(${name} PROPERTIES POSITION_INDEPENDENT_CODE ON)
    target_include_directories(${name} PUBLIC "${PROJECT_SOURCE_DIR}/src")
    target_link_libraries(${name} PUBLIC ${arg_LINKS} PRIVATE zglobal_strict)
    zglobal_precompile(${name})
endfunction()

# zglobal_library(NAME PAIRS names... SOURCES files... HEADERS exported headers... LINKS targets...
#     PRIVATE_LINKS targets... EXPORTED_AS name FOUND_AS name COMPONENT name)
# declares a shared library with its export header, version, alias and installation. A pair is a
# source and the exported header of the same name. Users link ZGlobal::NAME, or the name given, and
# find it by the component FOUND_AS, where it is one of its own. Installed by parts it belongs to the
# COMPONENT, "runtime" where none is given, and what compiling against it needs to "development".
function(zglobal_library name)
    cmake_parse_arguments(arg "" "EXPORTED_AS;FOUND_AS;COMPONENT" "PAIRS;SOURCES;HEADERS;LINKS;PRIVATE_LINKS" ${ARGN})
    if(NOT arg_EXPORTED_AS)
        set(arg_EXPORTED_AS ${name})
    endif()
    if(NOT arg_COMPONENT)
        set(arg_COMPONENT runtime)
    endif()
    foreach(pair IN LISTS arg_PAIRS)
        list(APPEND arg_SOURCES ${pair}.cpp)
        list(APPEND arg_HEADERS ${pair}.h)
    endforeach()
    add_library(${name} SHARED ${arg_SOURCES} ${arg_HEADERS})
    add_library(ZGlobal::${arg_EXPORTED_AS} ALIAS ${name})
    set_target_properties(${name} PROPERTIES EXPORT_NAME ${arg_EXPORTED_AS}
        VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR})
    include(GenerateExportHeader)
    generate_export_header(${name}
        EXPORT_FILE_NAME "${PROJECT_BINARY_DIR}/generated/${name}Export.h")
    target_include_directories(${name} PUBLIC
        $<BUILD_INTERFACE:${host_headers}>
        $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/src>
        $<BUILD_INTERFACE:${PROJECT_BINARY_DIR}/generated>
        $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/ZGlobal>)
    target_link_libraries(${name}
        PUBLIC ${arg_LINKS} PRIVATE $<BUILD_INTERFACE:zglobal_strict> ${arg_PRIVATE_LINKS})
    zglobal_precompile(${name})
    zglobal_install(TARGETS ${name} EXPORT ZGlobal${arg_FOUND_AS}Targets
        RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT ${arg_COMPONENT}
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT ${arg_COMPONENT}
            NAMELINK_COMPONENT development
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
    zglobal_install(FILES "${PROJECT_BINARY_DIR}/generated/${name}Export.h"
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/ZGlobal COMPONENT development)
    foreach(header IN LISTS arg_HEADERS)
        get_filename_component(folder "${header}" DIRECTORY)
        zglobal_install(FILES "${header}" DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/ZGlobal/${folder}"
            COMPONENT development)
    endforeach()
endfunction()

# zglobal_host_headers(VARIABLE targets...) sets a folder that has the headers of a host, and refuses a
# host that lacks one. Our own lie among the sources under the same names and would win otherwise: a
# package's folders come last.
function(zglobal_host_headers variable)
    set(folders "")
    foreach(target IN LISTS ARGN)
        get_target_property(found ${target} INTERFACE_INCLUDE_DIRECTORIES)
        list(FILTER found EXCLUDE REGEX "INSTALL_INTERFACE|-NOTFOUND$")
        list(TRANSFORM found REPLACE "^[$]<BUILD_INTERFACE:(.*)>$" "\\1")
        list(APPEND folders ${found})
    endforeach()
    set(forwarding "${PROJECT_BINARY_DIR}/generated/host_headers")
    foreach(header host/ZGlobalConfig.h host/ZHttpComm.h host/ZImageCacheUtil.h host/zErrorInfo.h)
        unset(host_folder CACHE)
        find_path(host_folder ${header} PATHS ${folders} NO_DEFAULT_PATH)
        if(NOT host_folder)
            message(FATAL_ERROR "The host ${ZGLOBAL_HOST} has no header ${header} in: ${folders}")
        endif()
        file(WRITE "${forwarding}/${header}" "#include \"${host_folder}/${header}\"\n")
    endforeach()
    unset(host_folder CACHE)
    set(${variable} "${forwarding}" PARENT_SCOPE)
endfunction()

# zglobal_program(NAME SOURCES files... LINKS targets...) declares a program on the exported headers.
function(zglobal_program name)
    cmake_parse_arguments(arg "" "" "SOURCES;LINKS" ${ARGN})
    add_executable(${name} ${arg_SOURCES})
    target_link_libraries(${name} PRIVATE zglobal_strict ${arg_LINKS})
    zglobal_precompile(${name})
endfunction()

# zglobal_translations(VARIABLE files...) sets the source that puts translations below :/translations.
# Where Qt's tools for them are missing there is none and a program speaks English; a package has to
# have them.
function(zglobal_translations variable)
    set(${variable} "" PARENT_SCOPE)
    find_package(Qt${ZGLOBAL_QT} QUIET OPTIONAL_COMPONENTS LinguistTools)
    if(NOT TARGET Qt${ZGLOBAL_QT}::lrelease)
        set(severity STATUS)
        if(ZGLOBAL_PACKAGES)
            set(severity FATAL_ERROR)
        endif()
        message(${severity} "No LinguistTools of Qt ${ZGLOBAL_QT}: programs without translations")
        return()
    endif()
    qt_add_translation(translated ${ARGN} OPTIONS -silent)
    set(files "")
    foreach(file IN LISTS translated)
        get_filename_component(name "${file}" NAME)
        string(APPEND files "<file>${name}</file>")
    endforeach()
    configure_file("${PROJECT_SOURCE_DIR}/cmake/Translations.qrc.in" translations.qrc @ONLY)
    qt_add_resources(embedded "${CMAKE_CURRENT_BINARY_DIR}/translations.qrc")
    set(${variable} ${embedded} PARENT_SCOPE)
endfunction()

# zglobal_test(NAME SOURCES files... LINKS targets...) declares a Qt Test executable. Each test runs
# with no display and no proxy, and is ended by CTest when it hangs.
function(zglobal_test name)
    cmake_parse_arguments(arg "" "" "SOURCES;LINKS" ${ARGN})
    zglobal_program(${name} SOURCES ${arg_SOURCES} LINKS Qt${ZGLOBAL_QT}::Test ${arg_LINKS})
    target_include_directories(${name} PRIVATE "${PROJECT_SOURCE_DIR}/tests")
    add_test(NAME ${name} COMMAND ${name})
    set_tests_properties(${name} PROPERTIES TIMEOUT 900)
endfunction()

# zglobal_test_environment() says in what environment every test of the folder runs. What the thread
# sanitizer tells of Debian's Qt, glib and archive library is no finding: they are built without it,
# so it does not see how they guard what they share.
function(zglobal_test_environment)
    set(suppressions "${PROJECT_SOURCE_DIR}/cmake/tsan.supp")
    set(leaks "${PROJECT_SOURCE_DIR}/cmake/lsan.supp")
    get_property(tests DIRECTORY PROPERTY TESTS)
    set_tests_properties(${tests} PROPERTIES ENVIRONMENT
        "no_proxy=*;LC_ALL=C.UTF-8;LANGUAGE=;QT_LOGGING_RULES=;LSAN_OPTIONS=suppressions=${leaks} print_suppressions=0;TSAN_OPTIONS=suppressions=${suppressions} ignore_noninstrumented_modules=1")
endfunction()

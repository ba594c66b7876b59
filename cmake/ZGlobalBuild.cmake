# How every target of this project is built; the CMakeLists below only name sources and links.

set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_AUTOMOC ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
    set(CMAKE_BUILD_TYPE Release)
endif()
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")
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
if(MSVC)
    target_compile_options(zglobal_strict INTERFACE /W4 /utf-8 $<$<CONFIG:Debug>:/WX>)
else()
    target_compile_options(zglobal_strict INTERFACE
        -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
        -Wcast-align -Wunused $<$<CONFIG:Debug>:-Werror>)
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
        file(WRITE "${CMAKE_BINARY_DIR}/generated/precompiled.cpp" "")
        add_library(zglobal_precompiled OBJECT "${CMAKE_BINARY_DIR}/generated/precompiled.cpp")
        set_target_properties(zglobal_precompiled PROPERTIES AUTOMOC OFF)
        target_link_libraries(zglobal_precompiled PRIVATE zglobal_strict Qt${ZGLOBAL_QT}::Core)
        target_precompile_headers(zglobal_precompiled PRIVATE
            <functional> <memory> <QDateTime> <QDebug> <QDir> <QFile> <QHash> <QJsonArray>
            <QJsonDocument> <QJsonObject> <QMap> <QObject> <QSharedPointer> <QStringList> <QUrl>
            <QVector>)
    endif()
    target_precompile_headers(${target} REUSE_FROM zglobal_precompiled)
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
#     PRIVATE_LINKS targets... EXPORTED_AS name)
# declares a shared library with its export header, version, alias and installation. A pair is a
# source and the exported header of the same name. Users link ZGlobal::NAME, or the name given.
function(zglobal_library name)
    cmake_parse_arguments(arg "" "EXPORTED_AS" "PAIRS;SOURCES;HEADERS;LINKS;PRIVATE_LINKS" ${ARGN})
    if(NOT arg_EXPORTED_AS)
        set(arg_EXPORTED_AS ${name})
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
        EXPORT_FILE_NAME "${CMAKE_BINARY_DIR}/generated/${name}Export.h")
    target_include_directories(${name} PUBLIC
        $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/src>
        $<BUILD_INTERFACE:${CMAKE_BINARY_DIR}/generated>
        $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/ZGlobal>)
    target_link_libraries(${name}
        PUBLIC ${arg_LINKS} PRIVATE $<BUILD_INTERFACE:zglobal_strict> ${arg_PRIVATE_LINKS})
    zglobal_precompile(${name})
    install(TARGETS ${name} EXPORT ZGlobalTargets
        RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
    install(FILES "${CMAKE_BINARY_DIR}/generated/${name}Export.h"
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/ZGlobal)
    foreach(header IN LISTS arg_HEADERS)
        get_filename_component(folder "${header}" DIRECTORY)
        install(FILES "${header}" DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/ZGlobal/${folder}")
    endforeach()
endfunction()

# zglobal_program(NAME SOURCES files... LINKS targets...) declares a program on the exported headers.
function(zglobal_program name)
    cmake_parse_arguments(arg "" "" "SOURCES;LINKS" ${ARGN})
    add_executable(${name} ${arg_SOURCES})
    target_link_libraries(${name} PRIVATE zglobal_strict ${arg_LINKS})
    zglobal_precompile(${name})
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
    get_property(tests DIRECTORY PROPERTY TESTS)
    set_tests_properties(${tests} PROPERTIES ENVIRONMENT
        "no_proxy=*;LC_ALL=C.UTF-8;QT_LOGGING_RULES=;TSAN_OPTIONS=suppressions=${suppressions} ignore_noninstrumented_modules=1")
endfunction()

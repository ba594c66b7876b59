# The installed package. find_package(ZGlobal) gives ZGlobal::ZGlobal, the host and promise libraries,
# and of the components what is installed: Client is ZGlobal::ZGlobalClient, Models
# ZGlobal::ZGlobalModels, Testing ZGlobal::Testing.
# For everything but CMake there is a pkg-config file each.
include(CMakePackageConfigHelpers)

set(package_folder "${CMAKE_INSTALL_LIBDIR}/cmake/ZGlobal")
configure_package_config_file(
    "${PROJECT_SOURCE_DIR}/cmake/ZGlobalConfig.cmake.in" "${PROJECT_BINARY_DIR}/ZGlobalConfig.cmake"
    INSTALL_DESTINATION "${package_folder}" PATH_VARS CMAKE_INSTALL_INCLUDEDIR)
write_basic_package_version_file(
    "${PROJECT_BINARY_DIR}/ZGlobalConfigVersion.cmake" COMPATIBILITY SameMajorVersion)
install(FILES
    "${PROJECT_BINARY_DIR}/ZGlobalConfig.cmake" "${PROJECT_BINARY_DIR}/ZGlobalConfigVersion.cmake"
    DESTINATION "${package_folder}" COMPONENT development)

# zglobal_pkg_config(NAME DESCRIPTION REQUIRES packages... LIBS libraries... FOLDERS of headers...)
set(pkg_config_folder "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
file(RELATIVE_PATH prefix_from_pc "/${pkg_config_folder}" "/")
string(REGEX REPLACE "/$" "" prefix_from_pc "${prefix_from_pc}")
function(zglobal_pkg_config name description)
    cmake_parse_arguments(arg "" "" "REQUIRES;LIBS;FOLDERS" ${ARGN})
    list(JOIN arg_REQUIRES " " requires)
    list(TRANSFORM arg_LIBS PREPEND "-l" OUTPUT_VARIABLE libs)
    list(JOIN libs " " libs)
    list(TRANSFORM arg_FOLDERS PREPEND "-I\${includedir}/" OUTPUT_VARIABLE cflags)
    list(JOIN cflags " " cflags)
    configure_file("${PROJECT_SOURCE_DIR}/cmake/ZGlobal.pc.in" "${PROJECT_BINARY_DIR}/${name}.pc" @ONLY)
    install(FILES "${PROJECT_BINARY_DIR}/${name}.pc" DESTINATION "${pkg_config_folder}"
        COMPONENT development)
endfunction()

set(host_libraries "")
if(NOT ZGLOBAL_HOST)
    set(host_libraries ZNetWork ZUtility)
endif()
set(promise_folder "")
if(NOT QtPromise_INCLUDE_DIR)
    set(promise_folder ZGlobal/qtpromise)
endif()
install(EXPORT ZGlobalTargets NAMESPACE ZGlobal:: DESTINATION "${package_folder}"
    COMPONENT development)
zglobal_pkg_config(zglobal "The data tables of a live-streaming client"
    REQUIRES "Qt${ZGLOBAL_QT}Core >= ${least_qt}"
    LIBS ZGlobal ${host_libraries} FOLDERS ZGlobal ${promise_folder})
if(ZGLOBAL_CLIENT)
    install(EXPORT ZGlobalClientTargets NAMESPACE ZGlobal:: DESTINATION "${package_folder}"
    COMPONENT development)
    zglobal_pkg_config(zglobalclient "ZGlobal with start-up, updates and tidying for a program"
        REQUIRES "zglobal = ${PROJECT_VERSION}" LIBS ZGlobalClient)
endif()
if(ZGLOBAL_MODELS)
    install(EXPORT ZGlobalModelsTargets NAMESPACE ZGlobal:: DESTINATION "${package_folder}"
    COMPONENT development)
    zglobal_pkg_config(zglobalmodels "Item models over ZGlobal's tables for Qt's views"
        REQUIRES "zglobal = ${PROJECT_VERSION}" LIBS ZGlobalModels)
endif()
if(ZGLOBAL_TESTING)
    install(EXPORT ZGlobalTestingTargets NAMESPACE ZGlobal:: DESTINATION "${package_folder}"
    COMPONENT development)
    zglobal_pkg_config(zglobaltesting "A content server, tables and folders for tests on ZGlobal"
        REQUIRES "Qt${ZGLOBAL_QT}Core >= ${least_qt}" LIBS ZGlobalTesting FOLDERS ZGlobal)
endif()

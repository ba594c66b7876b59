# The installed package: find_package(ZGlobal) gives ZGlobal::ZGlobalClient, ZGlobal::ZGlobal, the two
# host libraries and, for tests, ZGlobal::Testing.
include(CMakePackageConfigHelpers)

set(package_folder "${CMAKE_INSTALL_LIBDIR}/cmake/ZGlobal")
configure_package_config_file(
    "${PROJECT_SOURCE_DIR}/cmake/ZGlobalConfig.cmake.in" "${PROJECT_BINARY_DIR}/ZGlobalConfig.cmake"
    INSTALL_DESTINATION "${package_folder}" PATH_VARS CMAKE_INSTALL_INCLUDEDIR)
write_basic_package_version_file(
    "${PROJECT_BINARY_DIR}/ZGlobalConfigVersion.cmake" COMPATIBILITY SameMajorVersion)
install(FILES
    "${PROJECT_BINARY_DIR}/ZGlobalConfig.cmake" "${PROJECT_BINARY_DIR}/ZGlobalConfigVersion.cmake"
    DESTINATION "${package_folder}")
install(EXPORT ZGlobalTargets NAMESPACE ZGlobal:: DESTINATION "${package_folder}")

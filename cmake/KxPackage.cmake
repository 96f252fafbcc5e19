# What find_package(KxDevUI) reads. The targets themselves are installed where they are made.
include(CMakePackageConfigHelpers)

set(kx_package_dir lib/cmake/KxDevUI)
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/KxDevUIConfigVersion.cmake COMPATIBILITY SameMinorVersion)
configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/KxDevUIConfig.cmake.in
    ${CMAKE_CURRENT_BINARY_DIR}/KxDevUIConfig.cmake
    INSTALL_DESTINATION ${kx_package_dir})
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/KxDevUIConfig.cmake ${CMAKE_CURRENT_BINARY_DIR}/KxDevUIConfigVersion.cmake
    ${CMAKE_CURRENT_LIST_DIR}/KxStyles.cmake ${CMAKE_CURRENT_LIST_DIR}/KxStyles.manifest
    DESTINATION ${kx_package_dir})
install(EXPORT KxDevUI NAMESPACE KxDevUI:: FILE KxDevUITargets.cmake DESTINATION ${kx_package_dir})

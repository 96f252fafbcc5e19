# What find_package(KxDevUI) reads. The targets themselves are installed where they are made.
include(CMakePackageConfigHelpers)
include(${CMAKE_CURRENT_LIST_DIR}/KxRuntime.cmake)
kx_runtime(kx_package_runtime)

set(kx_package_dir lib/cmake/KxDevUI)
set(kx_package_bin bin)
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/KxDevUIConfigVersion.cmake COMPATIBILITY SameMinorVersion)
configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/KxDevUIConfig.cmake.in
    ${CMAKE_CURRENT_BINARY_DIR}/KxDevUIConfig.cmake
    INSTALL_DESTINATION ${kx_package_dir} PATH_VARS kx_package_bin)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/KxDevUIConfig.cmake ${CMAKE_CURRENT_BINARY_DIR}/KxDevUIConfigVersion.cmake
    ${CMAKE_CURRENT_LIST_DIR}/KxDeploy.cmake ${CMAKE_CURRENT_LIST_DIR}/KxRuntime.cmake
    ${CMAKE_CURRENT_LIST_DIR}/KxStyles.cmake ${CMAKE_CURRENT_LIST_DIR}/KxStyles.manifest
    DESTINATION ${kx_package_dir})
install(EXPORT KxDevUI NAMESPACE KxDevUI:: FILE KxDevUITargets.cmake DESTINATION ${kx_package_dir})

# The pages and examples go along.
install(FILES README.md CONTRIBUTING.md CHANGELOG.md DESTINATION share/kxdevui)
install(DIRECTORY docs/ DESTINATION share/kxdevui/docs FILES_MATCHING PATTERN "*.md" PATTERN "*.png")
install(DIRECTORY examples/minimal examples/beam_switch examples/dial DESTINATION share/kxdevui/examples)

# cpack makes one ZIP of everything.
set(CPACK_GENERATOR ZIP)
set(CPACK_PACKAGE_NAME KxDevUI)
set(CPACK_PACKAGE_VENDOR "The device UI library")
include(CPack)

# The package: find_package(vorn) gives vorn::vorn and the framework that it stands on.
include(CMakePackageConfigHelpers)

install(TARGETS vorn vornafx vornafx_module EXPORT vorn
        RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(EXPORT vorn NAMESPACE vorn:: FILE vorn-targets.cmake DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/vorn)
install(FILES ${VORN_RUNTIME_DLLS} DESTINATION ${CMAKE_INSTALL_BINDIR})
install(DIRECTORY framework/include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} FILES_MATCHING PATTERN "*.h")
install(DIRECTORY vorn DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
        FILES_MATCHING PATTERN "*.h" PATTERN "detail" EXCLUDE)

configure_package_config_file(cmake/vorn-config.cmake.in vorn-config.cmake
                              INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/vorn
                              PATH_VARS CMAKE_INSTALL_BINDIR)
write_basic_package_version_file(vorn-config-version.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/vorn-config.cmake ${CMAKE_CURRENT_BINARY_DIR}/vorn-config-version.cmake
              cmake/mingw-w64.cmake
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/vorn)

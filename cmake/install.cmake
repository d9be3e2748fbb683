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

# A project that takes the toolkit in as a folder installs no more than it links.
if(NOT PROJECT_IS_TOP_LEVEL)
  return()
endif()
install(FILES README.md CHANGELOG.md LICENSE DESTINATION .)
install(DIRECTORY docs DESTINATION . FILES_MATCHING PATTERN "*.md" PATTERN "*.png" PATTERN "*.cpp")
# The examples: the programs beside the DLLs, the sources to copy, the data to try them on.
install(DIRECTORY examples DESTINATION .)
if(VORN_BUILD_EXAMPLES)
  get_property(folders DIRECTORY examples PROPERTY SUBDIRECTORIES)
  foreach(folder IN LISTS folders)
    get_property(targets DIRECTORY ${folder} PROPERTY BUILDSYSTEM_TARGETS)
    foreach(target IN LISTS targets)
      get_target_property(type ${target} TYPE)
      if(type STREQUAL "EXECUTABLE")
        install(TARGETS ${target} RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
      endif()
    endforeach()
  endforeach()
endif()

set(CPACK_GENERATOR ZIP)
set(CPACK_PACKAGE_FILE_NAME "vorn-${PROJECT_VERSION}-win64")
set(CPACK_STRIP_FILES ON)
include(CPack)

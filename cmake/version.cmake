# Gives a DLL a version resource: the version of project() in the top CMakeLists.txt, which is its only place.
function(vorn_version_info target description)
  configure_file("${PROJECT_SOURCE_DIR}/cmake/version.rc.in" "${CMAKE_CURRENT_BINARY_DIR}/${target}_version.rc" @ONLY)
  target_sources(${target} PRIVATE "${CMAKE_CURRENT_BINARY_DIR}/${target}_version.rc")
endfunction()

# The C++ runtime is shared: exceptions and objects cross DLL borders. Its DLLs stand beside the programs.
set(VORN_RUNTIME_DLLS "")
if(MINGW)
  foreach(name libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
    execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${name}
                    OUTPUT_VARIABLE path OUTPUT_STRIP_TRAILING_WHITESPACE)
    if(NOT EXISTS "${path}")
      set(path "/usr/x86_64-w64-mingw32/lib/${name}")
    endif()
    if(NOT EXISTS "${path}")
      message(FATAL_ERROR "The compiler's runtime ${name} was not found.")
    endif()
    set(copy "${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/${name}")
    if(NOT EXISTS "${copy}")
      # Debug information goes: 20 MB that Wine would read into the memory of every process.
      file(MAKE_DIRECTORY "${CMAKE_RUNTIME_OUTPUT_DIRECTORY}")
      execute_process(COMMAND ${CMAKE_STRIP} --strip-debug -o "${copy}" "${path}" COMMAND_ERROR_IS_FATAL ANY)
    endif()
    list(APPEND VORN_RUNTIME_DLLS "${copy}")
  endforeach()
endif()

# Moves a target's debug information into a file beside it, which debuggers find by a note in the target. Inside, it
# would be read into the memory of every process, and is ten times the size of all the rest.
function(vorn_split_debug_info target)
  if(MINGW AND CMAKE_OBJCOPY AND CMAKE_STRIP)
    add_custom_command(TARGET ${target} POST_BUILD
      COMMAND ${CMAKE_OBJCOPY} --only-keep-debug $<TARGET_FILE:${target}> $<TARGET_FILE:${target}>.debug
      COMMAND ${CMAKE_STRIP} --strip-debug $<TARGET_FILE:${target}>
      COMMAND ${CMAKE_OBJCOPY} --add-gnu-debuglink=$<TARGET_FILE:${target}>.debug $<TARGET_FILE:${target}>
      VERBATIM)
  endif()
endfunction()

# Compile options that every target of this project takes; nothing of it reaches the package.
add_library(vorn_build_options INTERFACE)
target_compile_definitions(vorn_build_options INTERFACE _CRT_SECURE_NO_WARNINGS)
target_compile_options(vorn_build_options INTERFACE -Wall -Wextra -Wpedantic)
if(VORN_WERROR)
  target_compile_options(vorn_build_options INTERFACE -Werror)
endif()
if(VORN_UB_TRAPS)
  # The target has no sanitizer runtime; a trap still stops at the fault with a backtrace. The framework's
  # interface allows GetSafeHwnd and its like on null pointers.
  target_compile_options(vorn_build_options INTERFACE -fsanitize=undefined -fsanitize-undefined-trap-on-error
                                                      -fno-sanitize=alignment,vptr,null)
endif()

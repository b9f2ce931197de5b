# The warnings that every target of this project is built with.
add_library(brindle_warnings INTERFACE)
target_compile_options(brindle_warnings INTERFACE
  $<$<CXX_COMPILER_ID:GNU,Clang>:-Wall -Wextra -Wpedantic -Wshadow -Wconversion>)

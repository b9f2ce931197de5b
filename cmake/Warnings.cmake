# The warnings that every target of this project is built with.
add_library(brindle_warnings INTERFACE)
target_compile_options(brindle_warnings INTERFACE
  $<$<CXX_COMPILER_ID:GNU,Clang>:-Wall -Wextra -Wpedantic -Wshadow -Wconversion>)
# GCC 12 at -O3 warns of copies of text onto itself that cannot be; later ones know better.
target_compile_options(brindle_warnings INTERFACE
  $<$<AND:$<CXX_COMPILER_ID:GNU>,$<VERSION_LESS:$<CXX_COMPILER_VERSION>,13>,$<CONFIG:Release>>:-Wno-restrict>)

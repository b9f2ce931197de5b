# Every source is laid out as clang-format 14 lays it out.
#   cmake -DREPOSITORY=<folder> -P format.cmake
cmake_policy(VERSION 3.25)


find_program(CLANG_FORMAT NAMES clang-format-14 clang-format)
if(NOT CLANG_FORMAT)
  message(FATAL_ERROR "clang-format 14 is not installed.")
endif()
execute_process(COMMAND ${CLANG_FORMAT} --version OUTPUT_VARIABLE version)
if(NOT version MATCHES "version 14\\.")
  message(FATAL_ERROR "Version 14 is wanted, since each version has its own layout: ${version}")
endif()

set(files "")
foreach(folder src tests demo bench fuzz)
  file(GLOB_RECURSE found ${REPOSITORY}/${folder}/*.h ${REPOSITORY}/${folder}/*.cpp)
  if(NOT found)
    message(FATAL_ERROR "There are no sources in ${folder}.")
  endif()
  list(APPEND files ${found})
endforeach()
execute_process(COMMAND ${CLANG_FORMAT} --dry-run --Werror ${files} RESULT_VARIABLE result)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "Run clang-format -i over these.")
endif()

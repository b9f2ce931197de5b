# The folders of src/ stack: each imports itself and folders below it, never one beside or above.
# Only those that face the toolkit and the system include more than the standard library.
#   cmake -DSOURCE=<src> -P layers.cmake
cmake_policy(VERSION 3.25)


set(rank_base 1)
set(rank_settings 2)
set(rank_irc 3)
foreach(folder mail advert update aol)
  set(rank_${folder} 4)
endforeach()
foreach(folder ui platform)
  set(rank_${folder} 5)
endforeach()
set(rank_app 6)
set(rank_ 7)  # main.cpp lies in no folder

set(lowest_facing_out 5)
set(further_base "utf8proc.h")   # the one library of the core
set(further_mail "immintrin.h")  # the compiler's own

set(faults "")
file(GLOB_RECURSE files RELATIVE ${SOURCE} ${SOURCE}/*.h ${SOURCE}/*.cpp ${SOURCE}/*.in)
list(LENGTH files count)
if(count EQUAL 0)
  message(FATAL_ERROR "There are no sources in ${SOURCE}.")
endif()
foreach(file IN LISTS files)
  string(REGEX MATCH "^[^/]*/" folder ${file})
  string(REPLACE "/" "" folder "${folder}")
  if(NOT DEFINED rank_${folder})
    message(FATAL_ERROR "src/${folder} has no place among the folders.")
  endif()
  file(STRINGS ${SOURCE}/${file} includes REGEX "^[ \t]*#[ \t]*include")
  foreach(include IN LISTS includes)
    # Standard headers have neither a dot nor a folder; ui/ also imports what is made of its forms.
    set(fine FALSE)
    if(include MATCHES "\"([a-z]+)/")
      set(target "${CMAKE_MATCH_1}")
      if(target STREQUAL folder OR rank_${target} LESS rank_${folder})
        set(fine TRUE)
      endif()
    elseif(rank_${folder} GREATER_EQUAL lowest_facing_out)
      set(fine TRUE)
    elseif(include MATCHES "<([a-z_]+|${further_${folder}})>")
      set(fine TRUE)
    endif()
    if(NOT fine)
      string(APPEND faults "\n  src/${file}: ${include}")
    endif()
  endforeach()
endforeach()
if(faults)
  message(FATAL_ERROR "These imports go up, sideways or out:${faults}")
endif()
message("${count} files import downwards only.")

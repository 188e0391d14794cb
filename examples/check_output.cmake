# Runs PROGRAM and compares what it prints with the comments of SOURCE that say so: those at the ends of the lines of a
# printf, and those that have a line to themselves below.

execute_process(COMMAND "${PROGRAM}" OUTPUT_VARIABLE printed RESULT_VARIABLE status)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "the program ended with ${status}")
endif()

file(STRINGS "${SOURCE}" lines)
set(said "")
set(is_printing FALSE) # whether the statement is a printf
set(is_complete TRUE)  # whether the statement has ended, so that the next line of code begins another
foreach(line IN LISTS lines)
  string(REGEX REPLACE " *//.*$" "" code "${line}")
  if(NOT code STREQUAL "")
    if(is_complete)
      set(is_printing FALSE)
    endif()
    if(code MATCHES "std::printf")
      set(is_printing TRUE)
    endif()
    string(REGEX MATCH "[;{}]$" is_complete "${code}")
  endif()
  if(is_printing AND line MATCHES "// (.*)$")
    string(APPEND said "${CMAKE_MATCH_1}\n")
  endif()
endforeach()

if(said STREQUAL "" OR NOT said STREQUAL printed)
  message(FATAL_ERROR "the program printed\n${printed}instead of\n${said}")
endif()

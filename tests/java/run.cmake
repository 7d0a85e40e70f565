# Runs a command that must succeed and show a text: cmake -P run.cmake EXPRESSION COMMAND...
#
# The exit code alone tells too little: a program whose emulator's server dies ends at once, with 0.

math(EXPR last "${CMAKE_ARGC} - 1")
foreach(argument RANGE 4 ${last})
  list(APPEND command "${CMAKE_ARGV${argument}}")
endforeach()
execute_process(COMMAND ${command} RESULT_VARIABLE code OUTPUT_VARIABLE output ECHO_OUTPUT_VARIABLE)
if(NOT code STREQUAL "0")
  message(FATAL_ERROR "The run ended with ${code}")
elseif(NOT output MATCHES "${CMAKE_ARGV3}")
  message(FATAL_ERROR "The run ended early: its output shows no ${CMAKE_ARGV3}")
endif()

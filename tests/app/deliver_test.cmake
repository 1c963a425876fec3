# A build brings delivered files up to date and keeps those that the operator has changed.
#   cmake -Dfolder=<to work in> -Dscript=<deliver.cmake> -P deliver_test.cmake

function(deliver)
  execute_process(COMMAND ${CMAKE_COMMAND} -Dfrom=${folder}/tree/Initial -Dto=${folder}/program
    -Drecord=${folder}/program/.delivered -P ${script} OUTPUT_QUIET ERROR_QUIET
    COMMAND_ERROR_IS_FATAL ANY)
endfunction()

function(expect file content)
  file(READ ${folder}/program/Initial/${file} found)
  if(NOT found STREQUAL content)
    message(SEND_ERROR "${file} holds \"${found}\", not \"${content}\"")
  endif()
endfunction()

file(REMOVE_RECURSE ${folder})
file(WRITE ${folder}/tree/Initial/changed "first")
file(WRITE ${folder}/tree/Initial/untouched "first")
deliver()
expect(changed "first")
file(WRITE ${folder}/program/Initial/changed "the operator's")
foreach(round second third)
  file(WRITE ${folder}/tree/Initial/changed ${round})
  file(WRITE ${folder}/tree/Initial/untouched ${round})
  deliver()
  expect(changed "the operator's")
  expect(untouched ${round})
endforeach()
file(REMOVE ${folder}/program/Initial/changed)
deliver()
expect(changed "third")

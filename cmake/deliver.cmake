# Copies folders into a program's folder, but keeps every file there that the operator has changed.
#
#   cmake "-Dfrom=folder;folder.." -Dto=folder -Drecord=folder -P deliver.cmake
#
# `record` holds each file as it was delivered last: a file that differs from it is the operator's.

function(same first second result)
  set(${result} FALSE PARENT_SCOPE)
  if(EXISTS ${first} AND EXISTS ${second})
    file(SHA256 ${first} firstHash)
    file(SHA256 ${second} secondHash)
    if(firstHash STREQUAL secondHash)
      set(${result} TRUE PARENT_SCOPE)
    endif()
  endif()
endfunction()

foreach(folder ${from})
  get_filename_component(parent ${folder} DIRECTORY)
  file(GLOB_RECURSE files RELATIVE ${parent} ${folder}/*)
  foreach(file ${files})
    same(${parent}/${file} ${to}/${file} upToDate)
    same(${to}/${file} ${record}/${file} asDelivered)
    if(EXISTS ${to}/${file} AND NOT upToDate AND NOT asDelivered)
      message("kept as it was changed: ${to}/${file}")
      continue()
    endif()
    foreach(copy ${to}/${file} ${record}/${file})
      same(${parent}/${file} ${copy} upToDate)
      if(NOT upToDate)
        configure_file(${parent}/${file} ${copy} COPYONLY)
      endif()
    endforeach()
  endforeach()
endforeach()

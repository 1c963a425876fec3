# clang-tidy looks at the rooms without windows as one source and at those with windows as another: most
# of its time goes into the headers of the libraries, which are then read once. Nothing builds the two;
# they are there for their compile commands.

file(GLOB_RECURSE looked_at CONFIGURE_DEPENDS *.h *.cpp)
foreach(kind logic window)
  get_property(rooms GLOBAL PROPERTY ${kind}_rooms)
  get_property(sources GLOBAL PROPERTY ${kind}_sources)
  set(whole ${CMAKE_CURRENT_BINARY_DIR}/tidy/${kind}.cpp)
  list(TRANSFORM sources REPLACE "(.+)" "#include \"\\1\"  // NOLINT")
  list(JOIN sources "\n" includes)
  file(CONFIGURE OUTPUT ${whole} CONTENT "${includes}\n" @ONLY)
  add_library(tidy_${kind} OBJECT EXCLUDE_FROM_ALL ${whole})
  set_target_properties(tidy_${kind} PROPERTIES UNITY_BUILD OFF)  # its command names the source
  target_link_libraries(tidy_${kind} PRIVATE ${rooms})
  target_include_directories(tidy_${kind} SYSTEM PRIVATE ${PROJECT_BINARY_DIR}/libraries)
  add_custom_command(OUTPUT ${whole}.good
                     COMMAND clang-tidy --quiet -p ${PROJECT_BINARY_DIR} ${whole}
                     COMMAND ${CMAKE_COMMAND} -E touch ${whole}.good
                     DEPENDS ${looked_at} ${PROJECT_SOURCE_DIR}/.clang-tidy
                     COMMENT "clang-tidy: ${kind} rooms")
  add_custom_target(tidied_${kind} ALL DEPENDS ${whole}.good)
endforeach()

# What is looked at beside the build, in the rooms without windows and in those with windows.
#
# clang-tidy looks at each kind as one source: most of its time goes into the headers of the libraries,
# which are then read once. Nothing builds the two; they are there for their compile commands.
#
# A build in which each room is one source does not see that a file lacks an include. So each file is read
# by itself too, behind the libraries' headers, which are precompiled.

file(GLOB_RECURSE looked_at CONFIGURE_DEPENDS *.h *.cpp)
foreach(header algorithm chrono fstream functional memory nlohmann/json.hpp)
  string(APPEND logic_headers "#include <${header}>\n")
endforeach()
set(window_headers "#include <QtWidgets>\n#include <filesystem>\n")
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

  set(headers ${CMAKE_CURRENT_BINARY_DIR}/tidy/${kind}.h)
  file(CONFIGURE OUTPUT ${headers} CONTENT "${${kind}_headers}" @ONLY)
  set(folders $<TARGET_PROPERTY:tidy_${kind},INCLUDE_DIRECTORIES>)
  set(definitions $<TARGET_PROPERTY:tidy_${kind},COMPILE_DEFINITIONS>)
  set(reader ${CMAKE_CXX_COMPILER} -std=c++20 -fPIC -w)
  get_property(sources GLOBAL PROPERTY ${kind}_sources)
  add_custom_command(OUTPUT ${headers}.alone
                     COMMAND ${reader} "-I$<JOIN:${folders},;-I>" -fpch-instantiate-templates
                             -x c++-header ${headers} -o ${headers}.pch
                     COMMAND ${reader} "-I$<JOIN:${folders},;-I>"
                             "$<$<BOOL:${definitions}>:-D$<JOIN:${definitions},;-D>>"
                             -fsyntax-only -include-pch ${headers}.pch ${sources}
                     COMMAND ${CMAKE_COMMAND} -E touch ${headers}.alone
                     DEPENDS ${looked_at} ${headers} COMMAND_EXPAND_LISTS VERBATIM
                     COMMENT "each file by itself: ${kind} rooms")
  add_custom_target(tidied_${kind} ALL DEPENDS ${whole}.good ${headers}.alone)
endforeach()

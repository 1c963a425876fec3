# What Windows shows of a program: its icon and its version; and what it is
# told about the program, in the manifest.

find_program(ICOTOOL icotool REQUIRED)
set(icon ${PROJECT_BINARY_DIR}/icon/isp-writer.ico)
add_custom_command(OUTPUT ${icon} DEPENDS widgets ${icon_pictures} VERBATIM
  COMMAND ${ICOTOOL} --create --output=${icon} ${icon_pictures})

function(add_resources name description)
  configure_file(windows/program.rc.in ${name}.rc @ONLY)
  target_sources(${name} PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/${name}.rc ${icon})
  set_source_files_properties(${CMAKE_CURRENT_BINARY_DIR}/${name}.rc PROPERTIES OBJECT_DEPENDS
    "${icon};${CMAKE_CURRENT_SOURCE_DIR}/windows/program.manifest")
  target_link_options(${name} PRIVATE -s)
endfunction()

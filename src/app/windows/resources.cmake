# What Windows shows of a program: its icon, made from the drawing, and its version; and what it is
# told about the program, in the manifest. A program of windows gets no console.

find_program(RSVG_CONVERT rsvg-convert REQUIRED)
find_program(ICOTOOL icotool REQUIRED)

set(drawing ${PROJECT_SOURCE_DIR}/packaging/isp-writer.svg)
set(icon ${CMAKE_CURRENT_BINARY_DIR}/isp-writer.ico)
set(draw_sizes)
set(pictures)
foreach(size 16 24 32 48 64 256)
  set(picture ${CMAKE_CURRENT_BINARY_DIR}/icon-${size}.png)
  list(APPEND draw_sizes COMMAND ${RSVG_CONVERT} -w ${size} -h ${size} -o ${picture} ${drawing})
  list(APPEND pictures ${picture})
endforeach()
add_custom_command(OUTPUT ${icon}
  ${draw_sizes} COMMAND ${ICOTOOL} --create --output=${icon} ${pictures} DEPENDS ${drawing})

function(add_resources name description)
  configure_file(windows/program.rc.in ${name}.rc @ONLY)
  target_sources(${name} PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/${name}.rc ${icon})
  set_source_files_properties(${CMAKE_CURRENT_BINARY_DIR}/${name}.rc PROPERTIES OBJECT_DEPENDS
    "${icon};${CMAKE_CURRENT_SOURCE_DIR}/windows/program.manifest")
  set_target_properties(${name} PROPERTIES WIN32_EXECUTABLE ON)
  target_link_options(${name} PRIVATE -s)
endfunction()

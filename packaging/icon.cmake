# The program's icon in `icon_sizes`, drawn from isp-writer.svg: `icon_pictures`, one PNG a size.

find_program(RSVG_CONVERT rsvg-convert REQUIRED)
set(icon_drawing ${CMAKE_CURRENT_LIST_DIR}/isp-writer.svg)
set(icon_pictures "")
foreach(size ${icon_sizes})
  set(picture ${PROJECT_BINARY_DIR}/icon/${size}.png)
  add_custom_command(OUTPUT ${picture} DEPENDS ${icon_drawing} VERBATIM
    COMMAND ${CMAKE_COMMAND} -E make_directory ${PROJECT_BINARY_DIR}/icon
    COMMAND ${RSVG_CONVERT} --width=${size} --height=${size} --output=${picture} ${icon_drawing})
  list(APPEND icon_pictures ${picture})
endforeach()

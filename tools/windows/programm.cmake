# What a program of Windows has and others have not: no console, an icon, a version in the file's properties, and a
# manifest that wants sharp windows, long paths and UTF-8.
enable_language(RC)
find_program(RSVG rsvg-convert REQUIRED)
find_program(ICOTOOL icotool REQUIRED)
set(icon ${CMAKE_CURRENT_BINARY_DIR}/koben.ico)
set(icon_source ${CMAKE_SOURCE_DIR}/ui/icons/koben.svg)
set(drawn)
foreach(size 16 20 24 32 40 48 64 256)
  set(png ${CMAKE_CURRENT_BINARY_DIR}/koben-${size}.png)
  add_custom_command(OUTPUT ${png} COMMAND ${RSVG} -w ${size} -h ${size} -o ${png} ${icon_source} DEPENDS ${icon_source})
  list(APPEND drawn ${png})
endforeach()
list(POP_BACK drawn largest)  # stays a PNG in the file, as Windows wants it
add_custom_command(OUTPUT ${icon} COMMAND ${ICOTOOL} -c -o ${icon} ${drawn} --raw=${largest} DEPENDS ${drawn} ${largest})
string(REPLACE . , KOBEN_VERSION_NUMBERS ${PROJECT_VERSION})
configure_file(${CMAKE_CURRENT_LIST_DIR}/koben.rc.in ${CMAKE_CURRENT_BINARY_DIR}/koben.rc @ONLY)
configure_file(${CMAKE_CURRENT_LIST_DIR}/koben.manifest ${CMAKE_CURRENT_BINARY_DIR}/koben.manifest COPYONLY)
set_source_files_properties(${CMAKE_CURRENT_BINARY_DIR}/koben.rc PROPERTIES OBJECT_DEPENDS
                            "${icon};${CMAKE_CURRENT_BINARY_DIR}/koben.manifest")
target_sources(koben PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/koben.rc ${icon})
set_target_properties(koben PROPERTIES WIN32_EXECUTABLE ON)

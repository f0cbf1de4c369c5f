# Every NAME.skript of this folder runs on the real program and must print NAME.soll; the interpreter itself is tried
# on the forms of a test.
file(GLOB skripte CONFIGURE_DEPENDS ${CMAKE_CURRENT_LIST_DIR}/*.skript)
foreach(skript ${skripte})
  get_filename_component(name ${skript} NAME_WE)
  add_test(NAME skript_${name} COMMAND ${CMAKE_CURRENT_LIST_DIR}/vergleiche.sh $<TARGET_FILE:koben-skript> ${skript})
endforeach()
koben_tests(skripte koben_skript)

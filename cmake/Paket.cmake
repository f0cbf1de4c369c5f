# What is installed where beside the programs, and the Debian package (CPack). "./koben paket" makes it of the release
# build; any build tree will do: build the target "paketdateien" in it, then run cpack there.
include(GNUInstallDirs)
set(KOBEN_CONTACT "KOBEN <info@koben.example>" CACHE STRING "Who answers for the packages")
set(paket ${CMAKE_SOURCE_DIR}/tools/paket)
set(made ${CMAKE_BINARY_DIR}/paketdateien)
set(revision 1)

# The names by which the desktop knows the program: the web site's, from behind.
string(REGEX REPLACE "^www\\." "" site "${KOBEN_WEBSITE}")
string(REPLACE "." ";" site "${site}")
list(REVERSE site)
list(JOIN site "." APP_ID)
string(APPEND APP_ID ".koben")

# The list of changes in its other forms. A list that does not begin with the program's version stops the build.
function(koben_changes form out)
  execute_process(COMMAND sh ${paket}/aenderungen.sh ${form} ${CMAKE_SOURCE_DIR}/docs/aenderungen.txt ${ARGN}
                  OUTPUT_VARIABLE text OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  set(${out} "${text}" PARENT_SCOPE)
endfunction()
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/docs/aenderungen.txt
             ${paket}/aenderungen.sh)
koben_changes(version newest)
if(NOT newest STREQUAL PROJECT_VERSION)
  message(FATAL_ERROR "docs/aenderungen.txt begins with ${newest}, the program is ${PROJECT_VERSION}")
endif()
koben_changes(changelog changelog ${revision} ${KOBEN_CONTACT})
file(GENERATE OUTPUT ${made}/changelog.Debian CONTENT "${changelog}\n")
koben_changes(releases RELEASES)
string(REGEX MATCH "20[0-9-]+" RELEASE_DAY "${RELEASES}")

set(DATA_PATH /usr/share/koben)
set(MANUAL_PATH /usr/share/doc/koben/KOBEN-Handbuch.pdf)
foreach(file koben.desktop koben.metainfo.xml koben.1 koben.de.1)
  configure_file(${paket}/${file}.in ${made}/${file} @ONLY)
endforeach()

# Signs in all sizes: the small ones have a drawing of their own, of fewer and broader strokes.
set(sizes 16 22 24 32 48 64 128 256 512)
set(pictures)
foreach(size ${sizes})
  set(drawing ${CMAKE_SOURCE_DIR}/ui/icons/koben.svg)
  if(size LESS_EQUAL 24)
    set(drawing ${paket}/koben-klein.svg)
  endif()
  set(picture ${made}/${size}.png)
  add_custom_command(OUTPUT ${picture} COMMAND rsvg-convert -w ${size} -h ${size} ${drawing} -o ${picture}
                     DEPENDS ${drawing} VERBATIM)
  list(APPEND pictures ${picture})
  install(FILES ${picture} DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/${size}x${size}/apps RENAME koben.png)
endforeach()
install(FILES ui/icons/koben.svg DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)

set(packed)
foreach(file koben.1 koben.de.1 changelog.Debian)
  add_custom_command(OUTPUT ${made}/${file}.gz COMMAND gzip -9nkf ${made}/${file} DEPENDS ${made}/${file} VERBATIM)
  list(APPEND packed ${made}/${file}.gz)
endforeach()
add_custom_target(paketdateien DEPENDS ${pictures} ${packed})
add_dependencies(paketdateien koben koben-altdaten handbuch)

install(FILES ${made}/koben.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES ${made}/koben.de.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/de/man1 RENAME koben.1.gz)
install(FILES ${made}/koben.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${made}/koben.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo RENAME ${APP_ID}.metainfo.xml)
install(FILES ${KOBEN_MANUAL} ${paket}/copyright ${made}/changelog.Debian.gz DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/koben)
install(FILES ${paket}/doc-base DESTINATION ${CMAKE_INSTALL_DATADIR}/doc-base RENAME koben)
install(FILES ${paket}/lintian-overrides DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides RENAME koben)

# Installing takes what is built; it does not build the tests first.
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON)
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME koben)
set(CPACK_PACKAGE_VENDOR KOBEN)
set(CPACK_PACKAGE_CONTACT "${KOBEN_CONTACT}")
set(CPACK_PACKAGE_HOMEPAGE_URL "https://${KOBEN_WEBSITE}")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Sauenplaner für Schweinebetriebe")
set(CPACK_PACKAGE_DESCRIPTION
    "KOBEN führt den Bestand eines Schweinebetriebs: Sauen, Eber, Mastschweine und
abgesetzte Ferkel. Der Betrieb bucht Belegungen, Trächtigkeitskontrollen,
Ferkelungen, Absetzungen, Behandlungen und Verkäufe; KOBEN leitet daraus
Zähler, Termine und den Zyklusstatus ab, druckt Arbeitspläne, Sauenkarten und
das Bestandsregister und rechnet Statistiken und Deckungsbeiträge.")
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE
    WORLD_READ WORLD_EXECUTE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE ${revision})
set(CPACK_DEBIAN_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
# Beside the libraries: the plugin that draws the icons, the German of Qt's own dialogs, the lists' fonts.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "libqt6svg6, qt6-translations-l10n, fonts-liberation")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "xdg-utils")
include(CPack)

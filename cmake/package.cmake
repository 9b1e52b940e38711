# The Debian package that scripts/package makes: everything in one folder, as the shop has it, a command and a
# desktop entry. Each user gets a program folder of his own on the first start; the file "per-user" says so. The version of the package is the
# first line of resources/package/changelog, too.

set(INSTALLED lib/tarvello)
install(TARGETS Tarvello RUNTIME DESTINATION ${INSTALLED})
install(FILES ${DELIVERED_DIR}/Tarvello.mdb ${DELIVERED_DIR}/Tarvello.hlp ${DELIVERED_DIR}/tipoftheday.txt
  resources/per-user DESTINATION ${INSTALLED})
install(FILES resources/tarvello.desktop DESTINATION share/applications)
install(FILES resources/package/tarvello.metainfo.xml DESTINATION share/metainfo)
install(DIRECTORY ${ICONS_DIR}/ DESTINATION share/icons/hicolor)
install(FILES resources/icons/Tarvello.svg DESTINATION share/icons/hicolor/scalable/apps RENAME tarvello.svg)
install(TARGETS tarvello-data RUNTIME DESTINATION bin)
install(FILES ${PACKED_DIR}/tarvello.1.gz ${PACKED_DIR}/tarvello-data.1.gz DESTINATION share/man/man1)
install(FILES resources/package/tarvello-data.bash DESTINATION share/bash-completion/completions RENAME tarvello-data)
install(FILES README.md docs/server.md resources/package/copyright ${PACKED_DIR}/changelog.gz DESTINATION share/doc/tarvello)
set(COMMAND_LINK ${CMAKE_BINARY_DIR}/command/tarvello)
file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/command)
file(CREATE_LINK ../${INSTALLED}/Tarvello ${COMMAND_LINK} SYMBOLIC)
install(FILES ${COMMAND_LINK} DESTINATION bin)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tarvello)
set(CPACK_PACKAGE_CONTACT "The makers of Tarvello <makers@tarvello.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "records of a computer service shop")
set(CPACK_PACKAGE_DESCRIPTION "Clients, their computers, the services done on them, the parts drawn from stock
and the invoices, in one encrypted file that several workstations may share.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Loaded by name at run time, so that nobody finds them by looking at the program.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "libqt6svg6, qt6-qpa-plugins")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "fonts-dejavu-core")
include(CPack)

# SPDX-License-Identifier: GPL-3.0-or-later
# Installing and packaging: the program, its desktop entry, icon, AppStream metadata, manual page,
# copyright and changelog. `cpack -G DEB` in the build folder makes a Debian package of the same,
# with a stripped program and its debug information in a -dbgsym package of its own (which is what
# strips it: CPack looks for the debug information in the files it installs).
include(GNUInstallDirs)

set(LEDGERLY_APPSTREAM_ID example.ledgerly.Ledgerly)
set(generated ${CMAKE_BINARY_DIR}/packaging)
configure_file(${CMAKE_CURRENT_LIST_DIR}/${LEDGERLY_APPSTREAM_ID}.metainfo.xml.in
               ${generated}/${LEDGERLY_APPSTREAM_ID}.metainfo.xml @ONLY)
configure_file(${CMAKE_CURRENT_LIST_DIR}/ledgerly.1.in ${generated}/ledgerly.1 @ONLY)
configure_file(${CMAKE_CURRENT_LIST_DIR}/changelog.in ${generated}/changelog @ONLY)

# Debian wants the manual page and the changelog compressed alike every time: no name, no time.
find_program(GZIP gzip REQUIRED)
add_custom_command(
  OUTPUT ${generated}/ledgerly.1.gz ${generated}/changelog.gz
  COMMAND ${GZIP} -9nfk ${generated}/ledgerly.1 ${generated}/changelog
  DEPENDS ${generated}/ledgerly.1 ${generated}/changelog)
add_custom_target(packaging_texts ALL DEPENDS ${generated}/ledgerly.1.gz ${generated}/changelog.gz)

install(TARGETS ledgerly RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(FILES ${CMAKE_CURRENT_LIST_DIR}/ledgerly.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${CMAKE_CURRENT_LIST_DIR}/ledgerly.svg DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
install(FILES ${generated}/${LEDGERLY_APPSTREAM_ID}.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES ${generated}/ledgerly.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES ${CMAKE_CURRENT_LIST_DIR}/copyright ${generated}/changelog.gz DESTINATION ${CMAKE_INSTALL_DOCDIR})

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME ledgerly)
set(CPACK_PACKAGE_VENDOR "Ledgerly developers")
set(CPACK_PACKAGE_CONTACT "Ledgerly developers <developers@ledgerly.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "invoices, receipts and labels for a one-person business")
set(CPACK_PACKAGE_DESCRIPTION [[Ledgerly is an invoicing program for a one-person business. Its main
window is one invoice form of ten lines: a customer, items and prices,
with the line totals, the tax and the amount due worked out as each key is
typed. Each invoice is saved as a file of its own and listed beside the
form; unpaid invoices stand out until they are marked paid. A name book
fills in known customers' addresses, and a small stock catalogue fills a
line. It prints invoices, receipts, reminders, address labels and
envelopes. All data lies in plain files in one folder.]])
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE https://ledgerly.example/)
# The libraries it links are found by dpkg-shlibdeps; the window system's plugin and the fonts the
# pages are set in are not linked, and are named here.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "qt6-qpa-plugins, fonts-urw-base35, fonts-dejavu-core")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-image-formats-plugins")
set(CPACK_DEBIAN_DEBUGINFO_PACKAGE ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_POST_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/MendDebugPackage.cmake)
include(CPack)

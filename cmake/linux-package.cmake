# What a Linux desktop expects of the program, and the Debian package made of it:
#   cmake --preset package && cmake --build --preset package --target package
# gives build-package/feedbackagent_<version>_amd64.deb. Its dependencies come from
# dpkg-shlibdeps; the desktop entry makes the program the handler of kvfb:// links.
include(GNUInstallDirs)

set(FB_APP_ID com.korvane3d.feedbackagent)
set(FB_LINUX_DIR ${PROJECT_SOURCE_DIR}/resources/linux)

install(TARGETS feedbackagent RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(FILES ${FB_LINUX_DIR}/${FB_APP_ID}.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${FB_LINUX_DIR}/${FB_APP_ID}.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
foreach(size 16 32 48 64 128 256)
  install(FILES ${FB_LINUX_DIR}/icons/${size}x${size}/${FB_APP_ID}.png
          DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/${size}x${size}/apps)
endforeach()
install(FILES ${FB_LINUX_DIR}/icons/scalable/${FB_APP_ID}.svg
        DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)

# Debian wants the changelog and the manual page compressed, reproducibly (-n: no name
# or time stamp in the header).
find_program(FB_GZIP gzip REQUIRED)
set(FB_PACKAGE_DOCS ${PROJECT_BINARY_DIR}/package-docs)
add_custom_command(
  OUTPUT ${FB_PACKAGE_DOCS}/changelog.gz ${FB_PACKAGE_DOCS}/feedbackagent.1.gz
  COMMAND ${CMAKE_COMMAND} -E make_directory ${FB_PACKAGE_DOCS}
  COMMAND ${FB_GZIP} -9n -c ${FB_LINUX_DIR}/changelog > ${FB_PACKAGE_DOCS}/changelog.gz
  COMMAND ${FB_GZIP} -9n -c ${FB_LINUX_DIR}/feedbackagent.1 > ${FB_PACKAGE_DOCS}/feedbackagent.1.gz
  DEPENDS ${FB_LINUX_DIR}/changelog ${FB_LINUX_DIR}/feedbackagent.1
  VERBATIM)
add_custom_target(package_docs ALL DEPENDS ${FB_PACKAGE_DOCS}/changelog.gz ${FB_PACKAGE_DOCS}/feedbackagent.1.gz)
install(FILES ${FB_LINUX_DIR}/copyright ${FB_PACKAGE_DOCS}/changelog.gz
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/feedbackagent)
install(FILES ${FB_PACKAGE_DOCS}/feedbackagent.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME feedbackagent)
set(CPACK_PACKAGE_VENDOR Korvane)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "bug reports and feature requests for Korvane 3D")
# Wrapped by hand: Debian wants the lines of the long description under 80 columns.
set(CPACK_PACKAGE_DESCRIPTION
    "The Feedback Agent is how users of the Korvane 3D graphics suite report a\n\
problem or ask for a feature. It collects the report's details and description,\n\
attaches files, clipboard pictures and screen shots, and sends the report to\n\
Korvane, through a proxy if needed.")
set(CPACK_PACKAGE_CONTACT "Korvane Feedback Agent developers <feedback@korvane3d.com>")
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR})
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE https://www.korvane3d.com/)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Not needed to start, but what a user's desktop should have: on a Wayland session the
# program runs as a Wayland client (qtwayland5) and takes screen shots through the
# desktop portal (xdg-desktop-portal, with the backend of the user's desktop); Qt's own
# catalogues translate the buttons of its dialogs (qttranslations5-l10n).
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qtwayland5, xdg-desktop-portal, qttranslations5-l10n")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
include(CPack)

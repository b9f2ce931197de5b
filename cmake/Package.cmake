# The Debian package; scripts/package makes it.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME brindle)
set(CPACK_PACKAGE_VENDOR "The Brindle developers")
set(CPACK_PACKAGE_HOMEPAGE_URL https://www.brindle.example)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "IRC client that gets mails from mail servers in rooms")
set(CPACK_PACKAGE_DESCRIPTION
  "A mail server is a bot in an IRC room. It keeps a list of numbered mails and
sends the ones that are asked for with a line in the room. Brindle connects,
enters the room, notices servers that announce themselves, loads a server's
list into a list with check boxes, helps to find and check mails, and says
the request lines at a pace that the IRC server accepts.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_OUTPUT_FILE_PREFIX ${PROJECT_SOURCE_DIR}/dist)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "The Brindle developers <brindle@brindle.example>")
set(CPACK_DEBIAN_PACKAGE_SECTION net)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "ca-certificates, qt6-wayland")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
include(CPack)

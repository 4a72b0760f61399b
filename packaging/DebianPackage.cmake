# The Debian package; ./package makes it.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME clipwave)
set(CPACK_PACKAGE_VENDOR "The Clipwave developers")
set(CPACK_PACKAGE_CONTACT "The Clipwave developers <developers@clipwave.example>")
set(CPACK_PACKAGE_HOMEPAGE_URL "https://clipwave.example/")
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION}")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "make and publish video podcasts")
set(CPACK_PACKAGE_DESCRIPTION_FILE "${CMAKE_CURRENT_SOURCE_DIR}/debian/description")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_PRE_BUILD_SCRIPTS "${CMAKE_CURRENT_SOURCE_DIR}/debian/finish.cmake")

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION video)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# What no linker knows of: the data of time zones, the certificates of servers.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "tzdata, ca-certificates")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "gnome-keyring | org.freedesktop.secrets")
if(TARGET clipwave)
  # The plugin by which Qt reads the drawings of the toolbar; those for displays come with its library.
  string(APPEND CPACK_DEBIAN_PACKAGE_DEPENDS ", libqt6svg6")
  string(PREPEND CPACK_DEBIAN_PACKAGE_RECOMMENDS
    "xdg-utils, qt6-wayland, qt6-translations-l10n, shared-mime-info, dbus-user-session | dbus-x11, \
evince | okular | pdf-viewer, ")
endif()
include(CPack)

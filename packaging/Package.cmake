# The Debian package. Included last: it takes what has been installed so far.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME orvik-tallyview)
set(CPACK_PACKAGE_CONTACT "${TALLYVIEW_PACKAGER}")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "dashboard of the tasks of the Orvik coding agent")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"Shows which tasks of the Orvik coding agent are running on this machine and
which have completed, grouped by project and time, and posts a desktop
notification when a running task completes. The program tallyview shows the
same in a terminal or a status bar. Both read the agent's files and
write to none of them.
.
The interface is in Simplified Chinese.")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION devel)
# Libraries are found by what the program links. QML modules are loaded by name: those that are
# imported here and those that they import.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(qml_modules qtqml qtqml-models qtqml-workerscript qtquick qtquick-templates qtquick-window
    qt-labs-platform)
list(TRANSFORM qml_modules PREPEND qml6-module-)
list(JOIN qml_modules ", " CPACK_DEBIAN_PACKAGE_DEPENDS)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS
    "fonts-noto-cjk, fonts-noto-color-emoji, fonts-inter, xdg-utils, xdg-desktop-portal, qt6-wayland, default-dbus-session-bus | dbus-session-bus, notification-daemon")

set(CPACK_STRIP_FILES ON)
# Installed as for the real place, so that what is written with the prefix in it is right.
set(CPACK_SET_DESTDIR ON)
set(CPACK_INSTALL_PREFIX /usr)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
include(CPack)

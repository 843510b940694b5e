# The Debian package: `cpack -G DEB` in a build tree (scripts/build-package does it all) writes
# zelvaine_<version>_<arch>.deb, which installs under /usr.
include(GNUInstallDirs)

set(ZELVAINE_PACKAGE_MAINTAINER "" CACHE STRING
    "The package's Maintainer, \"Name <address>\"; empty takes git's user.name and user.email")
set(maintainer "${ZELVAINE_PACKAGE_MAINTAINER}")
if(NOT maintainer)
  find_package(Git QUIET)
  if(GIT_FOUND)
    execute_process(COMMAND ${GIT_EXECUTABLE} config user.name WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
                    OUTPUT_VARIABLE name OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
    execute_process(COMMAND ${GIT_EXECUTABLE} config user.email WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
                    OUTPUT_VARIABLE address OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
    if(name AND address)
      set(maintainer "${name} <${address}>")
    endif()
  endif()
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME zelvaine)
# The version players see in the game and in the software centre's release list.
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR}")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "two-deck patience with every card face up")
# CPack puts the summary on the first line itself.
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION "Two full decks, every card face up from the first moment: 104 cards in ten
columns of ten and four in your hand. Nothing is hidden and nothing is left to
luck once the deal is made; every game is a puzzle you can read from end to
end. Build downward in alternating colours, slide whole runs across the table
in one go, park awkward cards in your hand, and send all eight suits home from
ace to king. In English and German.")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "${maintainer}")
# Debian keeps games in /usr/games: scripts/build-package sets CMAKE_INSTALL_BINDIR=games.
set(CPACK_DEBIAN_PACKAGE_SECTION games)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# The libraries the binary links come from dpkg-shlibdeps; what Qt loads only at run time does
# not show there: the QML modules the interface imports (QtQuick.Controls brings its templates,
# QtQuick the QML models and worker script) and the SVG image plugin for the icons.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS
    "qml6-module-qtquick, qml6-module-qtquick-controls, qml6-module-qtquick-templates, \
qml6-module-qtquick-dialogs, qml6-module-qtquick-layouts, qml6-module-qtquick-shapes, \
qml6-module-qtquick-window, qml6-module-qtqml-models, qml6-module-qtqml-workerscript, \
qml6-module-qtcore, libqt6svg6")
# Wayland sessions run the game natively with qt6-wayland (through XWayland without it); Qt's
# own dialogs speak German with qt6-translations-l10n. On GNOME and the other GTK desktops,
# qt6-gtk-platformtheme gives Share and Open the desktop's own file chooser instead of Qt's
# plain one.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-wayland, qt6-translations-l10n, qt6-gtk-platformtheme")

# Debian wants the licences, a change log and a manual page with every package, the last two
# compressed as its own tools do it.
set(doc_dir ${CMAKE_INSTALL_DATADIR}/doc/${CPACK_PACKAGE_NAME})
set(out ${CMAKE_BINARY_DIR}/packaging)
install(FILES ${PROJECT_SOURCE_DIR}/packaging/copyright DESTINATION ${doc_dir})
configure_file(${PROJECT_SOURCE_DIR}/packaging/changelog.in ${out}/changelog @ONLY)
configure_file(${PROJECT_SOURCE_DIR}/packaging/zelvaine.6 ${out}/zelvaine.6 @ONLY)
find_program(ZELVAINE_GZIP gzip REQUIRED)
foreach(file changelog zelvaine.6)
  add_custom_command(OUTPUT ${out}/${file}.gz
    COMMAND ${ZELVAINE_GZIP} -9 --no-name --force --keep ${out}/${file}
    DEPENDS ${out}/${file}
    VERBATIM)
endforeach()
add_custom_target(zelvaine_package_documents ALL DEPENDS ${out}/changelog.gz ${out}/zelvaine.6.gz)
install(FILES ${out}/changelog.gz DESTINATION ${doc_dir})
install(FILES ${out}/zelvaine.6.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man6)

include(CPack)

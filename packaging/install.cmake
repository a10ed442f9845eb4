# The install tree and the Debian package. Included at the end of the root
# CMakeLists.txt; GAME_DIR is the runnable folder the build assembles.
#
#   P/games/velthra                        (P/bin with -DVELTHRA_INSTALL_BIN=ON)
#   P/share/games/velthra/assets.zip       read-only game data, found by the
#   P/share/games/velthra/data/{levels,models,scripts,textures,sound}
#                                          executable relative to itself
#   P/share/applications/velthra.desktop
#   P/share/metainfo/org.velthra.velthra.metainfo.xml
#   P/share/icons/hicolor/NxN/apps/velthra.png   N = 32 48 64 128 256
#   P/share/man/man6/velthra.6
#
# Nothing the game writes is installed: prefs.cfg, stats.cfg, log.txt and
# dump.txt live in the player's per-user folder (platform/gamefolder.h).
include(${CMAKE_SOURCE_DIR}/packaging/install_dirs.cmake)

install(TARGETS velthra RUNTIME DESTINATION ${VELTHRA_BINDIR})
install(FILES ${GAME_DIR}/assets.zip DESTINATION ${VELTHRA_DATADIR})
# Named one by one: a game run from the build folder leaves its settings,
# scores and log in data/ and beside it, and those are nobody else's.
install(DIRECTORY
    ${GAME_DIR}/data/levels ${GAME_DIR}/data/models ${GAME_DIR}/data/scripts
    ${GAME_DIR}/data/textures ${GAME_DIR}/data/sound
  DESTINATION ${VELTHRA_DATADIR}/data
  PATTERN "*~" EXCLUDE)
install(FILES ${CMAKE_SOURCE_DIR}/packaging/velthra.desktop DESTINATION share/applications)
install(FILES ${CMAKE_SOURCE_DIR}/packaging/org.velthra.velthra.metainfo.xml DESTINATION share/metainfo)
install(DIRECTORY ${CMAKE_BINARY_DIR}/icons/hicolor DESTINATION share/icons)
install(FILES ${CMAKE_SOURCE_DIR}/packaging/velthra.6 DESTINATION share/man/man6)

# `cpack -G DEB` in the build folder: velthra_<version>_amd64.deb for /usr,
# its library dependencies worked out by dpkg-shlibdeps (from dpkg-dev).
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME velthra)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR Dorvane)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "3D brick-breaking arcade game")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "Dorvane <dorvane@velthra.invalid>")
set(CPACK_DEBIAN_PACKAGE_SECTION games)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The GL driver is loaded at run time, so no library link names it.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "libgl1-mesa-dri")
# CPack puts the summary on the Description line and indents these lines.
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION "Move the paddle with the mouse (or the arrow keys) at the near end
of a field seen in perspective, keep the ball in play and break the bricks
of ten levels, then a harder second round. Lives, score and a top-20 table are kept; a
drop-down console holds the settings. Settings, scores and the log are
kept in ~/.local/share/velthra.")
include(CPack)

# Where `cmake --install` puts the game, relative to the prefix. Debian keeps
# games in games/ and their data in share/games/; VELTHRA_INSTALL_BIN puts the
# executable in bin/ instead. The executable finds its data by the relative
# path between the two, so the tree works at any prefix.
option(VELTHRA_INSTALL_BIN "Install the executable to bin/ instead of games/" OFF)
if(VELTHRA_INSTALL_BIN)
  set(VELTHRA_BINDIR bin)
else()
  set(VELTHRA_BINDIR games)
endif()
set(VELTHRA_DATADIR share/games/velthra)
file(RELATIVE_PATH VELTHRA_DATA_FROM_EXE /prefix/${VELTHRA_BINDIR} /prefix/${VELTHRA_DATADIR})

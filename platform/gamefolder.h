// Where the game runs. The game opens every file by a path relative to its
// working folder ("data/...", "assets.zip", "log.txt", "dump.txt"), so the
// desktop shell chooses that folder before anything else starts:
//
//  - portable: the executable's own folder, when it holds data/ and
//    assets.zip and the player may write there (a build, a copied folder);
//  - per-user: $XDG_DATA_HOME/velthra (default ~/.local/share/velthra), in
//    which assets.zip and every folder of the game's data/ are symbolic links
//    to the read-only copy, while data/prefs.cfg, data/stats.cfg, log.txt and
//    dump.txt are the player's own files.
//
// The read-only copy is the executable's folder itself when it holds the data
// but may not be written, or else the installed data found relative to the
// executable (GAME_DATA_FROM_EXE), so an installed tree works at any prefix.
#pragma once

#include <string>

// The installed data folder relative to the executable's folder, fixed by
// the install layout ("../share/games/velthra").
extern const char* const GAME_DATA_FROM_EXE;

struct S_GameFolder {
    std::string path;       // the folder to run in; empty when none could be had
    bool portable = false;  // true: the executable's own folder
    std::string error;      // why no folder could be prepared, for the player
};

// Chooses and, for the per-user folder, prepares the folder to run in.
// xdgDataHome and home are the environment's values and may be null. A link
// the player replaced by a real file or folder is left alone; a link that
// points elsewhere (the game was moved or reinstalled) is pointed back.
S_GameFolder Platform_PrepareGameFolder(const std::string& exeFolder, const char* xdgDataHome, const char* home);

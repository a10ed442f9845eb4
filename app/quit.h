// The ways the game is ended from outside, besides SDL's quit event: signals
// (a terminal closed, a session ended) and the display going away. However it
// ends, the player's scores and settings are written first.
#pragma once

// SIGHUP and SIGQUIT ask the main loop to end the orderly way, as SIGTERM and
// SIGINT already do through SDL's quit event. SIGPIPE is ignored: libxcb
// writes to the X server without MSG_NOSIGNAL, so a write to a lost display
// would kill the game before Xlib could report the loss. Call after SDL_Init:
// SDL 1.2 takes SIGQUIT for a crash (its "parachute") and would end the game
// without saving.
void Quit_InstallSignals();
// The signal that asked to quit, 0 while none has.
int Quit_Signal();
// Once the window exists (after SDL's own handler): a lost X server writes
// the scores and the settings, closes the log and ends the process at once
// with Xlib's status 1. exit() would run SDL_Quit, which talks to the dead
// server again.
void Quit_WatchDisplay();
// Scores_Save, then Cvar_Save; only the first call of a process writes.
void Quit_SaveFiles();
void Quit_Reset();  // no signal seen, nothing saved yet

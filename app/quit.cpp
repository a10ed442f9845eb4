#include "app/quit.h"

#include <unistd.h>

#include <csignal>
#include <cstdio>

#include "common/config.h"
#include "common/log.h"
#include "common/scores.h"

// Last: Xlib's macros (Bool, Status, None ...) must not reach the game's headers.
#include <X11/Xlib.h>

namespace {
// Written by the signal handler, so nothing but this store happens there:
// the main loop sees it on its next pass and does the rest.
volatile sig_atomic_t g_quitSignal = 0;
bool g_filesSaved = false;

void QuitSignal(int signal) { g_quitSignal = signal; }

// Called by Xlib on the game's own thread, in whichever X call found the
// connection gone; not a signal handler, so files can be written here.
int DisplayLost(Display* display) {
    const char* name = display ? DisplayString(display) : "";
    std::fprintf(stderr, "velthra: lost the connection to the X server %s; saving and quitting\n", name);
    Log("ERROR: lost the connection to the X server %s\n", name);
    Quit_SaveFiles();
    CloseErrorLog();
    _exit(1);
}
}  // namespace

void Quit_InstallSignals() {
    struct sigaction action {};
    action.sa_handler = QuitSignal;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    sigaction(SIGHUP, &action, nullptr);
    sigaction(SIGQUIT, &action, nullptr);
    action.sa_handler = SIG_IGN;
    sigaction(SIGPIPE, &action, nullptr);
}

int Quit_Signal() { return g_quitSignal; }

void Quit_WatchDisplay() { XSetIOErrorHandler(DisplayLost); }

void Quit_SaveFiles() {
    if (g_filesSaved)
        return;
    g_filesSaved = true;
    Scores_Save();
    Cvar_Save();
}

void Quit_Reset() {
    g_quitSignal = 0;
    g_filesSaved = false;
}

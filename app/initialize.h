// The one-time set-up of the application status once the window and its
// OpenGL context exist: status defaults, gamma, the extension probe, the blur
// target and the settings applied.
#pragma once

// Called by SetupOpengl; always returns true.
bool Initialize();

#include "common/framemark.h"

void (*g_FrameMark)(E_FramePart part) = nullptr;

void FrameMark_Reset() { g_FrameMark = nullptr; }

#pragma once

#include <SupportDefs.h>

// Waits until this window, counted in the order of opening, alone is active, and all have settled.
// Each hears of it on a thread of its own, so that for a moment two are: a switch would start at
// the first of them. A busy window is not switched to.
bool WaitForActive(int32 index);

// Opens board and thread windows in every way, switches between them by the keyboard and closes
// them in every order while they load; prints what it saw.
int32 OpenAndCloseInEveryOrder(void*);

#pragma once

#include <SupportDefs.h>

// Opens board and thread windows in every way, switches between them by the keyboard and closes
// them in every order while they load; prints what it saw.
int32 OpenAndCloseInEveryOrder(void*);

#pragma once

#include <OS.h>

// What the end of the process needs besides the documented calls.

// Waits until every running thread that spawn_thread made, but the calling one, has ended, or the
// time-out has passed. The number of those that still run.
int32 JoinThreads(bigtime_t timeout);

// The ports of the process go; whoever waits at one returns with B_BAD_PORT_ID.
void DeleteAllPorts();

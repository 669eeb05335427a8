#pragma once

#include <SupportDefs.h>

// The API's code for an errno of the system; every kit maps through here. One without a name of its
// own is a number above B_POSIX_ERROR_BASE.
status_t errorFromErrno(int error);
status_t lastError(); // of errno

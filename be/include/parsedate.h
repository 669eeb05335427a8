#pragma once

#include <time.h>

// Reads a date as HTTP and the C library write it: RFC 1123, RFC 850, asctime, ctime. A text
// without a zone is local time. The names of days and months are English, whatever the locale. -1
// when it is no such date. `now` is for dates relative to it, of which none is read here.
time_t parsedate(const char* dateString, time_t now);

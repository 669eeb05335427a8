#pragma once

// Shows a modal alert with one "OK" button and waits for it. Any thread; the program's way of
// telling the user about an error. `format` is printf's and never comes from data.
void ShowAlert(const char* format, ...) __attribute__((format(printf, 1, 2)));

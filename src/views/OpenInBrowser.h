#pragma once

// Opens an address in the desktop's web browser, as it stands. Returns at once; who can't have it
// opened is told with an alert. Any thread.
void OpenInBrowser(const char* address);

#pragma once

#include <string>

// A thread's address in the web browser, from its board's URL and its dat name: the read.cgi that
// serves it depends on whether the dat name contains "cgi". Empty when the URL is no board address
// or the dat name has no ".".
std::string MakeThreadAddress(const char* url, const char* dat);

#pragma once

#include <string>

// The address that searches the web. `page` holds "%s" for the query, which comes encoded; with
// japaneseOnly only pages in Japanese are looked for.
std::string MakeSearchAddress(const std::string& page, const char* query, bool japaneseOnly);

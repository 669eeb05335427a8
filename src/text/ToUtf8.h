#pragma once

#include <string>
#include <string_view>

// What servers send, cp932, as UTF-8 without the zero bytes of codes that are no characters. True
// when all of it converts; a byte that starts no character stands as "?" in the text.
bool ToUtf8(std::string_view cp932, std::string* utf8);

// The same where a text is shown as far as it converts.
std::string ToUtf8(std::string_view cp932);

#pragma once

#include <optional>
#include <string>
#include <string_view>

#include <SupportDefs.h>

// How names, types and values of attributes are written in a side file, for people to read and
// edit. Text stays text, with "\" before what would not survive in a line: \n \t \r \s (a space at
// an end) \0 \\ and \xHH for a byte. Numbers are decimal, a point is "x y", a rectangle "left top
// right bottom", a colour "#rrggbbaa", and whatever does not fit its type is "hex:" and the bytes.
// Reading gives none for what is damaged.

std::string writeName(std::string_view name);
std::optional<std::string> readName(std::string_view text);

std::string writeType(type_code type);
std::optional<type_code> readType(std::string_view text);

std::string writeValue(type_code type, std::string_view value);
std::optional<std::string> readValue(type_code type, std::string_view text);

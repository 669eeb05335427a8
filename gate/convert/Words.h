#pragma once

#include <string>
#include <string_view>

namespace gate {

// Without the blanks and line feeds at both ends.
std::string_view Trimmed(std::string_view text);
// With the letters of ASCII in lower case.
std::string Lowered(std::string_view text);
// With a blank for each control character: on one line, and harmless to a terminal.
std::string WithoutControls(std::string text);
// Appends a byte of a text to a page: "&", "<" and ">" as references.
void AppendEscaped(char byte, std::string* html);
// The next line, without its line feed and carriage return; false at the text's end.
bool TakeLine(std::string_view* text, std::string_view* line);

} // namespace gate

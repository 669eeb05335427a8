#include "convert/Words.h"

namespace gate {

std::string_view Trimmed(std::string_view text) {
    constexpr std::string_view kBlanks = " \t\r\n";
    const size_t first = text.find_first_not_of(kBlanks);
    if (first == text.npos)
        return "";
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::string Lowered(std::string_view text) {
    std::string lowered(text);
    for (char& byte : lowered) {
        if (byte >= 'A' && byte <= 'Z')
            byte = static_cast<char>(byte - 'A' + 'a');
    }
    return lowered;
}

std::string WithoutControls(std::string text) {
    for (char& byte : text)
        byte = static_cast<unsigned char>(byte) < 0x20 || byte == 0x7F ? ' ' : byte;
    return text;
}

void AppendEscaped(char byte, std::string* html) {
    switch (byte) {
    case '&': *html += "&amp;"; break;
    case '<': *html += "&lt;"; break;
    case '>': *html += "&gt;"; break;
    default: *html += byte;
    }
}

bool TakeLine(std::string_view* text, std::string_view* line) {
    if (text->empty())
        return false;
    const size_t feed = text->find('\n');
    *line = text->substr(0, feed);
    text->remove_prefix(feed == text->npos ? text->size() : feed + 1);
    if (line->ends_with('\r'))
        line->remove_suffix(1);
    return true;
}

} // namespace gate

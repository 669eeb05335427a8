#include "server/Text.h"

#include <array>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "text/cp932.h"

namespace {

constexpr std::array<const char*, 7> kDays = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
constexpr std::array<const char*, 7> kJapaneseDays = {"日", "月", "火", "水", "木", "金", "土"};
constexpr std::array<const char*, 12> kMonths = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                 "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

bool isDigit(char byte) {
    return byte >= '0' && byte <= '9';
}

// Whether an entity such as "&gt;" or "&#9829;" begins at the "&".
bool beginsEntity(std::string_view text) {
    size_t end = 1;
    while (end < text.size() &&
           (isalnum(static_cast<unsigned char>(text[end])) || text[end] == '#'))
        end++;
    return end > 1 && end < text.size() && text[end] == ';';
}

int hexDigit(char byte) {
    if (isDigit(byte))
        return byte - '0';
    int letter = tolower(static_cast<unsigned char>(byte));
    return letter >= 'a' && letter <= 'f' ? letter - 'a' + 10 : -1;
}

std::string percentDecode(std::string_view text) {
    std::string result;
    for (size_t i = 0; i < text.size(); i++) {
        int high = i + 2 < text.size() ? hexDigit(text[i + 1]) : -1;
        int low = i + 2 < text.size() ? hexDigit(text[i + 2]) : -1;
        if (text[i] == '%' && high >= 0 && low >= 0) {
            result += static_cast<char>(high << 4 | low);
            i += 2;
        } else {
            result += text[i] == '+' ? ' ' : text[i];
        }
    }
    return result;
}

// The link that a reference becomes, "" when no number follows the two signs.
std::string referenceLink(std::string_view escaped, const std::string& threadUrl, size_t* length) {
    constexpr std::string_view kSigns = "&gt;&gt;";
    size_t end = kSigns.size();
    while (end < escaped.size() && (isDigit(escaped[end]) || escaped[end] == '-'))
        end++;
    if (!escaped.starts_with(kSigns) || end == kSigns.size() || !isDigit(escaped[kSigns.size()]))
        return {};
    *length = end;
    std::string number(escaped.substr(kSigns.size(), end - kSigns.size()));
    return "<a href=\"" + threadUrl + number + "\" target=\"_blank\">&gt;&gt;" + number + "</a>";
}

} // namespace

std::string toCp932(const std::string& utf8) {
    std::string result(utf8.size(), '\0');
    int32 sourceLength = static_cast<int32>(utf8.size());
    int32 length = static_cast<int32>(result.size());
    utf8_conv_to_cp932(utf8.data(), &sourceLength, result.data(), &length);
    result.resize(static_cast<size_t>(length));
    return result;
}

std::string escapeHtml(const std::string& text) {
    std::string result;
    for (size_t i = 0; i < text.size(); i++) {
        if (text[i] == '<')
            result += "&lt;";
        else if (text[i] == '>')
            result += "&gt;";
        else if (text[i] == '&' && !beginsEntity(std::string_view(text).substr(i)))
            result += "&amp;";
        else if (text[i] != '\0' && text[i] != '\r')
            result += text[i];
    }
    return result;
}

std::string datBody(const std::string& body, const std::string& threadUrl) {
    std::string escaped = escapeHtml(body);
    std::string result;
    for (size_t i = 0; i < escaped.size();) {
        size_t length = 1;
        std::string link = referenceLink(std::string_view(escaped).substr(i), threadUrl, &length);
        if (!link.empty())
            result += link;
        else if (escaped[i] == '\n')
            result += " <br> ";
        else
            result += escaped[i];
        i += length;
    }
    return result;
}

std::map<std::string, std::string> parseForm(const std::string& body) {
    std::map<std::string, std::string> fields;
    for (size_t begin = 0; begin < body.size();) {
        size_t end = std::min(body.find('&', begin), body.size());
        std::string_view pair = std::string_view(body).substr(begin, end - begin);
        size_t equals = pair.find('=');
        if (equals != std::string_view::npos)
            fields[percentDecode(pair.substr(0, equals))] = percentDecode(pair.substr(equals + 1));
        begin = end + 1;
    }
    return fields;
}

std::string httpDate(time_t moment) {
    tm parts = {};
    gmtime_r(&moment, &parts);
    char text[64];
    snprintf(text, sizeof(text), "%s, %02d %s %d %02d:%02d:%02d GMT",
             kDays[static_cast<size_t>(parts.tm_wday)], parts.tm_mday,
             kMonths[static_cast<size_t>(parts.tm_mon)], parts.tm_year + 1900, parts.tm_hour,
             parts.tm_min, parts.tm_sec);
    return text;
}

std::string postDate(time_t moment) {
    time_t japanese = moment + 9 * 60 * 60;
    tm parts = {};
    gmtime_r(&japanese, &parts);
    char text[64];
    snprintf(text, sizeof(text), "%04d/%02d/%02d(%s) %02d:%02d", parts.tm_year + 1900,
             parts.tm_mon + 1, parts.tm_mday, kJapaneseDays[static_cast<size_t>(parts.tm_wday)],
             parts.tm_hour, parts.tm_min);
    return text;
}

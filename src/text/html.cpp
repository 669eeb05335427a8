#include "text/html.h"

#include "text/cp932.h"

#include <cstdlib>
#include <cstring>
#include <string>

namespace {

struct Reference {
    const char* name;
    const char* replacement;
};

constexpr Reference kMarkup[] = {{"&nbsp;", " "}, {"&lt;", "<"},   {"&gt;", ">"},
                                 {"&amp;", "&"},  {"&quot;", "'"}, {"", ""}};

constexpr Reference kSuits[] = {
    {"&hearts;", "♥"}, {"&clubs;", "♣"}, {"&spades;", "♠"}, {"&diams;", "♦"}, {"", ""}};

constexpr Reference kSymbols[] = {
    {"&copy;", "©"},     {"&reg;", "®"},    {"&trade;", "™"},  {"&cent;", "¢"},
    {"&pound;", "£"},    {"&yen;", "¥"},    {"&curren;", "¤"}, {"&brvbar;", "¦"},
    {"&ordf;", "ª"},     {"&laquo;", "«"},  {"&raquo;", "»"},  {"&not;", "¬"},
    {"&shy;", "\u00AD"}, {"&macr;", "¯"},   {"&sup1;", "¹"},   {"&sup2;", "²"},
    {"&sup3;", "³"},     {"&micro;", "µ"},  {"&ordm;", "º"},   {"&frac14;", "¼"},
    {"&frac12;", "½"},   {"&frac34;", "¾"}, {"", ""}};

void ReplaceAll(BString* text, const Reference* table) {
    for (; *table->name != '\0'; table++)
        text->ReplaceAll(table->name, table->replacement);
}

// The longest reference that is decoded, from "&" up to but not including ";".
constexpr int32 kLongestReference = 8;

std::string DecodeNumber(const std::string& digits) {
    unsigned long value = 0;
    if (digits.starts_with("x"))
        value = strtoul(("0" + digits).c_str(), nullptr, 16);
    else
        value = strtoul(digits.c_str(), nullptr, digits.starts_with("0x") ? 16 : 10);
    char utf8[3];
    const uint16 code = static_cast<uint16>(value);
    return code == 0 ? std::string() : std::string(utf8, put_utf8_from_unicode(code, utf8));
}

bool IsLead(uint8 b) {
    return (b >= 0x81 && b <= 0x9F) || (b >= 0xE0 && b <= 0xFC);
}
bool IsTrail(uint8 b) {
    return (b >= 0x40 && b <= 0x7E) || (b >= 0x80 && b <= 0xFC);
}

bool PassesUnencoded(uint8 b) {
    return (b >= '0' && b <= '9') || (b >= 'A' && b <= 'Z') || (b >= 'a' && b <= 'z') ||
           b == 0x7F || b == 0x80 || b == 0xA0 || b >= 0xFD || b == 0;
}

void AppendEncoded(std::string* out, uint8 b) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    *out += {'%', kDigits[b >> 4], kDigits[b & 15]};
}

std::string PercentEncode(const std::string& bytes) {
    std::string out;
    out.reserve(bytes.size() * 3);
    bool trailDue = false;
    for (const char c : bytes) {
        const uint8 b = static_cast<uint8>(c);
        if (trailDue) {
            if (!IsTrail(b))
                continue; // what can't follow a lead byte is dropped, and the trail is still due
            AppendEncoded(&out, b);
            trailDue = false;
        } else if (b == ' ') {
            out += '+';
        } else if (PassesUnencoded(b)) {
            out += c;
        } else {
            AppendEncoded(&out, b);
            trailDue = IsLead(b);
        }
    }
    return out;
}

} // namespace

uint32 TruncateNullChar(char* buffer, uint32 length) {
    uint32 kept = 0;
    for (uint32 i = 0; i < length; i++)
        kept += buffer[i] != '\0';
    if (kept == 0) {
        buffer[0] = '\0';
        return 0;
    }
    const char last = buffer[kept - 1];
    RemoveNulls(buffer, static_cast<int32>(length));
    buffer[kept - 1] = last;
    buffer[kept] = '\0';
    return kept;
}

int32 RemoveNulls(char* buffer, int32 length) {
    int32 kept = 0;
    for (int32 i = 0; i < length; i++) {
        if (buffer[i] != '\0')
            buffer[kept++] = buffer[i];
    }
    return kept;
}

void ReplaceHTMLEscapeString(BString* text) {
    if (text->FindFirst("&") < 0)
        return;
    if (text->FindFirst("&#") >= 0)
        ReplaceCharacterEntity(text);
    ReplaceAll(text, kMarkup);
    if (text->FindFirst("&") >= 0)
        ReplaceAll(text, kSuits);
    if (text->FindFirst("&") >= 0)
        ReplaceAll(text, kSymbols);
}

// The search goes on at the last byte of a replacement, so an "&" that a reference stood for may
// start another one.
void ReplaceCharacterEntity(BString* text) {
    std::string result(text->String(), text->Length());
    size_t position = 0;
    for (;;) {
        const size_t start = result.find("&#", position);
        const size_t end = start == result.npos ? result.npos : result.find(';', start);
        if (end == result.npos)
            break;
        position = end;
        if (end - start > kLongestReference)
            continue;
        const std::string character = DecodeNumber(result.substr(start + 2, end - start - 2));
        result.replace(start, end + 1 - start, character);
        position = start + character.size();
        position -= position > 0 ? 1 : 0;
    }
    text->SetTo(result.c_str(), static_cast<int32>(result.size()));
}

int32 UrlEncoded(BString* text) {
    const int32 length = text->Length();
    std::string bytes(length + 1, '\0');
    int32 consumed = length;
    int32 written = 0;
    if (utf8_conv_to_cp932(text->String(), &consumed, bytes.data(), &written) != 0 ||
        consumed != length)
        return -1;
    bytes.resize(written);
    const std::string encoded = PercentEncode(bytes);
    text->SetTo(encoded.c_str(), static_cast<int32>(encoded.size()));
    return 0;
}

#include "post/PostForm.h"

#include "text/cp932.h"
#include "text/html.h"

#include <String.h>

#include <cstdio>

namespace {

struct FieldNames {
    const char* name;
    const char* mail;
    const char* message;
    const char* board;
    const char* key;
    const char* time;
};

constexpr FieldNames kBbsCgiNames = {"FROM=", "mail=", "MESSAGE=", "bbs=", "key=", "time="};
constexpr FieldNames kWriteCgiNames = {"NAME=", "MAIL=", "MESSAGE=", "BBS=", "KEY=", "TIME="};

// "書き込む", the label of the button that a browser would press.
constexpr const char* kSubmit = "submit=%8F%91%82%AB%8D%9E%82%DE";

// The codec writes these as one byte each, which readers take for the first half of a character:
// the next letter would be eaten.
bool IsMisread(uint16 code) {
    return (code >= 0x80 && code <= 0xA0) || (code >= 0xE0 && code <= 0xFF && code != 0xF7);
}

bool HasMisread(const std::string& text) {
    uint16 code = 0;
    for (size_t at = 0; at < text.size();) {
        const int32 length = set_unicode(text.c_str() + at, &code);
        if (IsMisread(code))
            return true;
        at += length > 0 ? static_cast<size_t>(length) : 1;
    }
    return false;
}

// A text with a NUL would end there.
bool Encode(const std::string& text, std::string* encoded) {
    BString value(text.c_str());
    if (text.find('\0') != text.npos || HasMisread(text) ||
        (!text.empty() && UrlEncoded(&value) != 0))
        return false;
    *encoded = value.String();
    return true;
}

} // namespace

PostCheck MakePostForm(const PostTarget& target, const WrittenPost& text, time_t now,
                       PostForm* form) {
    if (text.message.empty())
        return PostCheck::kNoMessage;
    std::string message;
    if (!Encode(text.name, &form->name) || !Encode(text.mail, &form->mail) ||
        !Encode(text.message, &message))
        return PostCheck::kNotEncodable;
    const bool isBbsCgi = target.family == PostFamily::kBbsCgi;
    const FieldNames& names = isBbsCgi ? kBbsCgiNames : kWriteCgiNames;
    form->body = names.name + form->name + "&" + names.mail + form->mail + "&" + names.message +
                 message + "&" + names.board + (isBbsCgi ? target.board : target.Folder()) + "&" +
                 names.key + target.key + "&" + names.time +
                 std::to_string(static_cast<long long>(now)) + "&" + kSubmit;
    return PostCheck::kGood;
}

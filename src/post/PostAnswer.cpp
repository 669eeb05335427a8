#include "post/PostAnswer.h"

#include "text/ToUtf8.h"
#include "text/Utf8Cut.h"
#include "text/html.h"

#include <String.h>

#include <string_view>

namespace {

constexpr size_t kLongestAnswer = 4095;
constexpr std::string_view kMark = "http-equiv=";
constexpr std::string_view kSuccess = "refresh";
constexpr std::string_view kTitleEnd = "</title>";
constexpr std::string_view kLineBreak = "<br";

std::string Decoded(const std::string& words) {
    BString text(words.c_str());
    ReplaceHTMLEscapeString(&text);
    const std::string decoded = text.String();
    return decoded.find_first_not_of(" \r\n") == decoded.npos ? "" : decoded;
}

} // namespace

void PostAnswer::AddLine(const char* line, int32 length) {
    const std::string converted = ToUtf8(std::string_view(line, static_cast<size_t>(length)));
    if (fText.size() + converted.size() <= kLongestAnswer)
        fText += converted;
}

void PostAnswer::AddUnfinishedLine(const char* line, int32 length) {
    fText += CutAtCharacter(ToUtf8(std::string_view(line, static_cast<size_t>(length))).c_str(),
                            kLongestAnswer - fText.size());
}

bool PostAnswer::IsSuccess() const {
    const std::string_view text = fText;
    for (size_t at = text.find(kMark); at != text.npos; at = text.find(kMark, at + 1)) {
        if (text.substr(at + kMark.size()).starts_with(kSuccess))
            return true;
    }
    return false;
}

std::string PostAnswer::ErrorText() const {
    std::string_view rest = fText;
    const size_t title = rest.find(kTitleEnd);
    if (title == rest.npos)
        return "";
    rest.remove_prefix(title + kTitleEnd.size());
    std::string text;
    bool inTag = false;
    for (size_t i = 0; i < rest.size(); i++) {
        const char byte = rest[i];
        if (inTag) {
            inTag = byte != '>';
        } else if (byte == '<') {
            inTag = true;
            if (rest.substr(i).starts_with(kLineBreak))
                text += '\n';
        } else if (byte != '\t' && byte != '\n') {
            text += byte;
        }
    }
    return Decoded(text);
}

#include "net/OverlongLine.h"

#include "text/Utf8Cut.h"

#include <string_view>
#include <utility>

namespace {

constexpr size_t kLongestCharacter = 3;  // bytes of UTF-8
constexpr size_t kLongestReference = 16; // bytes of a character reference or a tag to look back
constexpr size_t kFields = 4;            // behind each of which a dat line has a separator
constexpr std::string_view kNewSeparator = "<>";
constexpr std::string_view kOldSeparator = ",";
constexpr const char* kPostEnd = " <br><br>\n"; // as the servers' pages have it

// Neither a character nor a reference or tag is left in part.
std::string CutCleanly(const std::string& text) {
    const size_t most = text.size() < kLongestCharacter ? 0 : text.size() - kLongestCharacter;
    std::string cut = CutAtCharacter(text.c_str(), most);
    const size_t open = cut.find_last_of("<&");
    if (open != cut.npos && cut.size() - open < kLongestReference &&
        cut.find_first_of(">;", open) == cut.npos)
        cut.resize(open);
    return cut;
}

// The separators and where the last field's one begins, if it is there.
size_t CountSeparators(std::string_view line, std::string_view separator, size_t* lastField) {
    size_t count = 0;
    for (size_t at = line.find(separator); at != line.npos; at = line.find(separator, at + 1)) {
        if (++count == kFields)
            *lastField = at;
    }
    return count;
}

} // namespace

LinePart OverlongLine::Take(const char* part, int32 length) {
    const bool ends = part[length - 1] == '\n';
    if (fBeginning.empty() && ends)
        return LinePart::kLine;
    if (fBeginning.empty())
        fBeginning.assign(part, static_cast<size_t>(length));
    return ends ? LinePart::kEnd : LinePart::kInside;
}

std::string OverlongLine::TakeBeginning() {
    return std::exchange(fBeginning, std::string());
}

std::string EndDatLine(const std::string& beginning, bool isFirst) {
    std::string line = CutCleanly(beginning);
    size_t lastField = 0;
    std::string_view separator = kNewSeparator;
    size_t count = CountSeparators(line, separator, &lastField);
    if (count == 0) {
        separator = kOldSeparator;
        count = CountSeparators(line, separator, &lastField);
    }
    // What a message without its own end has behind a separator would pass for a title.
    if (count >= kFields && !isFirst)
        return line.substr(0, lastField) + kCutMark + std::string(separator) + "\n";
    line += kCutMark;
    // A text with a few commas is no post yet.
    const bool isPost = separator == kNewSeparator || count + 1 >= kFields;
    for (; isPost && count < kFields; count++)
        line += separator;
    return line + "\n";
}

std::string EndPageLine(const std::string& beginning) {
    return CutCleanly(beginning) + kCutMark + kPostEnd;
}

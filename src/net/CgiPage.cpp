#include "net/CgiPage.h"

#include "net/OverlongLine.h"
#include "net/lines.h"
#include "text/Utf8Cut.h"

#include <String.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string_view>

namespace {

constexpr size_t kMissing = std::string_view::npos;
constexpr std::string_view kSeparator = "<>";

// Where the parts of the servers' markup begin and end, in bytes from the marks that are searched.
constexpr size_t kLastMailLink = 19;    // a post's own link stands right behind its number
constexpr size_t kMailStart = 16;       // <a href="mailto:
constexpr size_t kNameStart = 4;        // "<b> "
constexpr size_t kDateStart = 14;       // " 投稿日： "
constexpr size_t kIdentifierStart = 12; // font size=1>
constexpr std::string_view kIdentifier = "font size=1";
constexpr size_t kMessageStart = 4; // <dd>
constexpr size_t kMessageRest = 13; // <dd> and " <br><br>"

char Lower(char byte) {
    return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte + 0x20) : byte;
}

bool EqualIgnoringCase(char a, char b) {
    return Lower(a) == Lower(b);
}

size_t FindIgnoringCase(std::string_view text, std::string_view mark, size_t from) {
    from = std::min(from, text.size());
    const auto found = std::search(text.begin() + static_cast<std::ptrdiff_t>(from), text.end(),
                                   mark.begin(), mark.end(), EqualIgnoringCase);
    return found == text.end() ? kMissing : static_cast<size_t>(found - text.begin());
}

bool BeginsWith(std::string_view text, std::string_view mark) {
    return text.size() >= mark.size() &&
           FindIgnoringCase(text.substr(0, mark.size()), mark, 0) == 0;
}

// Empty when it begins outside of the text or behind its end.
std::string_view Part(std::string_view text, size_t begin, size_t end) {
    return begin < end && end <= text.size() ? text.substr(begin, end - begin) : "";
}

// The fields of one post. Each is searched from where the one before ended; one without its marks
// stays empty and moves nothing.
class PostFields {
public:
    explicit PostFields(std::string_view block) : fBlock(block) {
        _ReadMail();
        _ReadName();
        _ReadDate();
        _ReadIdentifier();
        _ReadMessage();
    }
    std::string Line() const {
        std::string line(fName);
        for (const std::string_view part :
             {kSeparator, fMail, kSeparator, std::string_view(fDate), std::string_view("<> "),
              fMessage, std::string_view(" <>")})
            line += part;
        return line;
    }

private:
    void _ReadMail() {
        const size_t link = FindIgnoringCase(fBlock, "<a href=", 0);
        if (link < 1 || link > kLastMailLink)
            return;
        const size_t end = fBlock.find('>', link);
        if (end == kMissing)
            return;
        fMail = Part(fBlock, link + kMailStart, end - 1);
        fPosition = end;
    }
    void _ReadName() {
        const size_t begin = FindIgnoringCase(fBlock, "<b>", fPosition);
        const size_t end = begin == kMissing ? kMissing : FindIgnoringCase(fBlock, "</b>", begin);
        if (end == kMissing)
            return;
        fName = Part(fBlock, begin + kNameStart, end - 1);
        fPosition = end;
    }
    void _ReadDate() {
        const size_t space = fBlock.find(' ', fPosition);
        const size_t end = space == kMissing ? kMissing : fBlock.find('<', space);
        if (end == kMissing)
            return;
        fDate = Part(fBlock, space + kDateStart, end);
        fPosition = end;
    }
    void _ReadIdentifier() {
        const size_t font = fPosition + 1;
        if (font > fBlock.size() || !fBlock.substr(font).starts_with(kIdentifier))
            return;
        size_t end = fBlock.find(']', font);
        if (end == kMissing)
            return;
        if (end + 1 < fBlock.size() && fBlock[end + 1] == ']')
            end++;
        fDate += Part(fBlock, font + kIdentifierStart, end + 1);
        fPosition = end;
    }
    // A message that begins with a blank stands one further in and has one more behind it.
    void _ReadMessage() {
        const size_t mark = FindIgnoringCase(fBlock, "<dd>", fPosition);
        const size_t end = mark == kMissing ? kMissing : fBlock.find('\n', mark);
        if (end == kMissing)
            return;
        const size_t extra = fBlock[mark + kMessageStart] == ' ' ? 1 : 0;
        const size_t begin = mark + kMessageStart + extra;
        const size_t length = end - mark;
        const size_t rest = kMessageRest + 2 * extra;
        if (length > rest)
            fMessage = Part(fBlock, begin, begin + length - rest);
    }

    const std::string_view fBlock;
    size_t fPosition = 0;
    std::string_view fName;
    std::string_view fMail;
    std::string fDate;
    std::string_view fMessage;
};

// Takes so many bytes off the end of the message, the fourth field, or of what stands before it,
// and leaves a mark there.
void Shorten(std::string* line, size_t excess) {
    const size_t end = line->rfind(" <>");
    const size_t off = std::min(end, excess + strlen(kCutMark));
    const size_t begin = LengthToCharacter(*line, end - off);
    line->replace(begin, end - begin, kCutMark);
}

// Without its marks it is empty: it never brings a line feed into the first dat line.
std::string TitleIn(std::string_view line) {
    const size_t mark = line.find('>');
    const size_t end = mark == kMissing ? kMissing : line.find('<', mark);
    if (end == kMissing)
        return "";
    const std::string_view title = Part(line, mark + 1, end);
    return std::string(title.substr(0, LengthToCharacter(title, kLongestThreadTitle)));
}

} // namespace

int32 TagToDat(BString* block) {
    const std::string text(block->String(), static_cast<size_t>(block->Length()));
    block->SetTo(PostFields(text).Line().c_str());
    return block->Length();
}

bool CgiPage::TakeLine(const std::string& line) {
    switch (fState) {
    case State::kBeforeList:
        if (BeginsWith(line, "<dl>"))
            fState = State::kTitle;
        return false;
    case State::kTitle:
        fTitle = TitleIn(line);
        fState = State::kPosts;
        return false;
    case State::kPosts: return _TakePart(line);
    case State::kContinued:
        fBlock += line;
        fState = State::kPosts;
        return true;
    case State::kEnded: break;
    }
    return false;
}

// A post without a line break goes on in the next line. A lead byte at a line's end takes the line
// feed with it.
bool CgiPage::_TakePart(const std::string& line) {
    fBlock = line;
    if (BeginsWith(line, "<table")) {
        fState = State::kEnded;
        return false;
    }
    if (line.find("<br>") != line.npos)
        return true;
    if (fBlock.ends_with('\n'))
        fBlock.pop_back();
    fState = State::kContinued;
    return false;
}

std::string CgiPage::TakeDatLine() {
    BString block(fBlock.c_str());
    TagToDat(&block);
    std::string line(block.String(), static_cast<size_t>(block.Length()));
    const std::string ending = (fIsFirst ? fTitle : "") + "\n";
    fIsFirst = false;
    if (line.size() + ending.size() > kLongestServerLine)
        Shorten(&line, line.size() + ending.size() - kLongestServerLine);
    return line + ending;
}

#include "net/lines.h"

#include "text/ToUtf8.h"
#include "text/Utf8Cut.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

namespace {

constexpr DelimiterSet kDelimiters[] = {
    {"<>", "<", ">"},
    {",", "(", ")"},
    {"<>", "(", ")"},
    {",", "（", "）"},
};

// A deleted post has this in every field; as a title it names no thread.
constexpr const char* kDeleted = "あぼーん";

// Offsets as signed numbers: −1 where a text is not found.
int32 Find(std::string_view line, std::string_view what, int32 from = 0) {
    const size_t at = line.find(what, from);
    return at == line.npos ? -1 : static_cast<int32>(at);
}

int32 FindLast(std::string_view line, std::string_view what) {
    const size_t at = line.rfind(what);
    return at == line.npos ? -1 : static_cast<int32>(at);
}

template <size_t N>
bool CopyWhole(char (&field)[N], std::string_view text) {
    if (text.size() >= N)
        return false;
    memcpy(field, text.data(), text.size());
    field[text.size()] = '\0';
    return true;
}

template <size_t N>
void CopyCut(char (&field)[N], std::string_view text) {
    CopyWhole(field, text.substr(0, LengthToCharacter(text, N - 1)));
}

char* Duplicate(std::string_view text) {
    return strndup(text.data(), text.size());
}

std::string_view Between(std::string_view line, int32 start, int32 end) {
    return line.substr(start, end - start);
}

int32 CountNewSeparators(std::string_view line) {
    int32 count = 0;
    for (int32 at = Find(line, "<>"); at > 0; at = Find(line, "<>", at + 1))
        count++;
    return count;
}

void ParseMessage(std::string_view text, _ArticleOut* out) {
    if (text.starts_with(' '))
        text.remove_prefix(1);
    out->message = Duplicate(text);
}

void ParseTitle(std::string_view line, int32 start, _ArticleOut* out) {
    const int32 end = Find(line, "\n", start);
    const bool hasTitle = end > start && Between(line, start, end) != kDeleted;
    out->title = hasTitle ? Duplicate(Between(line, start, end)) : nullptr;
}

} // namespace

const DelimiterSet& delimiterGuessSubject(const char* text) {
    const std::string_view line = text;
    const int32 dot = Find(line, ".");
    const int32 limit = static_cast<int32>(line.size()) - 5;
    const size_t form = static_cast<size_t>(dot) + 4;
    if (form < line.size() && line[form] == ',')
        return kDelimiters[FindLast(line, "）") > limit ? 3 : 1];
    return kDelimiters[FindLast(line, ")") > limit ? 2 : 0];
}

const DelimiterSet& delimiterGuessArticle(const char* line) {
    return kDelimiters[CountNewSeparators(line) == 4 ? 0 : 1];
}

int parseSubject(const char* raw, _SubjectOut* out) {
    std::string converted;
    if (!ToUtf8(raw, &converted))
        return -1;
    const std::string_view line = converted;
    const DelimiterSet& set = delimiterGuessSubject(converted.c_str());
    const int32 separator = Find(line, set.separator);
    out->dat[0] = '\0';
    if (separator < 1 || !CopyWhole(out->dat, line.substr(0, separator)))
        return -1;
    const int32 start = separator + static_cast<int32>(strlen(set.separator));
    const int32 end = FindLast(line, set.countOpens);
    if (end - start < 0) {
        fprintf(stderr, "%s\n", converted.c_str());
        fprintf(stderr, "title.len: %ld start:%ld end:%ld", static_cast<long>(end - start),
                static_cast<long>(start), static_cast<long>(end));
        fprintf(stderr, " %s %s %s\n", set.separator, set.countOpens, set.countCloses);
        return -1;
    }
    CopyCut(out->title, Between(line, start, end));
    // The count starts one byte after the start of the bracket, whatever the bracket's width: one
    // behind a full-width bracket does not read as a number.
    const int32 closes = Find(line, set.countCloses, end + 1);
    out->count[0] = '\0';
    if (closes < 1 || !CopyWhole(out->count, Between(line, end + 1, closes)))
        return -1;
    return 0;
}

int parseArticle(const char* raw, _ArticleOut* out, bool convert) {
    std::string text;
    if (!convert)
        text = raw;
    else if (!ToUtf8(raw, &text))
        return -1;
    const std::string_view line = text;
    const std::string_view separator = delimiterGuessArticle(text.c_str()).separator;
    const int32 width = static_cast<int32>(separator.size());
    const int32 nameEnd = Find(line, separator);
    if (nameEnd < 1)
        return -1;
    out->name = Duplicate(line.substr(0, nameEnd));
    const int32 mailEnd = Find(line, separator, nameEnd + width);
    if (mailEnd < 1)
        return -1;
    if (mailEnd > nameEnd + width)
        out->mail = Duplicate(Between(line, nameEnd + width, mailEnd));
    const int32 dateEnd = Find(line, separator, mailEnd + width);
    if (dateEnd < 1)
        return -1;
    out->date = Duplicate(Between(line, mailEnd + width, dateEnd));
    const int32 messageEnd = Find(line, separator, dateEnd + width);
    if (messageEnd < 1)
        return -1;
    ParseMessage(Between(line, dateEnd + width, messageEnd), out);
    ParseTitle(line, messageEnd + width, out);
    return 0;
}

void ReleaseArticle(_ArticleOut* article) {
    for (char** text :
         {&article->message, &article->title, &article->name, &article->mail, &article->date}) {
        free(*text);
        *text = nullptr;
    }
}

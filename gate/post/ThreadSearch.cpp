#include "post/ThreadSearch.h"

#include "convert/Encodings.h"
#include "convert/HtmlTree.h"
#include "convert/Words.h"
#include "origin/Location.h"

#include <cstdio>
#include <vector>

namespace gate {

namespace {

constexpr size_t kLooked = 50;
constexpr time_t kClocksDiffer = 300;
constexpr time_t kJapan = 9 * 3600;

std::vector<std::string_view> LastLines(std::string_view bytes) {
    std::vector<std::string_view> lines;
    for (std::string_view line; TakeLine(&bytes, &line);) {
        if (!line.empty())
            lines.push_back(line);
    }
    if (lines.size() > kLooked)
        lines.erase(lines.begin(), lines.end() - kLooked);
    return lines;
}

std::string_view FieldOf(std::string_view line, int index) {
    for (; index > 0; index--) {
        const size_t end = line.find("<>");
        line = end == line.npos ? std::string_view() : line.substr(end + 2);
    }
    return line.substr(0, line.find("<>"));
}

// All but what servers change: blanks, line ends and what stands in tags.
std::string EssenceOf(const std::string& html) {
    const HtmlTree tree("<div>" + html + "</div>");
    std::string essence;
    if (tree.Root() == nullptr)
        return essence;
    const std::string text = TextOf(tree.Root());
    for (size_t i = 0; i < text.size(); i++) {
        if (text.compare(i, 3, "\xE3\x80\x80") == 0 || text.compare(i, 2, "\xC2\xA0") == 0)
            i += text[i] == '\xE3' ? 2 : 1;
        else if (static_cast<unsigned char>(text[i]) > ' ')
            essence += text[i];
    }
    return essence;
}

// References stay references: the program writes what cp932 lacks as such.
std::string AsHtml(const std::string& text) {
    std::string html;
    for (size_t i = 0; i < text.size(); i++) {
        if (text.compare(i, 2, "&#") == 0)
            html += '&';
        else
            AppendEscaped(text[i], &html);
    }
    return html;
}

// The time of "2026/11/22(日) 07:05:01.12", which is Japan's; −1 for another form.
time_t DateOf(std::string_view field) {
    const std::string text(field);
    const size_t day = text.find(')');
    tm date = {};
    if (day == text.npos ||
        sscanf(text.c_str(), "%4d/%2d/%2d", &date.tm_year, &date.tm_mon, &date.tm_mday) != 3 ||
        sscanf(text.c_str() + day + 1, "%2d:%2d:%2d", &date.tm_hour, &date.tm_min, &date.tm_sec) <
            2)
        return -1;
    date.tm_year -= date.tm_year < 100 ? -100 : 1900;
    date.tm_mon--;
    return timegm(&date) - kJapan;
}

} // namespace

bool HoldsPost(std::string_view lines, FamilyKind kind, const ProgramPost& post, time_t since) {
    const std::string wanted = EssenceOf(AsHtml(ToUtf8(post.message, Charset::kCp932)));
    const Charset charset = GuessCharset(lines);
    const int first = kind == FamilyKind::kDat ? 0 : 1; // the others begin with the number
    for (const std::string_view line : LastLines(lines)) {
        const time_t date = DateOf(ToUtf8(FieldOf(line, first + 2), charset));
        const bool isOlder = date >= 0 && date < since - kClocksDiffer;
        if (!isOlder && EssenceOf(ToUtf8(FieldOf(line, first + 3), charset)) == wanted)
            return true;
    }
    return false;
}

Finding FindInThread(const Shop& shop, const Draft& draft, time_t since, Deadline deadline) {
    const ThreadAddress& thread = draft.thread;
    OriginRequest request;
    request.family = thread.family;
    request.host = thread.server;
    request.path = thread.family->kind == FamilyKind::kDat
                       ? thread.DatPath()
                       : FillIn(thread.family->wholePath, thread);
    request.takesCompressed = true;
    const Fetched fetched = FetchFollowing(&shop.origin, request, deadline);
    if (!fetched.failure.empty() || fetched.head.status != 200 ||
        fetched.transfer->WaitForEnd(deadline) != Transfer::State::kWhole)
        return Finding::kUnknown;
    const std::string body = fetched.transfer->Body();
    if (LooksLikePage(body))
        return Finding::kUnknown;
    return HoldsPost(body, thread.family->kind, draft.post, since) ? Finding::kThere
                                                                   : Finding::kNotThere;
}

} // namespace gate

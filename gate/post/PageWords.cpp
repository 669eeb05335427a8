#include "post/PageWords.h"

#include "convert/Words.h"

#include <algorithm>
#include <array>

namespace gate {

namespace {

bool EndsLine(HtmlNode* node) {
    constexpr std::array<std::string_view, 14> kBlocks = {
        "br", "p", "div", "hr", "h1", "h2", "h3", "h4", "li", "tr", "dt", "dd", "table", "center"};
    return std::ranges::find(kBlocks, NameOf(node)) != kBlocks.end();
}

void AppendLine(std::string* line, std::string* words) {
    const std::string_view trimmed = Trimmed(*line);
    if (!trimmed.empty())
        words->append(trimmed) += '\n';
    line->clear();
}

} // namespace

std::string WordsOf(const HtmlTree& page, size_t most) {
    std::string words;
    std::string line;
    for (HtmlNode* node = page.Root(); node != nullptr && words.size() < most;) {
        const bool isPassed = IsHidden(node) || NameOf(node) == "head" || NameOf(node) == "title";
        if (EndsLine(node))
            AppendLine(&line, &words);
        for (const char byte : isPassed ? "" : ContentOf(node))
            line += byte == '\n' || byte == '\r' || byte == '\t' ? ' ' : byte;
        node = isPassed ? NodeAfter(node, page.Root()) : NextNode(node, page.Root());
    }
    AppendLine(&line, &words);
    return CutUtf8(std::move(words), most);
}

std::string CutUtf8(std::string text, size_t most) {
    if (text.size() <= most)
        return text;
    const auto isMiddle = [&text](size_t i) {
        return (static_cast<unsigned char>(text[i]) & 0xC0) == 0x80;
    };
    while (most > 0 && isMiddle(most))
        most--;
    text.resize(most);
    return text;
}

} // namespace gate

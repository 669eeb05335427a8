#include "interface/text/TextStyles.h"

#include <algorithm>
#include <cmath>

namespace {

bool SameColor(rgb_color a, rgb_color b) {
    return a.red == b.red && a.green == b.green && a.blue == b.blue && a.alpha == b.alpha;
}

} // namespace

TextStyles::TextStyles(const BFont& font, rgb_color color) {
    Intern(font, color);
    fRuns.push_back({0, 0});
}

int32 TextStyles::Intern(const BFont& font, rgb_color color) {
    const auto matches = [&](const TextStyle& style) {
        return SameColor(style.color, color) && style.font == font;
    };
    if (!fStyles.empty() && matches(fStyles[fLastInterned]))
        return fLastInterned;
    const auto found = std::find_if(fStyles.begin(), fStyles.end(), matches);
    fLastInterned = static_cast<int32>(found - fStyles.begin());
    if (found == fStyles.end()) {
        const AdvanceTable& advances = AdvanceTable::For(font);
        const int32 ascent = static_cast<int32>(std::ceil(advances.Ascent()));
        const float below = advances.Descent() + advances.Leading();
        fStyles.push_back(
            {font, color, &advances, ascent, ascent + static_cast<int32>(std::ceil(below))});
    }
    return fLastInterned;
}

int32 TextStyles::RunIndexAt(int32 offset) const {
    if (offset >= fRuns.back().offset)
        return CountRuns() - 1;
    const auto after =
        std::upper_bound(fRuns.begin() + 1, fRuns.end(), offset,
                         [](int32 at, const StyleRun& run) { return at < run.offset; });
    return static_cast<int32>(after - fRuns.begin()) - 1;
}

void TextStyles::Insert(int32 offset, int32 length) {
    // A run that begins where text is inserted moves, so that the style before goes on.
    for (auto run = fRuns.rbegin(); run != fRuns.rend() - 1 && run->offset >= offset; ++run)
        run->offset += length;
}

void TextStyles::Remove(int32 from, int32 to, int32 textLength) {
    if (from >= to)
        return;
    const bool textBehind = to < textLength;
    const int32 styleBehind = StyleAt(to);
    auto kept = std::lower_bound(fRuns.begin() + 1, fRuns.end(), from,
                                 [](const StyleRun& run, int32 at) { return run.offset < at; });
    const int32 styleBefore = (kept - 1)->style;
    auto last = kept;
    while (last != fRuns.end() && last->offset <= to)
        ++last;
    for (auto run = last; run != fRuns.end(); ++run)
        run->offset -= to - from;
    kept = fRuns.erase(kept, last);
    if (!textBehind || styleBefore == styleBehind)
        return;
    if (from > 0)
        fRuns.insert(kept, {from, styleBehind});
    else
        fRuns.front().style = styleBehind;
}

void TextStyles::Set(int32 from, int32 to, int32 style, int32 textLength) {
    SetRuns({{from, style}}, to, textLength);
}

void TextStyles::SetRuns(const std::vector<StyleRun>& runs, int32 to, int32 textLength) {
    if (runs.empty() || (runs.front().offset >= to && textLength > 0))
        return;
    const int32 from = runs.front().offset;
    const int32 styleBehind = StyleAt(to);
    const int32 index = RunIndexAt(from);
    auto first = fRuns.begin() + index + (fRuns[index].offset == from ? 0 : 1);
    auto last = first;
    while (last != fRuns.end() && last->offset <= to)
        ++last;
    std::vector<StyleRun> fresh;
    const int32 styleBefore = first == fRuns.begin() ? -1 : (first - 1)->style;
    const auto append = [&](int32 offset, int32 style) {
        if (!fresh.empty() && fresh.back().offset == offset)
            fresh.pop_back();
        if (style != (fresh.empty() ? styleBefore : fresh.back().style))
            fresh.push_back({offset, style});
    };
    for (const StyleRun& run : runs) {
        if (run.offset < to || textLength == 0)
            append(run.offset, run.style);
    }
    if (to < textLength)
        append(to, styleBehind);
    first = fRuns.erase(first, last);
    fRuns.insert(first, fresh.begin(), fresh.end());
}

#include "views/PopUpCopy.h"

#include <algorithm>

namespace {

constexpr const char* kIndent = "\u3000\u3000";
constexpr rgb_color kText = {0, 0, 0, 0};
constexpr float kLeastWidth = 100; // pixels that any indent leaves

} // namespace

void PopUpCopy::Add(const Stretch& stretch) {
    if (stretch.start >= stretch.end)
        return;
    const Runs runs(fFrom.RunArray(stretch.start, stretch.end), BTextView::FreeRunArray);
    for (int32 i = 0; i < runs->count; i++)
        runs->runs[i].font.SetSize(be_plain_font->Size());
    const size_t firstPiece = fPieces.size();
    if (stretch.indent == 0)
        _AddPiece(stretch.start, stretch.end - stretch.start, *runs, stretch.start);
    else
        _AddWrapped(stretch, *runs);
    _CopyLinks(stretch, firstPiece, fFrom.Urls(), &fUrls);
    _CopyLinks(stretch, firstPiece, fFrom.References(), &fReferences);
    _CopyMarks(stretch, firstPiece);
}

// A view of the width that is left says where its lines end.
void PopUpCopy::_AddWrapped(const Stretch& stretch, const text_run_array& runs) {
    std::string indent;
    for (int i = 0; i < stretch.indent; i++)
        indent += kIndent;
    const float width = std::max(kLeastWidth, fWidth - be_plain_font->StringWidth(indent.c_str()));
    const BRect rect(0, 0, width, 100);
    BTextView measure(rect, "", rect, B_FOLLOW_NONE);
    measure.SetStylable(true);
    measure.SetText(fFrom.Text() + stretch.start, stretch.end - stretch.start, &runs);
    const int32 length = measure.TextLength();
    for (int32 line = 0; line < measure.CountLines(); line++) {
        const int32 start = measure.OffsetAt(line);
        const int32 end = line + 1 < measure.CountLines() ? measure.OffsetAt(line + 1) : length;
        if (start == end)
            continue;
        _AddPlain(indent);
        _AddPiece(stretch.start + start, end - start, runs, stretch.start);
        if (end < length && measure.ByteAt(end - 1) != '\n')
            _AddPlain("\n");
    }
}

// The runs count from `runStart` of the other text.
void PopUpCopy::_AddPiece(int32 source, int32 length, const text_run_array& runs, int32 runStart) {
    const int32 at = static_cast<int32>(fText.size());
    const int32 from = source - runStart;
    for (int32 i = 0; i < runs.count; i++) {
        const bool isLast = i + 1 == runs.count;
        const int32 start = std::max(runs.runs[i].offset, from);
        if (start >= from + length || (!isLast && runs.runs[i + 1].offset <= from))
            continue;
        fRuns.push_back({at + start - from, runs.runs[i].font, runs.runs[i].color});
    }
    fText.append(fFrom.Text() + source, static_cast<size_t>(length));
    fPieces.push_back({at, source, length});
}

void PopUpCopy::_AddPlain(const std::string& text) {
    fRuns.push_back({static_cast<int32>(fText.size()), *be_plain_font, kText});
    fText += text;
}

void PopUpCopy::AddNote(const std::string& line) {
    _AddPlain(line);
}

// Where a byte of the last stretch, whose pieces begin there, stands.
int32 PopUpCopy::_AtOf(size_t firstPiece, int32 source) const {
    const auto behind = std::upper_bound(
        fPieces.begin() + static_cast<ptrdiff_t>(firstPiece), fPieces.end(), source,
        [](int32 offset, const Piece& piece) { return offset < piece.source; });
    const Piece& piece = *(behind - 1);
    return piece.at + std::min(source - piece.source, piece.length);
}

void PopUpCopy::_CopyLinks(const Stretch& stretch, size_t firstPiece, const Links& from,
                           Links* to) {
    for (auto link =
             std::ranges::lower_bound(from, stretch.start - 1, {}, &LinkTextView::Link::start);
         link != from.end() && link->end <= stretch.end; ++link)
        to->push_back({_AtOf(firstPiece, link->start + 1) - 1, _AtOf(firstPiece, link->end - 1) + 1,
                       link->text});
}

void PopUpCopy::_CopyMarks(const Stretch& stretch, size_t firstPiece) {
    for (const LinkTextView::Span& mark : fFrom.Marks()) {
        const int32 start = std::max(mark.start, stretch.start);
        const int32 end = std::min(mark.end, stretch.end);
        if (start < end)
            fMarks.push_back({_AtOf(firstPiece, start), _AtOf(firstPiece, end - 1) + 1});
    }
}

PopUpCopy::Runs PopUpCopy::MakeRuns() const {
    Runs runs(BTextView::AllocRunArray(static_cast<int32>(fRuns.size())), BTextView::FreeRunArray);
    std::ranges::copy(fRuns, runs->runs);
    return runs;
}

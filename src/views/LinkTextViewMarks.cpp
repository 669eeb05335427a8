// What is drawn over the text without being in it: the chosen link's frame, the margin's bars.
#include "views/LinkTextView.h"

#include <Region.h>
#include <ScrollBar.h>

#include <algorithm>

namespace {

constexpr rgb_color kFrame = {0, 0, 255, 255};
constexpr rgb_color kBar = {70, 130, 180, 255};
constexpr float kBarLeft = 2;
constexpr float kBarRight = 4;

using Link = LinkTextView::Link;

const Link* FirstFrom(const std::vector<Link>& links, int32 start) {
    const auto found = std::ranges::lower_bound(links, start, {}, &Link::start);
    return found == links.end() ? nullptr : &*found;
}

const Link* LastBefore(const std::vector<Link>& links, int32 start) {
    const auto behind = std::ranges::lower_bound(links, start, {}, &Link::start);
    return behind == links.begin() ? nullptr : &*(behind - 1);
}

// Of two links, of which either may be missing, the one that a reader on the way comes to first.
const Link* Nearer(const Link* one, const Link* other, LinkTextView::Way way) {
    if (one == nullptr || other == nullptr)
        return one != nullptr ? one : other;
    const bool oneIsFirst = one->start < other->start;
    return oneIsFirst == (way == LinkTextView::Way::kForward) ? one : other;
}

} // namespace

const Link* LinkTextView::_Chosen(const std::vector<Link>& links) const {
    const Link* link = FirstFrom(links, fChoice);
    return link != nullptr && link->start == fChoice ? link : nullptr;
}

const Link* LinkTextView::_ChosenInSight() const {
    const Link* link = Nearer(ChosenUrl(), ChosenReference(), Way::kForward);
    if (link == nullptr)
        return nullptr;
    float height = 0;
    const float top = PointAt(link->start + 1, &height).y;
    return top >= Bounds().top && top + height <= Bounds().bottom + 1 ? link : nullptr;
}

bool LinkTextView::ChooseLink(Way way) {
    const Link* present = _ChosenInSight();
    const bool isForward = way == Way::kForward;
    int32 start = 0;
    if (present != nullptr)
        start = present->start + (isForward ? 1 : 0);
    else
        start = OffsetAt(isForward ? Bounds().LeftTop() : Bounds().RightBottom()) - 1;
    const auto find = isForward ? FirstFrom : LastBefore;
    const Link* next = Nearer(find(fUrls, start), find(fReferences, start), way);
    if (next == nullptr)
        return present != nullptr;
    _InvalidateChoice();
    fChoice = next->start;
    ScrollToOffset(next->start + 1);
    _InvalidateChoice();
    return true;
}

BPoint LinkTextView::PlaceOf(const Link& link, float* height) const {
    return ConvertToScreen(PointAt(link.start + 1, height));
}

void LinkTextView::ForgetChoice() {
    _InvalidateChoice();
    fChoice = kNoLink;
}

void LinkTextView::_InvalidateChoice() {
    const Link* link = Nearer(ChosenUrl(), ChosenReference(), Way::kForward);
    if (link == nullptr)
        return;
    BRegion region;
    GetTextRegion(link->start + 1, link->end, &region);
    Invalidate(region.Frame().InsetByCopy(-2, -1));
}

void LinkTextView::SetMarks(std::vector<Span> marks) {
    if (fMarks.empty() && marks.empty())
        return;
    fMarks = std::move(marks);
    Invalidate();
}

void LinkTextView::Draw(BRect updateRect) {
    BTextView::Draw(updateRect);
    if (fMarks.empty() && fChoice == kNoLink)
        return;
    PushState();
    for (const Span& mark : fMarks)
        _DrawMark(mark, updateRect);
    _DrawChoice();
    PopState();
}

void LinkTextView::_DrawMark(const Span& mark, BRect updateRect) {
    float height = 0;
    const float top = PointAt(mark.start).y;
    const float bottom = PointAt(std::max(mark.start, mark.end - 1), &height).y + height - 1;
    const BRect bar(kBarLeft, top, kBarRight, bottom);
    if (!bar.Intersects(updateRect))
        return;
    SetHighColor(kBar);
    FillRect(bar);
}

void LinkTextView::_DrawChoice() {
    const Link* link = Nearer(ChosenUrl(), ChosenReference(), Way::kForward);
    if (link == nullptr)
        return;
    BRegion region;
    GetTextRegion(link->start + 1, link->end, &region);
    SetHighColor(kFrame);
    for (int32 i = 0; i < region.CountRects(); i++)
        StrokeRect(region.RectAt(i).InsetByCopy(-1, 0));
}

#include "views/LinkTextView.h"

#include <Cursor.h>

#include <algorithm>

namespace {

constexpr rgb_color kBackground = {239, 239, 239, 0};

} // namespace

void LinkTextView::AttachedToWindow() {
    BTextView::AttachedToWindow();
    SetViewColor(kBackground);
    MakeEditable(false);
    SetStylable(true);
}

const LinkTextView::Link* LinkTextView::LinkAt(const std::vector<Link>& links, int32 offset) {
    const auto behind = std::partition_point(
        links.begin(), links.end(), [offset](const Link& link) { return link.start < offset; });
    if (behind == links.begin())
        return nullptr;
    const Link& last = *(behind - 1);
    return offset < last.end ? &last : nullptr;
}

int32 LinkTextView::OffsetUnder(BPoint where) const {
    return where.x < TextRect().left ? -1 : OffsetAt(where);
}

void LinkTextView::SetAnchor(const Link& reference) {
    fAnchor = reference.start;
    fAnchorIsPointed = true;
}

void LinkTextView::MouseMoved(BPoint where, uint32 transit, const BMessage* dragMessage) {
    BTextView::MouseMoved(where, transit, dragMessage);
    const bool isInside = transit == B_ENTERED_VIEW || transit == B_INSIDE_VIEW;
    const int32 offset = isInside ? OffsetUnder(where) : -1;
    const Link* reference = LinkAt(fReferences, offset);
    _ShowShape(reference != nullptr || LinkAt(fUrls, offset) != nullptr);
    if (fAnchor != kNoLink)
        _PointAtAnchor(reference != nullptr && reference->start == fAnchor);
}

void LinkTextView::_PointAtAnchor(bool isOn) {
    if (isOn == fAnchorIsPointed)
        return;
    fAnchorIsPointed = isOn;
    AnchorPointed(isOn);
}

void LinkTextView::_ShowShape(bool isLink) {
    static const BCursor sHand(B_CURSOR_ID_FOLLOW_LINK);
    if (isLink == fShowsHand)
        return;
    fShowsHand = isLink;
    SetViewCursor(isLink ? &sHand : IsSelectable() ? B_CURSOR_I_BEAM : B_CURSOR_SYSTEM_DEFAULT);
}

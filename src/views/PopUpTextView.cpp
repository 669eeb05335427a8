#include "views/PopUpTextView.h"

#include "views/PopUpMessages.h"

#include <InterfaceDefs.h>
#include <Message.h>
#include <Window.h>

#include <algorithm>
#include <cmath>
#include <memory>

namespace {

constexpr float kInset = 8;

using Runs = std::unique_ptr<text_run_array, decltype(&BTextView::FreeRunArray)>;

Runs PlainSizedRuns(const BTextView& text, int32 start, int32 end) {
    Runs runs(text.RunArray(start, end), BTextView::FreeRunArray);
    for (int32 i = 0; i < runs->count; i++)
        runs->runs[i].font.SetSize(be_plain_font->Size());
    return runs;
}

BRect InitialFrame(const BTextView& from) {
    return from.TextRect().OffsetToCopy(kInset, kInset);
}

} // namespace

PopUpTextView::PopUpTextView(const LinkTextView& from, int32 start, int32 end)
    : LinkTextView(InitialFrame(from), "pop-up text", InitialFrame(from), B_FOLLOW_ALL_SIDES,
                   B_WILL_DRAW | B_FRAME_EVENTS) {
    MakeSelectable(false);
    SetStylable(true);
    SetText(from.Text() + start, end - start, PlainSizedRuns(from, start, end).get());
    _CopyLinks(from, start, end);
}

void PopUpTextView::_CopyLinks(const LinkTextView& from, int32 start, int32 end) {
    const auto copy = [&](const std::vector<Link>& links, std::vector<Link>* part) {
        for (const Link& link : links) {
            if (link.start >= start - 1 && link.end <= end)
                part->push_back({link.start - start, link.end - start, link.text});
        }
    };
    copy(from.Urls(), &fUrls);
    copy(from.References(), &fReferences);
}

float PopUpTextView::PreferredWidth() const {
    float widest = 0;
    for (int32 i = 0; i < CountLines(); i++)
        widest = std::max(widest, LineWidth(i));
    return std::ceil(widest) + 2 * kInset + 1;
}

// One line more than its own: that of the post behind it, whose place the text's margins take.
float PopUpTextView::PreferredHeight() const {
    BFont font;
    font_height height;
    GetFontAndColor(1, &font);
    font.GetHeight(&height);
    const float line = std::ceil(height.ascent + height.descent + 1);
    const float lines = static_cast<float>(CountLines() + 1) * line;
    return std::max(lines, TextHeight(0, CountLines() - 1) + 2 * kInset);
}

void PopUpTextView::SetOwner(const BMessenger& article, int32 id) {
    fArticle = article;
    fId = id;
}

// The pointer may have gone on in the meantime.
void PopUpTextView::SetNext(const BMessenger& next) {
    fNext = next;
    if (!AnchorIsPointed())
        fNext.SendMessage(kMsgAnchorLeft);
}

void PopUpTextView::FrameResized(float width, float height) {
    BRect rect = TextRect();
    rect.right = rect.left + width - 2 * rect.left;
    SetTextRect(rect);
    LinkTextView::FrameResized(width, height);
}

void PopUpTextView::MouseDown(BPoint where) {
    BPoint point;
    uint32 buttons = 0;
    GetMouse(&point, &buttons);
    BMessage clicked(kMsgPopUpClicked);
    clicked.AddInt32("id", fId);
    clicked.AddPoint("where", ConvertToScreen(where));
    const int32 offset = OffsetUnder(where);
    const bool isPrimary = (buttons & B_PRIMARY_MOUSE_BUTTON) != 0;
    const Link* url = isPrimary ? LinkAt(fUrls, offset) : nullptr;
    const Link* reference = isPrimary ? LinkAt(fReferences, offset) : nullptr;
    if (url != nullptr) {
        clicked.AddString("url", url->text.c_str());
    } else if (reference != nullptr) {
        SetAnchor(*reference);
        clicked.AddString("reference", reference->text.c_str());
    }
    fArticle.SendMessage(&clicked);
}

// The window scrolls, by steps of its own.
void PopUpTextView::MessageReceived(BMessage* message) {
    if (message->what == B_MOUSE_WHEEL_CHANGED)
        Window()->MessageReceived(message);
    else
        LinkTextView::MessageReceived(message);
}

void PopUpTextView::AnchorPointed(bool isOn) {
    fNext.SendMessage(isOn ? kMsgAnchorEntered : kMsgAnchorLeft);
}

#include "views/PopUpTextView.h"

#include "views/PopUpMessages.h"
#include "views/PopUpWindow.h"

#include <InterfaceDefs.h>
#include <Message.h>
#include <Window.h>

#include <algorithm>
#include <cmath>

namespace {

constexpr float kInset = 8;

BRect InitialFrame(const BTextView& from) {
    return from.TextRect().OffsetToCopy(kInset, kInset);
}

} // namespace

PopUpTextView::PopUpTextView(const LinkTextView& from, const std::vector<Stretch>& stretches,
                             const std::string& note, rgb_color ground)
    : LinkTextView(InitialFrame(from), "pop-up text", InitialFrame(from), B_FOLLOW_ALL_SIDES,
                   B_WILL_DRAW | B_FRAME_EVENTS),
      fGround(ground), fSource(from.StandsFor()) {
    MakeSelectable(false);
    SetStylable(true);
    PopUpCopy copy(from, TextRect().Width());
    for (const Stretch& stretch : stretches)
        copy.Add(stretch);
    if (!note.empty())
        copy.AddNote(note);
    SetText(copy.Text().data(), static_cast<int32>(copy.Text().size()), copy.MakeRuns().get());
    fUrls = copy.Urls();
    fReferences = copy.References();
    fPieces = copy.Pieces();
    SetMarks(copy.Marks());
}

void PopUpTextView::AttachedToWindow() {
    LinkTextView::AttachedToWindow();
    SetViewColor(fGround);
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

BMessage PopUpTextView::_Clicked(BPoint screen) const {
    BMessage clicked(kMsgPopUpClicked);
    clicked.AddInt32("id", fId);
    clicked.AddPoint("where", screen);
    return clicked;
}

void PopUpTextView::MouseDown(BPoint where) {
    BPoint point;
    uint32 buttons = 0;
    GetMouse(&point, &buttons);
    BMessage clicked = _Clicked(ConvertToScreen(where));
    const int32 offset = OffsetUnder(where);
    const bool isPrimary = (buttons & B_PRIMARY_MOUSE_BUTTON) != 0;
    const Link* url = isPrimary ? LinkAt(fUrls, offset) : nullptr;
    const Link* reference = isPrimary ? LinkAt(fReferences, offset) : nullptr;
    if (url != nullptr) {
        clicked.AddString("url", url->text.c_str());
    } else if (reference != nullptr) {
        SetAnchor(*reference);
        clicked.AddString("reference", reference->text.c_str());
    } else if (const int32 source = _SourceOf(OffsetAt(where));
               (buttons & B_SECONDARY_MOUSE_BUTTON) != 0 && source >= 0) {
        // The menu takes the pointer from the window before the article's text can tell it why.
        static_cast<PopUpWindow*>(Window())->MenuOpens();
        ForgetAnchor();
        clicked.AddInt32("menu_at", source);
    }
    fArticle.SendMessage(&clicked);
}

// Blanks before an indented line belong to what follows them.
int32 PopUpTextView::_SourceOf(int32 offset) const {
    for (const PopUpCopy::Piece& piece : fPieces) {
        if (offset < piece.at + piece.length)
            return fSource >= 0 ? fSource : piece.source + std::max(0, offset - piece.at);
    }
    return -1;
}

void PopUpTextView::OpenChosen() {
    const Link* url = ChosenUrl();
    const Link* link = url != nullptr ? url : ChosenReference();
    if (link == nullptr)
        return;
    float height = 0;
    BMessage clicked = _Clicked(PlaceOf(*link, &height));
    clicked.AddString(url != nullptr ? "url" : "reference", link->text.c_str());
    clicked.AddFloat("by_key", height);
    ForgetAnchor();
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

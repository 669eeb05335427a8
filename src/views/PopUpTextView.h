#pragma once

#include "views/LinkTextView.h"
#include "views/PopUpCopy.h"

#include <Messenger.h>

// The text of a pop-up: parts of another text, with their colours and their links. A click goes to
// the article's text as kMsgPopUpClicked: that one has the posts.
class PopUpTextView : public LinkTextView {
public:
    // Copies parts of `from`, wrapped at its width, in the system's plain size, on a ground of its
    // own; the note, unless it is empty, stands behind them. It belongs to no window yet.
    PopUpTextView(const LinkTextView& from, const std::vector<Stretch>& stretches,
                  const std::string& note, rgb_color ground);

    // What is needed to show all of it, in pixels.
    float PreferredWidth() const;
    float PreferredHeight() const;

    // Called once, by the window that it is given to: whom clicks go to, and the pop-up's number.
    void SetOwner(const BMessenger& article, int32 id);
    // The pop-up that was opened from the reference clicked last; an invalid one when it has gone.
    void SetNext(const BMessenger& next);

    // As a click on the chosen link.
    void OpenChosen();

    void AttachedToWindow() override;
    void MouseDown(BPoint where) override;
    void FrameResized(float width, float height) override;
    void MessageReceived(BMessage* message) override;

protected:
    void AnchorPointed(bool isOn) override;

private:
    BMessage _Clicked(BPoint screen) const;
    int32 _SourceOf(int32 offset) const;

    const rgb_color fGround;
    const int32 fSource; // the article's place that all of it came from; −1: see the pieces
    std::vector<PopUpCopy::Piece> fPieces;
    BMessenger fArticle;
    int32 fId = 0;
    BMessenger fNext;
};

#pragma once

#include "views/LinkTextView.h"

#include <Messenger.h>

// The text of a pop-up: a part of another text, with its colours and its links. A click on a link
// goes to the article's text as kMsgPopUpClicked: that one has the posts.
class PopUpTextView : public LinkTextView {
public:
    // A copy of `from` between two offsets, wrapped at its width, in the system's plain size. It
    // belongs to no window yet.
    PopUpTextView(const LinkTextView& from, int32 start, int32 end);

    // What is needed to show all of it, in pixels.
    float PreferredWidth() const;
    float PreferredHeight() const;

    // Called once, by the window that it is given to: whom clicks go to, and the pop-up's number.
    void SetOwner(const BMessenger& article, int32 id);
    // The pop-up that was opened from the reference clicked last; an invalid one when it has gone.
    void SetNext(const BMessenger& next);

    void MouseDown(BPoint where) override;
    void FrameResized(float width, float height) override;
    void MessageReceived(BMessage* message) override;

protected:
    void AnchorPointed(bool isOn) override;

private:
    void _CopyLinks(const LinkTextView& from, int32 start, int32 end);

    BMessenger fArticle;
    int32 fId = 0;
    BMessenger fNext;
};

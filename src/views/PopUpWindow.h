#pragma once

#include "views/PopUpLife.h"

#include <Messenger.h>
#include <Window.h>

class PopUpTextView;

// A borderless window that shows the posts a reference names, beside the pointer. It closes by
// itself as PopUpLife says; the article's text closes it in all other cases, and is told when it
// has gone.
class PopUpWindow : public BWindow {
public:
    // The text becomes the window's. `scrolls` when the frame is too small for it.
    PopUpWindow(BRect frame, PopUpTextView* text, bool scrolls, const BMessenger& article, int32 id,
                PopUpEnd end);
    ~PopUpWindow() override;

    void MessageReceived(BMessage* message) override;

    bool Scrolls() const { return fScrolls; }
    PopUpTextView* TextView() const { return fText; }

    // From its views: where the pointer is, that it did not come in time, and that it asked for a
    // menu.
    void PointerIsOver(bool isOver);
    void TimeIsUp();
    void MenuOpens();

private:
    void _Follow(bool closes);
    void _Scroll(const BMessage* wheel);
    void _NextOpened(const BMessage* message);
    void _NextClosed();
    void _ChooseLink(const BMessage* message);

    // Constant after construction
    const bool fScrolls;
    const BMessenger fArticle;
    const int32 fId;
    PopUpTextView* fText;

    // Window thread only
    PopUpLife fLife;
};

#pragma once

#include "windows/OnceWindow.h"

#include <Messenger.h>

class BRadioButton;
class BTextControl;
class BView;

// Takes the text to look for and where: in the titles of the thread list or in the article of its
// browser window, which does the searching, a step with each kMsgSearchStep. Deletes itself.
class NPSearchWindow : public OnceWindow {
public:
    explicit NPSearchWindow(const BMessenger& browser);

    void MessageReceived(BMessage* message) override;
    bool QuitRequested() override;

protected:
    void ComeToFront() override;

private:
    void _AddViews(BView* base);
    void _Search();

    // Constant after construction
    const BMessenger fBrowser;

    // Window thread only
    BTextControl* fText = nullptr;
    BRadioButton* fThread = nullptr;
    BRadioButton* fArticle = nullptr;
};

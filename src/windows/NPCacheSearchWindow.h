#pragma once

#include "windows/OnceWindow.h"

#include <memory>

class BButton;
class BStringView;
class BTextControl;
class MatchListView;
class WorkerControl;

// Looks for a text in the titles and posts of all cached threads and lists what is found while it
// goes on. Deletes itself; its search ends with it.
class NPCacheSearchWindow : public OnceWindow {
public:
    // Brings the window to the front if there is one. Any thread.
    static void Open();

    void MessageReceived(BMessage* message) override;
    bool QuitRequested() override;

protected:
    void ComeToFront() override;

private:
    NPCacheSearchWindow();
    void _StartOrStop();
    void _Start();
    void _Stop();
    void _AddMatches(const BMessage* message);
    void _Ended(const BMessage* message);
    bool _IsOfWorker(const BMessage* message) const;
    void _ShowCount(const BMessage* message, const char* end);

    // Window thread only
    BTextControl* fText = nullptr;
    BButton* fButton = nullptr;
    MatchListView* fList = nullptr;
    BStringView* fStatus = nullptr;
    std::shared_ptr<WorkerControl> fWorker; // null when there is none
};

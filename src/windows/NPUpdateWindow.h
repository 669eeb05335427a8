#pragma once

#include "windows/StopWindow.h"
#include "workers/Jobs.h"

#include <Messenger.h>

#include <string>

// Downloads the board menu from the portal and stores it, on kMsgBeginUpdate: a status line and a
// button that stops it. Closes by itself when the menu has been stored; stays with the reason on
// show when it can't be had. Tells the application, as it closes, whether there is a new menu.
// Deletes itself.
class NPUpdateWindow : public StopWindow {
public:
    struct Setup {
        BMessenger application; // gets kMsgUpdateEnded
        std::string folder;     // holds the menu and "services.txt", which names the portal
        ProxySetting proxy;
    };
    explicit NPUpdateWindow(const Setup& setup);

    void MessageReceived(BMessage* message) override;
    bool QuitRequested() override;

    // Thread entry point; the argument is the BoardMenuJob.
    static int32 UpdateBBSTable(void* job);

private:
    void _Begin();
    void _PageReceived(const BMessage* message);
    int32 WriteBBSTable(const std::string& page) const;
    void _ShowStatus(const BMessage* message);

    // Constant after construction
    const Setup fSetup;

    // Window thread only
    std::shared_ptr<WorkerControl> fWorker; // null before the start and when its page has come
    bool fComplete = false;
};

#pragma once

#include "app/NPWindow.h"
#include "messages/Messages.h"
#include "net/NPUrl.h"
#include "settings/SettingsFile.h"
#include "views/NPArticleView.h"
#include "views/NPProgressView.h"
#include "views/NPTextView.h"
#include "views/NPThreadView.h"

#include "server/Testing.h"

#include <Application.h>
#include <Messenger.h>
#include <StringView.h>

#include <string>
#include <vector>

// A real browser window whose requests go to a server on a loopback port, as a proxy. For tests on
// a thread of their own; it closes the window at its end.
class Browser {
public:
    static constexpr const char* kBoard = "http://board.example/news/";

    explicit Browser(int port, bool threadOnly = false)
        : fSettings("Itamori", "2ch", B_USER_SETTINGS_DIRECTORY) {
        fSettings.AddBool("proxy", true);
        fSettings.AddString("proxy_host", "127.0.0.1");
        fSettings.AddString("proxy_port", std::to_string(port).c_str());
        fSettings.AddBool("enable_cache", true);
        fSettings.AddBool("online_mode", true);
        fSettings.AddInt8("click_mode", 2);
        fWindow = new NPWindow(BRect(20, 20, 820, 620), &fSettings, threadOnly, BMessenger());
        fMessenger = BMessenger(fWindow);
        fWindow->Show();
    }
    ~Browser() { Close(); }
    Browser(const Browser&) = delete;
    Browser& operator=(const Browser&) = delete;

    void SelectBoard(const char* url = kBoard, uint32 code = kMsgBoardSelected) {
        BMessage message(code);
        message.AddString("board", "ニュース");
        message.AddString("url", url);
        fMessenger.SendMessage(&message);
    }
    void SelectThread(const char* dat, uint32 code = kMsgThreadSelected) {
        BMessage message(code);
        message.AddString("dat", dat);
        message.AddString("url", kBoard);
        fMessenger.SendMessage(&message);
    }
    void Close() {
        fMessenger.SendMessage(B_QUIT_REQUESTED);
        WaitUntil([this] { return !fMessenger.IsValid(); });
    }

    // Waits until the predicate holds, looked at with the window locked.
    template <typename Predicate>
    bool WaitUntil(Predicate holds) {
        return server::testing::WaitUntil([&] { return Locked([&] { return holds(); }, true); });
    }
    bool WaitForTitle(const std::string& title) {
        return WaitUntil([&] { return title == fWindow->Title(); });
    }
    // The article's title ends with the count of its posts once all have come.
    bool WaitForThread(const std::string& title) {
        return WaitUntil([&] {
            const std::string status = Status()->Text();
            return title == Article()->GetTitle() && (status.empty() || status.starts_with("新着"));
        });
    }
    // An empty line may say what a thread has brought.
    bool WaitForStatus(const std::string& text) {
        return WaitUntil([&] {
            const std::string status = Status()->Text();
            return status == text || (text.empty() && status.starts_with("新着"));
        });
    }

    std::string Text() {
        return Locked([this] { return std::string(Article()->GetText()); }, std::string());
    }
    // The thread list as it stands: a column's texts.
    std::vector<std::string> Column(int32 column) {
        return Locked(
            [&] {
                std::vector<std::string> texts;
                NPThreadListView* list = Threads()->List();
                for (int32 i = 0; i < list->FullListCountItems(); i++) {
                    const char* text = list->ThreadAt(i)->ColumnText(column);
                    texts.emplace_back(text != nullptr ? text : "");
                }
                return texts;
            },
            std::vector<std::string>());
    }

    NPWindow* Window() const { return fWindow; }
    BMessenger Messenger() const { return fMessenger; }
    SettingsFile& Settings() { return fSettings; }
    NPArticleView* Article() const {
        return static_cast<NPArticleView*>(fWindow->FindView("article pane"));
    }
    NPThreadView* Threads() const {
        return static_cast<NPThreadView*>(fWindow->FindView("thread"));
    }
    NPProgressView* Status() const {
        return static_cast<NPProgressView*>(fWindow->FindView("progress"));
    }

    template <typename Call, typename Result>
    Result Locked(Call call, Result whenGone) {
        if (!fMessenger.LockTarget())
            return whenGone;
        BLooper* looper = nullptr;
        fMessenger.Target(&looper);
        const Result result = call();
        looper->Unlock();
        return result;
    }

private:
    SettingsFile fSettings;
    NPWindow* fWindow;
    BMessenger fMessenger;
};

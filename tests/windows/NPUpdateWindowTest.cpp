#include "windows/NPUpdateWindow.h"

#include "messages/Messages.h"
#include "support/AlertWatch.h"
#include "support/OpenWindow.h"
#include "support/RawServer.h"
#include "support/ScratchFolder.h"

#include <Button.h>
#include <Looper.h>
#include <Message.h>
#include <StringView.h>

#include <gtest/gtest.h>

#include <atomic>
#include <cstring>
#include <filesystem>

using namespace server::testing;

namespace {

constexpr const char* kMenu = "bbs/newbbsmenu.html";
constexpr const char* kGood = "HTTP/1.1 200 OK\r\nContent-Length: 3\r\n\r\nnew";

// Stands for the application: counts what the update windows tell.
class Listener : public BLooper {
public:
    Listener() : BLooper("listener") { Run(); }
    void MessageReceived(BMessage* message) override {
        bool complete = false;
        if (message->what == kMsgUpdateEnded && message->FindBool("complete", &complete) == B_OK)
            (complete ? fComplete : fIncomplete)++;
    }
    bool WaitForEnds(int32 complete, int32 incomplete) const {
        return WaitUntil([&] { return fComplete == complete && fIncomplete == incomplete; });
    }

private:
    std::atomic<int32> fComplete{0};
    std::atomic<int32> fIncomplete{0};
};

// A board folder, and the windows that update its menu.
class UpdateWindow : public testing::Test {
protected:
    void SetUp() override {
        fFolder.Write(kMenu, "old");
        fFolder.Write("bbs/services.txt", "portal_host = portal.example\n");
    }
    void TearDown() override {
        fListener->Lock();
        fListener->Quit();
    }
    void Start(int port) {
        NPUpdateWindow::Setup setup;
        setup.application = BMessenger(fListener);
        setup.folder = fFolder / "bbs";
        setup.proxy = {true, "127.0.0.1", std::to_string(port)};
        NPUpdateWindow* window = new NPUpdateWindow(setup);
        const BMessenger messenger(window);
        window->Show();
        messenger.SendMessage(kMsgBeginUpdate);
    }
    static bool WaitForStatus(const std::string& text) {
        return WaitUntil([&] {
            std::string shown;
            WithOpen<NPUpdateWindow>([&](NPUpdateWindow* window) {
                shown = static_cast<BStringView*>(window->FindView("status"))->Text();
            });
            return shown == text;
        });
    }
    static void PressStop() {
        WithOpen<NPUpdateWindow>([](NPUpdateWindow* window) {
            static_cast<BButton*>(window->FindView("stop"))->Invoke();
        });
    }
    std::string Menu() const { return fFolder.Read(kMenu); }
    // The contents of the menus that were set aside.
    std::vector<std::string> Aside() const {
        std::vector<std::string> menus;
        for (const auto& entry : std::filesystem::directory_iterator(fFolder / "bbs")) {
            const std::string name = entry.path().filename();
            if (name.starts_with("newbbsmenu.html."))
                menus.push_back(fFolder.Read("bbs/" + name));
        }
        return menus;
    }

    ScratchFolder fFolder;
    Listener* fListener = new Listener; // deletes itself
};

using Strings = std::vector<std::string>;

} // namespace

TEST_F(UpdateWindow, StoresWhatThePortalSendsAndCloses) {
    RawServer server({RawServer::Reply(kGood)});
    Start(server.Port());
    EXPECT_TRUE(fListener->WaitForEnds(1, 0));
    EXPECT_TRUE(WaitForClosed<NPUpdateWindow>());
    EXPECT_EQ(Menu(), "new");
    EXPECT_EQ(Aside(), Strings{"old"});
    EXPECT_EQ(server.WaitForRequest(), "GET http://portal.example/newbbsmenu.html HTTP/1.0\r\n"
                                       "Host: portal.example\r\nConnection: close\r\n\r\n");
}

TEST_F(UpdateWindow, StoresThePageOfAnotherStatusToo) {
    RawServer server({RawServer::Reply("HTTP/1.1 404 Not Found\r\n\r\nno such page")});
    Start(server.Port());
    EXPECT_TRUE(fListener->WaitForEnds(1, 0));
    EXPECT_EQ(Menu(), "no such page");
    EXPECT_EQ(Aside(), Strings{"old"});
}

TEST_F(UpdateWindow, SaysWhatWentWrongAndWaits) {
    const RawServer::Script::End reset = RawServer::Script::End::kReset;
    const struct {
        RawServer::Script script;
        const char* status;
    } cases[] = {
        {RawServer::Reset(), "ヘッダ読み込みエラー"},
        {RawServer::Reply("garbage"), "ヘッダ読み込みエラー"},
        {RawServer::CutAfter(strlen(kGood) - 1, kGood), "読み込み失敗！"},
        {RawServer::CutAfter(strlen(kGood) - 1, kGood, reset), "読み込み失敗！"},
        {RawServer::Reply("HTTP/1.1 200 OK\r\n\r\n"), "読み込み失敗！"},
        {RawServer::Reply("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n"
                          "3\r\nnew\r\n0\r\n\r\n"),
         "読み込み失敗！"},
        {RawServer::EndlessLine("HTTP/1.1 200 OK\r\n\r\n"), "読み込み失敗！"},
    };
    int32 ended = 0;
    for (const auto& test : cases) {
        RawServer server({test.script});
        Start(server.Port());
        EXPECT_TRUE(WaitForStatus(test.status)) << test.status << test.script.bytes;
        PressStop();
        EXPECT_TRUE(fListener->WaitForEnds(0, ++ended));
        EXPECT_TRUE(WaitForClosed<NPUpdateWindow>());
    }
    Start(freePort());
    EXPECT_TRUE(WaitForStatus("接続エラー"));
    PressStop();
    EXPECT_TRUE(fListener->WaitForEnds(0, ended + 1));
    EXPECT_EQ(Menu(), "old");
    EXPECT_EQ(Aside(), Strings{});
}

TEST_F(UpdateWindow, AStopInTheMiddleOfThePageStoresNothing) {
    RawServer server({RawServer::Stall("HTTP/1.1 404 Not Found\r\n\r\nhalf of")});
    Start(server.Port());
    EXPECT_TRUE(WaitForStatus("読み込み失敗！"));
    NPUpdateWindow* window = WaitForOpen<NPUpdateWindow>();
    Activate(window, true);
    Key(window, B_ESCAPE);
    EXPECT_TRUE(fListener->WaitForEnds(0, 1));
    EXPECT_TRUE(WaitForClosed<NPUpdateWindow>());
    EXPECT_EQ(Menu(), "old");
    EXPECT_EQ(Aside(), Strings{});
}

TEST_F(UpdateWindow, TwoAtOnceLeaveOneWholeMenu) {
    RawServer server({RawServer::Reply(kGood)});
    Start(server.Port());
    Start(server.Port());
    EXPECT_TRUE(fListener->WaitForEnds(2, 0));
    EXPECT_TRUE(WaitForClosed<NPUpdateWindow>());
    EXPECT_EQ(Menu(), "new");
    EXPECT_GE(Aside().size(), 1u); // of the same second there is one
}

TEST_F(UpdateWindow, SaysThatThereIsNoMenuToReplace) {
    std::filesystem::remove(fFolder / kMenu);
    RawServer server({RawServer::Reply(kGood)});
    Start(server.Port());
    EXPECT_EQ(WaitForAlert(), "書き込みに失敗しました。");
    DismissAlert();
    EXPECT_TRUE(fListener->WaitForEnds(0, 1));
    EXPECT_FALSE(fFolder.Has(kMenu));
}

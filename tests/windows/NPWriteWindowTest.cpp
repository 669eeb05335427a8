#include "windows/NPWriteWindow.h"

#include "app/Messages.h"
#include "support/AlertWatch.h"
#include "support/Browser.h"
#include "support/RawServer.h"
#include "support/ScratchFolder.h"

#include "server/DemoServer.h"

#include <Application.h>
#include <Clipboard.h>
#include <Message.h>
#include <TextControl.h>

#include <gtest/gtest.h>

using namespace server::testing;

namespace {

NPWriteWindow* FindWriteWindow() {
    for (int32 i = 0; i < be_app->CountWindows(); i++) {
        if (NPWriteWindow* window = dynamic_cast<NPWriteWindow*>(be_app->WindowAt(i)))
            return window;
    }
    return nullptr;
}

void SetClipboard(const std::string& text) {
    be_clipboard->Lock();
    be_clipboard->Clear();
    be_clipboard->Data()->AddData("text/plain", B_MIME_TYPE, text.data(),
                                  static_cast<ssize_t>(text.size()));
    be_clipboard->Commit();
    be_clipboard->Unlock();
}

// The open write window, driven from outside; closed at the end.
class Writer {
public:
    Writer() {
        WaitUntil([] { return FindWriteWindow() != nullptr; });
        fWindow = FindWriteWindow();
        fMessenger = BMessenger(fWindow);
        Activate(fWindow, true);
        Settle();
    }
    ~Writer() { Close(); }
    Writer(const Writer&) = delete;
    Writer& operator=(const Writer&) = delete;

    void Settle() { EXPECT_TRUE(WaitUntilIdle(fWindow)); }
    void Type(const char* text) {
        server::testing::Type(fWindow, text);
        Settle();
    }
    void Press(char key, uint32 modifiers = 0) {
        Key(fWindow, key, modifiers);
        Settle();
    }
    void SetName(const char* name) {
        Do([&] { static_cast<BTextControl*>(fWindow->FindView("name"))->SetText(name); });
    }
    std::string Text() {
        std::string text;
        Do([&] { text = Editor()->Text(); });
        return text;
    }
    int32 Caret() {
        int32 start = 0;
        int32 end = 0;
        Do([&] { Editor()->GetSelection(&start, &end); });
        return start == end ? start : -1;
    }
    void Select(int32 offset) {
        Do([&] { Editor()->Select(offset, offset); });
    }
    bool CanSend() {
        bool can = false;
        Do([&] { can = static_cast<BControl*>(fWindow->FindView("send"))->IsEnabled(); });
        return can;
    }
    void Send() { fMessenger.SendMessage(kMsgSendPost); }
    BTextView* Editor() { return static_cast<BTextView*>(fWindow->FindView("message")); }
    bool WaitUntilClosed() {
        return WaitUntil([this] { return !fMessenger.IsValid(); });
    }
    void Close() {
        fMessenger.SendMessage(B_QUIT_REQUESTED);
        EXPECT_TRUE(WaitUntilClosed());
    }
    NPWriteWindow* Window() const { return fWindow; }

private:
    template <typename Work>
    void Do(Work work) {
        if (!fMessenger.LockTarget())
            return;
        work();
        fWindow->Unlock();
    }

    NPWriteWindow* fWindow = nullptr;
    BMessenger fMessenger;
};

WriteWindowSetup SetupFor(int port) {
    WriteWindowSetup setup;
    setup.target = {PostFamily::kBbsCgi, "h.jp", "news", "12"};
    setup.proxy = {true, "127.0.0.1", std::to_string(port)};
    return setup;
}

void OpenWithBindings(NPWriteTextView::Bindings bindings) {
    WriteWindowSetup setup = SetupFor(9);
    setup.bindings = bindings;
    NPWriteWindow::Open(setup);
}

// A thread of the demo server on show in a browser window.
class Posting : public testing::TestWithParam<BoardKind> {
protected:
    void SetUp() override {
        fServer.AddBoard("many", 3, BoardKind::kDat);
        ASSERT_TRUE(fServer.Start());
        fKey = fServer.Keys("many").front();
        fBrowser = std::make_unique<Browser>(fServer.Port());
        BMessage message(kMsgThreadSelected);
        message.AddString("dat", (fKey + ".dat").c_str());
        message.AddString("url", "http://many.example/many/");
        fBrowser->Messenger().SendMessage(&message);
        ASSERT_TRUE(fBrowser->WaitUntil([this] { return Count(" (1)"); }));
    }
    bool Count(const char* ending) {
        return std::string(fBrowser->Article()->GetTitle()).ends_with(ending);
    }
    void OpenWriter() {
        fBrowser->Locked(
            [this] {
                return fBrowser->Window()->PostMessage(kMsgOpenWriteWindow, fBrowser->Article());
            },
            status_t(B_OK));
    }

    ScratchFolder fFolder;
    DemoServer fServer;
    std::string fKey;
    std::unique_ptr<Browser> fBrowser;
};

} // namespace

TEST_F(Posting, APostAppearsInTheReloadedThread) {
    OpenWriter();
    Writer writer;
    writer.SetName("太郎");
    writer.Type("こんにちは");
    writer.Press(B_ENTER);
    writer.Type("二行目");
    writer.Send();
    EXPECT_TRUE(writer.WaitUntilClosed());
    EXPECT_TRUE(fBrowser->WaitUntil([this] { return Count(" (2)"); }));
    EXPECT_NE(fBrowser->Text().find("こんにちは\n二行目"), std::string::npos);
    EXPECT_EQ(fFolder.Read("2ch/Name.log"), "太郎\n");
    EXPECT_FALSE(fFolder.Has("2ch/Drafts/many.example/many/" + fKey + ".txt"));
}

TEST(NPWriteWindow, AThreadReadPageByPageIsPostedToThroughItsOwnCgi) {
    for (const char* board : {"many", "pref/many"}) {
        ScratchFolder folder;
        DemoServer server;
        server.AddBoard(board, 1, BoardKind::kCgi);
        ASSERT_TRUE(server.Start());
        Browser browser(server.Port());
        BMessage message(kMsgThreadSelected);
        message.AddString("dat", (server.Keys(board).front() + ".cgi").c_str());
        message.AddString("url", (std::string("http://many.example/") + board + "/").c_str());
        browser.Messenger().SendMessage(&message);
        ASSERT_TRUE(browser.WaitForThread("スレッド その1 (1)"));
        browser.Window()->PostMessage(kMsgOpenWriteWindow, browser.Article());
        Writer writer;
        writer.Type("こんにちは");
        writer.Send();
        EXPECT_TRUE(writer.WaitUntilClosed());
        EXPECT_TRUE(browser.WaitForThread("スレッド その1 (2)"));
        EXPECT_NE(browser.Text().find("こんにちは"), std::string::npos);
    }
}

TEST_F(Posting, ARefusedPostStaysReadyToBeSentAgain) {
    OpenWriter();
    Writer writer;
    writer.SetName(std::string(100, 'n').c_str());
    writer.Type("text");
    writer.Send();
    EXPECT_NE(WaitForAlert().find("長すぎます！"), std::string::npos);
    EXPECT_FALSE(writer.CanSend());
    DismissAlert();
    EXPECT_TRUE(WaitUntil([&] { return writer.CanSend(); }));
    EXPECT_EQ(writer.Text(), "text");
    EXPECT_FALSE(fFolder.Has("2ch/Name.log"));
    writer.SetName("n");
    writer.Send();
    EXPECT_TRUE(writer.WaitUntilClosed());
    EXPECT_TRUE(fBrowser->WaitUntil([this] { return Count(" (2)"); }));
}

TEST_F(Posting, OneWindowAThread) {
    OpenWriter();
    Writer writer;
    OpenWriter();
    fBrowser->WaitForStatus("");
    writer.Settle();
    int windows = 0;
    for (int32 i = 0; i < be_app->CountWindows(); i++)
        windows += dynamic_cast<NPWriteWindow*>(be_app->WindowAt(i)) != nullptr;
    EXPECT_EQ(windows, 1);
}

TEST(NPWriteWindow, WhatWasWrittenStandsThereAgain) {
    ScratchFolder folder;
    NPWriteWindow::Open(SetupFor(9));
    {
        Writer writer;
        writer.SetName("名前");
        writer.Type("書きかけ");
    }
    NPWriteWindow::Open(SetupFor(9));
    Writer writer;
    EXPECT_EQ(writer.Text(), "書きかけ");
    EXPECT_EQ(folder.Read("2ch/Drafts/h.jp/news/12.txt"), "名前\n\n書きかけ");
}

TEST(NPWriteWindow, APostWithoutAnAnswerKeepsItsDraft) {
    ScratchFolder folder;
    RawServer server({RawServer::Reset()});
    NPWriteWindow::Open(SetupFor(server.Port()));
    Writer writer;
    writer.Type("text");
    writer.Send();
    EXPECT_TRUE(writer.WaitUntilClosed());
    EXPECT_EQ(folder.Read("2ch/Drafts/h.jp/news/12.txt"), "\n\ntext");
}

TEST(NPWriteWindow, IsNotSentTwiceAndClosesWhileUnderWay) {
    ScratchFolder folder;
    RawServer server({RawServer::Stall()});
    NPWriteWindow::Open(SetupFor(server.Port()));
    Writer writer;
    writer.Type("text");
    writer.Send();
    writer.Send();
    server.WaitForRequest();
    EXPECT_FALSE(writer.CanSend());
    writer.Send();
    writer.Type("more");
    EXPECT_EQ(writer.Text(), "text");
    writer.Close();
    EXPECT_EQ(server.CountConnections(), 1u);
    EXPECT_TRUE(folder.Has("2ch/Drafts/h.jp/news/12.txt"));
}

TEST(NPWriteWindow, RefusesWhatCantBeSent) {
    ScratchFolder folder;
    RawServer server({RawServer::Stall()});
    NPWriteWindow::Open(SetupFor(server.Port()));
    Writer writer;
    writer.Send();
    EXPECT_EQ(WaitForAlert(), "メッセージが入力されていません。");
    DismissAlert();
    writer.Type("\U0001F600");
    writer.Send();
    EXPECT_EQ(WaitForAlert(), "使用できない文字が含まれている？");
    DismissAlert();
    EXPECT_EQ(writer.Text(), "\U0001F600");
    EXPECT_EQ(server.CountConnections(), 0u);
}

TEST(NPWriteTextView, EmacsKeysWorkWhenTheyAreOn) {
    ScratchFolder folder;
    OpenWithBindings(NPWriteTextView::Bindings::kEmacs);
    Writer writer;
    writer.Type("あbc");
    writer.Press(B_ENTER);
    writer.Type("def");
    SetClipboard("");
    const struct {
        char key;
        int32 from;
        int32 caret;
        const char* text;
    } cases[] = {
        {'a', 8, 6, "あbc\ndef"},   {'e', 6, 9, "あbc\ndef"},    {'b', 3, 0, "あbc\ndef"},
        {'f', 0, 3, "あbc\ndef"},   {'p', 6, 0, "あbc\ndef"},    {'n', 0, 6, "あbc\ndef"},
        {'d', 0, 0, "bc\ndef"},     {'k', 1, 1, "b\ndef"},       {'y', 1, 2, "bc\ndef"},
        {'k', 2, 2, "bcdef"},       {'y', 2, 3, "bc\ndef"},      {'m', 0, 1, "\nbc\ndef"},
        {B_END, 1, 3, "\nbc\ndef"}, {B_HOME, 3, 1, "\nbc\ndef"},
    };
    for (const auto& test : cases) {
        writer.Select(test.from);
        writer.Press(test.key, test.key >= 'a' ? B_COMMAND_KEY : 0);
        EXPECT_EQ(writer.Text(), test.text) << test.key;
        EXPECT_EQ(writer.Caret(), test.caret) << test.key;
    }
    writer.Press('z', B_COMMAND_KEY);
    EXPECT_EQ(writer.Text(), "bc\ndef");
}

TEST(NPWriteTextView, WithoutThemTheKeysAreThePlatforms) {
    ScratchFolder folder;
    OpenWithBindings(NPWriteTextView::Bindings::kPlatform);
    Writer writer;
    writer.Type("abc");
    SetClipboard("X");
    for (const char key : {'k', 'd', 'b', 'y', 'm', 'n', 'p', 'e', 'f'})
        writer.Press(key, B_COMMAND_KEY);
    EXPECT_EQ(writer.Text(), "abc");
    EXPECT_EQ(writer.Caret(), 3);
    writer.Press('v', B_COMMAND_KEY);
    EXPECT_EQ(writer.Text(), "abcX");
    writer.Press('a', B_COMMAND_KEY);
    EXPECT_EQ(writer.Caret(), -1); // all is selected
    writer.Press('x', B_COMMAND_KEY);
    EXPECT_EQ(writer.Text(), "");
    writer.Press('z', B_COMMAND_KEY);
    writer.Press('z', B_COMMAND_KEY);
    EXPECT_EQ(writer.Text(), "abc");
    writer.Press('z', B_COMMAND_KEY | B_SHIFT_KEY);
    EXPECT_EQ(writer.Text(), "abcX");
}

TEST(NPWriteTextView, QuotesEachLineOfTheClipboard) {
    ScratchFolder folder;
    OpenWithBindings(NPWriteTextView::Bindings::kPlatform);
    Writer writer;
    writer.Type("x");
    SetClipboard("一\n\n二");
    writer.Window()->PostMessage(kMsgQuotePaste, writer.Editor());
    writer.Settle();
    EXPECT_EQ(writer.Text(), "x> 一\n> \n> 二\n");
    writer.Press('z', B_COMMAND_KEY);
    EXPECT_EQ(writer.Text(), "x");
}

#include "windows/NPWriteWindow.h"

#include "messages/Messages.h"
#include "net/NPHttp.h"
#include "support/AlertWatch.h"
#include "support/Browser.h"
#include "support/RawServer.h"
#include "support/ScratchFolder.h"
#include "support/Writer.h"
#include "views/NPStringView.h"

#include "server/DemoServer.h"

#include <Application.h>
#include <MenuField.h>
#include <MenuItem.h>
#include <Message.h>
#include <Screen.h>

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <future>
#include <limits>

using namespace server::testing;

namespace {

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

TEST_F(Posting, APostAppearsInTheReloadedThreadAndIsKnownThere) {
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
    // It is known as an own one, with what answers it, also after the whole thread has come anew.
    const auto ticks = [this](size_t count) {
        return fBrowser->WaitUntil(
            [this, count] { return fBrowser->Article()->TextView()->Ticks().size() == count; });
    };
    // In the scroll bar's columns.
    const auto isDrawn = [this] {
        const Picture picture = Snapshot(fBrowser->Window());
        int count = 0;
        for (int32 i = 0; i < picture.width * picture.height; i++) {
            const rgb_color pixel = picture.pixels[static_cast<size_t>(i)];
            const bool isBlue = pixel.red == 70 && pixel.green == 130 && pixel.blue == 180;
            count += isBlue && i % picture.width > picture.width - 20 ? 1 : 0;
        }
        return count == 8;
    };
    EXPECT_TRUE(ticks(1));
    EXPECT_TRUE(WaitUntil(isDrawn));
    OpenWriter();
    Writer second;
    second.Type(">>2 はい");
    second.Send();
    EXPECT_TRUE(second.WaitUntilClosed());
    EXPECT_TRUE(fBrowser->WaitUntil([this] { return Count(" (3)"); }));
    EXPECT_TRUE(ticks(3));
    fBrowser->Locked(
        [this] { return BMessenger(fBrowser->Article()).SendMessage(kMsgReloadFromScratch); },
        status_t(B_OK));
    EXPECT_TRUE(fBrowser->WaitUntil([this] { return Count(" (3)"); }));
    EXPECT_TRUE(ticks(3));
    const std::string attributes =
        fFolder.Read("2ch/2chCache/many.example/many/.attributes/" + fKey + ".dat");
    EXPECT_NE(attributes.find("own_posts"), std::string::npos);
    EXPECT_EQ(attributes.find("own_sent"), std::string::npos);
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

TEST_F(Posting, NothingCanBeUsedUntilASlowServerAnswers) {
    OpenWriter();
    Writer writer;
    writer.Type("text");
    fServer.SetPostStyle(PostStyle::kStalled);
    writer.Send();
    EXPECT_TRUE(WaitUntil([&] { return fServer.CountStalled() == 1; }));
    EXPECT_FALSE(writer.CanSend());
    EXPECT_TRUE(WaitUntil([&] { return writer.Status() == "many.exampleへ送信中"; }));
    fServer.SetPostStyle(PostStyle::kOverlong);
    EXPECT_TRUE(writer.WaitUntilClosed());
    EXPECT_TRUE(fBrowser->WaitUntil([this] { return Count(" (2)"); }));
}

TEST_F(Posting, ARefusalWithoutATitleSaysWhatIsKnown) {
    fServer.SetPostStyle(PostStyle::kUntitled);
    OpenWriter();
    Writer writer;
    writer.Type(" ");
    writer.Send();
    EXPECT_TRUE(WaitForAlert().starts_with("many.example: 200 OK\n"));
    DismissAlert();
    EXPECT_TRUE(WaitUntil([&] { return writer.CanSend(); }));
    EXPECT_EQ(writer.Text(), " ");
}

TEST_F(Posting, APostAppearsInAThreadThatIsReadAsPages) {
    for (const char* board : {"cgi", "pre/cgi"}) {
        fServer.AddBoard(board, 1, BoardKind::kCgi);
        fKey = fServer.Keys(board).front();
        BMessage message(kMsgThreadSelected);
        message.AddString("dat", (fKey + ".cgi").c_str());
        message.AddString("url", ("http://many.example/" + std::string(board) + "/").c_str());
        message.AddInt32("res", 0);
        fBrowser->Messenger().SendMessage(&message);
        EXPECT_TRUE(fBrowser->WaitUntil([&] {
            const NPStringView* url =
                static_cast<NPStringView*>(fBrowser->Article()->FindView("url"));
            return Count(" (1)") && url->Address().ends_with("KEY=" + fKey);
        }));
        OpenWriter();
        Writer writer;
        writer.Type("ページの板");
        writer.Send();
        EXPECT_TRUE(writer.WaitUntilClosed());
        EXPECT_TRUE(fBrowser->WaitUntil([this] { return Count(" (2)"); })) << board;
        EXPECT_NE(fBrowser->Text().find("ページの板"), std::string::npos) << board;
    }
}

TEST_F(Posting, ThreadsOfTheOtherFamilyAreWrittenTo) {
    for (const char* board : {"pre/cgi", "bbs/cgi"}) {
        fServer.AddBoard(board, 1, BoardKind::kCgi);
        const std::string key = fServer.Keys(board).front();
        WriteWindowSetup setup = SetupFor(fServer.Port());
        setup.target = {PostFamily::kWriteCgi, "many.example", board, key};
        NPWriteWindow::Open(setup);
        Writer writer;
        writer.Type("text of its own");
        writer.Send();
        EXPECT_TRUE(writer.WaitUntilClosed());
        EXPECT_NE(fServer.Dat(board, key).find("text of its own"), std::string::npos) << board;
    }
}

TEST_F(Posting, OneWindowAThread) {
    OpenWriter();
    Writer writer;
    OpenWriter();
    EXPECT_TRUE(WaitUntilIdle(fBrowser->Window()));
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

TEST(NPWriteWindow, WhatRestsIsKeptWithoutClosingAndNoTimerRunsOtherwise) {
    ScratchFolder folder;
    const std::string draft = "2ch/Drafts/h.jp/news/12.txt";
    const std::string inTheWay = folder.Write("2ch/Drafts", "a file");
    NPWriteWindow::Open(SetupFor(9));
    Writer writer;
    const auto rests = [&] {
        bigtime_t rate = -1;
        writer.Do([&] { rate = writer.Window()->PulseRate(); });
        return rate == 0;
    };
    EXPECT_TRUE(rests());
    writer.Type("text");
    EXPECT_FALSE(rests());
    EXPECT_TRUE(WaitUntil([&] { return writer.Status() == "下書きを保存できません。"; }));
    std::filesystem::remove(inTheWay);
    writer.Press(B_TAB, B_SHIFT_KEY); // to the mail
    writer.Type("sage");
    EXPECT_TRUE(WaitUntil([&] { return folder.Read(draft) == "\nsage\ntext"; }));
    EXPECT_TRUE(WaitUntil(rests));
    EXPECT_EQ(writer.Status(), "");
}

TEST(NPWriteWindow, ADraftThatCantBeReadOutlivesIt) {
    ScratchFolder folder;
    const std::string draft = folder.MakeFolder("2ch/Drafts/h.jp/news") + "/12.txt";
    std::filesystem::create_symlink("12.txt", draft); // leads to itself
    NPWriteWindow::Open(SetupFor(9));
    {
        Writer writer;
        EXPECT_EQ(writer.Status(), "下書きを読み込めませんでした。");
    }
    EXPECT_TRUE(std::filesystem::is_symlink(draft));
}

TEST(NPWriteWindow, TheProgramsEndKeepsWhatWasWritten) {
    ScratchFolder folder;
    NPWriteWindow::Open(SetupFor(9));
    Writer writer;
    writer.Type("text");
    be_app->Lock();
    EXPECT_TRUE(be_app->QuitRequested());
    be_app->Unlock();
    EXPECT_EQ(folder.Read("2ch/Drafts/h.jp/news/12.txt"), "\n\ntext");
}

TEST(NPWriteWindow, AsksBeforeWhatCantBeKeptIsLost) {
    ScratchFolder folder;
    const std::string inTheWay = folder.Write("2ch/Drafts", "a file");
    NPWriteWindow::Open(SetupFor(9));
    Writer writer;
    writer.Type("text");
    std::future<bool> quits = std::async(std::launch::async, [] {
        be_app->Lock();
        const bool result = be_app->QuitRequested();
        be_app->Unlock();
        return result;
    });
    EXPECT_NE(WaitForAlert().find("下書きを保存できません。"), std::string::npos);
    DismissAlert();
    EXPECT_FALSE(quits.get());
    EXPECT_EQ(writer.Text(), "text");

    writer.Window()->PostMessage(B_QUIT_REQUESTED);
    EXPECT_NE(WaitForAlert(), "");
    EXPECT_TRUE(WaitUntil([&] { return IsBlocked(writer.Window()); }));
    DismissAlert();
    writer.Settle();
    EXPECT_TRUE(writer.CanSend());
    std::filesystem::remove(inTheWay);
    writer.Close();
    EXPECT_EQ(folder.Read("2ch/Drafts/h.jp/news/12.txt"), "\n\ntext");
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

TEST(NPWriteWindow, AFinishedPostIsNotSentAgainBeforeTheWindowCloses) {
    ScratchFolder folder;
    RawServer server({RawServer::Stall()});
    NPWriteWindow::Open(SetupFor(server.Port()));
    Writer writer;
    writer.Type("text");
    writer.Send();
    server.WaitForRequest();
    writer.Do([&] { // all three wait before the first is seen
        for (const uint32 code : {kMsgPostDone, kMsgSendPost, kMsgSendPost})
            writer.Window()->PostMessage(code);
    });
    EXPECT_TRUE(writer.WaitUntilClosed());
    EXPECT_FALSE(folder.Has("2ch/Drafts/h.jp/news/12.txt"));
    // A connection of another's comes behind those that were made.
    NPHttp probe("127.0.0.1", server.PortText().c_str());
    EXPECT_EQ(probe.Connect(), B_OK);
    EXPECT_TRUE(WaitUntil([&] { return server.CountConnections() >= 2; }));
    EXPECT_EQ(server.CountConnections(), 2u);
}

TEST(NPWriteWindow, WorksByTheKeyboardAlone) {
    ScratchFolder folder;
    folder.Write("2ch/Name.log", "古い名前\n太郎\n");
    RawServer server({RawServer::Reply("HTTP/1.0 200 OK\r\n\r\n<title></title>だめ\n")});
    NPWriteWindow::Open(SetupFor(server.Port()));
    Writer writer;
    EXPECT_EQ(writer.Focus(), "message");
    writer.Type("text");
    std::string way;
    for (int i = 0; i < 6; i++) {
        writer.Press(B_TAB, B_SHIFT_KEY);
        way += writer.Focus() + " ";
    }
    EXPECT_EQ(way, "mail name menu name send cancel message ");
    for (int i = 0; i < 2; i++)
        writer.Press(B_TAB, B_SHIFT_KEY);
    writer.Press(B_SPACE); // the names
    EXPECT_TRUE(WaitUntil([] { return MenuIsOpen(); }));
    EXPECT_EQ(MenuLabels(), (std::vector<std::string>{"太郎", "古い名前"}));
    EXPECT_TRUE(ChooseMenuLine("太郎"));
    EXPECT_TRUE(WaitUntil([&] { return writer.Field("name") == "太郎"; }));
    for (int i = 0; i < 2; i++)
        writer.Press(B_TAB, B_SHIFT_KEY);
    writer.Press(B_SPACE);
    WaitForAlert();
    DismissAlert();
    EXPECT_TRUE(WaitUntil([&] { return writer.CanSend(); }));
    EXPECT_EQ(writer.Focus(), "send"); // where it was
    writer.Press(B_ENTER, B_COMMAND_KEY);
    EXPECT_NE(server.WaitForRequest(1), "");
    WaitForAlert();
    DismissAlert();
}

TEST(NPWriteWindow, EarlierEntriesAreChosenFromTheirMenus) {
    ScratchFolder folder;
    const std::string longMail(300, 'm');
    folder.Write("2ch/Name.log", "a\nb & c\n");
    folder.Write("2ch/Mail.log", "sage\n" + longMail + "\n");
    NPWriteWindow::Open(SetupFor(9));
    Writer writer;
    const auto choose = [&](const char* menu, int32 line) {
        writer.Do([&] {
            BMenu* history = static_cast<BMenuField*>(writer.Window()->FindView(menu))->Menu();
            BMenuItem* item = history->ItemAt(line);
            EXPECT_LT(strlen(item->Label()), 100u);
            item->Messenger().SendMessage(item->Message());
        });
        writer.Settle();
    };
    choose("name menu", 0);
    EXPECT_EQ(writer.Field("name"), "b & c");
    choose("name menu", 1);
    EXPECT_EQ(writer.Field("name"), "a");
    choose("mail menu", 0);
    EXPECT_EQ(writer.Field("mail"), longMail);
    choose("mail menu", 1);
    EXPECT_EQ(writer.Field("mail"), "sage");
    EXPECT_EQ(writer.Field("name"), "a");
}

TEST(NPWriteWindow, StandsWhereItsHeadCanBeReached) {
    ScratchFolder folder;
    const BRect screen = BScreen().Frame();
    const float infinity = std::numeric_limits<float>::infinity();
    for (const BRect& frame : {BRect(0, 0, 0, 0), BRect(50, -300, 550, 100),
                               BRect(-infinity, 0, infinity, 300), BRect(9000, 50, 9500, 400)}) {
        WriteWindowSetup setup = SetupFor(9);
        setup.frame = frame;
        setup.title = std::string(5000, 't');
        NPWriteWindow::Open(setup);
        Writer writer;
        writer.Do([&] {
            EXPECT_TRUE(screen.Contains(writer.Window()->Frame().LeftTop()));
            EXPECT_LE(strlen(writer.Window()->Title()), 255u);
        });
    }
}

TEST(NPArticleView, TheWriteButtonNeedsAThreadWithAGoodAddress) {
    ScratchFolder folder;
    RawServer server({RawServer::Stall()});
    Browser browser(server.Port());
    const auto press = [&] {
        browser.Locked(
            [&] {
                BMessage message(kMsgOpenWriteWindow);
                return BMessenger(browser.Article()).SendMessage(&message);
            },
            status_t(B_ERROR));
    };
    press();
    EXPECT_EQ(WaitForAlert(), "スレッドが選択されていません！");
    DismissAlert();
    const std::string board(64, 'b'); // a byte too long
    BMessage select(kMsgThreadSelected);
    select.AddString("dat", "1.dat");
    select.AddString("url", ("http://board.example/" + board + "/").c_str());
    browser.Messenger().SendMessage(&select);
    press();
    EXPECT_EQ(WaitForAlert(),
              "Invalid URL: http://board.example/test/read.cgi?bbs=" + board + "&key=1");
    DismissAlert();
    EXPECT_EQ(FindWriteWindow(), nullptr);
}

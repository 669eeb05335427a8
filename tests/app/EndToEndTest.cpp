#include "support/Browser.h"
#include "support/RawServer.h"
#include "support/ScratchFolder.h"

#include "server/DemoServer.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

constexpr int kThreads = 1000;
constexpr const char* kBoardFolder = "many";

// One browser window on the demo server, which counts what it is asked.
class EndToEnd : public testing::Test {
protected:
    void SetUp() override {
        std::string error;
        ASSERT_TRUE(fServer.LoadBoards(DEMO_BOARDS, &error)) << error;
        fServer.AddBoard(kBoardFolder, kThreads);
        ASSERT_TRUE(fServer.Start());
        fKey = fServer.Keys(kBoardFolder).front();
        fServer.Grow(kBoardFolder, fKey, 40);
        fBrowser = std::make_unique<Browser>(fServer.Port());
    }

    std::string Dat() const { return fKey + ".dat"; }
    std::string Path() const { return std::string("/") + kBoardFolder + "/dat/" + Dat(); }
    std::string Cached() const {
        return fFolder.Read(std::string("2ch/2chCache/many.example/") + kBoardFolder + "/" + Dat());
    }
    std::string Served() const { return fServer.Dat(kBoardFolder, fKey); }
    long CountPosts() const {
        const std::string dat = Served();
        return std::count(dat.begin(), dat.end(), '\n');
    }
    void Select(uint32 code) {
        BMessage message(code);
        message.AddString("board", "いろいろ");
        message.AddString("url", "http://many.example/many/");
        message.AddString("dat", Dat().c_str());
        fBrowser->Messenger().SendMessage(&message);
    }
    bool WaitForAllPosts() {
        const std::string ending = " (" + std::to_string(CountPosts()) + ")";
        return fBrowser->WaitUntil([&] {
            return std::string(fBrowser->Article()->GetTitle()).ends_with(ending);
        }) && fBrowser->WaitForStatus("");
    }

    ScratchFolder fFolder;
    DemoServer fServer;
    std::string fKey;
    std::unique_ptr<Browser> fBrowser;
};

} // namespace

TEST_F(EndToEnd, ABoardIsReadItsThreadGrowsAndBothAreReadAgainOffline) {
    Select(kMsgBoardSelected);
    EXPECT_TRUE(fBrowser->WaitForTitle("いろいろ (1000)"));
    EXPECT_EQ(fBrowser->Column(kColumnDat).size(), static_cast<size_t>(kThreads));

    Select(kMsgThreadSelected);
    EXPECT_TRUE(WaitForAllPosts());
    EXPECT_EQ(Cached(), Served());
    EXPECT_EQ(fServer.CountBytes(Path()), Served().size());

    const size_t held = Served().size();
    fServer.ForgetRequests();
    fServer.Grow(kBoardFolder, fKey, 3);
    Select(kMsgThreadSelected);
    EXPECT_TRUE(WaitForAllPosts());
    EXPECT_EQ(fServer.CountBytes(Path()), Served().size() - held);
    EXPECT_EQ(Cached(), Served());

    fServer.ForgetRequests();
    fBrowser->Locked(
        [&] {
            fBrowser->Article()->ShowThread(-1, "", "");
            return true;
        },
        false);
    Select(kMsgThreadSelected);
    EXPECT_TRUE(WaitForAllPosts());
    ASSERT_EQ(fServer.Requests().size(), 1u);
    EXPECT_EQ(fServer.Requests()[0].status, 304);
    EXPECT_EQ(fServer.CountBytes(Path()), 0u);

    const std::string shown = fBrowser->Text();
    fServer.Stop();
    Select(kMsgBoardSelectedCached);
    EXPECT_TRUE(fBrowser->WaitForTitle("いろいろ (1)"));
    EXPECT_EQ(fBrowser->Column(kColumnDat), std::vector<std::string>{Dat()});
    fBrowser->Locked(
        [&] {
            fBrowser->Article()->ShowThread(-1, "", "");
            return true;
        },
        false);
    Select(kMsgThreadSelectedCached);
    EXPECT_TRUE(WaitForAllPosts());
    EXPECT_EQ(fBrowser->Text(), shown);
    EXPECT_EQ(Cached(), Served());
}

TEST_F(EndToEnd, AThreadReopensWhereItWasLeft) {
    Select(kMsgThreadSelected);
    EXPECT_TRUE(WaitForAllPosts());
    const auto top = [&] { return fBrowser->Article()->TextView()->Bounds().top; };
    fBrowser->Locked(
        [&] {
            fBrowser->Article()->TextView()->ScrollTo(BPoint(0, 200));
            return true;
        },
        false);
    Select(kMsgThreadSelected);
    EXPECT_TRUE(WaitForAllPosts());
    EXPECT_TRUE(fBrowser->WaitUntil([&] { return top() == 200; }));
}

TEST_F(EndToEnd, ALinkOfAnyLengthMakesATitleThatIsCutAtACharacter) {
    Browser thread(fServer.Port(), true);
    std::string title = "x";
    while (title.size() < 100000)
        title += "あ";
    BMessage select(kMsgThreadSelected);
    select.AddString("title", title.c_str());
    select.AddString("url", "http://many.example/many/");
    select.AddString("dat", Dat().c_str());
    thread.Messenger().SendMessage(&select);
    EXPECT_TRUE(thread.WaitForTitle(title.substr(0, 1 + 84 * 3)));
}

TEST_F(EndToEnd, WindowsCloseInAnyOrderWhileTheyLoad) {
    for (int i = 0; i < 4; i++) {
        Browser first(fServer.Port());
        Browser second(fServer.Port());
        for (Browser* browser : {&first, &second}) {
            browser->SelectBoard("http://many.example/many/");
            browser->SelectThread(Dat().c_str());
        }
        (i % 2 == 0 ? first : second).Close();
    }
}

#include "support/Browser.h"
#include "support/OpenWindow.h"
#include "support/RawServer.h"
#include "support/ScratchFolder.h"

#include "windows/NPSearchWindow.h"

#include <RadioButton.h>
#include <TextControl.h>

#include <gtest/gtest.h>

using namespace server::testing;

namespace {

// "猫" and "犬" are written in the servers' code.
constexpr const char* kSubject =
    "1.dat<>\x94\x4c 1 (1)\n2.dat<>\x8c\xa2 (1)\n3.dat<>\x94\x4c 2 (1)\n";

std::string Thread(int posts) {
    std::string dat = "name<>mail<>date<>first needle post<>title\n";
    for (int i = 1; i < posts; i++)
        dat += i % 50 == 0 ? "name<>mail<>date<>a needle here<>\n" : "name<>mail<>date<>hay<>\n";
    return dat;
}

// A browser window with a board of three threads and one of them open, and its search window,
// driven by keys.
class Search : public testing::Test {
protected:
    void SetUp() override {
        fBrowser.SelectBoard();
        ASSERT_TRUE(fBrowser.WaitForTitle("ニュース (3)"));
        ASSERT_TRUE(fBrowser.WaitForStatus(""));
        OpenThread();
        Open();
    }
    // The request is the server's second or later one.
    void OpenThread(size_t request = 1) {
        fBrowser.SelectThread("1.dat");
        ASSERT_NE(fServer.WaitForRequest(request), "");
        ASSERT_TRUE(fBrowser.WaitForThread("title (200)"));
    }
    void Open() {
        fBrowser.Messenger().SendMessage(kMsgOpenSearch);
        fSearch = WaitForOpen<NPSearchWindow>();
        ASSERT_NE(fSearch, nullptr);
        Activate(fSearch, true);
        WaitUntilIdle(fSearch);
    }
    void Press(char key) {
        Key(fSearch, key);
        WaitUntilIdle(fSearch);
        WaitUntilIdle(fBrowser.Window());
    }
    void Want(const char* text) { Type(fSearch, text); }
    void WantInArticle(const char* text) {
        Want(text);
        Press(B_TAB);
        Press(B_RIGHT_ARROW);
    }
    void Close() {
        Key(fSearch, B_ESCAPE);
        EXPECT_TRUE(WaitForClosed<NPSearchWindow>());
        WaitUntilIdle(fBrowser.Window());
    }

    int32 SelectedRow() {
        return fBrowser.Locked(
            [this] { return fBrowser.Threads()->List()->FullListCurrentSelection(); }, int32(-2));
    }
    // Where the selection of the article starts; −1 when it is not "needle" in view.
    int32 SelectedNeedle() {
        return fBrowser.Locked(
            [this] {
                int32 start = 0;
                int32 end = 0;
                const BTextView* text = fBrowser.Article()->TextView();
                text->GetSelection(&start, &end);
                const bool isNeedle = std::string(text->Text() + start, end - start) == "needle";
                const BRect view = text->Bounds();
                return isNeedle && view.Contains(text->PointAt(start)) ? start : -1;
            },
            int32(-2));
    }

    ScratchFolder fFolder;
    RawServer fServer{{RawServer::Reply(std::string("HTTP/1.1 200 OK\r\n\r\n") + kSubject),
                       RawServer::Reply("HTTP/1.1 200 OK\r\n\r\n" + Thread(200)),
                       RawServer::Reply("HTTP/1.1 304 Not Modified\r\n\r\n")}};
    Browser fBrowser{fServer.Port()};
    NPSearchWindow* fSearch = nullptr;
};

} // namespace

TEST_F(Search, StepsThroughTheTitlesAndClosingStartsAnew) {
    Want("猫");
    for (const int32 row : {0, 2, 2, 0}) { // past the last one nothing changes
        Press(B_ENTER);
        EXPECT_EQ(SelectedRow(), row);
    }
    Close();
    Open();
    Want("犬");
    Press(B_ENTER);
    EXPECT_EQ(SelectedRow(), 1);
}

TEST_F(Search, ScrollsToEachMatchAndGoesOnAfterClosing) {
    WantInArticle("needle");
    std::vector<int32> starts;
    for (int i = 0; i < 2; i++) {
        Press(B_ENTER);
        starts.push_back(SelectedNeedle());
    }
    Close();
    Open();
    WantInArticle("needle");
    for (int i = 0; i < 2; i++) {
        Press(B_ENTER);
        starts.push_back(SelectedNeedle());
    }
    EXPECT_GE(starts[0], 0);
    for (size_t i = 1; i < starts.size(); i++)
        EXPECT_GT(starts[i], starts[i - 1]) << i;
    Press(B_ENTER); // past the last one
    Press(B_ENTER);
    EXPECT_EQ(SelectedNeedle(), starts[0]);
}

TEST_F(Search, AThreadThatHasBeenReadIsSearchedFromItsTop) {
    WantInArticle("needle");
    Press(B_ENTER);
    const int32 first = SelectedNeedle();
    Press(B_ENTER);
    OpenThread(2);
    Press(B_ENTER);
    EXPECT_GE(first, 0);
    EXPECT_EQ(SelectedNeedle(), first);
}

TEST_F(Search, OneWindowSearchesAndGoesWithItsBrowser) {
    Open();
    int32 count = 0;
    for (int32 i = 0; i < be_app->CountWindows(); i++)
        count += BString(be_app->WindowAt(i)->Title()) == "検索";
    EXPECT_EQ(count, 1);
    fBrowser.Close();
    EXPECT_TRUE(WaitForClosed<NPSearchWindow>());
}

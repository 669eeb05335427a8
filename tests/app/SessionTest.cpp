#include "app/Session.h"

#include <gtest/gtest.h>

namespace {

TEST(Session, IsReadAsItWasWritten) {
    OpenWindow browser;
    browser.frame = BRect(10, 20, 610.5F, 520);
    browser.boardUrl = "http://h.example/news/index.html";
    browser.boardName = "ニュース\t速報";
    OpenWindow thread;
    thread.frame = BRect(-30, 0, 400, 300);
    thread.isThreadOnly = true;
    thread.title = "題";
    thread.threadUrl = browser.boardUrl;
    thread.threadDat = "1700000000.dat";
    const std::vector<OpenWindow> read = ReadSession(WriteSession({browser, thread}));
    ASSERT_EQ(read.size(), 2u);
    EXPECT_EQ(read[0].frame, browser.frame);
    EXPECT_EQ(read[0].boardName, "ニュース 速報");
    EXPECT_FALSE(read[0].isThreadOnly);
    EXPECT_TRUE(read[1].isThreadOnly);
    EXPECT_EQ(read[1].title + read[1].threadDat, "題1700000000.dat");
    for (const char* bad : {"", "\n\n", "1 2 3\tbrowser", "5 5 1 1\tthread", "nan 0 1 1\tthread",
                            "0 0 10 10\tother", "0 0 inf 10\tthread"})
        EXPECT_TRUE(ReadSession(bad).empty()) << bad;
    EXPECT_EQ(ReadSession(WriteSession(std::vector<OpenWindow>(100, browser))).size(), 32u);
}

} // namespace

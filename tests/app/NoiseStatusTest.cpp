#include "support/Browser.h"
#include "support/RawServer.h"
#include "support/ScratchFolder.h"

#include "noise/NoiseStore.h"

#include <gtest/gtest.h>

TEST(NoiseStatus, ARuleThatIsSwitchedOffIsNamedWhenAllElseHasBeenSaid) {
    const ScratchFolder folder;
    NoiseRule slow;
    slow.text = "(a+)+$";
    slow.isPattern = true;
    const NoiseRules before = NoiseStore::Shared().Rules();
    ASSERT_EQ(NoiseStore::Shared().SetRules({{slow}}), B_OK);
    RawServer server({RawServer::Reply("HTTP/1.1 200 OK\r\n\r\nn<>m<>d<>" + std::string(5000, 'a') +
                                       "b<>title\n")});
    Browser browser(server.Port());
    browser.SelectThread("1700000000.dat");
    EXPECT_TRUE(browser.WaitUntil(
        [&] { return std::string("title (1)") == browser.Article()->GetTitle(); }));
    // The worker's last word comes behind the thread's end.
    EXPECT_TRUE(server::testing::WaitUntil([] { return find_thread("getArticle") < 0; }));
    EXPECT_TRUE(server::testing::WaitUntilIdle(browser.Window()));
    const std::string status =
        browser.Locked([&] { return std::string(browser.Status()->Text()); }, std::string());
    EXPECT_EQ(status, "NG「(a+)+$」は時間がかかりすぎたので止めました。");
    EXPECT_FALSE(NoiseStore::Shared().Rules().list[0].failure.empty());
    NoiseStore::Shared().SetRules(before);
}

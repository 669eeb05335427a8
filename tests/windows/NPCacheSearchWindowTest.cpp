#include "windows/NPCacheSearchWindow.h"

#include "messages/Messages.h"
#include "support/OpenWindow.h"
#include "support/ScratchFolder.h"
#include "windows/MatchListView.h"

#include <AppDefs.h>
#include <Application.h>
#include <Autolock.h>
#include <Button.h>
#include <Message.h>
#include <MessageFilter.h>
#include <StringView.h>
#include <TextControl.h>

#include <gtest/gtest.h>

#include <mutex>

using namespace server::testing;

namespace {

// Keeps the thread that the application is asked to open.
class OpenWatch : public BMessageFilter {
public:
    OpenWatch() : BMessageFilter(kMsgThreadInWindowCached) {
        const BAutolock lock(be_app);
        be_app->AddCommonFilter(this);
    }
    ~OpenWatch() override {
        const BAutolock lock(be_app);
        be_app->RemoveCommonFilter(this);
    }
    filter_result Filter(BMessage* message, BHandler**) override {
        std::lock_guard lock(fLock);
        fAsked = *message;
        return B_SKIP_MESSAGE;
    }
    BMessage Asked() {
        std::lock_guard lock(fLock);
        return fAsked;
    }

private:
    std::mutex fLock;
    BMessage fAsked; // guarded by fLock
};

class CacheSearchWindow : public testing::Test {
protected:
    void SetUp() override {
        for (int i = 0; i < 30; i++)
            fFolder.Write("2ch/2chCache/h.example/news/" + std::to_string(1700000000 + i) + ".cgi",
                          "a<>b<>c<>本文" + std::to_string(i) + "<>題" + std::to_string(i) +
                              "\na<>b<>c<>二つ目の本文 " + std::to_string(i) + "<>\n");
        NPCacheSearchWindow::Open();
        fWindow = WaitForOpen<NPCacheSearchWindow>();
        ASSERT_NE(fWindow, nullptr);
    }
    void TearDown() override {
        fWindow->PostMessage(B_QUIT_REQUESTED);
        EXPECT_TRUE(WaitForClosed<NPCacheSearchWindow>());
    }
    template <typename Work>
    auto Ask(Work work) {
        const BAutolock lock(fWindow);
        return work();
    }
    void Search(const char* text) {
        Ask([&] {
            dynamic_cast<BTextControl*>(fWindow->FindView("text"))->SetText(text);
            dynamic_cast<BButton*>(fWindow->FindView("search"))->Invoke();
        });
        WaitUntilIdle(fWindow);
    }
    bool HasEnded() {
        return WaitUntil([this] {
            return Ask([this] {
                const std::string status =
                    dynamic_cast<BStringView*>(fWindow->FindView("status"))->Text();
                return status.ends_with("— 30スレッドを調べました");
            });
        });
    }
    MatchListView* List() { return dynamic_cast<MatchListView*>(fWindow->FindView("matches")); }
    ScratchFolder fFolder;
    NPCacheSearchWindow* fWindow = nullptr;
};

TEST_F(CacheSearchWindow, WhatIsFoundIsListedAndOpensAtThePost) {
    OpenWatch watch;
    Search("二つ目の本文 7");
    ASSERT_TRUE(HasEnded());
    ASSERT_EQ(Ask([this] { return List()->FullListCountItems(); }), 1);
    Ask([this] { List()->InvokeRow(0); });
    ASSERT_TRUE(WaitUntil([&watch] { return watch.Asked().what == kMsgThreadInWindowCached; }));
    const BMessage asked = watch.Asked();
    int32 post = 0;
    const char* text = nullptr;
    EXPECT_EQ(asked.FindInt32("jump", &post), B_OK);
    EXPECT_EQ(post, 2);
    EXPECT_EQ(asked.FindString("dat", &text), B_OK);
    EXPECT_STREQ(text, "1700000007.cgi");
    EXPECT_EQ(asked.FindString("url", &text), B_OK);
    EXPECT_STREQ(text, "http://h.example/news/index.html");
    // Of a search that was stopped nothing is left in the next.
    Search("本文");
    const auto label = [this] {
        return Ask([this] {
            return std::string(dynamic_cast<BButton*>(fWindow->FindView("search"))->Label());
        });
    };
    if (label() == "中止")
        Search("本文");
    ASSERT_TRUE(WaitUntil([&label] { return label() == "検索"; }));
    Search("題1");
    ASSERT_TRUE(HasEnded());
    EXPECT_EQ(Ask([this] { return List()->FullListCountItems(); }), 11);
}

} // namespace

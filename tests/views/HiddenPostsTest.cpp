#include "support/ThreadFixture.h"

#include "net/lines.h"
#include "noise/NoiseStore.h"
#include "support/ScratchFolder.h"
#include "views/NPArticleView.h"

#include <ScrollBar.h>

using server::testing::ChooseMenuLine;
using server::testing::Launches;
using server::testing::MenuIsOpen;
using server::testing::MenuLabels;
using server::testing::WaitUntil;

namespace {

constexpr const char* kBoard = "h.example/news";

class HiddenPostsTest : public ThreadFixture {
protected:
    void AddThread() {
        for (int32 number = 1; number <= 5; number++)
            AddPost(number, number == 2 ? "宣伝 http://www.example/a " + Anchor(">>1") + " です"
                            : number == 3 ? Anchor(">>2") + " うるさい\nhttp://www.example/b"
                                          : "本文" + std::to_string(number));
        Do([this] { fView->PostHasCome(); });
    }
    // Hides posts with these words; without one nothing is hidden any more.
    void Hide(const std::vector<std::string>& words, bool hidesAnswers = false) {
        NoiseRules rules;
        rules.hidesAnswers = hidesAnswers;
        for (const std::string& word : words) {
            NoiseRule rule;
            rule.text = word;
            rules.list.push_back(rule);
        }
        const auto filter =
            words.empty() ? nullptr : std::make_shared<const NoiseFilter>(rules, kBoard);
        Do([&] { fView->SetNoise(kBoard, filter); });
        Settle();
    }
    std::string PostAt(int32 number) {
        return Ask([&] {
            int32 start = 0;
            int32 end = 0;
            fView->GetArticleOffset(fView->ArticleAt(number), &start, &end);
            return std::string(fView->Text() + start, static_cast<size_t>(end - start));
        });
    }
};

} // namespace

TEST_F(HiddenPostsTest, StandAsOneLineAndComeBackAsTheyWere) {
    AddThread();
    const std::string whole = Text();
    Hide({"宣伝"});
    EXPECT_EQ(PostAt(2), "2 あぼーん\n");
    EXPECT_NE(PostAt(3).find("うるさい"), std::string::npos);
    // What stands behind it still leads where it did.
    ClickElsewhere();
    ClickAt(OffsetOf("http") + 3);
    EXPECT_EQ(Launches(), std::vector<std::string>{"http://www.example/b"});
    PopUpWindow* popUp = OpenAt(OffsetOf("あぼーん"));
    ASSERT_NE(popUp, nullptr);
    EXPECT_NE(TextOf(popUp).find("宣伝 http://www.example/a"), std::string::npos);
    ClickElsewhere();
    EXPECT_TRUE(WaitForPopUps(0));
    Hide({"宣伝"}, true);
    EXPECT_EQ(PostAt(3), "3 あぼーん\n");
    AddPost(6, "宣伝再び");
    Do([this] { fView->PostHasCome(); });
    EXPECT_TRUE(PostAt(6).starts_with("6 あぼーん\n")) << PostAt(6);
    Hide({"再び"});
    EXPECT_TRUE(PostAt(6).starts_with("6 あぼーん\n")) << PostAt(6);
    EXPECT_NE(PostAt(3).find("うるさい"), std::string::npos);
    Hide({});
    EXPECT_EQ(Text().substr(0, whole.size()), whole);
    for (const char* link : {"a", "b"}) {
        server::testing::RecordLaunches();
        ClickElsewhere();
        ClickAt(OffsetOf(std::string("http://www.example/") + link) + 3);
        EXPECT_EQ(Launches(), std::vector<std::string>{std::string("http://www.example/") + link});
    }
    popUp = OpenAt(OffsetOf(">>1") + 1);
    ASSERT_NE(popUp, nullptr);
    EXPECT_NE(TextOf(popUp).find("本文1"), std::string::npos);
}

TEST_F(HiddenPostsTest, TheReadersLineStaysOnTop) {
    for (int32 number = 1; number <= 60; number++)
        AddPost(number, number % 2 == 1 ? "宣伝\n二行目\n三行目" : "本文\n続き");
    const auto top = [this] {
        return Ask([this] {
            const BPoint corner = fView->Bounds().LeftTop();
            const int32 line = fView->OffsetAt(corner);
            return std::pair(std::string(fView->Text() + line, 12),
                             fView->PointAt(line).y - corner.y);
        });
    };
    Do([this] {
        const float line = fView->PointAt(fView->ArticleAt(30)).y;
        fView->ScrollBar(B_VERTICAL)->SetValue(line + 7);
    });
    Settle();
    const auto before = top();
    Hide({"宣伝"});
    EXPECT_EQ(top(), before);
    Hide({});
    EXPECT_EQ(top(), before);
}

TEST_F(HiddenPostsTest, AreChosenInTheMenu) {
    Do([this] { fView->SetNoise(kBoard, nullptr); });
    for (const char* date : {"2026/11/22(日) 10:00:00 ID:abc", "2026/11/22(日) 10:00:00 ID:???"}) {
        Do([&] {
            fView->addNumItem(1);
            fView->addNameItem("名無しさん");
            fView->addMailItem("");
            fView->addDateItem(date);
            fView->addArticleItem("本文の語");
            fView->addLineFeed();
        });
    }
    const int32 word = OffsetOf("の語");
    Do([&] { fView->Select(word, word + static_cast<int32>(strlen("の語"))); });
    for (const char* line :
         {"NGに追加/このID（今日）", "NGに追加/選択した語", "NGに追加/この名前"}) {
        ClickAt(OffsetOf("本文"), B_SECONDARY_MOUSE_BUTTON);
        ASSERT_TRUE(WaitUntil(MenuIsOpen));
        ASSERT_TRUE(ChooseMenuLine(line)) << line;
        EXPECT_TRUE(WaitUntil([] { return !MenuIsOpen(); }));
        Settle();
    }
    const std::vector<NoiseRule> rules = NoiseStore::Shared().Rules().list;
    ASSERT_EQ(rules.size(), 3u);
    EXPECT_EQ(rules[0].text + " " + rules[0].day + " " + rules[0].board,
              "abc 2026/11/22 h.example/news");
    EXPECT_EQ(rules[1].text + rules[1].board, "の語");
    EXPECT_EQ(rules[2].text + rules[2].board, "名無しさん");
}

// Rules may go in any order: only what stands before a post can take it along.
TEST_F(HiddenPostsTest, AnswersComeBackWithWhatTheyAnswer) {
    AddPost(1, Anchor(">>3") + " 先に");
    AddPost(2, "宣伝 " + Anchor(">>2") + " 自分");
    AddPost(3, "宣伝 " + Anchor(">>4"));
    AddPost(4, "宣伝 " + Anchor(">>3"));
    const std::string whole = Text();
    Hide({"宣伝"}, true);
    EXPECT_EQ(Text().find("自分"), std::string::npos);
    Hide({"宣伝"}, true);
    EXPECT_NE(Text().find("先に"), std::string::npos);
    Hide({"別"}, true);
    EXPECT_EQ(Text(), whole);
}

TEST_F(HiddenPostsTest, ComeBackInTheFontThatHolds) {
    AddThread();
    Hide({"宣伝"});
    Do([this] { fView->SetArticleFont("", "", 30); });
    const auto sizeAt = [this](int32 number) {
        return Ask([&] {
            BFont font;
            fView->GetFontAndColor(fView->ArticleAt(number) + 1, &font);
            return font.Size();
        });
    };
    EXPECT_EQ(sizeAt(2), 30);
    Hide({});
    EXPECT_EQ(sizeAt(2), 30);
}

TEST(HiddenLastPost, StillEndsItsThread) {
    const ScratchFolder folder;
    const NoiseRules before = NoiseStore::Shared().Rules();
    NoiseRule rule;
    rule.text = "超えました";
    NoiseStore::Shared().SetRules({{rule}});
    BWindow* window = new BWindow(BRect(0, 0, 400, 400), "pane", B_TITLED_WINDOW, 0);
    NPArticleView* pane = new NPArticleView(window->Bounds());
    window->Lock();
    window->AddChild(pane);
    std::string text = "このスレッドは500を超えました。";
    _ArticleOut post = {};
    post.name = post.date = post.message = post.mail = text.data();
    pane->ShowThread(1, "http://board.example/news/", "1.dat");
    EXPECT_FALSE(pane->IsThreadAtItsEnd());
    pane->addArticleItem(1, "title", 1, post);
    EXPECT_TRUE(std::string(pane->GetText()).starts_with("1 あぼーん"));
    EXPECT_TRUE(pane->IsThreadAtItsEnd());
    window->Quit();
    NoiseStore::Shared().SetRules(before);
}

#include "support/AlertWatch.h"
#include "support/ThreadFixture.h"
#include "views/OpenInBrowser.h"

#include <Clipboard.h>
#include <TypeConstants.h>

using server::testing::ChooseMenuLine;
using server::testing::Launches;
using server::testing::MenuIsOpen;
using server::testing::MenuLabels;
using server::testing::MenuLineIsEnabled;
using server::testing::WaitUntil;
using Texts = std::vector<std::string>;

namespace {

constexpr const char* kPage = "http://www.example/a/b.html";

class ArticleLinks : public ThreadFixture {
protected:
    void ChooseFromMenuAt(int32 offset, const std::string& line) {
        ClickAt(offset, B_SECONDARY_MOUSE_BUTTON);
        ASSERT_TRUE(WaitUntil(MenuIsOpen));
        EXPECT_TRUE(ChooseMenuLine(line)) << line;
        EXPECT_TRUE(WaitUntil([] { return !MenuIsOpen(); }));
        Settle();
    }
    static std::string Copied() {
        const void* data = nullptr;
        ssize_t size = 0;
        be_clipboard->Lock();
        std::string text;
        if (be_clipboard->Data()->FindData("text/plain", B_MIME_TYPE, &data, &size) == B_OK)
            text.assign(static_cast<const char*>(data), static_cast<size_t>(size));
        be_clipboard->Unlock();
        return text;
    }
    void Select(const std::string& part) {
        const int32 start = OffsetOf(part);
        Do([&] { fView->Select(start, start + static_cast<int32>(part.size())); });
    }
};

} // namespace

TEST_F(ArticleLinks, AUrlOpensBetweenItsStrictEdges) {
    AddPost(1, std::string("見て ttp://www.example/a/b.html end"));
    const int32 first = OffsetOf("ttp:");
    const int32 last = first + static_cast<int32>(strlen("ttp://www.example/a/b.html")) - 1;
    const struct {
        int32 offset;
        bool opens;
    } kCases[] = {{first - 1, false}, {first, true}, {last, true}, {last + 1, false}};
    for (const auto& item : kCases) {
        server::testing::RecordLaunches();
        ClickElsewhere();
        ClickAt(item.offset);
        EXPECT_EQ(Launches(), item.opens ? Texts{kPage} : Texts{}) << item.offset - first;
    }
}

TEST_F(ArticleLinks, AThreadsUrlOpensAThreadWindow) {
    for (const std::string url : {"http://h.example/test/read.cgi/news/1011700000/l50",
                                  "http://h.example/test/read.cgi?bbs=news&key=1011700000"}) {
        Do([&] { fView->clearText(); });
        AddPost(1, url);
        ClickElsewhere();
        ClickAt(OffsetOf("http") + 3);
        const BMessage asked = Ask([this] { return fWindow->fAsked; });
        const char* text = nullptr;
        bool noParent = false;
        EXPECT_EQ(asked.what, kMsgThreadInWindow) << url;
        EXPECT_EQ(asked.FindString("url", &text), B_OK);
        EXPECT_STREQ(text, "http://h.example/news/index.html");
        EXPECT_EQ(asked.FindString("dat", &text), B_OK);
        EXPECT_STREQ(text, "1011700000.dat");
        EXPECT_EQ(asked.FindString("title", &text), B_OK);
        EXPECT_EQ(text, url);
        EXPECT_EQ(asked.FindBool("no_parent", &noParent), B_OK);
        EXPECT_TRUE(noParent);
        EXPECT_EQ(Launches(), Texts{});
    }
}

TEST_F(ArticleLinks, AUrlReachesTheDesktopAsItStands) {
    const std::string kUrls[] = {
        "http://x/$(touch${IFS}a);`b`&&c|d>e\"f'g\\h*?~#i",
        "http://x/\x01\x02\x1b[31m\x7f\t.",
        "http://x/%s%n%00-rf",
        "http://x/http://y/",
        "http://" + std::string(100000, 'x'),
        "http://x/test/read.cgi/news/" + std::string(100000, '1'),
        // Threads' names that no server could be asked for
        "http://x/test/read.cgi/news/101170000012/",
        "http://" + std::string(63, 'h') + "/test/read.cgi/" + std::string(46, 'b') + "/1/",
        "http://",
    };
    for (const std::string& url : kUrls) {
        Do([&] { fView->clearText(); });
        AddPost(1, url);
        server::testing::RecordLaunches();
        ClickElsewhere();
        ClickAt(OffsetOf("http") + 1);
        EXPECT_EQ(Launches(), Texts{url}) << url.substr(0, 60);
    }
}

TEST(OpenInBrowser, WhoCantHaveALinkOpenedIsTold) {
    OpenInBrowser("--no link");
    EXPECT_EQ(WaitForAlert(), "リンクを開けませんでした。\n--no link");
    DismissAlert();
}

TEST_F(ArticleLinks, ASecondClickOpensNothingMore) {
    AddPost(1, kPage);
    ClickAt(OffsetOf("http") + 3, B_PRIMARY_MOUSE_BUTTON, 2);
    EXPECT_EQ(Launches(), Texts{kPage});
}

TEST_F(ArticleLinks, ThePointerShowsWhatIsClickable) {
    using server::testing::PointerShape;
    using server::testing::ShapeOf;
    AddPost(1, std::string("plain http://u/ text ") + Anchor(">>1"));
    const auto shapeAt = [&](int32 offset) {
        server::testing::MouseMove(fWindow, PointOf(offset));
        Settle();
        return ShapeOf(fWindow);
    };
    EXPECT_EQ(shapeAt(OffsetOf("plain")), PointerShape::kText);
    EXPECT_EQ(shapeAt(OffsetOf("http") + 2), PointerShape::kLink);
    EXPECT_EQ(shapeAt(OffsetOf("text")), PointerShape::kText);
    EXPECT_EQ(shapeAt(OffsetOf(">>1") + 1), PointerShape::kLink);
    // The margin beside a line that begins with a link is no part of it.
    AddPost(2, "http://v/");
    const BPoint inside = PointOf(OffsetOf("http://v"));
    for (const float x : {2.0F, inside.x}) {
        server::testing::MouseMove(fWindow, BPoint(x, inside.y));
        Settle();
        EXPECT_EQ(ShapeOf(fWindow), x == 2 ? PointerShape::kText : PointerShape::kLink);
    }
    server::testing::RecordLaunches();
    server::testing::Click(fWindow, BPoint(2, inside.y));
    Settle();
    EXPECT_EQ(Launches(), Texts{});
}

TEST_F(ArticleLinks, TheMenuOffersWhatStandsThere) {
    AddPost(1, kPage);
    AddPost(2, "ふつう");
    ClickAt(OffsetOf("ふつう"), B_SECONDARY_MOUSE_BUTTON);
    ASSERT_TRUE(WaitUntil(MenuIsOpen));
    const Texts labels = MenuLabels();
    ASSERT_GT(labels.size(), 6u);
    EXPECT_EQ(Texts(labels.begin(), labels.begin() + 7),
              (Texts{"コピー", "2 をコピー", "全て選択", "Google™検索", "Google™検索/日本語ページ",
                     "Google™検索/ウェブ全体", "-"}));
    EXPECT_FALSE(MenuLineIsEnabled("コピー"));
    server::testing::DismissMenu();
    EXPECT_TRUE(WaitUntil([] { return !MenuIsOpen(); }));

    Select("つう");
    server::testing::Click(fWindow, PointOf(OffsetOf("http") + 4), B_SECONDARY_MOUSE_BUTTON);
    ASSERT_TRUE(WaitUntil(MenuIsOpen));
    EXPECT_EQ(MenuLabels()[1], "1 をコピー");
    EXPECT_EQ(MenuLabels()[2], "リンクをコピー");
    EXPECT_TRUE(MenuLineIsEnabled("コピー"));
    server::testing::DismissMenu();
    EXPECT_TRUE(WaitUntil([] { return !MenuIsOpen(); }));
}

TEST_F(ArticleLinks, CopiesAPostALinkTheSelectionAndAll) {
    AddPost(1, std::string("一行目\n二行目 ") + kPage);
    AddPost(2, "終わり");
    const std::string text = Text();
    const size_t second = text.find("2 名前");
    const int32 link = OffsetOf("http") + 4;
    ChooseFromMenuAt(link, "リンクをコピー");
    EXPECT_EQ(Copied(), kPage);
    ChooseFromMenuAt(link, "1 をコピー");
    EXPECT_EQ(Copied(), text.substr(0, second));
    ChooseFromMenuAt(OffsetOf("終わり"), "2 をコピー");
    EXPECT_EQ(Copied(), text.substr(second));
    Select("行目\n二行");
    ChooseFromMenuAt(link, "コピー");
    EXPECT_EQ(Copied(), "行目\n二行");
    ChooseFromMenuAt(link, "全て選択");
    ChooseFromMenuAt(link, "コピー");
    EXPECT_EQ(Copied(), text);
}

TEST_F(ArticleLinks, SearchesTheWebForTheSelection) {
    AddPost(1, "日本語 text & ☃");
    Select("日本語 text &");
    ChooseFromMenuAt(0, "Google™検索/日本語ページ");
    ChooseFromMenuAt(0, "Google™検索/ウェブ全体");
    const std::string start =
        "http://search.itamori.example/search?q=%93%FA%96%7B%8C%EA+text+%26&hl=ja&lr=";
    const std::string end = "&btnG=Google+%8C%9F%8D%F5";
    EXPECT_EQ(Launches(), (Texts{start + "lang_ja" + end, start + "on" + end}));
    server::testing::RecordLaunches();
    Select("☃"); // cp932 has no snowman
    ChooseFromMenuAt(0, "Google™検索/ウェブ全体");
    EXPECT_EQ(Launches(), Texts{});
}

TEST_F(ArticleLinks, RangesOutsideOfTheTextCopyWhatThereIs) {
    AddPost(1, "x");
    const struct {
        int32 start;
        int32 finish;
        std::string copied;
    } kCases[] = {{-5, 0, "1"}, {-5, 1 << 30, Text()}, {4, 3, "-"}, {1 << 30, 1 << 30, "-"}};
    for (const auto& item : kCases) {
        be_clipboard->Lock();
        be_clipboard->Clear();
        be_clipboard->Data()->AddData("text/plain", B_MIME_TYPE, "-", 1);
        be_clipboard->Commit();
        be_clipboard->Unlock();
        BMessage copy(kMsgCopyRange);
        copy.AddInt32("start", item.start);
        copy.AddInt32("finish", item.finish);
        BMessenger(fView).SendMessage(&copy);
        Settle();
        EXPECT_EQ(Copied(), item.copied) << item.start;
    }
}

TEST_F(ArticleLinks, KeysAndJumpsScroll) {
    for (int32 i = 1; i <= 100; i++)
        Do([&] {
            fView->addNumItem(i);
            fView->addArticleItem("x");
        });
    Settle();
    ClickAt(0);
    const auto top = [this] { return Ask([this] { return fView->Bounds().top; }); };
    const auto press = [this](char key, uint32 modifiers = 0) {
        server::testing::Key(fWindow, key, modifiers);
        Settle();
    };
    press(B_END);
    const float most = top();
    EXPECT_EQ(most, Ask([this] { return fView->ScrollBar(B_VERTICAL)->Value(); }));
    EXPECT_GT(most, 0);
    press('a', B_COMMAND_KEY); // has the byte of the Home key
    EXPECT_EQ(top(), most);
    press(B_HOME);
    EXPECT_EQ(top(), 0);
    server::testing::Wheel(fWindow, BPoint(50, 50), 0, 1);
    Settle();
    EXPECT_GT(top(), 0);
    BMessage jump(kMsgJumpToPost);
    jump.AddInt32("jump", 40);
    BMessenger(fView).SendMessage(&jump);
    Settle();
    EXPECT_EQ(top(), Ask([this] { return fView->PointAt(fView->ArticleAt(40)).y; }));
}

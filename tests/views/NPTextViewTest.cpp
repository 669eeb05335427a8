#include "views/NPTextView.h"

#include "views/NPArticleView.h"
#include "views/NPThreadItem.h"

#include <Window.h>

#include <gtest/gtest.h>

#include <string>

namespace {

constexpr const char* kTag = "<a href=\"../test/read.cgi/b/1/12\" target=\"_blank\">";

// A text view in a window that is never shown.
class NPTextViewTest : public testing::Test {
protected:
    void SetUp() override {
        fWindow = new BWindow(BRect(0, 0, 400, 300), "text", B_TITLED_WINDOW, 0);
        fView = new NPTextView(fWindow->Bounds(), fWindow->Bounds().InsetByCopy(8, 8));
        fWindow->AddChild(fView);
        fView->clearText();
    }
    void TearDown() override {
        fWindow->Lock();
        fWindow->Quit();
    }
    std::string Body(const std::string& body) {
        fView->clearText();
        fView->addArticleItem(body.c_str());
        return fView->Text();
    }
    void AddPost(int32 number) {
        fView->addNumItem(number);
        fView->addNameItem("a");
        fView->addMailItem(nullptr);
        fView->addDateItem("d");
        fView->addArticleItem("x");
        fView->addLineFeed();
    }

    BWindow* fWindow = nullptr;
    NPTextView* fView = nullptr;
};

} // namespace

TEST_F(NPTextViewTest, APostReadsAsItsPartsInOrder) {
    AddPost(1);
    EXPECT_STREQ(fView->Text(), "1 名前：a E-mail： 投稿日：d\nx\n\n");
    EXPECT_EQ(fView->ArticleAt(1), 0);
    EXPECT_LT(fView->ArticleAt(2), 0);
}

TEST_F(NPTextViewTest, ABoldNameLosesItsTags) {
    fView->addNameItem("<b>N</b>");
    EXPECT_STREQ(fView->Text(), "名前：N ");
}

TEST_F(NPTextViewTest, LinksAreFoundAndKept) {
    const std::string tag = kTag;
    const struct {
        std::string body;
        std::string text;
        std::string urls;
        std::string references;
    } kCases[] = {
        {"see http://a/b end", "see http://a/bend\n", "http://a/b;", ""},
        {"ttp://a/b\nnext", "ttp://a/b\nnext\n", "http://a/b;", ""},
        {"tp://a", "tp://a\n", "http://a;", ""},
        {"p://a", "p://a\n", "http://a;", ""},
        {"https://a", "https://a\n", "", ""},
        {"x://a http://b", "x://a http://b\n", "", ""},
        {"http://aを見て", "http://aを見て\n", "http://a;", ""},
        {tag + ">>12</a> yes", ">>12 yes\n", "", ">>12;"},
        {tag + ">>1</a>" + tag + ">>2</a>\nhttp://u", ">>1>>2\nhttp://u\n", "http://u;",
         ">>1;>>2;"},
        {"x://a " + tag + ">>1</a> http://u", "x://a >>1 http://u\n", "http://u;", ">>1;"},
        {tag + ">>1", ">>1\n", "", ">>1\n;"},
        {"<a href=\"../test/read.cgi rest", "<a href=\"../test/read.cgi rest\n", "", ""},
    };
    for (const auto& item : kCases) {
        const std::string text = Body(item.body);
        std::string urls;
        std::string references;
        for (const NPTextView::Link& link : fView->Urls())
            urls += link.text + ";";
        for (const NPTextView::Link& link : fView->References())
            references += link.text + ";";
        EXPECT_EQ(text, item.text) << item.body;
        EXPECT_EQ(urls, item.urls) << item.body;
        EXPECT_EQ(references, item.references) << item.body;
    }
}

TEST_F(NPTextViewTest, ALinksPlaceStartsOneByteBeforeIt) {
    Body("ab http://a/b");
    ASSERT_EQ(fView->Urls().size(), 1u);
    EXPECT_EQ(fView->Urls()[0].start, 2);
    EXPECT_EQ(fView->Urls()[0].end, 13);
}

TEST_F(NPTextViewTest, FindsThePostOfAnOffset) {
    int32 start = -1;
    int32 end = -1;
    EXPECT_EQ(fView->GetArticleOffset(0, &start, &end), -1);
    EXPECT_EQ(start, 0);
    EXPECT_EQ(end, 0);
    AddPost(1);
    const int32 second = fView->TextLength();
    AddPost(2);
    EXPECT_EQ(fView->GetArticleOffset(second - 1, &start, &end), 1);
    EXPECT_EQ(end, second - 1);
    EXPECT_EQ(fView->GetArticleOffset(fView->TextLength(), &start, &end), 2);
    EXPECT_EQ(start, second);
    EXPECT_EQ(end, fView->TextLength());
    AddPost(1);
    EXPECT_GT(fView->ArticleAt(1), second);
    EXPECT_EQ(fView->ArticleAt(9), -1);
    EXPECT_EQ(fView->ArticleLineAt(9), -1);
}

TEST(NPArticleView, BreakTagsBecomeLineFeeds) {
    BString text("1 <br> 2<br>3<BR>");
    NPArticleView::replaceBRtag(&text);
    EXPECT_STREQ(text.String(), "1\n2\n3<BR>");
}

TEST(NPThreadItem, ComparesByTheKindOfColumn) {
    NPThreadItem::Info first;
    first.number = 9;
    first.res = "100";
    first.title = "a";
    first.state = kNewPosts;
    first.gotten = 3;
    first.modified = 100;
    NPThreadItem::Info second = first;
    second.number = 10;
    second.res = "20";
    second.title = "b";
    second.state = kCached;
    second.gotten = 0;
    second.modified = 0;
    const NPThreadItem a(first);
    const NPThreadItem b(second);
    const struct {
        int32 column;
        int32 order;
    } kCases[] = {{kColumnNumber, -1}, {kColumnState, -1},   {kColumnTitle, -1}, {kColumnRes, 1},
                  {kColumnGotten, 1},  {kColumnModified, 1}, {kColumnDat, 0},    {kColumnMark, 0}};
    for (const auto& item : kCases) {
        const int32 order = NPThreadItem::CompareItems(&a, &b, item.column);
        EXPECT_EQ(order < 0 ? -1 : order > 0, item.order) << item.column;
        EXPECT_EQ(NPThreadItem::CompareItems(&a, &a, item.column), 0);
    }
    EXPECT_EQ(b.ColumnText(kColumnGotten), nullptr);
    EXPECT_EQ(b.ColumnText(kColumnModified), nullptr);
}

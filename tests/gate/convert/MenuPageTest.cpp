#include "Text.h"

#include "convert/MenuPage.h"

#include "views/BBSTable.h"
#include "views/NPBoardView.h"

#include <gtest/gtest.h>

namespace {

// "NAME: BOARD=URL, ..." a category, as the program's own parser reads the page.
std::string AsTheProgramReads(const std::string& page) {
    const std::string utf8 = Utf8(page);
    EXPECT_EQ(Sjis(utf8), page) << "not pure cp932";
    const BString text(utf8.data(), static_cast<int32>(utf8.size()));
    BBSTable table(&text);
    EXPECT_EQ(table.parseBBSTable(), 0);
    std::string read;
    for (int32 i = 0; i < table.countCategories(); i++) {
        const BBSTable::Category& category = *table.categoryAt(i);
        EXPECT_FALSE(NPBoardView::MatchNonBBS(category.name.c_str()));
        EXPECT_FALSE(category.boards.empty());
        read += category.name + ":";
        for (const BBSTable::Board& board : category.boards)
            read += " " + board.title + "=" + board.url;
        read += "\n";
    }
    return read;
}

std::string OfHtml(const std::string& html) {
    return AsTheProgramReads(gate::MakeMenuPage(gate::ParseHtmlMenu(html), "BBS MENU"));
}

const std::string kJson = R"({"last_modify": 1712000000, "menu_list": [
 {"category_name": "ニュース", "category_number": "1", "category_total": 2, "category_content": [
  {"url": "https://a.example.io/news/", "board_name": "速報", "directory_name": "news"},
  {"url": "https://b.example.io/live/", "board_name": "実況 <b>&😀"}]},
 {"category_name": "空", "category_content": []},
 {"category_name": "チャット", "category_content": [
  {"url": "https://c.example.io/chat/", "board_name": "雑談"}, {"url": 7}, "x", null,
  {"url": "mailto:a@example.io", "board_name": "メール"},
  {"url": "https://www.example.io/guide/", "board_name": "案内"},
  {"url": "https://c.example.io/", "board_name": "入口"}]},
 7, {"category_content": 3}]})";

} // namespace

TEST(MenuPage, AJsonMenuIsReadByTheProgram) {
    const auto menu = gate::ParseJsonMenu(kJson);
    ASSERT_TRUE(menu);
    EXPECT_EQ(AsTheProgramReads(gate::MakeMenuPage(*menu, "メニュー")),
              "ニュース: 速報=http://a.example.io/news/ "
              "実況 ＜b＞&&#128512;=http://b.example.io/live/\n"
              "チャット : 雑談=http://c.example.io/chat/\n");
}

TEST(MenuPage, AJsonMenuCutAnywhereIsNone) {
    for (size_t length = 0; length < kJson.size(); length++)
        EXPECT_FALSE(gate::ParseJsonMenu(kJson.substr(0, length))) << length;
    for (const char* other : {"[]", "{}", "7", "{\"menu_list\":{}}", "<html></html>"})
        EXPECT_FALSE(gate::ParseJsonMenu(other)) << other;
    const std::string deep(100'000, '[');
    EXPECT_FALSE(gate::ParseJsonMenu(deep));
}

TEST(MenuPage, EveryHtmlMenuIsReadByTheProgram) {
    const std::string read = "地震: 臨時=http://a.example.io/eq/ 速報=http://b.example.io/eqnews/\n"
                             "運営 : 案内=http://c.example.io/guide/\n";
    const std::string kMenus[] = {
        // today's form, unquoted and in capitals
        "<HTML><BODY><font size=2><br><br><B>地震</B><br>\n"
        "<A HREF=https://a.example.io/eq/>臨時</A><br>\n"
        "<A HREF=https://b.example.io/eqnews/ TARGET=_blank>速報</A><br>\n"
        "<br><br><B>空</B><br>\n<br><br><B>運営</B><br><A "
        "HREF=https://c.example.io/guide/>案内</A>\n",
        // quoted and in lower case, with other links and words between
        "<a href=\"https://www.example.io/\">入口</a><b>地震</b>"
        "お知らせ <a href='https://a.example.io/eq/'><b>臨時</b></a> と "
        "<a href=\"mailto:x@example.io\">連絡</a><a href=\"javascript:x()\">x</a>"
        "<a href=\"//b.example.io/eqnews/\">速報</a><a href=\"https://b.example.io/x.html\">頁</a>"
        "<a href=\"https://b.example.io/a/b/c/\">深</a><a href=\"https://localhost/a/\">内</a>"
        "<a href=\"https://b.example.io/ev\"il/\">悪</a><a href=\"https://B.example.io/a "
        "b/\">空</a>"
        "<b>運営</b><a href=\"ftp://c.example.io/guide/\">x</a>"
        "<a href=\"HTTPS://C.example.io/guide/\">案内</a>",
    };
    for (const std::string& menu : kMenus) {
        EXPECT_EQ(OfHtml(menu), read);
        EXPECT_EQ(OfHtml(Sjis(menu)), read);
    }
}

TEST(MenuPage, FoldersBelowFoldersAreBoardsToo) {
    EXPECT_EQ(OfHtml("<b>他</b><a href=https://jbbs.example.net/game/1234/>遊</a>"),
              "他: 遊=http://jbbs.example.net/game/1234/\n");
}

TEST(MenuPage, WithoutABoardThereIsNoPage) {
    for (const char* html : {"", "<html></html>", "<b>a</b><b>b</b>", "Just a moment..."})
        EXPECT_EQ(gate::MakeMenuPage(gate::ParseHtmlMenu(html), "t"), "");
}

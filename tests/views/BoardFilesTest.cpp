#include "support/ScratchFolder.h"

#include "text/cp932.h"
#include "views/BBSTable.h"
#include "views/BoardFiles.h"
#include "views/NPBoardView.h"

#include <gtest/gtest.h>

#include <string>

namespace {

// "category: title=url, title=url; category: …"
std::string Told(const std::vector<BBSTable::Category>& categories) {
    std::string text;
    for (const BBSTable::Category& category : categories) {
        text += category.name + ":";
        for (const BBSTable::Board& board : category.boards)
            text += " " + board.title + "=" + board.url;
        text += ";";
    }
    return text;
}

std::string Parsed(const char* page, int32* result) {
    const BString text(page);
    BBSTable table(&text);
    *result = table.parseBBSTable();
    std::vector<BBSTable::Category> categories;
    for (int32 i = 0; i < table.countCategories(); i++)
        categories.push_back(*table.categoryAt(i));
    EXPECT_EQ(table.categoryAt(table.countCategories()), nullptr);
    return Told(categories);
}

} // namespace

TEST(BBSTable, ReadsCategoriesAndTheirBoards) {
    const struct {
        const char* page;
        int32 result;
        const char* table;
    } kCases[] = {
        {"", 0, ""},
        {"x<BR><BR><B>c</B><br><A HREF=u1>a</A><br><A HREF=u2>b</A>", 0, "c: a=u1 b=u2;"},
        {"x<BR><BR><B>c</B><A HREF=u1>a</A><BR><A HREF=u2>b</A>", 0, "c: a=u1;"},
        {"x<BR><BR><B>c</B><A HREF=u1>a</A>", 0, "c: a=u1;"},
        {"x<BR><BR><B>c</B><A HREF=\"u\">a</A>x", 0, "c: a=\"u\";"},
        {"x<BR><BR><B>c</B>", 0, "c:;"},
        {"<BR><BR><B>c</B><A HREF=u>a</A>", 0, ""}, // a mark at the very start is none
        {"x<BR><BR><B>c<A HREF=u>a</A>", -1, ""},
        {"x<BR><BR><B>c</B><A HREF=u", -1, ""},
        {"x<BR><BR><B>c</B><A HREF=u>a", -1, ""},
        {"x<BR><BR><B>c</B>y<BR><BR><B>d</B><A HREF=u>a</A>", 0, "c: a=u;"},
        {"x<BR><BR><B>c</B><A HREF=u>a</A>\n<BR><BR><B>d</B><A HREF=v>b</A>", 0, "c: a=u;d: b=v;"},
    };
    for (const auto& item : kCases) {
        int32 result = 0;
        EXPECT_EQ(Parsed(item.page, &result), item.table) << item.page;
        EXPECT_EQ(result, item.result) << item.page;
    }
}

TEST(BoardFiles, AListEndsAtTheFirstLineThatIsNoName) {
    using Names = std::vector<std::string>;
    EXPECT_EQ(ParseBoardList("a.txt\nb.txt\n"), (Names{"a.txt", "b.txt"}));
    EXPECT_EQ(ParseBoardList("a.txt\nb.txt"), (Names{"a.txt", "b.txt"}));
    EXPECT_EQ(ParseBoardList("\na.txt\n"), Names{});
    EXPECT_EQ(ParseBoardList("a.txt\n\nb.txt\n"), Names{"a.txt"});
    EXPECT_EQ(ParseBoardList("a.txt\nあ\nb.txt\n"), Names{"a.txt"});
    EXPECT_EQ(ParseBoardList("\x7F.txt\n\x7F.txt"), Names{"\x7F.txt"}); // without its end: none
    EXPECT_EQ(ParseBoardList(""), Names{});
}

TEST(BoardFiles, AnExtraFileIsACategoryOfThreeWordsALine) {
    const struct {
        std::string text;
        bool read;
        std::string table;
    } kCases[] = {
        {"其他\nh\tb\t題\n", true, "其他: 題=http://h/b/;"},
        {"c\nh b two words\nh2 b2 t2", true, "c: two=http://h/b/ t2=http://h2/b2/;"},
        {"c\nh b\nh2 b2 t2\n", true, "c: t2=http://h2/b2/;"},
        {"c\nh b t\n\nh2 b2 t2\n", true, "c: t=http://h/b/;"},
        {"c\nh " + std::string(1024, 'b') + " t\n", true, "c:;"},
        {"c\nh b " + std::string(1022, 't') + "題\n", true,
         "c: " + std::string(1022, 't') + "=http://h/b/;"},
        {"c\n\x7Fh b t\nh b t\n\x7Fh b t", true, "c: t=http://\x7Fh/b/ t=http://h/b/;"},
        {"\nh b t\n", true, ": t=http://h/b/;"},
        {"no line feed", false, ":;"},
        {std::string(1025, 'c') + "\nh b t\n", false, ":;"},
    };
    for (const auto& item : kCases) {
        BBSTable::Category category;
        EXPECT_EQ(ParseExtraBoards(item.text, &category), item.read);
        EXPECT_EQ(Told({category}), item.table);
    }
}

TEST(BoardFiles, AFolderIsReadWithWhatItsListNames) {
    ScratchFolder folder;
    std::vector<BBSTable::Category> categories;
    EXPECT_EQ(ReadBoardMenu(folder.Path(), &categories), -1);
    EXPECT_TRUE(ReadExtraBoards(folder.Path()).empty());
    folder.Write("newbbsmenu.html", "x<BR><BR><B>\x83j\xF0\x40</B><br><A HREF=u>\x90\xAB</A>");
    folder.Write("bbs.list", "one.txt\nmissing.txt\n../two.txt\n");
    folder.Write("one.txt", "c\nh b t\n");
    EXPECT_EQ(ReadBoardMenu(folder.Path(), &categories), 0);
    EXPECT_EQ(Told(categories), "ニ: 性=u;");
    EXPECT_EQ(Told(ReadExtraBoards(folder.Path())), "c: t=http://h/b/;");
    folder.Write("newbbsmenu.html", "x\x80");
    EXPECT_EQ(ReadBoardMenu(folder.Path(), &categories), -1);
}

TEST(NPBoardView, LeavesOutTheCategoriesWithoutBoards) {
    for (const char* name :
         {"チャット", "運営", "ツール類", "お絵かき", "他のサイト", "まちＢＢＳ"})
        EXPECT_TRUE(NPBoardView::MatchNonBBS(name)) << name;
    EXPECT_FALSE(NPBoardView::MatchNonBBS("運営 "));
    EXPECT_FALSE(NPBoardView::MatchNonBBS("ニュース"));
}

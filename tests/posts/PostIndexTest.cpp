#include "posts/PostIndex.h"
#include "posts/OwnPosts.h"
#include "posts/References.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string ReferencesOf(const std::string& body) {
    std::string text;
    for (const PostRange& range : FindReferences(body))
        text += std::to_string(range.first) + "-" + std::to_string(range.last) + " ";
    return text;
}

TEST(References, AreFoundAsPeopleWriteThem) {
    struct Case {
        const char* body;
        const char* found;
    };
    const Case kCases[] = {
        {">>12", "12-12 "},
        {"a>>1\n>>2-5 b", "1-1 2-5 "},
        {">>12,15,20-21", "12-12 15-15 20-21 "},
        {"＞＞１２－１５、２０", "12-15 20-20 "},
        {"＞>3", "3-3 "},
        {">>>4", "4-4 "},
        {">5 >> 6 >>", ""},
        {">>0 >>9-3 >>99999999999 >>1-99999999", ""},
        {">>1, これ", "1-1 "},
        {">>2-", "2-2 "},
        {"日本\xEF", ""},
        {"＞＞\xEF\xBC", ""},
    };
    for (const Case& row : kCases)
        EXPECT_EQ(ReferencesOf(row.body), row.found) << row.body;
    std::string many;
    for (int i = 1; i <= 10000; i++)
        many += ">>" + std::to_string(i);
    EXPECT_EQ(FindReferences(many).size(), 1000u);
    EXPECT_EQ(FindReferences(">>1" + many.substr(3) + ",7").size(), 1000u);
}

TEST(PostWriter, IsReadFromDateAndName) {
    struct Case {
        const char* text;
        const char* found;
    };
    for (const Case& row :
         {Case{"2026/11/22(日) 10:00:00.00 ID:abc+/1.0", "abc+/1.0"},
          Case{"2026/11/22(日) 10:00:00 ID:abc BE:1-2BRZ(3)", "abc"},
          Case{"2026/11/22(日) 10:00:00 ID:???0", ""}, Case{"2026/11/22(日) 10:00:00 ID:", ""},
          Case{"2026/11/22 VOID:abc", ""}, Case{"ID:abc", "abc"}, Case{"", ""}})
        EXPECT_EQ(IdOf(row.text), row.found) << row.text;
    for (const Case& row : {Case{"名無し", ""}, Case{"名無し ◆abc.12", "◆abc.12"},
                            Case{"◆abc </b>", "◆abc"}, Case{"◆", ""}})
        EXPECT_EQ(TripOf(row.text), row.found) << row.text;
}

class PostIndexTest : public testing::Test {
protected:
    void Add(int32_t number, const std::string& date, const std::string& body,
             const std::string& name = "a") {
        fIndex.Add({number, name, date, body});
    }
    std::string Tree(int32_t number, int deepest = 3) {
        std::string text;
        for (const PostIndex::Branch& branch : fIndex.AnswerTree(number, deepest))
            text += std::string(branch.depth, '.') + std::to_string(branch.number) + " ";
        return text;
    }
    PostIndex fIndex;
};

TEST_F(PostIndexTest, PostsOfOneIdBelongTogetherForADay) {
    Add(1, "2026/11/22(日) 23:59:59 ID:x", "");
    Add(2, "2026/11/23(月) 00:00:00 ID:x", "");
    Add(3, "2026/11/22(日) 23:59:59 ID:y", "", "b ◆t");
    Add(4, "2026/11/22(日) 23:59:59 ID:x", "", "c ◆t");
    Add(5, "2026/11/22(日) ID:???", "");
    EXPECT_EQ(fIndex.WithIdOf(4), (PostIndex::Numbers{1, 4}));
    EXPECT_EQ(fIndex.WithIdOf(2), (PostIndex::Numbers{2}));
    EXPECT_EQ(fIndex.WithTripOf(3), (PostIndex::Numbers{3, 4}));
    EXPECT_TRUE(fIndex.WithIdOf(5).empty());
    EXPECT_TRUE(fIndex.WithIdOf(99).empty());
}

TEST_F(PostIndexTest, AnswersFormATreeInWhichEachPostStandsOnce) {
    Add(1, "", ">>9");
    Add(2, "", ">>1 >>1");
    Add(3, "", ">>1-2");
    Add(4, "", ">>2,3 >>4");
    Add(5, "", ">>4");
    Add(6, "", ">>5");
    Add(7, "", ">>1-1000");
    EXPECT_EQ(fIndex.AnswersTo(1), (PostIndex::Numbers{2, 3}));
    EXPECT_EQ(Tree(1), ".2 ..4 ...5 .3 ");
    EXPECT_EQ(Tree(1, 1), ".2 .3 ");
    EXPECT_EQ(Tree(9), ".1 ..2 ...4 ..3 ");
    EXPECT_EQ(Tree(6), "");
}

TEST(OwnPosts, AreKnownByTheirText) {
    struct Case {
        const char* sent;
        int32_t found;
    };
    for (const Case& row :
         {Case{"やあ\n こんにちは ", 2}, Case{"同じ", 0}, Case{"無い", 0}, Case{"  \n", 0}})
        EXPECT_EQ(FindOwnPost(row.sent, {{1, "", "", "同じ"},
                                         {2, "", "", "やあ　\nこんにちは\n"},
                                         {3, "", "", "同 じ\n"},
                                         {4, "", "", ""}}),
                  row.found)
            << row.sent;
    EXPECT_EQ(NumbersFromText("45,12,x,-1,0,12,99999999999,"), (std::vector<int32_t>{12, 45}));
    EXPECT_EQ(NumbersAsText({12, 45}), "12,45");
}

TEST(OwnPosts, WaitForAnHourAmongThePostsThatComeLater) {
    const std::vector<PostText> posts = {
        {4, "", "", "同じ"}, {5, "", "", "同じ\n"}, {6, "", "", "x"}};
    struct Case {
        const char* sent;
        int32_t known;
        int64_t age;
        const char* numbers;
        size_t waiting;
    };
    for (const Case& row :
         {Case{"同 じ", 4, 10, "2,5", 0}, Case{"同じ", 3, 10, "2", 1}, Case{"x", 6, 10, "2", 1},
          Case{"x", 6, 3600, "2", 0}, Case{"x", 5, 9999, "2,6", 0}, Case{" \n", 0, 10, "2", 0}}) {
        OwnPosts own{{2}, {}};
        own.Add(row.sent, row.known, 1000);
        own.waiting = SentFromText(SentAsText(own.waiting));
        EXPECT_EQ(own.Settle(posts, 1000 + row.age), row.waiting == 0 && *row.sent != ' ');
        EXPECT_EQ(NumbersAsText(own.numbers), row.numbers) << row.sent << row.age;
        EXPECT_EQ(own.waiting.size(), row.waiting) << row.sent << row.age;
    }
    EXPECT_EQ(SentFromText("\nx\n1 2\n1 2 \n-1 2 a\n99999999999999999999 1 a\n7 8 a b").size(), 1u);
}

} // namespace

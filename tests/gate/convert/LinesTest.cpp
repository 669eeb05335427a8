#include "Text.h"

#include "convert/OfflawLines.h"
#include "convert/RawmodeLines.h"
#include "convert/SubjectList.h"

#include <gtest/gtest.h>

using gate::Charset;
using gate::PostLine;

TEST(PostLine, NoFieldEndsItsLineOrAnotherField) {
    const PostLine post{1, "a<>b", "s\nt", "d\r\n", "x<>y <br> z", "t<>u\n"};
    EXPECT_EQ(gate::MakeDatLine(post), "a&lt;&gt;b<>s t<>d <> x&lt;&gt;y <br> z <>t&lt;&gt;u \n");
    // Without a name the program shows no post.
    EXPECT_EQ(gate::MakeDatLine({2, "", "", "", "", ""}), " <><><>  <>\n");
}

TEST(PostLine, MissingNumbersAreDeletedPosts) {
    const std::vector<PostLine> posts = {
        {4, "d", "", "", "4", ""}, {2, "b", "", "", "2", ""}, {2, "again", "", "", "", ""}};
    const std::string deleted = gate::DeletedLine();
    EXPECT_EQ(Utf8(deleted), "あぼーん<>あぼーん<>あぼーん<>あぼーん<>あぼーん\n");
    EXPECT_EQ(gate::LinesOfPosts(posts, 1, 4),
              deleted + "b<><><> 2 <>\n" + deleted + "d<><><> 4 <>\n");
    EXPECT_EQ(gate::LinesOfPosts(posts, 2, 2), "b<><><> 2 <>\n");
    EXPECT_EQ(gate::LinesOfPosts(posts, 3, 2), "");
    EXPECT_EQ(gate::LinesOfPosts({}, -5, 1), deleted);
}

TEST(SubjectList, EveryFormBecomesTheOneTheProgramReads) {
    const std::string list =
        "1712000002.cgi,雑談 (その2)(12)\n"
        "1712000001.cgi,😀,〜(1000)\r\n"
        "1712000002.cgi,雑談 (その2)(12)\n"
        "1712000003.dat<>スレタイ (5)\n"
        "x.dat<>no key (1)\n../1.cgi,path(1)\n.cgi,(1)\n"
        "1712000004.cgi,no count\n1712000005.cgi,(7)\n\n"
        "123456789012.cgi,long key(3)\n1712000006.cgi,nan(x)\n1712000008.cgi,many(12345678)\n"
        "1712000007.cgi,<b>&amp;</b>(2)";
    const std::string made = "1712000002.dat<>雑談 (その2) (12)\n"
                             "1712000001.dat<>&#128512;,～ (1000)\n"
                             "1712000003.dat<>スレタイ (5)\n"
                             "1712000007.dat<><b>&amp;</b> (2)\n";
    EXPECT_EQ(Utf8(gate::MakeSubjectList(list, Charset::kUtf8)), made);
    EXPECT_EQ(Utf8(gate::MakeSubjectList(Euc(list), Charset::kEucJp)), made);
    EXPECT_EQ(Utf8(gate::MakeSubjectList(Sjis(list), Charset::kCp932)), made);
    EXPECT_EQ(gate::MakeSubjectList("<html>not a list</html>", Charset::kCp932), "");
}

TEST(Rawmode, LinesBecomePosts) {
    const std::string answer =
        Euc("1<>名無し</b> ◆abc <b><>sage<>2024/04/01(月) 12:00:00<>一行目<br>二行目<>題名<>Ab12\n"
            "3<><font color=#FF0000>名</font><><>2024/04/02(火) 00:00:00<>"
            "<a href=\"/bbs/read.cgi/game/1234/1712000000/1\" target=\"_blank\">&gt;&gt;1</a> "
            "<a href=\"https://x.example/\" target=\"_blank\">https://x.example/</a>&amp;&hearts;"
            "<><>\n"
            "4<>Ａ<>a<b<>d<>&lt;>  <br>  <br> <><>abc\n"
            "0<>n<>m<>d<>b<><>\nx<>n<>m<>d<>b<><>\n5<>cut<>m\n99999999999<>n<>m<>d<>b<><>\n");
    EXPECT_EQ(Lines(gate::ParseRawmode(answer)),
              "1|名無し</b> ◆abc <b><>sage<>2024/04/01(月) 12:00:00 ID:Ab12<> "
              "一行目 <br> 二行目 <>題名\n"
              "3|名<><>2024/04/02(火) 00:00:00<> "
              "<a href=\"../test/read.cgi/game/1234/1712000000/1\" target=\"_blank\">"
              "&gt;&gt;1</a> https://x.example/&amp;&#9829; <>\n"
              "4|Ａ<>a<b<>d ID:abc<> &lt;&gt;  <br>  <br>  <>\n");
    EXPECT_TRUE(gate::ParseRawmode("").empty());
}

TEST(Offlaw, LinesBecomePostsAndAnErrorIsWords) {
    const gate::OfflawAnswer answer =
        gate::ParseOfflaw(Sjis("1<>名無し<><>2024/04/01(月) 12:00:00 ID:x<>本文<>題<>host.example\n"
                               "3<>名無し<>sage<>2024/04/01(月) 12:00:01 ID:y<>次<><>\n"));
    EXPECT_EQ(Lines(answer.posts), "1|名無し<><>2024/04/01(月) 12:00:00 ID:x<> 本文 <>題\n"
                                   "3|名無し<>sage<>2024/04/01(月) 12:00:01 ID:y<> 次 <>\n");
    EXPECT_EQ(answer.error, "");
    for (const char* text : {"<ERROR>スレッドがありません</ERROR>\n", "<ERROR>スレッドがありません",
                             "<html><body>\n<ERROR> スレッドがありません </body>"}) {
        const gate::OfflawAnswer refused = gate::ParseOfflaw(Sjis(text));
        EXPECT_TRUE(refused.posts.empty());
        EXPECT_EQ(refused.error, "スレッドがありません");
    }
}

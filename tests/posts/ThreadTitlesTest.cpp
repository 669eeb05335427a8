#include "posts/ThreadTitles.h"

#include "posts/ThreadEnd.h"
#include "posts/TitleFilter.h"
#include "text/Folding.h"

#include <gtest/gtest.h>

namespace {

TEST(ThreadTitles, TheNextThreadIsTheOneThatCountsOn) {
    struct Case {
        const char* what;
        ListedThread thread;
        std::vector<ListedThread> others;
        std::vector<size_t> ranked;
    };
    const Case kCases[] = {
        {"numbers count on, whatever their width",
         {"雑談スレ Part１２", "1700000000.dat", 1000},
         {{"質問スレ 13", "1700009000.dat", 5},
          {"雑談スレ Part13", "1700005000.dat", 3},
          {"雑談スレ Part12", "1700000000.dat", 1000},
          {"雑談スレ Part11", "1690000000.dat", 1000}},
         {1}},
        {"a second try is newer",
         {"【実況】夜のニュース★3", "1700000000.dat", 1001},
         {{"【実況】夜のニュース★4", "1700000100.dat", 1},
          {"【実況】夜のニュース★4", "1700000200.dat", 90},
          {"【実況】夜のニュース★5", "1700000150.dat", 1}},
         {1, 0, 2}},
        {"the very title before a longer one that is newer",
         {"のんびり雑談スレ その12", "1700000000.dat", 1000},
         {{"のんびり雑談スレ その１３（重複） ", "1700000300.dat", 2},
          {"のんびり雑談スレ その13 ", "1700000200.dat", 8}},
         {1, 0}},
        {"no numbers: like and newer",
         {"ﾊﾟｿｺﾝの話", "1700000000.dat", 990},
         {{"パソコンの話をしよう", "1700000900.dat", 2}, {"料理の話", "1700000800.dat", 2}},
         {0}},
        {"nothing alike", {"猫", "1700000000.dat", 990}, {{"犬", "1700000001.dat", 1}}, {}},
        {"a number that fits nowhere",
         {"スレ 99999999999999999999", "1700000000.dat", 990},
         {{"スレ 99999999999999999999", "abc.dat", 1}},
         {0}},
    };
    for (const Case& row : kCases)
        EXPECT_EQ(RankNextThreads(row.thread, row.others, 3), row.ranked) << row.what;
}

TEST(ThreadTitles, SpeedIsPostsADay) {
    EXPECT_DOUBLE_EQ(SpeedOf(100, "1700000000.dat", 1700000000 + 2 * 86400), 50);
    EXPECT_DOUBLE_EQ(SpeedOf(1, "1700000000.cgi", 1700000000), 1440);
    for (const char* dat : {"1.dat", "", "abc", "1700000000", "9990000000.dat"})
        EXPECT_EQ(SpeedOf(10, dat, 1700000000), 0) << dat;
}

TEST(ThreadTitles, AFilterWantsEveryWord) {
    struct Case {
        const char* typed;
        const char* title;
        bool isWanted;
    };
    const Case kCases[] = {
        {"ﾆｭｰｽ", "【速報】ニュース総合", true},
        {"にゅ", "ニュース", true},
        {"ニュース　２", "2002年のﾆｭｰｽ", true},
        {"ニュース 3", "ニュース 2", false},
        {"abc", "ＡＢＣの歌", true},
        {"は", "ば", false},
        {"", "何でも", true},
        {" 　 ", "何でも", true},
        {"猫", "", false},
    };
    for (const Case& row : kCases)
        EXPECT_EQ(TitleFilter(row.typed).Wants(Folded(row.title)), row.isWanted)
            << row.typed << " / " << row.title;
}

TEST(ThreadTitles, AThreadEndsByItsCountOrItsServersMark) {
    struct Case {
        int32_t posts;
        const char* last;
        bool isAtItsEnd;
    };
    const Case kCases[] = {
        {979, "名前：a\nまだ続く\n", false},
        {980, "", true},
        {301, "名前：１００１ 投稿日：Over 1000 Thread\nこのスレッドは…", true},
        {501, "このスレッドは５００を超えました。\n新しいスレッドを立ててください。", true},
        {501, "レス数が 500 を超えています。書き込みできません。", true},
        {12, "このスレッドは良い。期待を超えました", false},
        {12, "over the thread", false},
    };
    for (const Case& row : kCases)
        EXPECT_EQ(IsAtItsEnd(row.posts, row.last), row.isAtItsEnd) << row.last;
}

} // namespace

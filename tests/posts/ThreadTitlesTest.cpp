#include "posts/ThreadTitles.h"

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

} // namespace

#include "post/ProgramPost.h"

#include <gtest/gtest.h>

using gate::FormShape;

namespace {

constexpr gate::Seconds kNow = 1'700'000'030;

// "あ" and "～" in the program's charset, and a line feed.
const std::string kBody = "FROM=%82%A0&mail=sage&MESSAGE=%82%A0%81%60+%26%0Ab&bbs=game/12&"
                          "key=1699999999&time=1700000000&submit=%8F%91%82%AB%8D%9E%82%DE";

} // namespace

TEST(ProgramPost, BothFormsOfTheProgramAreRead) {
    const auto post = gate::ParseProgramPost(kBody);
    ASSERT_TRUE(post);
    EXPECT_EQ(post->board, "game/12");
    EXPECT_EQ(post->message, "\x82\xA0\x81\x60 &\nb");
    EXPECT_EQ(gate::ParseProgramPost("NAME=%82%A0&MAIL=sage&MESSAGE=%82%A0%81%60+%26%0Ab&"
                                     "BBS=game%2F12&KEY=1699999999&TIME=1&submit=x"),
              post);
    for (const char* body : {"", "MESSAGE=a&bbs=b", "MESSAGE=a&bbs=&key=1", "bbs=b&key=1"})
        EXPECT_FALSE(gate::ParseProgramPost(body)) << body;
}

TEST(ProgramPost, EveryFamilyGetsItsOwnForm) {
    const struct {
        FormShape shape;
        const char* body;
    } kCases[] = {
        {gate::DefaultShape(gate::PostKind::kBbs),
         "FROM=%82%A0&mail=sage&MESSAGE=%82%A0%81%60+%26%0D%0Ab&bbs=12&key=1699999999&"
         "time=1700000000&submit=%8F%91%82%AB%8D%9E%82%DE&oekaki_thread1="},
        {gate::DefaultShape(gate::PostKind::kUtf8),
         "FROM=%E3%81%82&mail=sage&MESSAGE=%E3%81%82%EF%BD%9E+%26%0D%0Ab&bbs=12&"
         "key=1699999999&time=1700000000&submit=%E6%9B%B8"},
        {gate::DefaultShape(gate::PostKind::kRawmode),
         "DIR=game&BBS=12&KEY=1699999999&TIME=1700000000&NAME=%A4%A2&MAIL=sage&"
         "MESSAGE=%A4%A2%A1%C1+%26%0D%0Ab&submit=%BD%F1%A4%AD%B9%FE%A4%E0"},
        {gate::DefaultShape(gate::PostKind::kOfflaw),
         "BBS=12&KEY=1699999999&TIME=1700000000&NAME=%82%A0&MAIL=sage&"
         "MESSAGE=%82%A0%81%60+%26%0D%0Ab&submit=%8F%91%82%AB%8D%9E%82%DE"},
    };
    for (const auto& item : kCases)
        EXPECT_EQ(gate::MakeFirstBody(*gate::ParseProgramPost(kBody), item.shape, kNow), item.body);
}

#include "gate/today/TodayGate.h"
#include "support/Browser.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <ostream>

namespace {

struct ThreadCase {
    const char *host, *board, *key;
    today::Fall fall; // without a status: the family has no archive
};

void PrintTo(const ThreadCase& one, std::ostream* stream) {
    *stream << one.host << "/" << one.board;
}

long LinesOf(const std::string& text) {
    return std::count(text.begin(), text.end(), '\n');
}

// A real window of the program, the gate its proxy, the sample server of today behind.
class ProgramBeforeGate : public TodayGate, public testing::WithParamInterface<ThreadCase> {
protected:
    void Select(uint32 code) {
        BMessage message(code);
        message.AddString("board", "板");
        message.AddString(
            "url",
            ("http://" + std::string(GetParam().host) + "/" + GetParam().board + "/").c_str());
        message.AddString("dat", (std::string(GetParam().key) + ".dat").c_str());
        fBrowser.Messenger().SendMessage(&message);
    }
    long CountServed() const { return LinesOf(fServer.Dat(GetParam().board, GetParam().key)); }
    bool WaitForAllPosts() {
        const std::string ending = " (" + std::to_string(CountServed()) + ")";
        return fBrowser.WaitUntil([&] {
            return std::string(fBrowser.Article()->GetTitle()).ends_with(ending);
        }) && fBrowser.WaitForStatus("");
    }
    std::string Cached() const {
        std::ifstream file(std::string(getenv("XDG_CONFIG_HOME")) + "/2ch/2chCache/" +
                               GetParam().host + "/" + GetParam().board + "/" + GetParam().key +
                               ".dat",
                           std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    Browser fBrowser{fGate->Port()};
};

TEST_P(ProgramBeforeGate, AThreadIsReadGrowsAndOutlivesItsBoard) {
    Select(kMsgBoardSelected);
    EXPECT_TRUE(fBrowser.WaitUntil(
        [&] { return std::string(fBrowser.Window()->Title()).starts_with("板 ("); }));
    Select(kMsgThreadSelected);
    ASSERT_TRUE(WaitForAllPosts());
    const std::string first = Cached();
    EXPECT_FALSE(first.empty());
    fServer.Grow(GetParam().board, GetParam().key, 2);
    Select(kMsgThreadSelected);
    ASSERT_TRUE(WaitForAllPosts());
    EXPECT_EQ(Cached().substr(0, first.size()), first);
    EXPECT_NE(fBrowser.Text().find(" 番目です。 http://x.example/"), std::string::npos);

    const std::string second = Cached();
    fServer.Grow(GetParam().board, GetParam().key, 3);
    if (GetParam().fall.status != 0)
        fServer.Drop(GetParam().board, GetParam().key, GetParam().fall);
    Select(kMsgThreadSelected);
    ASSERT_TRUE(WaitForAllPosts());
    EXPECT_EQ(Cached().substr(0, second.size()), second);
    EXPECT_EQ(LinesOf(Cached()), CountServed());
}

INSTANTIATE_TEST_SUITE_P(
    Families, ProgramBeforeGate,
    testing::Values(ThreadCase{"news.today.example", "living", "1772755200", {404, true, false}},
                    ThreadCase{"news.today.example", "hobby", "1772760000", {302, false, true}},
                    ThreadCase{"rooms.example", "room/101", "1772770000", {404, false, true}},
                    ThreadCase{"town.example", "town", "1772780000", {}}));

} // namespace

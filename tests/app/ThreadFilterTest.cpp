#include "support/Browser.h"
#include "support/RawServer.h"
#include "support/ScratchFolder.h"

#include "app/DefaultSettings.h"
#include "net/lines.h"

#include <gtest/gtest.h>

#include <cstdio>

using namespace server::testing;

namespace {

using Texts = std::vector<std::string>;

// "ニュース", "ﾆｭｰｽ" and "猫" are written in the servers' code.
constexpr const char* kSubject = "1.dat<>\x83\x6a\x83\x85\x81\x5b\x83\x58 1 (1)\n"
                                 "2.dat<>\xc6\xad\xb0\xbd 2 (1)\n3.dat<>\x94\x4c (1)\n";
constexpr const char* kThread = "HTTP/1.1 200 OK\r\n\r\nname<>mail<>date<>first<>title\n";

std::string List(const std::string& subject) {
    return "HTTP/1.1 200 OK\r\n\r\n" + subject;
}

// A browser window with a board on show, its filter driven by keys.
class ThreadFilter : public testing::Test {
protected:
    void SetUp() override {
        SelectBoard(3);
        Activate(fBrowser.Window(), true);
        Press('f', B_COMMAND_KEY);
    }
    void SelectBoard(int count) {
        fBrowser.SelectBoard();
        ASSERT_TRUE(fBrowser.WaitForTitle("ニュース (" + std::to_string(count) + ")"));
        ASSERT_TRUE(fBrowser.WaitForStatus(""));
    }
    void Settle() { EXPECT_TRUE(WaitUntilIdle(fBrowser.Window())); }
    void Press(char key, uint32 modifiers = 0) {
        Key(fBrowser.Window(), key, modifiers);
        Settle();
    }
    void Want(const char* text) {
        Press('f', B_COMMAND_KEY); // what was typed is selected
        Type(fBrowser.Window(), text);
        Settle();
    }
    NPThreadListView* Rows() { return fBrowser.Threads()->List(); }
    template <typename Call>
    auto Look(Call call) {
        return fBrowser.Locked(call, decltype(call())());
    }
    // The numbers of the rows that are shown.
    std::vector<int32> Shown() {
        return Look([this] {
            std::vector<int32> numbers;
            for (int32 i = 0; i < Rows()->FullListCountItems(); i++) {
                if (Rows()->IsShown(Rows()->ThreadAt(i)))
                    numbers.push_back(Rows()->ThreadAt(i)->Number());
            }
            return numbers;
        });
    }
    std::string Count() {
        return Look([this]() -> std::string {
            BView* count = fBrowser.Window()->FindView("filter count");
            return count != nullptr ? static_cast<BStringView*>(count)->Text() : "gone";
        });
    }
    float TopOfList() {
        return Look([this] { return Rows()->Parent()->Frame().top; });
    }

    using Numbers = std::vector<int32>;

    ScratchFolder fFolder;
    RawServer fServer{
        {RawServer::Reply(List(kSubject)), RawServer::Reply(kThread),
         RawServer::Reply(List(std::string(kSubject) + "4.dat<>\xc6\xad\xb0 (1)\n"))}};
    Browser fBrowser{fServer.Port()};
};

} // namespace

TEST_F(ThreadFilter, NarrowsAsOneTypesAndEscapeShowsAllAgain) {
    EXPECT_GT(TopOfList(), 20);
    EXPECT_EQ(Count(), "3 / 3");
    Type(fBrowser.Window(), "ニュ");
    Settle();
    EXPECT_EQ(Shown(), (Numbers{1, 2}));
    EXPECT_EQ(Count(), "2 / 3");
    Type(fBrowser.Window(), "ース ２");
    Settle();
    EXPECT_EQ(Shown(), Numbers{2});
    Press(B_ESCAPE);
    EXPECT_EQ(Shown(), (Numbers{1, 2, 3}));
    EXPECT_EQ(TopOfList(), 0);
    EXPECT_TRUE(Look([this] { return Rows()->IsFocus(); }));

    Want("猫");
    EXPECT_EQ(Shown(), Numbers{3});
    Press(B_DOWN_ARROW);
    EXPECT_TRUE(Look([this] { return Rows()->IsFocus(); }));
    EXPECT_EQ(Look([this] { return Rows()->FullListCurrentSelection(); }), 2);
    Press(B_ESCAPE); // in the list, too
    EXPECT_EQ(Count(), "gone");
    EXPECT_EQ(Look([this] { return Rows()->FullListCurrentSelection(); }), 2);
}

TEST_F(ThreadFilter, HiddenRowsAreReadCountedAndListedAnewAsBefore) {
    Want("猫");
    Look([this] {
        EXPECT_EQ(fBrowser.Threads()->GetNextNumber(1), Rows()->ThreadAt(1));
        EXPECT_EQ(fBrowser.Threads()->MaxNumber(), 3);
        fBrowser.Threads()->SelectNumber(2);
        EXPECT_EQ(Rows()->FullListCurrentSelection(), 1);
        return true;
    });
    fBrowser.SelectThread("2.dat");
    EXPECT_TRUE(fBrowser.WaitUntil([&] { return Rows()->ThreadAt(1)->State() == kRead; }));
    EXPECT_EQ(Shown(), Numbers{3});
    BMessage search(kMsgSearchStep);
    search.AddBool("thread", true);
    search.AddBool("article", false);
    search.AddString("text", "ニュース");
    fBrowser.Messenger().SendMessage(&search);
    EXPECT_TRUE(fBrowser.WaitForStatus("見つかったスレッドは絞り込みで隠れています"));
    EXPECT_EQ(Look([this] { return Rows()->FullListCurrentSelection(); }), 0);
    Want("ニュー");
    SelectBoard(4);
    EXPECT_TRUE(WaitUntil([&] { return Count() == "3 / 4"; }));
    EXPECT_EQ(Shown(), (Numbers{1, 2, 4}));
}

TEST(ThreadHeader, ColumnsAreHiddenAndPlacedFromOneStartToTheNext) {
    const ScratchFolder folder;
    SettingsFile settings("Itamori", "2ch");
    AddPrefsIfNotExists(&settings);
    const auto withWindow = [&](auto work) {
        NPWindow* window = new NPWindow(BRect(20, 20, 820, 620), &settings, false, BMessenger());
        const BMessenger messenger(window);
        window->Show();
        ASSERT_TRUE(window->Lock());
        work(static_cast<NPThreadView*>(window->FindView("thread"))->List());
        window->Unlock();
        messenger.SendMessage(B_QUIT_REQUESTED);
        EXPECT_TRUE(WaitUntil([&] { return !messenger.IsValid(); }));
    };
    const std::vector<int32> before = {0, 1, 2, 3, 4, 7, 5, 6, kColumnSpeed};
    const std::vector<int32> after = {kColumnSpeed, 0, 1, 2, 3, 4, 7, 5, 6};
    withWindow([&](NPThreadListView* list) {
        std::vector<int32> order(kThreadColumnCount);
        list->GetDisplayOrder(order.data());
        EXPECT_EQ(order, before);
        for (int32 column = 0; column < kThreadColumnCount; column++)
            EXPECT_EQ(list->ColumnAt(column).isShown, column != kColumnSpeed);
        list->SetDisplayOrder(after);
        list->ShowColumn(kColumnSpeed, true);
        list->ShowColumn(kColumnDat, false);
        list->SetColumnWidth(kColumnSpeed, 77);
    });
    // What every program reads is as it was.
    for (size_t i = 0; i <= 14; i++) {
        int32 column = -1;
        EXPECT_EQ(settings.Get(("column_order" + std::to_string(i)).c_str(), &column), B_OK);
        EXPECT_EQ(column, i < 8 ? before[i] : 0) << i;
    }
    withWindow([&](NPThreadListView* list) {
        std::vector<int32> order(kThreadColumnCount);
        list->GetDisplayOrder(order.data());
        EXPECT_EQ(order, after);
        for (int32 column = 0; column < kThreadColumnCount; column++)
            EXPECT_EQ(list->ColumnAt(column).isShown, column != kColumnDat);
        EXPECT_EQ(list->ColumnWidth(kColumnSpeed), 77);
        EXPECT_EQ(list->ColumnWidth(kColumnDat), 100);
    });
}

TEST(ThreadSpeed, IsShownAndSortedAsANumber) {
    NPThreadItem::Info info;
    info.listed = 1000000000 + 10 * 86400;
    info.dat = "1000000000.dat";
    struct Case {
        const char* res;
        const char* shown;
    };
    const Case kCases[] = {{"", ""},      {"0", ""},       {"-5", ""},
                           {"15", "1.5"}, {"1000", "100"}, {"99999999999999999999", "214748365"}};
    for (size_t i = 0; i < std::size(kCases); i++) {
        info.res = kCases[i].res;
        const NPThreadItem item(info);
        EXPECT_STREQ(item.ColumnText(kColumnSpeed), kCases[i].shown);
        info.res = "16";
        const NPThreadItem slow(info);
        EXPECT_EQ(NPThreadItem::CompareItems(&item, &slow, kColumnSpeed), i < 4 ? -1 : 1);
    }
}

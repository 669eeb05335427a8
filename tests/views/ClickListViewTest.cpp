#include "views/ClickListView.h"

#include "support/InputWindow.h"

#include "widgets/CLVColumnLabelView.h"
#include "widgets/CLVContainerView.h"

#include <string>

namespace {

using namespace server::testing;

constexpr uint32 kSecondary = 2;

class List : public ClickListView {
public:
    List() : ClickListView(BRect(0, 0, 9, 9), "list", Hierarchy::kFlat) {}

    void Fill(int32 count) {
        for (int32 i = 0; i < count; i++)
            AddItem(new CLVEasyItem(0, false, false));
    }

    std::string log;

protected:
    void RowChosen(int32 index) override { log += "row " + std::to_string(index) + ";"; }
    void OpenPopUpMenu(int32 index, BPoint) override {
        log += "menu " + std::to_string(index) + ";";
    }
};

class ClickListViewTest : public testing::Test {
protected:
    void SetUp() override {
        list = new List;
        list->AddColumn({"", 200, 20});
        list->Fill(3);
        window.Add(new CLVContainerView(BRect(0, 0, 349, 249), list));
    }
    BPoint Row(int32 index) {
        float height = 0;
        window.Do([&] { height = list->RowHeight(); });
        return BPoint(50, CLVColumnLabelView::kHeight + 1 +
                              (static_cast<float>(index) + 0.5F) * height);
    }
    std::string TakeLog() {
        std::string log;
        window.Do([&] { log = std::exchange(list->log, {}); });
        return log;
    }
    void SetMode(click_mode mode) {
        window.Do([&] { list->SetClickMode(mode); });
    }

    InputWindow window;
    List* list = nullptr;
};

} // namespace

TEST_F(ClickListViewTest, TheSecondClickOnARowChoosesIt) {
    SetMode(kDoubleClick);
    window.Click(Row(1));
    EXPECT_EQ(TakeLog(), "");
    window.Click(Row(2), 0, 2);
    EXPECT_EQ(TakeLog(), "row 2;");
    window.Click(Row(40), 0, 2);
    EXPECT_EQ(TakeLog(), "");
}

TEST_F(ClickListViewTest, OneShortClickChoosesWhereOneIsEnough) {
    SetMode(kSingleClick);
    // On a slow machine a click may take as long as a press that is no click.
    EXPECT_TRUE(WaitUntil([&] {
        window.Click(Row(1));
        return TakeLog() == "row 1;";
    }));
}

TEST_F(ClickListViewTest, AReleaseChoosesThePressedRowWhateverIsSelectedMeanwhile) {
    SetMode(kSingleClick);
    MouseDown(window.Get(), Row(1));
    window.Settle();
    window.Do([&] { list->FullListSelect(2); });
    MouseUp(window.Get(), Row(1));
    window.Settle();
    EXPECT_EQ(TakeLog(), "row 1;");
}

TEST_F(ClickListViewTest, AReleaseChoosesNothingOfANewList) {
    SetMode(kSingleClick);
    MouseDown(window.Get(), Row(1));
    window.Settle();
    window.Do([&] {
        list->MakeEmpty();
        list->Fill(3);
    });
    MouseUp(window.Get(), Row(1));
    window.Settle();
    EXPECT_EQ(TakeLog(), "");
}

TEST_F(ClickListViewTest, TheSecondaryButtonOpensTheMenuOfTheRowUnderIt) {
    for (const click_mode mode : {kSingleClick, kDoubleClick}) {
        SetMode(mode);
        Click(window.Get(), Row(2), kSecondary);
        window.Settle();
        EXPECT_EQ(TakeLog(), "menu 2;");
        Click(window.Get(), Row(40), kSecondary);
        window.Settle();
        EXPECT_EQ(TakeLog(), "");
    }
}

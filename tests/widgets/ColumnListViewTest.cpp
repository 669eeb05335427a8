#include "widgets/ColumnListView.h"

#include "support/InputWindow.h"

#include "widgets/CLVColumnLabelView.h"
#include "widgets/CLVContainerView.h"

#include <ScrollBar.h>

#include <cstdlib>
#include <string>
#include <vector>

namespace {

using namespace server::testing;

constexpr float kHeader = CLVColumnLabelView::kHeight + 1;

class List : public ColumnListView {
public:
    explicit List(Hierarchy hierarchy) : ColumnListView(BRect(0, 0, 9, 9), "list", hierarchy) {}

    void Draw(BRect update) override {
        draws++;
        ColumnListView::Draw(update);
    }
    void InvokeRow(int32 index) override { invoked = index; }
    void OpenRowMenu(int32 index, BPoint) override { menu = index; }

    int draws = 0;
    int32 invoked = -1;
    int32 menu = -1;
};

int32 CompareNumbers(const CLVListItem* a, const CLVListItem* b, int32 column) {
    return std::atoi(a->ColumnText(column)) - std::atoi(b->ColumnText(column));
}

class ColumnListViewTest : public testing::Test {
protected:
    void MakeList(ColumnListView::Hierarchy hierarchy) {
        list = new List(hierarchy);
        if (hierarchy == ColumnListView::Hierarchy::kOutline)
            list->AddColumn({"", 20, 20, CLVColumn::kExpander});
        list->AddColumn({"No.", 60, 20, CLVColumn::kSortable});
        list->AddColumn({"Fixed", 40, 20,
                         CLVColumn::kNotResizable | CLVColumn::kSortable | CLVColumn::kHideable,
                         CLVSortMode::kNone, true, "The fixed one"});
        list->AddColumn({"Title", 150, 20, CLVColumn::kSortable});
        list->SetSortFunction(CompareNumbers);
        window.Add(new CLVContainerView(BRect(0, 0, 349, 249), list));
        window.Do([&] { list->MakeFocus(true); });
    }
    void MakeFlat(int32 count) {
        MakeList(ColumnListView::Hierarchy::kFlat);
        window.Do([&] {
            for (int32 i = 0; i < count; i++) {
                CLVEasyItem* row = new CLVEasyItem(0, false, false);
                row->SetColumnContent(0, std::to_string(i).c_str(), B_ALIGN_RIGHT);
                row->SetColumnContent(2, ("title " + std::to_string(i)).c_str());
                list->AddItem(row);
            }
        });
        window.Settle();
    }
    void MakeOutline() {
        MakeList(ColumnListView::Hierarchy::kOutline);
        window.Do([&] {
            for (int32 group = 0; group < 3; group++) {
                list->AddItem(new CLVEasyItem(0, true, group == 0));
                list->AddItem(new CLVEasyItem(1, false, false));
                list->AddItem(new CLVEasyItem(1, false, false));
            }
        });
        window.Settle();
    }
    BPoint Row(int32 visible, float x = 100) {
        float height = 0;
        window.Do([&] { height = list->RowHeight(); });
        return BPoint(x, kHeader + (static_cast<float>(visible) + 0.5F) * height);
    }
    int32 Selected() {
        int32 index = -1;
        window.Do([&] { index = list->FullListCurrentSelection(); });
        return index;
    }
    std::vector<int32> Order() {
        std::vector<int32> order(list->CountColumns());
        window.Do([&] { list->GetDisplayOrder(order.data()); });
        return order;
    }

    InputWindow window;
    List* list = nullptr;
};

TEST_F(ColumnListViewTest, RowsAreAtLeastTwentyPixelsHigh) {
    MakeFlat(1);
    window.Do([&] { EXPECT_GE(list->RowHeight(), 20); });
}

TEST_F(ColumnListViewTest, KeysMoveTheSelectionAndKeepItInSight) {
    MakeFlat(1000);
    window.Key(B_DOWN_ARROW);
    window.Key(B_DOWN_ARROW);
    EXPECT_EQ(Selected(), 1);
    window.Key(B_UP_ARROW);
    EXPECT_EQ(Selected(), 0);
    window.Key(B_END);
    EXPECT_EQ(Selected(), 999);
    window.Do([&] { EXPECT_EQ(list->Bounds().bottom + 1, 1000 * list->RowHeight()); });
    window.Key(B_PAGE_UP);
    EXPECT_LT(Selected(), 999);
    EXPECT_GT(Selected(), 980);
    window.Key(B_HOME);
    EXPECT_EQ(Selected(), 0);
    window.Do([&] { EXPECT_EQ(list->Bounds().top, 0); });
}

TEST_F(ColumnListViewTest, EnterInvokesAndTheMenuKeyOpensTheRowsMenu) {
    MakeFlat(3);
    window.Click(Row(1));
    window.Key(B_ENTER);
    EXPECT_EQ(list->invoked, 1);
    MenuKey(window.Get());
    window.Settle();
    EXPECT_EQ(list->menu, 1);
}

TEST_F(ColumnListViewTest, AClickSelectsTheRowAndOneBelowTheRowsNothing) {
    MakeFlat(3);
    window.Click(Row(2));
    EXPECT_EQ(Selected(), 2);
    window.Click(Row(6));
    EXPECT_EQ(Selected(), -1);
}

TEST_F(ColumnListViewTest, AHeaderClickSortsAndASecondTurnsItAround) {
    MakeFlat(20);
    window.Do([&] { list->FullListSelect(3); });
    window.Click(BPoint(20, 10));
    window.Click(BPoint(20, 10));
    window.Do([&] {
        EXPECT_STREQ(list->FullListItemAt(0)->ColumnText(0), "19");
        EXPECT_EQ(list->ColumnAt(0).sortMode, CLVSortMode::kDescending);
        EXPECT_EQ(list->FullListCurrentSelection(), 16);
        list->SetSortMode(2, CLVSortMode::kAscending);
        EXPECT_EQ(list->ColumnAt(0).sortMode, CLVSortMode::kNone);
    });
}

TEST_F(ColumnListViewTest, AGripChangesAWidthDownToTheLeast) {
    MakeFlat(1);
    window.Drag(BPoint(61, 10), BPoint(91, 10));
    window.Do([&] { EXPECT_EQ(list->ColumnWidth(0), 90); });
    window.Drag(BPoint(91, 10), BPoint(2, 10));
    window.Do([&] { EXPECT_EQ(list->ColumnWidth(0), 20); });
}

TEST_F(ColumnListViewTest, AColumnThatIsNotResizableHasNoGrip) {
    MakeFlat(1);
    window.Drag(BPoint(102, 10), BPoint(130, 10));
    window.Do([&] { EXPECT_EQ(list->ColumnWidth(1), 40); });
}

TEST_F(ColumnListViewTest, DraggingALabelMovesItsColumn) {
    MakeFlat(1);
    window.Drag(BPoint(20, 10), BPoint(220, 10));
    EXPECT_EQ(Order(), (std::vector<int32>{1, 2, 0}));
    window.Do([&] {
        EXPECT_EQ(list->SortKey(), -1);
        const int32 wrong[] = {0, 0, 2};
        list->SetDisplayOrder(wrong);
        list->SetDisplayOrder(std::span(wrong).first(1));
    });
    EXPECT_EQ(Order(), (std::vector<int32>{1, 2, 0}));
}

// Grips, labels and drags of what stands behind a hidden column go on as they are seen.
TEST_F(ColumnListViewTest, TheHeadersMenuHidesAColumnAndShowsItInItsPlace) {
    MakeFlat(3);
    const auto choose = [&] {
        Click(window.Get(), BPoint(20, 10), 2);
        ASSERT_TRUE(WaitUntil([] { return MenuIsOpen(); }));
        EXPECT_EQ(MenuLabels(), (std::vector<std::string>{"No.", "The fixed one", "Title"}));
        EXPECT_FALSE(MenuLineIsEnabled("No."));
        EXPECT_TRUE(ChooseMenuLine("The fixed one"));
        ASSERT_TRUE(WaitUntil([] { return !MenuIsOpen(); }));
        window.Settle();
    };
    const auto leftOfTitle = [&] {
        float left = 0;
        window.Do([&] { left = list->ColumnLeft(2); });
        return left;
    };
    choose();
    EXPECT_EQ(leftOfTitle(), 60);
    window.Drag(BPoint(61, 10), BPoint(81, 10));
    window.Do([&] { EXPECT_EQ(list->ColumnWidth(0), 80); });
    window.Drag(BPoint(100, 10), BPoint(10, 10));
    EXPECT_EQ(Order(), (std::vector<int32>{2, 0, 1}));
    choose();
    EXPECT_EQ(Order(), (std::vector<int32>{2, 0, 1}));
    window.Do([&] {
        EXPECT_EQ(list->ColumnLeft(1), 230);
        EXPECT_EQ(list->ColumnWidth(1), 40);
        EXPECT_EQ(list->SortKey(), -1);
    });
}

// A row that is out of sight stays selected for those who count on it, but no key acts on it.
TEST_F(ColumnListViewTest, KeysGoThroughTheRowsThatAFilterShows) {
    MakeFlat(100);
    window.Do([&] {
        list->FullListSelect(57);
        list->SetFilter(
            [](const CLVListItem& row) { return std::atoi(row.ColumnText(0)) % 10 == 3; });
    });
    window.Key(B_ENTER);
    EXPECT_EQ(list->invoked, -1);
    MenuKey(window.Get());
    EXPECT_TRUE(WaitUntil([] { return MenuIsOpen(); })); // the header's: there is no row
    DismissMenu();
    EXPECT_EQ(list->menu, -1);
    EXPECT_EQ(Selected(), 57);
    window.Key(B_END);
    window.Key(B_UP_ARROW);
    EXPECT_EQ(Selected(), 83);
    window.Click(Row(2));
    EXPECT_EQ(Selected(), 23);
    window.Key(B_ENTER);
    EXPECT_EQ(list->invoked, 23);
    window.Do([&] {
        EXPECT_EQ(list->CountShown(), 10);
        float low = 0;
        float high = 0;
        list->ScrollBar(B_VERTICAL)->GetRange(&low, &high);
        EXPECT_EQ(high, std::max(0.0F, 10 * list->RowHeight() - (list->Bounds().Height() + 1)));
        list->FullListSelect(98);
        list->SetFilter({});
        EXPECT_TRUE(list->Bounds().Contains(BPoint(1, 98 * list->RowHeight())));
    });
}

TEST_F(ColumnListViewTest, ExpandersAndArrowsOpenAndCloseRows) {
    MakeOutline();
    window.Click(Row(3, 10));
    window.Do([&] { EXPECT_TRUE(list->FullListItemAt(3)->IsExpanded()); });
    window.Click(Row(0, 100));
    window.Key(B_LEFT_ARROW);
    window.Do([&] { EXPECT_FALSE(list->FullListItemAt(0)->IsExpanded()); });
    window.Key(B_RIGHT_ARROW);
    window.Key(B_RIGHT_ARROW);
    EXPECT_EQ(Selected(), 1);
    window.Key(B_LEFT_ARROW);
    EXPECT_EQ(Selected(), 0);
}

TEST_F(ColumnListViewTest, ClosingARowSelectsItInsteadOfWhatItHides) {
    MakeOutline();
    window.Click(Row(2));
    EXPECT_EQ(Selected(), 2);
    window.Do([&] { list->SetExpanded(list->FullListItemAt(0), false); });
    EXPECT_EQ(Selected(), 0);
}

TEST_F(ColumnListViewTest, TheWheelScrollsToTheEndAndNoFurther) {
    MakeFlat(100);
    for (int i = 0; i < 60; i++)
        Wheel(window.Get(), Row(2), 0, 3);
    window.Settle();
    window.Do([&] { EXPECT_EQ(list->Bounds().bottom + 1, 100 * list->RowHeight()); });
}

// A list that is filled anew returns to its place before anything else happens to its window.
TEST_F(ColumnListViewTest, AListThatIsFilledAnewCanBeScrolledAtOnce) {
    MakeFlat(100);
    window.Do([&] {
        list->MakeEmpty();
        for (int i = 0; i < 100; i++)
            list->AddItem(new CLVEasyItem(0, false, false));
        list->FinishAdding();
        list->ScrollBar(B_VERTICAL)->SetValue(500);
        EXPECT_EQ(500, list->ScrollBar(B_VERTICAL)->Value());
    });
}

TEST_F(ColumnListViewTest, ManyRowsAddedOneByOneCostAFewRedraws) {
    MakeFlat(0);
    int before = 0;
    window.Do([&] { before = list->draws; });
    for (int block = 0; block < 100; block++) {
        window.Do([&] {
            for (int i = 0; i < 100; i++)
                list->AddItem(new CLVEasyItem(0, false, false));
        });
    }
    window.Settle();
    window.Do([&] {
        EXPECT_EQ(list->FullListCountItems(), 10000);
        EXPECT_LT(list->draws, before + 120);
        float low = 0;
        float high = 0;
        list->ScrollBar(B_VERTICAL)->GetRange(&low, &high);
        EXPECT_EQ(high, 10000 * list->RowHeight() - (list->Bounds().Height() + 1));
    });
}

TEST_F(ColumnListViewTest, TheSelectionShowsWhetherItsWindowIsActive) {
    MakeFlat(3);
    window.Click(Row(1));
    const auto colorOfRow = [&] {
        const Picture picture = Snapshot(window.Get());
        const BPoint place = Row(1, 320);
        return picture.At(static_cast<int32>(place.x), static_cast<int32>(place.y));
    };
    const rgb_color active = colorOfRow();
    Activate(window.Get(), false);
    window.Settle();
    const rgb_color inactive = colorOfRow();
    EXPECT_EQ(active, ui_color(B_LIST_SELECTED_BACKGROUND_COLOR));
    EXPECT_NE(inactive, active);
    EXPECT_NE(inactive, ui_color(B_LIST_BACKGROUND_COLOR));
}

} // namespace

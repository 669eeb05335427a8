#include "widgets/RowList.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace {

int gAlive = 0;

class Row : public CLVListItem {
public:
    Row(uint32 level, bool superitem, bool expanded, int32 key, const char* name)
        : CLVListItem(level, superitem, expanded), fKey(key), fName(name) {
        gAlive++;
    }
    ~Row() override { gAlive--; }

    void DrawItemColumn(BView*, BRect, int32) override {}
    const char* ColumnText(int32) const override { return fName.c_str(); }

    int32 fKey;

private:
    const std::string fName;
};

int32 CompareKeys(const CLVListItem* a, const CLVListItem* b, int32) {
    const int32 left = static_cast<const Row*>(a)->fKey;
    const int32 right = static_cast<const Row*>(b)->fKey;
    return left < right ? -1 : left > right ? 1 : 0;
}

std::string NamesOf(RowList& rows) {
    std::string names;
    for (int32 i = 0; i < rows.CountVisible(); i++)
        names += rows.VisibleAt(i)->ColumnText(0);
    return names;
}

TEST(RowList, KeepsTheOrderOfAddingWithoutASortKey) {
    RowList rows(false);
    for (const char* name : {"c", "a", "b"})
        rows.Add(new Row(0, false, false, 0, name));
    EXPECT_EQ(NamesOf(rows), "cab");
    EXPECT_EQ(rows.FullAt(3), nullptr);
    EXPECT_EQ(rows.FullAt(-1), nullptr);
}

TEST(RowList, DeletesItsRows) {
    RowList rows(false);
    for (int i = 0; i < 3; i++)
        rows.Add(new Row(0, false, false, i, "x"));
    EXPECT_EQ(gAlive, 3);
    rows.MakeEmpty();
    EXPECT_EQ(gAlive, 0);
    EXPECT_EQ(rows.CountFull(), 0);
}

TEST(RowList, SortsByTextWithoutAComparison) {
    RowList rows(false);
    for (const char* name : {"c", "a", "b"})
        rows.Add(new Row(0, false, false, 0, name));
    rows.SetSortKey(0, CLVSortMode::kAscending);
    EXPECT_EQ(NamesOf(rows), "abc");
    rows.SetSortKey(0, CLVSortMode::kDescending);
    EXPECT_EQ(NamesOf(rows), "cba");
    rows.SetSortKey(-1, CLVSortMode::kNone);
    EXPECT_EQ(NamesOf(rows), "cba");
}

TEST(RowList, SortingIsStableAlsoForRowsThatComeLater) {
    std::mt19937 random(5);
    RowList rows(false);
    rows.SetComparison(CompareKeys);
    rows.SetSortKey(0, CLVSortMode::kAscending);
    for (int32 number = 0; number < 500; number++) {
        rows.Add(new Row(0, false, false, static_cast<int32>(random() % 5),
                         std::to_string(1000 + number).c_str()));
        if (number % 37 == 0)
            rows.FullAt(0);
    }
    for (int32 i = 1; i < rows.CountFull(); i++) {
        const Row* before = static_cast<const Row*>(rows.FullAt(i - 1));
        const Row* after = static_cast<const Row*>(rows.FullAt(i));
        ASSERT_LE(before->fKey, after->fKey);
        if (before->fKey == after->fKey) {
            ASSERT_LT(std::string(before->ColumnText(0)), after->ColumnText(0));
        }
    }
}

// A row keeps its place when what it sorts by changes; the next rows find all in order.
TEST(RowList, RowsThatChangeWhileOthersComeEndInOrder) {
    RowList rows(false);
    rows.SetComparison(CompareKeys);
    rows.SetSortKey(0, CLVSortMode::kAscending);
    std::vector<Row*> all;
    for (int32 key = 0; key < 5; key++)
        rows.Add(all.emplace_back(new Row(0, false, false, key, std::to_string(key).c_str())));
    EXPECT_EQ(NamesOf(rows), "01234");
    all[0]->fKey = 7;
    rows.RowChanged();
    EXPECT_EQ(NamesOf(rows), "01234");
    rows.Add(new Row(0, false, false, 3, "n"));
    EXPECT_EQ(NamesOf(rows), "123n40");
}

// Rows come, are sorted anew and change while a filter is on: what is seen follows, all else counts
// every row.
TEST(RowList, AFilterHidesRowsAndNothingElse) {
    RowList rows(false);
    rows.SetComparison(CompareKeys);
    rows.SetSortKey(0, CLVSortMode::kAscending);
    rows.SetFilter([](const CLVListItem& row) { return std::string(row.ColumnText(0)) < "d"; });
    for (const char* name : {"a", "x", "c"})
        rows.Add(new Row(0, false, false, name[0], name));
    EXPECT_EQ(NamesOf(rows), "ac");
    rows.Add(new Row(0, false, false, 'b', "b"));
    rows.Add(new Row(0, false, false, 'y', "y"));
    EXPECT_EQ(NamesOf(rows), "abc");
    rows.SetSortKey(0, CLVSortMode::kDescending);
    EXPECT_EQ(NamesOf(rows), "cba");
    EXPECT_EQ(rows.CountFull(), 5);
    EXPECT_STREQ(rows.FullAt(0)->ColumnText(0), "y");
    EXPECT_EQ(rows.VisibleIndexOf(rows.FullAt(0)), -1);
    EXPECT_EQ(rows.FullIndexOf(rows.VisibleAt(0)), 2);
    EXPECT_EQ(rows.VisibleAt(3), nullptr);
    rows.SetFilter({});
    EXPECT_EQ(NamesOf(rows), "yxcba");
}

class Outline : public testing::Test {
protected:
    Outline() {
        Add(0, true, true, "A");
        Add(1, false, false, "a");
        Add(0, true, false, "B");
        Add(1, true, true, "b");
        Add(2, false, false, "c");
        Add(0, false, false, "C");
    }
    void Add(uint32 level, bool superitem, bool expanded, const char* name) {
        rows.Add(new Row(level, superitem, expanded, 0, name));
    }

    RowList rows{true};
};

TEST_F(Outline, CollapsedRowsHideWhatLiesInThem) {
    EXPECT_EQ(NamesOf(rows), "AaBC");
    EXPECT_EQ(rows.CountFull(), 6);
    rows.SetExpanded(rows.FullAt(2), true);
    EXPECT_EQ(NamesOf(rows), "AaBbcC");
    rows.SetExpanded(rows.FullAt(0), false);
    EXPECT_EQ(NamesOf(rows), "ABbcC");
}

TEST_F(Outline, FullIndexesCountCollapsedRows) {
    EXPECT_EQ(rows.FullIndexOf(rows.VisibleAt(3)), 5);
    EXPECT_EQ(rows.VisibleIndexOf(rows.FullAt(4)), -1);
}

TEST_F(Outline, SuperitemsAreFoundThroughAllLevels) {
    EXPECT_EQ(rows.Superitem(rows.FullAt(4)), rows.FullAt(3));
    EXPECT_EQ(rows.Superitem(rows.FullAt(3)), rows.FullAt(2));
    EXPECT_EQ(rows.Superitem(rows.FullAt(2)), nullptr);
    EXPECT_EQ(rows.VisibleAncestor(rows.FullAt(4)), rows.FullAt(2));
}

} // namespace

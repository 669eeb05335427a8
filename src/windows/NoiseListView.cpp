#include "windows/NoiseListView.h"

#include "text/DateText.h"

#include <Window.h>

#include <array>
#include <cstring>

namespace {

enum Column : int32 { kKind, kText, kBoard, kHits, kLastHit, kState };

constexpr std::array<const char*, 3> kKinds = {"ID", "名前", "語"};

std::string ScopeText(const NoiseRule& rule) {
    const std::string board = rule.board.empty() ? "すべての板" : rule.board;
    return rule.day.empty() ? board : board + " " + rule.day;
}

int Compare(int64_t a, int64_t b) {
    return a < b ? -1 : a > b;
}

} // namespace

class NoiseListView::Row : public CLVEasyItem {
public:
    Row(const NoiseRule& rule, int32 number)
        : CLVEasyItem(0, false, false), fNumber(number), fHits(rule.hits), fLastHit(rule.lastHit) {
        const std::string kind = kKinds[static_cast<size_t>(rule.kind)];
        SetColumnContent(kKind, (kind + (rule.isPattern ? " (正規表現)" : "")).c_str());
        SetColumnContent(kText, rule.text.c_str());
        SetColumnContent(kBoard, ScopeText(rule).c_str());
        SetColumnContent(kHits, std::to_string(rule.hits).c_str(), B_ALIGN_RIGHT);
        SetColumnContent(kLastHit, DateText(rule.lastHit).c_str());
        SetColumnContent(kState, rule.failure.c_str());
    }
    int32 Number() const { return fNumber; }

    static int32 CompareRows(const CLVListItem* a, const CLVListItem* b, int32 column) {
        const Row& one = *static_cast<const Row*>(a);
        const Row& other = *static_cast<const Row*>(b);
        if (column == kHits)
            return Compare(one.fHits, other.fHits);
        if (column == kLastHit)
            return Compare(one.fLastHit, other.fLastHit);
        return strcmp(one.ColumnText(column), other.ColumnText(column));
    }

private:
    const int32 fNumber;
    const int64_t fHits;
    const time_t fLastHit;
};

NoiseListView::NoiseListView(BRect frame) : ClickListView(frame, "rules", Hierarchy::kFlat) {
    SetClickMode(kSingleClick);
    SetSortFunction(Row::CompareRows);
    const uint32 sorts = CLVColumn::kSortable;
    AddColumn({"種類", 96, 40, sorts});
    AddColumn({"規則", 190, 40, sorts});
    AddColumn({"範囲", 150, 40, sorts});
    AddColumn({"回数", 48, 40, sorts});
    AddColumn({"最後", 120, 40, sorts});
    AddColumn({"状態", 150, 40, sorts});
}

void NoiseListView::ShowRules(const NoiseRules& rules) {
    const int32 selected = SelectedRule();
    MakeEmpty();
    for (size_t i = 0; i < rules.list.size(); i++)
        AddItem(new Row(rules.list[i], static_cast<int32>(i)));
    FinishAdding();
    for (int32 i = 0; i < FullListCountItems(); i++) {
        if (static_cast<Row*>(FullListItemAt(i))->Number() == selected)
            FullListSelect(i);
    }
}

int32 NoiseListView::SelectedRule() {
    const int32 index = FullListCurrentSelection();
    return index < 0 ? -1 : static_cast<Row*>(FullListItemAt(index))->Number();
}

void NoiseListView::RowChosen(int32) {
    Window()->PostMessage(kMsgRuleChosen);
}

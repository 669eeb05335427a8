// What the thread list's columns look like, as it is kept from one start to the next.
#include "views/NPThreadView.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <sstream>
#include <vector>

namespace {

constexpr int32 kWidthColumns[] = {kColumnNumber, kColumnTitle,    kColumnRes,
                                   kColumnGotten, kColumnModified, kColumnDat};

constexpr const char* kNames[] = {"no",       "state", "title", "res",  "gotten",
                                  "modified", "dat",   "mark",  "speed"};
static_assert(std::size(kNames) == kThreadColumnCount);

std::vector<int32> DisplayOrder(const NPThreadListView& list) {
    std::vector<int32> order(static_cast<size_t>(list.CountColumns()));
    list.GetDisplayOrder(order.data());
    return order;
}

} // namespace

void NPThreadView::GetColumnWidth(float* widths) const {
    for (const int32 column : kWidthColumns)
        *widths++ = fList->ColumnWidth(column);
}

void NPThreadView::SetColumnWidth(const float* widths) {
    for (const int32 column : kWidthColumns)
        fList->SetColumnWidth(column, *widths++);
}

void NPThreadView::GetColumnOrder(int32* order) const {
    for (const int32 column : DisplayOrder(*fList)) {
        if (column < kOrderedColumnCount)
            *order++ = column;
    }
}

void NPThreadView::SetColumnOrder(const int32* order) {
    std::vector<int32> columns(order, order + kOrderedColumnCount);
    columns.push_back(kColumnSpeed);
    fList->SetDisplayOrder(columns);
}

ThreadHeader NPThreadView::GetHeader() const {
    const std::vector<int32> order = DisplayOrder(*fList);
    ThreadHeader header;
    header.speedWidth = fList->ColumnWidth(kColumnSpeed);
    header.speedPlace = static_cast<int32>(std::ranges::find(order, kColumnSpeed) - order.begin());
    header.hidden.clear();
    for (int32 column = 0; column < kThreadColumnCount; column++) {
        if (!fList->ColumnAt(column).isShown)
            header.hidden += std::string(header.hidden.empty() ? "" : " ") + kNames[column];
    }
    return header;
}

void NPThreadView::SetHeader(const ThreadHeader& header) {
    fList->SetColumnWidth(kColumnSpeed, header.speedWidth);
    std::vector<int32> order = DisplayOrder(*fList);
    std::erase(order, kColumnSpeed);
    order.insert(order.begin() + std::clamp<int32>(header.speedPlace, 0, kOrderedColumnCount),
                 kColumnSpeed);
    fList->SetDisplayOrder(order);
    std::vector<std::string> hidden;
    std::istringstream names(header.hidden);
    for (std::string name; names >> name;)
        hidden.push_back(name);
    for (int32 column = 0; column < kThreadColumnCount; column++) {
        const bool isHidden = std::ranges::find(hidden, kNames[column]) != hidden.end();
        fList->ShowColumn(column, !isHidden || !fList->ColumnAt(column).Is(CLVColumn::kHideable));
    }
}

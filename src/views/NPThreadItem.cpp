#include "views/NPThreadItem.h"

#include "posts/ThreadTitles.h"
#include "text/Folding.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>

namespace {

constexpr double kRoundSpeed = 10; // posts a day; below it a digit behind the point is shown

template <typename T>
int32 Compare(T a, T b) {
    return a < b ? -1 : a > b ? 1 : 0;
}

long ValueOf(const CLVListItem& item, int32 column) {
    const char* text = item.ColumnText(column);
    return text != nullptr ? strtol(text, nullptr, 10) : 0;
}

int32 CompareTexts(const CLVListItem& a, const CLVListItem& b, int32 column) {
    const char* textA = a.ColumnText(column);
    const char* textB = b.ColumnText(column);
    return strcmp(textA != nullptr ? textA : "", textB != nullptr ? textB : "");
}

} // namespace

NPThreadItem::NPThreadItem(const Info& info)
    : CLVEasyItem(0, false, false), fNumber(info.number), fState(info.state), fCached(info.cached),
      fMarked(info.markIcon != nullptr), fGotten(info.gotten), fModified(info.modified),
      fListed(info.listed) {
    char number[16];
    snprintf(number, sizeof(number), "%ld", static_cast<long>(info.number));
    SetColumnContent(kColumnNumber, number, B_ALIGN_RIGHT);
    SetColumnContent(kColumnState, info.stateIcon);
    SetColumnContent(kColumnTitle, info.title);
    SetColumnContent(kColumnRes, info.res, B_ALIGN_RIGHT);
    SetColumnContent(kColumnDat, info.dat, B_ALIGN_RIGHT);
    SetColumnContent(kColumnMark, info.markIcon);
    _ShowCounts();
}

const char* NPThreadItem::Dat() const {
    return ColumnText(kColumnDat);
}

int32 NPThreadItem::CountPosts() const {
    const long most = std::numeric_limits<int32>::max();
    return static_cast<int32>(std::clamp(ValueOf(*this, kColumnRes), 0L, most));
}

double NPThreadItem::Speed() const {
    return SpeedOf(CountPosts(), Dat(), fListed);
}

const std::string& NPThreadItem::FoldedTitle() const {
    if (fFoldedTitle.empty())
        fFoldedTitle = Folded(ColumnText(kColumnTitle));
    return fFoldedTitle;
}

void NPThreadItem::DrawItemColumn(BView* owner, BRect cell, int32 column) {
    if (column == kColumnSpeed)
        DrawText(owner, cell, ColumnText(column), B_ALIGN_RIGHT);
    else
        CLVEasyItem::DrawItemColumn(owner, cell, column);
}

const char* NPThreadItem::ColumnText(int32 column) const {
    if (column != kColumnSpeed)
        return CLVEasyItem::ColumnText(column);
    const double speed = Speed();
    char text[32] = "";
    if (speed > 0)
        snprintf(text, sizeof(text), speed < kRoundSpeed ? "%.1f" : "%.0f", speed);
    fSpeedText = text;
    return fSpeedText.c_str();
}

void NPThreadItem::_ShowCounts() {
    char text[32];
    snprintf(text, sizeof(text), "%ld", static_cast<long>(fGotten));
    SetColumnContent(kColumnGotten, fGotten != 0 ? text : nullptr, B_ALIGN_RIGHT);
    SetColumnContent(kColumnModified, fModified != 0 ? ctime_r(&fModified, text) : nullptr,
                     B_ALIGN_RIGHT);
}

void NPThreadItem::SetFetched(int32 gotten, time_t modified, thread_status state,
                              const BBitmap* stateIcon) {
    fCached = true;
    fGotten = gotten;
    fModified = modified;
    fState = state;
    _ShowCounts();
    SetColumnContent(kColumnState, stateIcon);
}

void NPThreadItem::SetVisited(int32 gotten, time_t modified, const BBitmap* newPostsIcon) {
    if (gotten > fGotten)
        SetColumnContent(kColumnState, newPostsIcon);
    fCached = true;
    fGotten = gotten;
    fModified = modified;
    _ShowCounts();
}

void NPThreadItem::SetMark(const BBitmap* markIcon) {
    fMarked = markIcon != nullptr;
    SetColumnContent(kColumnMark, markIcon);
}

void NPThreadItem::SetNotFetched(const BBitmap* stateIcon) {
    fCached = false;
    fGotten = 0;
    fModified = 0;
    fState = kNotFetched;
    _ShowCounts();
    SetColumnContent(kColumnState, stateIcon);
}

int32 NPThreadItem::CompareItems(const CLVListItem* itemA, const CLVListItem* itemB, int32 column) {
    const NPThreadItem& a = *static_cast<const NPThreadItem*>(itemA);
    const NPThreadItem& b = *static_cast<const NPThreadItem*>(itemB);
    switch (column) {
    case kColumnNumber:
    case kColumnRes:
    case kColumnGotten: return Compare(ValueOf(a, column), ValueOf(b, column));
    case kColumnState: return Compare(b.fState, a.fState);
    case kColumnModified: return Compare(a.fModified, b.fModified);
    case kColumnSpeed: return Compare(a.Speed(), b.Speed());
    case kColumnMark: return a.fMarked == b.fMarked ? 0 : a.fMarked ? -1 : 1;
    default: return CompareTexts(a, b, column);
    }
}

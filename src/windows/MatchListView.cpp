#include "windows/MatchListView.h"

#include "messages/Messages.h"
#include "text/DateText.h"

#include <Application.h>
#include <Message.h>
#include <Window.h>

#include <cstring>

namespace {

enum Column : int32 { kTitle, kPost, kLine, kBoard, kDate };

std::string TextOf(const BMessage* message, const char* field, int32 index) {
    const char* text = "";
    message->FindString(field, index, &text);
    return text;
}

} // namespace

class MatchListView::Row : public CLVEasyItem {
public:
    Row(const BMessage* message, int32 index)
        : CLVEasyItem(0, false, false), fHost(TextOf(message, "host", index)),
          fBoard(TextOf(message, "board", index)), fDat(TextOf(message, "dat", index)),
          fTitle(TextOf(message, "title", index)) {
        int64 modified = 0;
        message->FindInt32("number", index, &fNumber);
        message->FindInt64("modified", index, &modified);
        fModified = modified;
        SetColumnContent(kTitle, fTitle.c_str());
        SetColumnContent(kPost, fNumber > 0 ? std::to_string(fNumber).c_str() : "", B_ALIGN_RIGHT);
        SetColumnContent(kLine, TextOf(message, "line", index).c_str());
        SetColumnContent(kBoard, (fHost + "/" + fBoard).c_str());
        SetColumnContent(kDate, DateText(fModified).c_str());
    }

    BMessage OpenMessage() const {
        BMessage open(kMsgThreadInWindowCached);
        open.AddString("url", ("http://" + fHost + "/" + fBoard + "/index.html").c_str());
        open.AddString("dat", fDat.c_str());
        open.AddString("title", fTitle.c_str());
        open.AddInt32("jump", fNumber);
        return open;
    }

    static int32 CompareRows(const CLVListItem* a, const CLVListItem* b, int32 column) {
        const Row& one = *static_cast<const Row*>(a);
        const Row& other = *static_cast<const Row*>(b);
        if (column == kPost)
            return one.fNumber - other.fNumber;
        if (column == kDate)
            return one.fModified < other.fModified ? -1 : one.fModified > other.fModified;
        return strcmp(one.ColumnText(column), other.ColumnText(column));
    }

private:
    const std::string fHost, fBoard, fDat, fTitle;
    int32 fNumber = 0;
    time_t fModified = 0;
};

MatchListView::MatchListView(BRect frame) : ClickListView(frame, "matches", Hierarchy::kFlat) {
    SetSortFunction(Row::CompareRows);
    const uint32 sorts = CLVColumn::kSortable;
    AddColumn({"スレッド", 200, 40, sorts});
    AddColumn({"レス", 45, 20, sorts});
    AddColumn({"本文", 220, 40, sorts});
    AddColumn({"板", 170, 40, sorts});
    AddColumn({"更新日時", 120, 40, sorts});
}

void MatchListView::AddMatches(const BMessage* message) {
    const char* dat = nullptr;
    for (int32 i = 0; message->FindString("dat", i, &dat) == B_OK; i++)
        AddItem(new Row(message, i));
}

void MatchListView::RowChosen(int32 index) {
    auto* row = static_cast<Row*>(FullListItemAt(index));
    if (row == nullptr)
        return;
    BMessage open = row->OpenMessage();
    open.AddRect("frame", Window()->Frame());
    be_app_messenger.SendMessage(&open);
}

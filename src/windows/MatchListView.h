#pragma once

#include "views/ClickListView.h"

class BMessage;

// What a search of the cache has found, a row each; a double click, or Enter, opens the thread at
// the post in a window of its own.
class MatchListView : public ClickListView {
public:
    explicit MatchListView(BRect frame);

    // The matches of a kMsgCacheMatches.
    void AddMatches(const BMessage* message);

protected:
    void RowChosen(int32 index) override;
    void OpenPopUpMenu(int32, BPoint) override {}

private:
    class Row;
};

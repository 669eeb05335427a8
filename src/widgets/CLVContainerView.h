#pragma once

#include <View.h>

class ColumnListView;

// A ColumnListView with its header, its scroll bars and a frame that shows where the keyboard is.
class CLVContainerView : public BView {
public:
    // Takes ownership of the list and moves it into place.
    CLVContainerView(BRect frame, ColumnListView* list);

    void Draw(BRect updateRect) override;
    void WindowActivated(bool active) override;

private:
    ColumnListView* const fList;
};

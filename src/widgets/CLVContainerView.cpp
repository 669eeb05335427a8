#include "widgets/CLVContainerView.h"

#include "widgets/CLVColumnLabelView.h"
#include "widgets/ColumnListView.h"
#include "widgets/ScrollViewCorner.h"

#include <InterfaceDefs.h>
#include <ScrollBar.h>
#include <Window.h>

CLVContainerView::CLVContainerView(BRect frame, ColumnListView* list)
    : BView(frame, "container", B_FOLLOW_ALL_SIDES, B_WILL_DRAW | B_FULL_UPDATE_ON_RESIZE),
      fList(list) {
    SetViewColor(ui_color(B_LIST_BACKGROUND_COLOR));
    BRect inner = Bounds().InsetByCopy(1, 1);
    const BRect vertical(inner.right - B_V_SCROLL_BAR_WIDTH,
                         inner.top + CLVColumnLabelView::kHeight, inner.right,
                         inner.bottom - B_H_SCROLL_BAR_HEIGHT - 1);
    const BRect horizontal(inner.left, inner.bottom - B_H_SCROLL_BAR_HEIGHT, vertical.left - 1,
                           inner.bottom);
    CLVColumnLabelView* header =
        new CLVColumnLabelView(BRect(inner.left, inner.top, inner.right, vertical.top - 1), list);
    AddChild(header);
    list->SetHeader(header);
    list->MoveTo(inner.left, vertical.top);
    list->ResizeTo(vertical.left - 1 - inner.left, horizontal.top - 1 - vertical.top);
    AddChild(list);
    BScrollBar* bar = new BScrollBar(vertical, "vertical", list, 0, 0, B_VERTICAL);
    bar->SetResizingMode(B_FOLLOW_RIGHT | B_FOLLOW_TOP_BOTTOM);
    AddChild(bar);
    bar = new BScrollBar(horizontal, "horizontal", list, 0, 0, B_HORIZONTAL);
    bar->SetResizingMode(B_FOLLOW_LEFT_RIGHT | B_FOLLOW_BOTTOM);
    AddChild(bar);
    AddChild(new ScrollViewCorner(BRect(vertical.left, horizontal.top, inner.right, inner.bottom)));
}

void CLVContainerView::Draw(BRect) {
    const bool active = fList->IsFocus() && Window()->IsActive();
    SetHighColor(ui_color(active ? B_NAVIGATION_BASE_COLOR : B_CONTROL_BORDER_COLOR));
    StrokeRect(Bounds());
}

void CLVContainerView::WindowActivated(bool active) {
    BView::WindowActivated(active);
    Invalidate();
}

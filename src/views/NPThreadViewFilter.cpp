// Narrowing the thread list to some titles.
#include "posts/TitleFilter.h"
#include "views/NPThreadView.h"
#include "views/ThreadFilterBar.h"
#include "widgets/CLVContainerView.h"

void NPThreadView::OpenFilter() {
    if (fFilterBar == nullptr) {
        BRect frame = Bounds();
        frame.bottom = frame.top + ThreadFilterBar::kHeight - 1;
        fFilterBar = new ThreadFilterBar(frame, fList);
        AddChild(fFilterBar, fContainer);
        _PlaceList(ThreadFilterBar::kHeight);
        _FilterRows();
    }
    fFilterBar->GoToField();
}

void NPThreadView::CloseFilter() {
    if (fFilterBar == nullptr)
        return;
    fFilterBar->RemoveSelf();
    delete fFilterBar;
    fFilterBar = nullptr;
    _PlaceList(0);
    fList->SetFilter({});
    fList->MakeFocus(true);
}

void NPThreadView::_PlaceList(float top) {
    const BRect bounds = Bounds();
    fContainer->MoveTo(0, top);
    fContainer->ResizeTo(bounds.Width(), bounds.Height() - top);
}

void NPThreadView::_FilterRows() {
    if (fFilterBar == nullptr)
        return;
    const TitleFilter wanted(fFilterBar->Text());
    RowList::Filter filter;
    if (!wanted.IsEmpty()) {
        filter = [wanted](const CLVListItem& row) {
            return wanted.Wants(static_cast<const NPThreadItem&>(row).FoldedTitle());
        };
    }
    fList->SetFilter(std::move(filter));
    _ShowFilterCount();
}

void NPThreadView::_ShowFilterCount() {
    if (fFilterBar != nullptr)
        fFilterBar->ShowCount(fList->CountShown(), CountItems());
}

// To the row that was selected, if it is in sight, else to the first one.
void NPThreadView::_LeaveFilter() {
    fList->SelectShown();
    fList->MakeFocus(true);
}

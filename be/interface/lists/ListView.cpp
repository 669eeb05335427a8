#include <ListView.h>

#include <Message.h>
#include <ScrollBar.h>
#include <ScrollView.h>
#include <Window.h>

#include <algorithm>

BListView::BListView(BRect frame, const char* name, list_view_type type, uint32 resizeMask,
                     uint32 flags)
    : BView(frame, name, resizeMask, flags | B_FRAME_EVENTS), fType(type) {
    BView::SetViewColor(ui_color(B_LIST_BACKGROUND_COLOR));
    BView::SetLowColor(ViewColor());
}

BListView::~BListView() = default;

void BListView::AttachedToWindow() {
    BView::AttachedToWindow();
    if (!Messenger().IsValid())
        SetTarget(Window());
    BFont font;
    GetFont(&font);
    for (int32 i = 0; BListItem* item = ItemAt(i); i++)
        item->Update(this, &font);
    _ItemsChanged(0);
}

void BListView::Draw(BRect updateRect) {
    const bool active = Window()->IsActive() && IsFocus();
    float top = 0;
    for (int32 i = 0; BListItem* item = ItemAt(i); i++) {
        const BRect frame(0, top, Bounds().right, top + item->Height());
        top = frame.bottom + 1;
        if (frame.bottom < updateRect.top)
            continue;
        if (frame.top > updateRect.bottom)
            break;
        if (item->IsSelected()) {
            PushState();
            SetHighColor(active ? ui_color(B_LIST_SELECTED_BACKGROUND_COLOR)
                                : tint_color(ui_color(B_PANEL_BACKGROUND_COLOR), 1.06F));
            SetLowColor(HighColor());
            FillRect(frame);
            item->DrawItem(this, frame, true);
            PopState();
        } else {
            item->DrawItem(this, frame);
        }
    }
}

void BListView::MouseDown(BPoint where) {
    int32 clicks = 1;
    int32 down = 0;
    if (const BMessage* message = Window()->CurrentMessage()) {
        message->FindInt32("clicks", &clicks);
        message->FindInt32("modifiers", &down);
    }
    if (!IsFocus())
        MakeFocus(true);
    const int32 index = IndexOf(where);
    const bool again = clicks > 1 && index >= 0 && index == fLastPressed;
    fLastPressed = index;
    if (index < 0) {
        DeselectAll();
        return;
    }
    const bool multiple = fType == B_MULTIPLE_SELECTION_LIST;
    if (multiple && (down & B_COMMAND_KEY) != 0) {
        if (IsItemSelected(index))
            Deselect(index);
        else
            Select(index, true);
        fAnchor = index;
    } else {
        _MoveSelection(index, multiple && (down & B_SHIFT_KEY) != 0);
    }
    if (again)
        Invoke();
}

void BListView::KeyDown(const char* bytes, int32 numBytes) {
    const char key = numBytes == 1 ? bytes[0] : '\0';
    const int32 last = CountItems() - 1;
    int32 target = fCursor;
    switch (key) {
    case B_UP_ARROW: target = fCursor < 0 ? last : fCursor - 1; break;
    case B_DOWN_ARROW: target = fCursor + 1; break;
    case B_PAGE_UP: target = fCursor - _PageLength(); break;
    case B_PAGE_DOWN: target = std::max(0, fCursor) + _PageLength(); break;
    case B_HOME: target = 0; break;
    case B_END: target = last; break;
    case B_ENTER:
    case B_SPACE:
        if (CurrentSelection() >= 0)
            Invoke();
        return;
    default: BView::KeyDown(bytes, numBytes); return;
    }
    if (last < 0)
        return;
    const bool extend = fType == B_MULTIPLE_SELECTION_LIST && (modifiers() & B_SHIFT_KEY) != 0;
    _MoveSelection(std::clamp(target, 0, last), extend);
    _ScrollToIndex(fCursor);
}

void BListView::MakeFocus(bool focused) {
    if (focused == IsFocus())
        return;
    BView::MakeFocus(focused);
    Invalidate();
    if (BScrollView* frame = dynamic_cast<BScrollView*>(Parent()))
        frame->SetBorderHighlighted(focused);
}

void BListView::FrameResized(float width, float height) {
    BView::FrameResized(width, height);
    _UpdateScrollBars();
}

void BListView::WindowActivated(bool active) {
    BView::WindowActivated(active);
    if (CurrentSelection() >= 0)
        Invalidate();
}

void BListView::SetFont(const BFont* font, uint32 mask) {
    BView::SetFont(font, mask);
    if (Window() == nullptr)
        return;
    BFont full;
    GetFont(&full);
    for (int32 i = 0; BListItem* item = ItemAt(i); i++)
        item->Update(this, &full);
    _ItemsChanged(0);
}

void BListView::ScrollTo(BPoint where) {
    BView::ScrollTo(where);
}

BListItem* BListView::ItemAt(int32 index) const {
    return static_cast<BListItem*>(fItems.ItemAt(index));
}

int32 BListView::IndexOf(BListItem* item) const {
    return fItems.IndexOf(item);
}

int32 BListView::IndexOf(BPoint where) const {
    float top = 0;
    for (int32 i = 0; const BListItem* item = ItemAt(i); i++) {
        const float next = top + item->Height() + 1;
        if (where.y >= top && where.y < next)
            return i;
        top = next;
    }
    return -1;
}

BListItem* BListView::FirstItem() const {
    return ItemAt(0);
}

BListItem* BListView::LastItem() const {
    return ItemAt(CountItems() - 1);
}

bool BListView::HasItem(BListItem* item) const {
    return IndexOf(item) >= 0;
}

int32 BListView::CountItems() const {
    return fItems.CountItems();
}

bool BListView::IsEmpty() const {
    return fItems.IsEmpty();
}

const BListItem** BListView::Items() const {
    return static_cast<const BListItem**>(fItems.Items());
}

BRect BListView::ItemFrame(int32 index) {
    const BListItem* item = ItemAt(index);
    if (item == nullptr)
        return BRect();
    const float top = _TopOf(index);
    return BRect(0, top, Bounds().right, top + item->Height());
}

void BListView::InvalidateItem(int32 index) {
    Invalidate(ItemFrame(index));
}

void BListView::SetSelectionMessage(BMessage* message) {
    fSelectionMessage.reset(message);
}

void BListView::SetInvocationMessage(BMessage* message) {
    SetMessage(message);
}

BMessage* BListView::SelectionMessage() const {
    return fSelectionMessage.get();
}

BMessage* BListView::InvocationMessage() const {
    return Message();
}

status_t BListView::Invoke(BMessage* message) {
    const BMessage* sent = message != nullptr ? message : Message();
    if (sent == nullptr)
        return B_BAD_VALUE;
    BMessage copy(*sent);
    copy.AddPointer("source", this);
    for (int32 n = 0, index; (index = CurrentSelection(n)) >= 0; n++)
        copy.AddInt32("index", index);
    return BInvoker::Invoke(&copy);
}

void BListView::SetListType(list_view_type type) {
    fType = type;
}

list_view_type BListView::ListType() const {
    return fType;
}

float BListView::_TopOf(int32 index) const {
    float top = 0;
    for (int32 i = 0; i < index; i++)
        top += ItemAt(i)->Height() + 1;
    return top;
}

int32 BListView::_PageLength() const {
    const BListItem* first = ItemAt(0);
    if (first == nullptr)
        return 1;
    return std::max(1, static_cast<int32>((Bounds().Height() + 1) / (first->Height() + 1)) - 1);
}

void BListView::_ScrollToIndex(int32 index) {
    const BRect frame = ItemFrame(index);
    const BRect bounds = Bounds();
    if (!frame.IsValid())
        return;
    if (frame.top < bounds.top)
        ScrollTo(BPoint(bounds.left, frame.top));
    else if (frame.bottom > bounds.bottom)
        ScrollTo(BPoint(bounds.left, std::max(0.0F, frame.bottom - bounds.Height())));
}

void BListView::_UpdateScrollBars() {
    BScrollBar* bar = ScrollBar(B_VERTICAL);
    if (bar == nullptr)
        return;
    const float page = Bounds().Height() + 1;
    const float whole = _TopOf(CountItems());
    const float row = IsEmpty() ? 20 : ItemAt(0)->Height() + 1;
    bar->SetRange(0, std::max(0.0F, whole - page));
    bar->SetProportion(whole > page ? page / whole : 1);
    bar->SetSteps(row, std::max(row, page - row));
}

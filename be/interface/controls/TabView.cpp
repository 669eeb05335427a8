#include <TabView.h>

#include "interface/controls/ControlLook.h"

#include <Message.h>
#include <Window.h>

#include <algorithm>
#include <cmath>

namespace {

constexpr float kTabPadding = 14;
constexpr float kSmallestTab = 60;

bool IsWindowActive(const BView* view) {
    return view->Window() != nullptr && view->Window()->IsActive();
}

} // namespace

BTabView::BTabView(BRect frame, const char* name, button_width width, uint32 resizeMask,
                   uint32 flags)
    : BView(frame, name, resizeMask, flags), fTabWidth(width) {
    fTabHeight = std::max(26.0F, control_look::LineHeight(this) + 10);
    BRect inside = Bounds().InsetByCopy(1, 1);
    inside.top += fTabHeight;
    fContainer = new BView(inside, "view container", B_FOLLOW_ALL, B_WILL_DRAW);
    AddChild(fContainer);
}

BTabView::~BTabView() {
    // The selected tab's view belongs to the container by now.
    for (int32 i = 0; i < CountTabs(); i++) {
        BTab* tab = static_cast<BTab*>(fTabs.ItemAt(i));
        tab->Deselect();
        delete tab;
    }
}

void BTabView::AttachedToWindow() {
    BView::AttachedToWindow();
    if (Parent() != nullptr)
        SetViewColor(Parent()->ViewColor());
    SetLowColor(ViewColor());
    fContainer->SetViewColor(ViewColor());
    if (fSelection < 0 && CountTabs() > 0)
        Select(0);
}

void BTabView::Draw(BRect) {
    DrawBox(DrawTabs());
}

BRect BTabView::DrawTabs() {
    BRect selected;
    for (int32 i = 0; i < CountTabs(); i++) {
        const BRect frame = TabFrame(i);
        BTab* tab = TabAt(i);
        if (i == fHovered && i != fSelection && tab->IsEnabled()) {
            PushState();
            SetHighColor(tint_color(ViewColor(), 1.04F));
            FillRoundRect(frame.InsetByCopy(1, 2), control_look::kRadius, control_look::kRadius);
            PopState();
        }
        tab->DrawTab(this, frame);
        if (i == fSelection)
            selected = frame;
    }
    return selected;
}

void BTabView::DrawBox(BRect selectedTabFrame) {
    PushState();
    BRect box = Bounds();
    box.top += fTabHeight;
    SetHighColor(ui_color(B_CONTROL_BORDER_COLOR));
    StrokeRoundRect(box, control_look::kRadius, control_look::kRadius);
    if (selectedTabFrame.IsValid()) {
        SetHighColor(ui_color(B_CONTROL_HIGHLIGHT_COLOR));
        FillRect(
            BRect(selectedTabFrame.left + 4, box.top - 1, selectedTabFrame.right - 4, box.top));
    }
    PopState();
}

void BTabView::KeyDown(const char* bytes, int32 numBytes) {
    const char key = numBytes == 1 ? bytes[0] : '\0';
    if (key != B_LEFT_ARROW && key != B_RIGHT_ARROW) {
        BView::KeyDown(bytes, numBytes);
        return;
    }
    const int32 step = key == B_LEFT_ARROW ? -1 : 1;
    int32 index = fSelection + step;
    while (TabAt(index) != nullptr && !TabAt(index)->IsEnabled())
        index += step;
    if (TabAt(index) != nullptr)
        Select(index);
}

void BTabView::MouseDown(BPoint where) {
    const int32 index = _TabIndexAt(where);
    if (index >= 0 && TabAt(index)->IsEnabled())
        Select(index);
}

void BTabView::MouseMoved(BPoint where, uint32 transit, const BMessage* dragMessage) {
    BView::MouseMoved(where, transit, dragMessage);
    const int32 hovered = transit == B_EXITED_VIEW ? -1 : _TabIndexAt(where);
    if (hovered == fHovered)
        return;
    fHovered = hovered;
    Invalidate(BRect(0, 0, Bounds().right, fTabHeight));
}

void BTabView::MakeFocus(bool focused) {
    BView::MakeFocus(focused);
    SetFocusTab(fSelection, focused);
}

void BTabView::WindowActivated(bool active) {
    BView::WindowActivated(active);
    Invalidate(BRect(0, 0, Bounds().right, fTabHeight));
}

void BTabView::AddTab(BView* contents, BTab* tab) {
    if (tab == nullptr)
        tab = new BTab(contents);
    else
        tab->SetView(contents);
    fTabs.AddItem(tab);
    if (Window() != nullptr && fSelection < 0)
        Select(0);
    Invalidate();
}

BTab* BTabView::RemoveTab(int32 index) {
    BTab* tab = TabAt(index);
    if (tab == nullptr)
        return nullptr;
    if (index == fSelection) {
        tab->Deselect();
        fSelection = -1;
    } else if (index < fSelection) {
        fSelection--;
    }
    fTabs.RemoveItem(index);
    fFocus = -1;
    if (fSelection < 0 && CountTabs() > 0)
        Select(std::min(index, CountTabs() - 1));
    Invalidate();
    return tab;
}

BTab* BTabView::TabAt(int32 index) const {
    return static_cast<BTab*>(fTabs.ItemAt(index));
}

int32 BTabView::CountTabs() const {
    return fTabs.CountItems();
}

BView* BTabView::ViewForTab(int32 index) const {
    const BTab* tab = TabAt(index);
    return tab != nullptr ? tab->View() : nullptr;
}

void BTabView::Select(int32 index) {
    BTab* tab = TabAt(index);
    if (tab == nullptr || index == fSelection)
        return;
    if (BTab* old = TabAt(fSelection))
        old->Deselect();
    fSelection = index;
    tab->Select(fContainer);
    if (IsFocus())
        SetFocusTab(index, true);
    Invalidate(BRect(0, 0, Bounds().right, fTabHeight + 1));
}

int32 BTabView::Selection() const {
    return fSelection;
}

void BTabView::SetFocusTab(int32 index, bool focused) {
    if (BTab* old = TabAt(fFocus))
        old->MakeFocus(false);
    BTab* tab = TabAt(index);
    fFocus = focused && tab != nullptr ? index : -1;
    if (fFocus >= 0)
        tab->MakeFocus(true);
    Invalidate(BRect(0, 0, Bounds().right, fTabHeight));
}

int32 BTabView::FocusTab() const {
    return fFocus;
}

BRect BTabView::TabFrame(int32 index) const {
    float widest = 0;
    for (int32 i = 0; i < CountTabs(); i++)
        widest = std::max(widest, control_look::LabelWidth(this, TabAt(i)->Label()));
    float left = 0;
    for (int32 i = 0; i <= index && i < CountTabs(); i++) {
        const float label = fTabWidth == B_WIDTH_FROM_WIDEST
                                ? widest
                                : control_look::LabelWidth(this, TabAt(i)->Label());
        const float width = std::max(kSmallestTab, label + 2 * kTabPadding);
        if (i == index)
            return BRect(left, 0, left + width - 1, fTabHeight - 1);
        left += width;
    }
    return BRect();
}

int32 BTabView::_TabIndexAt(BPoint where) const {
    for (int32 i = 0; i < CountTabs(); i++) {
        if (TabFrame(i).Contains(where))
            return i;
    }
    return -1;
}

void BTabView::SetTabWidth(button_width width) {
    fTabWidth = width;
    Invalidate();
}

button_width BTabView::TabWidth() const {
    return fTabWidth;
}

void BTabView::SetTabHeight(float height) {
    const float change = height - fTabHeight;
    fTabHeight = height;
    fContainer->MoveBy(0, change);
    fContainer->ResizeBy(0, -change);
    Invalidate();
}

float BTabView::TabHeight() const {
    return fTabHeight;
}

BView* BTabView::ContainerView() const {
    return fContainer;
}

BTab::BTab(BView* contentsView) : fView(contentsView) {}

BTab::~BTab() {
    if (fView != nullptr && fView->Parent() == nullptr)
        delete fView;
}

const char* BTab::Label() const {
    if (!fLabel.IsEmpty() || fView == nullptr || fView->Name() == nullptr)
        return fLabel.String();
    return fView->Name();
}

void BTab::SetLabel(const char* label) {
    fLabel = label;
}

bool BTab::IsSelected() const {
    return fSelected;
}

void BTab::Select(BView* owner) {
    if (owner != nullptr && fView != nullptr && fView->Parent() == nullptr)
        owner->AddChild(fView);
    fSelected = true;
}

void BTab::Deselect() {
    if (fView != nullptr)
        fView->RemoveSelf();
    fSelected = false;
}

void BTab::SetEnabled(bool enabled) {
    fEnabled = enabled;
}

bool BTab::IsEnabled() const {
    return fEnabled;
}

void BTab::MakeFocus(bool focused) {
    fFocus = focused;
}

bool BTab::IsFocus() const {
    return fFocus;
}

void BTab::SetView(BView* contents) {
    if (contents == fView)
        return;
    if (fView != nullptr) {
        fView->RemoveSelf();
        delete fView;
    }
    fView = contents;
}

BView* BTab::View() const {
    return fView;
}

void BTab::DrawFocusMark(BView* owner, BRect frame) {
    control_look::DrawFocusRing(owner, frame.InsetByCopy(3, 3));
}

void BTab::DrawLabel(BView* owner, BRect frame) {
    control_look::DrawLabel(owner, Label(), frame, B_ALIGN_CENTER, fEnabled);
}

void BTab::DrawTab(BView* owner, BRect frame) {
    DrawLabel(owner, frame);
    if (fFocus && IsWindowActive(owner))
        DrawFocusMark(owner, frame);
}

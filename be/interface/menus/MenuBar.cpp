#include <MenuBar.h>

#include "interface/controls/ControlLook.h"
#include "interface/menus/MenuPrivate.h"
#include "interface/menus/MenuSession.h"
#include "interface/windows/WindowPrivate.h"

#include <Message.h>
#include <Window.h>

#include <algorithm>
#include <cmath>

namespace {

constexpr float kTitlePadding = 10;
constexpr float kBarLeft = 4;

} // namespace

// Opening the bar's menus, and what follows.
class BMenuBar::Private {
public:
    static void Open(BMenuBar* bar, int32 index, bool byKey);

private:
    static server::MenuRequest RequestFor(const BMenuBar* bar, int32 index, bool byKey);
    static void Ended(BMenuBar* bar, const server::MenuOutcome& outcome);
};

BMenuBar::BMenuBar(BRect frame, const char* title, uint32 resizeMask, menu_layout layout,
                   bool resizeToFit)
    : BMenu(title, layout), fResizeToFit(resizeToFit) {
    SetResizingMode(resizeMask);
    SetFlags(B_WILL_DRAW | B_FULL_UPDATE_ON_RESIZE);
    MoveTo(frame.LeftTop());
    ResizeTo(std::max(0.0F, frame.Width()), std::max(0.0F, frame.Height()));
}

BMenuBar::~BMenuBar() = default;

void BMenuBar::AttachedToWindow() {
    BMenu::AttachedToWindow();
    SetViewColor(ui_color(B_MENU_BACKGROUND_COLOR));
    SetLowColor(ViewColor());
    if (fResizeToFit) {
        float width = 0;
        float height = 0;
        GetPreferredSize(&width, &height);
        ResizeTo(width, height);
    }
    BWindow::Private& window = BWindow::Private::Of(Window());
    BMenu::Private::AddShortcuts(Window(), this, this);
    if (Window()->KeyMenuBar() == nullptr)
        Window()->SetKeyMenuBar(this);
    if (Window()->KeyMenuBar() == this)
        window.openKeyMenuBar = [this] { Private::Open(this, 0, true); };
}

void BMenuBar::DetachedFromWindow() {
    BWindow::Private& window = BWindow::Private::Of(Window());
    window.RemoveMenuShortcuts(this);
    if (Window()->KeyMenuBar() == this) {
        window.openKeyMenuBar = nullptr;
        Window()->SetKeyMenuBar(nullptr);
    }
    BMenu::DetachedFromWindow();
}

void BMenuBar::Draw(BRect) {
    const BRect bounds = Bounds();
    for (int32 i = 0; BMenuItem* item = ItemAt(i); i++) {
        const BRect frame = _TitleFrame(i);
        if (i == fOpen || (i == fHovered && item->IsEnabled())) {
            PushState();
            SetHighColor(i == fOpen ? ui_color(B_MENU_SELECTED_BACKGROUND_COLOR)
                                    : tint_color(ViewColor(), 1.06F));
            FillRoundRect(frame.InsetByCopy(0, 2), control_look::kRadius, control_look::kRadius);
            PopState();
        }
        control_look::DrawLabel(this, item->Label(), frame, B_ALIGN_CENTER, item->IsEnabled());
    }
    PushState();
    SetHighColor(ui_color(B_CONTROL_BORDER_COLOR));
    StrokeLine(bounds.LeftBottom(), bounds.RightBottom());
    PopState();
}

void BMenuBar::MouseDown(BPoint where) {
    const int32 index = _TitleAt(where);
    if (index >= 0)
        Private::Open(this, index, false);
}

void BMenuBar::MouseMoved(BPoint where, uint32 transit, const BMessage* dragMessage) {
    BMenu::MouseMoved(where, transit, dragMessage);
    const int32 hovered = transit == B_EXITED_VIEW ? -1 : _TitleAt(where);
    if (hovered == fHovered)
        return;
    fHovered = hovered;
    Invalidate();
}

void BMenuBar::WindowActivated(bool active) {
    BMenu::WindowActivated(active);
    if (!active && fHovered >= 0 && fOpen < 0) {
        fHovered = -1;
        Invalidate();
    }
}

void BMenuBar::GetPreferredSize(float* width, float* height) {
    if (width != nullptr)
        *width = Parent() != nullptr   ? Parent()->Bounds().Width()
                 : Window() != nullptr ? Window()->Bounds().Width()
                                       : _TitleFrame(CountItems() - 1).right + kBarLeft;
    if (height != nullptr)
        *height = std::max(24.0F, control_look::LineHeight(this) + 8);
}

BRect BMenuBar::_TitleFrame(int32 index) const {
    float left = kBarLeft;
    for (int32 i = 0; const BMenuItem* item = ItemAt(i); i++) {
        const float width = control_look::LabelWidth(this, item->Label()) + 2 * kTitlePadding;
        if (i == index)
            return BRect(left, 0, left + width - 1, Bounds().bottom - 1);
        left += width;
    }
    return BRect();
}

int32 BMenuBar::_TitleAt(BPoint where) const {
    for (int32 i = 0; i < CountItems(); i++) {
        if (_TitleFrame(i).Contains(where))
            return i;
    }
    return -1;
}

void BMenuBar::Private::Open(BMenuBar* bar, int32 index, bool byKey) {
    BWindow* window = bar->Window();
    if (window == nullptr)
        return;
    if (bar->fOpen < 0)
        window->MenusBeginning();
    BMenuItem* item = bar->ItemAt(index);
    if (item == nullptr || item->Submenu() == nullptr || !item->IsEnabled()) {
        bar->fOpen = -1;
        if (item != nullptr)
            BMenu::Private::Choose(item, window);
        window->MenusEnded();
        return;
    }
    bar->fOpen = index;
    bar->Invalidate();
    // The bar may have gone by the time the menu ends.
    const std::weak_ptr<bool> alive = bar->fAlive;
    MenuSession::Open(item->Submenu(), RequestFor(bar, index, byKey),
                      [bar, alive](const server::MenuOutcome& outcome) {
                          if (!alive.expired() && bar->Window() != nullptr)
                              Ended(bar, outcome);
                      });
}

server::MenuRequest BMenuBar::Private::RequestFor(const BMenuBar* bar, int32 index, bool byKey) {
    server::MenuRequest request;
    request.menu = BMenu::Private::SnapshotOf(bar->SubmenuAt(index));
    for (int32 i = 0; i < bar->CountItems(); i++)
        request.titles.push_back(bar->ConvertToScreen(bar->_TitleFrame(i)));
    request.currentTitle = index;
    request.where = request.titles[index].LeftBottom() + BPoint(0, 1);
    request.openRect = request.titles[index];
    request.selectFirst = byKey;
    request.window = bar->Window();
    return request;
}

void BMenuBar::Private::Ended(BMenuBar* bar, const server::MenuOutcome& outcome) {
    using Kind = server::MenuOutcome::Kind;
    if (outcome.kind == Kind::kTitle && bar->ItemAt(outcome.title) != nullptr &&
        outcome.title != bar->fOpen) {
        Open(bar, outcome.title, outcome.byKey);
        return;
    }
    bar->fOpen = -1;
    bar->fHovered = -1;
    bar->Invalidate();
    BWindow* window = bar->Window();
    BMenuItem* item =
        outcome.kind == Kind::kChosen ? BMenuItem::Private::Find(bar, outcome.token) : nullptr;
    if (item != nullptr)
        BMenu::Private::Choose(item, window);
    window->MenusEnded();
}

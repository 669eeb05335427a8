#include <MenuField.h>

#include "interface/controls/ControlLook.h"
#include "interface/menus/MenuPrivate.h"
#include "interface/menus/MenuSession.h"

#include <Message.h>
#include <Window.h>

#include <algorithm>
#include <cmath>

namespace {

constexpr float kLabelGap = 4;
constexpr float kFieldPadding = 8;
constexpr float kArrowRoom = 20;

// The field's own item: its label is what the field shows.
class FieldItem : public BMenuItem {
public:
    FieldItem(BMenu* menu, BView* field) : BMenuItem(menu), fField(field) {}

    void SetLabel(const char* name) override {
        BMenuItem::SetLabel(name);
        if (fField->Window() != nullptr)
            fField->Invalidate();
    }

private:
    BView* fField;
};

} // namespace

BMenuField::BMenuField(BRect frame, const char* name, const char* label, BMenu* menu,
                       uint32 resizeMask, uint32 flags)
    : BView(frame, name, resizeMask, flags | B_FULL_UPDATE_ON_RESIZE), fLabel(label), fMenu(menu),
      fItem(std::make_unique<FieldItem>(menu, this)) {
    fDivider = fLabel.IsEmpty() ? 0 : std::floor(frame.Width() / 2);
    BMenuItem* marked = menu != nullptr ? menu->FindMarked() : nullptr;
    if (marked != nullptr && menu->IsLabelFromMarked())
        fItem->SetLabel(marked->Label());
}

BMenuField::BMenuField(BRect frame, const char* name, const char* label, BMenu* menu, bool,
                       uint32 resizeMask, uint32 flags)
    : BMenuField(frame, name, label, menu, resizeMask, flags) {}

BMenuField::~BMenuField() = default;

void BMenuField::AttachedToWindow() {
    BView::AttachedToWindow();
    AdoptParentColors();
    BMenuItem* marked = fMenu != nullptr ? fMenu->FindMarked() : nullptr;
    if (marked != nullptr && fMenu->IsLabelFromMarked())
        fItem->SetLabel(marked->Label());
}

void BMenuField::Draw(BRect) {
    control_look::State state;
    state.enabled = fEnabled;
    state.hovered = fHovered;
    state.focused = IsFocus() && Window()->IsActive();
    const BRect field = _FieldFrame();
    control_look::DrawButton(this, field, state);
    BRect inside = field;
    inside.left += kFieldPadding;
    inside.right -= kArrowRoom;
    control_look::DrawLabel(this, fItem->Label(), inside, B_ALIGN_LEFT, fEnabled);
    control_look::DrawDropArrow(
        this, BPoint(field.right - kArrowRoom / 2, std::floor((field.top + field.bottom) / 2)),
        fEnabled);
    BRect label = Bounds();
    label.right = fDivider - kLabelGap;
    control_look::DrawLabel(this, fLabel.String(), label, fAlignment, fEnabled);
}

void BMenuField::MouseDown(BPoint where) {
    if (fEnabled && _FieldFrame().Contains(where))
        _OpenMenu();
}

void BMenuField::MouseMoved(BPoint where, uint32 transit, const BMessage* dragMessage) {
    BView::MouseMoved(where, transit, dragMessage);
    const bool hovered = transit != B_EXITED_VIEW && _FieldFrame().Contains(where);
    if (hovered == fHovered)
        return;
    fHovered = hovered;
    Invalidate();
}

void BMenuField::KeyDown(const char* bytes, int32 numBytes) {
    switch (numBytes == 1 ? bytes[0] : '\0') {
    case B_SPACE:
    case B_UP_ARROW:
    case B_DOWN_ARROW:
        if (fEnabled)
            _OpenMenu();
        break;
    default: BView::KeyDown(bytes, numBytes);
    }
}

void BMenuField::MakeFocus(bool focused) {
    if (focused == IsFocus())
        return;
    BView::MakeFocus(focused);
    Invalidate();
}

void BMenuField::WindowActivated(bool active) {
    BView::WindowActivated(active);
    if (IsFocus())
        Invalidate();
}

void BMenuField::GetPreferredSize(float* width, float* height) {
    float widest = 0;
    for (int32 i = 0; fMenu != nullptr && i < fMenu->CountItems(); i++)
        widest = std::max(widest, control_look::LabelWidth(this, fMenu->ItemAt(i)->Label()));
    if (width != nullptr)
        *width = fDivider + widest + 2 * kFieldPadding + kArrowRoom;
    if (height != nullptr)
        *height = std::max(control_look::kFieldHeight, control_look::LineHeight(this) + 6) - 1;
}

BMenu* BMenuField::Menu() const {
    return fMenu;
}

BMenuItem* BMenuField::MenuItem() const {
    return fItem.get();
}

void BMenuField::SetLabel(const char* label) {
    fLabel = label;
    Invalidate();
}

const char* BMenuField::Label() const {
    return fLabel.String();
}

void BMenuField::SetEnabled(bool enabled) {
    if (enabled == fEnabled)
        return;
    fEnabled = enabled;
    if (!enabled && IsFocus())
        MakeFocus(false);
    // Tab passes a disabled field by.
    if (!enabled) {
        fNavigable = Flags() & B_NAVIGABLE;
        SetFlags(Flags() & ~B_NAVIGABLE);
    } else {
        SetFlags(Flags() | fNavigable);
    }
    Invalidate();
}

bool BMenuField::IsEnabled() const {
    return fEnabled;
}

void BMenuField::SetAlignment(alignment label) {
    fAlignment = label;
    Invalidate();
}

alignment BMenuField::Alignment() const {
    return fAlignment;
}

void BMenuField::SetDivider(float dividingLine) {
    fDivider = std::floor(std::clamp(dividingLine, 0.0F, Bounds().Width()));
    Invalidate();
}

float BMenuField::Divider() const {
    return fDivider;
}

BRect BMenuField::_FieldFrame() const {
    BRect frame = Bounds();
    frame.left = fDivider;
    return frame;
}

void BMenuField::_OpenMenu() {
    if (fMenu == nullptr || Window() == nullptr)
        return;
    const BRect field = ConvertToScreen(_FieldFrame());
    server::MenuRequest request;
    request.menu = BMenu::Private::SnapshotOf(fMenu);
    request.selected = BMenu::Private::IndexOfMarked(fMenu);
    request.where = request.selected >= 0 ? field.LeftTop() : field.LeftBottom() + BPoint(0, 1);
    request.openRect = field;
    request.window = Window();
    BWindow* window = Window();
    // The field may have gone by then.
    const std::weak_ptr<bool> alive = fAlive;
    MenuSession::Open(fMenu, std::move(request),
                      [this, window, alive](const server::MenuOutcome& outcome) {
                          if (alive.expired() || outcome.kind != server::MenuOutcome::Kind::kChosen)
                              return;
                          if (BMenuItem* item = BMenuItem::Private::Find(fMenu, outcome.token))
                              BMenu::Private::Choose(item, window);
                      });
}

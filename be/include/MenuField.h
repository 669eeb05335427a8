#pragma once

#include <Menu.h>
#include <MenuBar.h>
#include <View.h>

#include <memory>

// A label and a field that shows a pop-up menu's choice and opens the menu. Owns the menu.
class BMenuField : public BView {
public:
    BMenuField(BRect frame, const char* name, const char* label, BMenu* menu,
               uint32 resizeMask = B_FOLLOW_LEFT | B_FOLLOW_TOP,
               uint32 flags = B_WILL_DRAW | B_NAVIGABLE);
    // The field keeps the frame's width whatever its items' labels.
    BMenuField(BRect frame, const char* name, const char* label, BMenu* menu, bool fixedSize,
               uint32 resizeMask = B_FOLLOW_LEFT | B_FOLLOW_TOP,
               uint32 flags = B_WILL_DRAW | B_NAVIGABLE);
    ~BMenuField() override;

    void AttachedToWindow() override;
    void Draw(BRect updateRect) override;
    void MouseDown(BPoint where) override;
    void MouseMoved(BPoint where, uint32 transit, const BMessage* dragMessage) override;
    void KeyDown(const char* bytes, int32 numBytes) override;
    void MakeFocus(bool focused = true) override;
    void WindowActivated(bool active) override;
    void GetPreferredSize(float* width, float* height) override;

    BMenu* Menu() const;
    BMenuItem* MenuItem() const;

    virtual void SetLabel(const char* label);
    const char* Label() const;
    virtual void SetEnabled(bool enabled);
    bool IsEnabled() const;
    virtual void SetAlignment(alignment label);
    alignment Alignment() const;
    // Where the field begins, in pixels from the view's left edge.
    virtual void SetDivider(float dividingLine);
    float Divider() const;

private:
    BRect _FieldFrame() const;
    void _OpenMenu();

    // Window thread only
    BString fLabel;
    BMenu* fMenu;
    std::unique_ptr<BMenuItem> fItem; // owns the menu
    float fDivider;
    alignment fAlignment = B_ALIGN_LEFT;
    uint32 fNavigable = 0; // the flag that a disabled field gets back
    bool fEnabled = true;
    bool fHovered = false;
    std::shared_ptr<bool> fAlive = std::make_shared<bool>(true);
};

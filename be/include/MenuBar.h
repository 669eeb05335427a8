#pragma once

#include <Menu.h>

#include <memory>

// The bar of menus along the top of a window. The first menu bar that a window gets becomes its
// key menu bar, whose shortcuts the window obeys.
class BMenuBar : public BMenu {
public:
    BMenuBar(BRect frame, const char* title, uint32 resizeMask = B_FOLLOW_LEFT_RIGHT | B_FOLLOW_TOP,
             menu_layout layout = B_ITEMS_IN_ROW, bool resizeToFit = true);
    ~BMenuBar() override;

    void AttachedToWindow() override;
    void DetachedFromWindow() override;
    void Draw(BRect updateRect) override;
    void MouseDown(BPoint where) override;
    void MouseMoved(BPoint where, uint32 transit, const BMessage* dragMessage) override;
    void WindowActivated(bool active) override;
    void GetPreferredSize(float* width, float* height) override;

    class Private;

private:
    friend class Private;

    BRect _TitleFrame(int32 index) const;
    int32 _TitleAt(BPoint where) const;

    bool fResizeToFit;
    int32 fHovered = -1;
    int32 fOpen = -1;
    std::shared_ptr<bool> fAlive = std::make_shared<bool>(true);
};

#pragma once

#include <InterfaceDefs.h>
#include <List.h>
#include <String.h>
#include <View.h>

// One tab: a label and the view that it shows. The tab view owns its tabs, a tab owns its view
// while the view is in no window.
class BTab {
public:
    explicit BTab(BView* contentsView = nullptr);
    virtual ~BTab();

    // Without a label of its own, the name of the contents view.
    const char* Label() const;
    virtual void SetLabel(const char* label);

    bool IsSelected() const;
    virtual void Select(BView* owner);
    virtual void Deselect();
    virtual void SetEnabled(bool enabled);
    bool IsEnabled() const;
    void MakeFocus(bool focused = true);
    bool IsFocus() const;

    // The earlier view is deleted.
    virtual void SetView(BView* contents);
    BView* View() const;

    virtual void DrawFocusMark(BView* owner, BRect frame);
    virtual void DrawLabel(BView* owner, BRect frame);
    virtual void DrawTab(BView* owner, BRect frame);

private:
    // Window thread only
    BString fLabel;
    BView* fView;
    bool fSelected = false;
    bool fEnabled = true;
    bool fFocus = false;
};

// Views behind each other, chosen by a row of tabs. The contents views lie in ContainerView().
class BTabView : public BView {
public:
    BTabView(BRect frame, const char* name, button_width width = B_WIDTH_AS_USUAL,
             uint32 resizeMask = B_FOLLOW_ALL,
             uint32 flags = B_FULL_UPDATE_ON_RESIZE | B_WILL_DRAW | B_NAVIGABLE_JUMP |
                            B_FRAME_EVENTS | B_NAVIGABLE);
    ~BTabView() override;

    void AttachedToWindow() override;
    void Draw(BRect updateRect) override;
    void KeyDown(const char* bytes, int32 numBytes) override;
    void MouseDown(BPoint where) override;
    void MouseMoved(BPoint where, uint32 transit, const BMessage* dragMessage) override;
    void MakeFocus(bool focused = true) override;
    void WindowActivated(bool active) override;

    // Takes ownership of both. Without a tab one is made, labelled by the view's name.
    virtual void AddTab(BView* contents, BTab* tab = nullptr);
    // The caller deletes the tab.
    virtual BTab* RemoveTab(int32 index);
    virtual BTab* TabAt(int32 index) const;
    int32 CountTabs() const;
    BView* ViewForTab(int32 index) const;

    virtual void Select(int32 index);
    int32 Selection() const;
    virtual void SetFocusTab(int32 index, bool focused);
    int32 FocusTab() const;

    virtual BRect DrawTabs();
    virtual void DrawBox(BRect selectedTabFrame);
    virtual BRect TabFrame(int32 index) const;
    virtual void SetTabWidth(button_width width);
    button_width TabWidth() const;
    virtual void SetTabHeight(float height);
    float TabHeight() const;
    BView* ContainerView() const;

private:
    int32 _TabIndexAt(BPoint where) const;

    // Window thread only
    BList fTabs;
    BView* fContainer;
    button_width fTabWidth;
    float fTabHeight;
    int32 fSelection = -1;
    int32 fFocus = -1;
    int32 fHovered = -1;
};

#pragma once

#include <String.h>
#include <SupportDefs.h>

#include <Rect.h>

class BFont;
class BView;

// A row of a BListView.
class BListItem {
public:
    explicit BListItem(uint32 outlineLevel = 0, bool expanded = true);
    virtual ~BListItem();

    float Height() const;
    float Width() const;
    void SetHeight(float height);
    void SetWidth(float width);
    bool IsSelected() const;
    void Select();
    void Deselect();
    virtual void SetEnabled(bool enabled);
    bool IsEnabled() const;
    uint32 OutlineLevel() const;
    bool IsExpanded() const;
    void SetExpanded(bool expanded);

    virtual void DrawItem(BView* owner, BRect frame, bool complete = false) = 0;
    // Called when the item enters a list that is in a window, and when the list's font changes.
    virtual void Update(BView* owner, const BFont* font);

private:
    // Window thread only
    float fWidth = 0;
    float fHeight = 0;
    uint32 fOutlineLevel;
    bool fExpanded;
    bool fSelected = false;
    bool fEnabled = true;
};

class BStringItem : public BListItem {
public:
    explicit BStringItem(const char* text, uint32 outlineLevel = 0, bool expanded = true);
    ~BStringItem() override;

    void DrawItem(BView* owner, BRect frame, bool complete = false) override;
    void Update(BView* owner, const BFont* font) override;
    virtual void SetText(const char* text);
    const char* Text() const;

private:
    BString fText;
    float fBaselineOffset = 0;
};

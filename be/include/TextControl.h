#pragma once

#include <Control.h>
#include <TextView.h>

class TextField;

// A label and a field of one line. Its message is sent when the user, having changed the text,
// leaves the field or presses Enter (which a default button takes for itself); the modification
// message at every change.
// The text view belongs to the control.
class BTextControl : public BControl {
public:
    BTextControl(BRect frame, const char* name, const char* label, const char* initialText,
                 BMessage* message, uint32 resizeMask = B_FOLLOW_LEFT | B_FOLLOW_TOP,
                 uint32 flags = B_WILL_DRAW | B_NAVIGABLE);
    ~BTextControl() override;

    void AttachedToWindow() override;
    void DetachedFromWindow() override;
    void AllAttached() override;
    void Draw(BRect updateRect) override;
    void MouseDown(BPoint where) override;
    void FrameResized(float width, float height) override;
    void MakeFocus(bool focused = true) override;
    void SetEnabled(bool enabled) override;
    void SetLabel(const char* label) override;
    void WindowActivated(bool active) override;
    void GetPreferredSize(float* width, float* height) override;

    virtual void SetText(const char* text);
    // Borrowed until the text changes.
    const char* Text() const;
    BTextView* TextView() const;

    // Takes ownership.
    virtual void SetModificationMessage(BMessage* message);
    BMessage* ModificationMessage() const;

    virtual void SetAlignment(alignment forLabel, alignment forText);
    void GetAlignment(alignment* forLabel, alignment* forText) const;

    // Where the field begins, in pixels from the control's left edge.
    virtual void SetDivider(float dividingLine);
    float Divider() const;

private:
    friend class TextField;

    BRect _FieldFrame() const;
    void _LayoutField();
    void _Commit();
    void _TextModified();
    void _FieldFocusChanged();

    // Window thread only
    BTextView* fTextView;
    std::unique_ptr<BMessage> fModificationMessage;
    BString fCommittedText;
    float fDivider;
    alignment fLabelAlignment = B_ALIGN_LEFT;
};

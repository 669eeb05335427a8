#pragma once

#include <Invoker.h>
#include <String.h>
#include <View.h>

enum { B_CONTROL_OFF = 0, B_CONTROL_ON = 1 };

// The base of what the user operates: a label, a value, and a message that is sent when the
// user has changed the value. The message is the control's; its target is the window until
// SetTarget says otherwise. A sent message carries "when" (int64), "source" (the control's
// pointer) and "be:value" (int32).
class BControl : public BView, public BInvoker {
public:
    BControl(BRect frame, const char* name, const char* label, BMessage* message, uint32 resizeMask,
             uint32 flags);
    ~BControl() override;

    void AttachedToWindow() override;
    void DetachedFromWindow() override;
    void MessageReceived(BMessage* message) override;
    void MakeFocus(bool focused = true) override;
    void KeyDown(const char* bytes, int32 numBytes) override;
    void MouseMoved(BPoint where, uint32 transit, const BMessage* dragMessage) override;
    void WindowActivated(bool active) override;

    virtual void SetLabel(const char* label);
    const char* Label() const;

    // Redraws if the value changed; sends nothing.
    virtual void SetValue(int32 value);
    int32 Value() const;

    virtual void SetEnabled(bool enabled);
    bool IsEnabled() const;

    status_t Invoke(BMessage* message = nullptr) override;

    void GetPreferredSize(float* width, float* height) override;

protected:
    // While MakeFocus runs.
    bool IsFocusChanging() const;
    bool IsTracking() const;
    void SetTracking(bool state);
    void SetValueNoUpdate(int32 value);

    class Private;

private:
    friend class Private;

    // Window thread only
    BString fLabel;
    int32 fValue = B_CONTROL_OFF;
    uint32 fNavigable = 0; // the flag that a disabled control gets back
    bool fEnabled = true;
    bool fFocusChanging = false;
    bool fTracking = false;
    bool fHovered = false;
};

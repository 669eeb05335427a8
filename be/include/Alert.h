#pragma once

#include <Window.h>

#include <memory>

class BButton;
class BInvoker;
class BTextView;

enum alert_type { B_EMPTY_ALERT = 0, B_INFO_ALERT, B_IDEA_ALERT, B_WARNING_ALERT, B_STOP_ALERT };

enum button_spacing { B_EVEN_SPACING = 0, B_OFFSET_SPACING };

// A message with one to three buttons; the last is the default one. Make it with new and call Go,
// once: it deletes itself when answered. Escape chooses the button that SetShortcut gives B_ESCAPE,
// if any.
class BAlert : public BWindow {
public:
    class Private;

    BAlert(const char* title, const char* text, const char* button1, const char* button2 = nullptr,
           const char* button3 = nullptr, button_width width = B_WIDTH_AS_USUAL,
           alert_type type = B_INFO_ALERT);
    BAlert(const char* title, const char* text, const char* button1, const char* button2,
           const char* button3, button_width width, button_spacing spacing,
           alert_type type = B_INFO_ALERT);
    ~BAlert() override;

    void SetType(alert_type type);
    alert_type Type() const;
    void SetText(const char* text);
    void SetShortcut(int32 index, char key);
    char Shortcut(int32 index) const;

    // Waits for the answer: the index of the button, or -1 if the alert went without one (the
    // program quits). Called by a window's own thread, that window goes on being drawn.
    int32 Go();
    // Returns at once; the invoker (owned by the caller, null for none) gets the index as "which".
    status_t Go(BInvoker* invoker);

    BButton* ButtonAt(int32 index) const;
    BTextView* TextView() const;

    void MessageReceived(BMessage* message) override;
    void DispatchMessage(BMessage* message, BHandler* handler) override;
    void FrameResized(float newWidth, float newHeight) override;
    bool QuitRequested() override;
    void Quit() override;

    static BPoint AlertPosition(float width, float height);

private:
    bool _Open(BWindow* caller); // whose thread waits, or null

    std::unique_ptr<Private> fPrivate;
};

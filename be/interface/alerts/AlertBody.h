#pragma once

#include <Alert.h>
#include <View.h>

#include <vector>

class BButton;
class BTextView;

// The inside of an alert: its icon, its text, its buttons. The alert's thread.
class AlertBody : public BView {
public:
    AlertBody(alert_type type, const char* text);

    // Puts text and buttons in place and takes the buttons; the size that the alert needs.
    BPoint Arrange(const std::vector<BButton*>& buttons, button_width width);
    BTextView* Text() const { return fText; }
    alert_type Type() const { return fType; }
    void SetType(alert_type type);

    void Draw(BRect updateRect) override;

private:
    float _TextLeft() const;
    float _PlaceText();
    BPoint _PlaceButtons(const std::vector<BButton*>& buttons, button_width width, float top);

    BTextView* fText; // a child
    alert_type fType;
};

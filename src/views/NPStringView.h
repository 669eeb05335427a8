#pragma once

#include <StringView.h>

#include <string>

// Shows a thread's web address; a click opens it in the system's browser.
class NPStringView : public BStringView {
public:
    explicit NPStringView(BRect frame);

    // From the board's URL and the dat name; what gives no address empties the label.
    void SetUrl(const char* url, const char* dat);
    const std::string& Address() const { return fAddress; }

    void AttachedToWindow() override;
    void MouseDown(BPoint where) override;
    void MouseMoved(BPoint where, uint32 transit, const BMessage* dragMessage) override;

private:
    bool _IsOnText(BPoint where) const;

    std::string fAddress;
};

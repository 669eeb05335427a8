#pragma once

#include <String.h>
#include <View.h>

// The status line: a text and, while a value is above 0, a bar. The window's thread, or with it
// locked.
class NPProgressView : public BView {
public:
    explicit NPProgressView(BRect frame);

    // The value is a percentage; 0 shows no bar. The text is copied.
    void DrawBar(const char* text, int32 value);
    const char* Text() const { return fText.String(); }

    void AttachedToWindow() override;
    void Draw(BRect updateRect) override;

private:
    BString fText;
    int32 fValue = 0;
};

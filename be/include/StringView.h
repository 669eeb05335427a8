#pragma once

#include <InterfaceDefs.h>
#include <String.h>
#include <View.h>

// One line of text that the user cannot edit. A text wider than the view is cut with an ellipsis,
// at its end unless told otherwise.
class BStringView : public BView {
public:
    BStringView(BRect frame, const char* name, const char* text,
                uint32 resizeMask = B_FOLLOW_LEFT | B_FOLLOW_TOP, uint32 flags = B_WILL_DRAW);
    ~BStringView() override;

    void AttachedToWindow() override;
    void Draw(BRect updateRect) override;
    void GetPreferredSize(float* width, float* height) override;

    // A null text is an empty one.
    void SetText(const char* text);
    // Borrowed until the next SetText.
    const char* Text() const;
    void SetAlignment(alignment flag);
    alignment Alignment() const;
    void SetTruncation(uint32 mode); // B_TRUNCATE_END and its like
    uint32 Truncation() const;

private:
    BString fText;
    alignment fAlignment = B_ALIGN_LEFT;
    uint32 fTruncation = B_TRUNCATE_END;
};

#pragma once

#include <TextControl.h>

// The text view inside of a text control: one line that scrolls sideways. Line feeds become
// spaces; Tab and Enter go to the control.
class TextField : public BTextView {
public:
    TextField(BTextControl* control, uint32 flags);

    void KeyDown(const char* bytes, int32 numBytes) override;
    void MakeFocus(bool focused) override;
    void SetUsable(bool usable);

protected:
    void InsertText(const char* text, int32 length, int32 offset,
                    const text_run_array* runs) override;

private:
    BTextControl* fControl; // owns this view
};

#pragma once

#include <ScrollView.h>

class NPTextView;

// Around the article's text: over the left edge of its scroll bar stand ticks where the text has
// them. The window's thread, or with its looper locked.
class TickScrollView : public BScrollView {
public:
    explicit TickScrollView(NPTextView* text);

    // The text has others.
    void TicksChanged();

    void DrawAfterChildren(BRect updateRect) override;

private:
    NPTextView* fText; // a child
};

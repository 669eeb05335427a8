#pragma once

#include <View.h>

#include <memory>

class BBitmap;
class BStringView;
class BTextControl;
class KeyMessages;
class NPBitmapButton;

// The field above the thread list in which its titles are narrowed, with the count of the rows that
// are shown. Says what happens to its parent; the window's thread.
class ThreadFilterBar : public BView {
public:
    static constexpr float kHeight = 32;

    // To the parent.
    static constexpr uint32 kMsgTyped = 'tfTY'; // the text is another
    static constexpr uint32 kMsgLeave = 'tfLV'; // the reader goes on to the rows
    static constexpr uint32 kMsgClose = 'tfCL';

    // The list that it stands above, which is borrowed and lives longer: Escape closes it there
    // too.
    ThreadFilterBar(BRect frame, BView* list);
    ~ThreadFilterBar() override;

    const char* Text() const;
    void ShowCount(int32 shown, int32 all);
    // With what was typed selected.
    void GoToField();

    void AttachedToWindow() override;
    void Draw(BRect updateRect) override;
    void FrameResized(float width, float height) override;

private:
    void _Place();

    BView* const fList;
    std::unique_ptr<BBitmap> fCloseIcon;
    std::unique_ptr<KeyMessages> fKeys;
    BTextControl* fField = nullptr;
    BStringView* fCount = nullptr;
    NPBitmapButton* fButton = nullptr;
};

#pragma once

#include <Font.h>
#include <PopUpMenu.h>
#include <String.h>

// Chosen from the font menu: "family", "style" strings.
constexpr uint32 kMsgFontChosen = 'mPFC';

// The installed font families, each with a menu of its styles. Choosing a family itself takes its
// first style. What is chosen posts kMsgFontChosen to the target; only Choose then marks it.
class NPFontMenu : public BPopUpMenu {
public:
    // Marks the font when it is installed, or its family alone without that style; the family is
    // the menu's name all the same.
    NPFontMenu(const char* family, const char* style);

    void Choose(const char* family, const char* style);
    // False, with nothing delivered, while no installed font is marked.
    bool GetChosen(BString* family, BString* style) const;
    // Of families and styles.
    status_t SetTargetForItems(BHandler* target) override;

private:
    void _AddFamily(font_family family);

    // The marked style; null without one
    BMenuItem* fChosen = nullptr;
};

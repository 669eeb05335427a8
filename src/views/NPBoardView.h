#pragma once

#include "views/NPBoardListView.h"

#include <View.h>

#include <map>
#include <string>

// The board pane: lists the boards of the portal's menu and of the extra board files, which all lie
// in the folder "bbs" beside the executable. The window's thread, or with the window locked.
class NPBoardView : public BView {
public:
    explicit NPBoardView(BRect frame);

    // Reads the files again; tells the user when the menu can't be read. Categories stay as open as
    // they were.
    void UpdateBBSMenu();
    // True for the menu's categories that hold no boards of this kind.
    static bool MatchNonBBS(const char* name);

    void SetClickMode(click_mode mode) { fList->SetClickMode(mode); }
    void SetScrollBarPosition(float position);
    float GetScrollBarPosition() const;
    void SetColumnWidth(float width);
    float GetColumnWidth() const;

    int32 CountCategories() const { return fList->CountCategories(); }
    bool CategoryExpanded(int32 index) { return fList->CategoryExpandedAt(index); }
    const char* CategoryItemAt(int32 index) { return fList->CategoryNameAt(index); }
    NPBoardListView* List() const { return fList; }

    void AttachedToWindow() override;
    void MessageReceived(BMessage* message) override;

private:
    int32 getBBSMenu();
    void _Fill();
    void _KeepExpansion();
    void _RestoreExpansion();

    NPBoardListView* fList = nullptr;
    // By name, from before the menu was read again; a menu that can't be read forgets none.
    std::map<std::string, bool> fExpansion;
};

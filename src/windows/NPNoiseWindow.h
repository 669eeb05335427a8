#pragma once

#include "noise/NoiseRule.h"
#include "windows/OnceWindow.h"

#include <string>

class BCheckBox;
class BMenuField;
class BStringView;
class BTextControl;
class NoiseListView;

// Lists the rules that hide posts and lets the user add, change and delete them, write them into a
// file and read them from one. What is done holds at once, in every window. Deletes itself.
class NPNoiseWindow : public OnceWindow {
public:
    // Brings the window to the front if there is one. Any thread.
    static void Open();

    void MessageReceived(BMessage* message) override;
    bool QuitRequested() override;

private:
    NPNoiseWindow();
    void _AddList(BView* base, BRect frame);
    void _AddRuleFields(BView* base, BRect row);
    void _AddFileFields(BView* base, BRect row);

    void _ShowRules();
    void _ShowRule();
    void _Say(const std::string& text);
    bool _RuleInFields(NoiseRule* rule);
    void _Store(const NoiseRules& rules);

    void _Add();
    void _Change();
    void _Remove();
    void _HideAnswers();
    void _Export();
    void _Import();

    // Window thread only
    NoiseRules fRules; // as they are listed
    NoiseListView* fList = nullptr;
    BMenuField* fKind = nullptr;
    BTextControl* fText = nullptr;
    BCheckBox* fPattern = nullptr;
    BTextControl* fBoard = nullptr;
    BCheckBox* fAnswers = nullptr;
    BTextControl* fFile = nullptr;
    BStringView* fStatus = nullptr;
};

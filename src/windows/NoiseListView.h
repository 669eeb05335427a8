#pragma once

#include "noise/NoiseRule.h"
#include "views/ClickListView.h"

// The rules as rows; a click on one, or Enter, sends kMsgRuleChosen to the window.
class NoiseListView : public ClickListView {
public:
    static constexpr uint32 kMsgRuleChosen = 'mNGS';

    explicit NoiseListView(BRect frame);

    // Keeps the selected row where it still is.
    void ShowRules(const NoiseRules& rules);
    // The place of the selected rule in the list that was shown; −1 without one.
    int32 SelectedRule();

protected:
    void RowChosen(int32 index) override;
    void OpenPopUpMenu(int32, BPoint) override {}

private:
    class Row;
};

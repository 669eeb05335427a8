#include "views/PopUpLife.h"

#include <gtest/gtest.h>

#include <string>

namespace {

// One step of a pop-up's life, named by a letter.
bool Closes(PopUpLife* life, char step) {
    switch (step) {
    case 'a': return life->AnchorPointed(true);
    case 'A': return life->AnchorPointed(false);
    case 'p': return life->PointerIsOver(true);
    case 'P': return life->PointerIsOver(false);
    case 'n': return life->NextOpened();
    case 'N': return life->NextClosed();
    case 'm': return life->MenuOpened();
    case 'M': return life->MenuClosed();
    default: return life->TimeIsUp();
    }
}

TEST(PopUpLife, ClosesWhenThePointerHasLeftItOrDoesNotCome) {
    struct Case {
        const char* what;
        std::string steps; // capitals: left, closed; '!': time is up
        size_t closesAfter;
        bool waits; // in the end
    };
    const Case kCases[] = {
        {"nobody moves", "!!", 3, false},
        {"left for the pop-up and then left that", "ApP", 3, false},
        {"left and never come", "A!", 2, true},
        {"back on the reference in time", "Aa!", 4, false},
        {"over it when the time is up", "Ap!", 4, false},
        {"it covers the reference", "pA!P", 4, false},
        {"moves beside it before it came", "P!", 3, false},
        {"over the next one", "pnP!", 5, false},
        {"the next one has closed, and it is pointed at", "pnPpN!P", 7, false},
        {"the next one has closed, and nobody comes", "pnPN!", 5, true},
        {"the next one has closed, and the pointer comes back in time", "pnPNp!", 7, false},
        {"left before the next one came", "An!", 4, true},
        {"its menu has the pointer", "pmP!", 5, false},
        {"its menu has gone, and nobody comes", "pmPM!", 5, true},
        {"its menu has opened the next one", "pmPnM!", 7, true},
        {"left through its menu for the next one, which has closed", "pmnMN!", 6, true},
        {"its menu has gone, and the pointer is still there", "pmMp!", 6, false},
    };
    for (const Case& row : kCases) {
        PopUpLife life;
        size_t count = 0;
        bool closes = false;
        while (!closes && count < row.steps.size())
            closes = Closes(&life, row.steps[count++]);
        EXPECT_EQ(closes ? count : row.steps.size() + 1, row.closesAfter) << row.what;
        EXPECT_EQ(life.Waits(), row.waits) << row.what;
    }
    PopUpLife life(PopUpEnd::kByKey);
    for (const char step : std::string("pPA!pmPM!nN!"))
        EXPECT_FALSE(Closes(&life, step) || life.Waits()) << step;
}

} // namespace

#pragma once

#include <SupportDefs.h>

#include <vector>

// What a patrol does after so many visits.
struct PatrolStep {
    enum class Kind {
        kVisit,  // the row with this index in the list
        kFinish, // all rows have been visited
        kHalt    // the next number is missing: nothing, until the user stops the patrol
    };
    Kind kind;
    int32 row = -1;
};

// Rows are visited by their numbers, from 1 on, wherever sorting has put them. Of several rows with
// one number the last is taken.
PatrolStep NextPatrolStep(const std::vector<int32>& numbers, int32 visits);

#include "windows/PatrolPlan.h"

#include <gtest/gtest.h>

#include <climits>

TEST(PatrolPlan, TheNextNumberIsVisitedWhereverItStands) {
    using Kind = PatrolStep::Kind;
    const struct {
        std::vector<int32> numbers;
        int32 visits;
        Kind kind;
        int32 row;
    } cases[] = {
        {{}, 0, Kind::kFinish, -1},           {{1, 2, 3}, 0, Kind::kVisit, 0},
        {{3, 1, 2}, 0, Kind::kVisit, 1},      {{3, 1, 2}, 2, Kind::kVisit, 0},
        {{3, 1, 2}, 3, Kind::kFinish, -1},    {{1, 2, 4}, 1, Kind::kVisit, 1},
        {{1, 2, 4}, 2, Kind::kHalt, -1},                                       // a gap
        {{1, 2, 4}, 4, Kind::kFinish, -1},    {{1, 1, 2}, 0, Kind::kVisit, 1}, // of two the last
        {{1, 2}, INT_MAX, Kind::kFinish, -1}, {{1, 2}, -1, Kind::kHalt, -1},
    };
    for (const auto& one : cases) {
        const PatrolStep step = NextPatrolStep(one.numbers, one.visits);
        EXPECT_EQ(step.kind, one.kind) << one.visits;
        EXPECT_EQ(step.row, one.row) << one.visits;
    }
}

#include "windows/PatrolPlan.h"

PatrolStep NextPatrolStep(const std::vector<int32>& numbers, int32 visits) {
    int32 largest = 0;
    for (size_t i = numbers.size(); i-- > 0;) {
        if (numbers[i] - 1 == visits)
            return {PatrolStep::Kind::kVisit, static_cast<int32>(i)};
        largest = numbers[i] > largest ? numbers[i] : largest;
    }
    return {visits >= largest ? PatrolStep::Kind::kFinish : PatrolStep::Kind::kHalt};
}

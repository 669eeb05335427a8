#include "noise/Words.h"

namespace {

int32_t Lower(int32_t one, int32_t other) {
    if (one < 0 || other < 0)
        return one < 0 ? other : one;
    return one < other ? one : other;
}

} // namespace

void Words::Add(std::string_view word) {
    const auto number = static_cast<int32_t>(fCount++);
    uint32_t state = 0;
    for (const char c : word) {
        const auto byte = static_cast<unsigned char>(c);
        if (fStates[state].next[byte] == 0) {
            fStates[state].next[byte] = static_cast<uint32_t>(fStates.size());
            fStates.emplace_back();
        }
        state = fStates[state].next[byte];
    }
    if (state != 0)
        fStates[state].lowest = Lower(fStates[state].lowest, number);
}

// Breadth first: what a state falls back to is nearer to the start and done already.
void Words::Finish() {
    std::vector<uint32_t> queue;
    for (const uint32_t first : fStates[0].next) {
        if (first != 0)
            queue.push_back(first);
    }
    for (size_t i = 0; i < queue.size(); i++) {
        State& state = fStates[queue[i]];
        const State& back = fStates[state.back];
        state.lowest = Lower(state.lowest, back.lowest);
        for (size_t byte = 0; byte < state.next.size(); byte++) {
            uint32_t& next = state.next[byte];
            if (next == 0) {
                next = back.next[byte];
            } else {
                fStates[next].back = back.next[byte];
                queue.push_back(next);
            }
        }
    }
}

int32_t Words::FindFirst(std::string_view text) const {
    int32_t lowest = -1;
    uint32_t state = 0;
    for (const char c : text) {
        state = fStates[state].next[static_cast<unsigned char>(c)];
        lowest = Lower(lowest, fStates[state].lowest);
    }
    return lowest;
}

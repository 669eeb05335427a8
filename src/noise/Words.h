#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

// Many words looked for in one walk along a text (Aho and Corasick's automaton). Bytes are compared
// as they are. Constant once Finish has been called; then any thread.
class Words {
public:
    // Each word's number is the count of words before it. An empty word is never found.
    void Add(std::string_view word);
    void Finish();
    bool IsEmpty() const { return fCount == 0; }

    // The lowest number of the words in the text; −1 without one.
    int32_t FindFirst(std::string_view text) const;

private:
    struct State {
        std::array<uint32_t, 256> next{};
        uint32_t back = 0;   // the longest end of this state's bytes that begins a word
        int32_t lowest = -1; // of the words that end here
    };

    uint32_t fCount = 0;
    std::vector<State> fStates{State()};
};

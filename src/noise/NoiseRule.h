#pragma once

#include <cstdint>
#include <ctime>
#include <string>
#include <string_view>
#include <vector>

// What a rule looks at in a post.
enum class NoiseKind { kId, kName, kWord };

// One rule by which posts are hidden. Texts are UTF-8.
struct NoiseRule {
    NoiseKind kind = NoiseKind::kWord;
    bool isPattern = false; // a regular expression; else the text itself
    std::string text;
    std::string board; // "HOST/BOARD", where it counts; empty: everywhere
    std::string day;   // of an ID, which is one writer's for a day: "2026/11/22"; empty: every day
    int64_t hits = 0;
    time_t lastHit = 0;  // 0: never
    std::string failure; // why it is switched off; empty: it is not

    // Whether they hide the same posts.
    bool IsSame(const NoiseRule& other) const;
};

// The rules of a user.
struct NoiseRules {
    std::vector<NoiseRule> list;
    bool hidesAnswers = false; // posts that refer to hidden ones too
};

// The rules as a text file that people can read and pass on: a first line that names the format,
// then one rule a line, its parts between tabs.
std::string WriteNoiseRules(const NoiseRules& rules);

// False with a text for the user when it is no such file; lines that are no rule are passed over
// and counted.
bool ReadNoiseRules(std::string_view text, NoiseRules* rules, size_t* skipped, std::string* error);

#pragma once

#include "noise/NoiseRule.h"
#include "noise/Pattern.h"
#include "noise/Words.h"
#include "posts/PostIndex.h"

#include <atomic>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

// The rules of one board, made ready for many posts. What it finds is counted beside the rules; a
// pattern that takes too long, for one post or for many, is not asked again. Any thread, several at
// once.
class NoiseFilter {
public:
    // `board` is "HOST/BOARD". Rules that are switched off or can't be understood hide nothing.
    NoiseFilter(const NoiseRules& rules, const std::string& board);

    bool IsEmpty() const { return fIsEmpty; }
    bool HidesAnswers() const { return fRules.hidesAnswers; }

    // Whether a rule hides the post; counted only when it is asked for the first time.
    enum class Count { kNo, kYes };
    bool Hides(const PostText& post, Count count = Count::kYes) const;

    // What was found since it was made or last asked.
    struct Finding {
        const NoiseRule* rule; // lives as long as the filter
        int64_t hits;
        bool tookTooLong;
    };
    std::vector<Finding> TakeFindings() const;

private:
    // The rules of one kind.
    struct Looker {
        Words words;
        std::vector<size_t> wordRules; // by the words' numbers
        struct PatternRule {
            size_t rule;
            std::unique_ptr<Pattern> pattern;
        };
        std::vector<PatternRule> patterns;
    };

    void _Add(size_t index, const NoiseRule& rule);
    // The place of the rule that hides it; −1 without one.
    int64_t _FindIn(const Looker& looker, std::string_view text) const;
    int64_t _FindId(const PostText& post) const;
    int64_t _Find(const PostText& post) const;

    const NoiseRules fRules;
    bool fIsEmpty = true;
    std::unordered_map<std::string, size_t> fIds; // "DAY ID", or " ID" for every day
    Looker fIdLooker;
    Looker fNames;
    Looker fBodies;
    struct Tally {
        std::atomic<int64_t> hits{0};
        std::atomic<int64_t> debt{0}; // microseconds taken beyond what is fair; roughly
        std::atomic<bool> tookTooLong{false};
        std::atomic<bool> isTold{false}; // that it did
    };
    mutable std::vector<Tally> fTallies; // by the rules' places
};

#include "noise/NoiseFilter.h"

#include <algorithm>
#include <ctime>

namespace {

// Microseconds that a pattern may take for a post, again and again; beyond that, what it may take
// in all; and what one look counts at most: the machine may have stood still.
constexpr int64_t kFairTime = 20;
constexpr int64_t kPatience = 250000;
constexpr int64_t kMostOfALook = 100000;

// In microseconds. Its steps of some milliseconds add up rightly over many looks, and it costs less
// than most of these.
int64_t CoarseTime() {
    timespec time = {};
    clock_gettime(CLOCK_MONOTONIC_COARSE, &time);
    return int64_t{time.tv_sec} * 1000000 + time.tv_nsec / 1000;
}

std::string IdKey(std::string_view day, std::string_view id) {
    return std::string(day) + ' ' + std::string(id);
}

} // namespace

NoiseFilter::NoiseFilter(const NoiseRules& rules, const std::string& board)
    : fRules(rules), fTallies(rules.list.size()) {
    for (size_t i = 0; i < rules.list.size(); i++) {
        const NoiseRule& rule = rules.list[i];
        if (rule.failure.empty() && (rule.board.empty() || rule.board == board))
            _Add(i, rule);
    }
    for (Looker* looker : {&fIdLooker, &fNames, &fBodies})
        looker->words.Finish();
}

void NoiseFilter::_Add(size_t index, const NoiseRule& rule) {
    fIsEmpty = false;
    if (rule.kind == NoiseKind::kId && !rule.isPattern) {
        fIds.try_emplace(IdKey(rule.day, rule.text), index);
        return;
    }
    Looker& looker = rule.kind == NoiseKind::kId     ? fIdLooker
                     : rule.kind == NoiseKind::kName ? fNames
                                                     : fBodies;
    if (!rule.isPattern) {
        looker.words.Add(rule.text);
        looker.wordRules.push_back(index);
        return;
    }
    std::string ignored;
    if (std::unique_ptr<Pattern> pattern = Pattern::Make(rule.text, &ignored))
        looker.patterns.push_back({index, std::move(pattern)});
}

int64_t NoiseFilter::_FindId(const PostText& post) const {
    const std::string_view id = IdOf(post.date);
    if (id.empty() || fIds.empty())
        return -1;
    for (const std::string_view day : {DayOf(post.date), std::string_view()}) {
        if (const auto rule = fIds.find(IdKey(day, id)); rule != fIds.end())
            return static_cast<int64_t>(rule->second);
    }
    return -1;
}

int64_t NoiseFilter::_FindIn(const Looker& looker, std::string_view text) const {
    if (const int32_t word = looker.words.FindFirst(text); word >= 0)
        return static_cast<int64_t>(looker.wordRules[static_cast<size_t>(word)]);
    for (const Looker::PatternRule& rule : looker.patterns) {
        Tally& tally = fTallies[rule.rule];
        if (tally.tookTooLong.load(std::memory_order_relaxed))
            continue;
        const int64_t start = CoarseTime();
        const Pattern::Found found = rule.pattern->FindIn(text);
        const int64_t took = std::min(CoarseTime() - start, kMostOfALook);
        tally.debt = std::max(tally.debt + took - kFairTime, int64_t{0});
        if (found == Pattern::Found::kYes)
            return static_cast<int64_t>(rule.rule);
        if (found == Pattern::Found::kTooLong || tally.debt > kPatience)
            tally.tookTooLong = true;
    }
    return -1;
}

int64_t NoiseFilter::_Find(const PostText& post) const {
    if (const int64_t rule = _FindId(post); rule >= 0)
        return rule;
    if (const int64_t rule = _FindIn(fIdLooker, IdOf(post.date)); rule >= 0)
        return rule;
    if (const int64_t rule = _FindIn(fNames, post.name); rule >= 0)
        return rule;
    return _FindIn(fBodies, post.body);
}

bool NoiseFilter::Hides(const PostText& post, Count count) const {
    const int64_t rule = fIsEmpty ? -1 : _Find(post);
    if (rule >= 0 && count == Count::kYes)
        fTallies[static_cast<size_t>(rule)].hits.fetch_add(1, std::memory_order_relaxed);
    return rule >= 0;
}

std::vector<NoiseFilter::Finding> NoiseFilter::TakeFindings() const {
    std::vector<Finding> findings;
    for (size_t i = 0; i < fTallies.size(); i++) {
        const int64_t hits = fTallies[i].hits.exchange(0);
        const bool tookTooLong = fTallies[i].tookTooLong && !fTallies[i].isTold.exchange(true);
        if (hits != 0 || tookTooLong)
            findings.push_back({&fRules.list[i], hits, tookTooLong});
    }
    return findings;
}

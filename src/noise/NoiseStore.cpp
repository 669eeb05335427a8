#include "noise/NoiseStore.h"

#include "settings/ReplaceFile.h"

#include <Entry.h>
#include <FindDirectory.h>
#include <Path.h>

#include <algorithm>
#include <cstdio>
#include <ctime>

namespace {

constexpr const char* kFile = "2ch/NG.txt";
constexpr const char* kTooSlow = "時間がかかりすぎたので止めました";

std::string RulesFile() {
    BPath path;
    if (find_directory(B_USER_SETTINGS_DIRECTORY, &path) != B_OK || path.Append(kFile) != B_OK)
        return {};
    return path.Path();
}

NoiseRule* FindSame(std::vector<NoiseRule>* rules, const NoiseRule& rule) {
    const auto found = std::ranges::find_if(
        *rules, [&rule](const NoiseRule& other) { return other.IsSame(rule); });
    return found == rules->end() ? nullptr : &*found;
}

} // namespace

// Never destroyed: windows may ask while the process ends.
NoiseStore& NoiseStore::Shared() {
    static NoiseStore& store = *new NoiseStore;
    return store;
}

// A file that is none of ours stays beside, under another name, when rules are saved.
void NoiseStore::_Load() {
    if (fIsLoaded)
        return;
    fIsLoaded = true;
    std::string text;
    std::string error;
    size_t skipped = 0;
    const std::string file = RulesFile();
    if (ReadWholeFile(file.c_str(), &text) != B_OK)
        return;
    fIsReadable = ReadNoiseRules(text, &fRules, &skipped, &error);
    if (!fIsReadable || skipped > 0)
        fprintf(stderr, "%s: %s, %zu lines passed over\n", file.c_str(), error.c_str(), skipped);
}

status_t NoiseStore::_Save() {
    const std::string file = RulesFile();
    if (!fIsReadable)
        BEntry(file.c_str()).Rename((file + ".broken").c_str(), true);
    const status_t status = ReplaceFile(file.c_str(), WriteNoiseRules(fRules));
    fIsReadable = fIsReadable || status == B_OK;
    fHasNewCounts = fHasNewCounts && status != B_OK;
    return status;
}

std::shared_ptr<const NoiseFilter> NoiseStore::FilterFor(const std::string& board) {
    const std::lock_guard lock(fLock);
    _Load();
    if (fRules.list.empty())
        return nullptr;
    std::shared_ptr<const NoiseFilter>& filter = fFilters[board];
    if (filter == nullptr)
        filter = std::make_shared<const NoiseFilter>(fRules, board);
    return filter->IsEmpty() ? nullptr : filter;
}

NoiseRules NoiseStore::Rules() {
    const std::lock_guard lock(fLock);
    _Load();
    return fRules;
}

status_t NoiseStore::SetRules(const NoiseRules& rules) {
    const std::lock_guard lock(fLock);
    _Load();
    fRules = rules;
    fFilters.clear();
    return _Save();
}

status_t NoiseStore::Add(const NoiseRule& rule) {
    const std::lock_guard lock(fLock);
    _Load();
    if (FindSame(&fRules.list, rule) != nullptr)
        return B_OK;
    fRules.list.push_back(rule);
    fFilters.clear();
    return _Save();
}

std::vector<std::string> NoiseStore::TakeFindingsOf(const NoiseFilter& filter) {
    const std::lock_guard lock(fLock);
    std::vector<std::string> stopped;
    for (const NoiseFilter::Finding& found : filter.TakeFindings()) {
        NoiseRule* rule = FindSame(&fRules.list, *found.rule);
        if (rule == nullptr)
            continue;
        fHasNewCounts = true;
        rule->hits += found.hits;
        rule->lastHit = found.hits > 0 ? time(nullptr) : rule->lastHit;
        if (!found.tookTooLong)
            continue;
        rule->failure = kTooSlow;
        stopped.push_back(rule->text);
    }
    if (!stopped.empty())
        fFilters.clear();
    return stopped;
}

void NoiseStore::SaveCounts() {
    const std::lock_guard lock(fLock);
    if (fHasNewCounts && fIsReadable)
        _Save();
}

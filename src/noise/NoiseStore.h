#pragma once

#include "noise/NoiseFilter.h"
#include "noise/NoiseRule.h"

#include <SupportDefs.h>

#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

// The user's rules, shared by all windows and kept in the text file 2ch/NG.txt of his settings,
// which is read when somebody first asks. Any thread; no lock is held on return. Who changes rules
// tells the application (kMsgNoiseChanged): open threads follow.
class NoiseStore {
public:
    static NoiseStore& Shared();

    // The rules for a board, "HOST/BOARD", made ready; null when there are none.
    std::shared_ptr<const NoiseFilter> FilterFor(const std::string& board);

    NoiseRules Rules();
    // The file is replaced at once; B_OK, or why it could not be: then the change holds until the
    // program ends.
    status_t SetRules(const NoiseRules& rules);
    // One more; a rule that is there already is left as it is.
    status_t Add(const NoiseRule& rule);

    // Takes over what a filter has found. Rules that took too long are switched off; gives back
    // their texts.
    std::vector<std::string> TakeFindingsOf(const NoiseFilter& filter);
    // Writes down counts that have changed.
    void SaveCounts();

private:
    void _Load();
    status_t _Save();

    std::mutex fLock;
    // Guarded by fLock
    bool fIsLoaded = false;
    bool fHasNewCounts = false;
    bool fIsReadable = true; // a file of another kind is not overwritten with counts
    NoiseRules fRules;
    std::map<std::string, std::shared_ptr<const NoiseFilter>> fFilters;
};

#include "messages/Messages.h"
#include "text/html.h"
#include "workers/SubjectWorkers.h"

#include <String.h>

#include <cstdlib>

namespace {
constexpr size_t kMost = 3; // threads that the user chooses from
}

void NextThreadSearch::AddThread(int32, const char* title, const char* count, const char* dat) {
    BString decoded(title);
    ReplaceHTMLEscapeString(&decoded);
    fThreads.push_back({decoded.String(), dat, static_cast<int32>(strtol(count, nullptr, 10))});
}

void NextThreadSearch::Finish() {
    BMessage found(kMsgNextThreads);
    for (const size_t index : RankNextThreads(fThread, fThreads, kMost)) {
        found.AddString("title", fThreads[index].title.c_str());
        found.AddString("dat", fThreads[index].dat.c_str());
        found.AddInt32("count", fThreads[index].posts);
    }
    ClearProgress();
    Complete(&found);
}

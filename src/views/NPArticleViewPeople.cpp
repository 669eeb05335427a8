// The posts that came from here.
#include "views/NPArticleView.h"

#include "cache/NPCache.h"
#include "net/NPUrl.h"
#include "views/NPTextView.h"
#include "views/OwnPostStore.h"
#include "views/TickScrollView.h"

#include <algorithm>
#include <ctime>

void NPArticleView::_ShowOwnPosts() {
    const NPUrl url(fUrl.c_str());
    NPCache cache;
    if (url.Status() != 0 ||
        cache.SetTo(url.Host(), url.Board(), fDat.c_str(), NPCache::Open::kExisting) != B_OK)
        return;
    OwnPosts own = ReadOwnPosts(&cache);
    if (own.IsEmpty())
        return;
    int32 known = fPosts;
    for (const SentPost& sent : own.waiting)
        known = std::min(known, sent.known);
    if (own.Settle(fTextView->PostsBehind(known), time(nullptr)))
        WriteOwnPosts(&cache, own);
    fTextView->SetOwnPosts(own.numbers);
    fScrollView->TicksChanged();
}

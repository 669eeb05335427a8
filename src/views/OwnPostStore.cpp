#include "views/OwnPostStore.h"

#include "cache/NPCache.h"

#include <ctime>

OwnPosts ReadOwnPosts(NPCache* cache) {
    return {NumbersFromText(cache->ReadText(NPCache::kOwnPosts)),
            SentFromText(cache->ReadText(NPCache::kOwnSent))};
}

void WriteOwnPosts(NPCache* cache, const OwnPosts& own) {
    cache->WriteText(NPCache::kOwnPosts, NumbersAsText(own.numbers));
    cache->WriteText(NPCache::kOwnSent, SentAsText(own.waiting));
}

void RememberSent(const char* host, const char* board, const char* dat, const std::string& text) {
    NPCache cache(host, board, dat, NPCache::Open::kExisting);
    int32 known = 0;
    if (cache.Status() != 0 ||
        cache.ReadAttr("res_num", B_INT32_TYPE, &known, sizeof(known)) != sizeof(known))
        return;
    OwnPosts own = ReadOwnPosts(&cache);
    own.Add(text, known, time(nullptr));
    WriteOwnPosts(&cache, own);
}

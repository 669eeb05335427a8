#include "net/DownloadPlan.h"

#include <cstdlib>
#include <string>

namespace {

// A copy whose last download was cut just at its end is whole although it carries the mark: the
// server says so by having no byte behind it (RFC 9110, 14.4: "bytes */length").
bool HoldsAll(const DownloadAnswer& answer) {
    return answer.unfinished && answer.contentRange != nullptr &&
           "bytes */" + std::to_string(answer.cachedSize) == answer.contentRange;
}

} // namespace

ReadMode PlanReading(const DownloadAnswer& answer) {
    if (!answer.hasCache)
        return answer.status == 200 ? ReadMode::kNetwork : ReadMode::kError;
    switch (answer.status) {
    case 200:
    case 206: return ReadMode::kCacheThenNetwork;
    case 304: return ReadMode::kCacheOnly;
    case 416: return HoldsAll(answer) ? ReadMode::kCacheOnly : ReadMode::kError;
    default: return ReadMode::kError;
    }
}

bool IsWholeBody(const char* contentLength, int64 received, int32 lastResult) {
    if (lastResult != 0)
        return false;
    return contentLength == nullptr || strtoll(contentLength, nullptr, 10) == received;
}

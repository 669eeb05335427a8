#include "boards/Archives.h"

#include "boards/Log.h"
#include "convert/ReadCgiPage.h"
#include "convert/SameLength.h"
#include "origin/Location.h"

#include <algorithm>

namespace gate {

namespace {

std::string LinesOfDat(const Family& family, const std::string& bytes) {
    if (!LooksLikeDat(bytes))
        return {};
    std::string lines = LogOfDat(family, bytes, -1).bytes;
    if (!lines.ends_with('\n'))
        lines += '\n';
    return lines;
}

// A page that leaves posts out is not taken for the thread.
std::string LinesOfPage(const std::string& bytes, const PageMarks& marks) {
    const std::optional<ReadPage> page = ParseReadPage(bytes, marks);
    if (!page || !page->isWhole || page->posts.empty())
        return {};
    return SameLengthRewritten(LinesOfPosts(page->posts, 1, page->posts.back().number));
}

bool IsOfArchive(const KeptThread& kept) {
    return kept.source.find("://") != std::string::npos;
}

// Where a server gives a living thread as a page alone, its posts go on.
bool MayGrow(const ArchivePlace& archive) {
    return archive.isPage && archive.address.find("://{host}/") != std::string::npos;
}

} // namespace

std::optional<KeptThread> Archives::Find(const ThreadAddress& thread, Deadline deadline,
                                         std::string* failure) const {
    if (std::optional<KeptThread> kept = fShop.store.FindKept(thread.KeptName());
        kept && IsOfArchive(*kept))
        return _Grown(thread, std::move(*kept), deadline);
    size_t left = thread.family->archives.size();
    for (const ArchivePlace& archive : thread.family->archives) {
        const Deadline share = FirstPart(deadline, left--);
        if (std::optional<KeptThread> found = _Fetch(thread, archive, share, failure)) {
            fShop.store.Keep(thread.KeptName(), *found);
            return found;
        }
    }
    return std::nullopt;
}

// What is kept never changes: only what a page holds behind it is added.
KeptThread Archives::_Grown(const ThreadAddress& thread, KeptThread kept, Deadline deadline) const {
    const auto archive =
        std::ranges::find(thread.family->archives, kept.source, &ArchivePlace::address);
    if (archive == thread.family->archives.end() || !MayGrow(*archive))
        return kept;
    std::string ignored;
    const std::optional<KeptThread> now = _Fetch(thread, *archive, deadline, &ignored);
    if (!now || now->lines <= kept.lines)
        return kept;
    const int64_t held = OffsetOfLine(now->bytes, kept.lines);
    kept.bytes += now->bytes.substr(static_cast<size_t>(held));
    kept.lines = now->lines;
    kept.date = now->date;
    fShop.store.Keep(thread.KeptName(), kept);
    return kept;
}

std::optional<KeptThread> Archives::_Fetch(const ThreadAddress& thread, const ArchivePlace& archive,
                                           Deadline deadline, std::string* failure) const {
    const std::optional<Place> place = ParseAddress(FillIn(archive.address, thread));
    const Family* family = place ? fShop.settings.FindFamily(place->host) : nullptr;
    if (family == nullptr)
        return std::nullopt;
    OriginRequest request;
    request.family = family;
    request.host = place->host;
    request.path = place->path;
    request.takesCompressed = true;
    const Fetched fetched = FetchFollowing(&fShop.origin, request, deadline);
    if (fetched.head.status == 0) {
        *failure = fetched.failure;
        return std::nullopt;
    }
    if (IsChallenge(fShop.settings, fetched.head, *fetched.transfer, deadline)) {
        *failure = ChallengeText(fetched.place.host);
        return std::nullopt;
    }
    if (fetched.head.status != 200 || !fetched.failure.empty()) {
        if (fetched.head.status >= 429)
            *failure = StatusText(fetched.place.host, fetched.head.status);
        return std::nullopt;
    }
    if (fetched.transfer->WaitForEnd(deadline) != Transfer::State::kWhole) {
        *failure =
            fetched.transfer->Failure(fetched.place.host + " の過去ログを受け取りきれません");
        return std::nullopt;
    }
    const std::string body = fetched.transfer->Body();
    KeptThread kept;
    kept.source = archive.address;
    kept.bytes = archive.isPage ? LinesOfPage(body, fShop.settings.pageMarks)
                                : LinesOfDat(*thread.family, body);
    kept.lines = CountLines(kept.bytes);
    const std::string* date = fetched.head.Find("last-modified");
    kept.date = date != nullptr ? ParseHttpDate(*date) : -1;
    if (kept.date < 0)
        kept.date = time(nullptr);
    return kept.bytes.empty() ? std::nullopt : std::optional(kept);
}

} // namespace gate

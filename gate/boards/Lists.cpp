#include "boards/Lists.h"

#include "convert/SameLength.h"
#include "convert/SubjectList.h"
#include "origin/Location.h"

#include <algorithm>

namespace gate {

namespace {
constexpr size_t kMostRecent = 8;
constexpr const char* kListName = "subject.txt";
} // namespace

void Lists::Answer(const ThreadAddress& board, Responder* responder) {
    const std::string name = board.host + "/" + board.board;
    List list;
    std::string failure;
    int status = 502;
    if (!_FindRecent(name, &list)) {
        if (!_Fetch(board, &list, &failure, &status))
            return responder->Refuse(status, failure);
        _KeepRecent(name, list);
    }
    AnswerHead head;
    head.lastModified = list.date >= 0 ? list.date : time(nullptr);
    responder->Reply(head, list.bytes);
}

bool Lists::_FindRecent(const std::string& name, List* list) {
    const auto oldest =
        std::chrono::steady_clock::now() - std::chrono::seconds(fShop.settings.listSeconds);
    std::lock_guard guard(fMutex);
    std::erase_if(fRecent, [&](const auto& entry) { return entry.second.came < oldest; });
    auto found = fRecent.find(name);
    if (found == fRecent.end())
        return false;
    *list = found->second;
    return true;
}

void Lists::_KeepRecent(const std::string& name, const List& list) {
    std::lock_guard guard(fMutex);
    if (fRecent.size() >= kMostRecent)
        fRecent.erase(
            std::min_element(fRecent.begin(), fRecent.end(), [](const auto& a, const auto& b) {
                return a.second.came < b.second.came;
            }));
    fRecent[name] = list;
}

// A board that has moved before may have moved again, or back.
bool Lists::_Fetch(const ThreadAddress& board, List* list, std::string* failure,
                   int* status) const {
    const Deadline deadline = fShop.AnswerDeadline();
    const std::optional<std::string> moved = fShop.store.FindMove(board.host, board.board);
    if (moved && _FetchFrom(board, *moved, FirstPart(deadline, 2), list, failure, status))
        return true;
    return _FetchFrom(board, board.host, deadline, list, failure, status);
}

// A redirect may lead to the board's own page on its new host; its list is then asked for there.
bool Lists::_FetchFrom(const ThreadAddress& board, const std::string& host, Deadline deadline,
                       List* list, std::string* failure, int* status) const {
    OriginRequest request;
    request.family = board.family;
    request.host = host;
    request.path = "/" + board.board + "/" + kListName;
    request.takesCompressed = true;
    const std::string path = request.path;
    Fetched fetched = FetchFollowing(&fShop.origin, request, deadline);
    if (fetched.failure.empty() && fetched.place.path == "/" + board.board + "/" &&
        fetched.family == board.family && fetched.place.host != host) {
        request.host = fetched.place.host;
        fetched = FetchFollowing(&fShop.origin, request, deadline);
    }
    *failure = fetched.failure;
    if (failure->empty() && IsChallenge(fShop.settings, fetched.head, *fetched.transfer, deadline))
        *failure = ChallengeText(fetched.place.host);
    if (failure->empty() && fetched.head.status != 200) {
        *failure = StatusText(fetched.place.host, fetched.head.status);
        *status = fetched.head.status == 404 ? 404 : fetched.head.status == 429 ? 503 : 502;
    }
    if (!failure->empty())
        return false;
    if (fetched.transfer->WaitForEnd(deadline) != Transfer::State::kWhole) {
        *failure = fetched.transfer->Failure(fetched.place.host + " の応答が終わりません");
        return false;
    }
    const std::string bytes = fetched.transfer->Body();
    const std::string made = _Convert(board, bytes);
    const bool isNone = !bytes.empty() && made.find("<>") == std::string::npos;
    if (LooksLikePage(bytes) || isNone || fetched.place.path != path) {
        *failure = fetched.place.host + " がスレッド一覧ではなくページを返しました";
        return false;
    }
    if (fetched.place.host != board.host && fetched.family == board.family)
        fShop.store.SetMove(board.host, board.board, fetched.place.host);
    const std::string* date = fetched.head.Find("last-modified");
    *list = {made, date != nullptr ? ParseHttpDate(*date) : -1, std::chrono::steady_clock::now()};
    return true;
}

// The label of the charset lies often enough: the bytes tell.
std::string Lists::_Convert(const ThreadAddress& board, const std::string& bytes) {
    if (board.family->kind == FamilyKind::kRawmode)
        return SameLengthRewritten(MakeSubjectList(bytes, Charset::kEucJp));
    if (board.family->kind == FamilyKind::kOfflaw)
        return SameLengthRewritten(MakeSubjectList(bytes, Charset::kCp932));
    if (GuessCharset(bytes) == Charset::kUtf8)
        return SameLengthRewritten(MakeSubjectList(bytes, Charset::kUtf8));
    return SameLengthRewritten(bytes);
}

} // namespace gate

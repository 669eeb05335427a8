#include "boards/Boards.h"

#include "boards/CgiPages.h"
#include "boards/DatAnswer.h"
#include "front/StatusPage.h"

namespace gate {

namespace {

constexpr const char* kMenuPath = "/newbbsmenu.html";

} // namespace

void Boards::Answer(const Request& request, Responder* responder) {
    if (request.isAbsolute && request.method == "POST")
        fPosts->Answer(request, responder);
    else if (request.isAbsolute)
        _AnswerProxied(request, responder);
    else
        _AnswerOwn(request, responder);
}

void Boards::_AnswerOwn(const Request& request, Responder* responder) {
    if (request.path != "/")
        responder->Refuse(404, "ここには何もありません");
    else if (request.method == "POST")
        responder->Refuse(405, "読むだけのページです");
    else
        AnswerStatusPage(MakeStatusPage(fShop.settings, *fJournal, &fShop.store), responder);
}

void Boards::_AnswerProxied(const Request& request, Responder* responder) {
    if (request.path == kMenuPath && fShop.settings.IsPortal(request.host))
        return fMenus.Answer(responder);
    if (const auto page = ParseCgiPath(fShop.settings, request.host, request.path);
        page && page->thread.family->kind != FamilyKind::kDat)
        return fCgiThreads.AnswerPage(page->thread, page->start, responder);
    const std::optional<ThreadAddress> thread =
        ParseThreadPath(fShop.settings, request.host, request.path);
    if (!thread)
        responder->Refuse(404, "このアドレスは掲示板のものではありません");
    else if (thread->key.empty())
        fLists.Answer(*thread, responder);
    else
        _AnswerDat(*thread, request, responder);
}

void Boards::_AnswerDat(const ThreadAddress& thread, const Request& request, Responder* responder) {
    const std::optional<Wanted> wanted = ParseWanted(request);
    if (!wanted)
        return responder->Refuse(416, "この範囲は扱えません");
    ThreadAddress moved = thread;
    if (const auto host = fShop.store.FindMove(thread.host, thread.board))
        moved.server = *host;
    if (thread.family->kind != FamilyKind::kDat)
        return fCgiThreads.AnswerDat(moved, *wanted, responder);
    DatAnswer(fShop, moved, *wanted, responder).Run();
}

} // namespace gate

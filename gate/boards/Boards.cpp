#include "boards/Boards.h"

#include "boards/CgiPages.h"
#include "boards/DatAnswer.h"
#include "front/Doorkeeper.h"
#include "front/StatusPage.h"
#include "post/FormBody.h"

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
    if (request.path == "/" + fSecret + "/forget" && request.method == "POST" && !fSecret.empty())
        _ForgetCookies(request, responder);
    else if (request.path != "/")
        responder->Refuse(404, "ここには何もありません");
    else if (request.method == "POST")
        responder->Refuse(405, "読むだけのページです");
    else
        _ShowStatus(responder);
}

void Boards::_ShowStatus(Responder* responder) {
    std::vector<CookieNames> cookies;
    for (const Family& family : fShop.settings.families)
        cookies.push_back({family.name, fCookies->NamesOf(family)});
    AnswerStatusPage(MakeStatusPage(fShop.settings, *fJournal, &fShop.store, cookies, fSecret),
                     responder);
}

void Boards::_ForgetCookies(const Request& request, Responder* responder) {
    const FormPairs form = ParseFormBody(request.body);
    const Family* family = fShop.settings.FindFamilyByName(ValueOf(form, "family").value_or(""));
    if (!ComesFromOwnPage(request))
        return responder->Refuse(403, "この画面の外からは使えません");
    if (family == nullptr)
        return responder->Refuse(404, "この名前の掲示板はありません");
    fCookies->Forget(*family);
    AnswerHead head;
    head.status = 303;
    head.reason = "See Other";
    head.more = {"Location: /"};
    responder->Reply(head, "");
}

void Boards::_AnswerProxied(const Request& request, Responder* responder) {
    if (request.path == kMenuPath && fShop.settings.IsPortal(request.host))
        return fMenus.Answer(responder);
    if (const auto page = ParseCgiPath(fShop.settings, request.host, request.path)) {
        if (page->thread.family->kind != FamilyKind::kDat)
            return fCgiThreads.AnswerPage(page->thread, page->start, responder);
        return responder->Refuse(404, "この板のスレッドは .cgi ではなく .dat で読みます。板のスレッ"
                                      "ド一覧から開き直してください");
    }
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

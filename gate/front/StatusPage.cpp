#include "front/StatusPage.h"

#include "convert/Words.h"

#include <array>

namespace gate {

namespace {

constexpr const char* kStart =
    "<!DOCTYPE html>\n<html lang=\"ja\"><head><meta "
    "charset=\"utf-8\"><title>イタモリのゲート</title>\n"
    "<style>body{font:14px/1.5 sans-serif;margin:24px auto;max-width:960px;padding:0 12px;"
    "color:#222;background:#f2f2f2}table{border-collapse:collapse;width:100%;background:#fff}"
    "td,th{border:1px solid #c9cdd2;padding:4px 8px;text-align:left;overflow-wrap:anywhere}"
    "th{background:#e8eaed}td.n{text-align:right}.bad{color:#a00}h2{font-size:16px;margin:24px 0 "
    "8px}"
    "</style></head><body>\n<h1>イタモリのゲート</h1>\n"
    "<p>イタモリが今の掲示板を読むための、このコンピュータの中だけのプロキシです。</p>\n";

std::string Escaped(const std::string& text) {
    std::string escaped;
    for (const char c : text) {
        if (c == '"')
            escaped += "&quot;";
        else
            AppendEscaped(c, &escaped);
    }
    return escaped;
}

std::string Cell(const std::string& text, const char* kind = "") {
    return std::string("<td") + (*kind != '\0' ? std::string(" class=\"") + kind + "\"" : "") +
           ">" + Escaped(text) + "</td>";
}

std::string Joined(const std::vector<std::string>& texts) {
    std::string joined;
    for (const std::string& text : texts)
        joined += (joined.empty() ? "" : "、") + text;
    return joined;
}

const char* KindName(FamilyKind kind) {
    switch (kind) {
    case FamilyKind::kDat: return "dat";
    case FamilyKind::kRawmode: return "rawmode";
    case FamilyKind::kOfflaw: return "offlaw";
    }
    return "";
}

std::string FamilyRows(const Settings& settings) {
    std::string rows;
    for (const Family& family : settings.families)
        rows += "<tr>" + Cell(family.name) + Cell(Joined(family.hosts)) +
                Cell(family.usesTls ? "https" : "http") + Cell(KindName(family.kind)) +
                Cell(family.reach.empty() ? "名前で調べる" : family.reach) + "</tr>\n";
    return rows;
}

std::string LocalTime(time_t time) {
    tm local = {};
    localtime_r(&time, &local);
    std::array<char, 32> text = {};
    const size_t length = strftime(text.data(), text.size(), "%m/%d %H:%M:%S", &local);
    return {text.data(), length};
}

std::string JournalRows(const Journal& journal) {
    std::string rows;
    for (const Journal::Entry& entry : journal.Last())
        rows += "<tr>" + Cell(LocalTime(entry.time)) + Cell(entry.request) +
                Cell(std::to_string(entry.status) + " " + entry.reason,
                     entry.status >= 400 ? "bad" : "") +
                Cell(std::to_string(entry.bytes), "n") +
                Cell(std::to_string(entry.milliseconds) + " ms", "n") + "</tr>\n";
    return rows;
}

std::string KeptRows(Store* store) {
    std::string rows;
    for (const KeptSummary& kept : store->ListKept())
        rows += "<tr>" + Cell(kept.thread) + Cell(kept.source) +
                Cell(std::to_string(kept.lines), "n") + Cell(std::to_string(kept.size), "n") +
                "</tr>\n";
    return rows;
}

std::string CookieRows(const std::vector<CookieNames>& cookies, const std::string& secret) {
    std::string rows;
    for (const CookieNames& family : cookies) {
        if (!family.names.empty())
            rows += "<tr>" + Cell(family.family) + Cell(Joined(family.names)) +
                    "<td><form method=\"post\" action=\"/" + secret +
                    "/forget\"><input type=\"hidden\" name=\"family\" value=\"" +
                    Escaped(family.family) + "\"><button>消す</button></form></td></tr>\n";
    }
    return rows;
}

std::string Table(const char* title, const char* heads, const std::string& rows) {
    const std::string head = std::string("<h2>") + title + "</h2>\n";
    if (rows.empty())
        return head + "<p>まだありません。</p>\n";
    return head + "<table><tr>" + heads + "</tr>\n" + rows + "</table>\n";
}

} // namespace

std::string MakeStatusPage(const Settings& settings, const Journal& journal, Store* store,
                           const std::vector<CookieNames>& cookies, const std::string& secret) {
    return kStart + ("<p>設定ファイル: " + Escaped(Joined(settings.files)) + "</p>\n") +
           Table("掲示板", "<th>名前<th>ホスト<th>通信<th>方式<th>接続先", FamilyRows(settings)) +
           Table("Cookie", "<th>掲示板<th>名前<th>", CookieRows(cookies, secret)) +
           Table("最近の応答", "<th>時刻<th>要求<th>応答<th>バイト<th>時間", JournalRows(journal)) +
           Table("保存したスレッド", "<th>スレッド<th>取得元<th>行<th>バイト", KeptRows(store)) +
           "</body></html>\n";
}

// Nothing outside may be loaded, no other page may show this one in a frame or read it. Without any
// referrer browsers would call the origin of its own forms "null".
void AnswerStatusPage(const std::string& page, Responder* responder) {
    AnswerHead head;
    head.type = "text/html; charset=utf-8";
    head.more = {kSafePagePolicy,
                 "Cross-Origin-Resource-Policy: same-origin",
                 "Cross-Origin-Opener-Policy: same-origin",
                 "X-Content-Type-Options: nosniff",
                 "X-Frame-Options: DENY",
                 "Referrer-Policy: same-origin",
                 "Cache-Control: no-store"};
    responder->Reply(head, page);
}

} // namespace gate

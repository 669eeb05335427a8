#include "store/Store.h"

namespace gate {

namespace {

using Query = Database::Query;

constexpr const char* kPagePort = "page port";

} // namespace

std::vector<std::pair<int64_t, KeptPost>> Store::ListPosts() {
    std::lock_guard guard(fMutex);
    std::vector<std::pair<int64_t, KeptPost>> list;
    Query query(&fDatabase,
                "SELECT number, asked, host, server, board, key, name, mail, message, state, "
                "changed, first_sent, secret, page, charset, action_host, action_path, "
                "answered_host, answered_path FROM posts ORDER BY number");
    while (query.Step())
        list.emplace_back(query.Number(0),
                          KeptPost{query.Text(1), query.Text(2), query.Text(3), query.Text(4),
                                   query.Text(5), query.Text(6), query.Text(7), query.Text(8),
                                   query.Number(9), query.Number(10), query.Number(11),
                                   query.Text(12), query.Text(13), query.Number(14), query.Text(15),
                                   query.Text(16), query.Text(17), query.Text(18)});
    return list;
}

int64_t Store::KeepPost(int64_t number, const KeptPost& post) {
    std::lock_guard guard(fMutex);
    Query query(&fDatabase, "INSERT OR REPLACE INTO posts VALUES(NULLIF(?, 0), ?, ?, ?, ?, ?, ?, "
                            "?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)");
    query.Bind(number);
    for (const std::string* text : {&post.asked, &post.host, &post.server, &post.board, &post.key})
        query.Bind(*text);
    for (const std::string* bytes : {&post.name, &post.mail, &post.message})
        query.BindBytes(*bytes);
    query.Bind(post.state).Bind(post.changed).Bind(post.firstSent).Bind(post.secret);
    query.BindBytes(post.page).Bind(post.charset);
    for (const std::string* text :
         {&post.actionHost, &post.actionPath, &post.answeredHost, &post.answeredPath})
        query.Bind(*text);
    return query.Run() ? fDatabase.LastRow() : number;
}

void Store::DropPost(int64_t number) {
    std::lock_guard guard(fMutex);
    Query(&fDatabase, "DELETE FROM posts WHERE number = ?").Bind(number).Run();
}

int Store::PagePort() {
    std::lock_guard guard(fMutex);
    Query query(&fDatabase, "SELECT value FROM numbers WHERE name = ?");
    return query.Bind(kPagePort).Step() ? static_cast<int>(query.Number(0)) : 0;
}

void Store::SetPagePort(int port) {
    std::lock_guard guard(fMutex);
    Query(&fDatabase, "INSERT OR REPLACE INTO numbers VALUES(?, ?)")
        .Bind(kPagePort)
        .Bind(int64_t{port})
        .Run();
}

} // namespace gate

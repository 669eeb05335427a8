#include "store/Store.h"

namespace gate {

namespace {

using Query = Database::Query;

// Every table that a version of the gate has made is still read by the next.
constexpr const char* kTables = R"(
CREATE TABLE IF NOT EXISTS moves(host TEXT, board TEXT, new_host TEXT, PRIMARY KEY(host, board));
CREATE TABLE IF NOT EXISTS lengths(id INTEGER PRIMARY KEY, thread TEXT, length INTEGER,
    source TEXT, start INTEGER, lines INTEGER, UNIQUE(thread, length));
CREATE TABLE IF NOT EXISTS dates(id INTEGER PRIMARY KEY, thread TEXT, date INTEGER,
    UNIQUE(thread, date));
CREATE TABLE IF NOT EXISTS kept(thread TEXT PRIMARY KEY, source TEXT, bytes BLOB, lines INTEGER,
    date INTEGER);
CREATE TABLE IF NOT EXISTS menus(address TEXT PRIMARY KEY, bytes BLOB);
CREATE TABLE IF NOT EXISTS cookies(id INTEGER PRIMARY KEY, family TEXT, name TEXT, value BLOB,
    domain TEXT, path TEXT, host_alone INTEGER, secure INTEGER, expires INTEGER, created INTEGER);
CREATE TABLE IF NOT EXISTS posts(number INTEGER PRIMARY KEY AUTOINCREMENT, asked TEXT, host TEXT,
    server TEXT, board TEXT, key TEXT, name BLOB, mail BLOB, message BLOB, state INTEGER,
    changed INTEGER, first_sent INTEGER, secret TEXT, page BLOB, charset INTEGER, action_host TEXT,
    action_path TEXT, answered_host TEXT, answered_path TEXT);
CREATE TABLE IF NOT EXISTS numbers(name TEXT PRIMARY KEY, value INTEGER);
)";

constexpr Seconds kNoEnd = -1;

bool AddCookie(Database* database, const std::string& family, const Cookie& cookie) {
    return Query(database, "INSERT INTO cookies(family, name, value, domain, path, host_alone, "
                           "secure, expires, created) VALUES(?, ?, ?, ?, ?, ?, ?, ?, ?)")
        .Bind(family)
        .BindBytes(cookie.name)
        .BindBytes(cookie.value)
        .Bind(cookie.domain)
        .BindBytes(cookie.path)
        .Bind(int64_t{cookie.isOfHostAlone})
        .Bind(int64_t{cookie.isSecure})
        .Bind(cookie.expires.value_or(kNoEnd))
        .Bind(cookie.created)
        .Run();
}

} // namespace

Store::Store(const std::string& file) : fDatabase(file) {
    fDatabase.Execute(kTables);
}

std::optional<std::string> Store::FindMove(const std::string& host, const std::string& board) {
    std::lock_guard guard(fMutex);
    Query query(&fDatabase, "SELECT new_host FROM moves WHERE host = ? AND board = ?");
    return query.Bind(host).Bind(board).Step() ? std::optional(query.Text(0)) : std::nullopt;
}

void Store::SetMove(const std::string& host, const std::string& board, const std::string& newHost) {
    std::lock_guard guard(fMutex);
    Query(&fDatabase, "INSERT OR REPLACE INTO moves VALUES(?, ?, ?)")
        .Bind(host)
        .Bind(board)
        .Bind(newHost)
        .Run();
}

std::optional<GivenLength> Store::FindLength(const std::string& thread, int64_t length) {
    std::lock_guard guard(fMutex);
    Query query(&fDatabase,
                "SELECT source, start, lines FROM lengths WHERE thread = ? AND length = ?");
    if (!query.Bind(thread).Bind(length).Step())
        return std::nullopt;
    return GivenLength{length, query.Text(0), query.Number(1), query.Number(2)};
}

// A program that has been given the newest length asks for it or for one shortly before it: of a
// thread only the last lengths stay.
void Store::AddLength(const std::string& thread, const GivenLength& given) {
    std::lock_guard guard(fMutex);
    Query(&fDatabase, "INSERT OR REPLACE INTO lengths(thread, length, source, start, lines) "
                      "VALUES(?, ?, ?, ?, ?)")
        .Bind(thread)
        .Bind(given.length)
        .Bind(given.source)
        .Bind(given.offset)
        .Bind(given.lines)
        .Run();
    Query(&fDatabase, "DELETE FROM lengths WHERE thread = ?1 AND id NOT IN (SELECT id FROM lengths "
                      "WHERE thread = ?1 ORDER BY id DESC LIMIT 64)")
        .Bind(thread)
        .Run();
}

bool Store::IsPlain(const std::string& thread, const std::string& source) {
    std::lock_guard guard(fMutex);
    Query query(&fDatabase, "SELECT 1 FROM lengths WHERE thread = ? AND (source != ? OR "
                            "start != length) LIMIT 1");
    return !query.Bind(thread).Bind(source).Step();
}

bool Store::WasEverGiven(const std::string& thread) {
    std::lock_guard guard(fMutex);
    Query query(&fDatabase, "SELECT 1 FROM lengths WHERE thread = ? LIMIT 1");
    return query.Bind(thread).Step();
}

bool Store::WasGiven(const std::string& thread, time_t date) {
    std::lock_guard guard(fMutex);
    Query query(&fDatabase, "SELECT 1 FROM dates WHERE thread = ? AND date = ?");
    return query.Bind(thread).Bind(date).Step();
}

void Store::AddDate(const std::string& thread, time_t date) {
    std::lock_guard guard(fMutex);
    Query(&fDatabase, "INSERT OR REPLACE INTO dates(thread, date) VALUES(?, ?)")
        .Bind(thread)
        .Bind(date)
        .Run();
    Query(&fDatabase, "DELETE FROM dates WHERE thread = ?1 AND id NOT IN (SELECT id FROM dates "
                      "WHERE thread = ?1 ORDER BY id DESC LIMIT 16)")
        .Bind(thread)
        .Run();
}

std::optional<KeptThread> Store::FindKept(const std::string& thread) {
    std::lock_guard guard(fMutex);
    Query query(&fDatabase, "SELECT source, bytes, lines, date FROM kept WHERE thread = ?");
    if (!query.Bind(thread).Step())
        return std::nullopt;
    return KeptThread{query.Text(0), query.Text(1), query.Number(2), query.Number(3)};
}

bool Store::Keep(const std::string& thread, const KeptThread& kept) {
    std::lock_guard guard(fMutex);
    return Query(&fDatabase, "INSERT OR REPLACE INTO kept VALUES(?, ?, ?, ?, ?)")
        .Bind(thread)
        .Bind(kept.source)
        .BindBytes(kept.bytes)
        .Bind(kept.lines)
        .Bind(static_cast<int64_t>(kept.date))
        .Run();
}

std::vector<KeptSummary> Store::ListKept() {
    std::lock_guard guard(fMutex);
    std::vector<KeptSummary> list;
    Query query(&fDatabase,
                "SELECT thread, source, lines, length(bytes) FROM kept ORDER BY thread LIMIT 1000");
    while (query.Step())
        list.push_back({query.Text(0), query.Text(1), query.Number(2), query.Number(3)});
    return list;
}

std::optional<std::string> Store::FindMenu(const std::string& address) {
    std::lock_guard guard(fMutex);
    Query query(&fDatabase, "SELECT bytes FROM menus WHERE address = ?");
    return query.Bind(address).Step() ? std::optional(query.Text(0)) : std::nullopt;
}

void Store::SetMenu(const std::string& address, const std::string& bytes) {
    std::lock_guard guard(fMutex);
    Query(&fDatabase, "INSERT OR REPLACE INTO menus VALUES(?, ?)")
        .Bind(address)
        .BindBytes(bytes)
        .Run();
}

std::vector<Cookie> Store::ListCookies(const std::string& family) {
    std::lock_guard guard(fMutex);
    std::vector<Cookie> all;
    Query query(&fDatabase, "SELECT name, value, domain, path, host_alone, secure, expires, "
                            "created FROM cookies WHERE family = ? ORDER BY id");
    query.Bind(family);
    while (query.Step()) {
        Cookie cookie{query.Text(0),        query.Text(1),        query.Text(2),   query.Text(3),
                      query.Number(4) != 0, query.Number(5) != 0, query.Number(6), query.Number(7)};
        if (cookie.expires == kNoEnd)
            cookie.expires.reset();
        all.push_back(std::move(cookie));
    }
    return all;
}

bool Store::SetCookies(const std::string& family, const std::vector<Cookie>& all) {
    std::lock_guard guard(fMutex);
    if (!fDatabase.Execute("BEGIN"))
        return false;
    bool isGood = Query(&fDatabase, "DELETE FROM cookies WHERE family = ?").Bind(family).Run();
    for (const Cookie& cookie : all)
        isGood = isGood && AddCookie(&fDatabase, family, cookie);
    if (isGood && fDatabase.Execute("COMMIT"))
        return true;
    fDatabase.Execute("ROLLBACK");
    return false;
}

bool Store::ForgetCookies(const std::string& family) {
    return SetCookies(family, {});
}

} // namespace gate

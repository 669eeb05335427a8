#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

namespace gate {

// One SQLite file, open as long as this lives. What can't be written is told once on standard error
// and costs nothing else: a full disk must leave reading going. For one thread at a time.
class Database {
public:
    // The file is made for its user alone. A file that is no database is set aside as NAME.broken;
    // where none can be made, or another program has it for itself, everything stands in memory
    // until the end.
    explicit Database(const std::string& file);
    ~Database();
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    bool Execute(const char* statements);
    bool IsOnDisk() const { return fIsOnDisk; }
    int64_t LastRow() const; // that was inserted

    // A prepared statement, bound in order: Query(db, "…?…?").Bind(host).Bind(7).
    class Query {
    public:
        Query(Database* database, const char* text);
        ~Query();
        Query(const Query&) = delete;
        Query& operator=(const Query&) = delete;

        Query& Bind(std::string_view text); // outlives the query
        Query& BindBytes(std::string_view bytes);
        Query& Bind(int64_t number);
        bool Step(); // whether there is a row
        bool Run();  // false when it could not be written
        std::string Text(int column) const;
        int64_t Number(int column) const;

    private:
        Database* fDatabase;
        sqlite3_stmt* fStatement = nullptr;
        int fBound = 0;
    };

private:
    int _Open(const std::string& file); // SQLite's own word for how it went
    void _Complain();

    sqlite3* fHandle = nullptr;
    bool fIsOnDisk = false;
    bool fHasComplained = false;
};

} // namespace gate

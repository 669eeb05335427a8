#include "store/Database.h"

#include <fcntl.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>

namespace gate {

namespace {
constexpr int kPatience = 2000; // milliseconds for another gate's writing to end
}

Database::Database(const std::string& file) {
    int result = _Open(file);
    if (result == SQLITE_NOTADB || result == SQLITE_CORRUPT) {
        fprintf(stderr, "%s can't be read and is set aside\n", file.c_str());
        rename(file.c_str(), (file + ".broken").c_str());
        result = _Open(file);
    }
    fIsOnDisk = result == SQLITE_OK;
    if (!fIsOnDisk) {
        fprintf(stderr, "%s can't be used now (%s): nothing is kept beyond the end\n", file.c_str(),
                sqlite3_errstr(result));
        _Open(":memory:");
    }
}

Database::~Database() {
    sqlite3_close(fHandle);
}

// The file is made here, since SQLite would let others read it; what it writes beside takes the
// same mode.
int Database::_Open(const std::string& file) {
    const bool isFile = file != ":memory:";
    const int made = isFile ? open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600) : -1;
    if (isFile && (made < 0 || fchmod(made, 0600) != 0 || close(made) != 0))
        return SQLITE_CANTOPEN;
    sqlite3_close(fHandle);
    fHandle = nullptr;
    if (const int result = sqlite3_open(file.c_str(), &fHandle); result != SQLITE_OK)
        return result;
    sqlite3_busy_timeout(fHandle, kPatience);
    // With a log beside it a killed writer leaves the last whole state.
    return sqlite3_exec(fHandle,
                        "PRAGMA journal_mode=WAL; PRAGMA synchronous=NORMAL;"
                        "PRAGMA journal_size_limit=1048576; PRAGMA cache_size=-512;"
                        "SELECT count(*) FROM sqlite_master",
                        nullptr, nullptr, nullptr);
}

bool Database::Execute(const char* statements) {
    if (sqlite3_exec(fHandle, statements, nullptr, nullptr, nullptr) == SQLITE_OK)
        return true;
    _Complain();
    return false;
}

int64_t Database::LastRow() const {
    return sqlite3_last_insert_rowid(fHandle);
}

void Database::_Complain() {
    if (!fHasComplained)
        fprintf(stderr, "the store can't be written: %s\n", sqlite3_errmsg(fHandle));
    fHasComplained = true;
}

Database::Query::Query(Database* database, const char* text) : fDatabase(database) {
    if (sqlite3_prepare_v2(database->fHandle, text, -1, &fStatement, nullptr) != SQLITE_OK)
        database->_Complain();
}

Database::Query::~Query() {
    sqlite3_finalize(fStatement);
}

Database::Query& Database::Query::Bind(std::string_view text) {
    sqlite3_bind_text(fStatement, ++fBound, text.data(), static_cast<int>(text.size()),
                      SQLITE_STATIC);
    return *this;
}

Database::Query& Database::Query::BindBytes(std::string_view bytes) {
    sqlite3_bind_blob(fStatement, ++fBound, bytes.data(), static_cast<int>(bytes.size()),
                      SQLITE_STATIC);
    return *this;
}

Database::Query& Database::Query::Bind(int64_t number) {
    sqlite3_bind_int64(fStatement, ++fBound, number);
    return *this;
}

bool Database::Query::Step() {
    return sqlite3_step(fStatement) == SQLITE_ROW;
}

bool Database::Query::Run() {
    const bool isDone = sqlite3_step(fStatement) == SQLITE_DONE;
    if (isDone)
        fDatabase->fHasComplained = false;
    else
        fDatabase->_Complain();
    return isDone;
}

std::string Database::Query::Text(int column) const {
    const void* bytes = sqlite3_column_blob(fStatement, column);
    const int size = sqlite3_column_bytes(fStatement, column);
    return bytes == nullptr
               ? std::string()
               : std::string(static_cast<const char*>(bytes), static_cast<size_t>(size));
}

int64_t Database::Query::Number(int column) const {
    return sqlite3_column_int64(fStatement, column);
}

} // namespace gate

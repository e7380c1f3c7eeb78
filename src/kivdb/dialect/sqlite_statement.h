#pragma once
// One statement on the embedded engine, prepared from a text and finalized on every path:
// the one way the library and its tests run SQL on SQLite directly.
#include "base/error.h"

#include <QString>
#include <QtGlobal>

struct sqlite3;
struct sqlite3_stmt;

namespace kivdb::dialect {

// An error of the embedded engine: its message in the server's words where the dialect knows
// them (serverMessage), its kind by the engine's result code (engineErrorKind).
class EngineError : public Error {
public:
    // The last error of the connection.
    explicit EngineError(sqlite3* db);
};

class SqliteStatement {
public:
    // Prepares the statement at `next` and moves `next` past it (to `end` when it fails).
    // Blank text and comments prepare to no statement at all (false). The text must be
    // NUL-terminated at `end`: the length given includes the terminator, which spares SQLite
    // a copy of the rest of the text for every statement (a text of many statements would
    // cost its square). Throws EngineError.
    SqliteStatement(sqlite3* db, const char*& next, const char* end);
    // The first statement of a NUL-terminated text.
    SqliteStatement(sqlite3* db, const char* sql);
    ~SqliteStatement();
    SqliteStatement(const SqliteStatement&) = delete;
    SqliteStatement& operator=(const SqliteStatement&) = delete;
    SqliteStatement(SqliteStatement&& other) noexcept;
    SqliteStatement& operator=(SqliteStatement&& other) noexcept;

    // Takes over a statement prepared before (one kept for reuse), to finalize or release.
    SqliteStatement(sqlite3* db, sqlite3_stmt* prepared) : db_(db), stmt_(prepared) {}

    explicit operator bool() const { return stmt_ != nullptr; }
    sqlite3_stmt* get() const { return stmt_; }
    // Hands the statement over to the caller, who finalizes it.
    sqlite3_stmt* release();

    // Parameters count from 1, as in the text (?1).
    void bind(int index, const QString& text);
    void bind(int index, qint64 value);

    // Runs to the next row: true on a row, false when the statement is done. Throws
    // EngineError when it fails.
    bool step();

    int columnCount() const;
    QString text(int column) const;  // null reads as ""
    qint64 integer(int column) const;
    double real(int column) const;

private:
    sqlite3* db_;
    sqlite3_stmt* stmt_ = nullptr;
};

}  // namespace kivdb::dialect

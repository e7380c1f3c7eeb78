#include "dialect/sqlite_statement.h"

#include "dialect/dialect.h"
#include "dialect/sqlite_catalog.h"

#include <sqlite3.h>
#include <cstring>
#include <utility>

namespace kivdb::dialect {

EngineError::EngineError(sqlite3* db)
    : Error(serverMessage(QString::fromUtf8(sqlite3_errmsg(db))).toStdString(),
            engineErrorKind(sqlite3_extended_errcode(db))) {}

namespace {

// Prepares, making sysobjects first when the text names it and a rollback took it away.
int prepare(sqlite3* db, const char* sql, int bytes, sqlite3_stmt** stmt, const char** tail) {
    const int rc = sqlite3_prepare_v2(db, sql, bytes, stmt, tail);
    if (rc != SQLITE_ERROR || qstricmp(sqlite3_errmsg(db), "no such table: sysobjects") != 0) return rc;
    createSysobjects(db);
    return sqlite3_prepare_v2(db, sql, bytes, stmt, tail);
}

}  // namespace

SqliteStatement::SqliteStatement(sqlite3* db, const char*& next, const char* end) : db_(db) {
    const char* tail = end;
    if (prepare(db, next, int(end - next) + 1, &stmt_, &tail) != SQLITE_OK) {
        next = end;
        throw EngineError(db);
    }
    next = tail;
}

SqliteStatement::SqliteStatement(sqlite3* db, const char* sql) : db_(db) {
    if (prepare(db, sql, int(std::strlen(sql)) + 1, &stmt_, nullptr) != SQLITE_OK) throw EngineError(db);
}

SqliteStatement::~SqliteStatement() { sqlite3_finalize(stmt_); }

sqlite3_stmt* SqliteStatement::release() { return std::exchange(stmt_, nullptr); }

SqliteStatement::SqliteStatement(SqliteStatement&& other) noexcept
    : db_(other.db_), stmt_(std::exchange(other.stmt_, nullptr)) {}

SqliteStatement& SqliteStatement::operator=(SqliteStatement&& other) noexcept {
    if (this != &other) {
        sqlite3_finalize(stmt_);
        db_ = other.db_;
        stmt_ = std::exchange(other.stmt_, nullptr);
    }
    return *this;
}

void SqliteStatement::bind(int index, const QString& text) {
    const QByteArray utf8 = text.toUtf8();
    if (sqlite3_bind_text(stmt_, index, utf8.constData(), int(utf8.size()), SQLITE_TRANSIENT) != SQLITE_OK)
        throw EngineError(db_);
}

void SqliteStatement::bind(int index, qint64 value) {
    if (sqlite3_bind_int64(stmt_, index, value) != SQLITE_OK) throw EngineError(db_);
}

bool SqliteStatement::step() {
    const int rc = sqlite3_step(stmt_);
    if (rc == SQLITE_ROW) return true;
    if (rc == SQLITE_DONE) return false;
    throw EngineError(db_);
}

int SqliteStatement::columnCount() const { return sqlite3_column_count(stmt_); }

QString SqliteStatement::text(int column) const {
    return QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(stmt_, column)),
                             sqlite3_column_bytes(stmt_, column));
}

qint64 SqliteStatement::integer(int column) const { return sqlite3_column_int64(stmt_, column); }

double SqliteStatement::real(int column) const { return sqlite3_column_double(stmt_, column); }

}  // namespace kivdb::dialect

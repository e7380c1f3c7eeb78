#pragma once
// For the dialect's tests: an in-memory embedded database with the runtime registered, that
// runs T-SQL through the translator and answers rows as "a|b|c" strings (NULL as "NULL").
#include "dialect/dialect.h"
#include "dialect/sqlite_catalog.h"
#include "dialect/sqlite_statement.h"

#include <QStringList>
#include <memory>
#include <sqlite3.h>
#include <string>

namespace kivdb::testing {

// Whether a statement on the connection was stepped and not reset: one left running holds
// the file's lock. Statements kept prepared for reuse, reset, do not count.
inline bool statementRunning(sqlite3* db) {
    for (sqlite3_stmt* s = sqlite3_next_stmt(db, nullptr); s; s = sqlite3_next_stmt(db, s))
        if (sqlite3_stmt_busy(s)) return true;
    return false;
}

class SqliteTestDb {
public:
    SqliteTestDb() {
        sqlite3_open(":memory:", &db_);
        dialect::registerRuntime(db_);
        catalog_ = std::make_unique<dialect::SqliteCatalog>(db_);
    }
    // Over a database another owner opened with the runtime registered (an embedded
    // connection's); not closed here.
    explicit SqliteTestDb(sqlite3* borrowed) : db_(borrowed), owned_(false) {
        catalog_ = std::make_unique<dialect::SqliteCatalog>(db_);
    }
    ~SqliteTestDb() {
        if (owned_) sqlite3_close(db_);
    }
    SqliteTestDb(const SqliteTestDb&) = delete;
    SqliteTestDb& operator=(const SqliteTestDb&) = delete;

    sqlite3* handle() const { return db_; }
    const dialect::Catalog& catalog() const { return *catalog_; }

    // Translates and runs; rows of the last statement that returned any. Throws dialect::SqlError
    // from the translator, dialect::EngineError from the engine.
    QStringList run(const QString& tsql) { return runSqlite(dialect::translateToSqlite(tsql, *catalog_)); }

    // The rows a statement answers, or its error as the one line "error: <message>", so a
    // table of cases compares either with one expectation.
    QStringList answer(const QString& tsql) {
        try {
            return run(tsql);
        } catch (const std::exception& e) {
            return {QStringLiteral("error: ") + QString::fromUtf8(e.what())};
        }
    }

    // The error a statement raises, from the translator or the engine; empty when it runs.
    std::string errorOf(const QString& tsql) {
        try {
            run(tsql);
        } catch (const std::exception& e) {
            return e.what();
        }
        return {};
    }

    // Runs each batch of a script.
    void script(const QString& text) {
        for (const QString& batch : dialect::splitBatches(text)) run(batch);
    }

    // Throws dialect::EngineError with the engine's message in the server's words.
    QStringList runSqlite(const QString& sql) {
        const QByteArray utf8 = sql.toUtf8();
        const char* next = utf8.constData();
        const char* const end = next + utf8.size();
        QStringList rows;
        try {
            while (next < end) {
                dialect::SqliteStatement stmt(db_, next, end);
                if (!stmt) continue;
                QStringList current;
                while (stmt.step()) {
                    QStringList cells;
                    for (int i = 0; i < stmt.columnCount(); ++i) cells << cell(stmt, i);
                    current << cells.join(QLatin1Char('|'));
                }
                if (!current.isEmpty()) rows = current;
            }
        } catch (...) {
            catalog_->invalidate();
            throw;
        }
        catalog_->invalidate();
        return rows;
    }

private:
    sqlite3* db_ = nullptr;
    bool owned_ = true;
    std::unique_ptr<dialect::SqliteCatalog> catalog_;

    static QString cell(const dialect::SqliteStatement& stmt, int i) {
        switch (sqlite3_column_type(stmt.get(), i)) {
        case SQLITE_NULL: return QStringLiteral("NULL");
        case SQLITE_INTEGER: return QString::number(stmt.integer(i));
        case SQLITE_FLOAT: return QString::number(stmt.real(i), 'g', 12);
        default: return stmt.text(i);
        }
    }
};

}  // namespace kivdb::testing

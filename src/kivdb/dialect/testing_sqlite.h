#pragma once
// Test helper: an in-memory embedded database with the runtime registered, that runs T-SQL
// through the translator and answers rows as "a|b|c" strings (NULL as "NULL").
#include "dialect/dialect.h"
#include "dialect/sqlite_catalog.h"

#include <QStringList>
#include <memory>
#include <sqlite3.h>
#include <stdexcept>
#include <string>

namespace kivdb::dialect::testing {

class SqliteTestDb {
public:
    SqliteTestDb() {
        sqlite3_open(":memory:", &db_);
        registerRuntime(db_);
        catalog_ = std::make_unique<SqliteCatalog>(db_);
    }
    // Over a database another owner opened with the runtime registered (an embedded
    // connection's); not closed here.
    explicit SqliteTestDb(sqlite3* borrowed) : db_(borrowed), owned_(false) {
        catalog_ = std::make_unique<SqliteCatalog>(db_);
    }
    ~SqliteTestDb() {
        if (owned_) sqlite3_close(db_);
    }
    SqliteTestDb(const SqliteTestDb&) = delete;
    SqliteTestDb& operator=(const SqliteTestDb&) = delete;

    sqlite3* handle() const { return db_; }
    const Catalog& catalog() const { return *catalog_; }

    // Translates and runs; rows of the last statement that returned any. Throws SqlError
    // from the translator, std::runtime_error with SQLite's message from the engine.
    QStringList run(const QString& tsql) { return runSqlite(translateToSqlite(tsql, *catalog_)); }

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
        for (const QString& batch : splitBatches(text)) run(batch);
    }

    QStringList runSqlite(const QString& sql) {
        const QByteArray utf8 = sql.toUtf8();
        const char* tail = utf8.constData();
        QStringList rows;
        while (tail && *tail) {
            sqlite3_stmt* stmt = nullptr;
            if (sqlite3_prepare_v2(db_, tail, -1, &stmt, &tail) != SQLITE_OK) fail();
            if (!stmt) break;
            QStringList current;
            int rc;
            while ((rc = sqlite3_step(stmt)) == SQLITE_ROW) {
                QStringList cells;
                for (int i = 0; i < sqlite3_column_count(stmt); ++i) cells << cell(stmt, i);
                current << cells.join(QLatin1Char('|'));
            }
            sqlite3_finalize(stmt);
            if (rc != SQLITE_DONE) fail();
            if (!current.isEmpty()) rows = current;
        }
        catalog_->invalidate();
        return rows;
    }

private:
    sqlite3* db_ = nullptr;
    bool owned_ = true;
    std::unique_ptr<SqliteCatalog> catalog_;

    [[noreturn]] void fail() {
        catalog_->invalidate();
        throw std::runtime_error(serverMessage(QString::fromUtf8(sqlite3_errmsg(db_))).toStdString());
    }

    static QString cell(sqlite3_stmt* stmt, int i) {
        switch (sqlite3_column_type(stmt, i)) {
        case SQLITE_NULL: return QStringLiteral("NULL");
        case SQLITE_INTEGER: return QString::number(sqlite3_column_int64(stmt, i));
        case SQLITE_FLOAT: return QString::number(sqlite3_column_double(stmt, i), 'g', 12);
        default: return QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(stmt, i)));
        }
    }
};

}  // namespace kivdb::dialect::testing

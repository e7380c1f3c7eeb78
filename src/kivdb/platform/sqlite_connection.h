#pragma once
// The embedded database: a SQLite 3 file that runs the suite's T-SQL through the dialect
// layer. Stored procedures come from the embedded procedure registry.
#include "dialect/sqlite_catalog.h"
#include "platform/connection.h"

#include <QSet>
#include <QStringList>
#include "connection_support.h"  // internal to the platform: by file name
#include "statement_cache.h"


struct sqlite3;

namespace kivdb {

class SqliteConnection final : public Connection {
public:
    // A missing file is an error for ordinary use, so a mistyped path never leaves an empty
    // database behind; only creating a database (kivdb init) asks for CreateIfMissing.
    enum class OpenMode { ExistingFile, CreateIfMissing };

    // path ":memory:" opens a private in-memory database. Throws DatabaseError.
    SqliteConnection(const QString& path, OpenMode mode);
    ~SqliteConnection() override;

    bool inTransaction() const override;
    Backend backend() const override { return Backend::Embedded; }

    // The SQLite text a T-SQL statement runs as. Throws DatabaseError.
    QString translate(const QString& tsql);

    // The user table `name` stands for, as the schema spells it (names compare without
    // regard to case, as the server's do); nullopt when there is none. Temporary tables, the
    // engine's own tables and views are no user tables. Throws DatabaseError.
    std::optional<QString> userTableName(const QString& name);
    // The columns of a table as the schema has them now (one made a moment ago included);
    // empty when there is no such table. Throws DatabaseError.
    std::vector<dialect::CatalogColumn> tableColumns(const QString& table);

    // The primary key columns of a user table in key order; empty when it has none or there
    // is no such table. Throws DatabaseError.
    QStringList primaryKey(const QString& table);

    // For the platform and tests; the library's other layers go through the calls above.
    sqlite3* handle() const { return db_; }

protected:
    RowSet runQuery(const QString& sql) override;
    std::unique_ptr<Cursor> runOpenCursor(const QString& sql) override;
    qint64 runExecute(const QString& sql) override;
    void runProcedure(ProcedureCall& call) override;
    void runBegin() override;
    void runCommit() override;
    void runRollback() override;

private:
    TextOutcome run(const QString& sql);
    dialect::SqliteTranslation translateTyped(const QString& tsql);
    void runStatements(const QByteArray& text, TextOutcome& outcome, bool mayRetry, const QStringList* parameters,
                       const std::vector<dialect::ColumnKind>& lastResultKinds = {},
                       const std::vector<int>& lastResultScales = {});
    void forgetStaleTranslations();
    void execControl(const char* sql);
    static int authorize(void* self, int action, const char*, const char*, const char*, const char*);

    sqlite3* db_;
    dialect::SqliteCatalog catalog_;
    // T-SQL text -> SQLite text, for the current schema.
    dialect::TranslationCache translations_;
    // Single statements by their SQLite text, for the current schema.
    StatementCache statements_;
    // Texts with parameters for their literals that run with the literals instead (see run).
    QSet<QByteArray> literalsKept_;
    qint64 schemaVersions_ = -1;            // main and temp schema versions the caches were built on
    // The caches are trusted without reading the schema versions until something says the
    // schema may have moved: a definition prepared here, a statement SQLite had to prepare
    // again because another connection changed the schema, a lookup of the catalog outside them.
    bool verifySchema_ = true;
    int definitionsPrepared_ = 0;  // statements prepared here that define or drop something
};

}  // namespace kivdb

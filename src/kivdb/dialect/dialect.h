#pragma once
// The suite's T-SQL, run on the embedded engine (translation to SQLite) and on SQL Server
// 2005 and later (old outer joins *= and =* rewritten to ANSI joins).
#include "base/error.h"

#include <QHash>
#include <QString>
#include <QStringList>
#include <optional>
#include <stdexcept>
#include <vector>

struct sqlite3;

namespace kivdb::dialect {

// A statement SQL Server would reject, or one the dialect cannot run. The dialect never
// repairs SQL: what the server refuses is refused here too.
class SqlError : public Error {
public:
    explicit SqlError(const std::string& message) : Error(message, ErrorKind::Sql) {}
};

// The server's message for a statement nested deeper than it (or the embedded parser) takes.
inline constexpr const char* kNestedTooDeeply =
    "Some part of your SQL statement is nested too deeply. Rewrite the query or break it up into smaller queries.";

// Text quoted in an error message, cut to a readable length: a literal of megabytes that
// never ends is shown by its first characters and an ellipsis.
QString quotedExcerpt(const QString& text);

// An embedded-engine message in the server's words where the dialect knows them: a
// statement nested deeper than SQLite's parser takes gets the server's nesting message,
// naming the embedded database's limit.
QString serverMessage(const QString& engineMessage);

// The kind of an embedded-engine error by its (extended) result code: a statement the engine
// refused (a syntax error, a missing table, a constraint, a runtime function's error) is
// Sql, anything else (busy, locked, I/O, a corrupt or read-only file) Database.
ErrorKind engineErrorKind(int resultCode);

// Declared kind of a column, as the T-SQL DDL named its type.
enum class ColumnKind { Text, Integer, Float, Money, Decimal, DateTime, Bit, Unknown };

// Digits of an exact numeric type as the server counts them: tinyint (3, 0), smallint
// (5, 0), int (10, 0), bigint (19, 0), bit (1, 0), smallmoney (10, 4), money (19, 4),
// decimal(p, s) (p, s). A precision of 0 means not known.
struct NumericType {
    int precision = 0;
    int scale = 0;
    bool operator==(const NumericType&) const = default;
};

struct CatalogColumn {
    QString name;
    ColumnKind kind = ColumnKind::Unknown;
    bool identity = false;  // numbered by the database; left out of inserts without a column list
    NumericType numeric = {};
    bool national = false;  // nchar, nvarchar, ntext, sysname: two bytes a character, trailing blanks kept by like
    bool minutes = false;   // smalldatetime: to the minute, 1900-01-01..2079-06-06
};

// What the translator may ask of the database: the columns of a table (temporary ones
// included), or nothing when there is no such table. Names compare without regard to case.
class Catalog {
public:
    virtual ~Catalog() = default;
    virtual std::optional<std::vector<CatalogColumn>> tableColumns(const QString& table) const = 0;
};

// T-SQL batch -> SQLite text, its statements separated by ";\n"; empty for a batch of
// session options only (set nocount on ...). Throws SqlError.
QString translateToSqlite(const QString& tsql, const Catalog& catalog);

// The SQLite text and, for a batch whose last statement is a select returning rows, the
// kinds of its result columns as the T-SQL types make them (a sum of money is money, a
// convert to datetime a date), so computed columns can be typed like stored ones. Empty
// when unknown (for instance select * of a table the catalog does not know).
struct SqliteTranslation {
    QString sql;
    std::vector<ColumnKind> resultKinds;
    // Digits after the point of money and decimal result columns, as the server shows
    // them; -1 for other columns and when unknown.
    std::vector<int> resultScales;
    // For a translation made from a kept shape: the same text with each lifted literal as the
    // parameter ?1, ?2 ... in the order they appear in it, and the values to bind (unquoted);
    // empty otherwise.
    QString parameterizedSql = {};
    QStringList parameters = {};
};
SqliteTranslation translateForSqlite(const QString& tsql, const Catalog& catalog);

// True when the text uses the old outer-join operators outside literals and comments.
bool hasOldOuterJoin(const QString& tsql);

// T-SQL -> T-SQL for SQL Server 2005+: only the old outer joins are rewritten to ANSI
// joins with the same meaning; a statement without them comes back unchanged.
QString rewriteOuterJoins(const QString& tsql, const Catalog& catalog);

// Registers the runtime functions and collations the translated text relies on.
void registerRuntime(sqlite3* db);

// The batches of a T-SQL script, as the server's command-line tools send them: a line
// holding only "go" (any case, blanks around it) separates them; batches of nothing but
// blanks and "--" comments are dropped.
QStringList splitBatches(const QString& script);

// Translations by statement text, so a statement that repeats is parsed once. A select,
// insert, update or delete whose plain text literals the translation only copies is kept by
// its shape instead: statements that differ in those literals alone share one translation,
// the literals put back in. Clear it when the schema changes: a translation depends on the
// column types it saw. The texts it holds stay under kMaxBytes: it starts afresh when full,
// and a statement too large for it is translated every time.
class TranslationCache {
public:
    static constexpr qsizetype kMaxBytes = 32 * 1024 * 1024;

    QString translate(const QString& tsql, const Catalog& catalog) { return translateTyped(tsql, catalog).sql; }
    SqliteTranslation translateTyped(const QString& tsql, const Catalog& catalog);
    // The translation kept for the text or its shape, if any. Never throws.
    std::optional<SqliteTranslation> find(const QString& tsql) const;
    // Drops the text's translation and its shape's, so the next use translates it again.
    void forget(const QString& tsql);
    void clear() {
        entries_.clear();
        shapes_.clear();
        bytes_ = 0;
    }
    int size() const { return int(entries_.size() + shapes_.size()); }
    qsizetype bytes() const { return bytes_; }

    // A translation with its literals left out: the texts around them, and which literal
    // goes after each text. One that is not lifted says the shape is translated by its text.
    struct Template {
        bool lifted = false;
        QStringList pieces;
        std::vector<int> holes;
        std::vector<ColumnKind> resultKinds;
        std::vector<int> resultScales;
    };

private:
    void keep(const QString& tsql, const SqliteTranslation& translation);
    void keepShape(const QString& shape, Template shapeTemplate);

    QHash<QString, SqliteTranslation> entries_;
    QHash<QString, Template> shapes_;
    qsizetype bytes_ = 0;
};

}  // namespace kivdb::dialect

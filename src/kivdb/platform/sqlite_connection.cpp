#include "platform/sqlite_connection.h"

#include "dialect/sqlite_statement.h"
#include "platform/connection_support.h"
#include "platform/procedure_registry.h"

#include <QFileInfo>
#include <QLocale>
#include <sqlite3.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstring>

namespace kivdb {
namespace {

// Long enough for another connection to the same file to finish a save.
constexpr int kBusyTimeoutMs = 5000;

// Many host processes share one file: with a write-ahead log, readers go on reading while a
// writer writes, and a writer waits (the busy timeout) for another to finish. Every commit
// still reaches the disk before it returns (synchronous FULL, as with a rollback journal).
// The journal mode lives in the file; setting it again when it is already in place is free.
// A file that cannot change it (read only, or open elsewhere in the old mode) keeps its mode.
void shareFile(sqlite3* db) {
    // Switching takes the file for a moment: while another process has it open under the old
    // journal, the file keeps it for now (a later open tries again) rather than every open
    // waiting out the busy timeout.
    sqlite3_busy_timeout(db, 0);
    sqlite3_exec(db, "PRAGMA journal_mode = WAL", nullptr, nullptr, nullptr);
    sqlite3_busy_timeout(db, kBusyTimeoutMs);
    sqlite3_exec(db, "PRAGMA synchronous = FULL", nullptr, nullptr, nullptr);
}

// The engine's errors as the data layer raises them: the class callers catch, the kind kept.
DatabaseError databaseError(const dialect::EngineError& e) { return DatabaseError(QString::fromUtf8(e.what()), e.kind()); }

template <typename Body>
auto engineErrorsAsDatabaseErrors(Body&& body) {
    try {
        return body();
    } catch (const dialect::EngineError& e) {
        throw databaseError(e);
    }
}

// True when nothing but blanks follows: looks only as far as the first other character,
// so that asking after every statement of a long text stays linear.
bool onlyBlanks(const char* next, const char* end) {
    while (next < end && std::isspace(static_cast<unsigned char>(*next))) ++next;
    return next == end;
}

Value storedValue(sqlite3_stmt* stmt, int column) {
    switch (sqlite3_column_type(stmt, column)) {
    case SQLITE_INTEGER: return qlonglong(sqlite3_column_int64(stmt, column));
    case SQLITE_FLOAT: return sqlite3_column_double(stmt, column);
    case SQLITE_TEXT:
        return QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(stmt, column)),
                                 sqlite3_column_bytes(stmt, column));
    case SQLITE_BLOB:
        return QByteArray(static_cast<const char*>(sqlite3_column_blob(stmt, column)),
                          sqlite3_column_bytes(stmt, column));
    default: return {};
    }
}

// An expression column has no declared type: its first value's storage class names it.
FieldType fieldTypeOfStoredValue(const Value& value) {
    switch (value.typeId()) {
    case QMetaType::LongLong: return FieldType::Integer;
    case QMetaType::Double: return FieldType::Float;
    default: return FieldType::String;
    }
}

// A stored value as its column's field type. SQLite keeps any value in any column, so a
// value that does not read as the type (text in a money column) is handed on unchanged
// rather than turned into a made-up number.
Value asFieldType(const Value& stored, FieldType type) {
    if (!stored.isValid()) return stored;
    const int storage = stored.typeId();
    const bool isText = storage == QMetaType::QString;
    const bool isNumber = storage == QMetaType::LongLong || storage == QMetaType::Double;
    bool ok = false;
    switch (type) {
    case FieldType::String:
        if (storage == QMetaType::QByteArray) return QString::fromUtf8(stored.toByteArray());
        if (storage == QMetaType::Double)
            return QString::number(stored.toDouble(), 'f', QLocale::FloatingPointShortest);
        return stored.toString();
    case FieldType::Integer:
        if (storage == QMetaType::Double) {
            const double d = stored.toDouble();
            return d == std::trunc(d) && std::abs(d) < 9.2e18 ? Value(qlonglong(d)) : stored;
        }
        if (isText) {
            const qlonglong n = stored.toString().trimmed().toLongLong(&ok);
            return ok ? Value(n) : stored;
        }
        return stored;
    case FieldType::Float:
    case FieldType::Currency:
    case FieldType::Bcd:
        if (isNumber) return stored.toDouble();
        if (isText) {
            const double d = stored.toString().trimmed().toDouble(&ok);
            return ok ? Value(d) : stored;
        }
        return stored;
    case FieldType::DateTime:
        if (isText) {
            const QDateTime when = parseDateTimeText(stored.toString());
            return when.isValid() ? Value(when) : stored;
        }
        return stored;
    case FieldType::Boolean:
        if (isNumber) return stored.toDouble() != 0;
        if (isText) {
            const QString t = stored.toString().trimmed().toLower();
            if (t == QLatin1String("1") || t == QLatin1String("true")) return true;
            if (t == QLatin1String("0") || t == QLatin1String("false")) return false;
        }
        return stored;
    }
    return stored;
}

// The field type the T-SQL gives a computed column, if it tells one.
std::optional<FieldType> fieldTypeOfKind(const std::vector<dialect::ColumnKind>* kinds, int column) {
    if (!kinds || size_t(column) >= kinds->size()) return std::nullopt;
    return fieldTypeOfColumnKind((*kinds)[size_t(column)]);
}

// The columns of a statement that returns rows, with the types their declarations or the
// translation give them; nullopt where only the values can tell.
struct ResultShape {
    std::vector<Column> columns;
    std::vector<std::optional<FieldType>> declared;
};

ResultShape resultShape(sqlite3_stmt* stmt, const std::vector<dialect::ColumnKind>* kinds,
                        const std::vector<int>* scales) {
    const int count = sqlite3_column_count(stmt);
    ResultShape shape;
    shape.declared.resize(size_t(count));
    for (int i = 0; i < count; ++i) {
        shape.columns.push_back({QString::fromUtf8(sqlite3_column_name(stmt, i)), FieldType::String});
        const QString declType = QString::fromUtf8(sqlite3_column_decltype(stmt, i));
        auto& declared = shape.declared[size_t(i)];
        declared = fieldTypeFromTypeName(declType);
        if (declared == FieldType::Currency || declared == FieldType::Bcd)
            shape.columns[size_t(i)].scale = dialect::numericTypeFromDeclType(declType).scale;
        if (!declared) {
            declared = fieldTypeOfKind(kinds, i);
            if (scales && size_t(i) < scales->size()) shape.columns[size_t(i)].scale = (*scales)[size_t(i)];
        }
    }
    return shape;
}

// Steps up to maxRows rows (all when negative) into `rows`, stored values as they are.
// Answers true when the statement is done.
bool stepRows(dialect::SqliteStatement& statement, qint64 maxRows, std::vector<std::vector<Value>>& rows) {
    sqlite3_stmt* stmt = statement.get();
    const int count = sqlite3_column_count(stmt);
    for (qint64 n = 0; maxRows < 0 || n < maxRows; ++n) {
        if (!statement.step()) return true;
        std::vector<Value> row;
        row.reserve(size_t(count));
        for (int i = 0; i < count; ++i) row.push_back(storedValue(stmt, i));
        rows.push_back(std::move(row));
    }
    return false;
}

// Gives each column still without a type the storage class of its first non-null value
// among `rows` (else String), then every value its column's type.
void settleTypes(ResultShape& shape, std::vector<std::vector<Value>>& rows) {
    for (size_t i = 0; i < shape.columns.size(); ++i) {
        if (!shape.declared[i]) {
            shape.declared[i] = FieldType::String;
            for (const auto& row : rows)
                if (row[i].isValid()) {
                    shape.declared[i] = fieldTypeOfStoredValue(row[i]);
                    break;
                }
        }
        shape.columns[i].type = *shape.declared[i];
        for (auto& row : rows) row[i] = asFieldType(row[i], *shape.declared[i]);
    }
}

// Reads every row of a statement that returns rows. A column without a declared type
// takes the kind the translation gave it, else its first value's storage class.
RowSet readRows(dialect::SqliteStatement& statement, const std::vector<dialect::ColumnKind>* kinds,
                const std::vector<int>* scales) {
    ResultShape shape = resultShape(statement.get(), kinds, scales);
    RowSet rows;
    stepRows(statement, -1, rows.rows);
    settleTypes(shape, rows.rows);
    rows.columns = std::move(shape.columns);
    return rows;
}

// True once SQLite has prepared the statement again since last asked, which it does when the
// schema changed under it (another connection's change shows up only this way).
bool wasPreparedAgain(sqlite3_stmt* stmt) { return sqlite3_stmt_status(stmt, SQLITE_STMTSTATUS_REPREPARE, 1) > 0; }

// Raised inside a run when a statement that changed nothing found the schema changed since
// its text was translated: the run starts again from the translation.
struct SchemaMoved {};

// Raised before anything runs when a text with parameters for its literals must run with the
// literals instead.
struct LiteralsNeeded {};

// Whether a result column is named after an expression holding a parameter: with the literal
// in its place the name would show the literal.
bool namesShowParameter(sqlite3_stmt* stmt) {
    for (int i = 0, n = sqlite3_column_count(stmt); i < n; ++i)
        if (std::strchr(sqlite3_column_name(stmt, i), '?')) return true;
    return false;
}

// Binds the values of the literals a text holds as parameters ?1, ?2 ...
void bindLiterals(sqlite3_stmt* stmt, const QStringList& values) {
    if (sqlite3_bind_parameter_count(stmt) != values.size()) throw LiteralsNeeded();
    for (int i = 0; i < int(values.size()); ++i) {
        const QByteArray utf8 = values[i].toUtf8();
        sqlite3_bind_text(stmt, i + 1, utf8.constData(), int(utf8.size()), SQLITE_TRANSIENT);
    }
}

// The rows a cursor reads when it opens, to settle the types of untyped columns.
constexpr int kCursorFirstPage = 64;

// A cursor over one prepared statement, finalized once done, on error, or when dropped.
class SqliteCursor final : public Cursor {
public:
    SqliteCursor(SqliteConnection& conn, std::unique_ptr<dialect::SqliteStatement> stmt, ResultShape shape)
        : conn_(conn), stmt_(std::move(stmt)) {
        step(kCursorFirstPage, ahead_);
        for (size_t i = 0; i < shape.columns.size(); ++i)
            if (!shape.declared[i] && std::none_of(ahead_.begin(), ahead_.end(), [i](const auto& row) { return row[i].isValid(); }))
                untypedNulls_.push_back(i);
        settleTypes(shape, ahead_);
        columns_ = shape.columns;
    }
    ~SqliteCursor() override {
        const auto turn = conn_.lock();
        stmt_.reset();
    }

    std::vector<std::vector<Value>> fetch(int maxRows) override {
        std::vector<std::vector<Value>> page;
        const size_t fromAhead = std::min(ahead_.size(), size_t(std::max(maxRows, 0)));
        page.assign(std::make_move_iterator(ahead_.begin()),
                    std::make_move_iterator(ahead_.begin() + qsizetype(fromAhead)));
        ahead_.erase(ahead_.begin(), ahead_.begin() + qsizetype(fromAhead));
        if (qsizetype(page.size()) < maxRows && stmt_) {
            const size_t settled = page.size();
            step(maxRows - int(settled), page);
            for (size_t r = settled; r < page.size(); ++r) {
                if (typeLateColumns_ && !untypedNulls_.empty()) typeByFirstValue(page[r]);
                for (size_t i = 0; i < columns_.size(); ++i) page[r][i] = asFieldType(page[r][i], columns_[i].type);
            }
        }
        return page;
    }
    bool atEnd() const override { return ahead_.empty() && !stmt_; }
    // Whether SQLite prepared the statement again when it opened: the schema had changed.
    bool reprepared() const { return reprepared_; }

private:
    void typeByFirstValue(const std::vector<Value>& row) {
        std::erase_if(untypedNulls_, [&](size_t i) {
            if (!row[i].isValid()) return false;
            columns_[i].type = fieldTypeOfStoredValue(row[i]);
            return true;
        });
    }

    void step(int maxRows, std::vector<std::vector<Value>>& rows) {
        const auto turn = conn_.lock();
        try {
            const bool done = engineErrorsAsDatabaseErrors([&] { return stepRows(*stmt_, maxRows, rows); });
            reprepared_ = reprepared_ || wasPreparedAgain(stmt_->get());
            if (done) stmt_.reset();
        } catch (...) {
            stmt_.reset();
            throw;
        }
    }

    SqliteConnection& conn_;
    std::unique_ptr<dialect::SqliteStatement> stmt_;
    std::vector<std::vector<Value>> ahead_;
    std::vector<size_t> untypedNulls_;  // columns without a type, null in every row so far
    bool reprepared_ = false;
};

}

namespace {

sqlite3* openDatabase(const QString& path, SqliteConnection::OpenMode mode) {
    const bool inMemory = path == QLatin1String(":memory:");
    if (path.isEmpty()) throw DatabaseError(QStringLiteral("database file not given"));
    if (!inMemory && mode == SqliteConnection::OpenMode::ExistingFile && !QFileInfo::exists(path))
        throw DatabaseError(QStringLiteral("database file not found: %1").arg(path));

    int flags = SQLITE_OPEN_READWRITE;
    if (mode == SqliteConnection::OpenMode::CreateIfMissing) flags |= SQLITE_OPEN_CREATE;
    sqlite3* db = nullptr;
    const int rc = sqlite3_open_v2(path.toUtf8().constData(), &db, flags, nullptr);
    if (rc != SQLITE_OK) {
        // A handle comes back even on failure, holding the message.
        const QString message = db ? QString::fromUtf8(sqlite3_errmsg(db)) : QString::fromUtf8(sqlite3_errstr(rc));
        sqlite3_close(db);
        throw DatabaseError(QStringLiteral("%1: %2").arg(message, path));
    }
    sqlite3_extended_result_codes(db, 1);
    sqlite3_busy_timeout(db, kBusyTimeoutMs);
    // SQL Server enforces the schema's foreign keys; the embedded database does the same.
    char* error = nullptr;
    if (sqlite3_exec(db, "PRAGMA foreign_keys = ON", nullptr, nullptr, &error) != SQLITE_OK) {
        const QString message = QString::fromUtf8(error ? error : sqlite3_errmsg(db));
        sqlite3_free(error);
        sqlite3_close(db);
        throw DatabaseError(QStringLiteral("%1: %2").arg(message, path));
    }
    // A database being created (kivdb init works on a file it renames at the end) keeps the
    // rollback journal until it is first opened as an existing file, so it stays one file.
    if (!inMemory && mode == SqliteConnection::OpenMode::ExistingFile) shareFile(db);
    dialect::registerRuntime(db);
    return db;
}

qint64 pragmaValue(sqlite3* db, const char* pragma) {
    return engineErrorsAsDatabaseErrors([&] {
        dialect::SqliteStatement stmt(db, pragma);
        if (!stmt.step()) throw DatabaseError(QStringLiteral("%1 answered no row").arg(QLatin1String(pragma)));
        return stmt.integer(0);
    });
}

}  // namespace

SqliteConnection::SqliteConnection(const QString& path, OpenMode mode)
    : db_(openDatabase(path, mode)), catalog_(db_) {
    sqlite3_set_authorizer(db_, &SqliteConnection::authorize, this);
}

SqliteConnection::~SqliteConnection() {
    statements_.clear();
    // A transaction the host left open is rolled back by closing, as a dropped server
    // connection would.
    sqlite3_close_v2(db_);
}

// Sees every statement as SQLite prepares it; allows all, and counts those that change
// what tables, views and columns there are (temporary ones included).
int SqliteConnection::authorize(void* self, int action, const char*, const char*, const char*, const char*) {
    switch (action) {
    case SQLITE_CREATE_TABLE: case SQLITE_CREATE_TEMP_TABLE: case SQLITE_CREATE_VIEW: case SQLITE_CREATE_TEMP_VIEW:
    case SQLITE_DROP_TABLE: case SQLITE_DROP_TEMP_TABLE: case SQLITE_DROP_VIEW: case SQLITE_DROP_TEMP_VIEW:
    case SQLITE_ALTER_TABLE: case SQLITE_ATTACH: case SQLITE_DETACH: case SQLITE_CREATE_VTABLE: case SQLITE_DROP_VTABLE:
        ++static_cast<SqliteConnection*>(self)->definitionsPrepared_;
        break;
    default: break;
    }
    return SQLITE_OK;
}

bool SqliteConnection::inTransaction() const { return sqlite3_get_autocommit(db_) == 0; }

void SqliteConnection::execControl(const char* sql) {
    if (sqlite3_exec(db_, sql, nullptr, nullptr, nullptr) != SQLITE_OK) throw databaseError(dialect::EngineError(db_));
}

void SqliteConnection::runBegin() {
    if (inTransaction()) throw transactionAlreadyOpen();
    // IMMEDIATE takes the write lock now, so two connections that read and then write
    // take turns under the busy timeout instead of one failing on a lock upgrade.
    execControl("BEGIN IMMEDIATE");
}

void SqliteConnection::runCommit() {
    if (!inTransaction()) throw noTransactionToCommit();
    execControl("COMMIT");
}

void SqliteConnection::runRollback() {
    if (!inTransaction()) throw noTransactionToRollBack();
    execControl("ROLLBACK");
    // A rollback takes back what the transaction defined (sysobjects made on first use among
    // it): kept statements may name what is gone, so they are prepared anew.
    statements_.clear();
    verifySchema_ = true;
}

void SqliteConnection::forgetStaleTranslations() {
    // Both schema versions in one number; a change to either means tables came or went.
    const qint64 versions = (pragmaValue(db_, "PRAGMA schema_version") << 32) ^
                            pragmaValue(db_, "PRAGMA temp.schema_version");
    verifySchema_ = false;
    if (versions == schemaVersions_) return;
    translations_.clear();
    statements_.clear();
    catalog_.invalidate();
    schemaVersions_ = versions;
}

dialect::SqliteTranslation SqliteConnection::translateTyped(const QString& tsql) {
    if (!verifySchema_)
        if (std::optional<dialect::SqliteTranslation> kept = translations_.find(tsql)) return std::move(*kept);
    // A translation is made, so the schema versions are read: their cost is small beside it.
    forgetStaleTranslations();
    const int absentBefore = catalog_.absentAnswers();
    try {
        dialect::SqliteTranslation translation = translations_.translateTyped(tsql, catalog_);
        // A translation that found a table absent is not kept: another connection may make
        // the table, and nothing here would notice.
        if (catalog_.absentAnswers() != absentBefore) translations_.forget(tsql);
        return translation;
    } catch (const dialect::SqlError& e) {
        throw DatabaseError(QString::fromUtf8(e.what()), e.kind());
    }
}

QString SqliteConnection::translate(const QString& tsql) {
    const auto turn = lock();
    return translateTyped(tsql).sql;
}

TextOutcome SqliteConnection::run(const QString& sql) {
    for (bool mayRetry = true;; mayRetry = false) {
        TextOutcome outcome;
        const int definitionsBefore = definitionsPrepared_;
        const dialect::SqliteTranslation translation = translateTyped(sql);
        try {
            engineErrorsAsDatabaseErrors([&] {
                // The literals as parameters: one prepared statement serves every value. A text
                // of several statements, one SQLite refuses parameters in, or one whose column
                // names would show them runs with its literals.
                const QByteArray lifted = translation.parameterizedSql.toUtf8();
                if (!lifted.isEmpty() && !literalsKept_.contains(lifted)) {
                    try {
                        runStatements(lifted, outcome, mayRetry, &translation.parameters, translation.resultKinds,
                                      translation.resultScales);
                        return;
                    } catch (const LiteralsNeeded&) {
                        if (literalsKept_.size() >= StatementCache::kCapacity * 8) literalsKept_.clear();
                        literalsKept_.insert(lifted);
                    }
                }
                runStatements(translation.sql.toUtf8(), outcome, mayRetry, nullptr, translation.resultKinds,
                              translation.resultScales);
            });
        } catch (const SchemaMoved&) {
            continue;
        } catch (...) {
            // A text that failed may fail for a schema that has changed since: it is translated again.
            translations_.forget(sql);
            if (definitionsPrepared_ != definitionsBefore) verifySchema_ = true;
            throw;
        }
        if (definitionsPrepared_ != definitionsBefore) verifySchema_ = true;
        return outcome;
    }
}

// lastResultKinds types the computed columns of the text's last statement (a sum of money
// is money), as the T-SQL made them.
// A text of one statement keeps it prepared for the next run of the same text. mayRetry lets
// a statement that found the schema changed before anything was written end the run with
// SchemaMoved, to be translated again. With parameters, the text is one statement whose
// parameters take those values; LiteralsNeeded before anything runs when it cannot be.
void SqliteConnection::runStatements(const QByteArray& text, TextOutcome& outcome, bool mayRetry,
                                     const QStringList* parameters, const std::vector<dialect::ColumnKind>& lastResultKinds,
                                     const std::vector<int>& lastResultScales) {
    const char* next = text.constData();
    const char* const end = next + text.size();
    bool first = true;
    bool wrapped = false;
    bool wrote = false;
    try {
        while (next < end) {
            const bool atStart = first;
            sqlite3_stmt* kept = atStart ? statements_.take(text) : nullptr;
            const int definitionsBefore = definitionsPrepared_;
            const auto prepare = [&] {
                if (kept) return dialect::SqliteStatement(db_, kept);
                if (!parameters) return dialect::SqliteStatement(db_, next, end);
                try {
                    return dialect::SqliteStatement(db_, next, end);
                } catch (const dialect::EngineError&) {
                    throw LiteralsNeeded();
                }
            };
            dialect::SqliteStatement stmt = prepare();
            if (kept) next = end;
            if (!stmt) continue;
            if (parameters) {
                if (!kept && (!onlyBlanks(next, end) || namesShowParameter(stmt.get()))) throw LiteralsNeeded();
                bindLiterals(stmt.get(), *parameters);
            }
            // Only a text that is one statement is kept, and not one that defines something.
            const bool keep = kept || (atStart && onlyBlanks(next, end) && definitionsPrepared_ == definitionsBefore);
            sqlite3_stmt* s = stmt.get();
            const bool returnsRows = sqlite3_column_count(s) > 0;
            const bool readOnly = sqlite3_stmt_readonly(s) != 0;
            // A text of several statements run outside a transaction applies whole or not
            // at all. One that starts with its own BEGIN manages its transaction itself.
            const bool transactionControl = readOnly && !returnsRows;
            if (first && !inTransaction() && !transactionControl && !onlyBlanks(next, end)) {
                execControl("SAVEPOINT kivdb_text");
                wrapped = true;
            }
            first = false;

            const qint64 totalBefore = sqlite3_total_changes64(db_);
            if (returnsRows) {
                const bool last = onlyBlanks(next, end);
                outcome.rows = last ? readRows(stmt, &lastResultKinds, &lastResultScales) : readRows(stmt, nullptr, nullptr);
            } else {
                stmt.step();
            }
            if (wasPreparedAgain(s)) {
                verifySchema_ = true;
                if (mayRetry && readOnly && !wrote) throw SchemaMoved();
            }
            wrote = wrote || !readOnly;
            if (keep) statements_.put(text, stmt.release());
            if (!readOnly) {
                // sqlite3_changes64 keeps the count of the last INSERT/UPDATE/DELETE, so a
                // statement that changed nothing in total (DDL, or no matching rows) adds 0.
                outcome.addChanged(sqlite3_total_changes64(db_) != totalBefore ? sqlite3_changes64(db_) : 0);
            }
        }
        if (wrapped && inTransaction()) execControl("RELEASE kivdb_text");
    } catch (...) {
        // The failure may already have ended the transaction (a full disk does). Cleaning
        // up must not hide the error that matters, so its own result is not checked.
        if (wrapped && inTransaction()) {
            sqlite3_exec(db_, "ROLLBACK TO kivdb_text", nullptr, nullptr, nullptr);
            sqlite3_exec(db_, "RELEASE kivdb_text", nullptr, nullptr, nullptr);
        }
        throw;
    }
}

std::optional<QString> SqliteConnection::userTableName(const QString& name) {
    static const char sql[] =
        "select name from main.sqlite_master where type = 'table' and name = ?1 collate nocase "
        "and name not like 'sqlite\\_%' escape '\\'";
    const auto turn = lock();
    verifySchema_ = true;  // SQLite may read a changed schema here, unseen by the caches
    return engineErrorsAsDatabaseErrors([&]() -> std::optional<QString> {
        dialect::SqliteStatement stmt(db_, sql);
        stmt.bind(1, name);
        if (stmt.step()) return stmt.text(0);
        return std::nullopt;
    });
}

QStringList SqliteConnection::primaryKey(const QString& table) {
    static const char sql[] = "select name from pragma_table_info(?1) where pk > 0 order by pk";
    const auto turn = lock();
    verifySchema_ = true;  // as in userTableName
    return engineErrorsAsDatabaseErrors([&] {
        dialect::SqliteStatement stmt(db_, sql);
        stmt.bind(1, table);
        QStringList key;
        while (stmt.step()) key << stmt.text(0);
        return key;
    });
}

std::vector<dialect::CatalogColumn> SqliteConnection::tableColumns(const QString& table) {
    const auto turn = lock();
    verifySchema_ = true;  // as in userTableName
    return dialect::SqliteCatalog(db_).tableColumns(table).value_or(std::vector<dialect::CatalogColumn>{});
}

RowSet SqliteConnection::runQuery(const QString& sql) { return run(sql).rows; }

// One statement that returns rows is stepped as the caller fetches; any other text runs
// whole, as a query would.
std::unique_ptr<Cursor> SqliteConnection::runOpenCursor(const QString& sql) {
    const dialect::SqliteTranslation translation = translateTyped(sql);
    const QByteArray text = translation.sql.toUtf8();
    const char* next = text.constData();
    const char* const end = next + text.size();
    auto stmt = engineErrorsAsDatabaseErrors([&] { return std::make_unique<dialect::SqliteStatement>(db_, next, end); });
    if (*stmt && onlyBlanks(next, end) && sqlite3_column_count(stmt->get()) > 0) {
        ResultShape shape = resultShape(stmt->get(), &translation.resultKinds, &translation.resultScales);
        auto cursor = std::make_unique<SqliteCursor>(*this, std::move(stmt), std::move(shape));
        if (cursor->reprepared()) verifySchema_ = true;
        return cursor;
    }
    stmt.reset();
    return cursorOverRows(runQuery(sql));
}

qint64 SqliteConnection::runExecute(const QString& sql) { return run(sql).changed; }

void SqliteConnection::runProcedure(ProcedureCall& call) {
    const EmbeddedProcedure procedure = findEmbeddedProcedure(call.name);
    // A procedure that ends without RETURN answers 0 on the server.
    for (auto& param : call.params)
        if (param.direction == ParamDirection::ReturnValue) param.value = qlonglong(0);
    procedure(*this, call);
}

}  // namespace kivdb

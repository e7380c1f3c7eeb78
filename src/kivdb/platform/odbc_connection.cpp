#include "platform/odbc_connection.h"

#include "dialect/sqlite_catalog.h"
#include "platform/connection_support.h"

#include <QHash>
#include <sql.h>
#include <sqlext.h>

#include <algorithm>

namespace kivdb {
namespace {

constexpr auto kOuterJoinOption = QLatin1String("KivdbOuterJoins");

// unixODBC's SQLWCHAR is UTF-16, as QString is.
static_assert(sizeof(SQLWCHAR) == sizeof(char16_t));

SQLWCHAR* wide(QString& text) { return reinterpret_cast<SQLWCHAR*>(text.data()); }
QString fromWide(const SQLWCHAR* text, qsizetype length) {
    return QString::fromUtf16(reinterpret_cast<const char16_t*>(text), length);
}
// A name or message the driver wrote into a fixed buffer. The length it reports cannot be
// trusted: converting for a narrow driver, unixODBC reports the narrow text's bytes, so
// the text ends at its terminator.
template <size_t N>
QString fromWideBuffer(const SQLWCHAR (&buffer)[N], qsizetype reportedLength) {
    const qsizetype limit = std::clamp<qsizetype>(reportedLength, 0, qsizetype(N) - 1);
    const auto end = std::find(buffer, buffer + limit, SQLWCHAR(0));
    return fromWide(buffer, end - buffer);
}

QString diagnostics(SQLSMALLINT handleType, SQLHANDLE handle) {
    QStringList messages;
    for (SQLSMALLINT record = 1;; ++record) {
        SQLWCHAR state[6];
        SQLINTEGER nativeError = 0;
        SQLWCHAR text[2048] = {};
        SQLSMALLINT length = 0;
        const SQLRETURN rc = SQLGetDiagRecW(handleType, handle, record, state, &nativeError, text,
                                            SQLSMALLINT(std::size(text)), &length);
        if (!SQL_SUCCEEDED(rc)) break;
        messages << fromWideBuffer(text, length);
    }
    return messages.join(QLatin1Char('\n'));
}

// The kind of a failure by the class of its first SQLSTATE: a dynamic SQL, cardinality,
// data, constraint or syntax and access error is the server refusing the statement; the
// rest (connection, driver, transaction rolled back) a failure of the database.
ErrorKind diagnosticKind(SQLSMALLINT handleType, SQLHANDLE handle) {
    SQLWCHAR state[6] = {};
    SQLINTEGER nativeError = 0;
    SQLWCHAR text[1] = {};
    SQLSMALLINT length = 0;
    if (!SQL_SUCCEEDED(SQLGetDiagRecW(handleType, handle, 1, state, &nativeError, text, 1, &length)))
        return ErrorKind::Database;
    static const QStringList refused = {"07", "21", "22", "23", "37", "42"};
    return refused.contains(fromWide(state, 2)) ? ErrorKind::Sql : ErrorKind::Database;
}

// SQL_NO_DATA is an answer, not a failure (an UPDATE that matched no row says it).
void check(SQLRETURN rc, SQLSMALLINT handleType, SQLHANDLE handle, const char* action) {
    if (SQL_SUCCEEDED(rc) || rc == SQL_NO_DATA) return;
    QString message = diagnostics(handleType, handle);
    if (message.isEmpty()) message = QStringLiteral("ODBC %1 failed").arg(QLatin1String(action));
    throw DatabaseError(message, diagnosticKind(handleType, handle));
}

// A statement handle, freed on every path.
class StatementHandle {
public:
    explicit StatementHandle(SQLHDBC dbc) {
        kivdb::check(SQLAllocHandle(SQL_HANDLE_STMT, dbc, &handle_), SQL_HANDLE_DBC, dbc, "statement allocation");
    }
    ~StatementHandle() {
        if (handle_) SQLFreeHandle(SQL_HANDLE_STMT, handle_);
    }
    StatementHandle(const StatementHandle&) = delete;
    StatementHandle& operator=(const StatementHandle&) = delete;

    SQLHSTMT get() const { return handle_; }
    void check(SQLRETURN rc, const char* action) const { kivdb::check(rc, SQL_HANDLE_STMT, handle_, action); }

private:
    SQLHSTMT handle_ = SQL_NULL_HSTMT;
};

QDateTime fromTimestamp(const SQL_TIMESTAMP_STRUCT& ts) {
    return QDateTime(QDate(ts.year, ts.month, ts.day),
                     QTime(ts.hour, ts.minute, ts.second, int(ts.fraction / 1000000)));
}

SQL_TIMESTAMP_STRUCT toTimestamp(const QDateTime& when) {
    const QDate d = when.date();
    const QTime t = when.time();
    return {SQLSMALLINT(d.year()), SQLUSMALLINT(d.month()), SQLUSMALLINT(d.day()), SQLUSMALLINT(t.hour()),
            SQLUSMALLINT(t.minute()), SQLUSMALLINT(t.second()), SQLUINTEGER(t.msec()) * 1000000u};
}

// The field type of a column whose type name says nothing we know (user types, xml, ...).
FieldType fieldTypeFromSqlType(SQLSMALLINT sqlType) {
    switch (sqlType) {
    case SQL_TINYINT: case SQL_SMALLINT: case SQL_INTEGER: case SQL_BIGINT: return FieldType::Integer;
    case SQL_REAL: case SQL_FLOAT: case SQL_DOUBLE: return FieldType::Float;
    case SQL_DECIMAL: case SQL_NUMERIC: return FieldType::Bcd;
    case SQL_TYPE_TIMESTAMP: case SQL_TYPE_DATE: return FieldType::DateTime;
    case SQL_BIT: return FieldType::Boolean;
    default: return FieldType::String;
    }
}

// Text in chunks, so no length is ever guessed. Null text is an invalid Value.
Value readText(const StatementHandle& stmt, SQLUSMALLINT column) {
    QString text(0, Qt::Uninitialized);
    SQLWCHAR buffer[2048];
    for (;;) {
        SQLLEN indicator = 0;
        const SQLRETURN rc = SQLGetData(stmt.get(), column, SQL_C_WCHAR, buffer, sizeof buffer, &indicator);
        if (rc == SQL_NO_DATA) break;
        stmt.check(rc, "SQLGetData");
        if (indicator == SQL_NULL_DATA) return {};
        const qsizetype capacity = qsizetype(std::size(buffer)) - 1;  // one for the terminator
        const bool more = indicator == SQL_NO_TOTAL || indicator / qsizetype(sizeof(SQLWCHAR)) > capacity;
        text += fromWide(buffer, more ? capacity : indicator / qsizetype(sizeof(SQLWCHAR)));
        if (!more) break;
    }
    return text;
}

template <typename T>
std::optional<T> readFixed(const StatementHandle& stmt, SQLUSMALLINT column, SQLSMALLINT cType) {
    T value{};
    SQLLEN indicator = 0;
    stmt.check(SQLGetData(stmt.get(), column, cType, &value, sizeof value, &indicator), "SQLGetData");
    if (indicator == SQL_NULL_DATA) return std::nullopt;
    return value;
}

Value readField(const StatementHandle& stmt, SQLUSMALLINT column, FieldType type) {
    switch (type) {
    case FieldType::Integer:
        if (auto v = readFixed<SQLBIGINT>(stmt, column, SQL_C_SBIGINT)) return qlonglong(*v);
        return {};
    case FieldType::Boolean:
        if (auto v = readFixed<SQLBIGINT>(stmt, column, SQL_C_SBIGINT)) return *v != 0;
        return {};
    case FieldType::Float:
    case FieldType::Currency:
    case FieldType::Bcd:
        if (auto v = readFixed<double>(stmt, column, SQL_C_DOUBLE)) return *v;
        return {};
    case FieldType::DateTime:
        if (auto v = readFixed<SQL_TIMESTAMP_STRUCT>(stmt, column, SQL_C_TYPE_TIMESTAMP))
            return fromTimestamp(*v);
        return {};
    case FieldType::String: break;
    }
    return readText(stmt, column);
}

std::vector<Column> readColumns(const StatementHandle& stmt, SQLSMALLINT columnCount) {
    std::vector<Column> columns;
    for (SQLUSMALLINT c = 1; c <= columnCount; ++c) {
        SQLWCHAR name[512] = {};
        SQLSMALLINT nameLength = 0, sqlType = 0, digits = 0, nullable = 0;
        SQLULEN size = 0;
        stmt.check(SQLDescribeColW(stmt.get(), c, name, SQLSMALLINT(std::size(name)), &nameLength, &sqlType,
                                   &size, &digits, &nullable),
                   "SQLDescribeCol");
        SQLWCHAR typeName[256] = {};
        SQLSMALLINT typeNameBytes = 0;
        stmt.check(SQLColAttributeW(stmt.get(), c, SQL_DESC_TYPE_NAME, typeName, sizeof typeName,
                                    &typeNameBytes, nullptr),
                   "SQLColAttribute");
        const QString declared = fromWideBuffer(typeName, typeNameBytes / qsizetype(sizeof(SQLWCHAR)));
        const FieldType type = fieldTypeFromTypeName(declared).value_or(fieldTypeFromSqlType(sqlType));
        const bool exact = type == FieldType::Currency || type == FieldType::Bcd;
        columns.push_back({fromWideBuffer(name, nameLength), type, exact ? int(digits) : -1});
    }
    return columns;
}

// Appends up to maxRows further rows of the current result (all of them when negative);
// answers whether the result has ended.
bool readRows(const StatementHandle& stmt, const std::vector<Column>& columns, qsizetype maxRows,
              std::vector<std::vector<Value>>& rows) {
    for (qsizetype read = 0; maxRows < 0 || read < maxRows; ++read) {
        const SQLRETURN rc = SQLFetch(stmt.get());
        if (rc == SQL_NO_DATA) return true;
        stmt.check(rc, "SQLFetch");
        std::vector<Value> row;
        row.reserve(columns.size());
        for (SQLUSMALLINT c = 1; c <= columns.size(); ++c) row.push_back(readField(stmt, c, columns[c - 1].type));
        rows.push_back(std::move(row));
    }
    return false;
}

RowSet readRows(const StatementHandle& stmt, SQLSMALLINT columnCount) {
    RowSet rows;
    rows.columns = readColumns(stmt, columnCount);
    readRows(stmt, rows.columns, -1, rows.rows);
    return rows;
}

// Runs a text as the server receives it and reads every result it answers.
TextOutcome executeText(SQLHDBC dbc, QString text) {
    StatementHandle stmt(dbc);
    TextOutcome outcome;
    SQLRETURN rc = SQLExecDirectW(stmt.get(), wide(text), SQL_NTS);
    stmt.check(rc, "SQLExecDirect");
    if (rc == SQL_NO_DATA) {
        outcome.changed = 0;
        return outcome;
    }
    for (;;) {
        SQLSMALLINT columns = 0;
        stmt.check(SQLNumResultCols(stmt.get(), &columns), "SQLNumResultCols");
        if (columns > 0) {
            outcome.rows = readRows(stmt, columns);
        } else {
            SQLLEN count = -1;
            stmt.check(SQLRowCount(stmt.get(), &count), "SQLRowCount");
            if (count >= 0) outcome.addChanged(count);
        }
        rc = SQLMoreResults(stmt.get());
        if (rc == SQL_NO_DATA) break;
        stmt.check(rc, "SQLMoreResults");
    }
    return outcome;
}

}  // namespace

// The rows of a statement's first result with columns, fetched from the driver as they are
// asked for. When another statement needs the connection first, the rest is read into memory
// (readRest), so the cursor keeps its rows and the connection is free.
class OdbcCursor final : public Cursor {
public:
    OdbcCursor(OdbcConnection& conn, QString text) : conn_(conn), stmt_(std::make_unique<StatementHandle>(conn.statementSlot())) {
        SQLRETURN rc = SQLExecDirectW(stmt_->get(), wide(text), SQL_NTS);
        stmt_->check(rc, "SQLExecDirect");
        // Counts of statements before the first rows are passed over, as a query's are.
        while (rc != SQL_NO_DATA) {
            SQLSMALLINT columns = 0;
            stmt_->check(SQLNumResultCols(stmt_->get(), &columns), "SQLNumResultCols");
            if (columns > 0) {
                columns_ = readColumns(*stmt_, columns);
                conn_.openCursor_ = this;
                return;
            }
            rc = SQLMoreResults(stmt_->get());
            stmt_->check(rc, "SQLMoreResults");
        }
        stmt_.reset();  // no rows at all
    }
    ~OdbcCursor() override {
        const auto turn = conn_.lock();
        release();
    }

    std::vector<std::vector<Value>> fetch(int maxRows) override {
        const auto turn = conn_.lock();
        std::vector<std::vector<Value>> page;
        const qsizetype fromAhead = std::min(qsizetype(ahead_.size()), qsizetype(std::max(maxRows, 0)));
        page.assign(std::make_move_iterator(ahead_.begin()), std::make_move_iterator(ahead_.begin() + fromAhead));
        ahead_.erase(ahead_.begin(), ahead_.begin() + fromAhead);
        if (qsizetype(page.size()) < maxRows && stmt_) read(maxRows - qsizetype(page.size()), page);
        return page;
    }
    bool atEnd() const override { return ahead_.empty() && !stmt_; }

    void readRest() {
        if (stmt_) read(-1, ahead_);
    }

private:
    void read(qsizetype maxRows, std::vector<std::vector<Value>>& rows) {
        try {
            if (!readRows(*stmt_, columns_, maxRows, rows)) return;
            // Later results of the text are passed over, their errors still raised.
            for (SQLRETURN rc = SQLMoreResults(stmt_->get()); rc != SQL_NO_DATA; rc = SQLMoreResults(stmt_->get()))
                stmt_->check(rc, "SQLMoreResults");
        } catch (...) {
            release();
            throw;
        }
        release();
    }
    void release() {
        stmt_.reset();
        if (conn_.openCursor_ == this) conn_.openCursor_ = nullptr;
    }

    OdbcConnection& conn_;
    std::unique_ptr<StatementHandle> stmt_;
    std::vector<std::vector<Value>> ahead_;
};

namespace {

// A SQL text literal; names reach it from the suite's own statements, still quoted safely.
QString quoted(const QString& text) {
    return QLatin1Char('\'') + QString(text).replace(QLatin1Char('\''), QLatin1String("''")) + QLatin1Char('\'');
}

}  // namespace

// The server's columns for the ANSI rewrite. Ordinary tables are read once through
// SQLColumns (the suite does not alter its schema while running); temporary tables live
// and change within one call, so they are read from tempdb each time.
class OdbcCatalog final : public dialect::Catalog {
public:
    explicit OdbcCatalog(OdbcConnection& conn) : conn_(conn) {}

    std::optional<std::vector<dialect::CatalogColumn>> tableColumns(const QString& table) const override {
        QString name = table.trimmed();
        name.remove(QLatin1Char('[')).remove(QLatin1Char(']'));
        if (name.startsWith(QLatin1Char('#'))) return temporaryTableColumns(name);
        const QString key = name.toLower();
        if (auto it = cache_.constFind(key); it != cache_.constEnd()) return *it;
        auto columns = tableColumnsFromDriver(name);
        cache_.insert(key, columns);
        return columns;
    }

private:
    std::optional<std::vector<dialect::CatalogColumn>> tableColumnsFromDriver(const QString& qualified) const {
        QString owner, table = qualified;
        if (const qsizetype dot = qualified.lastIndexOf(QLatin1Char('.')); dot >= 0) {
            owner = qualified.left(dot).section(QLatin1Char('.'), -1);
            table = qualified.mid(dot + 1);
        }
        StatementHandle stmt(conn_.statementSlot());
        stmt.check(SQLColumnsW(stmt.get(), nullptr, 0, owner.isEmpty() ? nullptr : wide(owner),
                               owner.isEmpty() ? 0 : SQL_NTS, wide(table), SQL_NTS, nullptr, 0),
                   "SQLColumns");
        // The table name is a search pattern where '_' matches any character, and the
        // suite's names are full of underscores: keep only the exact table.
        std::vector<dialect::CatalogColumn> columns;
        for (;;) {
            const SQLRETURN rc = SQLFetch(stmt.get());
            if (rc == SQL_NO_DATA) break;
            stmt.check(rc, "SQLFetch");
            if (readText(stmt, 3).toString().compare(table, Qt::CaseInsensitive) != 0) continue;
            const QString column = readText(stmt, 4).toString();
            const QString typeName = readText(stmt, 6).toString();
            columns.push_back({column, dialect::columnKindFromDeclType(typeName)});
        }
        if (columns.empty()) return std::nullopt;
        return columns;
    }

    std::optional<std::vector<dialect::CatalogColumn>> temporaryTableColumns(const QString& table) const {
        const TextOutcome outcome = executeText(
            conn_.statementSlot(), QStringLiteral("select c.name, t.name from tempdb.sys.columns c join tempdb.sys.types t "
                                 "on t.user_type_id = c.user_type_id where c.object_id = object_id(%1) "
                                 "order by c.column_id")
                      .arg(quoted(QStringLiteral("tempdb..") + table)));
        std::vector<dialect::CatalogColumn> columns;
        for (const auto& row : outcome.rows.rows)
            columns.push_back({row[0].toString(), dialect::columnKindFromDeclType(row[1].toString())});
        if (columns.empty()) return std::nullopt;
        return columns;
    }

    OdbcConnection& conn_;
    mutable QHash<QString, std::optional<std::vector<dialect::CatalogColumn>>> cache_;
};

OdbcConnection::ConnectionOptions OdbcConnection::parseConnectionString(const QString& connectionString) {
    ConnectionOptions options;
    QStringList kept;
    const qsizetype length = connectionString.size();
    qsizetype pos = 0;
    while (pos < length) {
        const qsizetype start = pos;
        const qsizetype equals = connectionString.indexOf(QLatin1Char('='), pos);
        qsizetype end = connectionString.indexOf(QLatin1Char(';'), pos);
        if (equals >= 0 && (end < 0 || equals < end)) {
            // A braced value may hold ';' and closes at a '}' that is not doubled.
            qsizetype valueStart = equals + 1;
            while (valueStart < length && connectionString[valueStart].isSpace()) ++valueStart;
            if (valueStart < length && connectionString[valueStart] == QLatin1Char('{')) {
                qsizetype close = valueStart + 1;
                for (; close < length; ++close) {
                    if (connectionString[close] != QLatin1Char('}')) continue;
                    if (close + 1 < length && connectionString[close + 1] == QLatin1Char('}')) ++close;
                    else break;
                }
                end = connectionString.indexOf(QLatin1Char(';'), close);
            }
        }
        if (end < 0) end = length;
        const QString attribute = connectionString.mid(start, end - start);
        pos = end + 1;

        const QString key = attribute.section(QLatin1Char('='), 0, 0).trimmed();
        if (key.compare(kOuterJoinOption, Qt::CaseInsensitive) == 0) {
            const QString mode = attribute.section(QLatin1Char('='), 1).trimmed().toLower();
            if (mode == QLatin1String("ansi")) options.forcedOuterJoins = OuterJoinMode::Ansi;
            else if (mode == QLatin1String("legacy")) options.forcedOuterJoins = OuterJoinMode::Legacy;
            else
                throw DatabaseError(QStringLiteral("%1 must be ansi or legacy, not \"%2\"").arg(kOuterJoinOption, mode),
                                    ErrorKind::Argument);
        } else if (!attribute.trimmed().isEmpty()) {
            kept << attribute;
        }
    }
    options.driverString = kept.join(QLatin1Char(';'));
    return options;
}

OdbcConnection::OdbcConnection(const QString& connectionString) {
    const ConnectionOptions options = parseConnectionString(connectionString);
    try {
        if (!SQL_SUCCEEDED(SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &env_)))
            throw DatabaseError(QStringLiteral("ODBC environment could not be allocated"));
        check(SQLSetEnvAttr(env_, SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0),
              SQL_HANDLE_ENV, env_, "SQLSetEnvAttr");
        check(SQLAllocHandle(SQL_HANDLE_DBC, env_, &dbc_), SQL_HANDLE_ENV, env_, "connection allocation");
        QString driverString = options.driverString;
        const SQLRETURN rc = SQLDriverConnectW(dbc_, nullptr, wide(driverString), SQL_NTS, nullptr, 0, nullptr,
                                               SQL_DRIVER_NOPROMPT);
        if (!SQL_SUCCEEDED(rc)) {
            const QString message = diagnostics(SQL_HANDLE_DBC, dbc_);
            SQLFreeHandle(SQL_HANDLE_DBC, dbc_);  // never connected: nothing to disconnect
            dbc_ = nullptr;
            throw DatabaseError(message.isEmpty() ? QStringLiteral("ODBC connection failed") : message);
        }
        chooseOuterJoinMode(options.forcedOuterJoins);
    } catch (...) {
        disconnect();
        throw;
    }
}

OdbcConnection::~OdbcConnection() { disconnect(); }

void OdbcConnection::disconnect() {
    if (dbc_) {
        // An open transaction ends with the connection, rolled back, as on a dropped link.
        if (inTransaction_) SQLEndTran(SQL_HANDLE_DBC, dbc_, SQL_ROLLBACK);
        SQLDisconnect(dbc_);
        SQLFreeHandle(SQL_HANDLE_DBC, dbc_);
        dbc_ = nullptr;
    }
    if (env_) {
        SQLFreeHandle(SQL_HANDLE_ENV, env_);
        env_ = nullptr;
    }
}

void OdbcConnection::chooseOuterJoinMode(std::optional<OuterJoinMode> forced) {
    if (forced) {
        outerJoinMode_ = *forced;
        outerJoinModeReason_ = QStringLiteral("forced by %1=%2")
                                   .arg(kOuterJoinOption, *forced == OuterJoinMode::Ansi ? "ansi" : "legacy");
        return;
    }
    // sysdatabases answers on SQL Server 2000 and later alike. Another kind of server (or
    // a driver without master) cannot say; its statements then go through unchanged.
    try {
        const TextOutcome level = executeText(
            dbc_, QStringLiteral("select cmptlevel from master.dbo.sysdatabases where name = db_name()"));
        bool ok = false;
        const int cmptlevel = level.rows.empty() ? 0 : level.rows.rows[0][0].toInt(&ok);
        if (!ok) {
            outerJoinModeReason_ = QStringLiteral("compatibility level not found; statements go unchanged");
            return;
        }
        outerJoinMode_ = cmptlevel >= 90 ? OuterJoinMode::Ansi : OuterJoinMode::Legacy;
        outerJoinModeReason_ = QStringLiteral("compatibility level %1").arg(cmptlevel);
    } catch (const DatabaseError& e) {
        outerJoinModeReason_ =
            QStringLiteral("compatibility level unreadable (%1); statements go unchanged").arg(e.message());
    }
}

const dialect::Catalog& OdbcConnection::catalog() {
    const auto turn = lock();
    if (!catalog_) catalog_ = std::make_unique<OdbcCatalog>(*this);
    return *catalog_;
}

QString OdbcConnection::serverText(const QString& sql) {
    const auto turn = lock();
    if (outerJoinMode_ == OuterJoinMode::Legacy || !dialect::hasOldOuterJoin(sql)) return sql;
    if (const auto kept = rewrites_.constFind(sql); kept != rewrites_.constEnd()) return *kept;
    try {
        QString rewritten = dialect::rewriteOuterJoins(sql, catalog());
        const qsizetype bytes = (sql.size() + rewritten.size()) * qsizetype(sizeof(QChar));
        if (rewriteBytes_ + bytes > kMaxRewriteBytes) {
            rewrites_.clear();
            rewriteBytes_ = 0;
        }
        if (bytes <= kMaxRewriteBytes) {
            rewrites_.insert(sql, rewritten);
            rewriteBytes_ += bytes;
        }
        return rewritten;
    } catch (const dialect::SqlError& e) {
        throw DatabaseError(QString::fromUtf8(e.what()), e.kind());
    }
}

void* OdbcConnection::statementSlot() {
    if (openCursor_) openCursor_->readRest();
    return dbc_;
}

TextOutcome OdbcConnection::run(const QString& sql) {
    QString text = serverText(sql);
    return executeText(statementSlot(), std::move(text));
}

RowSet OdbcConnection::runQuery(const QString& sql) { return run(sql).rows; }

std::unique_ptr<Cursor> OdbcConnection::runOpenCursor(const QString& sql) {
    return std::make_unique<OdbcCursor>(*this, serverText(sql));
}

qint64 OdbcConnection::runExecute(const QString& sql) { return run(sql).changed; }

void OdbcConnection::runBegin() {
    if (inTransaction_) throw transactionAlreadyOpen();
    check(SQLSetConnectAttrW(statementSlot(), SQL_ATTR_AUTOCOMMIT, reinterpret_cast<SQLPOINTER>(SQL_AUTOCOMMIT_OFF),
                             SQL_IS_UINTEGER),
          SQL_HANDLE_DBC, dbc_, "begin transaction");
    inTransaction_ = true;
}

void OdbcConnection::endTransaction(short completion) {
    // A failed commit leaves the transaction open, so the caller can still roll it back.
    check(SQLEndTran(SQL_HANDLE_DBC, statementSlot(), completion), SQL_HANDLE_DBC, dbc_,
          completion == SQL_COMMIT ? "commit" : "rollback");
    inTransaction_ = false;
    check(SQLSetConnectAttrW(dbc_, SQL_ATTR_AUTOCOMMIT, reinterpret_cast<SQLPOINTER>(SQL_AUTOCOMMIT_ON),
                             SQL_IS_UINTEGER),
          SQL_HANDLE_DBC, dbc_, "end transaction");
}

void OdbcConnection::runCommit() {
    if (!inTransaction_) throw noTransactionToCommit();
    endTransaction(SQL_COMMIT);
}

void OdbcConnection::runRollback() {
    if (!inTransaction_) throw noTransactionToRollBack();
    endTransaction(SQL_ROLLBACK);
}

namespace {

// Output strings declared without a size get room for SQL Server's longest nvarchar.
constexpr qsizetype kDefaultOutputChars = 4000;

// The buffers one procedure parameter is bound to; they live until the outputs are read.
struct BoundParameter {
    SQLBIGINT integer = 0;
    SQLINTEGER returnCode = 0;
    double number = 0;
    SQL_TIMESTAMP_STRUCT timestamp{};
    unsigned char bit = 0;
    std::vector<SQLWCHAR> text;
    SQLLEN indicator = 0;
};

DatabaseError badParameterValue(const ProcedureParam& param, const char* expected) {
    return DatabaseError(QStringLiteral("parameter %1: \"%2\" is not %3")
                             .arg(param.name, param.value.toString(), QLatin1String(expected)),
                         ErrorKind::Value);
}

void bindParameter(const StatementHandle& stmt, SQLUSMALLINT number, const ProcedureParam& param,
                   BoundParameter& bound) {
    const bool sendsValue = param.direction == ParamDirection::Input || param.direction == ParamDirection::InputOutput;
    const bool isNull = !sendsValue || !param.value.isValid();
    SQLSMALLINT io = SQL_PARAM_INPUT;
    if (param.direction == ParamDirection::InputOutput) io = SQL_PARAM_INPUT_OUTPUT;
    if (param.direction == ParamDirection::Output || param.direction == ParamDirection::ReturnValue)
        io = SQL_PARAM_OUTPUT;

    SQLSMALLINT cType = SQL_C_SBIGINT, sqlType = SQL_BIGINT, digits = 0;
    SQLULEN columnSize = 0;
    SQLPOINTER buffer = &bound.integer;
    SQLLEN bufferBytes = 0;
    bool ok = true;
    if (param.direction == ParamDirection::ReturnValue) {
        cType = SQL_C_SLONG, sqlType = SQL_INTEGER, buffer = &bound.returnCode;
    } else {
        switch (param.type) {
        case FieldType::Integer:
            if (!isNull) bound.integer = param.value.toLongLong(&ok);
            if (!ok) throw badParameterValue(param, "an integer");
            break;
        case FieldType::Boolean:
            cType = SQL_C_BIT, sqlType = SQL_BIT, columnSize = 1, buffer = &bound.bit;
            if (!isNull) bound.bit = param.value.toBool() ? 1 : 0;
            break;
        case FieldType::Float:
        case FieldType::Currency:
        case FieldType::Bcd:
            cType = SQL_C_DOUBLE, buffer = &bound.number;
            // money is decimal(19,4) on the server; BCD parameters carry the widest
            // decimal and the server converts to the procedure's own precision.
            if (param.type == FieldType::Float) sqlType = SQL_DOUBLE, columnSize = 15;
            else if (param.type == FieldType::Currency) sqlType = SQL_DECIMAL, columnSize = 19, digits = 4;
            else sqlType = SQL_DECIMAL, columnSize = 38, digits = 10;
            if (!isNull) bound.number = param.value.toDouble(&ok);
            if (!ok) throw badParameterValue(param, "a number");
            break;
        case FieldType::DateTime: {
            cType = SQL_C_TYPE_TIMESTAMP, sqlType = SQL_TYPE_TIMESTAMP, columnSize = 23, digits = 3;
            buffer = &bound.timestamp;
            if (isNull) break;
            const QDateTime when = param.value.typeId() == QMetaType::QString
                                       ? parseDateTimeText(param.value.toString())
                                       : param.value.toDateTime();
            if (!when.isValid()) throw badParameterValue(param, "a date");
            bound.timestamp = toTimestamp(when);
            break;
        }
        case FieldType::String: {
            const QString value = isNull ? QString() : param.value.toString();
            qsizetype capacity = std::max<qsizetype>(param.size, value.size());
            if (io != SQL_PARAM_INPUT && param.size <= 0) capacity = std::max(capacity, kDefaultOutputChars);
            bound.text.assign(capacity + 1, 0);
            std::copy(value.utf16(), value.utf16() + value.size(), bound.text.begin());
            cType = SQL_C_WCHAR, sqlType = SQL_WVARCHAR, columnSize = SQLULEN(std::max<qsizetype>(capacity, 1));
            buffer = bound.text.data();
            bufferBytes = SQLLEN(bound.text.size() * sizeof(SQLWCHAR));
            bound.indicator = SQLLEN(value.size() * sizeof(SQLWCHAR));
            break;
        }
        }
    }
    if (isNull) bound.indicator = SQL_NULL_DATA;
    stmt.check(SQLBindParameter(stmt.get(), number, io, cType, sqlType, columnSize, digits, buffer, bufferBytes,
                                &bound.indicator),
               "SQLBindParameter");
}

Value outputValue(const ProcedureParam& param, const BoundParameter& bound) {
    if (bound.indicator == SQL_NULL_DATA) return {};
    if (param.direction == ParamDirection::ReturnValue) return qlonglong(bound.returnCode);
    switch (param.type) {
    case FieldType::Integer: return qlonglong(bound.integer);
    case FieldType::Boolean: return bound.bit != 0;
    case FieldType::Float:
    case FieldType::Currency:
    case FieldType::Bcd: return bound.number;
    case FieldType::DateTime: return fromTimestamp(bound.timestamp);
    case FieldType::String: break;
    }
    const qsizetype capacity = qsizetype(bound.text.size()) - 1;
    const qsizetype length = bound.indicator == SQL_NO_TOTAL ? capacity
                                 : std::min(capacity, qsizetype(bound.indicator / sizeof(SQLWCHAR)));
    return fromWide(bound.text.data(), length);
}

}  // namespace

qint64 OdbcConnection::runBound(QString text, const std::vector<ProcedureParam*>& markers) {
    StatementHandle stmt(statementSlot());
    stmt.check(SQLPrepareW(stmt.get(), wide(text), SQL_NTS), "SQLPrepare");
    std::vector<BoundParameter> bound(markers.size());
    for (size_t i = 0; i < markers.size(); ++i) bindParameter(stmt, SQLUSMALLINT(i + 1), *markers[i], bound[i]);
    SQLRETURN rc = SQLExecute(stmt.get());
    stmt.check(rc, "SQLExecute");
    SQLLEN changed = -1;
    if (rc != SQL_NO_DATA) stmt.check(SQLRowCount(stmt.get(), &changed), "SQLRowCount");
    // The server sends output values after every result the statement produced.
    while (rc != SQL_NO_DATA) {
        rc = SQLMoreResults(stmt.get());
        stmt.check(rc, "SQLMoreResults");
    }
    for (size_t i = 0; i < markers.size(); ++i)
        if (markers[i]->direction != ParamDirection::Input) markers[i]->value = outputValue(*markers[i], bound[i]);
    return changed;
}

qint64 OdbcConnection::executeBound(const QString& sql, std::vector<ProcedureParam>& params) {
    const auto turn = lock();
    notify({StatementEvent::Statement, sql});
    std::vector<ProcedureParam*> markers;
    for (auto& param : params) markers.push_back(&param);
    return runBound(serverText(sql), markers);
}

// {? = call name(?, ...)}: the return value (where the call declares one) is the first
// marker, the other parameters follow in their order.
void OdbcConnection::runProcedure(ProcedureCall& call) {
    std::vector<ProcedureParam*> markers;
    for (auto& param : call.params) {
        if (param.direction != ParamDirection::ReturnValue) {
            markers.push_back(&param);
        } else if (!markers.empty() && markers.front()->direction == ParamDirection::ReturnValue) {
            throw DatabaseError(QStringLiteral("Procedure %1 declares two return values").arg(call.name), ErrorKind::Argument);
        } else {
            markers.insert(markers.begin(), &param);
        }
    }
    const bool hasReturnValue = !markers.empty() && markers.front()->direction == ParamDirection::ReturnValue;
    QStringList arguments;
    for (size_t i = hasReturnValue ? 1 : 0; i < markers.size(); ++i) arguments << QStringLiteral("?");
    runBound(QStringLiteral("{%1call %2%3}")
                 .arg(hasReturnValue ? QStringLiteral("? = ") : QString(), call.name,
                      arguments.isEmpty() ? QString()
                                          : QLatin1Char('(') + arguments.join(QLatin1Char(',')) + QLatin1Char(')')),
             markers);
}

}  // namespace kivdb

#pragma once
// The host's open connection: the embedded database (a SQLite file that runs the suite's
// T-SQL through the dialect layer) or SQL Server through ODBC.
//
//   sqlite:PATH            embedded database file (UTF-8); sqlite::memory: for a private one
//   odbc:CONNECTION-STRING  unixODBC, normally FreeTDS: Driver=FreeTDS;Server=..;Port=1433;...
//
// Every statement passes through the observers exactly as the library built it, before any
// rewrite; every procedure call too. Errors are DatabaseError carrying the driver's message.
//
// Hosts share one connection between threads. Calls on a connection take turns: each
// statement, procedure call and transaction step holds the connection's lock from the
// moment it is sent until its last row is read. A caller that needs several calls to
// follow each other unbroken (a transaction) holds lock() around them; the C interface
// does that for every export.
#include "base/error.h"

#include <QDateTime>
#include <QString>
#include <QVariant>
#include <functional>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <vector>

namespace kivdb {

// Field types of a result column. Float, Currency and Bcd are the numeric fields.
enum class FieldType { String, Integer, Float, Currency, Bcd, DateTime, Boolean };

// A field value. An invalid (null) QVariant is SQL NULL; otherwise QString, qlonglong,
// double (float, currency, BCD), QDateTime or bool, as the column's FieldType says.
using Value = QVariant;

struct Column {
    QString name;
    FieldType type = FieldType::String;
    // Digits after the point the server shows for a Currency or Bcd column (money: 4,
    // decimal(p, s): s); -1 when not known or not such a column.
    int scale = -1;
};

// A fully read result set.
struct RowSet {
    std::vector<Column> columns;
    std::vector<std::vector<Value>> rows;

    bool empty() const { return rows.empty(); }
    // Index of a column by name, compared without regard to case; -1 when absent.
    int columnIndex(const QString& name) const;
};

// What the data layer raises. Most are failures of the database (kind Database); the kind
// says when the statement was refused (Sql) or the caller's input was wrong (Argument).
class DatabaseError : public Error {
public:
    explicit DatabaseError(const QString& message, ErrorKind kind = ErrorKind::Database);
    QString message() const { return QString::fromUtf8(what()); }
};

enum class ParamDirection { Input, Output, InputOutput, ReturnValue };

struct ProcedureParam {
    QString name;  // with its '@', as the server names it
    FieldType type = FieldType::Integer;
    ParamDirection direction = ParamDirection::Input;
    int size = 0;  // characters, for strings
    Value value;
};

// A stored-procedure call with ordered parameters; after the call the output parameters
// and the return value (a ReturnValue parameter, if declared) hold what the procedure set.
struct ProcedureCall {
    QString name;
    std::vector<ProcedureParam> params;

    ProcedureParam& param(const QString& name);              // throws DatabaseError if absent
    const ProcedureParam& param(const QString& name) const;
    ProcedureCall& add(const QString& name, FieldType type, ParamDirection dir, int size = 0,
                       const Value& value = {});
};

struct StatementEvent {
    enum Kind { Statement, Procedure } kind;
    QString text;  // the statement as built, or the procedure's name
    const ProcedureCall* call = nullptr;  // for Procedure events
    // Run by an embedded procedure, not sent by the library (on SQL Server it would stay
    // inside the server).
    bool insideProcedure = false;
};
using StatementObserver = std::function<void(const StatementEvent&)>;

enum class Backend { Embedded, Odbc };

// A forward-only read of one statement's rows, page by page. It holds its connection's lock
// only while it opens and while it fetches, so other statements may run between fetches.
// It must not outlive its connection. The column types are settled when it opens: a
// computed column the statement gives no type takes the storage class of its first non-null
// value among the first rows (a page), else String.
class Cursor {
public:
    virtual ~Cursor() = default;
    const std::vector<Column>& columns() const { return columns_; }
    // Up to maxRows further rows, fewer at the end, none after it. Throws DatabaseError.
    virtual std::vector<std::vector<Value>> fetch(int maxRows) = 0;
    // True once every row has been handed out.
    virtual bool atEnd() const = 0;

protected:
    std::vector<Column> columns_;
};

// Owned through a shared pointer wherever a handle to it may outlive its owner (the C
// interface's handles hold a weak reference), so a stale handle finds it gone.
class Connection : public std::enable_shared_from_this<Connection> {
public:
    // Opens a connection from its URL (see above). Throws DatabaseError.
    static std::unique_ptr<Connection> open(const QString& url);
    virtual ~Connection();

    // A statement that returns rows. An empty text raises, as the data layer does.
    RowSet query(const QString& sql);
    // A statement that returns none; answers the number of rows affected (-1 if unknown).
    qint64 execute(const QString& sql);
    // A statement that returns rows, read as the caller fetches them: observers see it once,
    // here; an empty text raises. The embedded database keeps the statement prepared and
    // steps it on each fetch (a text of several statements, or one without rows, is read
    // whole at once). Over ODBC the cursor reads the first result that has columns from the
    // driver as it is fetched; a server connection carries one result at a time, so when
    // another statement runs first, the cursor reads its remaining rows into memory. Either
    // way other statements may run while a cursor lives.
    std::unique_ptr<Cursor> openCursor(const QString& sql);
    // A stored procedure with ordered parameters.
    void call(ProcedureCall& call);

    void begin();
    void commit();
    void rollback();
    virtual bool inTransaction() const = 0;

    // This connection's turn: other threads' calls on it wait until the lock is released.
    // Recursive, so calls made while holding it go through.
    std::unique_lock<std::recursive_mutex> lock() const { return std::unique_lock(mutex_); }

    virtual Backend backend() const = 0;

    // Observers see statements and procedure calls in order. Returns an id for removal.
    int addObserver(StatementObserver observer);
    void removeObserver(int id);

protected:
    Connection() = default;
    virtual RowSet runQuery(const QString& sql) = 0;
    // By default the whole result of runQuery.
    virtual std::unique_ptr<Cursor> runOpenCursor(const QString& sql);
    virtual qint64 runExecute(const QString& sql) = 0;
    virtual void runProcedure(ProcedureCall& call) = 0;
    virtual void runBegin() = 0;
    virtual void runCommit() = 0;
    virtual void runRollback() = 0;
    // For a backend's own kinds of statement, so observers still see them all.
    void notify(const StatementEvent& event);

private:
    mutable std::recursive_mutex mutex_;
    std::vector<std::pair<int, StatementObserver>> observers_;
    int nextObserverId_ = 1;
    int insideProcedure_ = 0;
};

}  // namespace kivdb

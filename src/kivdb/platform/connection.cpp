#include "platform/connection.h"

#include "platform/connection_support.h"

#include "platform/odbc_connection.h"
#include "platform/sqlite_connection.h"

namespace kivdb {

int RowSet::columnIndex(const QString& name) const {
    for (size_t i = 0; i < columns.size(); ++i)
        if (columns[i].name.compare(name, Qt::CaseInsensitive) == 0) return int(i);
    return -1;
}

DatabaseError::DatabaseError(const QString& message) : std::runtime_error(message.toStdString()) {}

ProcedureParam& ProcedureCall::param(const QString& paramName) {
    for (auto& p : params)
        if (p.name.compare(paramName, Qt::CaseInsensitive) == 0) return p;
    throw DatabaseError(QStringLiteral("Procedure %1 has no parameter %2").arg(name, paramName));
}

const ProcedureParam& ProcedureCall::param(const QString& paramName) const {
    return const_cast<ProcedureCall*>(this)->param(paramName);
}

ProcedureCall& ProcedureCall::add(const QString& paramName, FieldType type, ParamDirection dir,
                                  int size, const Value& value) {
    params.push_back({paramName, type, dir, size, value});
    return *this;
}

Connection::~Connection() = default;

std::unique_ptr<Connection> Connection::open(const QString& url) {
    static const QLatin1String sqlitePrefix("sqlite:"), odbcPrefix("odbc:");
    if (url.startsWith(sqlitePrefix, Qt::CaseInsensitive))
        return std::make_unique<SqliteConnection>(url.mid(sqlitePrefix.size()),
                                                  SqliteConnection::OpenMode::ExistingFile);
    if (url.startsWith(odbcPrefix, Qt::CaseInsensitive))
        return std::make_unique<OdbcConnection>(url.mid(odbcPrefix.size()));
    throw DatabaseError(
        // The text itself is not repeated: an ODBC string without its prefix holds a password.
        QStringLiteral("unknown kind of connection: expected sqlite:PATH or odbc:CONNECTION-STRING"));
}

// The data layer refuses to run a command without text; callers (and tests) rely on that.
static void refuseEmpty(const QString& sql) {
    if (sql.trimmed().isEmpty())
        throw DatabaseError(QStringLiteral("Command text was not set for the command object."));
}

RowSet Connection::query(const QString& sql) {
    const auto turn = lock();
    notify({StatementEvent::Statement, sql});
    refuseEmpty(sql);
    return runQuery(sql);
}

namespace {

// A result read whole, handed out in pages.
class RowSetCursor final : public Cursor {
public:
    explicit RowSetCursor(RowSet rows) : rows_(std::move(rows.rows)) { columns_ = std::move(rows.columns); }
    std::vector<std::vector<Value>> fetch(int maxRows) override {
        const size_t count = std::min(rows_.size() - next_, size_t(std::max(maxRows, 0)));
        std::vector<std::vector<Value>> page(std::make_move_iterator(rows_.begin() + qsizetype(next_)),
                                             std::make_move_iterator(rows_.begin() + qsizetype(next_ + count)));
        next_ += count;
        return page;
    }
    bool atEnd() const override { return next_ == rows_.size(); }

private:
    std::vector<std::vector<Value>> rows_;
    size_t next_ = 0;
};

}  // namespace

std::unique_ptr<Cursor> cursorOverRows(RowSet rows) { return std::make_unique<RowSetCursor>(std::move(rows)); }

std::unique_ptr<Cursor> Connection::runOpenCursor(const QString& sql) { return cursorOverRows(runQuery(sql)); }

std::unique_ptr<Cursor> Connection::openCursor(const QString& sql) {
    const auto turn = lock();
    notify({StatementEvent::Statement, sql});
    refuseEmpty(sql);
    return runOpenCursor(sql);
}

qint64 Connection::execute(const QString& sql) {
    const auto turn = lock();
    notify({StatementEvent::Statement, sql});
    refuseEmpty(sql);
    return runExecute(sql);
}

// What a procedure runs is the server's business: on SQL Server nobody sees it. The
// statements of an embedded procedure reach observers marked as such, so that a trace can
// show what the library sent and nothing more.
void Connection::call(ProcedureCall& call) {
    const auto turn = lock();
    notify({StatementEvent::Procedure, call.name, &call});
    ++insideProcedure_;
    try {
        runProcedure(call);
    } catch (...) {
        --insideProcedure_;
        throw;
    }
    --insideProcedure_;
}

void Connection::begin() {
    const auto turn = lock();
    runBegin();
}

void Connection::commit() {
    const auto turn = lock();
    runCommit();
}

void Connection::rollback() {
    const auto turn = lock();
    runRollback();
}

int Connection::addObserver(StatementObserver observer) {
    const auto turn = lock();
    observers_.emplace_back(nextObserverId_, std::move(observer));
    return nextObserverId_++;
}

void Connection::removeObserver(int id) {
    const auto turn = lock();
    std::erase_if(observers_, [id](const auto& o) { return o.first == id; });
}

void Connection::notify(const StatementEvent& event) {
    StatementEvent marked = event;
    marked.insideProcedure = insideProcedure_ > 0;
    for (auto& [id, observer] : observers_) observer(marked);
}

}  // namespace kivdb

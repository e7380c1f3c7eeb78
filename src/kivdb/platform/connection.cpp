#include "platform/connection.h"

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

// The data layer refuses to run a command without text; callers (and tests) rely on that.
static void refuseEmpty(const QString& sql) {
    if (sql.trimmed().isEmpty())
        throw DatabaseError(QStringLiteral("Command text was not set for the command object."));
}

RowSet Connection::query(const QString& sql) {
    notify({StatementEvent::Statement, sql});
    refuseEmpty(sql);
    return runQuery(sql);
}

qint64 Connection::execute(const QString& sql) {
    notify({StatementEvent::Statement, sql});
    refuseEmpty(sql);
    return runExecute(sql);
}

void Connection::call(ProcedureCall& call) {
    notify({StatementEvent::Procedure, call.name, &call});
    runProcedure(call);
}

int Connection::addObserver(StatementObserver observer) {
    observers_.emplace_back(nextObserverId_, std::move(observer));
    return nextObserverId_++;
}

void Connection::removeObserver(int id) {
    std::erase_if(observers_, [id](const auto& o) { return o.first == id; });
}

void Connection::notify(const StatementEvent& event) {
    for (auto& [id, observer] : observers_) observer(event);
}

}  // namespace kivdb

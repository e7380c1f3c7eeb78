#include "platform/embedded_procedure_support.h"

#include "dialect/dialect.h"

#include "platform/sqlite_connection.h"

#include <sqlite3.h>

namespace kivdb {
namespace {

const ProcedureParam& argument(const ProcedureCall& call, const QString& name) {
    const ProcedureParam& param = call.param(name);
    if (param.direction == ParamDirection::ReturnValue)
        throw DatabaseError(QStringLiteral("Procedure '%1': %2 is the return value, not an argument.")
                                .arg(call.name, name), ErrorKind::Argument);
    return param;
}

void execSavepointControl(sqlite3* db, const QByteArray& sql) {
    if (sqlite3_exec(db, sql.constData(), nullptr, nullptr, nullptr) != SQLITE_OK)
        throw DatabaseError(QString::fromUtf8(sqlite3_errmsg(db)), dialect::engineErrorKind(sqlite3_extended_errcode(db)));
}

// Text between delimiters, the closing one doubled inside, as T-SQL reads literals and names.
QString enclosed(const QString& text, QLatin1Char open, QLatin1Char close) {
    QString doubled = text;
    doubled.replace(close, QString(2, close));
    return open + doubled + close;
}

}  // namespace

SqliteConnection& embeddedConnection(Connection& conn) {
    if (auto* embedded = dynamic_cast<SqliteConnection*>(&conn)) return *embedded;
    throw DatabaseError(QStringLiteral("embedded procedures run on the embedded database only"));
}

std::optional<qint64> integerArgument(const ProcedureCall& call, const QString& name) {
    const Value& value = argument(call, name).value;
    if (!value.isValid() || value.isNull()) return std::nullopt;
    bool ok = false;
    const qint64 number = value.toLongLong(&ok);
    if (!ok)
        throw DatabaseError(QStringLiteral("Procedure '%1': %2 expects an integer, got '%3'.")
                                .arg(call.name, name, dialect::quotedExcerpt(value.toString())),
                            ErrorKind::Value);
    return number;
}

std::optional<QString> textArgument(const ProcedureCall& call, const QString& name) {
    const Value& value = argument(call, name).value;
    if (!value.isValid() || value.isNull()) return std::nullopt;
    return value.toString();
}

void setReturnCode(ProcedureCall& call, int code) {
    for (auto& param : call.params)
        if (param.direction == ParamDirection::ReturnValue) param.value = qlonglong(code);
}

QString sqlTextLiteral(const QString& text) { return enclosed(text, QLatin1Char('\''), QLatin1Char('\'')); }

QString sqlBracketedName(const QString& name) { return enclosed(name, QLatin1Char('['), QLatin1Char(']')); }

ProcedureScope::ProcedureScope(Connection& conn, const char* savepointName) : conn_(embeddedConnection(conn)) {
    if (!conn_.inTransaction()) {
        conn_.begin();
        return;
    }
    savepoint_ = savepointName;
    execSavepointControl(conn_.handle(), "SAVEPOINT " + savepoint_);
}

ProcedureScope::~ProcedureScope() {
    if (open_) undo();
}

void ProcedureScope::commit() {
    if (savepoint_.isEmpty()) conn_.commit();
    else execSavepointControl(conn_.handle(), "RELEASE " + savepoint_);
    open_ = false;
}

void ProcedureScope::undo() noexcept {
    open_ = false;
    // A failure may already have ended the transaction (a full disk does); then there is
    // nothing left to undo.
    if (!conn_.inTransaction()) return;
    if (savepoint_.isEmpty()) {
        try {
            conn_.rollback();
        } catch (const DatabaseError&) {
            // Closing or the next statement reports a connection that cannot roll back.
        }
        return;
    }
    sqlite3_exec(conn_.handle(), ("ROLLBACK TO " + savepoint_).constData(), nullptr, nullptr, nullptr);
    sqlite3_exec(conn_.handle(), ("RELEASE " + savepoint_).constData(), nullptr, nullptr, nullptr);
}

}  // namespace kivdb

#pragma once
// What the embedded implementations of the server procedures share: reading their
// arguments, setting the return code, and the unit of work a procedure runs as.
#include "platform/connection.h"

#include <optional>

namespace kivdb {

class SqliteConnection;

// The embedded connection a registered procedure runs on. DatabaseError for any other
// kind: the server runs its own procedures.
SqliteConnection& embeddedConnection(Connection& conn);

// An integer input parameter; nullopt for NULL. DatabaseError when the call does not carry
// the parameter or its value is no integer, as the server refuses such an argument.
std::optional<qint64> integerArgument(const ProcedureCall& call, const QString& name);
// A text input parameter; nullopt for NULL. DatabaseError when the call does not carry it.
std::optional<QString> textArgument(const ProcedureCall& call, const QString& name);

// The procedure's return code, into the caller's ReturnValue parameter when it declared one.
void setReturnCode(ProcedureCall& call, int code);

// T-SQL literal of a text: between single quotes, a quote inside doubled.
QString sqlTextLiteral(const QString& text);
// T-SQL name in brackets, a closing bracket inside doubled.
QString sqlBracketedName(const QString& name);

// A procedure's statements as one unit. Outside a transaction the scope begins one of its
// own (on the embedded engine that takes the write lock at once, so reads inside it see
// no other writer) and commit() commits it. Inside the caller's transaction it marks a
// savepoint instead, and commit() only releases it: undoing the procedure never undoes the
// caller's earlier work, and whether anything is kept stays the caller's decision. What is
// not committed is undone when the scope ends, on every path out of the procedure.
class ProcedureScope {
public:
    // savepointName: letters, digits and '_' only; the procedure's name serves.
    ProcedureScope(Connection& conn, const char* savepointName);
    ~ProcedureScope();
    ProcedureScope(const ProcedureScope&) = delete;
    ProcedureScope& operator=(const ProcedureScope&) = delete;

    void commit();

private:
    void undo() noexcept;

    SqliteConnection& conn_;
    QByteArray savepoint_;  // empty when the scope runs its own transaction
    bool open_ = true;
};

}  // namespace kivdb

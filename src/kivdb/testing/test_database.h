#pragma once
// Test support: a private embedded database with the tables and rows a test sets up, and a
// recorder of the statements the library sends on it.
#include "platform/connection.h"

#include <QStringList>
#include <memory>

namespace kivdb::testing {

// A fresh in-memory embedded database after running the given T-SQL statements.
std::unique_ptr<Connection> memoryDatabase(const QStringList& setup = {});
// Runs the statements in order on the connection.
void executeAll(Connection& conn, const QStringList& statements);

// Records statements ("SQL text") and procedure calls ("PROC name") while it lives, as the
// library sent them: what an embedded procedure runs inside is left out.
class StatementRecorder {
public:
    explicit StatementRecorder(Connection& conn);
    ~StatementRecorder();
    const QStringList& events() const { return events_; }
    QStringList statements() const;  // the SQL texts alone

private:
    Connection& conn_;
    int id_;
    QStringList events_;
};

}  // namespace kivdb::testing

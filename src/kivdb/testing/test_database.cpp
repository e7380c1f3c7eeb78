#include "testing/test_database.h"

namespace kivdb::testing {

void executeAll(Connection& conn, const QStringList& statements) {
    for (const QString& statement : statements) conn.execute(statement);
}

std::unique_ptr<Connection> memoryDatabase(const QStringList& setup) {
    auto conn = Connection::open(QStringLiteral("sqlite::memory:"));
    executeAll(*conn, setup);
    return conn;
}

StatementRecorder::StatementRecorder(Connection& conn) : conn_(conn) {
    id_ = conn_.addObserver([this](const StatementEvent& e) {
        if (e.insideProcedure) return;
        events_ << (e.kind == StatementEvent::Procedure ? QStringLiteral("PROC ") : QStringLiteral("SQL ")) + e.text;
    });
}

StatementRecorder::~StatementRecorder() { conn_.removeObserver(id_); }

QStringList StatementRecorder::statements() const {
    QStringList result;
    for (const QString& e : events_)
        if (e.startsWith(QLatin1String("SQL "))) result << e.mid(4);
    return result;
}

}  // namespace kivdb::testing

#include "testing/test_database.h"

namespace kivdb::testing {

std::unique_ptr<Connection> memoryDatabase(const QStringList& setup) {
    auto conn = Connection::open(QStringLiteral("sqlite::memory:"));
    for (const QString& statement : setup) conn->execute(statement);
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

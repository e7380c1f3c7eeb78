#include "platform/connection.h"

#include <gtest/gtest.h>

namespace kivdb {
namespace {

// A connection whose backend answers nothing: enough to see the shared front end at work.
class NullConnection : public Connection {
public:
    void runBegin() override {}
    void runCommit() override {}
    void runRollback() override {}
    bool inTransaction() const override { return false; }
    Backend backend() const override { return Backend::Embedded; }
    int runs = 0;

protected:
    RowSet runQuery(const QString&) override { ++runs; return {}; }
    qint64 runExecute(const QString&) override { ++runs; return 0; }
    // Like an embedded procedure: runs statements of its own on the same connection.
    void runProcedure(ProcedureCall& call) override {
        ++runs;
        execute("update counters set n = n + 1");
        if (call.name == "failing") throw DatabaseError("procedure failed");
    }
};

TEST(ConnectionFrontEnd, EmptyTextIsRefusedButStillObserved) {
    NullConnection conn;
    QStringList seen;
    conn.addObserver([&](const StatementEvent& e) { seen << e.text; });
    for (const QString& text : {QString(), QStringLiteral("   ")}) {
        EXPECT_THROW(conn.query(text), DatabaseError);
        EXPECT_THROW(conn.execute(text), DatabaseError);
    }
    EXPECT_EQ(conn.runs, 0);
    EXPECT_EQ(seen.size(), 4);
}

TEST(ConnectionFrontEnd, ObserversSeeEventsInOrderUntilRemoved) {
    NullConnection conn;
    QStringList seen;
    int id = conn.addObserver([&](const StatementEvent& e) {
        seen << (e.kind == StatementEvent::Procedure ? "PROC " : "SQL ") + e.text;
    });
    ProcedureCall call{"bs_Get_BillSeqNo", {}};
    conn.query(" select 1 ");
    conn.call(call);
    conn.execute("update t set a = 1");
    conn.removeObserver(id);
    conn.query("select 2");
    EXPECT_EQ(seen, (QStringList{"SQL  select 1 ", "PROC bs_Get_BillSeqNo", "SQL update counters set n = n + 1",
                                 "SQL update t set a = 1"}));
}

TEST(ConnectionFrontEnd, StatementsInsideAProcedureAreMarkedEvenWhenItFails) {
    NullConnection conn;
    QStringList seen;
    conn.addObserver([&](const StatementEvent& e) { seen << (e.insideProcedure ? "inside " : "") + e.text; });
    ProcedureCall failing{"failing", {}};
    EXPECT_THROW(conn.call(failing), DatabaseError);
    conn.query("select 3");
    EXPECT_EQ(seen, (QStringList{"failing", "inside update counters set n = n + 1", "select 3"}));
}

}  // namespace
}  // namespace kivdb

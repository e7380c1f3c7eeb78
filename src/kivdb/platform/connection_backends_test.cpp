// What both backends promise alike, run on each: the embedded database, and ODBC through
// unixODBC with the SQLite ODBC driver standing in for the server.
#include "dialect/sqlite_statement.h"
#include "platform/connection.h"
#include "platform/query_dataset.h"
#include "testing/connections.h"

#include <gtest/gtest.h>
#include <sqlite3.h>


namespace kivdb {
namespace {

struct BackendCase {
    const char* name;
    const char* urlPrefix;  // followed by the database file's path
    bool driverWrapsMessages;  // the ODBC driver adds its name and SQLite's error code
    const char* noteTable;     // T-SQL for the embedded database, SQLite's DDL through ODBC
};

const BackendCase kBackends[] = {
    {"embedded", "sqlite:", false, testing::kNoteTableTsql},
    {"odbc", "odbc:Driver=SQLite3;Database=", true, testing::kNoteTable},
};

class ConnectionBackendTest : public ::testing::TestWithParam<BackendCase> {
protected:
    static void SetUpTestSuite() { testing::useUtf8Locale(); }

    void SetUp() override {
        conn_ = openAnother();
        conn_->execute(GetParam().noteTable);
    }

    std::unique_ptr<Connection> openAnother() { return Connection::open(QLatin1String(GetParam().urlPrefix) + db_.path); }
    qlonglong noteCount(Connection& conn) { return conn.query("select count(*) from note").rows[0][0].toLongLong(); }

    testing::TemporaryDatabase db_;
    std::unique_ptr<Connection> conn_;
};

TEST_P(ConnectionBackendTest, ColumnsCarryFieldTypesValuesAndNulls) {
    conn_->execute("insert into note values ('A-01', 12, 1234.5, 3.1416, 0.25, '2024-03-05 14:30:15.250', 1)");
    conn_->execute("insert into note (code) values ('B-02')");
    const RowSet rows = conn_->query("select code, qty, amount, price, rate, made, posted from note order by code");
    struct Case {
        FieldType type;
        Value expected;
    };
    const Case cases[] = {
        {FieldType::String, QStringLiteral("A-01")},
        {FieldType::Integer, qlonglong(12)},
        {FieldType::Currency, 1234.5},
        {FieldType::Bcd, 3.1416},
        {FieldType::Float, 0.25},
        {FieldType::DateTime, QDateTime(QDate(2024, 3, 5), QTime(14, 30, 15, 250))},
        {FieldType::Boolean, true},
    };
    ASSERT_EQ(rows.rows.size(), 2u);
    for (size_t i = 0; i < std::size(cases); ++i) {
        SCOPED_TRACE(rows.columns[i].name.toStdString());
        EXPECT_EQ(rows.columns[i].type, cases[i].type);
        EXPECT_EQ(rows.rows[0][i], cases[i].expected);
        if (i > 0) EXPECT_FALSE(rows.rows[1][i].isValid());
    }
}

TEST_P(ConnectionBackendTest, CursorReadsWhatQueryReadsWhileOtherStatementsRun) {
    for (const char* code : {"A", "B", "C", "D"}) conn_->execute(QStringLiteral("insert into note (code, qty) values ('%1', 1)").arg(code));
    const char* sql = "select code, qty, amount from note order by code";
    const RowSet whole = conn_->query(sql);
    // Between fetches the connection serves others, even a change to the rows being read.
    struct Case {
        const char* name;
        std::function<void(Connection&)> between;
    };
    const Case cases[] = {
        {"update", [](Connection& c) { c.execute("update note set amount = null where code = 'A'"); }},
        {"transaction", [](Connection& c) { c.begin(); c.execute("update note set qty = 1 where code = 'A'"); c.commit(); }},
        {"another cursor", [](Connection& c) { EXPECT_EQ(c.openCursor("select code from note")->fetch(10).size(), 4u); }},
        {"nothing", [](Connection&) {}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        auto cursor = conn_->openCursor(sql);
        std::vector<std::vector<Value>> rows = cursor->fetch(1);
        c.between(*conn_);
        for (auto& row : cursor->fetch(2)) rows.push_back(std::move(row));
        for (auto& row : cursor->fetch(10)) rows.push_back(std::move(row));
        EXPECT_TRUE(cursor->atEnd());
        EXPECT_EQ(rows, whole.rows);
        ASSERT_EQ(cursor->columns().size(), whole.columns.size());
        for (size_t i = 0; i < whole.columns.size(); ++i) EXPECT_EQ(cursor->columns()[i].type, whole.columns[i].type);
    }
    // A cursor dropped with rows unread leaves the connection free.
    conn_->openCursor(sql)->fetch(1);
    EXPECT_EQ(noteCount(*conn_), 4);
}

TEST_P(ConnectionBackendTest, QueryDataSetWritesBackByTheKeyGiven) {
    conn_->execute("insert into note (code, qty) values ('A', 1)");
    QueryDataSet ds(*conn_, "select code, qty from note");
    ds.open();
    ds.edit();
    ds.fieldByName("qty").setAsInteger(5);
    // Only the embedded database tells the key itself.
    if (GetParam().urlPrefix == std::string("odbc:Driver=SQLite3;Database=")) {
        EXPECT_THROW(ds.post(), DatabaseError);
        ds.setKeyFields("code");
    }
    ds.post();
    EXPECT_EQ(conn_->query("select qty from note").rows[0][0], Value(qlonglong(5)));
}

TEST_P(ConnectionBackendTest, ExecuteAnswersRowsChanged) {
    struct Case {
        const char* text;
        qint64 changed;
    };
    const Case cases[] = {
        {"insert into note (code, qty) values ('a', 1)", 1},
        {"insert into note (code, qty) values ('b', 2)", 1},
        {"update note set qty = qty + 1", 2},
        {"update note set qty = 0 where code = 'none'", 0},
        {"delete from note where qty = 3", 1},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        EXPECT_EQ(conn_->execute(c.text), c.changed);
    }
}

TEST_P(ConnectionBackendTest, ChineseTextRoundTripsInValuesNamesAndConditions) {
    const QString code = QStringLiteral("销售出货单-乙");
    conn_->execute(QStringLiteral("insert into note (code) values ('%1')").arg(code));
    const RowSet rows = conn_->query(QStringLiteral("select code as 单号 from note where code like '销售%乙'"));
    ASSERT_EQ(rows.rows.size(), 1u);
    EXPECT_EQ(rows.columns[0].name, QStringLiteral("单号"));
    EXPECT_EQ(rows.rows[0][0].toString(), code);

    // Read back past the connection: the file holds the text itself, not a mangled copy.
    sqlite3* db = nullptr;
    ASSERT_EQ(sqlite3_open_v2(db_.path.toUtf8().constData(), &db, SQLITE_OPEN_READONLY, nullptr), SQLITE_OK);
    {
        dialect::SqliteStatement stmt(db, "select code from note");
        ASSERT_TRUE(stmt.step());
        EXPECT_EQ(stmt.text(0), code);
    }
    sqlite3_close(db);
}

TEST_P(ConnectionBackendTest, TransactionsCommitRollBackAndRefuseWrongOrder) {
    conn_->begin();
    EXPECT_TRUE(conn_->inTransaction());
    EXPECT_THROW(conn_->begin(), DatabaseError);
    conn_->execute("insert into note (code) values ('gone')");
    conn_->rollback();
    EXPECT_FALSE(conn_->inTransaction());
    EXPECT_EQ(noteCount(*conn_), 0);

    conn_->begin();
    conn_->execute("insert into note (code) values ('kept')");
    conn_->commit();
    // Back in autocommit: this one stays without a commit.
    conn_->execute("insert into note (code) values ('auto')");
    EXPECT_EQ(noteCount(*openAnother()), 2);

    struct Case {
        void (Connection::*action)();
        const char* message;
    };
    const Case cases[] = {
        {&Connection::commit, "The COMMIT TRANSACTION request has no corresponding BEGIN TRANSACTION."},
        {&Connection::rollback, "The ROLLBACK TRANSACTION request has no corresponding BEGIN TRANSACTION."},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(testing::databaseErrorOf([&] { (conn_.get()->*c.action)(); }), c.message);
    }
}

TEST_P(ConnectionBackendTest, ErrorsCarryTheDriversMessageAndTheConnectionCarriesOn) {
    struct Case {
        const char* text;
        const char* message;
        int sqliteCode;
        const char* embeddedMessage;  // where the embedded database words it as the server does
    };
    const Case cases[] = {
        {"select * from nosuch", "no such table: nosuch", SQLITE_ERROR, "Invalid object name 'nosuch'."},
        {"insert into note (qty) values (1)", "NOT NULL constraint failed: note.code", SQLITE_CONSTRAINT, nullptr},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        const std::string expected = GetParam().driverWrapsMessages
                                         ? "[SQLite]" + std::string(c.message) + " (" + std::to_string(c.sqliteCode) + ")"
                                         : c.embeddedMessage ? c.embeddedMessage : c.message;
        EXPECT_EQ(testing::databaseErrorOf([&] { conn_->query(c.text); }), expected);
    }
    EXPECT_EQ(noteCount(*conn_), 0);
}

INSTANTIATE_TEST_SUITE_P(Backends, ConnectionBackendTest, ::testing::ValuesIn(kBackends),
                         [](const auto& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace kivdb

#include "platform/sqlite_connection.h"

#include "platform/procedure_registry.h"
#include "testing/connections.h"
#include "testing/sqlite_database.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <functional>
#include <future>
#include <thread>

namespace kivdb {
namespace {

class SqliteConnectionTest : public ::testing::Test {
protected:
    void SetUp() override {
        conn_ = std::make_unique<SqliteConnection>(db_.path, SqliteConnection::OpenMode::ExistingFile);
        conn_->execute(testing::kNoteTableTsql);
        conn_->execute("create table note_line (code nvarchar(20) references note(code))");
    }

    qlonglong noteCount() { return conn_->query("select count(*) from note").rows[0][0].toLongLong(); }
    bool statementsLeft() { return testing::statementRunning(conn_->handle()); }

    testing::TemporaryDatabase db_;
    std::unique_ptr<SqliteConnection> conn_;
};

TEST_F(SqliteConnectionTest, ExpressionColumnsTakeTheirTypeFromTheFirstValue) {
    conn_->execute("insert into note (code, qty, rate) values ('A-01', 12, 0.25)");
    conn_->execute("insert into note (code) values ('B-02')");
    struct Case {
        const char* expression;
        FieldType type;
        Value expected;
    };
    const Case cases[] = {
        {"qty + 1", FieldType::Integer, qlonglong(13)},
        {"rate * 2", FieldType::Float, 0.5},
        {"code + '/x'", FieldType::String, QStringLiteral("A-01/x")},
        // The first value is null; the first non-null one decides.
        {"case when code = 'A-01' then null else 7 end", FieldType::Integer, Value()},
        {"null", FieldType::String, Value()},
        // The T-SQL types of computed columns: arithmetic on money stays money, a date
        // conversion is a date, an isnull over a decimal stays decimal.
        {"amount * 2", FieldType::Currency, Value()},
        {"isnull(price, 0)", FieldType::Bcd, 0.0},
        {"convert(datetime, '2006-03-31')", FieldType::DateTime, QDateTime(QDate(2006, 3, 31), QTime(0, 0))},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.expression);
        const RowSet rows = conn_->query(QStringLiteral("select %1 from note order by code").arg(QLatin1String(c.expression)));
        ASSERT_EQ(rows.rows.size(), 2u);
        EXPECT_EQ(rows.columns[0].type, c.type);
        EXPECT_EQ(rows.rows[0][0], c.expected);
        EXPECT_EQ(rows.rows[0][0].isValid(), c.expected.isValid());
    }
}
TEST_F(SqliteConnectionTest, DateTextsReadAsDatesAndOtherTextIsKept) {
    struct Case {
        const char* stored;
        Value expected;
    };
    const Case cases[] = {
        {"2024-01-02", QDateTime(QDate(2024, 1, 2), QTime(0, 0))},
        {"2024-01-02 03:04", QDateTime(QDate(2024, 1, 2), QTime(3, 4))},
        {"2024-01-02 03:04:05.5", QDateTime(QDate(2024, 1, 2), QTime(3, 4, 5, 500))},
        {"2024-01-02T03:04:05.1239", QDateTime(QDate(2024, 1, 2), QTime(3, 4, 5, 123))},
        // Blanks around the value, one-digit fields, seconds without a fraction.
        {" \t2024-1-2 3:04:05\n", QDateTime(QDate(2024, 1, 2), QTime(3, 4, 5))},
        {"2024-01-02 ", QDateTime(QDate(2024, 1, 2), QTime(0, 0))},
        {"2024-01-02 03:04:05.1234567", QDateTime(QDate(2024, 1, 2), QTime(3, 4, 5, 123))},
        // Not dates, as another program may have written them into the file: handed on as
        // the text they are, never as a made-up date.
        {"2024-02-30", QStringLiteral("2024-02-30")},
        {"2024-01-02 24:00:00", QStringLiteral("2024-01-02 24:00:00")},
        // Half a time, a time without its separator or with too many digits, a five-digit
        // year, year 0, digits other than ASCII ones, anything after the value.
        {"2024-01-02T", QStringLiteral("2024-01-02T")},
        {"2024-01-02 03:04:", QStringLiteral("2024-01-02 03:04:")},
        {"2024-01-02 03:04:05.", QStringLiteral("2024-01-02 03:04:05.")},
        {"2024-01-02 03:4", QStringLiteral("2024-01-02 03:4")},
        {"2024-01-02 03:04:5", QStringLiteral("2024-01-02 03:04:5")},
        {"2024-01-02 123:04", QStringLiteral("2024-01-02 123:04")},
        {"2024-01-02  03:04", QStringLiteral("2024-01-02  03:04")},
        {"20245-01-02", QStringLiteral("20245-01-02")},
        {"0000-01-01", QStringLiteral("0000-01-01")},
        {"２０２４-01-02", QStringLiteral("２０２４-01-02")},
        {"2024-01-02x", QStringLiteral("2024-01-02x")},
        // Only ASCII blanks surround a date: an ideographic or no-break space keeps it text.
        {"\u30002024-01-02", QStringLiteral("\u30002024-01-02")},
        {"2024-01-02 03:04\u00a0", QStringLiteral("2024-01-02 03:04\u00a0")},
        {"\v2024-01-02\f", QDateTime(QDate(2024, 1, 2), QTime(0, 0))},
        {"soon", QStringLiteral("soon")},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.stored);
        conn_->execute("delete from note");
        // Written past the dialect, which refuses a text that is no date.
        const QByteArray raw = QStringLiteral("insert into note (code, made) values ('D', '%1')")
                                   .arg(QString::fromUtf8(c.stored)).toUtf8();
        ASSERT_EQ(sqlite3_exec(conn_->handle(), raw.constData(), nullptr, nullptr, nullptr), SQLITE_OK);
        EXPECT_EQ(conn_->query("select made from note").rows[0][0], c.expected);
        EXPECT_EQ(conn_->openCursor("select made from note")->fetch(1).at(0)[0], c.expected);
    }
}

TEST_F(SqliteConnectionTest, TextThatIsNoDateIsRefusedForADateColumn) {
    for (const char* text : {"2024-02-30", "soon"}) {
        SCOPED_TRACE(text);
        EXPECT_EQ(testing::databaseErrorOf([&] {
                      conn_->execute(QStringLiteral("insert into note (code, made) values ('E', '%1')").arg(QLatin1String(text)));
                  }),
                  "Conversion failed when converting date and/or time from character string.");
        EXPECT_EQ(noteCount(), 0);
    }
}

TEST_F(SqliteConnectionTest, ExecuteCountsEveryStatementOfAText) {
    // A text of several statements answers the rows all of them changed; one that could
    // change nothing answers -1, and DDL changes no rows.
    EXPECT_EQ(conn_->execute("insert into note (code) values ('b'); insert into note (code) values ('c')"), 2);
    EXPECT_EQ(conn_->execute("update note set qty = 1; create table extra (x int)"), 2);
    EXPECT_EQ(conn_->execute("select * from note"), -1);
    EXPECT_EQ(conn_->execute("delete from note where code = 'b'; select 1"), 1);
}

TEST_F(SqliteConnectionTest, ALongTextRunsEveryStatementOnce) {
    QString text;
    for (int i = 0; i < 20000; ++i) text += QStringLiteral("insert into note (code, qty) values ('n%1', %1);\n").arg(i);
    text += QStringLiteral("delete from note where qty >= 10000;  \n\n");
    EXPECT_EQ(conn_->execute(text), 30000);
    EXPECT_EQ(noteCount(), 10000);
    QString updates;
    for (int i = 0; i < 10000; ++i) updates += QStringLiteral("update note set qty = qty + 1 where code = 'n%1';").arg(i);
    EXPECT_EQ(conn_->query(updates + "select sum(qty) from note").rows[0][0], Value(qlonglong(49995000 + 10000)));
}

TEST_F(SqliteConnectionTest, LastStatementWithRowsGivesTheResult) {
    const RowSet rows = conn_->query(
        "insert into note (code, qty) values ('a', 5); select code from note; select qty * 2 as twice from note");
    ASSERT_EQ(rows.columns.size(), 1u);
    EXPECT_EQ(rows.columns[0].name, QStringLiteral("twice"));
    EXPECT_EQ(rows.rows[0][0], Value(qlonglong(10)));
}

TEST_F(SqliteConnectionTest, FailuresCarrySqliteMessageAndLeaveNothingBehind) {
    conn_->execute("insert into note (code) values ('kept')");
    struct Case {
        const char* text;
        const char* message;
    };
    const Case cases[] = {
        {"selec 1", "Incorrect syntax near 'selec'."},  // refused by the dialect, as the server words it
        {"select * from nosuch", "Invalid object name 'nosuch'."},
        {"insert into note (qty) values (1)", "NOT NULL constraint failed: note.code"},
        {"insert into note_line values ('nosuch')", "FOREIGN KEY constraint failed"},
        // The first insert of a text that fails later is undone with it.
        {"insert into note (code) values ('half'); insert into nosuch values (1)", "Invalid object name 'nosuch'."},
        {"insert into note (code) values ('half'); insert into note (qty) values (1)",
         "NOT NULL constraint failed: note.code"},
        {"insert into note (code) values ('half'); select code from note; select * from nosuch",
         "Invalid object name 'nosuch'."},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        EXPECT_EQ(testing::databaseErrorOf([&] { conn_->query(c.text); }), c.message);
        EXPECT_FALSE(statementsLeft());
        EXPECT_FALSE(conn_->inTransaction());
        EXPECT_EQ(noteCount(), 1);
    }
}

// The translations and prepared statements a connection keeps never answer for a schema
// that has changed since, whoever changed it. '05' finds the integer 5 but not the text '5',
// and a statement translated for an integer column would still find it in a text one.
TEST_F(SqliteConnectionTest, KeptTranslationsFollowSchemaChanges) {
    SqliteConnection other(db_.path, SqliteConnection::OpenMode::ExistingFile);
    const auto retype = [](Connection& conn, const char* table) {
        conn.execute(QStringLiteral("drop table %1; create table %1 (N varchar(10)); insert into %1 values ('5')").arg(table));
    };
    struct Case {
        const char* why;
        const char* setUp;
        const char* statement;
        std::function<void()> between;
        QString before;
        QString after;
    } cases[] = {
        {"another connection retypes the column", "create table Probe1 (N int); insert into Probe1 values (5)",
         "select count(*) from Probe1 where N = '05'", [&] { retype(other, "Probe1"); }, "1", "0"},
        {"this connection retypes it", "create table Probe2 (N int); insert into Probe2 values (5)",
         "select count(*) from Probe2 where N = '05'", [&] { retype(*conn_, "Probe2"); }, "1", "0"},
        {"a temporary table made again", "create table #Probe3 (N int); insert into #Probe3 values (5)",
         "select count(*) from #Probe3 where N = '05'", [&] { retype(*conn_, "#Probe3"); }, "1", "0"},
        // The statement was translated while its table did not exist.
        {"another connection makes the table", "", "select count(*) from Probe4 where N = '05'",
         [&] { other.execute("create table Probe4 (N varchar(10)); insert into Probe4 values ('5')"); }, "error", "0"},
        // More statements than the connection keeps prepared run between the two.
        {"the statement was dropped from the cache", "create table Probe5 (N int); insert into Probe5 values (5)",
         "select count(*) from Probe5 where N = '05'",
         [&] {
             for (int i = 0; i <= StatementCache::kCapacity; ++i) conn_->query(QStringLiteral("select %1").arg(i));
         },
         "1", "1"},
    };
    const auto answer = [&](const char* statement) {
        try {
            return conn_->query(statement).rows[0][0].toString();
        } catch (const DatabaseError&) {
            return QStringLiteral("error");
        }
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.why);
        if (*c.setUp) conn_->execute(c.setUp);
        EXPECT_EQ(answer(c.statement), c.before);
        EXPECT_EQ(answer(c.statement), c.before);  // now from what the connection kept
        c.between();
        EXPECT_EQ(answer(c.statement), c.after);
        EXPECT_FALSE(statementsLeft());
    }
}

// A statement whose shape the connection has run before with other literals answers what a
// connection that never saw the shape answers: the same rows, columns and column names.
TEST_F(SqliteConnectionTest, StatementsOfOneShapeAnswerForTheirOwnLiterals) {
    conn_->execute("insert into note (code, qty) values ('A1', 5); insert into note (code, qty) values ('B2', 7)");
    struct Case {
        const char* before;  // run first, on the same connection
        const char* statement;
    } cases[] = {
        {"select qty from note where code = 'A1'", "select qty from note where code = 'B2'"},
        {"select qty from note where code = 'A1'", "select qty from note where code = 'C3'"},
        // A literal in the select list names its column.
        {"select 'x1' + code from note where code = 'A1'", "select 'y2' + code from note where code = 'B2'"},
        // Compared with a number, the text is converted when the statement is translated.
        {"select code from note where qty = 'abc'", "select code from note where qty = '7'"},
        {"select code from note where code like 'Z9'", "select code from note where code like 'B%'"},
        {"update note set made = 'soon' where code = 'Q1'", "select code, made from note where code = 'A1'"},
        {"select count(*) from note where code = 'A1' or code = 'Q1'", "select count(*) from note where code = 'A1' or code = 'B2'"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.statement);
        try {
            conn_->query(c.before);
        } catch (const DatabaseError&) {
            // Only its shape matters.
        }
        SqliteConnection fresh(db_.path, SqliteConnection::OpenMode::ExistingFile);
        const RowSet expected = fresh.query(c.statement);
        const RowSet rows = conn_->query(c.statement);
        ASSERT_EQ(rows.columns.size(), expected.columns.size());
        for (size_t i = 0; i < rows.columns.size(); ++i) {
            EXPECT_EQ(rows.columns[i].name, expected.columns[i].name);
            EXPECT_EQ(rows.columns[i].type, expected.columns[i].type);
        }
        EXPECT_EQ(rows.rows, expected.rows);
        EXPECT_FALSE(statementsLeft());
    }
}

TEST_F(SqliteConnectionTest, TwoConnectionsToOneFileTakeTurns) {
    auto other = Connection::open(QStringLiteral("sqlite:") + db_.path);
    conn_->begin();
    conn_->execute("insert into note (code) values ('first')");
    // The other connection still reads the committed state ...
    EXPECT_EQ(other->query("select count(*) from note").rows[0][0].toLongLong(), 0);
    // ... and its write waits for the commit instead of failing.
    auto otherWrite = std::async(std::launch::async, [&] {
        return other->execute("insert into note (code) values ('second')");
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    conn_->commit();
    EXPECT_EQ(otherWrite.get(), 1);
    EXPECT_EQ(noteCount(), 2);
}

TEST_F(SqliteConnectionTest, AReaderPartWayThroughItsRowsDoesNotHoldUpAWriter) {
    ASSERT_EQ(sqlite3_exec(conn_->handle(),
                           "with recursive n(i) as (select 1 union all select i + 1 from n where i < 100) "
                           "insert into note (code) select 'R' || i from n",
                           nullptr, nullptr, nullptr),
              SQLITE_OK);
    auto other = Connection::open(QStringLiteral("sqlite:") + db_.path);
    auto cursor = other->openCursor("select code from note");
    size_t read = cursor->fetch(10).size();
    // Commits at once while the reader holds its place, which keeps reading what it began with.
    EXPECT_EQ(conn_->execute("delete from note"), 100);
    while (!cursor->atEnd()) read += cursor->fetch(50).size();
    EXPECT_EQ(read, 100u);
    EXPECT_EQ(noteCount(), 0);
}

// sysobjects is made when a statement first names it: it still answers after the
// transaction it was made in rolls back, and it follows tables made later.
TEST_F(SqliteConnectionTest, SysobjectsAnswersFromTheFirstStatementThatNamesIt) {
    const QString count = QStringLiteral("select count(*) from sysobjects where type = 'U'");
    for (const bool firstInsideRolledBack : {false, true}) {
        SCOPED_TRACE(firstInsideRolledBack);
        SqliteConnection conn(db_.path, SqliteConnection::OpenMode::ExistingFile);
        if (firstInsideRolledBack) {
            conn.begin();
            EXPECT_EQ(conn.query(count).rows[0][0].toLongLong(), 2);
            conn.rollback();
        }
        EXPECT_EQ(conn.query(count).rows[0][0].toLongLong(), 2);
        conn.execute("create table later (n int)");
        EXPECT_EQ(conn.query(count).rows[0][0].toLongLong(), 3);
        conn.execute("drop table later");
    }
}

TEST(SqliteConnectionOpen, OpensByUrlAndRefusesWhatItCannotOpen) {
    QTemporaryDir dir;
    const QString missing = dir.filePath(QStringLiteral("missing.kivdb"));
    struct Case {
        QString url;
        QString message;
    };
    const Case cases[] = {
        {QStringLiteral("sqlite:") + missing, QStringLiteral("database file not found: ") + missing},
        {QStringLiteral("sqlite:"), QStringLiteral("database file not given")},
        {QStringLiteral("mysql:x"),
         QStringLiteral("unknown kind of connection: expected sqlite:PATH or odbc:CONNECTION-STRING")},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.url.toStdString());
        EXPECT_EQ(testing::databaseErrorOf([&] { Connection::open(c.url); }), c.message.toStdString());
    }
    EXPECT_FALSE(QFileInfo::exists(missing));

    auto memory = Connection::open(QStringLiteral("sqlite::memory:"));
    EXPECT_EQ(memory->backend(), Backend::Embedded);
    EXPECT_EQ(memory->query("select 40 + 2").rows[0][0], Value(qlonglong(42)));
}

// A counter procedure in the manner of the suite's numbering: reads and advances a row,
// answers through an input-output and an output parameter and its return value.
void nextNumber(Connection& conn, ProcedureCall& call) {
    const QString kind = call.param("@Kind").value.toString();
    const RowSet current = conn.query(QStringLiteral("select last from counter where kind = '%1'").arg(kind));
    if (current.empty()) {
        call.param("@RETURN_VALUE").value = qlonglong(-1);
        return;
    }
    const qlonglong next = current.rows[0][0].toLongLong() + 1;
    conn.execute(QStringLiteral("update counter set last = %1 where kind = '%2'").arg(next).arg(kind));
    call.param("@No").value = QStringLiteral("%1-%2").arg(call.param("@Prefix").value.toString()).arg(next);
    call.param("@Prefix").value = QStringLiteral("已编号");
}

TEST(EmbeddedProcedures, RegisteredProcedureRunsWithInOutAndReturnParameters) {
    SqliteConnection conn(QStringLiteral(":memory:"), SqliteConnection::OpenMode::CreateIfMissing);
    conn.execute("create table counter (kind text, last int); insert into counter values ('SO', 41)");
    const EmbeddedProcedureRegistration registration(QStringLiteral("kivdb_NextNumber"), nextNumber);
    QStringList seen;
    conn.addObserver([&](const StatementEvent& e) { seen << e.text; });

    struct Case {
        QString name;
        QString kind;
        Value returned, number, prefix;
    };
    const QString prefix = QStringLiteral("出库");
    const Case cases[] = {
        // Names compare as the server's do; a procedure without RETURN answers 0.
        {QStringLiteral("kivdb_NextNumber"), QStringLiteral("SO"), qlonglong(0), QStringLiteral("出库-42"), QStringLiteral("已编号")},
        {QStringLiteral("[dbo].[KIVDB_NEXTNUMBER]"), QStringLiteral("SO"), qlonglong(0), QStringLiteral("出库-43"), QStringLiteral("已编号")},
        {QStringLiteral("dbo.kivdb_nextnumber"), QStringLiteral("PO"), qlonglong(-1), Value(), prefix},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name.toStdString());
        ProcedureCall call{c.name, {}};
        call.add("@RETURN_VALUE", FieldType::Integer, ParamDirection::ReturnValue)
            .add("@Kind", FieldType::String, ParamDirection::Input, 10, c.kind)
            .add("@Prefix", FieldType::String, ParamDirection::InputOutput, 10, prefix)
            .add("@No", FieldType::String, ParamDirection::Output, 20);
        conn.call(call);
        EXPECT_EQ(call.param("@RETURN_VALUE").value, c.returned);
        EXPECT_EQ(call.param("@No").value, c.number);
        EXPECT_EQ(call.param("@Prefix").value, c.prefix);
    }
    EXPECT_EQ(conn.query("select last from counter").rows[0][0], Value(qlonglong(43)));
    // The call first, then the statements the procedure ran.
    EXPECT_EQ(seen.mid(0, 3), (QStringList{"kivdb_NextNumber", "select last from counter where kind = 'SO'",
                                           "update counter set last = 42 where kind = 'SO'"}));
}

TEST(EmbeddedProcedures, UnknownOrUnregisteredNameIsServerError) {
    SqliteConnection conn(QStringLiteral(":memory:"), SqliteConnection::OpenMode::CreateIfMissing);
    {
        const EmbeddedProcedureRegistration registration(QStringLiteral("kivdb_Scoped"),
                                                         [](Connection&, ProcedureCall&) {});
        ProcedureCall call{QStringLiteral("kivdb_Scoped"), {}};
        EXPECT_NO_THROW(conn.call(call));
    }
    for (const QString name : {QStringLiteral("kivdb_Scoped"), QStringLiteral("dbo.NoSuchProc")}) {
        ProcedureCall call{name, {}};
        EXPECT_EQ(testing::databaseErrorOf([&] { conn.call(call); }),
                  QStringLiteral("Could not find stored procedure '%1'.").arg(name).toStdString());
    }
}

}  // namespace
}  // namespace kivdb

#include "kivdb/exports.h"
#include "platform/message_sink.h"
#include "platform/oledate.h"
#include "platform/sqlite_connection.h"
#include "testing/sqlite_database.h"
#include "testing/test_database.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

namespace kivdb {
namespace {

using testing::memoryDatabase;
using testing::StatementRecorder;

std::unique_ptr<Connection> valuesDatabase() {
    return memoryDatabase({
        "create table T (Code varchar(10), Name varchar(20), Qty int, Price float, Amt money, "
        "Flag bit, Made datetime)",
        "insert into T values ('A', '甲', 7, 12.5, 3.25, 1, '2006-03-31')",
        "insert into T values ('B', null, -3, null, null, 0, null)",
        "insert into T values ('C', '丙', 0, 0.1, 0, null, '2006-04-01 08:30:00')",
        "create table Empty (N int)",
    });
}

// One row per question: what each single-value helper answers for a present value, a null
// and no row at all. The text form of each answer is compared so one table covers all types.
struct SingleValueCase {
    const char* helper;
    const char* sql;
    QString expected;
};

QString ask(Connection& conn, const QString& helper, const QString& sql) {
    if (helper == "String") return SelTableStringValue(conn, sql);
    if (helper == "Int") return QString::number(SelTableIntValue(conn, sql));
    if (helper == "Integer") return QString::number(SelTableIntegerValue(conn, sql));
    if (helper == "Integer2") return QString::number(SelTableIntegerValue2(conn, sql));
    if (helper == "Float") return QString::number(SelTableFloatValue(conn, sql));
    if (helper == "Boolean") return SelTableBooleanValue(conn, sql) ? "true" : "false";
    if (helper == "Empty") return SqlTableIsEmpty(conn, sql) ? "true" : "false";
    if (helper == "Date") {
        const double d = SelTableDateValue(conn, sql);
        return d == 0 ? QStringLiteral("0") : formatOleDate(d, QStringLiteral("yyyy-MM-dd HH:mm"));
    }
    if (helper == "Variant") {
        const Value v = SelTableVariantValue(conn, sql);
        return v.isValid() ? v.toString() : QStringLiteral("null");
    }
    ADD_FAILURE() << "unknown helper " << helper.toStdString();
    return {};
}

TEST(SingleValueQueries, AnswerTheFirstFieldOrTheDefault) {
    const SingleValueCase cases[] = {
        {"String", "select Name from T where Code = 'A'", "甲"},
        {"String", "select Name from T where Code = 'B'", ""},
        {"String", "select Name from T where Code = 'Z'", ""},
        {"String", "select Price from T where Code = 'A'", "12.5"},
        {"String", "select Code, Name from T order by Code desc", "C"},  // first row, first column
        {"Int", "select Qty from T where Code = 'A'", "7"},
        {"Int", "select Max(N) from Empty", "0"},
        {"Integer", "select Qty from T where Code = 'B'", "-3"},
        {"Integer", "select Qty from T where Code = 'Z'", "0"},
        {"Integer2", "select Max(N) from Empty", "-1"},
        {"Integer2", "select Qty from T where Code = 'C'", "0"},
        {"Integer2", "select Price from T where Code = 'B'", "-1"},
        {"Float", "select Price from T where Code = 'A'", "12.5"},
        {"Float", "select Amt from T where Code = 'A'", "3.25"},
        {"Float", "select Price from T where Code = 'B'", "0"},
        {"Boolean", "select Flag from T where Code = 'A'", "true"},
        {"Boolean", "select Flag from T where Code = 'B'", "false"},
        {"Boolean", "select Flag from T where Code = 'C'", "false"},
        {"Boolean", "select Flag from T where Code = 'Z'", "false"},
        {"Empty", "select 1 from T where Code = 'Z'", "true"},
        {"Empty", "select Name from T where Code = 'B'", "false"},  // a row holding null is a row
        {"Date", "select Made from T where Code = 'A'", "2006-03-31 00:00"},
        {"Date", "select Made from T where Code = 'C'", "2006-04-01 08:30"},
        {"Date", "select Made from T where Code = 'B'", "0"},
        {"Date", "select Max(N) from Empty", "0"},
        {"Date", "select '2006-04-01 08:30'", "2006-04-01 08:30"},  // date text read as a date
        {"Date", "select '20060331'", "2006-03-31 00:00"},
        {"Variant", "select Qty from T where Code = 'A'", "7"},
        {"Variant", "select Name from T where Code = 'B'", "null"},
        {"Variant", "select Name from T where Code = 'Z'", "null"},
    };
    auto conn = valuesDatabase();
    for (const auto& c : cases)
        EXPECT_EQ(ask(*conn, c.helper, c.sql), c.expected) << c.helper << ": " << c.sql;
}

TEST(SingleValueQueries, ErrorsReachTheCallerAndLeaveNoStatementOpen) {
    auto conn = valuesDatabase();
    sqlite3* db = static_cast<SqliteConnection&>(*conn).handle();
    const std::function<void()> failing[] = {
        [&] { SelTableIntValue(*conn, "select Name from T where Code = 'A'"); },  // not a number
        [&] { SelTableDateValue(*conn, "select Name from T where Code = 'A'"); },  // not a date
        [&] { SelTableStringValue(*conn, "select Nope from T"); },
        [&] { SelTableStringValue(*conn, "select Code from Missing"); },
        [&] { SelTableStringValue(*conn, ""); },
        [&] { ExecTmpQuery(*conn, "insert into T (Code) values ('unterminated)"); },
    };
    for (const auto& call : failing) {
        EXPECT_THROW(call(), std::exception);
        EXPECT_FALSE(testing::statementRunning(db));
    }
    EXPECT_EQ(SelTableIntValue(*conn, "select Qty from T where Code = 'A'"), 7);
}

TEST(ExistenceQueries, BuildTheirStatementsAndAnswerFromTheRows) {
    auto conn = memoryDatabase({
        "create table Note (RefNo int, NoteNo varchar(20), flag varchar(1), PartNo varchar(10))",
        "insert into Note values (1, 'SO001', '1', 'P1')",
        "insert into Note values (2, 'SO002', '3', 'P1')",
        "insert into Note values (3, 'SO003', '1', 'P2')",
        "insert into Note values (3, 'SO003', '1', 'P2')",
        "insert into Note values (3, 'SO003', '1', 'P3')",
        "create table M (N int)",
        "insert into M values (null)",
    });
    StatementRecorder recorder(*conn);
    struct Case {
        std::function<int()> ask;
        int expected;
        const char* statement;
    } cases[] = {
        {[&] { return TableExistIntValue(*conn, "Note", "RefNo", 2); }, true,
         "select 1 from Note where RefNo = 2"},
        {[&] { return TableExistIntValue(*conn, "Note", "RefNo", 9); }, false,
         "select 1 from Note where RefNo = 9"},
        {[&] { return TableExistStringValue(*conn, "Note", "NoteNo", "SO003"); }, true,
         "select 1 from Note where NoteNo = 'SO003'"},
        {[&] { return TableExistValues(*conn, "Note", "RefNo,NoteNo", "1,'SO001'"); }, true,
         "select 1 from Note where RefNo = 1 and NoteNo = 'SO001'"},
        {[&] { return TableExistValues(*conn, "Note", "RefNo,NoteNo", "1,'SO002'"); }, false,
         "select 1 from Note where RefNo = 1 and NoteNo = 'SO002'"},
        // The note itself holds the number: no other note does.
        {[&] { return IsTableExistSameNote(*conn, "Note", "NoteNo", "SO001", 1); }, false,
         "select 1 from Note where NoteNo= 'SO001' and flag <> '3' and Refno <> 1"},
        {[&] { return IsTableExistSameNote(*conn, "Note", "NoteNo", "SO001", 5); }, true,
         "select 1 from Note where NoteNo= 'SO001' and flag <> '3' and Refno <> 5"},
        // A note in state 3 does not count.
        {[&] { return IsTableExistSameNote(*conn, "Note", "NoteNo", "SO002", 5); }, false,
         "select 1 from Note where NoteNo= 'SO002' and flag <> '3' and Refno <> 5"},
        {[&] { return IsTableHasSameValue(*conn, "Note", 3, "PartNo"); }, true,
         "select 1 from Note where RefNo = 3 group by PartNo having count(*) > 1 "},
        {[&] { return IsTableHasSameValue(*conn, "Note", 1, "PartNo"); }, false,
         "select 1 from Note where RefNo = 1 group by PartNo having count(*) > 1 "},
        {[&] { return GetTableMaxInteger(*conn, "Note", "RefNo"); }, 3, "select Max(RefNo) from Note"},
        // The maximum of an all-null (or empty) column is a null, answered as 0.
        {[&] { return GetTableMaxInteger(*conn, "M", "N"); }, 0, "select Max(N) from M"},
    };
    for (const auto& c : cases) {
        const qsizetype before = recorder.statements().size();
        EXPECT_EQ(c.ask(), c.expected) << c.statement;
        ASSERT_EQ(recorder.statements().size(), before + 1);
        EXPECT_EQ(recorder.statements().last(), QString::fromUtf8(c.statement));
    }
}

TEST(QuoteGuard, RefusesAQuotedValueBeforeAnythingIsSent) {
    auto conn = memoryDatabase({"create table Note (RefNo int, NoteNo varchar(20), flag varchar(1))"});
    StatementRecorder recorder(*conn);
    const std::function<void()> calls[] = {
        [&] { TableExistStringValue(*conn, "Note", "NoteNo", "x' or '1'='1"); },
        [&] { IsTableExistSameNote(*conn, "Note", "NoteNo", "O'Brien", 1); },
        [&] { WriteToLog(*conn, "admin", "PC'1", 1, "N1", 1, 1, ""); },
    };
    for (const auto& call : calls) EXPECT_THROW(call(), ValueError);
    EXPECT_TRUE(recorder.events().isEmpty());
}

TEST(DetailCheck, NamesOnlyTheFirstLineWithoutTemporaryNumber) {
    auto conn = memoryDatabase({
        "create table StkDtl (RefNo int, LineId int, TmpNo varchar(20))",
        "insert into StkDtl values (7, 1, 'T1')",
        "insert into StkDtl values (7, 2, '')",
        "insert into StkDtl values (7, 3, null)",
        "insert into StkDtl values (7, 5, '   ')",
        "insert into StkDtl values (8, 1, null)",
    });
    RecordingMessageSink sink;
    ScopedMessageSink use(&sink);
    StatementRecorder recorder(*conn);

    EXPECT_TRUE(IsExitNoInputStkInBillInfor(*conn, "StkDtl", 7, "TmpNo"));
    EXPECT_EQ(recorder.statements().last(),
              " select LineId from StkDtl where RefNo = 7 and Ltrim(TmpNo)=''");
    ASSERT_EQ(sink.messages().size(), 1u);
    EXPECT_EQ(sink.messages()[0].kind, MessageKind::Hint);
    // Lines 2 and 5 are blank; the server returns one of them first (here in insertion order).
    EXPECT_EQ(sink.messages()[0].text, "明细中序号 2 行，未指定临时单号。");

    sink.clear();
    EXPECT_FALSE(IsExitNoInputStkInBillInfor(*conn, "StkDtl", 8, "TmpNo"));  // a null is not found
    EXPECT_TRUE(sink.messages().empty());
}

}  // namespace
}  // namespace kivdb

#include "kivdb/exports.h"
#include "testing/test_database.h"

#include <QRegularExpression>
#include <gtest/gtest.h>

namespace kivdb {
namespace {

using testing::memoryDatabase;

std::unique_ptr<Connection> logDatabase() {
    return memoryDatabase({
        "create table Sy_Log (UserId varchar(20), Computer varchar(40), ModId int, OpId int, "
        "RefNo int, NoteNo varchar(20), OpDate datetime, Remark varchar(100))",
        "create table s_SpErrorcode (ErrorCode int, Description varchar(100))",
        "insert into s_SpErrorcode values (-5, '库存不足')",
    });
}

// The arguments go in column order, a zero RefNo and an empty NoteNo as they are, and the
// Remark column receives the time of day instead of the text given.
TEST(OperationLog, WritesTheArgumentsInColumnOrderAndTheTimeOfDayAsRemark) {
    const struct {
        int refNo;
        const char* noteNo;
        const char* values;  // in the statement, before the date and time
        const char* stored;  // UserId to NoteNo as read back
    } cases[] = {
        {42, "SO0042", "'admin','PC-01',3,9,42,'SO0042'", "admin|PC-01|3|9|42|SO0042"},
        {0, "", "'admin','PC-01',3,9,0,''", "admin|PC-01|3|9|0|"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.values);
        auto conn = logDatabase();
        testing::StatementRecorder recorder(*conn);
        const QDate before = QDate::currentDate();
        WriteToLog(*conn, "admin", "PC-01", c.refNo, c.noteNo, 3, 9, "this text is not stored");
        const QDate after = QDate::currentDate();

        ASSERT_EQ(recorder.statements().size(), 1);
        const QRegularExpression shape(
            "^ insert into Sy_Log \\(UserId,Computer,ModId,OpId,RefNo,NoteNo,OpDate,Remark\\) values \\(" +
            QRegularExpression::escape(c.values) + ",'(\\d{4}-\\d\\d-\\d\\d)','(\\d\\d:\\d\\d:\\d\\d)'\\)$");
        const auto match = shape.match(recorder.statements().first());
        ASSERT_TRUE(match.hasMatch()) << recorder.statements().first().toStdString();
        const QDate written = QDate::fromString(match.captured(1), QStringLiteral("yyyy-MM-dd"));
        EXPECT_TRUE(written == before || written == after);

        const RowSet rows = conn->query("select UserId, Computer, ModId, OpId, RefNo, NoteNo, Remark from Sy_Log");
        ASSERT_EQ(rows.rows.size(), 1u);
        QStringList stored;
        for (const Value& v : rows.rows.front()) stored << v.toString();
        EXPECT_EQ(stored.join('|'), QLatin1String(c.stored) + '|' + match.captured(2));
    }
}

TEST(OperationLog, ExceptionLogRecordsNothing) {
    auto conn = logDatabase();
    testing::StatementRecorder recorder(*conn);
    WriteToExceptLog(*conn, "a", "b", 1, 2, "c");
    EXPECT_TRUE(recorder.events().isEmpty());
}

TEST(ProcedureErrorTexts, FixedTextAndTableLookup) {
    EXPECT_EQ(GetSpErrorMsg(-5), "返回存储过程错误信息 -5");
    EXPECT_EQ(GetSpErrorMsg(12), "返回存储过程错误信息 12");
    auto conn = logDatabase();
    testing::StatementRecorder recorder(*conn);
    EXPECT_EQ(SpErrorInfo(*conn, -5), "库存不足");
    EXPECT_EQ(SpErrorInfo(*conn, 77), "");
    EXPECT_EQ(recorder.statements(), (QStringList{"select Description from s_SpErrorcode where ErrorCode = -5",
                                                  "select Description from s_SpErrorcode where ErrorCode = 77"}));
}

}  // namespace
}  // namespace kivdb

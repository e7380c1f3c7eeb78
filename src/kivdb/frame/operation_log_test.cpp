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

TEST(OperationLog, WritesTheArgumentsInColumnOrderAndTheTimeOfDayAsRemark) {
    auto conn = logDatabase();
    testing::StatementRecorder recorder(*conn);
    const QDate before = QDate::currentDate();
    WriteToLog(*conn, "admin", "PC-01", 42, "SO0042", 3, 9, "this text is not stored");
    const QDate after = QDate::currentDate();

    ASSERT_EQ(recorder.statements().size(), 1);
    const QRegularExpression shape(QStringLiteral(
        "^ insert into Sy_Log \\(UserId,Computer,ModId,OpId,RefNo,NoteNo,OpDate,Remark\\) values "
        "\\('admin','PC-01',3,9,42,'SO0042','(\\d{4}-\\d\\d-\\d\\d)','(\\d\\d:\\d\\d:\\d\\d)'\\)$"));
    const auto match = shape.match(recorder.statements().first());
    ASSERT_TRUE(match.hasMatch()) << recorder.statements().first().toStdString();
    const QDate written = QDate::fromString(match.captured(1), QStringLiteral("yyyy-MM-dd"));
    EXPECT_TRUE(written == before || written == after);

    const RowSet rows = conn->query("select UserId, Computer, ModId, OpId, RefNo, NoteNo, Remark from Sy_Log");
    ASSERT_EQ(rows.rows.size(), 1u);
    const auto& row = rows.rows.front();
    EXPECT_EQ(row[0].toString(), "admin");
    EXPECT_EQ(row[2].toInt(), 3);
    EXPECT_EQ(row[3].toInt(), 9);
    EXPECT_EQ(row[4].toInt(), 42);
    EXPECT_EQ(row[6].toString(), match.captured(2));
}

TEST(OperationLog, StoresAZeroRefNoAndAnEmptyNoteNo) {
    auto conn = logDatabase();
    WriteToLog(*conn, "u", "c", 0, "", 1, 1, "");
    const RowSet rows = conn->query("select RefNo, NoteNo from Sy_Log");
    ASSERT_EQ(rows.rows.size(), 1u);
    EXPECT_EQ(rows.rows[0][0].toInt(), 0);
    EXPECT_EQ(rows.rows[0][1].toString(), "");
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

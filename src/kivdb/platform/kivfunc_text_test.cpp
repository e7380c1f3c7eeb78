#include "dialect/sqlite_statement.h"
#include "platform/kivfunc.h"
#include "platform/message_sink.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

namespace kivdb::kivfunc {
namespace {

TEST(KivfuncStringList, PiecesCountsAndIndexes) {
    const std::tuple<const char*, const char*, QStringList> cases[] = {
        {"", ",", {}},           {"a", ",", {"a"}},                {"a,,b", ",", {"a", "", "b"}},
        {",a", ",", {"", "a"}},  {"a,b,", ",", {"a", "b"}},         {"a,b,,", ",", {"a", "b", ""}},
        {",", ",", {""}},        {" W1 , W2", ",", {" W1 ", " W2"}}, {"a||b||", "||", {"a", "b"}},
        {"a|b", "||", {"a|b"}},  {"a,b", "", {"a,b"}},
        {"select 1 where 1=1;select 2 where 1=1;", ";", {"select 1 where 1=1", "select 2 where 1=1"}},
    };
    for (const auto& [text, separator, pieces] : cases) {
        SCOPED_TRACE(std::string(text) + " / " + separator);
        ASSERT_EQ(GetStringIndexCount(text, separator), pieces.size());
        for (int i = -1; i <= pieces.size(); ++i) {
            QString expected = pieces.value(i);
            EXPECT_EQ(GetStringIndexValue2(text, separator, i), expected) << i;
            if (strlen(separator) == 1) EXPECT_EQ(GetStringIndexValue(text, QChar(separator[0]), i), expected) << i;
        }
    }
}

TEST(KivfuncMessages, GoThroughTheCurrentSinkInOrder) {
    RecordingMessageSink recorder;
    MessageSink* before = &messageSink();
    {
        ScopedMessageSink guard(&recorder);
        recorder.scriptAnswers({true, false});
        ShowMsgHint("本用户无该项权限");
        EXPECT_TRUE(Confirm("是否确认退出？"));
        ShowMsgWarn("物料编号A1的发料数");
        EXPECT_FALSE(Confirm("单据已过了修改期限"));
        ShowMsgError("删除数据表Po_Recv出错");
        EXPECT_FALSE(Confirm("再问一次"));  // past the script: no
        EXPECT_EQ(recorder.transcript(), (QStringList{"MSG hint: 本用户无该项权限", "CONFIRM: 是否确认退出？", "MSG warn: 物料编号A1的发料数",
                                                      "CONFIRM: 单据已过了修改期限", "MSG error: 删除数据表Po_Recv出错", "CONFIRM: 再问一次"}));
    }
    EXPECT_EQ(&messageSink(), before);
}

// What matters about the literals is what the database makes of them in a statement.
TEST(KivfuncSqlLiterals, SelectTheRowsTheirNamesPromise) {
    sqlite3* db = nullptr;
    ASSERT_EQ(sqlite3_open(":memory:", &db), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(db, "create table Bs_User (Userid varchar(20), Effect bit, BillDate datetime);"
                               "insert into Bs_User values ('U01', 1, '2006-03-01'), ('U02', 0, '2006-03-31'),"
                               " ('X10', 1, '2006-04-01'), ('U03', null, null)", nullptr, nullptr, nullptr), SQLITE_OK);
    const std::pair<QString, QStringList> cases[] = {
        {"select Userid from Bs_User where Effect = " + TrueValue_str(), {"U01", "X10"}},
        {"select Userid from Bs_User where Effect = " + FalseValue_str(), {"U02"}},
        {"select Userid from Bs_User where Userid like 'U" + LIKE_STR() + "'", {"U01", "U02", "U03"}},
        {"select Userid from Bs_User where Userid like '" + LIKE_STR() + "1" + LIKE_STR() + "'", {"U01", "X10"}},
        {"select Userid from Bs_User where BillDate = " + SqlDateLiteral(encodeOleDate(2006, 3, 31) + 0.75), {"U02"}},
        {"select Userid from Bs_User where BillDate > " + DATAESPERATOR_STR() + "2006-03-01" + DATAESPERATOR_STR(), {"U02", "X10"}},
    };
    for (const auto& [sql, expected] : cases) {
        QStringList rows;
        dialect::SqliteStatement stmt(db, (sql + " order by Userid").toUtf8().constData());
        while (stmt.step()) rows << stmt.text(0);
        EXPECT_EQ(rows, expected) << sql.toStdString();
    }
    sqlite3_close(db);
    EXPECT_EQ(SqlDateLiteral(0), "'1899-12-30'");
}

}  // namespace
}  // namespace kivdb::kivfunc

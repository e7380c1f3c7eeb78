#include "platform/kivfunc.h"
#include "platform/message_sink.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

namespace kivdb::kivfunc {
namespace {

struct ListCase {
    const char* text;
    const char* separator;
    QStringList pieces;
};

TEST(KivfuncStringList, PiecesCountsAndIndexes) {
    const ListCase cases[] = {
        {"", ",", {}},
        {"a", ",", {"a"}},
        {"a,b", ",", {"a", "b"}},
        {"a,,b", ",", {"a", "", "b"}},
        {",a", ",", {"", "a"}},
        {"a,b,", ",", {"a", "b"}},
        {"a,b,,", ",", {"a", "b", ""}},
        {",", ",", {""}},
        {" W1 , W2", ",", {" W1 ", " W2"}},
        {"select 1 where 1=1;select 2 where 1=1;", ";", {"select 1 where 1=1", "select 2 where 1=1"}},
        {"a||b||", "||", {"a", "b"}},
        {"a|b", "||", {"a|b"}},
        {"a,b", "", {"a,b"}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.text) + " / " + c.separator);
        QString separator = QString::fromUtf8(c.separator);
        ASSERT_EQ(GetStringIndexCount(c.text, separator), c.pieces.size());
        for (int i = -1; i <= c.pieces.size(); ++i) {
            QString expected = i >= 0 && i < c.pieces.size() ? c.pieces[i] : QString();
            EXPECT_EQ(GetStringIndexValue2(c.text, separator, i), expected) << i;
            if (separator.size() == 1) EXPECT_EQ(GetStringIndexValue(c.text, separator[0], i), expected) << i;
        }
    }
}

TEST(KivfuncMessages, GoThroughTheCurrentSink) {
    RecordingMessageSink recorder;
    ScopedMessageSink guard(&recorder);
    recorder.scriptAnswers({true, false});
    ShowMsgHint("本用户无该项权限");
    ShowMsgWarn("物料编号A1的发料数");
    EXPECT_TRUE(Confirm("是否确认退出？"));
    ShowMsgError("删除数据表Po_Recv出错");
    EXPECT_FALSE(Confirm("单据已过了修改期限，不能修改"));
    EXPECT_FALSE(Confirm("再问一次"));  // script used up: no
    EXPECT_EQ(recorder.transcript(),
              (QStringList{"MSG hint: 本用户无该项权限", "MSG warn: 物料编号A1的发料数", "CONFIRM: 是否确认退出？",
                           "MSG error: 删除数据表Po_Recv出错", "CONFIRM: 单据已过了修改期限，不能修改",
                           "CONFIRM: 再问一次"}));
}

// The literals are pasted into statements; what matters is what the database makes of them.
class KivfuncSqlLiterals : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(sqlite3_open(":memory:", &db_), SQLITE_OK);
        exec("create table Bs_User (Userid varchar(20), Effect bit, BillDate datetime)");
        exec("insert into Bs_User values ('U01', 1, '2006-03-01'), ('U02', 0, '2006-03-31'),"
             " ('X10', 1, '2006-04-01'), ('U03', null, null)");
    }
    void TearDown() override { sqlite3_close(db_); }
    void exec(const QString& sql) { ASSERT_EQ(sqlite3_exec(db_, sql.toUtf8(), nullptr, nullptr, nullptr), SQLITE_OK) << sql.toStdString(); }
    QStringList firstColumn(const QString& sql) {
        QStringList values;
        sqlite3_stmt* stmt = nullptr;
        EXPECT_EQ(sqlite3_prepare_v2(db_, sql.toUtf8(), -1, &stmt, nullptr), SQLITE_OK) << sql.toStdString();
        while (stmt && sqlite3_step(stmt) == SQLITE_ROW)
            values << QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(stmt, 0)));
        sqlite3_finalize(stmt);
        return values;
    }
    sqlite3* db_ = nullptr;
};

TEST_F(KivfuncSqlLiterals, SelectTheRowsTheirNamesPromise) {
    const std::pair<QString, QStringList> cases[] = {
        {"select Userid from Bs_User where Effect = " + TrueValue_str() + " order by Userid", {"U01", "X10"}},
        {"select Userid from Bs_User where Effect = " + FalseValue_str(), {"U02"}},
        {"select Userid from Bs_User where Userid like 'U" + LIKE_STR() + "' order by Userid", {"U01", "U02", "U03"}},
        {"select Userid from Bs_User where Userid like '" + LIKE_STR() + "1" + LIKE_STR() + "' order by Userid", {"U01", "X10"}},
        {"select Userid from Bs_User where BillDate = " + SqlDateLiteral(encodeOleDate(2006, 3, 31)), {"U02"}},
        {"select Userid from Bs_User where BillDate > " + DATAESPERATOR_STR() + "2006-03-01" + DATAESPERATOR_STR() +
             " order by Userid", {"U02", "X10"}},
    };
    for (const auto& [sql, expected] : cases) EXPECT_EQ(firstColumn(sql), expected) << sql.toStdString();
    EXPECT_EQ(SqlDateLiteral(38777.75), "'2006-03-01'");
    EXPECT_EQ(SqlDateLiteral(0), "'1899-12-30'");
}

}  // namespace
}  // namespace kivdb::kivfunc

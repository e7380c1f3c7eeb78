#include "frame/sql_text.h"
#include "kivdb/exports.h"
#include "testing/test_database.h"

#include <gtest/gtest.h>

namespace kivdb {
namespace {

// Name arguments are spliced into statements as SQL; one that carries a statement of its
// own is refused before anything reaches the database, while the forms hosts really pass
// (a table with its own where clause, a field list, an expression) keep working.
TEST(SqlNameArguments, AStatementOfItsOwnIsRefusedAndNothingIsSent) {
    auto conn = testing::memoryDatabase({
        "create table T (x int, a int, [from] varchar(10), update_flag int)",
        "insert into T values (5, 1, 'p;q', 0)",
        "insert into T values (9, 2, 'r--s', 1)",
    });
    struct Case {
        const char* table;
        const char* field;
        int max;  // -1: refused
    } cases[] = {
        {"T", "x", 9},
        {"T where a = 1", "x", 5},
        {"T where [from] = 'p;q'", "x", 5},  // separators and dashes inside quotes are data
        {"T where [from] = 'r--s'", "x", 9},
        {"T where a in (select a from T where x = 5)", "x", 5},  // a subquery
        {"T", "isnull(x, 0) + a", 11},
        {"T where update_flag = 0", "x", 5},  // a keyword inside a name is only part of it
        {"T; delete from T; select 1 from T", "x", -1},
        {"T", "x) from T; delete from T; select max(x", -1},
        {"T delete from T", "x", -1},  // T-SQL needs no semicolon between statements
        {"T where a = 1 select 100", "x", -1},
        {"T -- the rest is a comment", "x", -1},
        {"T /* hidden */", "x", -1},
        {"T where [from] = 'open", "x", -1},  // the quote would swallow what follows
        {"T where (a = 1", "x", -1},
        {"T where a = 1) or (1 = 1", "x", -1},
        {"T exec sp_who", "x", -1},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.table) + " / " + c.field);
        if (c.max >= 0) {
            EXPECT_EQ(GetTableMaxInteger(*conn, c.table, c.field), c.max);
            continue;
        }
        testing::StatementRecorder recorder(*conn);
        EXPECT_THROW(GetTableMaxInteger(*conn, c.table, c.field), ValueError);
        EXPECT_TRUE(recorder.statements().isEmpty());
    }
    EXPECT_EQ(SelTableIntValue(*conn, "select count(*) from T"), 2);
}

TEST(SqlNameArguments, EveryExportThatSplicesANameGuardsIt) {
    auto conn = testing::memoryDatabase({"create table T (RefNo int, LineId int, F varchar(10), Flag int)",
                                         "insert into T values (1, 1, 'a', 0)"});
    const QString bad = QStringLiteral("T; delete from T");
    const std::function<void()> calls[] = {
        [&] { TableExistIntValue(*conn, bad, "RefNo", 1); },
        [&] { TableExistIntValue(*conn, "T", "RefNo = 1; delete from T; select 1 from T where RefNo", 1); },
        [&] { TableExistStringValue(*conn, bad, "F", "a"); },
        [&] { TableExistValues(*conn, bad, "RefNo", "1"); },
        [&] { TableExistValues(*conn, "T", "RefNo", "1; delete from T"); },
        [&] { IsTableExistSameNote(*conn, bad, "F", "a", 1); },
        [&] { IsTableHasSameValue(*conn, "T", 1, "F; delete from T"); },
        [&] { GetTableMaxInteger(*conn, "T", "RefNo) from T; delete from T --"); },
        [&] { IsExitNoInputStkInBillInfor(*conn, bad, 1, "F"); },
    };
    for (size_t i = 0; i < std::size(calls); ++i) EXPECT_THROW(calls[i](), ValueError) << i;
    EXPECT_EQ(SelTableIntValue(*conn, "select count(*) from T"), 1);
}

// A refused value of megabytes is named by its start, as every quoting message is.
TEST(SqlTextValues, ARefusedValueIsQuotedByItsStart) {
    try {
        quotedText(QString(1 << 20, QLatin1Char('x')) + QLatin1Char('\''));
        FAIL() << "a value with a single quote was accepted";
    } catch (const ValueError& e) {
        const QString message = QString::fromUtf8(e.what());
        EXPECT_LT(message.size(), 200);
        EXPECT_TRUE(message.endsWith(QLatin1String("xxx..."))) << e.what();
    }
}

}  // namespace
}  // namespace kivdb

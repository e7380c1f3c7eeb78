#include "platform/query_dataset.h"

#include "platform/sqlite_connection.h"
#include "platform/string_list.h"
#include "testing/sqlite_database.h"
#include "testing/test_database.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

namespace kivdb {
namespace {

using testing::StatementRecorder;

class QueryDataSetTest : public ::testing::Test {
protected:
    void SetUp() override {
        conn_ = testing::memoryDatabase(
            {"create table note (code nvarchar(20) primary key, qty int, memo nvarchar(40))",
             "insert into note values ('A', 1, 'a')", "insert into note values ('B', 2, 'b')",
             "insert into note values ('C', 3, 'c')"});
    }
    QString stored() {
        QStringList all;
        for (const auto& row : conn_->query("select code, qty from note order by code").rows)
            all << row[0].toString() + u'=' + row[1].toString();
        return all.join(u',');
    }
    QString cached(DataSet& ds) {
        QStringList all;
        for (ds.first(); !ds.eof(); ds.next()) all << ds.fieldByName("code").asString() + u'=' + ds.fieldByName("qty").asString();
        return all.join(u',');
    }
    bool statementsLeft() { return testing::statementRunning(static_cast<SqliteConnection&>(*conn_).handle()); }

    std::unique_ptr<Connection> conn_;
};

TEST_F(QueryDataSetTest, CursorFetchesInPagesAndFinalizesOnEveryPath) {
    StatementRecorder recorder(*conn_);
    {
        auto cursor = conn_->openCursor("select code, qty from note order by code");
        ASSERT_EQ(cursor->columns().size(), 2u);
        EXPECT_EQ(cursor->columns()[1].type, FieldType::Integer);
        EXPECT_EQ(cursor->fetch(2).size(), 2u);
        // Another statement while the cursor is open.
        conn_->execute("update note set memo = 'x' where code = 'A'");
        EXPECT_FALSE(cursor->atEnd());
        const auto rest = cursor->fetch(5);
        ASSERT_EQ(rest.size(), 1u);
        EXPECT_EQ(rest[0][0], "C");
        EXPECT_TRUE(cursor->atEnd());
        EXPECT_FALSE(statementsLeft());  // finalized when done
    }
    {
        auto cursor = conn_->openCursor("select code from note");
        cursor->fetch(1);
    }
    EXPECT_FALSE(statementsLeft());  // finalized when dropped early
    EXPECT_EQ(recorder.statements(), QStringList({"select code, qty from note order by code",
                                                  "update note set memo = 'x' where code = 'A'",
                                                  "select code from note"}));
    EXPECT_THROW(conn_->openCursor(" "), DatabaseError);
}

TEST_F(QueryDataSetTest, AMillionRowsOpenOnTheFirstPage) {
    // Filled in one statement by the engine itself: the dialect has no recursive queries.
    ASSERT_EQ(sqlite3_exec(static_cast<SqliteConnection&>(*conn_).handle(),
                           "create table big (i integer primary key);"
                           "with recursive n(i) as (select 1 union all select i + 1 from n where i < 1000000) "
                           "insert into big select i from n",
                           nullptr, nullptr, nullptr),
              SQLITE_OK);
    QueryDataSet ds(*conn_, "select i from big order by i");
    ds.setPageRows(50);
    ds.open();
    EXPECT_EQ(ds.fetchedCount(), 50);
    EXPECT_EQ(ds.field(0).asInteger(), 1);
    ds.moveBy(120);
    EXPECT_EQ(ds.field(0).asInteger(), 121);
    EXPECT_EQ(ds.fetchedCount(), 150);
    EXPECT_EQ(ds.recordCount(), 1000000);  // reads the rest
    ds.last();
    EXPECT_EQ(ds.field(0).asInteger(), 1000000);
}

TEST_F(QueryDataSetTest, ImmediateModeWritesEachChange) {
    QueryDataSet ds(*conn_, "select code, qty from note order by code");
    ds.open();
    StatementRecorder recorder(*conn_);
    struct Case {
        const char* what;
        std::function<void()> act;
        const char* statement;
        const char* stored;
    } cases[] = {
        {"update, changed columns only", [&] { ds.locate("code", "B"); ds.edit(); ds.fieldByName("qty").setAsInteger(20); ds.post(); },
         "update note set qty = 20 where code = 'B'", "A=1,B=20,C=3"},
        {"insert, quotes doubled", [&] { ds.append(); ds.field(0).setAsString("D'x"); ds.field(1).setAsInteger(4); ds.post(); },
         "insert into note (code, qty) values ('D''x', 4)", "A=1,B=20,C=3,D'x=4"},
        {"delete", [&] { ds.first(); ds.deleteRecord(); }, "delete from note where code = 'A'", "B=20,C=3,D'x=4"},
    };
    for (const auto& c : cases) {
        c.act();
        EXPECT_EQ(recorder.statements().last(), c.statement) << c.what;
        EXPECT_EQ(stored(), c.stored) << c.what;
        EXPECT_EQ(cached(ds), c.stored) << c.what;
    }
    // A key the table refuses: the dataset stays in insert with the row unposted.
    ds.append();
    ds.field(0).setAsString("B");
    EXPECT_THROW(ds.post(), DatabaseError);
    EXPECT_EQ(ds.state(), DataSetState::Insert);
    ds.cancel();
    EXPECT_EQ(cached(ds), "B=20,C=3,D'x=4");
}

TEST_F(QueryDataSetTest, BatchAppliesInOneTransactionOrNotAtAll) {
    QueryDataSet ds(*conn_, "select code, qty from note order by code");
    ds.setUpdateMode(QueryDataSet::UpdateMode::Batch);
    ds.open();
    ds.first();
    ds.deleteRecord();  // A
    ds.append();
    ds.field(0).setAsString("E");
    ds.field(1).setAsInteger(5);
    ds.post();
    ds.append();
    ds.field(0).setAsString("C");  // already stored: fails when applied
    ds.post();
    EXPECT_TRUE(ds.updatesPending());
    EXPECT_EQ(stored(), "A=1,B=2,C=3");

    const QString cache = "B=2,C=3,E=5,C=";
    EXPECT_EQ(cached(ds), cache);
    EXPECT_THROW(ds.applyUpdates(), DatabaseError);
    EXPECT_FALSE(conn_->inTransaction());
    EXPECT_EQ(stored(), "A=1,B=2,C=3");  // the delete and first insert rolled back
    EXPECT_EQ(cached(ds), cache);
    EXPECT_TRUE(ds.updatesPending());

    // The failing row corrected: its insert goes with the new value.
    ds.last();
    ds.edit();
    ds.field(0).setAsString("F");
    ds.post();
    ds.applyUpdates();
    EXPECT_FALSE(ds.updatesPending());
    EXPECT_EQ(stored(), "B=2,C=3,E=5,F=");
    // Inserted and deleted before applying: never written.
    StatementRecorder recorder(*conn_);
    ds.append();
    ds.field(0).setAsString("G");
    ds.post();
    ds.deleteRecord();
    ds.applyUpdates();
    EXPECT_TRUE(recorder.statements().isEmpty());
}

TEST_F(QueryDataSetTest, WritesWhileRowsRemainUnread) {
    for (int i = 0; i < 200; ++i) conn_->execute(QStringLiteral("insert into note values ('N%1', %1, null)").arg(i, 3, 10, QChar(u'0')));
    struct Case {
        QueryDataSet::UpdateMode mode;
        const char* stored;
    } cases[] = {
        {QueryDataSet::UpdateMode::Immediate, "10"},
        {QueryDataSet::UpdateMode::Batch, "20"},
    };
    for (const auto& c : cases) {
        QueryDataSet ds(*conn_, "select code, qty from note order by code");
        ds.setPageRows(5);
        ds.setUpdateMode(c.mode);
        ds.open();
        ds.edit();
        ds.fieldByName("qty").setAsString(c.stored);
        ds.post();
        ds.applyUpdates();
        EXPECT_LT(ds.fetchedCount(), 100);
        EXPECT_EQ(conn_->query("select qty from note where code = 'A'").rows[0][0].toString(), c.stored);
        EXPECT_EQ(ds.recordCount(), 203);
    }
}

TEST_F(QueryDataSetTest, WritingBackNeedsATableAndAKey) {
    struct Case {
        const char* sql;
        const char* table;
        const char* keys;
        const char* error;
    } cases[] = {
        {"select n.code, n.qty from note n join note m on m.code = n.code", "", "", "Cannot write the change back: the statement reads no single table; set the table name"},
        {"select n.code, n.qty from note n join note m on m.code = n.code", "note", "", "(no error)"},
        {"select qty, code from note", "", "qty", "(no error)"},
        {"select qty from note", "", "", "Cannot write the change back: key field code is not in the result"},
    };
    for (const auto& c : cases) {
        QueryDataSet ds(*conn_, c.sql);
        ds.setTableName(c.table);
        ds.setKeyFields(c.keys);
        ds.setUpdateMode(QueryDataSet::UpdateMode::Batch);  // builds the statement, runs nothing
        ds.open();
        ds.edit();
        ds.fieldByName("qty").setAsInteger(9);
        std::string error = "(no error)";
        try {
            ds.post();
        } catch (const DatabaseError& e) {
            error = e.what();
        }
        EXPECT_EQ(error, c.error) << c.sql;
    }
}

TEST_F(QueryDataSetTest, RefreshKeepsFieldSettingsAndPosition) {
    QueryDataSet ds(*conn_, "select code, qty from note order by code");
    ds.open();
    ds.fieldByName("qty").displayFormat = "0.00";
    ds.next();
    conn_->execute("update note set qty = 7 where code = 'B'");
    ds.refresh();
    EXPECT_EQ(ds.fieldByName("qty").displayText(), "7.00");
}

TEST(StringListTest, TextAndCommaText) {
    struct Case {
        QStringList items;
        const char* text;
        const char* commaText;
    } cases[] = {
        {{"a", "b"}, "a\r\nb\r\n", "a,b"},
        {{"价格 表", "x,y", "say \"hi\"", ""}, "价格 表\r\nx,y\r\nsay \"hi\"\r\n\r\n", "\"价格 表\",\"x,y\",\"say \"\"hi\"\"\","},
        {{}, "", ""},
    };
    for (const auto& c : cases) {
        StringList list(c.items);
        EXPECT_EQ(list.text(), QString::fromUtf8(c.text));
        EXPECT_EQ(list.commaText(), QString::fromUtf8(c.commaText));
        StringList back;
        back.setCommaText(list.commaText());
        EXPECT_EQ(back.items(), c.items) << c.commaText;
        back.setText(list.text());
        EXPECT_EQ(back.items(), c.items) << c.text;
    }
    StringList list;
    list.setCommaText("a b,c");  // blanks separate too
    EXPECT_EQ(list.items(), QStringList({"a", "b", "c"}));
    list.insert(0, "z");
    list.remove(1);
    EXPECT_EQ(list.add("d"), 3);
    EXPECT_EQ(list.indexOf("C"), 2);
    EXPECT_EQ(list.commaText(), "z,b,c,d");
    EXPECT_THROW(list.remove(4), std::out_of_range);
}

}  // namespace
}  // namespace kivdb

#include "kivdb/exports.h"
#include "testing/test_database.h"

#include <gtest/gtest.h>

namespace kivdb {
namespace {

using testing::memoryDatabase;

TEST(DatasetScans, GreatestValuesAndWhereTheyLeaveTheDataSet) {
    const struct {
        const char* rows;  // values of Qty, then Made
        QStringList inserts;
        int seqNo, integer;
        OleDate date;
    } cases[] = {
        {"none", {}, 0, 0, 0},
        // Only AdoQueryGetMaxInteger starts from a row's value.
        {"negative only", {"(1, -5, null)", "(2, -2, '2006-03-31')", "(3, -9, null)"}, 0, -2, 38807},
        {"mixed", {"(1, 3, '2006-04-01')", "(2, 7, '2006-03-31')", "(3, 1, null)"}, 7, 7, 38808},
    };
    for (const auto& c : cases) {
        auto conn = memoryDatabase({"create table Dtl (LineId int primary key, Qty int, Made datetime)"});
        for (const QString& row : c.inserts) conn->execute("insert into Dtl values " + row);
        QueryDataSet ds(*conn, "select Qty, LineId, Made from Dtl order by LineId");
        ds.open();
        ds.moveBy(1);
        const int current = ds.recNo();
        EXPECT_EQ(AdoQueryGetMaxInteger(ds, "qty"), c.integer) << c.rows;
        EXPECT_EQ(ds.recNo(), c.inserts.isEmpty() ? -1 : current) << c.rows;
        EXPECT_EQ(AdoQueryGetMaxSeqNo(ds, 0), c.seqNo) << c.rows;
        EXPECT_TRUE(ds.eof()) << c.rows;
        ds.first();
        EXPECT_EQ(AdoQueryGetMaxDate(ds, "Made"), c.date) << c.rows;
        EXPECT_TRUE(ds.eof()) << c.rows;
    }
}

// Each chore on a query over notes A=1, B=2, C=3; what it leaves: the stored rows, the
// dataset's state, the list's items and the masked fields, whether observers heard anything,
// and the error.
TEST(DatasetChores, DoWhatTheirStateAllowsAndStopAtTheFirstError) {
    const struct {
        const char* what;
        const char* sql;
        std::function<void(QueryDataSet&, StringList&)> act;
        const char* expected;
    } cases[] = {
        {"post in browse", "select * from note", [](auto& ds, auto&) { PostDataSet(ds); },
         "A=1,B=2,C=3|1||0|"},
        {"post an edit", "select * from note",
         [](auto& ds, auto&) { ds.edit(); ds.fieldByName("qty").setAsInteger(9); PostDataSet(ds); },
         "A=9,B=2,C=3|1||1|"},
        {"post a key", "select * from note", [](auto& ds, auto&) { ds.setKey(); PostDataSet(ds); },
         "A=1,B=2,C=3|1||1|"},
        // Nothing at all reaches the controls of an empty dataset.
        {"delete none", "select * from note where 1 = 0", [](auto& ds, auto&) { DeleteTable(ds); },
         "A=1,B=2,C=3|1||0|"},
        {"delete all", "select * from note where code > 'A'", [](auto& ds, auto&) { DeleteAdoQuery(ds); },
         "A=1|1||1|"},
        // A table without key refuses the delete; the controls are back all the same.
        {"delete fails", "select * from loose", [](auto& ds, auto&) { DeleteTable(ds); },
         "A=1,B=2,C=3|1||1|no primary key"},
        {"update every row", "select * from note", [](auto& ds, auto&) { UpdateQueryDtlValue(ds, "QTY", "5"); },
         "A=5,B=5,C=5|1||1|"},
        {"mask none", "select * from note", [](auto& ds, auto&) { DisVisablePrice(ds, {}); },
         "A=1,B=2,C=3|1||0|"},
        {"mask until text", "select * from note",
         [](auto& ds, auto&) { DisVisablePrice(ds, {"Qty", "code", "price"}); },
         "A=1,B=2,C=3|1|qty|0|Invalid type cast"},
        {"pick list of none", "select * from note where 1 = 0",
         [](auto& ds, auto& list) { list.add("old"); QueryItemPickList(ds, list); },
         "A=1,B=2,C=3|1||1|"},
        {"pick list", "select * from note", [](auto& ds, auto& list) { QueryItemPickList(ds, list); },
         "A=1,B=2,C=3|1|A,B,C|1|"},
        {"run a statement", "select * from note", [](auto& ds, auto&) { xRunQuery(ds, "delete from note where qty = 2", false); },
         "A=1,C=3|0||1|"},
    };
    for (const auto& c : cases) {
        auto conn = memoryDatabase({"create table note (code nvarchar(20) primary key, qty int, price float)",
                                    "insert into note values ('A', 1, null)", "insert into note values ('B', 2, 0.5)",
                                    "insert into note values ('C', 3, 1.5)", "create table loose (code nvarchar(20))",
                                    "insert into loose values ('X')"});
        QueryDataSet ds(*conn, c.sql);
        ds.open();
        int heard = 0;
        ds.addObserver([&](DataSetEvent) { ++heard; });
        StringList list;
        QString error;
        try {
            c.act(ds, list);
        } catch (const Error& e) {
            error = QString::fromUtf8(e.what());
        }
        EXPECT_FALSE(ds.controlsDisabled()) << c.what;
        QStringList stored;
        for (const auto& row : conn->query("select code, qty from note order by code").rows)
            stored << row[0].toString() + "=" + row[1].toString();
        QStringList listedAndMasked = list.items();
        for (int i = 0; i < ds.fieldCount(); ++i)
            if (ds.field(i).displayFormat == "****") listedAndMasked << ds.field(i).name();
        const QString seen = stored.join(',') + "|" + QString::number(int(ds.state())) + "|" + listedAndMasked.join(',') + "|" +
                             QString::number(heard > 0) + "|";
        const QString expected = QString::fromUtf8(c.expected);
        EXPECT_EQ(seen, expected.section('|', 0, 3) + "|") << c.what;
        EXPECT_TRUE(error.contains(expected.section('|', 4), Qt::CaseInsensitive) &&
                    error.isEmpty() == expected.section('|', 4).isEmpty())
            << c.what << ": " << error.toStdString();
    }
}

TEST(DatasetChores, MasterEditKeepsTheDetailRowAndPickListsTakeTheFirstColumn) {
    auto conn = memoryDatabase({"create table note (code nvarchar(20) primary key, qty int)",
                                "insert into note values ('A', 1)", "insert into note values ('B', 2)"});
    QueryDataSet master(*conn, "select * from note where code = 'A'"), detail(*conn, "select * from note order by code");
    master.open();
    detail.open();
    detail.next();
    MasterTableEDit(master, detail);
    EXPECT_EQ(master.state(), DataSetState::Edit);
    EXPECT_EQ(detail.recNo(), 2);

    StringList list({"old"});
    SqlAddPickList(*conn, "select qty, code from note order by code desc", list);
    EXPECT_EQ(list.items(), QStringList({"2", "1"}));
}

}  // namespace
}  // namespace kivdb

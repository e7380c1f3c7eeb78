#include "kivdb/exports.h"
#include "testing/test_database.h"

#include <gtest/gtest.h>

namespace kivdb {
namespace {

using testing::StatementRecorder;

// The caller holds counter value 41; the detail lines start with RefNo 7.
TEST(UpdateTableRefNo, StampsTheCounterMasterAndEveryDetailLineEndingOnTheFirst) {
    const struct {
        const char* what;
        int lines;
        bool sameDataSet;  // the master is the detail, editing its current row
        int startRow;
        const char* storedRefNos;
        int endRow;
    } cases[] = {
        {"three lines, the last current", 3, false, 3, "42,42,42", 1},
        {"no lines", 0, false, 1, "", -1},
        // Only the current row is stamped, and it is not posted.
        {"the same dataset", 3, true, 2, "7,7,7", 2},
    };
    for (const auto& c : cases) {
        auto conn = testing::memoryDatabase({"create table BillCode (BillId int primary key, SeqNo int)",
                                             "insert into BillCode values (0, 41)",
                                             "create table Hd (NoteNo varchar(20) primary key, refNo int)",
                                             "create table Dtl (LineId int primary key, RefNo int)"});
        for (int line = 1; line <= c.lines; ++line) conn->execute(QStringLiteral("insert into Dtl values (%1, 7)").arg(line));
        QueryDataSet master(*conn, "select * from Hd"), detail(*conn, "select * from Dtl order by LineId");
        master.open();
        master.append();
        master.fieldByName("NoteNo").setAsString("SO001");
        detail.open();
        detail.moveBy(c.startRow - 1);
        DataSet& stamped = c.sameDataSet ? detail : master;
        if (c.sameDataSet) detail.edit();

        StatementRecorder recorder(*conn);
        updateTableRefNo(*conn, stamped, detail, 41);

        const QStringList statements = recorder.statements();
        ASSERT_FALSE(statements.isEmpty()) << c.what;
        EXPECT_EQ(statements.first(), " update BillCode set SeqNo = 42 where BillId = 0 ") << c.what;
        EXPECT_EQ(statements.size(), c.sameDataSet ? 1 : 1 + c.lines) << c.what;
        EXPECT_EQ(stamped.fieldByName("refNo").asInteger(), 42) << c.what;
        EXPECT_EQ(stamped.state(), c.sameDataSet ? DataSetState::Edit : DataSetState::Insert) << c.what;
        QStringList stored;
        for (const auto& row : conn->query("select RefNo from Dtl order by LineId").rows) stored << row[0].toString();
        EXPECT_EQ(stored.join(','), c.storedRefNos) << c.what;
        EXPECT_EQ(detail.recNo(), c.endRow) << c.what;
        EXPECT_FALSE(detail.controlsDisabled()) << c.what;
        EXPECT_EQ(SelTableIntValue(*conn, "select SeqNo from BillCode"), 42) << c.what;
    }
}

}  // namespace
}  // namespace kivdb

#include "platform/dataset_model.h"

#include "platform/query_dataset.h"
#include "platform/message_sink.h"
#include "testing/test_database.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <gtest/gtest.h>

namespace kivdb {
namespace {

// The model's rows as "code=qty" texts, read through data() as a view reads them.
QString shown(const DataSetModel& model) {
    QStringList rows;
    for (int r = 0; r < model.rowCount(); ++r) {
        QStringList cells;
        for (int c = 0; c < model.columnCount(); ++c) cells << model.data(model.index(r, c)).toString();
        rows << cells.join(u'=');
    }
    return rows.join(u',');
}

class DataSetModelTest : public ::testing::Test {
protected:
    void SetUp() override {
        conn_ = testing::memoryDatabase({"create table note (code nvarchar(20) primary key, qty int, price float)",
                                         "insert into note values ('A', 1, 1.5)", "insert into note values ('B', 2, 2.5)",
                                         "insert into note values ('C', 3, 3.5)", "insert into note values ('D', 4, 4.5)",
                                         "insert into note values ('E', 5, 5.5)"});
    }
    std::unique_ptr<Connection> conn_;
};

TEST_F(DataSetModelTest, FollowsTheDatasetsChangesWithinTheModelContract) {
    struct Case {
        const char* name;
        std::function<void(DataSet&)> change;
        const char* rows;  // as the view reads them afterwards
        int current;       // the model row of the current row
    };
    const std::vector<Case> cases = {
        {"edit and post", [](DataSet& ds) { ds.next(); ds.edit(); ds.fieldByName("qty").setAsInteger(20); ds.post(); },
         "A=1,B=20,C=3", 1},
        {"insert shows the new row before the current one",
         [](DataSet& ds) { ds.next(); ds.insert(); ds.fieldByName("code").setAsString("AB"); }, "A=1,AB=,B=2,C=3", 1},
        {"posted insert", [](DataSet& ds) { ds.insert(); ds.fieldByName("code").setAsString("0"); ds.post(); },
         "0=,A=1,B=2,C=3", 0},
        {"cancelled insert", [](DataSet& ds) { ds.last(); ds.insert(); ds.cancel(); }, "A=1,B=2,C=3", 2},
        {"delete", [](DataSet& ds) { ds.deleteRecord(); }, "B=2,C=3", 0},
        {"changes while controls are disabled arrive at enable",
         [](DataSet& ds) {
             ds.disableControls();
             ds.deleteRecord();
             ds.deleteRecord();
             ds.append();
             ds.fieldByName("code").setAsString("Z");
             ds.post();
             ds.enableControls();
         },
         "C=3,Z=", 1},
        {"reopened on other columns",
         [](DataSet& ds) { static_cast<QueryDataSet&>(ds).setSql("select code from note order by code"); ds.open(); },
         "A,B,C", 0},
        {"closed", [](DataSet& ds) { ds.close(); }, "", -1},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        conn_->execute("delete from note");
        conn_->execute("insert into note (code, qty) select 'A', 1 union all select 'B', 2 union all select 'C', 3");
        QueryDataSet ds(*conn_, "select code, qty from note order by code");
        ds.open();
        DataSetModel model(ds);
        // Aborts the test on a signal out of order or a row count that disagrees with the rows.
        QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
        QSignalSpy moved(&model, &DataSetModel::currentRowChanged);
        ASSERT_EQ(shown(model), "A=1,B=2,C=3");
        c.change(ds);
        EXPECT_EQ(shown(model), c.rows);
        EXPECT_EQ(model.currentRow(), c.current);
        if (c.current != 0) {
            ASSERT_FALSE(moved.isEmpty()) << "told of the move";
            EXPECT_EQ(moved.last()[0].toInt(), c.current);
        }
    }
}

TEST_F(DataSetModelTest, ReadsRowsAsTheViewOrTheDatasetAsks) {
    QueryDataSet ds(*conn_, "select code, qty from note order by code");
    ds.setPageRows(2);
    ds.open();
    DataSetModel model(ds);
    QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
    EXPECT_EQ(shown(model), "A=1,B=2");  // nothing read before someone asks
    ds.next();
    ds.deleteRecord();  // the last row read goes: the next page comes in
    EXPECT_EQ(shown(model), "A=1,C=3,D=4");
    ASSERT_TRUE(model.canFetchMore({}));
    model.fetchMore({});
    EXPECT_EQ(shown(model), "A=1,C=3,D=4,E=5");
    EXPECT_FALSE(model.canFetchMore({}));
    EXPECT_EQ(inserted.size(), 2);
    ds.last();
    EXPECT_EQ(model.currentRow(), 3);
}

TEST_F(DataSetModelTest, ShowsFieldsAsFormattedAndEditsThroughTheDataset) {
    QueryDataSet ds(*conn_, "select code, qty, price from note order by code");
    ds.open();
    ds.fieldByName("price").displayFormat = "0.00";
    ds.fieldByName("price").displayLabel = "单价";
    ds.fieldByName("code").readOnly = true;
    DataSetModel model(ds);
    EXPECT_EQ(model.headerData(2, Qt::Horizontal).toString(), "单价");
    EXPECT_EQ(model.data(model.index(4, 2)).toString(), "5.50");
    EXPECT_EQ(model.data(model.index(4, 2), Qt::EditRole).toDouble(), 5.5);
    EXPECT_EQ(model.data(model.index(4, 2), Qt::TextAlignmentRole).toInt(), int(Qt::AlignRight | Qt::AlignVCenter));
    EXPECT_FALSE(model.flags(model.index(0, 0)) & Qt::ItemIsEditable);

    // Editing a cell moves to its row and edits; moving on posts it to the table.
    RecordingMessageSink messages;
    ScopedMessageSink sink(&messages);
    EXPECT_TRUE(model.setData(model.index(3, 1), 40));
    EXPECT_EQ(ds.state(), DataSetState::Edit);
    EXPECT_EQ(ds.fieldByName("code").asString(), "D");
    EXPECT_FALSE(model.setData(model.index(3, 1), "four"));  // refused with a message, nothing thrown
    EXPECT_EQ(messages.messages().size(), 1u);
    EXPECT_TRUE(model.setData(model.index(0, 1), 10));
    EXPECT_EQ(conn_->query("select qty from note where code = 'D'").rows[0][0].toInt(), 40);
    EXPECT_EQ(model.data(model.index(0, 1)).toString(), "10");
}

}  // namespace
}  // namespace kivdb

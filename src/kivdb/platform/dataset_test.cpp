#include "platform/dataset.h"

#include "testing/test_database.h"

#include <gtest/gtest.h>

namespace kivdb {
namespace {

// The error an action raises, after its kind: "argument: ..." for a use the dataset does
// not allow, "value: ..." for a value a field cannot take.
std::string errorOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const DatabaseError& e) {
        const char* kind = e.kind() == ErrorKind::Argument ? "argument: " : e.kind() == ErrorKind::Value ? "value: " : "database: ";
        return kind + std::string(e.what());
    }
    return "(no error)";
}

// Three notes read from a real database: A-01, b-02, C-03.
class DataSetTest : public ::testing::Test {
protected:
    void SetUp() override {
        conn_ = testing::memoryDatabase(
            {"create table note (code nvarchar(20) primary key, qty int, amount money, made datetime)",
             "insert into note values ('A-01', 1, 1234.5, '2024-03-01')",
             "insert into note values ('b-02', 2, -0.5, null)",
             "insert into note values ('C-03', 3, null, '2024-03-03 10:30')"});
        ds_.loadRows(conn_->query("select code, qty, amount, made from note order by qty"));
    }
    QString codes() {
        QStringList all;
        const Bookmark at = ds_.bookmark();
        for (ds_.first(); !ds_.eof(); ds_.next()) all << ds_.fieldByName("code").asString();
        ds_.gotoBookmark(at);
        return all.join(u',');
    }
    QString code() { return ds_.fieldByName("CODE").asString(); }

    std::unique_ptr<Connection> conn_;
    DataSet ds_;
};

TEST_F(DataSetTest, StatesKeepTheFrameworkOrdinals) {
    EXPECT_EQ(int(DataSetState::Edit), 2);
    EXPECT_EQ(int(DataSetState::SetKey), 4);
    EXPECT_EQ(int(DataSetState::Opening), 12);
}

TEST_F(DataSetTest, FieldsTakeTheColumnTypes) {
    EXPECT_EQ(ds_.fieldNames(), QStringList({"code", "qty", "amount", "made"}));
    EXPECT_EQ(ds_.fieldByName("Amount").dataType(), DataType::Currency);
    EXPECT_TRUE(ds_.fieldByName("amount").currency);
    EXPECT_EQ(ds_.fieldByName("made").dataType(), DataType::DateTime);
    EXPECT_DOUBLE_EQ(ds_.fieldByName("made").asDateTime(), 45352);  // 2024-03-01
    EXPECT_EQ(ds_.fieldByName("qty").displayLabel, "qty");
    EXPECT_EQ(errorOf([&] { ds_.fieldByName("nope"); }), "argument: Field 'nope' not found");
    EXPECT_EQ(errorOf([&] { ds_.fieldByName("code").asInteger(); }), "value: 'A-01' is not a valid integer value");
}

TEST_F(DataSetTest, Navigation) {
    struct Case {
        const char* what;
        std::function<void()> act;
        const char* code;
        bool bof, eof;
        int recNo;
    } cases[] = {
        {"open", [] {}, "A-01", true, false, 1},
        {"next", [&] { ds_.next(); }, "b-02", false, false, 2},
        {"last", [&] { ds_.last(); }, "C-03", false, true, 3},
        {"next at the end stays", [&] { ds_.next(); }, "C-03", false, true, 3},
        {"prior", [&] { ds_.prior(); }, "b-02", false, false, 2},
        {"moveBy past the start", [&] { EXPECT_EQ(ds_.moveBy(-5), -1); }, "A-01", true, false, 1},
        {"moveBy 2", [&] { EXPECT_EQ(ds_.moveBy(2), 2); }, "C-03", false, false, 3},
    };
    for (const auto& c : cases) {
        c.act();
        EXPECT_EQ(code(), c.code) << c.what;
        EXPECT_EQ(ds_.bof(), c.bof) << c.what;
        EXPECT_EQ(ds_.eof(), c.eof) << c.what;
        EXPECT_EQ(ds_.recNo(), c.recNo) << c.what;
    }
    EXPECT_EQ(ds_.recordCount(), 3);
}

TEST_F(DataSetTest, BookmarksOutliveRowsDeletedBeforeThem) {
    ds_.last();
    const Bookmark third = ds_.bookmark();
    ds_.first();
    const Bookmark first = ds_.bookmark();
    EXPECT_EQ(ds_.compareBookmarks(first, third), -1);
    EXPECT_EQ(ds_.compareBookmarks(third, third), 0);
    ds_.deleteRecord();
    ds_.gotoBookmark(third);
    EXPECT_EQ(code(), "C-03");
    EXPECT_EQ(ds_.recNo(), 2);
    EXPECT_FALSE(ds_.bookmarkValid(first));
    EXPECT_EQ(errorOf([&] { ds_.gotoBookmark(first); }), "argument: Record not found: its row was deleted");
    ds_.releaseBookmark(third);
    EXPECT_EQ(errorOf([&] { ds_.gotoBookmark(third); }), "argument: Bookmark not found");
}

TEST_F(DataSetTest, Editing) {
    struct Case {
        const char* what;
        std::function<void()> act;
        const char* error;
        DataSetState state;
        const char* codes;
        const char* current;
    } cases[] = {
        {"post in browse", [&] { ds_.post(); }, "argument: Dataset not in edit or insert mode", DataSetState::Browse, "A-01,b-02,C-03", "A-01"},
        {"writing in browse", [&] { ds_.fieldByName("code").setAsString("x"); }, "argument: Dataset not in edit or insert mode", DataSetState::Browse, "A-01,b-02,C-03", "A-01"},
        {"edit and cancel restores", [&] { ds_.edit(); ds_.fieldByName("code").setAsString("Z"); EXPECT_EQ(code(), "Z"); ds_.cancel(); }, "(no error)", DataSetState::Browse, "A-01,b-02,C-03", "A-01"},
        {"edit and post", [&] { ds_.edit(); ds_.fieldByName("code").setAsString("A-1"); ds_.post(); }, "(no error)", DataSetState::Browse, "A-1,b-02,C-03", "A-1"},
        {"insert goes before the current row", [&] { ds_.next(); ds_.insert(); ds_.fieldByName("code").setAsString("N"); ds_.post(); }, "(no error)", DataSetState::Browse, "A-1,N,b-02,C-03", "N"},
        {"insert cancelled returns to the row", [&] { ds_.next(); ds_.insert(); ds_.cancel(); }, "(no error)", DataSetState::Browse, "A-1,N,b-02,C-03", "b-02"},
        {"post in set-key ends the key entry", [&] { ds_.setKey(); ds_.fieldByName("code").setAsString("K"); ds_.post(); }, "(no error)", DataSetState::Browse, "A-1,N,b-02,C-03", "b-02"},
        {"an untouched appended row is dropped on moving", [&] { ds_.append(); ds_.first(); }, "(no error)", DataSetState::Browse, "A-1,N,b-02,C-03", "A-1"},
        {"append goes last; moving posts", [&] { ds_.append(); ds_.fieldByName("code").setAsString("L"); ds_.first(); }, "(no error)", DataSetState::Browse, "A-1,N,b-02,C-03,L", "A-1"},
        {"read-only field", [&] { ds_.fieldByName("qty").readOnly = true; ds_.edit(); ds_.fieldByName("qty").setAsInteger(5); }, "argument: Field 'qty' cannot be modified", DataSetState::Edit, "A-1,N,b-02,C-03,L", "A-1"},
        {"text in an integer field", [&] { ds_.fieldByName("qty").readOnly = false; ds_.fieldByName("qty").setAsString("x1"); }, "value: 'x1' is not a valid integer value", DataSetState::Edit, "A-1,N,b-02,C-03,L", "A-1"},
        {"delete while editing drops the edit", [&] { ds_.deleteRecord(); }, "(no error)", DataSetState::Browse, "N,b-02,C-03,L", "N"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(errorOf(c.act), c.error) << c.what;
        EXPECT_EQ(ds_.state(), c.state) << c.what;
        EXPECT_EQ(code(), c.current) << c.what;
        if (ds_.state() == DataSetState::Browse) EXPECT_EQ(codes(), c.codes) << c.what;
    }
    ds_.cancel();
    while (!ds_.isEmpty()) ds_.deleteRecord();
    EXPECT_EQ(errorOf([&] { ds_.deleteRecord(); }), "argument: Cannot perform this operation on an empty dataset");
    EXPECT_EQ(ds_.bookmark(), Bookmark(0));  // none on an empty dataset
    ds_.edit();  // on an empty dataset: inserts
    EXPECT_EQ(ds_.state(), DataSetState::Insert);
}

TEST_F(DataSetTest, ControlsNestAndTellOnceAtTheLastEnable) {
    QList<DataSetEvent> events;
    ds_.addObserver([&](DataSetEvent e) { events << e; });
    ds_.disableControls();
    ds_.disableControls();
    ds_.next();
    ds_.enableControls();
    EXPECT_TRUE(ds_.controlsDisabled());
    ds_.next();
    EXPECT_TRUE(events.isEmpty());
    ds_.enableControls();
    EXPECT_FALSE(ds_.controlsDisabled());
    EXPECT_EQ(events, QList<DataSetEvent>{DataSetEvent::DataSetChanged});
    ds_.prior();
    EXPECT_EQ(events.last(), DataSetEvent::Scrolled);
}

TEST_F(DataSetTest, Locate) {
    struct Case {
        const char* fields;
        Value values;
        LocateOptions options;
        bool found;
        const char* current;  // after the call, from C-03
    } cases[] = {
        {"code", "b-02", {}, true, "b-02"},
        {"code", "B-02", {}, false, "C-03"},
        {"code", "B-02", {.caseInsensitive = true}, true, "b-02"},
        {"code", "b-", {}, false, "C-03"},
        {"code", "B-", {.caseInsensitive = true, .partialKey = true}, true, "b-02"},
        {"Code;qty", QVariantList{"C-03", 3}, {}, true, "C-03"},
        {"code;qty", QVariantList{"C-03", 2}, {}, false, "C-03"},
        {"qty", "2", {}, true, "b-02"},      // the value sought takes the field's type
        {"amount", Value(), {}, true, "C-03"},  // null finds null
    };
    for (const auto& c : cases) {
        ds_.last();
        EXPECT_EQ(ds_.locate(c.fields, c.values, c.options), c.found) << c.fields << " " << c.values.toString().toStdString();
        EXPECT_EQ(code(), c.current) << c.fields << " " << c.values.toString().toStdString();
    }
}

TEST_F(DataSetTest, DisplayFormats) {
    struct Case {
        double value;
        const char* format;
        const char* text;
    } cases[] = {
        {1234.5, "#,##0.00", "1,234.50"},
        {1234567.891, "#,##0.00", "1,234,567.89"},
        {-0.5, "#,##0.00", "-0.50"},
        {0, "#,##0.00", "0.00"},
        {1234.5, "0.00", "1234.50"},
        {0.5, "#.##", ".5"},
        {12.345, "#.##", "12.35"},
        {0, "#.##", "."},   // no digit placeholder before the point: zero is a bare point
        {0, "#.", "."},
        {12, "#.##", "12"},
        {12.5, "#.####", "12.5"},
        {1234.5, "****", "****"},  // no digit placeholder: shown as it is
        {7, "0 pcs", "7 pcs"},
    };
    for (const auto& c : cases) EXPECT_EQ(formatNumber(c.value, c.format), c.text) << c.value << " " << c.format;

    Field& amount = ds_.fieldByName("amount");
    EXPECT_EQ(amount.displayText(), "1,234.50");  // a currency field without a format
    amount.displayFormat = "0.0";
    EXPECT_EQ(amount.displayText(), "1234.5");
    ds_.last();
    EXPECT_EQ(amount.displayText(), "");
}

TEST(InMemoryDataSet, OpensOnItsFieldDefinitionsAndChecksRanges) {
    DataSet ds;
    ds.addFieldDef("name", DataType::String);
    ds.addFieldDef("small", DataType::SmallInt);
    ds.addFieldDef("large", DataType::LargeInt);
    ds.open();
    EXPECT_TRUE(ds.isEmpty());
    EXPECT_EQ(errorOf([&] { ds.addFieldDef("x", DataType::Word); }), "argument: Cannot perform this operation on an open dataset");
    ds.append();
    ds.field(0).setAsString("n");
    EXPECT_EQ(errorOf([&] { ds.field(1).setAsInteger(40000); }),
              "value: 40000 is not a valid value for field 'small'. The allowed range is -32768 to 32767");
    ds.field(1).setAsString(" 12 ");
    ds.field(2).setAsFloat(5e9);
    ds.post();
    EXPECT_EQ(ds.field(2).asLargeInt(), 5000000000LL);
    EXPECT_EQ(ds.field(1).asVariant(), Value(qlonglong(12)));
    EXPECT_EQ(ds.recordCount(), 1);
    ds.close();
    EXPECT_EQ(ds.state(), DataSetState::Inactive);
    EXPECT_EQ(ds.fieldCount(), 0);
}

}  // namespace
}  // namespace kivdb

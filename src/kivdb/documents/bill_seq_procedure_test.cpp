#include "documents/bill_seq_procedure.h"

#include "testing/connections.h"
#include "testing/suite_database.h"

#include <QDate>
#include <gtest/gtest.h>

#include <future>
#include <set>
#include <thread>

namespace kivdb::documents {
namespace {

// The call as the library's GetBillSeqNo makes it.
struct Numbering {
    int status = -1;
    bool numbered = false;  // @ResultStr not null
    std::string number;
};

Numbering nextNumber(Connection& conn, const Value& billType) {
    ProcedureCall call{QStringLiteral("bs_Get_BillSeqNo"), {}};
    call.add(QStringLiteral("@RETURN_VALUE"), FieldType::Integer, ParamDirection::ReturnValue)
        .add(QStringLiteral("@BillType"), FieldType::Integer, ParamDirection::Input, 0, billType)
        .add(QStringLiteral("@ResultStr"), FieldType::String, ParamDirection::Output, 20);
    conn.call(call);
    const Value& result = call.param(QStringLiteral("@ResultStr")).value;
    return {call.param(QStringLiteral("@RETURN_VALUE")).value.toInt(), !result.isNull(), result.toString().toStdString()};
}

class BillSeqProcedureTest : public ::testing::Test {
protected:
    void SetUp() override { conn_ = file_.connect(); }

    void addRule(int billId, const QString& values) {
        conn_->execute(QStringLiteral("insert into bs_billsetItem (BillId, Prefix, Codeformat, EncodeType, SeqWidth, "
                                      "CurSeq, CurPeriod) values (%1, %2)")
                           .arg(billId)
                           .arg(values));
    }
    std::string counter(int billId) {
        const RowSet rows = conn_->query(
            QStringLiteral("select CurSeq, CurPeriod from bs_billsetItem where BillId = %1").arg(billId));
        return (rows.rows[0][0].toString() + QLatin1Char('/') + rows.rows[0][1].toString()).toStdString();
    }

    testing::SuiteDatabaseFile file_;
    std::unique_ptr<Connection> conn_;
};

const QDate kToday = QDate::currentDate();
const QString kDay = kToday.toString(QStringLiteral("yyyyMMdd"));
const QString kMonth = kToday.toString(QStringLiteral("yyyyMM"));
const QString kYear = kToday.toString(QStringLiteral("yyyy"));

TEST_F(BillSeqProcedureTest, NumbersFollowTheRule) {
    struct Case {
        const char* name;
        // Prefix, Codeformat, EncodeType, SeqWidth, CurSeq, CurPeriod as SQL values
        QString rule;
        BillSeqStatus status;
        QString number;   // null when none is handed out
        QString counter;  // CurSeq/CurPeriod afterwards
    };
    const Case cases[] = {
        {"daily counter goes on within the day", "'PO', 'yyyymmdd', 'D', 4, 7, '" + kDay + "'",
         BillSeqStatus::Numbered, "PO" + kDay + "0008", "8/" + kDay},
        {"daily counter restarts on a new day", "'PO', 'yyyymmdd', 'D', 4, 7, '20000101'",
         BillSeqStatus::Numbered, "PO" + kDay + "0001", "1/" + kDay},
        {"monthly, format in capitals with trailing blanks", "'SO', 'YYMM  ', 'm', 3, 12, '" + kMonth + "'",
         BillSeqStatus::Numbered, "SO" + kToday.toString(QStringLiteral("yyMM")) + "013", "13/" + kMonth},
        {"yearly counter restarts in a new year", "'R', 'yy', 'Y', 5, 99, '1999'",
         BillSeqStatus::Numbered, "R" + kToday.toString(QStringLiteral("yy")) + "00001", "1/" + kYear},
        {"no restart and no date part", "'X', '', '', 4, 41, ''", BillSeqStatus::Numbered, "X0042", "42/"},
        {"unknown format means no date part", "'X', 'ddmmyy', 'N', 4, 0, ''", BillSeqStatus::Numbered, "X0001",
         "1/"},
        {"blank rule columns", "null, null, null, null, null, null", BillSeqStatus::Numbered, "0001", "1/"},
        {"sequence wider than its width is written in full", "'W', '', '', 2, 99, ''", BillSeqStatus::Numbered,
         "W100", "100/"},
        {"exactly twenty characters", "'ABCDEFGH', 'yyyymmdd', 'D', 4, 0, '" + kDay + "'",
         BillSeqStatus::Numbered, "ABCDEFGH" + kDay + "0001", "1/" + kDay},
        {"twenty-one characters leave the counter", "'ABCDEFGHI', 'yyyymmdd', 'D', 4, 5, '" + kDay + "'",
         BillSeqStatus::TooLong, QString(), "5/" + kDay},
        {"a width beyond twenty", "'', '', '', 30, 5, ''", BillSeqStatus::TooLong, QString(), "5/"},
    };
    int billId = 100;
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        addRule(++billId, c.rule);
        const Numbering got = nextNumber(*conn_, billId);
        EXPECT_EQ(got.status, int(c.status));
        EXPECT_EQ(got.numbered, !c.number.isNull());
        EXPECT_EQ(got.number, c.number.toStdString());
        EXPECT_EQ(counter(billId), c.counter.toStdString());
        EXPECT_FALSE(conn_->inTransaction());
    }
}

TEST_F(BillSeqProcedureTest, NoNumberWithoutARule) {
    addRule(1, "'A', '', '', 4, 0, ''");
    for (const Value& billType : {Value(2), Value()}) {
        SCOPED_TRACE(billType.toString().toStdString());
        const Numbering got = nextNumber(*conn_, billType);
        EXPECT_EQ(got.status, int(BillSeqStatus::NoRule));
        EXPECT_FALSE(got.numbered);
    }
    EXPECT_EQ(counter(1), "0/");
}

TEST_F(BillSeqProcedureTest, InsideTheCallersTransactionTheCallerDecides) {
    addRule(1, "'A', '', '', 4, 0, ''");
    addRule(2, "'ABCDEFGHIJ', 'yyyymmdd', '', 4, 0, ''");
    conn_->begin();
    conn_->execute("insert into BillCode (BillId, SeqNo) values (0, 7)");
    EXPECT_EQ(nextNumber(*conn_, 1).number, "A0001");
    // A refused number undoes its own counter step only.
    EXPECT_EQ(nextNumber(*conn_, 2).status, int(BillSeqStatus::TooLong));
    ASSERT_TRUE(conn_->inTransaction());
    EXPECT_EQ(counter(1), "1/");
    EXPECT_EQ(counter(2), "0/");
    EXPECT_EQ(conn_->query("select SeqNo from BillCode").rows.size(), 1u);
    conn_->rollback();
    EXPECT_EQ(counter(1), "0/");
}

TEST_F(BillSeqProcedureTest, DatabaseErrorsReachTheCaller) {
    ProcedureCall withoutResult{QStringLiteral("bs_Get_BillSeqNo"), {}};
    withoutResult.add(QStringLiteral("@BillType"), FieldType::Integer, ParamDirection::Input, 0, 1);
    EXPECT_THROW(conn_->call(withoutResult), DatabaseError);
    EXPECT_THROW(nextNumber(*conn_, QStringLiteral("one")), DatabaseError);
    addRule(1, "'A', '', '', 4, 2147483647, ''");
    EXPECT_THROW(nextNumber(*conn_, 1), DatabaseError);
    EXPECT_FALSE(conn_->inTransaction());
    EXPECT_EQ(counter(1), "2147483647/");
}

TEST_F(BillSeqProcedureTest, ASecondConnectionAskingMidwayGetsTheNextNumber) {
    addRule(5, "'N', '', '', 4, 0, ''");
    auto other = file_.connect();
    std::future<Numbering> otherNumbering;
    // After the counter moved and before it is read back, the other connection asks too,
    // and is given time to finish if nothing holds it back.
    const int id = conn_->addObserver([&](const StatementEvent& e) {
        if (e.text.startsWith(QLatin1String("select")) && !otherNumbering.valid()) {
            otherNumbering = std::async(std::launch::async, [&] { return nextNumber(*other, 5); });
            otherNumbering.wait_for(std::chrono::milliseconds(300));
        }
    });
    const Numbering first = nextNumber(*conn_, 5);
    conn_->removeObserver(id);
    ASSERT_TRUE(otherNumbering.valid());
    EXPECT_EQ(first.number, "N0001");
    EXPECT_EQ(otherNumbering.get().number, "N0002");
}

TEST_F(BillSeqProcedureTest, ConcurrentThreadsNeverShareANumber) {
    addRule(5, "'N', '', '', 4, 0, ''");
    constexpr int kThreads = 2, kEach = 150;
    std::vector<std::vector<std::string>> taken(kThreads);
    std::vector<std::string> failures(kThreads);
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t)
        threads.emplace_back([&, t] {
            failures[t] = testing::databaseErrorOf([&] {
                auto conn = file_.connect();
                for (int i = 0; i < kEach; ++i) taken[t].push_back(nextNumber(*conn, 5).number);
            });
        });
    for (auto& thread : threads) thread.join();
    for (const std::string& failure : failures) EXPECT_EQ(failure, "(no error)");
    std::set<std::string> distinct;
    for (const auto& numbers : taken) distinct.insert(numbers.begin(), numbers.end());
    EXPECT_EQ(distinct.size(), size_t(kThreads * kEach));
    EXPECT_FALSE(distinct.count(""));
    EXPECT_EQ(counter(5), std::to_string(kThreads * kEach) + "/");
}

}  // namespace
}  // namespace kivdb::documents

// The ODBC backend end to end through unixODBC, with the SQLite ODBC driver standing in
// for the server: connecting, fetching, types, transactions and errors all run for real.
#include "platform/odbc_connection.h"

#include "testing/connections.h"

#include <gtest/gtest.h>


namespace kivdb {
namespace {

class OdbcConnectionTest : public ::testing::Test {
protected:
    static void SetUpTestSuite() { testing::useUtf8Locale(); }

    void SetUp() override {
        conn_ = openWith(QString());
        conn_->execute(testing::kNoteTable);
    }

    std::unique_ptr<OdbcConnection> openWith(const QString& extraOptions) {
        auto conn = Connection::open(QStringLiteral("odbc:Driver=SQLite3;Database=%1%2").arg(db_.path, extraOptions));
        EXPECT_EQ(conn->backend(), Backend::Odbc);
        return std::unique_ptr<OdbcConnection>(static_cast<OdbcConnection*>(conn.release()));
    }

    qlonglong noteCount() { return conn_->query("select count(*) from note").rows[0][0].toLongLong(); }

    testing::TemporaryDatabase db_;
    std::unique_ptr<OdbcConnection> conn_;
};

TEST_F(OdbcConnectionTest, LongTextIsReadWhole) {
    const QString text = QString(QStringLiteral("长")).repeated(5000) + QStringLiteral("end");
    conn_->execute(QStringLiteral("insert into note (code) values ('%1')").arg(text));
    EXPECT_EQ(conn_->query("select code from note").rows[0][0].toString(), text);
}

TEST_F(OdbcConnectionTest, BoundParametersArriveWithTheirTypes) {
    // Procedure calls bind their parameters this way; SQLite has no procedures, so the
    // binding is shown on a plain statement.
    const QDateTime made(QDate(2024, 12, 31), QTime(23, 59, 58, 125));
    std::vector<ProcedureParam> params = {
        {"@Code", FieldType::String, ParamDirection::Input, 20, QStringLiteral("退货单-丙")},
        {"@Qty", FieldType::Integer, ParamDirection::Input, 0, 7},
        {"@Amount", FieldType::Currency, ParamDirection::Input, 0, 99.5},
        {"@Price", FieldType::Bcd, ParamDirection::Input, 0, QStringLiteral("0.125")},
        {"@Rate", FieldType::Float, ParamDirection::Input, 0, Value()},
        {"@Made", FieldType::DateTime, ParamDirection::Input, 0, made},
        {"@Posted", FieldType::Boolean, ParamDirection::Input, 0, true},
    };
    EXPECT_EQ(conn_->executeBound("insert into note values (?, ?, ?, ?, ?, ?, ?)", params), 1);
    const RowSet rows = conn_->query("select code, qty, amount, price, rate, made, posted from note");
    const std::vector<Value> expected = {QStringLiteral("退货单-丙"), qlonglong(7), 99.5, 0.125, Value(), made, true};
    ASSERT_EQ(rows.rows.size(), 1u);
    for (size_t i = 0; i < expected.size(); ++i) {
        SCOPED_TRACE(rows.columns[i].name.toStdString());
        EXPECT_EQ(rows.rows[0][i], expected[i]);
        EXPECT_EQ(rows.rows[0][i].isValid(), expected[i].isValid());
    }
}

TEST_F(OdbcConnectionTest, BadParameterValuesAreRefusedBeforeAnythingRuns) {
    struct Case {
        ProcedureParam param;
        const char* message;
    };
    const Case cases[] = {
        {{"@Qty", FieldType::Integer, ParamDirection::Input, 0, QStringLiteral("twelve")},
         "parameter @Qty: \"twelve\" is not an integer"},
        {{"@Made", FieldType::DateTime, ParamDirection::Input, 0, QStringLiteral("2024-02-30")},
         "parameter @Made: \"2024-02-30\" is not a date"},
    };
    for (const Case& c : cases) {
        std::vector<ProcedureParam> params = {{"@Code", FieldType::String, ParamDirection::Input, 0, QStringLiteral("x")},
                                              c.param};
        EXPECT_EQ(testing::databaseErrorOf([&] { conn_->executeBound("insert into note (code, qty) values (?, ?)", params); }),
                  c.message);
    }
    EXPECT_EQ(noteCount(), 0);
}

TEST_F(OdbcConnectionTest, ProcedureCallIsACallEscapeTheDriverMustKnow) {
    // The SQLite driver does not know {? = call ...} and says so when preparing it; the
    // error is the driver's, the outputs stay untouched and the connection usable.
    ProcedureCall call{QStringLiteral("bs_Get_BillSeqNo"), {}};
    call.add("@RETURN_VALUE", FieldType::Integer, ParamDirection::ReturnValue)
        .add("@BillId", FieldType::Integer, ParamDirection::Input, 0, 101)
        .add("@NoteNo", FieldType::String, ParamDirection::Output, 20);
    QStringList seen;
    conn_->addObserver([&](const StatementEvent& e) { seen << e.text; });
    EXPECT_EQ(testing::databaseErrorOf([&] { conn_->call(call); }), "[SQLite]near \"=\": syntax error (1)");
    EXPECT_EQ(seen, QStringList{QStringLiteral("bs_Get_BillSeqNo")});
    EXPECT_FALSE(call.param("@NoteNo").value.isValid());
    EXPECT_EQ(noteCount(), 0);
}

TEST_F(OdbcConnectionTest, OuterJoinModeFollowsOptionOrUnreadableLevel) {
    // The SQLite driver has no compatibility level: statements go unchanged.
    EXPECT_EQ(conn_->outerJoinMode(), OuterJoinMode::Legacy);
    EXPECT_TRUE(conn_->outerJoinModeReason().startsWith(QLatin1String("compatibility level unreadable")))
        << conn_->outerJoinModeReason().toStdString();

    struct Case {
        const char* option;
        OuterJoinMode mode;
        const char* reason;
    };
    const Case cases[] = {
        {";KivdbOuterJoins=ansi", OuterJoinMode::Ansi, "forced by KivdbOuterJoins=ansi"},
        {";kivdbouterjoins = Legacy", OuterJoinMode::Legacy, "forced by KivdbOuterJoins=legacy"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.option);
        auto conn = openWith(QLatin1String(c.option));
        EXPECT_EQ(conn->outerJoinMode(), c.mode);
        EXPECT_EQ(conn->outerJoinModeReason(), QLatin1String(c.reason));
    }

    auto ansi = openWith(QStringLiteral(";KivdbOuterJoins=ansi"));
    QStringList seen;
    ansi->addObserver([&](const StatementEvent& e) { seen << e.text; });
    const QString oldJoin = QStringLiteral("select a.code from note a, note b where a.code *= b.code");
    // Rewritten to an ANSI join before it is sent (SQLite itself knows no *=), observed as built.
    EXPECT_NO_THROW(ansi->query(oldJoin));
    EXPECT_EQ(seen, QStringList{oldJoin});
    auto legacy = openWith(QStringLiteral(";KivdbOuterJoins=legacy"));
    EXPECT_THROW(legacy->query(oldJoin), DatabaseError);  // sent unchanged
}

TEST(OdbcConnectionString, OurOptionIsTakenOutAndTheRestPassedOnVerbatim) {
    struct Case {
        const char* input;
        const char* driverString;
        std::optional<OuterJoinMode> forced;
    };
    const Case cases[] = {
        {"Driver=FreeTDS;Server=db;Port=1433", "Driver=FreeTDS;Server=db;Port=1433", std::nullopt},
        {"KivdbOuterJoins=ansi;Driver=FreeTDS;UID=sa", "Driver=FreeTDS;UID=sa", OuterJoinMode::Ansi},
        {"Driver=FreeTDS;KIVDBOUTERJOINS=LEGACY;UID=sa;", "Driver=FreeTDS;UID=sa", OuterJoinMode::Legacy},
        // Braced values keep their ';' and '=' and doubled '}}'.
        {"Driver=FreeTDS;PWD={a;b=c}}d};KivdbOuterJoins=ansi", "Driver=FreeTDS;PWD={a;b=c}}d}", OuterJoinMode::Ansi},
        {"Driver=FreeTDS;PWD={KivdbOuterJoins=ansi}", "Driver=FreeTDS;PWD={KivdbOuterJoins=ansi}", std::nullopt},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.input);
        const auto options = OdbcConnection::parseConnectionString(QLatin1String(c.input));
        EXPECT_EQ(options.driverString, QLatin1String(c.driverString));
        EXPECT_EQ(options.forcedOuterJoins, c.forced);
    }
    EXPECT_THROW(OdbcConnection::parseConnectionString(QStringLiteral("Driver=x;KivdbOuterJoins=maybe")),
                 DatabaseError);
}

TEST_F(OdbcConnectionTest, CatalogReadsExactlyTheNamedTable) {
    // '_' is a wildcard to SQLColumns: the look-alike table must not lend its columns.
    conn_->execute("create table Bs_Customer (CustNo nvarchar(20), CreditLimit money_real, OpenDate datetime_text)");
    conn_->execute("create table BsxCustomer (Other int)");
    const auto columns = conn_->catalog().tableColumns(QStringLiteral("bs_customer"));
    ASSERT_TRUE(columns.has_value());
    ASSERT_EQ(columns->size(), 3u);
    EXPECT_EQ((*columns)[0].name, QStringLiteral("CustNo"));
    EXPECT_EQ((*columns)[0].kind, dialect::ColumnKind::Text);
    EXPECT_EQ((*columns)[1].kind, dialect::ColumnKind::Money);
    EXPECT_EQ((*columns)[2].kind, dialect::ColumnKind::DateTime);
    EXPECT_FALSE(conn_->catalog().tableColumns(QStringLiteral("NoSuchTable")).has_value());
}

TEST(OdbcConnectionOpen, FailedConnectCarriesTheDriverManagersMessage) {
    const std::string message =
        testing::databaseErrorOf([] { Connection::open(QStringLiteral("odbc:Driver=NoSuchDriver;Database=x")); });
    EXPECT_NE(message.find("NoSuchDriver"), std::string::npos) << message;
}

}  // namespace
}  // namespace kivdb

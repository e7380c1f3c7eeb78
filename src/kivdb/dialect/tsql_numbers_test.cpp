// Exact money and decimals, and the server's overflow errors, on a real embedded database.
#include "dialect/dialect.h"
#include "platform/sqlite_connection.h"
#include "testing/sqlite_database.h"

#include <gtest/gtest.h>

namespace kivdb::dialect {
namespace {

using testing::SqliteTestDb;

const char* const kTables =
    "create table Acct (id int, Amount money, HadPayAmt money, Small smallmoney, Qty decimal(18,4), Rate decimal(9,4), "
    "Tiny tinyint, Short smallint, Whole int, Big bigint, Ratio float)\n"
    "insert into Acct (id, Amount, HadPayAmt, Qty, Rate, Tiny, Short, Whole, Big) "
    "values (1, 0.3, 0.1, 2.5, 0.1, 200, 30000, 2147483647, 9223372036854775807)\n"
    "create table Ten (v money, d decimal(18,6))\n"
    "insert into Ten values (0.1, 0.1) insert into Ten values (0.1, 0.1) insert into Ten values (0.1, 0.1) "
    "insert into Ten values (0.1, 0.1) insert into Ten values (0.1, 0.1) insert into Ten values (0.1, 0.1) "
    "insert into Ten values (0.1, 0.1) insert into Ten values (0.1, 0.1) insert into Ten values (0.1, 0.1) "
    "insert into Ten values (0.1, 0.1)\n";

struct NumberCase {
    const char* name;
    const char* tsql;
    const char* value;  // rows joined by ";", or the error's message
};

void PrintTo(const NumberCase& c, std::ostream* os) { *os << c.name; }

class ExactNumbers : public ::testing::TestWithParam<NumberCase> {
protected:
    void SetUp() override { db.script(kTables); }
    SqliteTestDb db;
};

TEST_P(ExactNumbers, AnswerAsTheServer) {
    const NumberCase& c = GetParam();
    QString answer;
    try {
        answer = db.run(QString::fromUtf8(c.tsql)).join(QLatin1Char(';'));
    } catch (const std::exception& e) {
        answer = QString::fromUtf8(e.what());
    }
    EXPECT_EQ(answer.toStdString(), std::string(c.value));
}

INSTANTIATE_TEST_SUITE_P(
    Values, ExactNumbers,
    ::testing::Values(
        NumberCase{"PaidReceivableDisappears",
                   "update Acct set HadPayAmt = HadPayAmt + 0.2 select count(*) from Acct where Amount <> HadPayAmt", "0"},
        NumberCase{"TenTenthsSumToOne", "select sum(v), sum(d), avg(v), avg(d) from Ten", "1|1|0.1|0.1"},
        NumberCase{"SumComparesExactly", "select count(*) from Ten having sum(v) = 1 and sum(d) = 1.0", "10"},
        NumberCase{"LiteralsAddExactly", "select 0.1 + 0.2, 0.3 - 0.1 - 0.2", "0.3|0"},
        NumberCase{"LongChainStaysExactAndFlat",
                   "select 0.1 + 0.1 + 0.1 + 0.1 + 0.1 + 0.1 + 0.1 + 0.1 + 0.1 + 0.1 + 0.1 + 0.1 + 0.1 + 0.1 + 0.1 + "
                   "0.1 + 0.1 + 0.1 + 0.1 + 0.1 + 0.1 + 0.1 + 0.1 + 0.1 + 0.1 + 0.1 + 0.1 + 0.1 + 0.1 + 0.1 + 0.1 + "
                   "0.1 + 0.1 + 0.1 + 0.1 + 0.1 + 0.1 + 0.1 + 0.1 + 0.1 + 0.1 + 0.1 + 0.1 + 0.1 + 0.1 + 0.1 + 0.1 + "
                   "0.1 + 0.1 + 0.1 + 0.1 + 0.1 + 0.1 + 0.1 + 0.1 + 0.1 + 0.1 + 0.1 + 0.1 + 0.1 + 0.1 - 6.1",
                   "0"},
        NumberCase{"ConvertRoundsHalfAway", "select convert(decimal(10,2), 1.005), cast(-2.25 as decimal(10,1))", "1.01|-2.3"},
        NumberCase{"MoneyStoresFourDecimals",
                   "insert into Acct (id, Amount) values (2, 1.23456) select Amount from Acct where id = 2", "1.2346"},
        NumberCase{"DecimalStoresItsScale",
                   "update Acct set Rate = Rate * 1.23456789, Qty = 1.0 / 3 select Rate, Qty from Acct", "0.1235|0.3333"},
        NumberCase{"DivisionScale", "select 10/3.0, 2/3.0, 1.0/3", "3.333333|0.666666|0.333333333333"},
        NumberCase{"MoneyDivisionRounds", "select Amount / 7, Amount * Amount from Acct", "0.0429|0.09"},
        NumberCase{"IntegerDivisionTruncates", "select 7 / 2, -7 / 2", "3|-3"},
        NumberCase{"DecimalModulo", "select 0.3 % 0.1, -7.5 % 2", "0|-1.5"},
        NumberCase{"InsertSelectRounds",
                   "insert into Acct (id, Amount) select 3, Qty / 7 from Acct where id = 1 "
                   "select Amount from Acct where id = 3",
                   "0.3571"},
        NumberCase{"InsertSelectStarRounds",
                   "create table Pair (m money, f float) insert into Pair values (1, 2.123456789) "
                   "insert into Ten select * from Pair select max(d) from Ten",
                   "2.123457"},
        NumberCase{"SelectIntoKeepsScale",
                   "select Amount * 3 as x into #t from Acct select x + 0.00001, x from #t", "0.90001|0.9"},
        NumberCase{"DerivedTableColumnsStayExact",
                   "select t.a - t.b - 0.2, s.Amount - s.HadPayAmt - 0.2 from (select Amount a, HadPayAmt b from Acct) t, "
                   "(select * from Acct) s",
                   "0|0"},
        NumberCase{"TextOfADecimalShowsItsScale",
                   "select convert(varchar(20), Qty), convert(varchar(20), Amount + 0.005), "
                   "convert(varchar(20), convert(money, 1.005)) from Acct",
                   "2.5000|0.3050|1.01"},
        NumberCase{"RoundAtAnyLength",
                   "select round(1.5, -400), round(748.58, -2), round(1.005, 2), round(15, -1), round(2.5, 0, 1)",
                   "0|700|1.01|20|2"}));

// At the limits of a type: the digits written decide the range, and what is stored is the
// largest double inside it (money's limits have more digits than a double keeps).
INSTANTIATE_TEST_SUITE_P(
    Limits, ExactNumbers,
    ::testing::Values(
        NumberCase{"MoneyLimitsFromLiterals",
                   "select cast(922337203685477.5807 as money) - 922337203685477, "
                   "cast(-922337203685477.5808 as money) + 922337203685477",
                   "0.5|-0.5"},
        NumberCase{"MoneyLimitFromText", "select cast('922337203685477.5807' as money) - 922337203685477", "0.5"},
        NumberCase{"MoneyLimitStored",
                   "insert into Acct (id, Amount) values (2, 922337203685477.5807) "
                   "select Amount - 922337203685477 from Acct where id = 2",
                   "0.5"},
        NumberCase{"PastMoneyLiteral", "select cast(922337203685477.5808 as money)",
                   "Arithmetic overflow error converting expression to data type money."},
        NumberCase{"PastMoneyText", "select cast('-922337203685477.5809' as money)",
                   "Arithmetic overflow error converting expression to data type money."},
        NumberCase{"DecimalAtItsPrecision",
                   "create table Wide (d decimal(38,0), f decimal(5,5)) "
                   "insert into Wide values (99999999999999999999999999999999999999, 0.99999) "
                   "select count(*) from Wide where d < 1e38 and d + 0 = d and f = 0.99999",
                   "1"},
        NumberCase{"PastDecimalPrecision", "select cast(100000000000000000000000000000000000000 as decimal(38,0))",
                   "Arithmetic overflow error converting numeric to data type numeric."},
        NumberCase{"FloorAndCeilingKeepTheType",
                   "select floor(-1.5), ceiling(1.2), convert(varchar(10), floor(-1.5)), floor(Amount + 1), ceiling(Whole) "
                   "from Acct",
                   "-2|2|-2|1|2147483647"}));

// Money as text both ways, money and binary constants.
INSTANTIATE_TEST_SUITE_P(
    MoneyText, ExactNumbers,
    ::testing::Values(
        NumberCase{"ConvertStyles",
                   "select convert(varchar(30), cast(1234567.5 as money), 1), convert(varchar(30), cast(-1234567.5 as money), 1), "
                   "convert(varchar(30), cast(123.5 as money), 1), convert(varchar(30), cast(1234567.5 as money), 2), "
                   "convert(varchar(30), cast(1234567.5 as money), 0), convert(varchar(30), Amount) from Acct",
                   "1,234,567.50|-1,234,567.50|123.50|1234567.5000|1234567.50|0.30"},
        NumberCase{"TextWithCommas",
                   "insert into Acct (id, Amount) values (2, '1,234,567.25') "
                   "select cast('1,234.5' as money), Amount from Acct where id = 2 and Amount = '1,234,567.25'",
                   "1234.5|1234567.25"},
        NumberCase{"CommasAreNoDecimalText", "select cast('1,234.5' as decimal(10,2))", "Error converting data type varchar to numeric."},
        NumberCase{"MoneyConstants",
                   "select $1.23456, $-1, -$45.56, $1,000, convert(varchar(10), $1.23456), $1.23456 * 2 + Amount from Acct",
                   "1.2346|-1|-45.56|1|0|1.23|2.7692"},
        NumberCase{"MoneyConstantPastTheRange", "select $922337203685477.5808",
                   "Arithmetic overflow error converting expression to data type money."},
        NumberCase{"BinaryConstantsAreIntegers", "select 0x41FF, 0x41FF + 1, 0x0000000100000000", "16895|16896|4294967296"},
        NumberCase{"LongBinaryConstant", "select 0x000102030405060708",
                   "Binary constants of more than 8 bytes are not supported on the embedded database: '0x000102030405060708'."}));

INSTANTIATE_TEST_SUITE_P(
    Overflows, ExactNumbers,
    ::testing::Values(
        NumberCase{"IntPlusInt", "select 2147483647 + 1", "Arithmetic overflow error converting expression to data type int."},
        NumberCase{"FloatProduct", "update Acct set Ratio = 1e308 update Acct set Ratio = Ratio * 10",
                   "Arithmetic overflow error converting expression to data type float."},
        NumberCase{"FloatSum", "update Acct set Ratio = 1e308 insert into Acct (id, Ratio) values (2, 1e308) select sum(Ratio) from Acct",
                   "Arithmetic overflow error converting expression to data type float."},
        NumberCase{"FloatQuotient", "select 1e308 / 1e-10", "Arithmetic overflow error converting expression to data type float."},
        NumberCase{"FloatLiteral", "select 1e999",
                   "The floating point value '1e999' is out of the range of computer representation (8 bytes)."},
        NumberCase{"FloatWithinRange", "update Acct set Ratio = 1e308 select Ratio / 10 * 10 - 1e308, sum(Ratio) from Acct group by Ratio", "0|1e+308"},
        NumberCase{"IntColumnTimesTwo", "select Whole * 2 from Acct",
                   "Arithmetic overflow error converting expression to data type int."},
        NumberCase{"NegativeOfTheLowestInt", "update Acct set Whole = -Whole - 1 select -Whole from Acct",
                   "Arithmetic overflow error converting expression to data type int."},
        NumberCase{"Bigint", "select Big + 1 from Acct", "Arithmetic overflow error converting expression to data type bigint."},
        NumberCase{"SumOfInts", "insert into Acct (id, Whole) values (2, 1) select sum(Whole) from Acct",
                   "Arithmetic overflow error converting expression to data type int."},
        NumberCase{"TextIntoIntColumn", "update Acct set Whole = '5000000000'",
                   "The conversion of the varchar value '5000000000' overflowed an int column."},
        NumberCase{"ConvertNumericToInt", "select convert(int, 5000000000)",
                   "Arithmetic overflow error converting expression to data type int."},
        NumberCase{"ConvertHugeFloatToInt", "select convert(int, 1e308)",
                   "Arithmetic overflow error converting expression to data type int."},
        NumberCase{"IntOfHugeFloat", "select int(1e300)", "Arithmetic overflow error converting expression to data type int."},
        NumberCase{"ConvertJustPastInt", "select convert(int, 2147483648.0)",
                   "Arithmetic overflow error converting expression to data type int."},
        NumberCase{"ConvertHugeFloatToMoney", "select convert(money, 1e308)",
                   "Arithmetic overflow error converting expression to data type money."},
        NumberCase{"ConvertIntToSmallDecimal", "select convert(decimal(3,1), 100)",
                   "Arithmetic overflow error converting int to data type numeric."},
        NumberCase{"ConvertTextToInt", "select convert(int, '5000000000')",
                   "The conversion of the varchar value '5000000000' overflowed an int column."},
        NumberCase{"NegativeTinyint", "insert into Acct (id, Tiny) values (9, -1)",
                   "Arithmetic overflow error for data type tinyint, value = -1."},
        NumberCase{"LargeSmallint", "insert into Acct (id, Short) values (9, 40000)",
                   "Arithmetic overflow error for data type smallint, value = 40000."},
        NumberCase{"TinyintPlusOne", "update Acct set Tiny = Tiny + 100",
                   "Arithmetic overflow error for data type tinyint, value = 300."},
        NumberCase{"NumericIntoInt", "insert into Acct (id, Whole) values (9, 5000000000)",
                   "Arithmetic overflow error converting expression to data type int."},
        NumberCase{"DecimalPastItsPrecision", "update Acct set Rate = 123456.5",
                   "Arithmetic overflow error converting numeric to data type numeric."},
        NumberCase{"FloatIntoMoney", "update Acct set Amount = Ratio where id = 1 update Acct set Amount = 1e308",
                   "Arithmetic overflow error converting expression to data type money."},
        // The float product overflows before anything reaches the money column.
        NumberCase{"InfinityIntoMoney", "update Acct set Amount = 1e308 * 10",
                   "Arithmetic overflow error converting expression to data type float."},
        NumberCase{"SmallmoneyRange", "update Acct set Small = 214748.3648",
                   "Arithmetic overflow error converting expression to data type smallmoney."},
        NumberCase{"DecimalDividedByZero", "select Amount / 0 from Acct", "Divide by zero error encountered."}));

// Nothing out of range reaches the table: the failed statements above leave every row as it was.
TEST(ExactNumbersStore, RefusedValuesLeaveNoRow) {
    SqliteTestDb db;
    db.script(kTables);
    for (const char* tsql : {"insert into Acct (id, Tiny) values (9, 256)", "insert into Acct (id, Amount) values (9, 1e300)",
                             "insert into Acct (id, Whole) select 9, Big from Acct"})
        EXPECT_FALSE(db.errorOf(QString::fromUtf8(tsql)).empty()) << tsql;
    EXPECT_EQ(db.run("select count(*), max(Tiny), max(Amount) from Acct"), QStringList{"1|200|0.3"});
}

// A lookup by a money column still searches the column's index.
TEST(ExactNumbersStore, MoneyLookupUsesTheIndex) {
    SqliteTestDb db;
    db.script(kTables);
    db.run("create index IX_Acct_Amount on Acct (Amount)");
    const QString plan =
        db.runSqlite(QStringLiteral("EXPLAIN QUERY PLAN ") + translateToSqlite("select id from Acct where Amount = 0.3", db.catalog()))
            .join(QLatin1Char(';'));
    EXPECT_TRUE(plan.contains(QLatin1String("USING INDEX IX_Acct_Amount"))) << plan.toStdString();
}

// Readers learn the digits the server shows after the point: money's four, a decimal's
// scale, for stored and computed columns alike.
TEST(ExactNumbersStore, ColumnsCarryTheServersScale) {
    SqliteConnection conn(QStringLiteral(":memory:"), SqliteConnection::OpenMode::CreateIfMissing);
    for (const QString& batch : splitBatches(QString::fromUtf8(kTables))) conn.execute(batch);
    const RowSet rows = conn.query("select Amount, Qty, Amount * 2, Qty / 3, convert(decimal(10,3), 1), Ratio, id from Acct");
    std::vector<int> scales;
    for (const Column& c : rows.columns) scales.push_back(c.scale);
    EXPECT_EQ(scales, (std::vector<int>{4, 4, 4, 15, 3, -1, -1}));
}

}  // namespace
}  // namespace kivdb::dialect

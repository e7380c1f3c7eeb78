// The runtime functions and collations, seen through statements on a real embedded
// database: the value the server would give, or the error it would raise.
#include "dialect/dialect.h"
#include "testing/sqlite_database.h"

#include <gtest/gtest.h>

namespace kivdb::dialect {
namespace {

using testing::SqliteTestDb;

struct ValueCase {
    const char* name;
    const char* tsql;
    const char* value;  // the rows joined by ";", or "error: " and the server's message
};

void PrintTo(const ValueCase& c, std::ostream* os) { *os << c.name; }

class TsqlRuntime : public ::testing::TestWithParam<ValueCase> {
protected:
    void SetUp() override {
        db.script("create table Dates (d datetime, n int)\n"
                  "insert into Dates values ('2006-03-31 08:00:00', 1)\n"
                  "insert into Dates values ('2006-03-31', 2)\n"
                  "insert into Dates values ('2006-3-5', 3)\n"
                  "insert into Dates values ('20060401', 4)\n"
                  "create table Texts (t nvarchar(20), n int)\n"
                  "insert into Texts values ('b', 1)\n"
                  "insert into Texts values ('A', 2)\n"
                  "insert into Texts values ('a  ', 3)\n"
                  "insert into Texts values ('中文', 4)\n"
                  "insert into Texts values ('C', 5)\n");
    }
    SqliteTestDb db;
};

TEST_P(TsqlRuntime, GivesTheServersValue) {
    const ValueCase& c = GetParam();
    EXPECT_EQ(db.answer(QString::fromUtf8(c.tsql)).join(QLatin1Char(';')).toStdString(), std::string(c.value));
}

INSTANTIATE_TEST_SUITE_P(
    Collations, TsqlRuntime,
    ::testing::Values(
        ValueCase{"DatesInTimeOrder", "select n from Dates order by d", "3;2;1;4"},
        ValueCase{"DateWithoutTimeIsMidnight", "select n from Dates where d = '2006-03-31 00:00'", "2"},
        ValueCase{"DateStyles", "select count(*) from Dates where d between '2006/03/31' and '2006.04.01'", "3"},
        ValueCase{"GroupByDate", "select count(*) from (select d from Dates union select '2006-03-31 00:00:00.000') x",
                  "4"},
        ValueCase{"TextsIgnoringCase", "select n from Texts order by t, n", "2;3;1;5;4"},
        ValueCase{"DistinctIgnoresCaseAndBlanks", "select count(distinct t) from Texts", "4"},
        ValueCase{"ComputedTextsGroupAndSort",
                  "select rtrim(t), count(*) from Texts group by rtrim(t) order by rtrim(t) desc", "中文|1;C|1;b|1;A|2"},
        // Keys of different lengths: the engine's join filters must not tell them apart.
        ValueCase{"JoinOnKeysOfDifferentLengths",
                  "create table KeyLeft (a varchar(10) null) insert into KeyLeft values ('wc1 ') insert into KeyLeft "
                  "values ('WC2') create table KeyRight (b varchar(10) null, n int null) insert into KeyRight values "
                  "('WC1', 1) insert into KeyRight values ('wc2  ', 2) insert into KeyRight values ('WC3', 3) "
                  "select KeyRight.n from KeyLeft, KeyRight where KeyLeft.a = KeyRight.b order by 1",
                  "1;2"},
        ValueCase{"MinMaxUseCollation", "select max(t), min(n) from Texts where t < 'c'", "b|1"}));

INSTANTIATE_TEST_SUITE_P(
    LikePatterns, TsqlRuntime,
    ::testing::Values(
        ValueCase{"PercentOnly", "select count(*) from Texts where t like '%'", "5"},
        // t is nvarchar: its trailing blanks count, as they do not for varchar.
        ValueCase{"TrailingBlanksOfNvarcharKept", "select count(*) from Texts where t like 'a'", "1"},
        ValueCase{"TrailingBlanksOfThePatternCount", "select count(*) where 'a' like 'a '", "0"},
        ValueCase{"SetOfLetters", "select n from Texts where t like '[bc]' order by n", "1;5"},
        ValueCase{"UnclosedBracketIsLiteral", "select count(*) where 'a[b' like 'a[b'", "1"},
        ValueCase{"EscapedWildcard", "select count(*) where 'a_b' like 'a!_b' escape '!'", "1"},
        ValueCase{"UnderscoreNeedsACharacter", "select count(*) where 'ab' like 'ab_'", "0"},
        ValueCase{"NullPattern", "select count(*) where 'ab' like null", "0"},
        ValueCase{"NumberAsText", "select n from Texts where n like '[3-4]' order by n", "3;4"}));

INSTANTIATE_TEST_SUITE_P(
    Conversions, TsqlRuntime,
    ::testing::Values(
        ValueCase{"SmallDateTimeToTheMinute", "select convert(smalldatetime, '2006-03-31 10:20:40')", "2006-03-31 10:21:00"},
        ValueCase{"DateFromStyle112", "select convert(datetime, '20060331')", "2006-03-31 00:00:00"},
        ValueCase{"DateFromDays", "select convert(datetime, 1)", "1900-01-02 00:00:00"},
        ValueCase{"BlankTextIsTheZeroDate", "select convert(datetime, '')", "1900-01-01 00:00:00"},
        ValueCase{"BadDate", "select convert(datetime, '2006-02-30')",
                  "error: Conversion failed when converting date and/or time from character string."},
        ValueCase{"DateStyle", "select convert(varchar, getdate(), 999)",
                  "error: 999 is not a valid style number when converting from datetime to a character string."},
        ValueCase{"MoneyKeepsFourDecimals",
                  "create table Rate (r money) insert into Rate values (3) select 1/r, r * r / 7 from Rate",
                  "0.3333|1.2857"},
        ValueCase{"DecimalRoundsHalfAway", "select convert(decimal(10,1), -2.25)", "-2.3"},
        ValueCase{"MoneyFromText", "select convert(money, '12.34567')", "12.3457"},
        ValueCase{"TextToFloat", "select convert(float, 'x')", "error: Error converting data type varchar to float."},
        ValueCase{"VarcharDefaultsToThirty",
                  "select len(convert(varchar, 'abcdefghijklmnopqrstuvwxyz0123456789'))", "30"},
        ValueCase{"TextTooLongForVarchar",
                  "create table Short (a varchar(10), b nvarchar(4)) insert into Short (a) values ('10:15:30 下午')",
                  "error: String or binary data would be truncated."},
        ValueCase{"TextTooLongForNvarchar",
                  "create table Short (a varchar(10), b nvarchar(4)) insert into Short (b) values ('下午好啊!')",
                  "error: String or binary data would be truncated."},
        ValueCase{"BitFromNumber", "select convert(bit, 5), convert(bit, 0), cast('true' as bit)", "1|0|1"},
        ValueCase{"UnknownType", "select convert(geography, 1)", "error: Cannot find data type geography."},
        ValueCase{"IntTruncates", "select int('12.7'), int(-3.9), convert(int, 7.9)", "12|-3|7"},
        ValueCase{"BlankTextIsZero", "select convert(int, '  ')", "0"},
        ValueCase{"TextToInt", "select convert(int, '12.5')",
                  "error: Conversion failed when converting the varchar value '12.5' to data type int."},
        ValueCase{"DatePartsOfANumber", "select year(0), month(31), day(31)", "1900|2|1"},
        ValueCase{"DateMinusDays", "select d - 1 from Dates where n = 4", "2006-03-31"},
        ValueCase{"FractionalDays", "select d + 0.5 from Dates where n = 2", "2006-03-31 12:00:00"},
        ValueCase{"NumberPlusNumericText", "select n + '10' from Texts where n = 1", "11"},
        ValueCase{"TextPlusNumber", "select 'abc' + 1",
                  "error: Conversion failed when converting the varchar value 'abc' to data type int."},
        ValueCase{"CharindexNotFound", "select charindex('z', 'abc'), charindex('', 'abc')", "0|0"},
        ValueCase{"RightNegative", "select right('abc', -1)",
                  "error: Invalid length parameter passed to the right function."},
        ValueCase{"LenOfNull", "select len(null), len('中文 ')", "NULL|2"},
        ValueCase{"ModuloOfNegatives", "select -7 % 3, 7 % -3", "-1|1"},
        ValueCase{"ModuloByZero", "select 5 % 0", "error: Divide by zero error encountered."},
        ValueCase{"ScalarSubqueryOfOneRow", "select (select n from Texts where t = 'B')", "1"},
        ValueCase{"ScalarSubqueryOfNoRow", "select isnull((select n from Texts where t = 'x'), -1)", "-1"},
        // A union converts text to its column's numeric type: '1' and 1 are one row.
        ValueCase{"UnionConvertsTextToNumber", "select count(*) from (select 1 as x union select ' 1' union select '2') u", "2"},
        ValueCase{"UnionColumnsConvertEach", "select 'x', 1 union all select 'y', '3' order by 1", "x|1;y|3"},
        ValueCase{"UnionOfIntAndText", "select 1 union select 'a'",
                  "error: Conversion failed when converting the varchar value 'a' to data type int."},
        ValueCase{"UnionOfTextAndDecimal", "select 'a' union all select 1.5",
                  "error: Error converting data type varchar to numeric."}));

TEST(TsqlRuntimeLengths, TextsThatFitAreKept) {
    SqliteTestDb db;
    db.run("create table Short (a varchar(10), b nvarchar(4))");
    EXPECT_NO_THROW(db.run("insert into Short values ('10:15:30 a', '下午好啊')"));
    EXPECT_NO_THROW(db.run("insert into Short values ('abc   ' + '       ', null)"));
    EXPECT_EQ(db.run("select count(*) from Short"), QStringList{"2"});
}

}  // namespace
}  // namespace kivdb::dialect

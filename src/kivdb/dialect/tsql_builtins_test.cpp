// The built-in functions hosts send in their own T-SQL, run on a real embedded database:
// each statement answers what the server answers, or raises the server's error.
#include "dialect/dialect.h"
#include "testing/sqlite_database.h"

#include <gtest/gtest.h>

namespace kivdb::dialect {
namespace {

using testing::SqliteTestDb;

// Two rows: a Friday morning with milliseconds, and the last second of a year.
const char* const kRows =
    "create table B (id int identity(1,1), d datetime, v varchar(20), nv nvarchar(20), n int, f float)\n"
    "insert into B (d, v, nv, n, f) values ('2006-03-31 08:05:09.120', 'aXa  ', N'中文 ', 7, 2.5)\n"
    "insert into B (d, v, nv, n, f) values ('2005-12-31 23:59:59', 'abc', N'ab ', -3, -2.5)\n";

TEST(TsqlBuiltins, GiveTheServersValues) {
    SqliteTestDb db;
    db.script(QString::fromUtf8(kRows));
    struct Case {
        const char* tsql;
        const char* rows;  // joined by ";"
    } cases[] = {
        // datediff counts the boundaries crossed, under every name of each part.
        {"select datediff(year, '2005-12-31', '2006-01-01'), datediff(yy, '2006-01-01', '2006-12-31'), "
         "datediff(yyyy, '2007-01-01', '2006-12-31')", "1|0|-1"},
        {"select datediff(quarter, '2006-03-31', '2006-04-01'), datediff(qq, '2006-01-01', '2006-03-31'), "
         "datediff(q, '2005-12-31', '2007-01-01')", "1|0|5"},
        {"select datediff(month, '2006-01-31', '2006-02-01'), datediff(mm, '2006-01-01', '2006-01-31'), "
         "datediff(m, '2006-03-01', '2005-03-31')", "1|0|-12"},
        {"select datediff(day, d, '2006-01-01') from B where n = -3", "1"},
        {"select datediff(dd, '2006-01-01 23:00', '2006-01-02 01:00'), datediff(d, '2006-01-01', '2006-03-01'), "
         "datediff(dayofyear, '2006-01-01', '2006-01-03'), datediff(dy, '2006-01-03', '2006-01-01'), "
         "datediff(y, '2006-01-01', '2006-01-01')", "1|59|2|-2|0"},
        // Weeks turn on Sunday: 2006-04-01 is a Saturday.
        {"select datediff(week, '2006-04-01', '2006-04-02'), datediff(wk, '2006-04-02', '2006-04-08'), "
         "datediff(ww, '2006-04-01', '2006-04-16')", "1|0|3"},
        {"select datediff(weekday, '2006-04-01', '2006-04-03'), datediff(dw, '2006-04-01', '2006-04-01'), "
         "datediff(w, '2006-04-03', '2006-04-01')", "2|0|-2"},
        {"select datediff(hour, '2006-03-31 08:59:59', '2006-03-31 09:00'), datediff(hh, '2006-03-31', "
         "'2006-04-01 01:30')", "1|25"},
        {"select datediff(minute, '08:00:59', '08:01:00'), datediff(mi, '2006-03-31', '2006-03-31 01:00'), "
         "datediff(n, '2006-03-31 00:01:59', '2006-03-31')", "1|60|-1"},
        {"select datediff(second, '2006-03-31 00:00:00.990', '2006-03-31 00:00:01'), datediff(ss, "
         "'2006-03-31', '2006-03-31 00:01'), datediff(s, '2006-03-31 00:00:01', '2006-03-31')", "1|60|-1"},
        {"select datediff(millisecond, '2006-03-31', '2006-03-31 00:00:01.5'), datediff(ms, d, d) from B where n = 7",
         "1500|0"},
        // dateadd keeps the day within the month; a date without time stays one.
        {"select dateadd(year, 1, '2004-02-29'), dateadd(yy, -1, '2006-03-31 10:00')",
         "2005-02-28|2005-03-31 10:00:00"},
        {"select dateadd(quarter, 1, '2006-11-30'), dateadd(month, 1, '2006-01-31'), dateadd(mm, -2, '2006-03-31')",
         "2007-02-28|2006-02-28|2006-01-31"},
        {"select dateadd(day, 1, d), dateadd(dd, 1.7, '2006-03-31'), dateadd(dayofyear, -1, '2006-01-01'), "
         "dateadd(weekday, 2, '2006-03-31') from B where n = 7",
         "2006-04-01 08:05:09.120|2006-04-01|2005-12-31|2006-04-02"},
        {"select dateadd(week, 1, '2006-03-31'), dateadd(wk, -1, '2006-03-31')", "2006-04-07|2006-03-24"},
        {"select dateadd(hour, 5, '2006-03-31 20:00'), dateadd(mi, -1, '2006-03-31'), dateadd(second, 90, "
         "'2006-03-31'), dateadd(ms, 500, '2006-03-31')",
         "2006-04-01 01:00:00|2006-03-30 23:59:00|2006-03-31 00:01:30|2006-03-31 00:00:00.500"},
        // 2006-03-31 is the 90th day, a Friday (6 with Sunday first), in week 13.
        {"select datepart(year, d), datepart(quarter, d), datepart(month, d), datepart(dayofyear, d), "
         "datepart(day, d), datepart(week, d), datepart(weekday, d) from B where n = 7",
         "2006|1|3|90|31|13|6"},
        {"select datepart(hour, d), datepart(minute, d), datepart(second, d), datepart(millisecond, d), "
         "datepart(dw, '2006-04-02'), datepart(wk, '2005-01-01'), datepart(wk, '2005-01-02') from B where n = 7",
         "8|5|9|120|1|1|2"},
        {"select datename(month, d), datename(weekday, d), datename(dw, d), datename(year, d) + '年', "
         "datename(mm, d), datename(day, d), datename(quarter, d), datename(hour, d) from B where n = 7",
         "March|Friday|Friday|2006年|March|31|1|8"},
        {"select year(d), month(d), day(d) from B where n = 7", "2006|3|31"},
        {"select datediff(minute, getdate(), getdate()), case when getdate() > '2020-01-01' then 1 else 0 end",
         "0|1"},
        // Bytes: two per character of nvarchar, the code page's for varchar; blanks count.
        {"select datalength(v), datalength(nv), datalength(n), datalength(f), datalength(d) from B where n = 7",
         "5|6|4|8|8"},
        {"select datalength('abc '), datalength(N'ab'), datalength('中文'), datalength(null), datalength('')",
         "4|4|4|NULL|0"},
        // Characters beyond the basic plane are two UTF-16 units, as substring and charindex count them.
        {"select len('abc  '), len('  abc'), len(nv), len(''), len(v), len(N'a😀 ') from B where n = 7", "3|5|2|0|3|3"},
        {"select '[' + ltrim('  a ') + ']', '[' + rtrim(' a  ') + ']'", "[a ]|[ a]"},
        {"select left('abcdef', 2), right('abcdef', 2), left('ab', 5), left(N'中文字', 2), right(nv, 2) from B "
         "where n = 7", "ab|ef|ab|中文|文 "},
        {"select substring('abcdef', 2, 3), substring('abc', 0, 2), substring('abc', -1, 3), "
         "'[' + substring('abc', 5, 1) + ']', substring('abc', 2, 10), substring(N'中文字', 2, 1)",
         "bcd|a|a|[]|bc|文"},
        {"select charindex('X', 'aXa'), charindex('x', 'aXa'), charindex('a', 'aXa', 2), charindex('文', nv) "
         "from B where n = 7", "2|2|3|2"},
        {"select patindex('%[0-9]%', 'ab12'), patindex('%x%', 'aXa'), patindex('ab%', 'abc'), "
         "patindex('b%', 'abc'), patindex('%c', 'abc'), patindex('%[^a]%', 'aab'), patindex('%z%', null)",
         "3|2|1|0|3|3|NULL"},
        {"select replace('aXa', 'x', 'y'), replace(v, 'A', 'b'), replace('abc', '', 'z'), replace('abc', 'b', null) "
         "from B where n = 7", "aya|bXb  |abc|NULL"},
        {"select stuff('abcdef', 2, 3, 'XY'), stuff('abc', 5, 1, 'x'), stuff('abc', 0, 1, 'x'), "
         "stuff('abc', 2, 10, 'x'), stuff('abc', 1, 0, 'x')", "aXYef|NULL|NULL|ax|xabc"},
        {"select replicate('ab', 3), '[' + replicate('a', 0) + ']', replicate('a', -1), '[' + space(3) + ']', "
         "space(-1)", "ababab|[]|NULL|[   ]|NULL"},
        {"select reverse('abc'), reverse(N'中文😀'), upper(N'aXé'), lower(N'AbÇ')", "cba|😀文中|AXÉ|abç"},
        // One character for one: nothing grows or shrinks.
        {"select upper(N'abcß'), len(upper(N'ßﬁ')), lower(N'ABC'), upper(N'𐐨x')", "ABCß|2|abc|𐐀X"},
        // ascii gives the first byte in the Chinese code page.
        {"select ascii('A'), ascii('abc'), ascii(''), ascii('中'), char(65), char(256), nchar(20013), "
         "unicode(N'中文'), unicode('')", "65|97|NULL|214|A|NULL|中|20013|NULL"},
        {"select str(123.456), str(123.456, 8, 2), str(-2.5), str(12345678901), str(123.45, 4, 2), str(null), "
         "str(1.5, 3, 1)", "       123|  123.46|        -3|**********| 123|NULL|1.5"},
        {"select abs(-3), abs(f), ceiling(2.1), ceiling(-2.1), ceiling(5), floor(-2.1), floor(f) from B where n = 7",
         "3|2.5|3|-2|5|-3|2"},
        {"select round(2.5e0, 0), round(f, 0), power(2, 10), power(2, 0.5), power(2.0e0, 0.5), power(2, -1) from B "
         "where n = -3", "3|-3|1024|1|1.41421356237|0"},
        {"select sign(-5), sign(0), sign(f), sqrt(16), exp(0), log(1), log10(1000), log(8, 2) from B where n = 7",
         "-1|0|1|4|1|0|3|3"},
        {"select isnull(null, 'a'), coalesce(null, null, 3), nullif('a', 'A'), nullif(1, 2), nullif(v, 'AXA') "
         "from B where n = 7", "a|3|NULL|1|NULL"},
        {"select isnumeric('12.5'), isnumeric('abc'), isnumeric('1e5'), isnumeric('$12'), isnumeric(''), "
         "isnumeric(null), isnumeric(12), isnumeric('1,000'), isnumeric('-'), isnumeric(' 7 '), isnumeric('1e')",
         "1|0|1|1|0|0|1|1|1|1|0"},
        {"select isdate('2006-02-28'), isdate('2006-02-30'), isdate('abc'), isdate(null), isdate('1752-12-31'), "
         "isdate('20060101 10:00'), isdate(20060101), isdate('2006'), isdate(2006), convert(datetime, '2006')",
         "1|0|0|0|0|1|1|1|1|2006-01-01 00:00:00"},
        // Date styles, from datetime to text.
        {"select convert(varchar, d, 0), convert(varchar, d, 1), convert(varchar, d, 2), convert(varchar, d, 3), "
         "convert(varchar, d, 5), convert(varchar, d, 8), convert(varchar, d, 10), convert(varchar, d, 11), "
         "convert(varchar, d, 12) from B where n = 7",
         "Mar 31 2006  8:05AM|03/31/06|06.03.31|31/03/06|31-03-06|08:05:09|03-31-06|06/03/31|060331"},
        {"select convert(varchar, d, 20), convert(varchar, d, 21), convert(varchar, d, 23), convert(varchar, d, 101), "
         "convert(varchar, d, 102), convert(varchar, d, 103), convert(varchar, d, 105), convert(varchar, d, 108) "
         "from B where n = 7",
         "2006-03-31 08:05:09|2006-03-31 08:05:09.120|2006-03-31|03/31/2006|2006.03.31|31/03/2006|31-03-2006|"
         "08:05:09"},
        {"select convert(varchar, d, 111), convert(varchar, d, 112), convert(varchar(10), d, 120), "
         "convert(char(23), d, 121), cast(d as varchar) from B where n = -3",
         "2005/12/31|20051231|2005-12-31|2005-12-31 23:59:59.000|Dec 31 2005 11:59PM"},
        // And back, the style telling the order of day and month.
        {"select convert(datetime, '31/03/2006', 103), convert(datetime, '03/31/06', 1), "
         "convert(datetime, '31-03-2006 10:20', 105), convert(datetime, '060331', 12)",
         "2006-03-31 00:00:00|2006-03-31 00:00:00|2006-03-31 10:20:00|2006-03-31 00:00:00"},
        // Style 0's text reads back.
        {"select convert(datetime, 'Mar 31 2006  8:05PM'), convert(datetime, convert(varchar, d)), "
         "isdate('February 29, 2006'), convert(datetime, '2006-03-31 12:30 am') from B where n = 7",
         "2006-03-31 20:05:00|2006-03-31 08:05:00|0|2006-03-31 00:30:00"},
        // An integer too long for its text.
        {"select convert(varchar(5), 123456), convert(varchar(5), n * 1000), convert(char(2), 12) from B where n = 7", "*|7000|12"},
        {"select len(newid()), count(distinct x) from (select newid() x union all select newid()) t", "36|2"},
        {"update B set n = n where n > 0 select @@rowcount", "1"},
        {"insert into B (n) values (9) select @@identity, scope_identity()", "3|3"},
        // The third row is the one the statement before inserted.
        {"select case when n > 0 then 'y' else 'n' end, case v when 'ABC' then 1 else 0 end from B order by id",
         "y|0;n|1;y|0"},
        {"select count(*) from B where exists (select * from B b2 where b2.v = 'ABC' and b2.id = B.id)", "1"},
        {"select 1 union all select 1 union all select 2", "1;1;2"},
        {"select sign(n), count(*) from B group by sign(n) having count(*) > 1", "1|2"},
        // Classes, negated classes, and the trailing blanks of varchar (ignored) and nvarchar (kept).
        {"select count(*) from B where v like '[a-c]%' and v like '[^b]_[a]'", "1"},
        {"select count(*) from B where v like 'axa'", "1"},
        {"select count(*) from B where nv like N'ab' or nv like '中文'", "0"},
        {"select count(*) from B where nv like N'ab ' or rtrim(nv) like '中文'", "2"},
        {"select count(*) where 'ab ' like 'ab'", "1"},
        {"select count(*) where N'ab ' like 'ab'", "0"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(db.answer(QString::fromUtf8(c.tsql)).join(QLatin1Char(';')).toStdString(), std::string(c.rows)) << c.tsql;
}

TEST(TsqlBuiltins, RaiseTheServersErrors) {
    SqliteTestDb db;
    db.script(QString::fromUtf8(kRows));
    const std::string overflow = "Adding a value to a 'datetime' column caused an overflow.";
    const std::string outOfRange =
        "The conversion of a varchar data type to a datetime data type resulted in an out-of-range value.";
    struct Case {
        const char* tsql;
        std::string message;
    } cases[] = {
        {"select xyz(1)", "'xyz' is not a recognized built-in function name."},
        {"select substr('abc', 1, 1)", "'substr' is not a recognized built-in function name."},
        {"select datediff(xyz, '2006-01-01', '2006-01-02')", "'xyz' is not a recognized datediff option."},
        {"select dateadd(xx, 1, getdate())", "'xx' is not a recognized dateadd option."},
        {"select datepart(xx, getdate())", "'xx' is not a recognized datepart option."},
        {"select datename(xx, getdate())", "'xx' is not a recognized datename option."},
        {"select datediff(ms, '1753-01-01', '9999-12-31')",
         "The datediff function resulted in an overflow. The number of dateparts separating two date/time instances "
         "is too large. Try to use datediff with a less precise datepart."},
        {"select dateadd(year, 8000, '2006-01-01')", overflow},
        {"select dateadd(day, -1, '1753-01-01')", overflow},
        {"select d + 3000000 from B", overflow},
        {"update B set d = d + 3000000", overflow},
        {"update B set d = dateadd(yy, 8000, d)", overflow},
        {"insert into B (d) values ('1752-12-31')", outOfRange},
        {"select convert(datetime, '1752-12-31')", outOfRange},
        {"select convert(datetime, 1e300)", "Arithmetic overflow error converting expression to data type datetime."},
        {"select convert(datetime, -54000)", "Arithmetic overflow error converting expression to data type datetime."},
        {"select nosuch from B", "Invalid column name 'nosuch'."},
        {"select x.n from B", "The multi-part identifier \"x.n\" could not be bound."},
        // Names the engine itself finds unknown or ambiguous, in the server's words.
        {"select day", "Invalid column name 'day'."},
        {"select d from B, B b2", "Ambiguous column name 'd'."},
        {"select * from NoSuch", "Invalid object name 'NoSuch'."},
        {"create table B (n int)", "There is already an object named 'B' in the database."},
        {"update B set id = 9", "Cannot update identity column 'id'."},
        {"update b1 set id = 9 from B b1 join B b2 on b2.n = b1.n", "Cannot update identity column 'id'."},
        {"insert into B (n, nosuch) values (1, 2)", "Invalid column name 'nosuch'."},
        {"insert into B (n) values (1, 2)",
         "There are fewer columns in the INSERT statement than values specified in the VALUES clause. The number of "
         "values in the VALUES clause must match the number of columns specified in the INSERT statement."},
        {"select @x", "Must declare the scalar variable \"@x\"."},
        {"select @@spid", "Must declare the scalar variable \"@@spid\"."},
        {"select convert(nvarchar(2), 123)", "Arithmetic overflow error converting expression to data type nvarchar."},
        {"select convert(varchar(3), 123.45)", "Arithmetic overflow error converting numeric to data type varchar."},
        {"select convert(varchar(3), convert(money, 1234.5))", "Arithmetic overflow error converting expression to data type varchar."},
        {"select convert(char(3), 12345e0)", "Arithmetic overflow error converting expression to data type char."},
        {"select substring('abc', 9223372036854775807, 2)",
         "Arithmetic overflow error converting expression to data type int."},
        {"select substring('abc', 1, -1)", "Invalid length parameter passed to the substring function."},
        {"insert into B (n) values ('x')", "Conversion failed when converting the varchar value 'x' to data type int."},
        {"create table Flag (b bit) insert into Flag values ('x')",
         "Conversion failed when converting the varchar value 'x' to data type bit."},
        {"select sqrt(-1)", "An invalid floating point operation occurred."},
        {"select log(0)", "An invalid floating point operation occurred."},
        {"select convert(varchar, getdate(), 7000)",
         "7000 is not a valid style number when converting from datetime to a character string."},
    };
    for (const auto& c : cases) EXPECT_EQ(db.errorOf(QString::fromUtf8(c.tsql)), c.message) << c.tsql;
    // Nothing out of range was stored.
    EXPECT_EQ(db.run("select count(*) from B where d > '9999-01-01' or d < '1753-01-01'"), QStringList{"0"});
}

// Dates as day counts since 1900-01-01, the server's 1/300-second ticks, smalldatetime's
// minutes and range, and the styles with month names: answers and errors alike.
TEST(TsqlDates, AnswerAsTheServer) {
    SqliteTestDb db;
    db.script("create table Aging (id int, BillDate datetime, Due smalldatetime)\n"
              "insert into Aging values (1, '2024-01-01 18:00', '2024-01-01 10:00:29.998')\n"
              "insert into Aging values (2, '2024-02-25', '2024-01-01 10:00:29.999')\n");
    const std::string outOfRange =
        "error: The conversion of a varchar data type to a datetime data type resulted in an out-of-range value.";
    const std::string smallOutOfRange =
        "error: The conversion of a varchar data type to a smalldatetime data type resulted in an out-of-range value.";
    struct Case {
        const char* tsql;
        std::string answer;  // rows joined by ";", or "error: <message>"
    } cases[] = {
        // A date minus a date is the difference as a date after 1900-01-01; 59.25 days here.
        {"select convert(datetime, '2024-03-01') - BillDate, convert(int, convert(datetime, '2024-03-01') - BillDate) "
         "from Aging where id = 1", "1900-03-01 06:00:00|59"},
        {"select convert(datetime, '2024-01-02') + convert(datetime, '1900-01-03'), BillDate - '2024-01-01' "
         "from Aging where id = 1", "2024-01-04 00:00:00|1900-01-01 18:00:00"},
        // Aging filters: the number is a date too (30 is 1900-01-31).
        {"select id from Aging where convert(datetime, '2024-03-01') - BillDate > 30", "1"},
        {"select id from Aging where 30 > convert(datetime, '2024-03-01') - BillDate", "2"},
        {"select id from Aging where convert(datetime, '2024-03-01') - BillDate between 4 and 5", "2"},
        {"select count(*) where convert(datetime, '1900-01-31') = 30", "1"},
        {"select id from Aging where BillDate in (45290.75, 1) or BillDate in (45345)", "1;2"},
        // To numbers: the time is a fraction, and an int rounds to the nearest day.
        {"select convert(float, BillDate), convert(int, BillDate), cast(BillDate as int), floor(convert(float, BillDate)) "
         "from Aging where id = 1", "45290.75|45291|45291|45290"},
        {"select convert(int, convert(datetime, '2024-01-01 11:59')), convert(int, convert(datetime, '1900-01-01'))",
         "45290|0"},
        {"select convert(datetime, 40000), convert(datetime, 40000.5)", "2009-07-08 00:00:00|2009-07-08 12:00:00"},
        // 1/300 seconds: milliseconds end in 0, 3 or 7.
        {"select convert(datetime, '2024-01-01 10:00:00.001'), convert(datetime, '2024-01-01 10:00:00.002'), "
         "convert(datetime, '2024-01-01 10:00:00.005'), convert(datetime, '2024-01-01 10:00:59.999')",
         "2024-01-01 10:00:00|2024-01-01 10:00:00.003|2024-01-01 10:00:00.007|2024-01-01 10:01:00"},
        {"select convert(datetime, '9999-12-31 23:59:59.999')", outOfRange},
        {"select count(*) where convert(datetime, '2024-01-01 10:00:00.005') = '2024-01-01 10:00:00.006'", "1"},
        {"select case when datepart(ms, getdate()) % 10 in (0, 3, 7) then 1 else 0 end", "1"},
        // smalldatetime: to the minute, 29.999 seconds up; within 1900-01-01..2079-06-06 23:59.
        {"select Due from Aging order by id", "2024-01-01 10:00:00;2024-01-01 10:01:00"},
        {"insert into Aging (Due) select getdate() select count(*) from Aging where datepart(second, Due) = 0", "3"},
        {"update Aging set Due = '2079-06-06 23:59:29' where id = 1 select Due from Aging where id = 1",
         "2079-06-06 23:59:00"},
        {"update Aging set Due = '2079-06-06 23:59:30' where id = 1", smallOutOfRange},
        {"insert into Aging (Due) values ('1899-12-31')", smallOutOfRange},
        {"select convert(smalldatetime, '2079-06-07')", smallOutOfRange},
        // A text function reads a date in style 0.
        {"select len(BillDate), left(BillDate, 6) from Aging where id = 1", "19|Jan  1"},
        // The styles with month names, a 12-hour clock or milliseconds after a colon.
        {"select convert(varchar, d, 6), convert(varchar, d, 106), convert(varchar, d, 7), convert(varchar, d, 107), "
         "convert(varchar, d, 9), convert(varchar, d, 109) from (select convert(datetime, '2024-01-05 21:07:08.123') d) x",
         "05 Jan 24|05 Jan 2024|Jan 05, 24|Jan 05, 2024|Jan  5 2024  9:07:08:123PM|Jan  5 2024  9:07:08:123PM"},
        {"select convert(varchar, d, 13), convert(varchar, d, 113), convert(varchar, d, 14), convert(varchar, d, 114), "
         "convert(varchar, d, 126), convert(varchar, BillDate, 126) "
         "from (select convert(datetime, '2024-01-05 09:07:08.123') d) x, Aging where id = 1",
         "05 Jan 2024 09:07:08:123|05 Jan 2024 09:07:08:123|09:07:08:123|09:07:08:123|2024-01-05T09:07:08.123|"
         "2024-01-01T18:00:00"},
        {"select convert(datetime, '05 Jan 24', 6), convert(datetime, 'Jan 05, 2024', 107), "
         "convert(datetime, 'Jan  5 2024  9:07:08:123PM', 109)",
         "2024-01-05 00:00:00|2024-01-05 00:00:00|2024-01-05 21:07:08.123"},
        {"select convert(datetime, '05 Jan 2024 21:07:08:123', 113), convert(datetime, '21:07:08:123', 114), "
         "convert(datetime, '2024-01-05T21:07:08.123', 126)",
         "2024-01-05 21:07:08.123|1900-01-01 21:07:08.123|2024-01-05 21:07:08.123"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(db.answer(QString::fromUtf8(c.tsql)).join(QLatin1Char(';')).toStdString(), c.answer) << c.tsql;
}

}  // namespace
}  // namespace kivdb::dialect

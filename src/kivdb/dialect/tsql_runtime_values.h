#pragma once
// What the runtime's function families share: reading arguments and setting results the
// way the server converts them, dates as the server's datetime reads them, and the
// server's like patterns. Internal to the dialect.
#include <QDateTime>
#include <QString>
#include <optional>
#include <vector>

struct sqlite3;
struct sqlite3_context;
struct sqlite3_value;

namespace kivdb::dialect::runtime {

QString textArg(sqlite3_value* v);
void resultText(sqlite3_context* ctx, const QString& s);
void resultError(sqlite3_context* ctx, const QString& message);
bool anyNull(int argc, sqlite3_value** argv);
// Bytes of a text in the Chinese code page: one for ASCII, two for anything else.
qint64 codePageBytes(QStringView text);


// ---- dates

// The server's datetime range.
constexpr int kFirstYear = 1753;
constexpr int kLastYear = 9999;

// Date and time text: yyyy-mm-dd, yyyy/mm/dd, yyyy.mm.dd, yyyymmdd, yymmdd (years 1950..2049)
// Mon dd[,] yyyy or dd Mon yyyy, with an optional time hh:mm[:ss[.fff|:fff]][AM|PM] after a blank (or T); or a time alone, on 1900-01-01.
struct DateTimeParts {
    int year = 1900, month = 1, day = 1, hour = 0, minute = 0, second = 0, msec = 0;
    bool hasTime = false;
};
std::optional<DateTimeParts> parseDateTime(const QString& text);
std::optional<DateTimeParts> parseTime(const QString& text, int& i, DateTimeParts p);
QDateTime toQDateTime(const DateTimeParts& p);
bool inDateRange(const QDateTime& dt);

// A value as a datetime: text as written, a number as days since 1900-01-01. False after
// setting the server's error: unreadable text, or a date outside the datetime range.
bool dateArg(sqlite3_context* ctx, sqlite3_value* v, QDateTime& out, bool* hadTime = nullptr);
// A computed date as a datetime column stores it; a date outside the range is the
// server's overflow error instead.
void resultDate(sqlite3_context* ctx, const QDateTime& dt, bool withTime);
QString formatDateTime(const QDateTime& dt);
// The server keeps time in 1/300 seconds: milliseconds end in 0, 3 or 7, .005 reads as
// .007 and .999 as the next second (1000 from tickMsec).
int tickMsec(int msec);
QDateTime roundToTicks(const QDateTime& dt);
// Days since 1900-01-01, the server's zero date, with the time as a fraction.
double daysSinceZero(const QDateTime& dt);

// ---- like patterns: % _ [a-c] [^x], compared case-folded

struct PatternElement {
    enum Kind { AnyRun, AnyOne, Literal, Class } kind = Literal;
    QChar ch;
    QString set;  // class members and ranges, folded
    bool negated = false;
};
std::vector<PatternElement> compilePattern(const QString& pattern, std::optional<QChar> escape);
// Whether the pattern matches the whole of text (case-folded by the caller).
bool likeMatches(const std::vector<PatternElement>& p, QStringView text);

// ---- the scalar functions

// The body of a scalar function, as SQLite calls it.
using ScalarFunction = void(sqlite3_context* ctx, int argc, sqlite3_value** argv);

// The operators and conversions of tsql_runtime.cpp, registered with the built-ins.
ScalarFunction tsqlNum, tsqlDiv, tsqlMod, tsqlAdd, tsqlXor, tsqlInt, tsqlFloat, tsqlLen, tsqlCharindex, tsqlDateAdd,
    tsqlStoreDate, tsqlDateSum, tsqlDateNum, tsqlFits, tsqlConvert;
template <bool FromLeft>
void tsqlSide(sqlite3_context* ctx, int argc, sqlite3_value** argv);
template <bool National>
void tsqlLike(sqlite3_context* ctx, int argc, sqlite3_value** argv);

// Registers every scalar function, the built-ins of tsql_builtins.cpp and the above, from
// the one table there.
void registerFunctions(sqlite3* db);

}  // namespace kivdb::dialect::runtime

namespace kivdb::dialect {

// The date parts datediff, dateadd, datepart and datename take, by any of their names:
// the part's first name, or nothing when the server knows no such part.
std::optional<QString> canonicalDatePart(const QString& name);

}  // namespace kivdb::dialect

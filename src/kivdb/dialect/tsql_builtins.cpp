// The server's built-in functions that hosts use in their own statements, as runtime
// functions of the embedded database: date parts, text, mathematics and tests of values.
// Each family is one table walked by one body; the translation calls them tsql_<name>.
#include "dialect/tsql_runtime_values.h"

#include <QStringEncoder>
#include <QUuid>
#include <cmath>
#include <initializer_list>
#include <limits>
#include <sqlite3.h>

namespace kivdb::dialect {

namespace runtime {
namespace {

// ---- arguments

const QString kOverflowInt = QStringLiteral("Arithmetic overflow error converting expression to data type int.");

bool fitsInt(qint64 v) { return v >= std::numeric_limits<int>::min() && v <= std::numeric_limits<int>::max(); }

// An int argument, as the server converts one: a float truncates, text must be an integer,
// and the value must fit an int.
bool intArg(sqlite3_context* ctx, sqlite3_value* v, qint64& out) {
    switch (sqlite3_value_type(v)) {
    case SQLITE_INTEGER:
        out = sqlite3_value_int64(v);
        if (!fitsInt(out)) resultError(ctx, kOverflowInt);
        return fitsInt(out);
    case SQLITE_FLOAT: {
        const double d = std::trunc(sqlite3_value_double(v));
        if (!(d >= std::numeric_limits<int>::min() && d <= std::numeric_limits<int>::max())) {
            resultError(ctx, kOverflowInt);
            return false;
        }
        out = qint64(d);
        return true;
    }
    default: {
        const QString text = textArg(v);
        bool ok = false;
        out = text.trimmed().toLongLong(&ok);
        if (ok && !fitsInt(out)) {
            resultError(ctx, QStringLiteral("The conversion of the varchar value '%1' overflowed an int column.").arg(text));
            return false;
        }
        if (ok || text.trimmed().isEmpty()) return true;
        resultError(ctx, QStringLiteral("Conversion failed when converting the varchar value '%1' to data type int.").arg(text));
        return false;
    }
    }
}

// A float argument; text that is no number is the server's conversion error.
bool floatArg(sqlite3_context* ctx, sqlite3_value* v, double& out) {
    if (sqlite3_value_type(v) != SQLITE_TEXT) {
        out = sqlite3_value_double(v);
        return true;
    }
    bool ok = false;
    out = textArg(v).trimmed().toDouble(&ok);
    if (!ok) resultError(ctx, QStringLiteral("Error converting data type varchar to float."));
    return ok;
}

// ---- date parts

constexpr qint64 kDay = 86400000;
const qint64 kJulian1900 = QDate(1900, 1, 1).toJulianDay();  // a Monday

qint64 floorDiv(qint64 a, qint64 b) { return a / b - ((a % b != 0) && ((a < 0) != (b < 0))); }

// Milliseconds since 1900-01-01, and back.
qint64 msecsOf(const QDateTime& dt) {
    return (dt.date().toJulianDay() - kJulian1900) * kDay + dt.time().msecsSinceStartOfDay();
}
QDateTime fromMsecs(qint64 t) {
    return QDateTime(QDate::fromJulianDay(kJulian1900 + floorDiv(t, kDay)),
                     QTime::fromMSecsSinceStartOfDay(int(t - floorDiv(t, kDay) * kDay)), Qt::UTC);
}

const char* const kMonthNames[] = {"January", "February", "March",     "April",   "May",      "June",
                                   "July",    "August",   "September", "October", "November", "December"};
const char* const kDayNames[] = {"Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday", "Sunday"};

// With the server's default first day of the week, Sunday.
int weekdayOf(const QDate& d) { return d.dayOfWeek() % 7 + 1; }

// A part is counted in whole months, or in a fixed number of milliseconds whose
// boundaries fall `offset` after those counted from 1900-01-01: weeks begin on Sunday.
struct DatePart {
    const char* names;  // the first is the one the translation passes
    int months;
    qint64 msecs;
    qint64 offset;
    int (*number)(const QDateTime&);
    const char* const* names12or7;  // datename's words, for month and weekday
};

const DatePart kDateParts[] = {
    {"year yy yyyy", 12, 0, 0, [](const QDateTime& t) { return t.date().year(); }, nullptr},
    {"quarter qq q", 3, 0, 0, [](const QDateTime& t) { return (t.date().month() - 1) / 3 + 1; }, nullptr},
    {"month mm m", 1, 0, 0, [](const QDateTime& t) { return t.date().month(); }, kMonthNames},
    {"dayofyear dy y", 0, kDay, 0, [](const QDateTime& t) { return t.date().dayOfYear(); }, nullptr},
    {"day dd d", 0, kDay, 0, [](const QDateTime& t) { return t.date().day(); }, nullptr},
    // Week 1 holds 1 January; each later week begins on a Sunday.
    {"week wk ww", 0, 7 * kDay, kDay,
     [](const QDateTime& t) { return (t.date().dayOfYear() + weekdayOf(QDate(t.date().year(), 1, 1)) - 2) / 7 + 1; },
     nullptr},
    {"weekday dw w", 0, kDay, 0, [](const QDateTime& t) { return weekdayOf(t.date()); }, kDayNames},
    {"hour hh", 0, 3600000, 0, [](const QDateTime& t) { return t.time().hour(); }, nullptr},
    {"minute mi n", 0, 60000, 0, [](const QDateTime& t) { return t.time().minute(); }, nullptr},
    {"second ss s", 0, 1000, 0, [](const QDateTime& t) { return t.time().second(); }, nullptr},
    {"millisecond ms", 0, 1, 0, [](const QDateTime& t) { return t.time().msec(); }, nullptr},
};

const DatePart* findDatePart(const QString& name) {
    const QString n = name.toLower();
    for (const auto& p : kDateParts)
        if (QString::fromLatin1(p.names).split(u' ').contains(n)) return &p;
    return nullptr;
}

// The translation has checked the part; an unknown one here is a statement built by hand.
const DatePart* partArg(sqlite3_context* ctx, sqlite3_value* v) {
    const DatePart* p = findDatePart(textArg(v));
    if (!p) resultError(ctx, QStringLiteral("'%1' is not a recognized date part.").arg(textArg(v)));
    return p;
}

// tsql_datediff(part, start, end): the part's boundaries crossed from start to end.
void tsqlDateDiff(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
    if (anyNull(argc, argv)) return sqlite3_result_null(ctx);
    const DatePart* part = partArg(ctx, argv[0]);
    QDateTime a, b;
    if (!part || !dateArg(ctx, argv[1], a) || !dateArg(ctx, argv[2], b)) return;
    qint64 diff;
    if (part->months) {
        auto units = [&](const QDate& d) { return (qint64(d.year()) * 12 + d.month() - 1) / part->months; };
        diff = units(b.date()) - units(a.date());
    } else {
        diff = floorDiv(msecsOf(b) + part->offset, part->msecs) - floorDiv(msecsOf(a) + part->offset, part->msecs);
    }
    if (diff < std::numeric_limits<int>::min() || diff > std::numeric_limits<int>::max())
        return resultError(ctx, QStringLiteral("The datediff function resulted in an overflow. The number of dateparts "
                                               "separating two date/time instances is too large. Try to use datediff with "
                                               "a less precise datepart."));
    sqlite3_result_int64(ctx, diff);
}

// tsql_dateadd(part, number, date): months keep the day where the month has it, else its
// last day; a date without time stays one when whole days or more are added.
void tsqlDateAddPart(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
    if (anyNull(argc, argv)) return sqlite3_result_null(ctx);
    const DatePart* part = partArg(ctx, argv[0]);
    qint64 n = 0;
    QDateTime date;
    bool hadTime = false;
    if (!part || !intArg(ctx, argv[1], n) || !dateArg(ctx, argv[2], date, &hadTime)) return;
    constexpr qint64 kMonthsInRange = 12 * (kLastYear - kFirstYear + 1);
    if (part->months) {
        if (std::abs(n * part->months) > kMonthsInRange) return resultDate(ctx, QDateTime(), false);
        return resultDate(ctx, QDateTime(date.date().addMonths(int(n * part->months)), date.time(), Qt::UTC), hadTime);
    }
    const qint64 t = msecsOf(date) + n * part->msecs;  // |n * msecs| < 2^31 weeks of ms: no overflow
    if (std::abs(t) > kMonthsInRange * 31 * kDay) return resultDate(ctx, QDateTime(), false);
    resultDate(ctx, fromMsecs(t), hadTime || part->msecs < kDay);
}

// tsql_datepart(part, date) and tsql_datename(part, date).
template <bool Name>
void tsqlDatePartOf(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
    if (anyNull(argc, argv)) return sqlite3_result_null(ctx);
    const DatePart* part = partArg(ctx, argv[0]);
    QDateTime date;
    if (!part || !dateArg(ctx, argv[1], date)) return;
    const int number = part->number(date);
    if (!Name) return sqlite3_result_int(ctx, number);
    if (!part->names12or7) return resultText(ctx, QString::number(number));
    resultText(ctx, QLatin1String(part->names12or7[part->months ? number - 1 : date.date().dayOfWeek() - 1]));
}

// Local time in the stored date form, to the server's 1/300 seconds.
void tsqlGetdate(sqlite3_context* ctx, int, sqlite3_value**) {
    const QDateTime now = QDateTime::currentDateTime();
    resultText(ctx, formatDateTime(roundToTicks(QDateTime(now.date(), now.time(), Qt::UTC))));
}

// ---- text

// tsql_substring(text, start, length): positions before the first character count
// toward the length, as the server counts them.
void tsqlSubstring(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
    if (anyNull(argc, argv)) return sqlite3_result_null(ctx);
    const QString s = textArg(argv[0]);
    qint64 start = 0, length = 0;
    if (!intArg(ctx, argv[1], start) || !intArg(ctx, argv[2], length)) return;
    if (length < 0) return resultError(ctx, QStringLiteral("Invalid length parameter passed to the substring function."));
    const qint64 from = std::clamp<qint64>(start - 1, 0, s.size());
    const qint64 to = std::clamp<qint64>(start - 1 + length, 0, s.size());
    resultText(ctx, to > from ? s.mid(from, to - from) : QString());
}

// tsql_patindex(pattern, text): where the pattern's first fixed element matches, the
// pattern matching the whole text; 0 when it does not.
void tsqlPatindex(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
    if (anyNull(argc, argv)) return sqlite3_result_null(ctx);
    auto pattern = compilePattern(textArg(argv[0]), std::nullopt);
    const QString text = textArg(argv[1]).toCaseFolded();
    const bool floating = !pattern.empty() && pattern.front().kind == PatternElement::AnyRun;
    if (floating) pattern.erase(pattern.begin());
    for (qsizetype at = 0; at <= (floating ? text.size() : 0); ++at)
        if (likeMatches(pattern, QStringView(text).mid(at))) return sqlite3_result_int64(ctx, at + 1);
    sqlite3_result_int(ctx, 0);
}

// tsql_replace(text, find, with): matches compare ignoring case, as the collation does.
void tsqlReplace(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
    if (anyNull(argc, argv)) return sqlite3_result_null(ctx);
    QString s = textArg(argv[0]);
    const QString find = textArg(argv[1]);
    if (!find.isEmpty()) s.replace(find, textArg(argv[2]), Qt::CaseInsensitive);
    resultText(ctx, s);
}

// tsql_stuff(text, start, length, insert): null when start is outside the text or the
// length negative; a null insert only deletes.
void tsqlStuff(sqlite3_context* ctx, int, sqlite3_value** argv) {
    if (anyNull(3, argv)) return sqlite3_result_null(ctx);
    QString s = textArg(argv[0]);
    qint64 start = 0, length = 0;
    if (!intArg(ctx, argv[1], start) || !intArg(ctx, argv[2], length)) return;
    if (start < 1 || start > s.size() || length < 0) return sqlite3_result_null(ctx);
    const QString insert = sqlite3_value_type(argv[3]) == SQLITE_NULL ? QString() : textArg(argv[3]);
    s.replace(start - 1, std::min<qint64>(length, s.size() - start + 1), insert);
    resultText(ctx, s);
}

// tsql_replicate(text, count) and tsql_space(count); a negative count is null. Results
// stop at 8000 characters, the longest text the server returns from them.
void tsqlRepeat(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
    if (anyNull(argc, argv)) return sqlite3_result_null(ctx);
    const QString unit = argc == 2 ? textArg(argv[0]) : QStringLiteral(" ");
    qint64 count = 0;
    if (!intArg(ctx, argv[argc - 1], count)) return;
    if (count < 0) return sqlite3_result_null(ctx);
    constexpr qint64 kLongest = 8000;
    if (unit.isEmpty()) return resultText(ctx, QString());
    resultText(ctx, unit.repeated(std::min(count, kLongest / unit.size() + 1)).left(kLongest));
}

void tsqlReverse(sqlite3_context* ctx, int, sqlite3_value** argv) {
    if (sqlite3_value_type(argv[0]) == SQLITE_NULL) return sqlite3_result_null(ctx);
    const QString s = textArg(argv[0]);
    QString out;
    out.reserve(s.size());
    for (qsizetype i = s.size(); i > 0;) {
        const qsizetype n = i >= 2 && s[i - 1].isLowSurrogate() && s[i - 2].isHighSurrogate() ? 2 : 1;  // a pair stays whole
        i -= n;
        out += QStringView(s).mid(i, n);
    }
    resultText(ctx, out);
}

// upper and lower of every script, not only ASCII, one character for one as the server maps
// them: the length never changes (upper('ß') is 'ß', not 'SS').
template <bool Upper>
void tsqlCase(sqlite3_context* ctx, int, sqlite3_value** argv) {
    if (sqlite3_value_type(argv[0]) == SQLITE_NULL) return sqlite3_result_null(ctx);
    QString s = textArg(argv[0]);
    for (qsizetype i = 0; i < s.size(); ++i) {
        if (s[i].isHighSurrogate() && i + 1 < s.size() && s[i + 1].isLowSurrogate()) {
            const char32_t c = QChar::surrogateToUcs4(s[i], s[i + 1]);
            const char32_t mapped = Upper ? QChar::toUpper(c) : QChar::toLower(c);
            if (QChar::requiresSurrogates(mapped)) {
                s[i] = QChar(QChar::highSurrogate(mapped));
                s[i + 1] = QChar(QChar::lowSurrogate(mapped));
            }
            ++i;
            continue;
        }
        s[i] = Upper ? s[i].toUpper() : s[i].toLower();
    }
    resultText(ctx, s);
}

// ascii(text): the first byte of the first character in the Chinese code page; unicode(text):
// the first UTF-16 unit. Null for empty text.
template <bool CodePage>
void tsqlCodeOf(sqlite3_context* ctx, int, sqlite3_value** argv) {
    if (sqlite3_value_type(argv[0]) == SQLITE_NULL) return sqlite3_result_null(ctx);
    const QString s = textArg(argv[0]);
    if (s.isEmpty()) return sqlite3_result_null(ctx);
    if (!CodePage || s.front().unicode() < 0x80) return sqlite3_result_int(ctx, s.front().unicode());
    QStringEncoder gbk("GBK");
    const QByteArray bytes = gbk.encode(s.left(s.front().isHighSurrogate() ? 2 : 1));
    sqlite3_result_int(ctx, bytes.isEmpty() ? '?' : static_cast<unsigned char>(bytes.front()));
}

// char(code): ASCII only, the other single bytes of the Chinese code page being halves of
// characters; nchar(code): a UTF-16 unit. Null out of range.
template <bool National>
void tsqlCharOf(sqlite3_context* ctx, int, sqlite3_value** argv) {
    if (sqlite3_value_type(argv[0]) == SQLITE_NULL) return sqlite3_result_null(ctx);
    qint64 code = 0;
    if (!intArg(ctx, argv[0], code)) return;
    if (code < 0 || code > (National ? 0xFFFF : 0x7F)) return sqlite3_result_null(ctx);
    resultText(ctx, QString(QChar(char16_t(code))));
}

// tsql_str(number, length = 10, decimals = 0): right-aligned; decimals give way when the
// number does not fit, and a number that still does not fit is all asterisks.
void tsqlStr(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
    if (anyNull(argc, argv)) return sqlite3_result_null(ctx);
    double v = 0;
    qint64 length = 10, decimals = 0;
    if (!floatArg(ctx, argv[0], v) || (argc > 1 && !intArg(ctx, argv[1], length)) ||
        (argc > 2 && !intArg(ctx, argv[2], decimals)))
        return;
    if (length <= 0 || length > 8000 || decimals < 0) return sqlite3_result_null(ctx);
    decimals = std::min<qint64>(decimals, 16);
    QString text;
    for (;; --decimals) {
        const double scale = std::pow(10.0, double(decimals));
        text = QString::number(std::round(v * scale) / scale, 'f', int(decimals));  // halves away from zero
        if (text.size() <= length || decimals == 0) break;
    }
    if (text.size() > length) text = QString(length, u'*');
    resultText(ctx, text.rightJustified(length));
}

// tsql_datalength(value, national, size): bytes of the value as the server stores it:
// two per character of nvarchar, the code page's of varchar, `size` for other types;
// size 0 leaves it to the stored value.
void tsqlDatalength(sqlite3_context* ctx, int, sqlite3_value** argv) {
    const int type = sqlite3_value_type(argv[0]);
    if (type == SQLITE_NULL) return sqlite3_result_null(ctx);
    const int size = sqlite3_value_int(argv[2]);
    if (size > 0) return sqlite3_result_int(ctx, size);
    if (type == SQLITE_INTEGER) return sqlite3_result_int(ctx, fitsInt(sqlite3_value_int64(argv[0])) ? 4 : 8);
    if (type == SQLITE_FLOAT) return sqlite3_result_int(ctx, 8);
    if (type == SQLITE_BLOB) return sqlite3_result_int(ctx, sqlite3_value_bytes(argv[0]));
    const QString s = textArg(argv[0]);
    sqlite3_result_int64(ctx, sqlite3_value_int(argv[1]) ? 2 * qint64(s.size()) : codePageBytes(s));
}

// ---- mathematics

const QString kInvalidFloat = QStringLiteral("An invalid floating point operation occurred.");

// ceiling and floor: integers stay integers.
template <double (*Round)(double)>
void tsqlRounding(sqlite3_context* ctx, int, sqlite3_value** argv) {
    if (sqlite3_value_type(argv[0]) == SQLITE_NULL) return sqlite3_result_null(ctx);
    if (sqlite3_value_type(argv[0]) == SQLITE_INTEGER) return sqlite3_result_int64(ctx, sqlite3_value_int64(argv[0]));
    double v = 0;
    if (floatArg(ctx, argv[0], v)) sqlite3_result_double(ctx, Round(v));
}

void tsqlSign(sqlite3_context* ctx, int, sqlite3_value** argv) {
    if (sqlite3_value_type(argv[0]) == SQLITE_NULL) return sqlite3_result_null(ctx);
    if (sqlite3_value_type(argv[0]) == SQLITE_INTEGER) {
        const qint64 v = sqlite3_value_int64(argv[0]);
        return sqlite3_result_int(ctx, (v > 0) - (v < 0));
    }
    double v = 0;
    if (floatArg(ctx, argv[0], v)) sqlite3_result_double(ctx, (v > 0) - (v < 0));
}

// Functions of floats: a result that is no finite number is the server's error.
template <double (*F)(double)>
void tsqlFloatFunction(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
    if (anyNull(argc, argv)) return sqlite3_result_null(ctx);
    double v = 0, base = 0;
    if (!floatArg(ctx, argv[0], v) || (argc > 1 && !floatArg(ctx, argv[1], base))) return;
    const double r = argc > 1 ? F(v) / F(base) : F(v);  // log(x, base)
    if (!std::isfinite(r)) return resultError(ctx, kInvalidFloat);
    sqlite3_result_double(ctx, r);
}

double naturalLog(double v) { return std::log(v); }
double commonLog(double v) { return std::log10(v); }
double squareRoot(double v) { return std::sqrt(v); }
double exponential(double v) { return std::exp(v); }
double ceilingOf(double v) { return std::ceil(v); }
double floorOf(double v) { return std::floor(v); }

// power(x, y) has the type of x: power(2, 0.5) is 1.
void tsqlPower(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
    if (anyNull(argc, argv)) return sqlite3_result_null(ctx);
    double x = 0, y = 0;
    if (!floatArg(ctx, argv[0], x) || !floatArg(ctx, argv[1], y)) return;
    const double r = std::pow(x, y);
    if (std::isnan(r)) return resultError(ctx, kInvalidFloat);
    if (sqlite3_value_type(argv[0]) != SQLITE_INTEGER) {
        if (!std::isfinite(r)) return resultError(ctx, QStringLiteral("Arithmetic overflow error converting expression to data type float."));
        return sqlite3_result_double(ctx, r);
    }
    const double t = std::trunc(r);
    if (!(std::fabs(t) <= std::numeric_limits<int>::max())) return resultError(ctx, kOverflowInt);
    sqlite3_result_int64(ctx, qint64(t));
}

// ---- tests of values

// Whether text converts to some number: int, float, money or decimal. Signs, a
// currency sign, thousands commas and an exponent (e or d) are allowed; '-' and '.' alone too.
bool looksNumeric(const QString& text) {
    const QString s = text.trimmed();
    if (s.isEmpty()) return false;
    int i = 0;
    auto at = [&](int k) { return k < s.size() ? s[k] : QChar(); };
    if (at(i) == u'$' || at(i) == u'¥' || at(i) == u'￥') ++i;
    if (at(i) == u'+' || at(i) == u'-') ++i;
    bool digits = false;
    for (; at(i).isDigit() || (digits && at(i) == u','); ++i) digits = digits || at(i).isDigit();
    if (at(i) == u'.') ++i;
    while (at(i).isDigit()) digits = true, ++i;
    if (digits && (at(i) == u'e' || at(i) == u'E' || at(i) == u'd' || at(i) == u'D')) {
        ++i;
        if (at(i) == u'+' || at(i) == u'-') ++i;
        if (!at(i).isDigit()) return false;
        while (at(i).isDigit()) ++i;
    }
    return i == s.size();
}

void tsqlIsnumeric(sqlite3_context* ctx, int, sqlite3_value** argv) {
    switch (sqlite3_value_type(argv[0])) {
    case SQLITE_NULL: return sqlite3_result_int(ctx, 0);
    case SQLITE_INTEGER:
    case SQLITE_FLOAT: return sqlite3_result_int(ctx, 1);
    default: sqlite3_result_int(ctx, looksNumeric(textArg(argv[0])) ? 1 : 0);
    }
}

void tsqlIsdate(sqlite3_context* ctx, int, sqlite3_value** argv) {
    // A number is read as its text, as the server converts it to varchar first: 20060101 is a date.
    if (sqlite3_value_type(argv[0]) == SQLITE_NULL) return sqlite3_result_int(ctx, 0);
    const auto parts = parseDateTime(textArg(argv[0]));
    sqlite3_result_int(ctx, parts && inDateRange(toQDateTime(*parts)) ? 1 : 0);
}

void tsqlNewid(sqlite3_context* ctx, int, sqlite3_value**) {
    resultText(ctx, QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper());
}

// Every scalar function of the runtime and the built-ins: the SQLite name the translation
// calls, the body, the argument counts it takes (-1 for any), and whether it is
// deterministic (all but the clock and new ids).
struct FunctionDef {
    const char* name;
    ScalarFunction* fn;
    std::initializer_list<int> argCounts;
    bool deterministic = true;
};

const FunctionDef kFunctions[] = {
    // Operators, conversions and storage checks (tsql_runtime.cpp).
    {"like", tsqlLike<false>, {2, 3}},
    {"tsql_nlike", tsqlLike<true>, {2, 3}},
    {"tsql_num", tsqlNum, {2, 3}},
    {"tsql_div", tsqlDiv, {2}},
    {"tsql_mod", tsqlMod, {2}},
    {"tsql_add", tsqlAdd, {-1}},
    {"tsql_xor", tsqlXor, {-1}},
    {"tsql_int", tsqlInt, {1}},
    {"tsql_float", tsqlFloat, {1}},
    {"tsql_len", tsqlLen, {1}},
    {"tsql_charindex", tsqlCharindex, {2, 3}},
    {"tsql_left", tsqlSide<true>, {2}},
    {"tsql_right", tsqlSide<false>, {2}},
    {"tsql_date_add", tsqlDateAdd, {2}},
    {"tsql_store_date", tsqlStoreDate, {1, 2}},
    {"tsql_date_sum", tsqlDateSum, {3}},
    {"tsql_date_num", tsqlDateNum, {2}},
    {"tsql_fits", tsqlFits, {3}},
    {"tsql_convert", tsqlConvert, {6}},
    // The server's built-in functions.
    {"tsql_datediff", tsqlDateDiff, {3}},
    {"tsql_dateadd", tsqlDateAddPart, {3}},
    {"tsql_datepart", tsqlDatePartOf<false>, {2}},
    {"tsql_datename", tsqlDatePartOf<true>, {2}},
    {"tsql_getdate", tsqlGetdate, {0}, false},
    {"tsql_substring", tsqlSubstring, {3}},
    {"tsql_patindex", tsqlPatindex, {2}},
    {"tsql_replace", tsqlReplace, {3}},
    {"tsql_stuff", tsqlStuff, {4}},
    {"tsql_replicate", tsqlRepeat, {2}},
    {"tsql_space", tsqlRepeat, {1}},
    {"tsql_reverse", tsqlReverse, {1}},
    {"tsql_upper", tsqlCase<true>, {1}},
    {"tsql_lower", tsqlCase<false>, {1}},
    {"tsql_ascii", tsqlCodeOf<true>, {1}},
    {"tsql_unicode", tsqlCodeOf<false>, {1}},
    {"tsql_char", tsqlCharOf<false>, {1}},
    {"tsql_nchar", tsqlCharOf<true>, {1}},
    {"tsql_str", tsqlStr, {1, 2, 3}},
    {"tsql_datalength", tsqlDatalength, {3}},
    {"tsql_ceiling", tsqlRounding<ceilingOf>, {1}},
    {"tsql_floor", tsqlRounding<floorOf>, {1}},
    {"tsql_sign", tsqlSign, {1}},
    {"tsql_power", tsqlPower, {2}},
    {"tsql_sqrt", tsqlFloatFunction<squareRoot>, {1}},
    {"tsql_exp", tsqlFloatFunction<exponential>, {1}},
    {"tsql_log", tsqlFloatFunction<naturalLog>, {1, 2}},
    {"tsql_log10", tsqlFloatFunction<commonLog>, {1}},
    {"tsql_isnumeric", tsqlIsnumeric, {1}},
    {"tsql_isdate", tsqlIsdate, {1}},
    {"tsql_newid", tsqlNewid, {0}, false},
};

}  // namespace

void registerFunctions(sqlite3* db) {
    for (const FunctionDef& f : kFunctions) {
        const int flags = SQLITE_UTF8 | SQLITE_INNOCUOUS | (f.deterministic ? SQLITE_DETERMINISTIC : 0);
        for (const int args : f.argCounts) sqlite3_create_function(db, f.name, args, flags, nullptr, f.fn, nullptr, nullptr);
    }
}

}  // namespace runtime

std::optional<QString> canonicalDatePart(const QString& name) {
    const runtime::DatePart* p = runtime::findDatePart(name);
    if (!p) return std::nullopt;
    return QString::fromLatin1(p->names).section(u' ', 0, 0);
}

}  // namespace kivdb::dialect

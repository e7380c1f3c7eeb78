// Functions and collations that give translated statements SQL Server's results on the
// embedded database: text compared as Chinese_PRC_CI_AS compares it, dates as dates, the
// server's arithmetic and its errors.
#include "dialect/dialect.h"
#include "dialect/tsql_runtime_values.h"
#include "dialect/tsql_numbers.h"

#include <QDate>
#include <QDateTime>
#include <cmath>
#include <cstring>
#include <limits>
#include <optional>
#include <sqlite3.h>

namespace kivdb::dialect {

namespace runtime {

QString textArg(sqlite3_value* v) {
    return QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_value_text(v)), sqlite3_value_bytes(v));
}

void resultText(sqlite3_context* ctx, const QString& s) {
    const QByteArray utf8 = s.toUtf8();
    sqlite3_result_text(ctx, utf8.constData(), int(utf8.size()), SQLITE_TRANSIENT);
}

void resultError(sqlite3_context* ctx, const QString& message) {
    const QByteArray utf8 = message.toUtf8();
    sqlite3_result_error(ctx, utf8.constData(), int(utf8.size()));
}

bool anyNull(int argc, sqlite3_value** argv) {
    for (int i = 0; i < argc; ++i)
        if (sqlite3_value_type(argv[i]) == SQLITE_NULL) return true;
    return false;
}

}  // namespace runtime

using namespace runtime;

namespace {

// ---- text comparison

int trimmedLength(const char* s, int n) {
    while (n > 0 && s[n - 1] == ' ') --n;
    return n;
}

// Case-insensitive, trailing blanks ignored; ASCII compared in place, the rest by Unicode
// case folding.
int compareCi(void*, int n1, const void* p1, int n2, const void* p2) {
    const char* a = static_cast<const char*>(p1);
    const char* b = static_cast<const char*>(p2);
    n1 = trimmedLength(a, n1);
    n2 = trimmedLength(b, n2);
    int i = 0;
    for (; i < n1 && i < n2; ++i) {
        const unsigned char ca = static_cast<unsigned char>(a[i]), cb = static_cast<unsigned char>(b[i]);
        if (ca >= 0x80 || cb >= 0x80) {
            // Back up to the start of the character, then compare the rest folded.
            while (i > 0 && (static_cast<unsigned char>(a[i]) & 0xC0) == 0x80) --i;
            const QString ra = QString::fromUtf8(a + i, n1 - i).toCaseFolded();
            const QString rb = QString::fromUtf8(b + i, n2 - i).toCaseFolded();
            const int c = ra.compare(rb);
            return c < 0 ? -1 : c > 0 ? 1 : 0;
        }
        const int la = (ca >= 'A' && ca <= 'Z') ? ca + 32 : ca;
        const int lb = (cb >= 'A' && cb <= 'Z') ? cb + 32 : cb;
        if (la != lb) return la < lb ? -1 : 1;
    }
    return n1 == n2 ? 0 : (n1 < n2 ? -1 : 1);
}

}  // namespace

// ---- dates

namespace runtime {

namespace {

int digitsAt(const QString& s, int& i, int maxDigits) {
    int value = 0, count = 0;
    while (i < s.size() && count < maxDigits && s[i].isDigit()) {
        value = value * 10 + s[i].digitValue();
        ++i;
        ++count;
    }
    return count == 0 ? -1 : value;
}

const char* const kDateConversionFailed = "Conversion failed when converting date and/or time from character string.";

}  // namespace

// hh:mm[:ss[.fff]] from s[i], into p.
std::optional<DateTimeParts> parseTime(const QString& s, int& i, DateTimeParts p) {
    p.hasTime = true;
    p.hour = digitsAt(s, i, 2);
    if (p.hour < 0 || i >= s.size() || s[i] != u':') return std::nullopt;
    ++i;
    p.minute = digitsAt(s, i, 2);
    if (p.minute < 0) return std::nullopt;
    if (i < s.size() && s[i] == u':') {
        ++i;
        p.second = digitsAt(s, i, 2);
        if (p.second < 0) return std::nullopt;
        // Milliseconds after a point, or after a colon as styles 9, 13 and 14 write them.
        if (i + 1 < s.size() && (s[i] == u'.' || s[i] == u':') && s[i + 1].isDigit()) {
            ++i;
            const int fracStart = i;
            int frac = digitsAt(s, i, 9);
            if (frac < 0) return std::nullopt;
            int len = i - fracStart;
            while (len < 3) { frac *= 10; ++len; }
            while (len > 3) { frac /= 10; --len; }
            p.msec = frac;
        }
    }
    // A 12-hour clock: 8:05PM, 12:00 AM.
    int k = i;
    while (k < s.size() && s[k] == u' ') ++k;
    if (k + 1 < s.size() && QStringView(u"AaPp").contains(s[k]) && (s[k + 1] == u'M' || s[k + 1] == u'm')) {
        if (p.hour > 12) return std::nullopt;
        p.hour = p.hour % 12 + (s[k].toLower() == u'p' ? 12 : 0);
        i = k + 2;
    }
    if (p.hour > 23 || p.minute > 59 || p.second > 59) return std::nullopt;
    return p;
}

namespace {

// An English month name or its first three letters or more at s[i]; 0 when none.
int monthNameAt(const QString& s, int& i) {
    static const char* const months[] = {"january", "february", "march",     "april",   "may",      "june",
                                         "july",    "august",   "september", "october", "november", "december"};
    const int from = i;
    while (i < s.size() && s[i].isLetter()) ++i;
    const QString word = s.mid(from, i - from).toLower();
    for (int m = 0; m < 12 && word.size() >= 3; ++m)
        if (QLatin1String(months[m]).startsWith(word)) return m + 1;
    return 0;
}

// Mon dd[,] yyyy [time] as styles 0, 7 and 9 write it, or dd Mon yyyy [time] as styles 6
// and 13 do; a two-digit year is one of 1950..2049.
std::optional<DateTimeParts> parseMonthNameDate(const QString& s) {
    DateTimeParts p;
    int i = 0;
    auto blanks = [&] { while (i < s.size() && s[i] == u' ') ++i; };
    if (s.front().isLetter()) {
        p.month = monthNameAt(s, i);
        blanks();
        p.day = digitsAt(s, i, 2);
    } else {
        p.day = digitsAt(s, i, 2);
        blanks();
        p.month = monthNameAt(s, i);
    }
    if (i < s.size() && s[i] == u',') ++i;
    blanks();
    const int yearStart = i;
    p.year = digitsAt(s, i, 4);
    if (i - yearStart == 2) p.year += p.year < 50 ? 2000 : 1900;
    else if (i - yearStart != 4) return std::nullopt;
    if (p.month == 0 || p.day < 0) return std::nullopt;
    if (i < s.size()) {
        if (s[i] != u' ') return std::nullopt;
        blanks();
        const auto t = parseTime(s, i, p);
        if (!t) return std::nullopt;
        p = *t;
    }
    if (i != s.size() || !QDate::isValid(p.year, p.month, p.day)) return std::nullopt;
    return p;
}

}  // namespace

std::optional<DateTimeParts> parseDateTime(const QString& text) {
    const QString s = text.trimmed();
    if (!s.isEmpty() && s.front().isLetter()) return parseMonthNameDate(s);
    DateTimeParts p;
    int i = 0;
    const int year = digitsAt(s, i, 8);
    if (year < 0) return std::nullopt;
    if (i <= 2 && i + 1 < s.size() && s[i] == u' ' && s[i + 1].isLetter()) return parseMonthNameDate(s);
    if (i <= 2 && i < s.size() && s[i] == u':') {  // a time alone
        i = 0;
        const auto t = parseTime(s, i, p);
        return t && i == s.size() ? t : std::nullopt;
    }
    if (i == 8 || i == 6) {  // yyyymmdd, yymmdd
        p.year = i == 8 ? year / 10000 : year / 10000 + (year / 10000 < 50 ? 2000 : 1900);
        p.month = year / 100 % 100;
        p.day = year % 100;
    } else if (i == 4 && i == s.size()) {  // a year alone is its first of January
        p.year = year;
        p.month = p.day = 1;
    } else if (i == 4 && i < s.size() && (s[i] == u'-' || s[i] == u'/' || s[i] == u'.')) {
        const QChar sep = s[i++];
        p.year = year;
        p.month = digitsAt(s, i, 2);
        if (i >= s.size() || s[i] != sep) return std::nullopt;
        ++i;
        p.day = digitsAt(s, i, 2);
    } else {
        return std::nullopt;
    }
    if (i < s.size() && (s[i] == u' ' || s[i] == u'T')) {
        while (i < s.size() && (s[i] == u' ' || s[i] == u'T')) ++i;
        const auto t = parseTime(s, i, p);
        if (!t) return std::nullopt;
        p = *t;
    }
    if (i != s.size() || !QDate::isValid(p.year, p.month, p.day)) return std::nullopt;
    return p;
}

QDateTime toQDateTime(const DateTimeParts& p) {
    // In UTC: date arithmetic knows no daylight saving.
    return QDateTime(QDate(p.year, p.month, p.day), QTime(p.hour, p.minute, p.second, p.msec), Qt::UTC);
}

bool inDateRange(const QDateTime& dt) {
    return dt.isValid() && dt.date().year() >= kFirstYear && dt.date().year() <= kLastYear;
}

int tickMsec(int msec) {
    const int ticks = (msec * 3 + 5) / 10;
    return (ticks * 10 + 1) / 3;  // 0..1000
}

QDateTime roundToTicks(const QDateTime& dt) {
    return dt.addMSecs(tickMsec(dt.time().msec()) - dt.time().msec());
}

const QDateTime& zeroDate() {
    static const QDateTime zero(QDate(1900, 1, 1), QTime(0, 0), Qt::UTC);
    return zero;
}

double daysSinceZero(const QDateTime& dt) {
    return double(zeroDate().msecsTo(dt)) / 86400000.0;
}

bool dateArg(sqlite3_context* ctx, sqlite3_value* v, QDateTime& out, bool* hadTime) {
    const int type = sqlite3_value_type(v);
    if (type == SQLITE_INTEGER || type == SQLITE_FLOAT) {
        // The range in days either side of 1900-01-01, checked before any conversion.
        const double days = sqlite3_value_double(v);
        if (!(days >= -53690 && days < 2958464)) {
            resultError(ctx, QStringLiteral("Arithmetic overflow error converting expression to data type datetime."));
            return false;
        }
        if (hadTime) *hadTime = days != std::floor(days);
        out = roundToTicks(zeroDate().addMSecs(qint64(std::llround(days * 86400000.0))));
        return true;
    }
    const QString text = textArg(v);
    if (text.trimmed().isEmpty()) {  // blank is the zero date
        out = QDateTime(QDate(1900, 1, 1), QTime(0, 0), Qt::UTC);
        return true;
    }
    const auto parts = parseDateTime(text);
    if (!parts) {
        resultError(ctx, QString::fromLatin1(kDateConversionFailed));
        return false;
    }
    out = roundToTicks(toQDateTime(*parts));
    if (!inDateRange(out)) {
        resultError(ctx, QStringLiteral("The conversion of a varchar data type to a datetime data type resulted in an "
                                        "out-of-range value."));
        return false;
    }
    if (hadTime) *hadTime = parts->hasTime;
    return true;
}

QString formatDateTime(const QDateTime& dt) {
    if (dt.time().msec() != 0) return dt.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss.zzz"));
    return dt.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
}

void resultDate(sqlite3_context* ctx, const QDateTime& exact, bool withTime) {
    const QDateTime dt = roundToTicks(exact);
    if (!inDateRange(dt)) return resultError(ctx, QStringLiteral("Adding a value to a 'datetime' column caused an overflow."));
    resultText(ctx, withTime ? formatDateTime(dt) : dt.date().toString(QStringLiteral("yyyy-MM-dd")));
}

}  // namespace runtime

namespace runtime {

// Milliseconds since an epoch, rounded to the server's ticks as a stored date is, so text
// written to the millisecond equals the date it becomes ('.005' is '.007').
qint64 dateKey(const DateTimeParts& p) {
    return (QDate(p.year, p.month, p.day).toJulianDay() * 86400 + (p.hour * 60 + p.minute) * 60 + p.second) * 1000 +
           tickMsec(p.msec);
}

// Dates stored as text compare as points in time: '2006-03-31' is midnight of that day.
int compareDate(void* unused, int n1, const void* p1, int n2, const void* p2) {
    const auto a = parseDateTime(QString::fromUtf8(static_cast<const char*>(p1), n1));
    const auto b = parseDateTime(QString::fromUtf8(static_cast<const char*>(p2), n2));
    if (a && b) {
        const qint64 ka = dateKey(*a), kb = dateKey(*b);
        return ka < kb ? -1 : ka > kb ? 1 : 0;
    }
    if (a || b) return a ? -1 : 1;  // dates before anything unreadable, consistently
    return compareCi(unused, n1, p1, n2, p2);
}

// ---- numbers

struct Number {
    bool isInteger = true;
    qint64 i = 0;
    double d = 0;
    double asDouble() const { return isInteger ? double(i) : d; }
};

// bit takes integer text only, as the integer types do.
bool isIntegerTarget(const QString& target) {
    return target == QLatin1String("int") || target == QLatin1String("smallint") || target == QLatin1String("bigint") ||
           target == QLatin1String("tinyint") || target == QLatin1String("bit");
}

QString conversionMessage(const QString& value, const QString& target) {
    if (isIntegerTarget(target))
        return QStringLiteral("Conversion failed when converting the varchar value '%1' to data type %2.").arg(quotedExcerpt(value), target);
    if (target == QLatin1String("money"))
        return QStringLiteral("Cannot convert a char value to money. The char value has incorrect syntax.");
    return QStringLiteral("Error converting data type varchar to %1.").arg(target);
}


// Text to a number the way the server converts varchar: an integer target takes only an
// integer; other targets any decimal number. Blank text is 0.
std::optional<Number> parseNumber(const QString& text, const QString& target) {
    const QString t = (target == QLatin1String("money") ? moneyTextDigits(text) : text).trimmed();
    Number n;
    if (t.isEmpty()) return n;
    bool ok = false;
    if (isIntegerTarget(target)) {
        n.i = t.toLongLong(&ok);
        if (!ok) return std::nullopt;
        return n;
    }
    n.i = t.toLongLong(&ok);
    if (ok && target.isEmpty()) return n;
    n.isInteger = false;
    n.d = t.toDouble(&ok);
    if (!ok || std::isnan(n.d) || std::isinf(n.d)) return std::nullopt;
    return n;
}

// A value as a number; text converts as it would to `target` ("" chooses int or float by
// the text). Returns false after reporting the server's error.
bool numberArg(sqlite3_context* ctx, sqlite3_value* v, const QString& target, Number& out) {
    switch (sqlite3_value_type(v)) {
    case SQLITE_INTEGER:
        out = {true, sqlite3_value_int64(v), 0};
        return true;
    case SQLITE_FLOAT:
        out = {false, 0, sqlite3_value_double(v)};
        return true;
    default: {
        const QString text = textArg(v);
        const auto n = parseNumber(text, target);
        if (!n) {
            resultError(ctx, conversionMessage(text, target.isEmpty() ? QStringLiteral("int") : target));
            return false;
        }
        out = *n;
        return true;
    }
    }
}

// A float result: beyond the double's range (inf) or no number at all is the server's
// overflow, never a value that is stored and fails later reads.
void resultFloat(sqlite3_context* ctx, double d) {
    if (!std::isfinite(d))
        return resultError(ctx, QStringLiteral("Arithmetic overflow error converting expression to data type float."));
    sqlite3_result_double(ctx, d);
}

void resultNumber(sqlite3_context* ctx, const Number& n) {
    if (n.isInteger) sqlite3_result_int64(ctx, n.i);
    else resultFloat(ctx, n.d);
}

// tsql_float(x): the engine's own float arithmetic and sums, checked for overflow.
void tsqlFloat(sqlite3_context* ctx, int, sqlite3_value** argv) {
    if (sqlite3_value_type(argv[0]) == SQLITE_FLOAT) return resultFloat(ctx, sqlite3_value_double(argv[0]));
    sqlite3_result_value(ctx, argv[0]);
}

// The numeric type a text operand converts to: that of the other operand.
QString targetFor(sqlite3_value* other) {
    return sqlite3_value_type(other) == SQLITE_FLOAT ? QStringLiteral("float") : QStringLiteral("int");
}

// tsql_num(value, target[, lenient]): a lenient conversion answers null for text that is
// no number instead of failing.
void tsqlNum(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
    if (sqlite3_value_type(argv[0]) == SQLITE_NULL) return sqlite3_result_null(ctx);
    const QString target = argc > 1 ? textArg(argv[1]) : QString();
    if (argc > 2 && sqlite3_value_int(argv[2]) != 0 && sqlite3_value_type(argv[0]) == SQLITE_TEXT &&
        !parseNumber(textArg(argv[0]), target))
        return sqlite3_result_null(ctx);
    Number n;
    if (numberArg(ctx, argv[0], target, n)) resultNumber(ctx, n);
}

// The operands of / and %: null gives null, a zero divisor the server's error. False when
// the result is already set.
bool divisionOperands(sqlite3_context* ctx, int argc, sqlite3_value** argv, Number& a, Number& b) {
    if (anyNull(argc, argv)) {
        sqlite3_result_null(ctx);
        return false;
    }
    if (!numberArg(ctx, argv[0], targetFor(argv[1]), a) || !numberArg(ctx, argv[1], targetFor(argv[0]), b)) return false;
    if (b.asDouble() == 0) {
        resultError(ctx, QStringLiteral("Divide by zero error encountered."));
        return false;
    }
    return true;
}

void tsqlDiv(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
    Number a, b;
    if (!divisionOperands(ctx, argc, argv, a, b)) return;
    if (a.isInteger && b.isInteger) {
        if (a.i == std::numeric_limits<qint64>::min() && b.i == -1)
            return resultError(ctx, QStringLiteral("Arithmetic overflow error converting expression to data type bigint."));
        return sqlite3_result_int64(ctx, a.i / b.i);  // truncates toward zero, as the server does
    }
    resultFloat(ctx, a.asDouble() / b.asDouble());
}

void tsqlMod(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
    Number a, b;
    if (!divisionOperands(ctx, argc, argv, a, b)) return;
    if (a.isInteger && b.isInteger) {
        if (b.i == -1) return sqlite3_result_int64(ctx, 0);
        return sqlite3_result_int64(ctx, a.i % b.i);
    }
    sqlite3_result_double(ctx, std::fmod(a.asDouble(), b.asDouble()));
}

bool isTextValue(sqlite3_value* v) {
    const int type = sqlite3_value_type(v);
    return type == SQLITE_TEXT || type == SQLITE_BLOB;
}

// tsql_add(a, b, ...): + when the translation could not tell the operand types, folded
// left as the server folds a + b + c: two texts join, otherwise numbers add and a text
// operand converts to the other's type.
void tsqlAdd(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
    if (anyNull(argc, argv)) return sqlite3_result_null(ctx);
    // The running value: text while every operand so far was text, else a number.
    bool isText = isTextValue(argv[0]);
    QString text = isText ? textArg(argv[0]) : QString();
    Number sum;
    if (!isText && !numberArg(ctx, argv[0], QString(), sum)) return;
    for (int k = 1; k < argc; ++k) {
        if (isText && isTextValue(argv[k])) {
            text += textArg(argv[k]);
            continue;
        }
        Number b;
        if (isText) {
            const QString target = targetFor(argv[k]);
            const auto n = parseNumber(text, target);
            if (!n) return resultError(ctx, conversionMessage(text, target));
            sum = *n;
            isText = false;
        }
        if (!numberArg(ctx, argv[k], sum.isInteger ? QStringLiteral("int") : QStringLiteral("float"), b)) return;
        qint64 exact = 0;
        if (sum.isInteger && b.isInteger && !__builtin_add_overflow(sum.i, b.i, &exact)) sum = {true, exact, 0};
        else sum = {false, 0, sum.asDouble() + b.asDouble()};
    }
    if (isText) return resultText(ctx, text);
    resultNumber(ctx, sum);
}

// tsql_xor(a, b, ...): ^ of integers, folded left.
void tsqlXor(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
    if (anyNull(argc, argv)) return sqlite3_result_null(ctx);
    qint64 result = 0;
    for (int k = 0; k < argc; ++k) {
        Number n;
        if (!numberArg(ctx, argv[k], QStringLiteral("int"), n)) return;
        if (!n.isInteger) return resultError(ctx, QStringLiteral("The data types float and int are incompatible in the '^' operator."));
        result ^= n.i;
    }
    sqlite3_result_int64(ctx, result);
}

// int(x): the integer part of any number, numeric text included ('12.7' is 12); unlike
// convert(int, ...), which takes integer text only. The result is an int.
void tsqlInt(sqlite3_context* ctx, int, sqlite3_value** argv) {
    if (sqlite3_value_type(argv[0]) == SQLITE_NULL) return sqlite3_result_null(ctx);
    Number n;
    if (sqlite3_value_type(argv[0]) == SQLITE_TEXT) {
        const QString text = textArg(argv[0]);
        const auto parsed = parseNumber(text, QStringLiteral("float"));
        if (!parsed) return resultError(ctx, conversionMessage(text, QStringLiteral("int")));
        n = *parsed;
    } else if (!numberArg(ctx, argv[0], QStringLiteral("float"), n)) {
        return;
    }
    // Compared as doubles before any cast: a cast of a double out of range is undefined.
    const double whole = n.isInteger ? double(n.i) : std::trunc(n.d);
    if (!(whole >= -2147483648.0 && whole <= 2147483647.0))
        return resultError(ctx, QStringLiteral("Arithmetic overflow error converting expression to data type int."));
    sqlite3_result_int64(ctx, qint64(whole));
}

// tsql_single(x): the one value of a scalar subquery; a second row is the server's error.
struct SingleValue {
    int rows;
    sqlite3_value* first;
};

void tsqlSingleStep(sqlite3_context* ctx, int, sqlite3_value** argv) {
    auto* state = static_cast<SingleValue*>(sqlite3_aggregate_context(ctx, sizeof(SingleValue)));
    if (!state) return sqlite3_result_error_nomem(ctx);
    if (state->rows++ == 0) state->first = sqlite3_value_dup(argv[0]);
}

void tsqlSingleFinal(sqlite3_context* ctx) {
    auto* state = static_cast<SingleValue*>(sqlite3_aggregate_context(ctx, 0));
    if (!state) return sqlite3_result_null(ctx);  // no row at all
    if (state->rows > 1)
        resultError(ctx, QStringLiteral("Subquery returned more than 1 value. This is not permitted when the subquery "
                                        "follows =, !=, <, <= , >, >= or when the subquery is used as an expression."));
    else if (state->first)
        sqlite3_result_value(ctx, state->first);
    else
        sqlite3_result_null(ctx);
    sqlite3_value_free(state->first);
    state->first = nullptr;
}

}  // namespace runtime

// ---- text functions

qint64 runtime::codePageBytes(QStringView text) {
    qint64 size = 0;
    for (const char32_t c : text.toUcs4()) size += c < 0x80 ? 1 : 2;
    return size;
}

namespace runtime {

void tsqlLen(sqlite3_context* ctx, int, sqlite3_value** argv) {
    if (sqlite3_value_type(argv[0]) == SQLITE_NULL) return sqlite3_result_null(ctx);
    QString s = textArg(argv[0]);
    int n = int(s.size());
    while (n > 0 && s[n - 1] == u' ') --n;
    sqlite3_result_int(ctx, n);  // UTF-16 units, as the server's collation counts them
}

void tsqlCharindex(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
    if (anyNull(argc, argv)) return sqlite3_result_null(ctx);
    const QString needle = textArg(argv[0]);
    const QString hay = textArg(argv[1]);
    qint64 start = argc > 2 ? sqlite3_value_int64(argv[2]) : 1;
    if (start < 1) start = 1;
    if (needle.isEmpty() || start > hay.size()) return sqlite3_result_int(ctx, 0);
    const qsizetype at = hay.indexOf(needle, qsizetype(start - 1), Qt::CaseInsensitive);
    sqlite3_result_int64(ctx, at < 0 ? 0 : qint64(at) + 1);
}

// left(s, n) and right(s, n), counted in characters.
template <bool FromLeft>
void tsqlSide(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
    if (anyNull(argc, argv)) return sqlite3_result_null(ctx);
    const QString s = textArg(argv[0]);
    const qint64 n = sqlite3_value_int64(argv[1]);
    if (n < 0)
        return resultError(ctx, QStringLiteral("Invalid length parameter passed to the %1 function.")
                                    .arg(FromLeft ? QStringLiteral("left") : QStringLiteral("right")));
    const qsizetype count = qsizetype(std::min<qint64>(n, s.size()));
    resultText(ctx, FromLeft ? s.left(count) : s.right(count));
}
template void tsqlSide<true>(sqlite3_context*, int, sqlite3_value**);
template void tsqlSide<false>(sqlite3_context*, int, sqlite3_value**);

// tsql_fits(text, length, national): whether a text fits its column, as the server
// measures it: characters for nchar/nvarchar, bytes of the Chinese code page for
// char/varchar (two for a character outside ASCII). Blanks at the end do not count, since
// the server drops those that do not fit. Too long a text is the server's error.
void tsqlFits(sqlite3_context* ctx, int, sqlite3_value** argv) {
    if (sqlite3_value_type(argv[0]) == SQLITE_NULL) return sqlite3_result_int(ctx, 1);
    QString text = textArg(argv[0]);
    while (text.endsWith(u' ')) text.chop(1);
    const qint64 limit = sqlite3_value_int64(argv[1]);
    const bool national = sqlite3_value_int(argv[2]) != 0;
    const qint64 size = national ? text.size() : codePageBytes(text);
    if (size > limit) return resultError(ctx, QStringLiteral("String or binary data would be truncated."));
    sqlite3_result_int(ctx, 1);
}

}  // namespace runtime

// ---- like with the server's wildcards: % _ [a-c] [^x], case-insensitive

namespace runtime {

std::vector<PatternElement> compilePattern(const QString& pattern, std::optional<QChar> escape) {
    std::vector<PatternElement> out;
    for (int i = 0; i < pattern.size(); ++i) {
        const QChar c = pattern[i];
        PatternElement e;
        if (escape && c == *escape && i + 1 < pattern.size()) {
            e.ch = pattern[++i];
        } else if (c == u'%') {
            e.kind = PatternElement::AnyRun;
        } else if (c == u'_') {
            e.kind = PatternElement::AnyOne;
        } else if (c == u'[') {
            const int close = int(pattern.indexOf(u']', i + 1 + (i + 1 < pattern.size() && pattern[i + 1] == u'^' ? 1 : 0)));
            if (close < 0) {
                e.ch = c;  // an unclosed bracket stands for itself
            } else {
                e.kind = PatternElement::Class;
                QString body = pattern.mid(i + 1, close - i - 1);
                if (body.startsWith(u'^')) {
                    e.negated = true;
                    body.remove(0, 1);
                }
                e.set = body.toCaseFolded();
                i = close;
            }
        } else {
            e.ch = c;
        }
        if (e.kind == PatternElement::Literal) e.ch = QString(e.ch).toCaseFolded().front();
        out.push_back(e);
    }
    return out;
}

namespace {

bool classMatches(const PatternElement& e, QChar c) {
    bool hit = false;
    const QString& s = e.set;
    for (int i = 0; i < s.size() && !hit; ++i) {
        if (i + 2 < s.size() && s[i + 1] == u'-') {
            hit = c >= s[i] && c <= s[i + 2];
            i += 2;
        } else {
            hit = c == s[i];
        }
    }
    return hit != e.negated;
}

bool elementMatches(const PatternElement& e, QChar c) {
    switch (e.kind) {
    case PatternElement::AnyOne: return true;
    case PatternElement::Literal: return e.ch == c;
    case PatternElement::Class: return classMatches(e, c);
    default: return false;
    }
}

}  // namespace

// Wildcard matching with backtracking to the last %: linear in practice, never exponential.
bool likeMatches(const std::vector<PatternElement>& p, QStringView text) {
    size_t pi = 0, ti = 0, starP = SIZE_MAX, starT = 0;
    const size_t n = size_t(text.size());
    while (ti < n) {
        if (pi < p.size() && p[pi].kind == PatternElement::AnyRun) {
            starP = pi++;
            starT = ti;
        } else if (pi < p.size() && elementMatches(p[pi], text[qsizetype(ti)])) {
            ++pi;
            ++ti;
        } else if (starP != SIZE_MAX) {
            pi = starP + 1;
            ti = ++starT;
        } else {
            return false;
        }
    }
    while (pi < p.size() && p[pi].kind == PatternElement::AnyRun) ++pi;
    return pi == p.size();
}

}  // namespace runtime

namespace runtime {

// For varchar the value's trailing blanks do not count; for nvarchar (tsql_nlike) they do.
// The pattern's always count.
template <bool National>
void tsqlLike(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
    if (anyNull(argc, argv)) return sqlite3_result_null(ctx);
    std::optional<QChar> escape;
    if (argc > 2) {
        const QString e = textArg(argv[2]);
        if (e.size() != 1) return resultError(ctx, QStringLiteral("The invalid escape character \"%1\" was specified in a LIKE predicate.").arg(e));
        escape = e.front();
    }
    const auto pattern = compilePattern(textArg(argv[0]), escape);
    QString value = textArg(argv[1]).toCaseFolded();
    bool hit = likeMatches(pattern, value);
    if (!National && !hit && value.endsWith(u' ')) {
        while (value.endsWith(u' ')) value.chop(1);
        hit = likeMatches(pattern, value);
    }
    sqlite3_result_int(ctx, hit ? 1 : 0);
}
template void tsqlLike<true>(sqlite3_context*, int, sqlite3_value**);
template void tsqlLike<false>(sqlite3_context*, int, sqlite3_value**);

// ---- dates

// Date plus days; a date without time stays a date when whole days are added.
void tsqlDateAdd(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
    if (anyNull(argc, argv)) return sqlite3_result_null(ctx);
    bool hadTime = false;
    QDateTime dt;
    if (!dateArg(ctx, argv[0], dt, &hadTime)) return;
    Number days;
    if (!numberArg(ctx, argv[1], QStringLiteral("float"), days)) return;
    const double d = days.asDouble();
    // More days than the whole range holds overflow before any conversion.
    if (!(std::fabs(d) < 1e7)) return resultDate(ctx, QDateTime(), false);
    resultDate(ctx, dt.addMSecs(qint64(std::llround(d * 86400000.0))), hadTime || d != std::floor(d));
}

// tsql_date_sum(a, b, sign): datetime plus or minus datetime, which the server computes on
// their day counts: the difference of two dates is that many days after 1900-01-01.
void tsqlDateSum(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
    if (anyNull(argc, argv)) return sqlite3_result_null(ctx);
    QDateTime a, b;
    if (!dateArg(ctx, argv[0], a) || !dateArg(ctx, argv[1], b)) return;
    const qint64 msecs = zeroDate().msecsTo(b);
    resultDate(ctx, a.addMSecs(sqlite3_value_int(argv[2]) < 0 ? -msecs : msecs), true);
}

// tsql_date_num(date, whole): a date as its day count since 1900-01-01, the time a
// fraction; whole rounds to the nearest day (noon and after is the next), as convert(int)
// rounds it on the server.
void tsqlDateNum(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
    if (anyNull(argc, argv)) return sqlite3_result_null(ctx);
    QDateTime dt;
    if (!dateArg(ctx, argv[0], dt)) return;
    const double days = daysSinceZero(dt);
    if (sqlite3_value_int(argv[1]) != 0) return sqlite3_result_int64(ctx, qint64(std::floor(days + 0.5)));
    sqlite3_result_double(ctx, days);
}

// A smalldatetime: to the nearest minute (29.999 seconds and more go up) within
// 1900-01-01..2079-06-06 23:59. False after setting the server's out-of-range error.
bool toSmallDateTime(sqlite3_context* ctx, sqlite3_value* source, QDateTime& dt) {
    const QTime t = dt.time();
    dt = QDateTime(dt.date(), QTime(t.hour(), t.minute()), Qt::UTC).addSecs(t.second() * 1000 + t.msec() >= 29999 ? 60 : 0);
    if (dt >= zeroDate() && dt < QDateTime(QDate(2079, 6, 7), QTime(0, 0), Qt::UTC))
        return true;
    const int type = sqlite3_value_type(source);
    resultError(ctx, type == SQLITE_INTEGER || type == SQLITE_FLOAT
                         ? QStringLiteral("Arithmetic overflow error converting expression to data type smalldatetime.")
                         : QStringLiteral("The conversion of a varchar data type to a smalldatetime data type resulted "
                                          "in an out-of-range value."));
    return false;
}

// tsql_store_date(value[, small]): a date as a datetime (or, with small, a smalldatetime)
// column stores it: yyyy-mm-dd, or with the time when it has one. Text that is no date is
// refused, as the server refuses it.
void tsqlStoreDate(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
    if (sqlite3_value_type(argv[0]) == SQLITE_NULL) return sqlite3_result_null(ctx);
    bool hadTime = false;
    QDateTime dt;
    if (!dateArg(ctx, argv[0], dt, &hadTime)) return;
    if (argc > 1 && sqlite3_value_int(argv[1]) != 0 && !toSmallDateTime(ctx, argv[0], dt)) return;
    resultText(ctx, hadTime ? formatDateTime(dt) : dt.date().toString(QStringLiteral("yyyy-MM-dd")));
}

// ---- convert / cast

// The date styles of convert, in QDateTime's format letters. Style 0 (and 100), with
// month names and a 12-hour clock, is written out by hand.
struct DateStyle {
    int style;
    const char* format;
};

const DateStyle kDateStyles[] = {
    {1, "MM/dd/yy"},  {101, "MM/dd/yyyy"},  {2, "yy.MM.dd"},  {102, "yyyy.MM.dd"},
    {3, "dd/MM/yy"},  {103, "dd/MM/yyyy"},  {4, "dd.MM.yy"},  {104, "dd.MM.yyyy"},
    {5, "dd-MM-yy"},  {105, "dd-MM-yyyy"},  {8, "HH:mm:ss"},  {108, "HH:mm:ss"},
    {10, "MM-dd-yy"}, {110, "MM-dd-yyyy"},  {11, "yy/MM/dd"}, {111, "yyyy/MM/dd"},
    {12, "yyMMdd"},   {112, "yyyyMMdd"},    {20, "yyyy-MM-dd HH:mm:ss"}, {120, "yyyy-MM-dd HH:mm:ss"},
    {21, "yyyy-MM-dd HH:mm:ss.zzz"}, {121, "yyyy-MM-dd HH:mm:ss.zzz"}, {23, "yyyy-MM-dd"},
};

const DateStyle* findDateStyle(int style) {
    for (const auto& s : kDateStyles)
        if (s.style == style) return &s;
    return nullptr;
}

// The styles with English month names (Jan), a 12-hour clock ( 9:05PM) or milliseconds
// after a colon, filled in from their parts: %mon, %d (two digits), %sd (blank-padded day),
// %y (two digits), %Y, %h12 (blank-padded), %H, %M, %S, %ms, %ampm.
struct WrittenStyle {
    int style;
    const char* pattern;
};

const WrittenStyle kWrittenStyles[] = {
    {0, "%mon %sd %Y %h12:%M%ampm"},           {100, "%mon %sd %Y %h12:%M%ampm"},
    {6, "%d %mon %y"},                         {106, "%d %mon %Y"},
    {7, "%mon %d, %y"},                        {107, "%mon %d, %Y"},
    {9, "%mon %sd %Y %h12:%M:%S:%ms%ampm"},    {109, "%mon %sd %Y %h12:%M:%S:%ms%ampm"},
    {13, "%d %mon %Y %H:%M:%S:%ms"},           {113, "%d %mon %Y %H:%M:%S:%ms"},
    {14, "%H:%M:%S:%ms"},                      {114, "%H:%M:%S:%ms"},
};

QString writeStyle(const QDateTime& dt, QString pattern) {
    static const char* const months[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    const QDate d = dt.date();
    const QTime t = dt.time();
    auto padded = [](int v, int width, char fill) { return QStringLiteral("%1").arg(v, width, 10, QLatin1Char(fill)); };
    // Longer names first, so %h12 is not read as %H.
    const std::pair<const char*, QString> fields[] = {
        {"%mon", QLatin1String(months[d.month() - 1])},
        {"%sd", padded(d.day(), 2, ' ')},
        {"%h12", padded(t.hour() % 12 == 0 ? 12 : t.hour() % 12, 2, ' ')},
        {"%ampm", t.hour() < 12 ? QStringLiteral("AM") : QStringLiteral("PM")},
        {"%ms", padded(t.msec(), 3, '0')},
        {"%d", padded(d.day(), 2, '0')},
        {"%y", padded(d.year() % 100, 2, '0')},
        {"%Y", QString::number(d.year())},
        {"%H", padded(t.hour(), 2, '0')},
        {"%M", padded(t.minute(), 2, '0')},
        {"%S", padded(t.second(), 2, '0')},
    };
    QString out;
    for (int i = 0; i < pattern.size();) {
        bool matched = false;
        for (const auto& [name, value] : fields) {
            const QLatin1String n(name);
            if (QStringView(pattern).mid(i).startsWith(n)) {
                out += value;
                i += int(n.size());
                matched = true;
                break;
            }
        }
        if (!matched) out += pattern[i++];
    }
    return out;
}

std::optional<QString> formatDateStyle(const QDateTime& dt, int style) {
    for (const auto& w : kWrittenStyles)
        if (w.style == style) return writeStyle(dt, QLatin1String(w.pattern));
    if (style == 126)  // ISO 8601; milliseconds only when there are some
        return dt.toString(dt.time().msec() ? QStringLiteral("yyyy-MM-ddTHH:mm:ss.zzz") : QStringLiteral("yyyy-MM-ddTHH:mm:ss"));
    const DateStyle* s = findDateStyle(style);
    if (!s) return std::nullopt;
    return dt.toString(QLatin1String(s->format));
}

// Text in the day, month and year order of a style (01/02/06 under style 3 is 1 February
// 2006), two-digit years in 1950..2049, an optional time after a blank. Nothing when the
// text is not in that form.
std::optional<DateTimeParts> parseStyledDate(const QString& text, int style) {
    const DateStyle* st = findDateStyle(style);
    if (!st) return std::nullopt;
    const QString f = QLatin1String(st->format);
    const qsizetype y = f.indexOf(u'y'), m = f.indexOf(u'M'), d = f.indexOf(u'd');
    if (y < 0 || m < 0 || d < 0) return std::nullopt;
    const QString s = text.trimmed();
    int fields[3], widths[3], i = 0;
    for (int k = 0; k < 3; ++k) {
        const int from = i;
        fields[k] = digitsAt(s, i, 4);
        widths[k] = i - from;
        if (fields[k] < 0) return std::nullopt;
        if (k < 2 && (i >= s.size() || !QStringView(u"/-.").contains(s[i++]))) return std::nullopt;
    }
    auto rank = [&](qsizetype at) { return int(at > y) + int(at > m) + int(at > d); };
    DateTimeParts p;
    p.year = fields[rank(y)];
    if (widths[rank(y)] <= 2) p.year += p.year < 50 ? 2000 : 1900;
    p.month = fields[rank(m)];
    p.day = fields[rank(d)];
    if (i < s.size()) {
        if (s[i] != u' ') return std::nullopt;
        while (i < s.size() && s[i] == u' ') ++i;
        const auto t = parseTime(s, i, p);
        if (!t) return std::nullopt;
        p = *t;
    }
    if (i != s.size() || !QDate::isValid(p.year, p.month, p.day)) return std::nullopt;
    return p;
}

// The value of convert(datetime, value, style): text in the style's order first.
bool styledDateArg(sqlite3_context* ctx, sqlite3_value* value, std::optional<int> style, QDateTime& out) {
    if (style && sqlite3_value_type(value) == SQLITE_TEXT) {
        if (const auto p = parseStyledDate(textArg(value), *style)) {
            out = toQDateTime(*p);
            if (inDateRange(out)) return true;
        }
    }
    return dateArg(ctx, value, out);
}

// Money as text in a style: 0 (and any other) two decimals, rounded; 1 two decimals with
// a comma every three digits; 2 and 126 four decimals.
QString moneyText(double value, int style) {
    if (style == 2 || style == 126) return decimalText(value, 4);
    QString s = decimalText(value, 2);
    if (style == 1)
        for (qsizetype at = s.indexOf(QLatin1Char('.')) - 3; at > (s.startsWith(u'-') ? 1 : 0); at -= 3)
            s.insert(at, QLatin1Char(','));
    return s;
}

// tsql_convert(type, length, scale, value, style, source)
void tsqlConvert(sqlite3_context* ctx, int, sqlite3_value** argv) {
    sqlite3_value* value = argv[3];
    if (sqlite3_value_type(value) == SQLITE_NULL) return sqlite3_result_null(ctx);
    const QString type = textArg(argv[0]);
    const int length = sqlite3_value_int(argv[1]);
    const bool styled = sqlite3_value_type(argv[4]) != SQLITE_NULL;
    const int style = styled ? sqlite3_value_int(argv[4]) : 0;
    // What the value was before it was stored: 1 a date, 2 money, 3 decimal, 0 anything else.
    const int source = sqlite3_value_int(argv[5]);
    const bool valueIsDate = source == 1;

    if (type.endsWith(QLatin1String("char")) || type == QLatin1String("text") || type == QLatin1String("ntext")) {
        QString s;
        const int vt = sqlite3_value_type(value);
        if (valueIsDate) {
            QDateTime dt;
            if (!dateArg(ctx, value, dt)) return;
            const auto styledText = formatDateStyle(dt, style);
            if (styledText) s = *styledText;
            else
                return resultError(ctx, QStringLiteral("%1 is not a valid style number when converting from datetime to a "
                                                       "character string.").arg(style));
        } else if (source == 2 && (vt == SQLITE_FLOAT || vt == SQLITE_INTEGER)) {
            s = moneyText(sqlite3_value_double(value), style);
        } else if (vt == SQLITE_FLOAT) {
            s = QString::number(sqlite3_value_double(value), 'g', 6);
        } else {
            s = textArg(value);
        }
        // convert(varchar, x) without a length means 30 characters.
        const int limit = length == -1 && type != QLatin1String("text") ? 30 : length;
        if (limit > 0 && s.size() > limit) {
            // An integer too long for its text is '*' in char and varchar; an integer in nchar
            // and nvarchar, and any other number, is an error. Only text is cut.
            const bool integer = vt == SQLITE_INTEGER && source == 0;
            if (integer && !type.startsWith(u'n')) return resultText(ctx, QStringLiteral("*"));
            if (source == 3)
                return resultError(ctx, QStringLiteral("Arithmetic overflow error converting numeric to data type %1.").arg(type));
            if (integer || source == 2 || vt == SQLITE_FLOAT)
                return resultError(ctx, QStringLiteral("Arithmetic overflow error converting expression to data type %1.").arg(type));
            s.truncate(limit);
        }
        return resultText(ctx, s);
    }
    if (type == QLatin1String("float") || type == QLatin1String("real")) {
        if (valueIsDate) {
            QDateTime dt;
            if (dateArg(ctx, value, dt)) sqlite3_result_double(ctx, daysSinceZero(dt));
            return;
        }
        Number n;
        if (!numberArg(ctx, value, QStringLiteral("float"), n)) return;
        return sqlite3_result_double(ctx, n.asDouble());
    }
    if (type == QLatin1String("bit")) {
        if (sqlite3_value_type(value) == SQLITE_TEXT) {
            const QString t = textArg(value).trimmed();
            if (t.compare(QLatin1String("true"), Qt::CaseInsensitive) == 0) return sqlite3_result_int(ctx, 1);
            if (t.compare(QLatin1String("false"), Qt::CaseInsensitive) == 0) return sqlite3_result_int(ctx, 0);
        }
        Number n;
        if (!numberArg(ctx, value, QStringLiteral("bit"), n)) return;
        return sqlite3_result_int(ctx, n.asDouble() != 0 ? 1 : 0);
    }
    if (type.contains(QLatin1String("date"))) {
        QDateTime out;
        if (!styledDateArg(ctx, value, styled ? std::optional<int>(style) : std::nullopt, out)) return;
        if (type == QLatin1String("date")) return resultText(ctx, out.date().toString(QStringLiteral("yyyy-MM-dd")));
        if (type == QLatin1String("smalldatetime") && !toSmallDateTime(ctx, value, out)) return;
        return resultText(ctx, formatDateTime(out));
    }
    resultError(ctx, QStringLiteral("Type %1 is not a defined system type.").arg(type));
}


}  // namespace runtime

// Optimizations of SQLite's query planner (its internal mask bits), see below.
constexpr int kBloomFilter = 0x00080000;
constexpr int kBloomPulldown = 0x00100000;

void registerRuntime(sqlite3* db) {
    // The join filters of this SQLite hash a text by its length, so keys equal under
    // TSQL_CI but of different lengths ('wc1 ' and 'WC1') would miss each other. Without
    // the filters the joins compare by the collation; if they cannot be turned off,
    // automatic indexes (which carry them) are.
    if (sqlite3_test_control(SQLITE_TESTCTRL_OPTIMIZATIONS, db, kBloomFilter | kBloomPulldown) != SQLITE_OK)
        sqlite3_exec(db, "PRAGMA automatic_index = OFF", nullptr, nullptr, nullptr);
    // "x" is a name, never a string, as with QUOTED_IDENTIFIER ON.
    sqlite3_db_config(db, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
    sqlite3_db_config(db, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
    sqlite3_create_collation(db, "TSQL_CI", SQLITE_UTF8, nullptr, compareCi);
    sqlite3_create_collation(db, "TSQL_DATE", SQLITE_UTF8, nullptr, compareDate);
    registerFunctions(db);
    registerNumberFunctions(db);
    sqlite3_create_function(db, "tsql_single", 1, SQLITE_UTF8 | SQLITE_INNOCUOUS | SQLITE_DETERMINISTIC, nullptr, nullptr,
                            tsqlSingleStep, tsqlSingleFinal);
    // The sysobjects view comes when a statement first names it (SqliteCatalog).
}

}  // namespace kivdb::dialect

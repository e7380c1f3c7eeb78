#include "dialect/tsql_numbers.h"

#include <QByteArray>
#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <sqlite3.h>
#include <string>

namespace kivdb::dialect {

using Int128 = __int128;

namespace {

constexpr int kMaxPrecision = 38;

Int128 pow10(int n) {
    Int128 p = 1;
    for (int i = 0; i < n; ++i) p *= 10;
    return p;
}

Int128 abs128(Int128 v) { return v < 0 ? -v : v; }

// Removes trailing zeros, so mantissas stay small through the arithmetic.
Decimal normalized(Decimal d) {
    if (d.mantissa == 0) return {0, 0};
    while (d.mantissa % 10 == 0) {
        d.mantissa /= 10;
        --d.scale;
    }
    return d;
}

enum class Rounding { HalfAwayFromZero, TowardZero };

// The value with `scale` digits after the point; false when the mantissa would overflow.
bool rescale(Decimal& d, int scale, Rounding rounding) {
    if (scale >= d.scale) {
        const int up = scale - d.scale;
        if (d.mantissa != 0) {
            if (up > kMaxPrecision) return false;
            if (__builtin_mul_overflow(d.mantissa, pow10(up), &d.mantissa)) return false;
        }
        d.scale = scale;
        return true;
    }
    const int down = d.scale - scale;
    d.scale = scale;
    if (down > kMaxPrecision) {  // every digit is below the last one kept: |value| < 0.5 of it
        d.mantissa = 0;
        return true;
    }
    const Int128 divisor = pow10(down);
    const bool negative = d.mantissa < 0;
    const Int128 r = abs128(d.mantissa % divisor);
    d.mantissa /= divisor;
    if (rounding == Rounding::HalfAwayFromZero && r >= divisor - r) d.mantissa += negative ? -1 : 1;
    return true;
}

std::string digitsOf(Int128 m) {
    char buf[48];
    char* p = buf + sizeof buf;
    const bool negative = m < 0;
    m = abs128(m);
    do {
        *--p = char('0' + int(m % 10));
        m /= 10;
    } while (m != 0);
    if (negative) *--p = '-';
    return std::string(p, buf + sizeof buf);
}

double toDouble(const Decimal& d) {
    constexpr Int128 exactLimit = Int128(1) << 53;
    static const double powers[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                    1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
    // Both operands exact, one correctly rounded operation: the nearest double.
    if (abs128(d.mantissa) < exactLimit && d.scale >= -22 && d.scale <= 22)
        return d.scale >= 0 ? double(d.mantissa) / powers[d.scale] : double(d.mantissa) * powers[-d.scale];
    const std::string text = digitsOf(d.mantissa) + 'e' + std::to_string(-d.scale);
    double value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

}  // namespace

std::optional<Decimal> decimalOfText(std::string_view s) {
    size_t i = 0, n = s.size();
    while (i < n && s[i] == ' ') ++i;
    while (n > i && s[n - 1] == ' ') --n;
    bool negative = false;
    if (i < n && (s[i] == '+' || s[i] == '-')) negative = s[i++] == '-';
    Decimal d;
    int significant = 0, digits = 0;
    bool point = false;
    for (; i < n; ++i) {
        const char c = s[i];
        if (c == '.' && !point) {
            point = true;
            continue;
        }
        if (c < '0' || c > '9') break;
        ++digits;
        if (significant == 0 && c == '0') {
            if (point) ++d.scale;
            continue;
        }
        if (significant < kMaxPrecision) {  // digits past the 38th are dropped
            d.mantissa = d.mantissa * 10 + (c - '0');
            ++significant;
            if (point) ++d.scale;
        } else if (!point) {
            --d.scale;
        }
    }
    if (digits == 0) return std::nullopt;
    if (i < n && (s[i] == 'e' || s[i] == 'E')) {
        int exponent = 0;
        const auto r = std::from_chars(s.data() + i + 1 + (i + 1 < n && s[i + 1] == '+'), s.data() + n, exponent);
        if (r.ec != std::errc() || r.ptr != s.data() + n) return std::nullopt;
        // Far past any type's range either way; bounded so the scale cannot overflow.
        d.scale -= std::clamp(exponent, -1000, 1000);
    } else if (i != n) {
        return std::nullopt;
    }
    if (negative) d.mantissa = -d.mantissa;
    return normalized(d);
}

std::optional<Decimal> decimalOfDouble(double value) {
    if (!std::isfinite(value)) return std::nullopt;
    char buf[32];
    const auto r = std::to_chars(buf, buf + sizeof buf, value);
    return decimalOfText(std::string_view(buf, size_t(r.ptr - buf)));
}

QString moneyTextDigits(const QString& text) {
    QString out = text;
    const qsizetype point = out.indexOf(QLatin1Char('.'));
    for (qsizetype i = (point < 0 ? out.size() : point) - 1; i > 0; --i)
        if (out[i] == u',' && out[i - 1].isDigit() && i + 1 < out.size() && out[i + 1].isDigit()) out.remove(i, 1);
    return out;
}

QString decimalText(double value, int scale) {
    auto d = decimalOfDouble(value);
    if (!d || !rescale(*d, scale, Rounding::HalfAwayFromZero)) return QString::number(value, 'g', 17);
    std::string digits = digitsOf(abs128(d->mantissa));
    if (scale > 0) {
        if (int(digits.size()) <= scale) digits.insert(0, size_t(scale - int(digits.size()) + 1), '0');
        digits.insert(digits.size() - size_t(scale), 1, '.');
    }
    return QString::fromLatin1((d->mantissa < 0 ? "-" : "") + digits);
}

namespace {

// ---- the server's exact types

// Ranges of the server's exact types, as mantissas at the type's scale; a decimal's
// range comes from its precision.
struct TypeRange {
    const char* name;
    qint64 lowest, highest;
    int scale;  // -1: the decimal's own
};
constexpr TypeRange kTypeRanges[] = {
    {"tinyint", 0, 255, 0},
    {"smallint", -32768, 32767, 0},
    {"int", std::numeric_limits<qint32>::min(), std::numeric_limits<qint32>::max(), 0},
    {"bigint", std::numeric_limits<qint64>::min(), std::numeric_limits<qint64>::max(), 0},
    {"smallmoney", std::numeric_limits<qint32>::min(), std::numeric_limits<qint32>::max(), 4},
    {"money", std::numeric_limits<qint64>::min(), std::numeric_limits<qint64>::max(), 4},
    {"numeric", 0, 0, -1},
};

std::string_view textOf(sqlite3_value* v) {
    return {reinterpret_cast<const char*>(sqlite3_value_text(v)), size_t(sqlite3_value_bytes(v))};
}

struct ExactType {
    const TypeRange* range = &kTypeRanges[std::size(kTypeRanges) - 1];
    int precision = kMaxPrecision;
    int scale = 0;

    // Named as the runtime's callers name it; anything unknown is numeric.
    static ExactType named(std::string_view name, int precision, int scale) {
        ExactType t;
        for (const TypeRange& r : kTypeRanges)
            if (name == r.name) t.range = &r;
        t.precision = precision <= 0 || precision > kMaxPrecision ? kMaxPrecision : precision;
        t.scale = t.range->scale >= 0 ? t.range->scale : std::clamp(scale, 0, t.precision);
        return t;
    }
    // 'int', 'money', 'numeric(18,4)' ...
    static ExactType parse(std::string_view text) {
        const size_t open = text.find('(');
        int precision = 0, scale = 0;
        if (open != std::string_view::npos) {
            const char* end = text.data() + text.size();
            const auto r = std::from_chars(text.data() + open + 1, end, precision);
            if (r.ptr < end && *r.ptr == ',') std::from_chars(r.ptr + 1, end, scale);
        }
        return named(text.substr(0, open), precision, scale);
    }
    QString name() const { return QString::fromLatin1(range->name); }
    bool isInteger() const { return range->scale == 0; }
    bool isMoney() const { return range->scale == 4; }
    bool isNumeric() const { return range->scale < 0; }
    bool holds(const Decimal& d) const {
        if (d.scale != scale) return false;
        if (isNumeric()) return abs128(d.mantissa) < pow10(precision);
        return d.mantissa >= range->lowest && d.mantissa <= range->highest;
    }
};


void resultError(sqlite3_context* ctx, const QString& message) {
    const QByteArray utf8 = message.toUtf8();
    sqlite3_result_error(ctx, utf8.constData(), int(utf8.size()));
}

QString overflowMessage(const ExactType& t) {
    return QStringLiteral("Arithmetic overflow error converting expression to data type %1.").arg(t.name());
}

// The exact value of an operand: integers and doubles as they are, text as written.
std::optional<Decimal> operandValue(sqlite3_value* v) {
    switch (sqlite3_value_type(v)) {
    case SQLITE_INTEGER: return normalized({sqlite3_value_int64(v), 0});
    case SQLITE_FLOAT: return decimalOfDouble(sqlite3_value_double(v));
    default: return decimalOfText(textOf(v));
    }
}

// The double stored for d, a value t holds: its nearest double, or when that one stands for
// a decimal past t's range (money's limits have 19 digits), the nearest one inside it.
double storedDouble(const Decimal& d, const ExactType& t) {
    double x = toDouble(d);
    for (;;) {
        auto back = decimalOfDouble(x);
        if (back && rescale(*back, t.scale, Rounding::HalfAwayFromZero) && t.holds(*back)) return x;
        x = std::nextafter(x, 0.0);
    }
}

// Sets the value of type t as the result, or the overflow error; integers as integers.
void resultExact(sqlite3_context* ctx, Decimal d, const ExactType& t, Rounding rounding, const QString& overflow) {
    if (!rescale(d, t.scale, rounding) || !t.holds(d)) return resultError(ctx, overflow);
    if (t.isInteger()) return sqlite3_result_int64(ctx, qint64(d.mantissa));
    sqlite3_result_double(ctx, storedDouble(d, t));
}

// a / b with `scale` digits after the point; false when the quotient overflows.
bool divide(const Decimal& a, const Decimal& b, int scale, Rounding rounding, Decimal& out) {
    // quotient mantissa = ma / mb × 10^e
    const int e = scale - a.scale + b.scale;
    const bool negative = (a.mantissa < 0) != (b.mantissa < 0);
    Int128 num = abs128(a.mantissa), den = abs128(b.mantissa);
    Int128 q = 0, r = 0;
    if (e >= 0) {
        q = num / den;
        r = num % den;
        for (int i = 0; i < e; ++i) {
            Int128 r10 = 0;
            if (__builtin_mul_overflow(r, 10, &r10) || __builtin_mul_overflow(q, 10, &q)) return false;
            q += r10 / den;
            r = r10 % den;
        }
    } else {
        if (-e > kMaxPrecision || __builtin_mul_overflow(den, pow10(-e), &den)) {
            q = 0;
            r = 0;  // far below the last digit kept
        } else {
            q = num / den;
            r = num % den;
        }
    }
    if (rounding == Rounding::HalfAwayFromZero && r != 0 && r >= den - r) ++q;
    out = {negative ? -q : q, scale};
    return true;
}

// ---- tsql_arith(a, op, b, type[, op, c, type ...]): ((a op b) op c) ..., each step
// (+ - * / %) in the result type the translation worked out from its operands' types, with
// the server's overflow and divide errors. A chain of operators is one call.

const QString kDivideByZero = QStringLiteral("Divide by zero error encountered.");

// An integer step; false after reporting the error.
bool integerStep(sqlite3_context* ctx, char op, qint64 a, qint64 b, const ExactType& type, qint64& out) {
    bool overflow = false;
    switch (op) {
    case '+': overflow = __builtin_add_overflow(a, b, &out); break;
    case '-': overflow = __builtin_sub_overflow(a, b, &out); break;
    case '*': overflow = __builtin_mul_overflow(a, b, &out); break;
    default:
        if (b == 0) return resultError(ctx, kDivideByZero), false;
        // Quotients truncate toward zero and remainders take the dividend's sign, as the
        // server's do; -2^63 / -1 is the one quotient past the range.
        if (b == -1) overflow = op == '/' ? __builtin_sub_overflow(qint64(0), a, &out) : (out = 0, false);
        else out = op == '/' ? a / b : a % b;
    }
    if (overflow || out > type.range->highest || out < type.range->lowest) return resultError(ctx, overflowMessage(type)), false;
    return true;
}

// An exact step, the result at the type's scale; false after reporting the error.
bool exactStep(sqlite3_context* ctx, char op, const Decimal& a, const Decimal& b, const ExactType& type, Decimal& out) {
    Decimal r;
    bool ok = true;
    switch (op) {
    case '+':
    case '-':
    case '%': {
        Decimal x = a, y = b;
        r.scale = std::max(x.scale, y.scale);
        ok = rescale(x, r.scale, Rounding::TowardZero) && rescale(y, r.scale, Rounding::TowardZero);
        if (!ok) break;
        if (op == '%') {
            if (y.mantissa == 0) return resultError(ctx, kDivideByZero), false;
            r.mantissa = x.mantissa % y.mantissa;  // the dividend's sign, as the server's
        } else {
            ok = !(op == '+' ? __builtin_add_overflow(x.mantissa, y.mantissa, &r.mantissa)
                             : __builtin_sub_overflow(x.mantissa, y.mantissa, &r.mantissa));
        }
        break;
    }
    case '*':
        ok = !__builtin_mul_overflow(a.mantissa, b.mantissa, &r.mantissa);
        r.scale = a.scale + b.scale;
        break;
    default:
        if (b.mantissa == 0) return resultError(ctx, kDivideByZero), false;
        // Exact and integer quotients are cut after the scale, money is rounded to it.
        ok = divide(a, b, type.scale, type.isMoney() ? Rounding::HalfAwayFromZero : Rounding::TowardZero, r);
    }
    // Products and sums round to the result's scale.
    if (!ok || !rescale(r, type.scale, Rounding::HalfAwayFromZero) || !type.holds(r))
        return resultError(ctx, overflowMessage(type)), false;
    out = r;
    return true;
}

void tsqlArith(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
    for (int i = 0; i < argc; i += i == 0 ? 2 : 3)
        if (sqlite3_value_type(argv[i]) == SQLITE_NULL) return sqlite3_result_null(ctx);
    const QString notANumber = QStringLiteral("Error converting data type varchar to numeric.");
    // Integers stay 64-bit integers as long as every step is an integer one.
    bool integral = sqlite3_value_type(argv[0]) == SQLITE_INTEGER;
    qint64 whole = integral ? sqlite3_value_int64(argv[0]) : 0;
    Decimal value;
    if (!integral) {
        const auto a = operandValue(argv[0]);
        if (!a) return resultError(ctx, notANumber);
        value = *a;
    }
    ExactType type;
    for (int i = 1; i + 2 < argc; i += 3) {
        const char op = textOf(argv[i]).front();
        type = ExactType::parse(textOf(argv[i + 2]));
        sqlite3_value* operand = argv[i + 1];
        if (integral && type.isInteger() && sqlite3_value_type(operand) == SQLITE_INTEGER) {
            if (!integerStep(ctx, op, whole, sqlite3_value_int64(operand), type, whole)) return;
            continue;
        }
        if (integral) value = normalized({whole, 0});
        integral = false;
        const auto b = operandValue(operand);
        if (!b) return resultError(ctx, notANumber);
        if (!exactStep(ctx, op, value, *b, type, value)) return;
    }
    if (integral) return sqlite3_result_int64(ctx, whole);
    if (type.isInteger()) return sqlite3_result_int64(ctx, qint64(value.mantissa));  // in range at scale 0
    sqlite3_result_double(ctx, storedDouble(value, type));
}

// ---- tsql_cast_num(value, type, source): a value converted to an exact
// type, as convert/cast and stores into a column convert it; source names the value's
// type for the server's messages.


QString textConversionMessage(const QString& text, const ExactType& t) {
    if (t.isInteger())
        return QStringLiteral("Conversion failed when converting the varchar value '%1' to data type %2.")
            .arg(text, t.name());
    if (t.isMoney()) return QStringLiteral("Cannot convert a char value to money. The char value has incorrect syntax.");
    return QStringLiteral("Error converting data type varchar to numeric.");
}

void tsqlCastNum(sqlite3_context* ctx, int, sqlite3_value** argv) {
    sqlite3_value* value = argv[0];
    const int storage = sqlite3_value_type(value);
    if (storage == SQLITE_NULL) return sqlite3_result_null(ctx);
    const ExactType type = ExactType::parse(textOf(argv[1]));
    const ExactType source = ExactType::parse(textOf(argv[2]));
    const QString sourceName = QString::fromUtf8(textOf(argv[2]).data(), qsizetype(textOf(argv[2]).size()));
    std::optional<Decimal> d;
    QString text;
    // A decimal literal too long for a double comes as its text.
    const bool literalDigits = storage == SQLITE_TEXT && sourceName == QLatin1String("numeric");
    if (literalDigits) {
        d = operandValue(value);
    } else if (storage == SQLITE_TEXT || storage == SQLITE_BLOB) {
        text = QString::fromUtf8(textOf(value).data(), qsizetype(textOf(value).size()));
        const QByteArray trimmed = (type.isMoney() ? moneyTextDigits(text) : text).trimmed().toUtf8();
        // Blank text is 0; integer types take integer text only, none takes an exponent.
        if (trimmed.isEmpty()) d = Decimal{};
        else if (!trimmed.contains('e') && !trimmed.contains('E') && !(type.isInteger() && trimmed.contains('.')))
            d = decimalOfText(std::string_view(trimmed.constData(), size_t(trimmed.size())));
        if (!d) return resultError(ctx, textConversionMessage(text, type));
    } else {
        d = operandValue(value);
    }
    QString overflow;
    if (!type.isInteger() && !type.isMoney())
        overflow = QStringLiteral("Arithmetic overflow error converting %1 to data type numeric.")
                       .arg(storage == SQLITE_TEXT && !literalDigits ? QStringLiteral("varchar") : sourceName);
    else if (type.isInteger() && !text.isNull())
        overflow = QStringLiteral("The conversion of the varchar value '%1' overflowed %2 column.")
                       .arg(text, (type.name() == QLatin1String("int") ? QStringLiteral("an ") : QStringLiteral("a ")) + type.name());
    else if (storage == SQLITE_INTEGER && source.isInteger() && type.range->highest <= 32767)
        overflow = QStringLiteral("Arithmetic overflow error for data type %1, value = %2.")
                       .arg(type.name(), QString::number(sqlite3_value_int64(value)));
    else
        overflow = overflowMessage(type);
    if (!d) return resultError(ctx, overflow);  // infinity or not a number
    // Integers drop the fraction, exact types round to their scale.
    resultExact(ctx, *d, type, type.isInteger() ? Rounding::TowardZero : Rounding::HalfAwayFromZero, overflow);
}

// ---- tsql_round(x, length[, function]): x rounded half away from zero at `length` digits
// after the point (before it when negative), or cut there when function is not 0. An
// integer stays an integer.
void tsqlRound(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
    for (int i = 0; i < argc; ++i)
        if (sqlite3_value_type(argv[i]) == SQLITE_NULL) return sqlite3_result_null(ctx);
    const qint64 length = std::clamp<qint64>(sqlite3_value_int64(argv[1]), -1000, 1000);
    const bool cut = argc > 2 && sqlite3_value_int64(argv[2]) != 0;
    const bool integer = sqlite3_value_type(argv[0]) == SQLITE_INTEGER;
    auto d = operandValue(argv[0]);
    if (!d) return resultError(ctx, QStringLiteral("Error converting data type varchar to float."));
    if (d->scale <= length) return integer ? sqlite3_result_int64(ctx, sqlite3_value_int64(argv[0])) : sqlite3_result_double(ctx, toDouble(*d));
    rescale(*d, int(length), cut ? Rounding::TowardZero : Rounding::HalfAwayFromZero);
    if (length < 0 && !rescale(*d, 0, Rounding::TowardZero))
        return resultError(ctx, QStringLiteral("Arithmetic overflow error converting expression to data type %1.")
                                    .arg(integer ? QStringLiteral("int") : QStringLiteral("numeric")));
    if (integer) {
        if (d->mantissa > std::numeric_limits<qint64>::max() || d->mantissa < std::numeric_limits<qint64>::min())
            return resultError(ctx, QStringLiteral("Arithmetic overflow error converting expression to data type bigint."));
        return sqlite3_result_int64(ctx, qint64(d->mantissa));
    }
    sqlite3_result_double(ctx, toDouble(*d));
}

// tsql_decimal_text(x, scale): the text of an exact value, with its scale's digits.
void tsqlDecimalText(sqlite3_context* ctx, int, sqlite3_value** argv) {
    if (sqlite3_value_type(argv[0]) == SQLITE_NULL) return sqlite3_result_null(ctx);
    if (sqlite3_value_type(argv[0]) == SQLITE_TEXT) return sqlite3_result_value(ctx, argv[0]);
    const QByteArray text = decimalText(sqlite3_value_double(argv[0]), sqlite3_value_int(argv[1])).toLatin1();
    sqlite3_result_text(ctx, text.constData(), int(text.size()), SQLITE_TRANSIENT);
}

// ---- tsql_sum(x, type) and tsql_avg(x, type): exact sums of money and
// decimals in the result type; the average divides as that type divides.
struct ExactSum {
    Int128 mantissa;
    int scale;
    qint64 count;
    bool overflow;
    bool invalid;
    char type[24];
};

// The aggregate's state, aligned for its 128-bit mantissa (the engine aligns to 8 bytes).
ExactSum* exactSumState(sqlite3_context* ctx, bool create) {
    auto* raw = static_cast<char*>(sqlite3_aggregate_context(ctx, create ? int(sizeof(ExactSum) + alignof(ExactSum)) : 0));
    if (!raw) return nullptr;
    const auto at = (reinterpret_cast<std::uintptr_t>(raw) + alignof(ExactSum) - 1) & ~(std::uintptr_t(alignof(ExactSum)) - 1);
    return reinterpret_cast<ExactSum*>(at);
}

void exactSumStep(sqlite3_context* ctx, int, sqlite3_value** argv) {
    if (sqlite3_value_type(argv[0]) == SQLITE_NULL) return;
    auto* s = exactSumState(ctx, true);
    if (!s) return sqlite3_result_error_nomem(ctx);
    if (s->count == 0) {
        const std::string_view type = textOf(argv[1]);
        std::memcpy(s->type, type.data(), std::min(type.size(), sizeof s->type - 1));
    }
    ++s->count;
    const auto d = operandValue(argv[0]);
    if (!d) {
        s->invalid = true;
        return;
    }
    Decimal sum{s->mantissa, s->scale}, x = *d;
    const int scale = std::max(sum.scale, x.scale);
    if (!rescale(sum, scale, Rounding::TowardZero) || !rescale(x, scale, Rounding::TowardZero) ||
        __builtin_add_overflow(sum.mantissa, x.mantissa, &sum.mantissa))
        s->overflow = true;
    s->mantissa = sum.mantissa;
    s->scale = scale;
}

template <bool Average>
void exactSumFinal(sqlite3_context* ctx) {
    auto* s = exactSumState(ctx, false);
    if (!s || s->count == 0) return sqlite3_result_null(ctx);
    const ExactType type = ExactType::parse(s->type);
    if (s->invalid) return resultError(ctx, QStringLiteral("Error converting data type varchar to numeric."));
    Decimal r{s->mantissa, s->scale};
    if (Average && !s->overflow &&
        !divide(r, {s->count, 0}, type.scale, type.isMoney() ? Rounding::HalfAwayFromZero : Rounding::TowardZero, r))
        s->overflow = true;
    if (s->overflow) return resultError(ctx, overflowMessage(type));
    resultExact(ctx, r, type, Rounding::HalfAwayFromZero, overflowMessage(type));
}

}  // namespace

void registerNumberFunctions(sqlite3* db) {
    const int flags = SQLITE_UTF8 | SQLITE_INNOCUOUS | SQLITE_DETERMINISTIC;
    sqlite3_create_function(db, "tsql_arith", -1, flags, nullptr, tsqlArith, nullptr, nullptr);
    sqlite3_create_function(db, "tsql_cast_num", 3, flags, nullptr, tsqlCastNum, nullptr, nullptr);
    sqlite3_create_function(db, "tsql_round", 2, flags, nullptr, tsqlRound, nullptr, nullptr);
    sqlite3_create_function(db, "tsql_round", 3, flags, nullptr, tsqlRound, nullptr, nullptr);
    sqlite3_create_function(db, "tsql_decimal_text", 2, flags, nullptr, tsqlDecimalText, nullptr, nullptr);
    sqlite3_create_function(db, "tsql_sum", 2, flags, nullptr, nullptr, exactSumStep, exactSumFinal<false>);
    sqlite3_create_function(db, "tsql_avg", 2, flags, nullptr, nullptr, exactSumStep, exactSumFinal<true>);
}

}  // namespace kivdb::dialect

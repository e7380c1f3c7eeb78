#include "platform/connection_support.h"

#include "dialect/sqlite_catalog.h"


namespace kivdb {

std::optional<FieldType> fieldTypeFromTypeName(const QString& typeName) {
    return fieldTypeOfColumnKind(dialect::columnKindFromDeclType(typeName));
}

std::optional<FieldType> fieldTypeOfColumnKind(dialect::ColumnKind kind) {
    using dialect::ColumnKind;
    switch (kind) {
    case ColumnKind::Text: return FieldType::String;
    case ColumnKind::Integer: return FieldType::Integer;
    case ColumnKind::Float: return FieldType::Float;
    case ColumnKind::Money: return FieldType::Currency;
    case ColumnKind::Decimal: return FieldType::Bcd;
    case ColumnKind::DateTime: return FieldType::DateTime;
    case ColumnKind::Bit: return FieldType::Boolean;
    case ColumnKind::Unknown: break;
    }
    return std::nullopt;
}

namespace {

// Reads date-time text a character at a time: every date of a big result passes here.
class DateTimeReader {
public:
    explicit DateTimeReader(const QString& text) : at_(text.constData()), end_(at_ + text.size()) {}

    // ASCII white space, as the text may carry it around the value.
    void skipBlanks() {
        while (at_ < end_ && (at_->unicode() == ' ' || (at_->unicode() >= '\t' && at_->unicode() <= '\r'))) ++at_;
    }
    bool atEnd() const { return at_ == end_; }
    bool take(char c) {
        if (at_ == end_ || at_->unicode() != c) return false;
        ++at_;
        return true;
    }
    bool takeEither(char a, char b) { return take(a) || take(b); }
    // From `least` to `most` ASCII digits as a number, in `value`; false (nothing taken) when
    // fewer than `least` come. `taken` says how many were read.
    bool number(int least, int most, int& value, int* taken = nullptr) {
        int n = 0;
        value = 0;
        while (n < most && at_ + n < end_ && isDigit(at_[n])) value = value * 10 + (at_[n++].unicode() - '0');
        if (n < least) return false;
        at_ += n;
        if (taken) *taken = n;
        return true;
    }
    void skipDigits() {
        while (at_ < end_ && isDigit(*at_)) ++at_;
    }
    const QChar* position() const { return at_; }
    void rewind(const QChar* to) { at_ = to; }

private:
    static bool isDigit(QChar c) { return c.unicode() >= '0' && c.unicode() <= '9'; }
    const QChar* at_;
    const QChar* end_;
};

struct ClockTime {
    int hour = 0, minute = 0, second = 0, millis = 0;
};

// "hh:mm[:ss[.fff...]]"; the reader is left where it was when the text is no such time.
std::optional<ClockTime> readClockTime(DateTimeReader& in) {
    const QChar* start = in.position();
    ClockTime t;
    if (!in.number(1, 2, t.hour) || !in.take(':') || !in.number(2, 2, t.minute)) {
        in.rewind(start);
        return std::nullopt;
    }
    const QChar* afterMinutes = in.position();
    if (!in.take(':') || !in.number(2, 2, t.second)) {
        in.rewind(afterMinutes);
        return t;
    }
    const QChar* afterSeconds = in.position();
    int digits = 0;
    if (!in.take('.') || !in.number(1, 3, t.millis, &digits)) {
        in.rewind(afterSeconds);
        return t;
    }
    // ".5" is half a second; digits past the milliseconds are dropped.
    for (; digits < 3; ++digits) t.millis *= 10;
    in.skipDigits();
    return t;
}

}  // namespace

QDateTime parseDateTimeText(const QString& text) {
    DateTimeReader in(text);
    in.skipBlanks();
    int year = 0, month = 0, day = 0;
    if (!in.number(4, 4, year) || !in.take('-') || !in.number(1, 2, month) || !in.take('-') || !in.number(1, 2, day))
        return {};
    ClockTime t;
    const QChar* afterDate = in.position();
    if (in.takeEither(' ', 'T')) {
        if (const auto read = readClockTime(in)) t = *read;
        else in.rewind(afterDate);
    }
    in.skipBlanks();
    if (!in.atEnd()) return {};
    const QDate date(year, month, day);
    const QTime time(t.hour, t.minute, t.second, t.millis);
    if (!date.isValid() || !time.isValid()) return {};
    return QDateTime(date, time);
}

// SQL Server's own wording, which the suite's users already know.
DatabaseError transactionAlreadyOpen() {
    return DatabaseError(QStringLiteral("A transaction is already open on this connection."), ErrorKind::Sql);
}
DatabaseError noTransactionToCommit() {
    return DatabaseError(
        QStringLiteral("The COMMIT TRANSACTION request has no corresponding BEGIN TRANSACTION."), ErrorKind::Sql);
}
DatabaseError noTransactionToRollBack() {
    return DatabaseError(
        QStringLiteral("The ROLLBACK TRANSACTION request has no corresponding BEGIN TRANSACTION."), ErrorKind::Sql);
}

}  // namespace kivdb

#include "platform/oledate.h"

#include <QTime>
#include <cmath>
#include <ctime>
#include <optional>

namespace kivdb {

DateConversionError::DateConversionError(const QString& message)
    : Error(message.toStdString(), ErrorKind::Date) {}

namespace {

constexpr qint64 kMsecsPerDay = 86'400'000;
const QDate kEpoch(1899, 12, 30);
const QDate kFirstDate(100, 1, 1);
const QDate kLastDate(9999, 12, 31);

bool inRange(const QDate& date) { return date.isValid() && date >= kFirstDate && date <= kLastDate; }

struct DayAndTime {
    QDate date;
    QTime time;
};

// Takes a value apart without the "no date" convention.
std::optional<DayAndTime> decode(double value) {
    if (!std::isfinite(value)) return std::nullopt;
    double whole = std::trunc(value);
    // Far outside the range: stop before the day count overflows.
    if (std::fabs(whole) > 4'000'000) return std::nullopt;
    qint64 days = qint64(whole);
    qint64 msecs = std::llround(std::fabs(value - whole) * kMsecsPerDay);
    if (msecs >= kMsecsPerDay) {  // rounds up to the next midnight
        msecs = 0;
        ++days;
    }
    QDate date = kEpoch.addDays(days);
    if (!inRange(date)) return std::nullopt;
    return DayAndTime{date, QTime::fromMSecsSinceStartOfDay(int(msecs))};
}

double encode(const QDate& date, const QTime& time) {
    if (!inRange(date))
        throw DateConversionError(
            QStringLiteral("Date %1 is outside the range 0100-01-01 to 9999-12-31").arg(date.toString(Qt::ISODate)));
    double days = double(kEpoch.daysTo(date));
    double fraction = time.isValid() ? double(time.msecsSinceStartOfDay()) / kMsecsPerDay : 0.0;
    return days >= 0 ? days + fraction : days - fraction;
}

}  // namespace

double toOleDate(const QDateTime& dateTime) {
    if (!dateTime.isValid()) return kNoDate;
    return encode(dateTime.date(), dateTime.time());
}

double toOleDate(const QDate& date) {
    if (!date.isValid()) return kNoDate;
    return encode(date, QTime());
}

QDateTime fromOleDate(double value) {
    if (value == kNoDate) return {};
    auto parts = decode(value);
    if (!parts) return {};
    return QDateTime(parts->date, parts->time);
}

QDate oleDateToDate(double value) {
    return value == kNoDate ? QDate() : oleDayOf(value);
}

QDate oleDayOf(double value) {
    auto parts = decode(value);
    return parts ? parts->date : QDate();
}

QTime oleTimeOf(double value) {
    auto parts = decode(value);
    return parts ? parts->time : QTime();
}

double encodeOleDate(int year, int month, int day) {
    QDate date(year, month, day);
    if (!QDate::isValid(year, month, day) || !inRange(date))
        throw DateConversionError(
            QStringLiteral("Year %1, month %2, day %3 is not a valid date").arg(year).arg(month).arg(day));
    return encode(date, QTime());
}

QString formatOleDate(double value, const QString& format) {
    auto parts = decode(value);
    if (!parts) return {};
    // UTC only so that no local-time gap can move the fields being printed.
    return QDateTime(parts->date, parts->time, Qt::UTC).toString(format);
}

void pinLocalTimeZone() {
    if (qEnvironmentVariableIsSet("TZ")) return;
    qputenv("TZ", ":/etc/localtime");
    tzset();
}

}  // namespace kivdb

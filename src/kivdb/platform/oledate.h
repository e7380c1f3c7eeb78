#pragma once
// The suite's date-time: a double holding days since 1899-12-30 in its integral part and the
// time of day as the fraction. 0 means "no date". Before 1899-12-30 the integral part is
// negative while the fraction still counts forward from midnight: -1.25 is 1899-12-29 06:00.
// Valid values run from 0100-01-01 to 9999-12-31.
#include "base/error.h"

#include <QDate>
#include <QDateTime>
#include <QString>
#include <QTime>
#include <stdexcept>

namespace kivdb {

// A text or a year/month/day that is not a date. Raised to the caller, like any conversion
// error of the framework.
class DateConversionError : public Error {
public:
    explicit DateConversionError(const QString& message);
    QString message() const { return QString::fromUtf8(what()); }
};

inline constexpr double kNoDate = 0.0;

// Wall-clock fields are taken as they are; the time zone of the value plays no part.
// A null or invalid QDateTime/QDate is "no date" (0); a date outside the valid range throws
// DateConversionError.
double toOleDate(const QDateTime& dateTime);
double toOleDate(const QDate& date);

// 0 ("no date"), NaN and values outside the valid range give a null QDateTime. Other values
// give a local date-time with the fields the value encodes.
QDateTime fromOleDate(double value);
// The calendar day of a value (the time is dropped); null for 0 and invalid values.
QDate oleDateToDate(double value);

// The calendar day without the "no date" convention: 0 is 1899-12-30, as the framework
// decodes it when formatting or taking a date apart. Null only for NaN or out-of-range values.
QDate oleDayOf(double value);
// The time of day a value holds (midnight for whole days); null for NaN or out-of-range values.
QTime oleTimeOf(double value);

// The whole-day value of year/month/day. Throws DateConversionError when they name no date.
double encodeOleDate(int year, int month, int day);

// Formats the value's day (and time, if the format asks for it) with QDateTime::toString
// patterns. 0 is formatted as 1899-12-30, as the framework does, so SQL built from a
// zero date keeps its text; NaN and out-of-range values give an empty string.
QString formatOleDate(double value, const QString& format = QStringLiteral("yyyy-MM-dd"));

// Local date-times cost the C library a look at the zone file each when TZ is not set.
// Called once at set-up, before other threads run: sets TZ, when absent, to the system zone
// (":/etc/localtime", which the C library and Qt both read as the default), so the file is
// read once. The zone, and every converted value, stay the same.
void pinLocalTimeZone();

}  // namespace kivdb

#include "platform/oledate.h"

#include <gtest/gtest.h>
#include <ctime>
#include <limits>

namespace kivdb {
namespace {

TEST(OleDate, ConvertsBothWays) {
    const std::pair<double, QDateTime> cases[] = {
        {0.0, {}},  // no date
        {1.0, {QDate(1899, 12, 31), QTime(0, 0)}},      {2.0, {QDate(1900, 1, 1), QTime(0, 0)}},
        {0.25, {QDate(1899, 12, 30), QTime(6, 0)}},     {-1.25, {QDate(1899, 12, 29), QTime(6, 0)}},
        {38777.5, {QDate(2006, 3, 1), QTime(12, 0)}},   {-657434.0, {QDate(100, 1, 1), QTime(0, 0)}},
        {2958465.0, {QDate(9999, 12, 31), QTime(0, 0)}},
        {38777.0 + 45296789.0 / 86400000.0, {QDate(2006, 3, 1), QTime(12, 34, 56, 789)}},
    };
    for (const auto& [value, dateTime] : cases) {
        EXPECT_EQ(fromOleDate(value), dateTime) << value;
        EXPECT_DOUBLE_EQ(toOleDate(dateTime), value) << dateTime.toString(Qt::ISODateWithMs).toStdString();
    }
    EXPECT_DOUBLE_EQ(toOleDate(QDate(2006, 3, 1)), 38777.0);
    EXPECT_DOUBLE_EQ(toOleDate(QDate()), 0.0);
    // Reading rounds to the millisecond, carrying into the next day.
    const std::pair<double, QDateTime> rounded[] = {
        {38777.0 + 0.4 / 86400000.0, {QDate(2006, 3, 1), QTime(0, 0)}},
        {38777.0 + 1.6 / 86400000.0, {QDate(2006, 3, 1), QTime(0, 0, 0, 2)}},
        {38777.9999999999, {QDate(2006, 3, 2), QTime(0, 0)}},
    };
    for (const auto& [value, dateTime] : rounded) EXPECT_EQ(fromOleDate(value), dateTime) << value;
}

// A zone the host names itself stays in force, and a date keeps its wall-clock fields on
// either side of a change to summer time.
TEST(OleDate, PinningTheZoneKeepsTheZoneAHostSet) {
    const QByteArray before = qgetenv("TZ");
    qputenv("TZ", "Europe/Berlin");
    tzset();
    pinLocalTimeZone();
    EXPECT_EQ(qgetenv("TZ"), "Europe/Berlin");
    struct Case {
        QDateTime wallClock;
        int offsetSeconds;
    } cases[] = {
        {{QDate(2026, 3, 29), QTime(1, 59, 59)}, 3600},
        {{QDate(2026, 3, 29), QTime(3, 0)}, 7200},
        {{QDate(2026, 10, 25), QTime(3, 0)}, 3600},
    };
    for (const Case& c : cases) {
        const QDateTime read = fromOleDate(toOleDate(c.wallClock));
        EXPECT_EQ(read, c.wallClock) << c.wallClock.toString(Qt::ISODate).toStdString();
        EXPECT_EQ(read.time(), c.wallClock.time());
        EXPECT_EQ(read.offsetFromUtc(), c.offsetSeconds) << c.wallClock.toString(Qt::ISODate).toStdString();
    }
    if (before.isNull()) qunsetenv("TZ");
    else qputenv("TZ", before);
    tzset();
}

TEST(OleDate, RefusesWhatIsNoDate) {
    for (double value : {-657435.0, 2958466.0, 1e300, std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_TRUE(fromOleDate(value).isNull()) << value;
        EXPECT_EQ(formatOleDate(value), QString()) << value;
    }
    EXPECT_DOUBLE_EQ(encodeOleDate(2004, 2, 29), 38046.0);
    const int invalid[][3] = {{2006, 2, 29}, {1900, 2, 29}, {2006, 13, 1}, {2006, 0, 1}, {99, 12, 31}, {10000, 1, 1}};
    for (const auto& ymd : invalid) EXPECT_THROW(encodeOleDate(ymd[0], ymd[1], ymd[2]), DateConversionError) << ymd[0];
    EXPECT_THROW(toOleDate(QDate(50, 1, 1)), DateConversionError);
    // The zero date is no date, yet formats as the framework formats it.
    EXPECT_TRUE(oleDateToDate(0).isNull());
    EXPECT_EQ(formatOleDate(0), "1899-12-30");
    EXPECT_EQ(formatOleDate(38777.5, "yyyy-MM-dd hh:mm"), "2006-03-01 12:00");
}

}  // namespace
}  // namespace kivdb

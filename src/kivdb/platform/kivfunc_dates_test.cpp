#include "platform/kivfunc.h"

#include <gtest/gtest.h>
#include <limits>

namespace kivdb::kivfunc {
namespace {

TEST(KivfuncPeriods, NextPeriodRollsDecemberAndRefusesNonPeriods) {
    const std::pair<int, int> cases[] = {
        {200601, 200602}, {200611, 200612}, {200612, 200701}, {199912, 200001}, {10001, 10002}, {999911, 999912},
        {999912, 0},      {0, 0},           {200600, 0},      {200613, 0},      {-200601, 0},   {9912, 0},
    };
    for (auto next : {&NextPeriod, &NextTaxPeriod})
        for (auto [period, expected] : cases) EXPECT_EQ(next(period), expected) << period;
}

TEST(KivfuncPeriods, LastDateOfPeriodReadsBack) {
    const std::pair<const char*, const char*> cases[] = {
        {"200601", "2006-01-31"}, {"200602", "2006-02-28"}, {"200402", "2004-02-29"}, {"190002", "1900-02-28"},
        {"200604", "2006-04-30"}, {" 200612 ", "2006-12-31"}, {"", ""}, {"0", ""}, {"200613", ""},
        {"2006-01", ""}, {"99999999999", ""},
    };
    for (auto [period, expected] : cases) {
        QString text = GetPeriodLastDateFromSPeriod(period);
        EXPECT_EQ(text, expected) << period;
        if (!text.isEmpty()) EXPECT_EQ(formatOleDate(GetDateFromString(text)), text);
    }
}

TEST(KivfuncDates, MonthLengths) {
    const int cases[][3] = {{1900, 2, 28}, {2000, 2, 29}, {2004, 2, 29}, {2006, 2, 28}, {2100, 2, 28},
                            {2006, 4, 30}, {2006, 12, 31}, {2006, 0, 0}, {2006, 13, 0}, {0, 1, 0}};
    for (const auto& c : cases) EXPECT_EQ(MonthMaxDay(c[0], c[1]), c[2]) << c[0] << "-" << c[1];
}

TEST(KivfuncDates, DateTextIsRead) {
    const double march1 = 38777.0;
    const std::pair<const char*, double> cases[] = {
        {"2006-03-01", march1}, {"2006-3-1", march1}, {"2006/03/01", march1}, {"2006.03.01", march1},
        {"20060301", march1}, {"2006-03-01 12:00", march1 + 0.5}, {"2006-03-01T06:00:00", march1 + 0.25},
        {"2006-03-01 06:00:00.5", march1 + 0.25 + 0.5 / 86400}, {"", 0}, {"   ", 0},
    };
    for (auto [text, expected] : cases) EXPECT_DOUBLE_EQ(GetDateFromString(text), expected) << text;
    for (const char* bad : {"2006-02-29", "2006-13-01", "abc", "2006-03/01", "2006-03-01 25:00", "0099-01-01", "1.5"})
        EXPECT_THROW(GetDateFromString(bad), DateConversionError) << bad;
}

TEST(KivfuncDates, NextMonthDateClipsToMonthEnd) {
    const std::pair<QDateTime, QDateTime> cases[] = {
        {{QDate(2006, 1, 31), QTime(0, 0)}, {QDate(2006, 2, 28), QTime(0, 0)}},
        {{QDate(2004, 1, 31), QTime(0, 0)}, {QDate(2004, 2, 29), QTime(0, 0)}},
        {{QDate(2006, 12, 15), QTime(0, 0)}, {QDate(2007, 1, 15), QTime(0, 0)}},
        {{QDate(2006, 1, 15), QTime(18, 30)}, {QDate(2006, 2, 15), QTime(18, 30)}},
        {{QDate(1899, 11, 30), QTime(6, 0)}, {QDate(1899, 12, 30), QTime(6, 0)}},
    };
    for (const auto& [from, to] : cases)
        EXPECT_EQ(fromOleDate(NextMonthDate(toOleDate(from))), to) << from.toString(Qt::ISODate).toStdString();
    EXPECT_EQ(NextMonthDate(0), 0);
    EXPECT_THROW(NextMonthDate(encodeOleDate(9999, 12, 1)), DateConversionError);
}

TEST(KivfuncDates, YearMonthDayDecode) {
    const struct { double value; int year, month, day; } cases[] = {
        {0, 1899, 12, 30}, {38777.75, 2006, 3, 1}, {-1.25, 1899, 12, 29}, {std::numeric_limits<double>::quiet_NaN(), 0, 0, 0},
    };
    for (const auto& c : cases)
        EXPECT_EQ((std::array{Year(c.value), Month(c.value), Day(c.value)}), (std::array{c.year, c.month, c.day})) << c.value;
}

}  // namespace
}  // namespace kivdb::kivfunc

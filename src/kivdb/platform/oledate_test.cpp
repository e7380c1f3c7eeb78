#include "platform/oledate.h"

#include <gtest/gtest.h>
#include <cmath>
#include <limits>

namespace kivdb {
namespace {

struct OleCase {
    double value;
    QDateTime dateTime;  // null: "no date" or not a date-time
};

TEST(OleDate, ConvertsBothWays) {
    const OleCase cases[] = {
        {0.0, {}},
        {1.0, QDateTime(QDate(1899, 12, 31), QTime(0, 0))},
        {2.0, QDateTime(QDate(1900, 1, 1), QTime(0, 0))},
        {0.25, QDateTime(QDate(1899, 12, 30), QTime(6, 0))},
        {-1.25, QDateTime(QDate(1899, 12, 29), QTime(6, 0))},
        {36526.0, QDateTime(QDate(2000, 1, 1), QTime(0, 0))},
        {38777.5, QDateTime(QDate(2006, 3, 1), QTime(12, 0))},
        {38777.0 + 45296789.0 / 86400000.0, QDateTime(QDate(2006, 3, 1), QTime(12, 34, 56, 789))},
        {-657434.0, QDateTime(QDate(100, 1, 1), QTime(0, 0))},
        {2958465.0, QDateTime(QDate(9999, 12, 31), QTime(0, 0))},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.value);
        EXPECT_EQ(fromOleDate(c.value), c.dateTime);
        EXPECT_DOUBLE_EQ(toOleDate(c.dateTime), c.value);
    }
}

TEST(OleDate, ValuesThatAreNoDateTime) {
    for (double value : {-657435.0, 2958466.0, std::numeric_limits<double>::quiet_NaN(),
                         std::numeric_limits<double>::infinity(), 1e300}) {
        SCOPED_TRACE(value);
        EXPECT_TRUE(fromOleDate(value).isNull());
        EXPECT_TRUE(oleDayOf(value).isNull());
        EXPECT_EQ(formatOleDate(value), QString());
    }
}

TEST(OleDate, RoundsToTheMillisecondAndCarriesMidnight) {
    EXPECT_EQ(fromOleDate(38777.0 + 0.4 / 86400000.0), QDateTime(QDate(2006, 3, 1), QTime(0, 0)));
    EXPECT_EQ(fromOleDate(38777.0 + 1.6 / 86400000.0), QDateTime(QDate(2006, 3, 1), QTime(0, 0, 0, 2)));
    EXPECT_EQ(fromOleDate(38777.9999999999), QDateTime(QDate(2006, 3, 2), QTime(0, 0)));
}

TEST(OleDate, ZeroDateFormatsAsTheFrameworkDoes) {
    EXPECT_EQ(formatOleDate(0), "1899-12-30");
    EXPECT_EQ(oleDayOf(0), QDate(1899, 12, 30));
    EXPECT_TRUE(oleDateToDate(0).isNull());
    EXPECT_EQ(formatOleDate(38777.5, "yyyy-MM-dd hh:mm"), "2006-03-01 12:00");
}

TEST(OleDate, EncodingRefusesWhatIsNoDate) {
    EXPECT_DOUBLE_EQ(encodeOleDate(2004, 2, 29), 38046.0);
    EXPECT_DOUBLE_EQ(encodeOleDate(1899, 12, 29), -1.0);
    EXPECT_DOUBLE_EQ(toOleDate(QDate(2006, 3, 1)), 38777.0);
    EXPECT_DOUBLE_EQ(toOleDate(QDate()), 0.0);
    const int invalid[][3] = {{2006, 2, 29}, {1900, 2, 29}, {2006, 13, 1}, {2006, 0, 1}, {99, 12, 31}, {10000, 1, 1}, {0, 0, 0}};
    for (const auto& ymd : invalid)
        EXPECT_THROW(encodeOleDate(ymd[0], ymd[1], ymd[2]), DateConversionError) << ymd[0] << "-" << ymd[1] << "-" << ymd[2];
    EXPECT_THROW(toOleDate(QDate(50, 1, 1)), DateConversionError);
}

}  // namespace
}  // namespace kivdb

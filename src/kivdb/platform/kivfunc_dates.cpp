// Periods and dates.
#include "platform/kivfunc.h"

#include "dialect/dialect.h"

#include <QRegularExpression>

namespace kivdb::kivfunc {

namespace {

struct YearMonth {
    int year = 0;
    int month = 0;
};

// Year and month of a period, or nothing when the number is no period.
std::optional<YearMonth> splitPeriod(qint64 period) {
    qint64 year = period / 100;
    int month = int(period % 100);
    if (year < 100 || year > 9999 || month < 1 || month > 12) return std::nullopt;
    return YearMonth{int(year), month};
}

int periodOf(YearMonth ym) { return ym.year * 100 + ym.month; }

}  // namespace

int NextPeriod(int period) {
    auto ym = splitPeriod(period);
    if (!ym) return 0;
    YearMonth next = ym->month == 12 ? YearMonth{ym->year + 1, 1} : YearMonth{ym->year, ym->month + 1};
    return splitPeriod(periodOf(next)) ? periodOf(next) : 0;
}

int NextTaxPeriod(int period) { return NextPeriod(period); }

QString GetPeriodLastDateFromSPeriod(const QString& period) {
    bool ok = false;
    qint64 number = period.trimmed().toLongLong(&ok);
    auto ym = ok ? splitPeriod(number) : std::nullopt;
    if (!ym) return {};
    return QDate(ym->year, ym->month, MonthMaxDay(ym->year, ym->month)).toString(QStringLiteral("yyyy-MM-dd"));
}

double GetDateFromString(const QString& text) {
    static const QRegularExpression separated(QStringLiteral(
        R"(^(\d{4})([-/.])(\d{1,2})\2(\d{1,2})(?:(?:\s+|T)(\d{1,2}):(\d{2})(?::(\d{2})(?:\.(\d{1,3}))?)?)?$)"));
    static const QRegularExpression compact(QStringLiteral(R"(^(\d{4})(\d{2})(\d{2})$)"));
    QString trimmed = text.trimmed();
    if (trimmed.isEmpty()) return kNoDate;

    QDate date;
    QTime time(0, 0);
    bool timeOk = true;
    if (auto m = separated.match(trimmed); m.hasMatch()) {
        date = QDate(m.captured(1).toInt(), m.captured(3).toInt(), m.captured(4).toInt());
        if (m.hasCaptured(5)) {
            // "5" after the point is half a second, as a decimal fraction reads.
            int msecs = m.hasCaptured(8) ? m.captured(8).leftJustified(3, QLatin1Char('0')).toInt() : 0;
            time = QTime(m.captured(5).toInt(), m.captured(6).toInt(), m.captured(7).toInt(), msecs);
            timeOk = time.isValid();
        }
    } else if (auto c = compact.match(trimmed); c.hasMatch()) {
        date = QDate(c.captured(1).toInt(), c.captured(2).toInt(), c.captured(3).toInt());
    }
    if (!date.isValid() || !timeOk)
        throw DateConversionError(QStringLiteral("'%1' is not a valid date").arg(dialect::quotedExcerpt(text)));
    return toOleDate(QDateTime(date, time, Qt::UTC));
}

double NextMonthDate(double date) {
    if (date == kNoDate) return kNoDate;
    QDate day = oleDayOf(date);
    if (!day.isValid())
        throw DateConversionError(QStringLiteral("%1 is not a valid date-time value").arg(date));
    // addMonths clips to the last day of a shorter month.
    return toOleDate(QDateTime(day.addMonths(1), oleTimeOf(date), Qt::UTC));
}

int MonthMaxDay(int year, int month) {
    if (year < 1 || year > 9999 || month < 1 || month > 12) return 0;
    return QDate(year, month, 1).daysInMonth();
}

int Year(double date) { return oleDayOf(date).year(); }
int Month(double date) { return oleDayOf(date).month(); }
int Day(double date) { return oleDayOf(date).day(); }

}  // namespace kivdb::kivfunc

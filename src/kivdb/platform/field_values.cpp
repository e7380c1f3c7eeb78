#include "platform/field_values.h"

#include "dialect/dialect.h"

#include "platform/kivfunc.h"
#include "platform/oledate.h"

#include <cmath>

namespace kivdb {

namespace {

bool isNull(const Value& value) { return !value.isValid() || value.isNull(); }

[[noreturn]] void cannotConvert(const Value& value, const char* target) {
    throw ValueError(QStringLiteral("'%1' is not a valid %2 value")
                         .arg(dialect::quotedExcerpt(value.toString()), QLatin1String(target)));
}

// A date-time or date value, or date text as the suite writes it (read by the utility
// library's date reader); blank text is no date.
OleDate dateOf(const Value& value) {
    if (value.typeId() == QMetaType::QDateTime) return toOleDate(value.toDateTime());
    if (value.typeId() == QMetaType::QDate) return toOleDate(value.toDate());
    if (value.toString().trimmed().isEmpty()) cannotConvert(value, "date");
    try {
        return kivfunc::GetDateFromString(value.toString());
    } catch (const DateConversionError&) {
        cannotConvert(value, "date");
    }
}

}  // namespace

QString fieldText(const Value& value) {
    if (isNull(value)) return {};
    switch (value.typeId()) {
    case QMetaType::Bool:
        // The data layer's Boolean field shows its value as a word.
        return value.toBool() ? QStringLiteral("True") : QStringLiteral("False");
    case QMetaType::Double: {
        // General format: as few digits as read back to the same value.
        return QString::number(value.toDouble(), 'g', QLocale::FloatingPointShortest);
    }
    case QMetaType::QDateTime: {
        const QDateTime dt = value.toDateTime();
        return dt.time() == QTime(0, 0) ? dt.date().toString(QStringLiteral("yyyy-MM-dd"))
                                        : dt.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    }
    default:
        return value.toString();
    }
}

double fieldFloat(const Value& value) {
    if (isNull(value)) return 0;
    switch (value.typeId()) {
    case QMetaType::Bool: return value.toBool() ? 1 : 0;
    case QMetaType::QDateTime:
    case QMetaType::QDate: return dateOf(value);
    case QMetaType::QString: {
        bool ok = false;
        const double d = value.toString().trimmed().toDouble(&ok);
        if (!ok) cannotConvert(value, "floating point");
        return d;
    }
    default: {
        bool ok = false;
        const double d = value.toDouble(&ok);
        if (!ok) cannotConvert(value, "floating point");
        return d;
    }
    }
}

int fieldInt(const Value& value) {
    if (isNull(value)) return 0;
    if (value.typeId() == QMetaType::QString) {
        bool ok = false;
        const int i = value.toString().trimmed().toInt(&ok);
        if (!ok) cannotConvert(value, "integer");
        return i;
    }
    const double d = fieldFloat(value);
    if (!(std::fabs(d) < 2147483648.0)) cannotConvert(value, "integer");
    return int(std::lround(d));
}

OleDate fieldDate(const Value& value) {
    if (isNull(value)) return 0;
    switch (value.typeId()) {
    case QMetaType::QString:
    case QMetaType::QDateTime:
    case QMetaType::QDate: return dateOf(value);
    default: return fieldFloat(value);
    }
}

bool fieldBool(const Value& value) {
    if (isNull(value)) return false;
    if (value.typeId() == QMetaType::QString) {
        const QString text = value.toString().trimmed();
        if (text.compare(QLatin1String("true"), Qt::CaseInsensitive) == 0) return true;
        if (text.compare(QLatin1String("false"), Qt::CaseInsensitive) == 0) return false;
        bool ok = false;
        const double d = text.toDouble(&ok);
        if (!ok) cannotConvert(value, "Boolean");
        return d != 0;
    }
    return fieldFloat(value) != 0;
}

}  // namespace kivdb

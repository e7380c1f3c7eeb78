#include "platform/connection_support.h"

#include "dialect/sqlite_catalog.h"

#include <QRegularExpression>

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

QDateTime parseDateTimeText(const QString& text) {
    static const QRegularExpression pattern(QStringLiteral(
        R"(^\s*(\d{4})-(\d{1,2})-(\d{1,2})(?:[ T](\d{1,2}):(\d{2})(?::(\d{2})(?:\.(\d{1,3})\d*)?)?)?\s*$)"));
    const auto m = pattern.match(text);
    if (!m.hasMatch()) return {};
    const QDate date(m.captured(1).toInt(), m.captured(2).toInt(), m.captured(3).toInt());
    // ".5" is half a second: pad the fraction to milliseconds before reading it.
    const int millis = m.captured(7).leftJustified(3, QLatin1Char('0')).toInt();
    const QTime time(m.captured(4).toInt(), m.captured(5).toInt(), m.captured(6).toInt(), millis);
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

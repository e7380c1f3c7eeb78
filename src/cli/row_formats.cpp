#include "cli/row_formats.h"

#include <QDateTime>
#include <QLocale>
#include <algorithm>
#include <cmath>

namespace kivdb::cli {

namespace {

bool isNull(const Value& value) { return !value.isValid(); }

// A non-null value as text, the same in every format; money and decimals with the digits
// after the point the server shows for their column.
QString plainText(const Value& value, const Column& column) {
    switch (value.typeId()) {
    case QMetaType::Bool: return value.toBool() ? QStringLiteral("1") : QStringLiteral("0");
    case QMetaType::Double:
        if (column.scale >= 0 && std::isfinite(value.toDouble())) return QString::number(value.toDouble(), 'f', column.scale);
        return QString::number(value.toDouble(), 'f', QLocale::FloatingPointShortest);
    case QMetaType::QDateTime: {
        const QDateTime when = value.toDateTime();
        return when.toString(when.time().msec() ? QStringLiteral("yyyy-MM-dd HH:mm:ss.zzz")
                                                : QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    }
    case QMetaType::QByteArray: return QStringLiteral("0x") + QString::fromLatin1(value.toByteArray().toHex());
    default: return value.toString();
    }
}

QString textField(const Value& value, const Column& column) {
    if (isNull(value)) return QStringLiteral("NULL");
    QString text = plainText(value, column);
    if (text == QLatin1String("NULL")) return QStringLiteral("\\NULL");
    text.replace(QLatin1Char('\\'), QLatin1String("\\\\"));
    text.replace(QLatin1Char('\t'), QLatin1String("\\t"));
    text.replace(QLatin1Char('\n'), QLatin1String("\\n"));
    text.replace(QLatin1Char('\r'), QLatin1String("\\r"));
    return text;
}

QString csvField(const QString& text) {
    static const QString needsQuotes = QStringLiteral(",\"\r\n");
    const bool quoted = text.isEmpty() || std::any_of(text.begin(), text.end(), [](QChar c) {
                            return needsQuotes.contains(c);
                        });
    if (!quoted) return text;
    return QLatin1Char('"') + QString(text).replace(QLatin1Char('"'), QLatin1String("\"\"")) + QLatin1Char('"');
}

QString jsonString(const QString& text) {
    QString out = QStringLiteral("\"");
    for (const QChar c : text) {
        switch (c.unicode()) {
        case '"': out += QLatin1String("\\\""); break;
        case '\\': out += QLatin1String("\\\\"); break;
        case '\n': out += QLatin1String("\\n"); break;
        case '\r': out += QLatin1String("\\r"); break;
        case '\t': out += QLatin1String("\\t"); break;
        default:
            if (c.unicode() < 0x20) out += QStringLiteral("\\u%1").arg(c.unicode(), 4, 16, QLatin1Char('0'));
            else out += c;
        }
    }
    return out + QLatin1Char('"');
}

QString jsonValue(const Value& value, const Column& column) {
    if (isNull(value)) return QStringLiteral("null");
    switch (value.typeId()) {
    case QMetaType::Bool: return value.toBool() ? QStringLiteral("true") : QStringLiteral("false");
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong: return value.toString();
    case QMetaType::Double:
        if (std::isfinite(value.toDouble())) return plainText(value, column);
        break;
    default: break;
    }
    return jsonString(plainText(value, column));
}

// Object keys: the column names, with an empty or repeated one replaced by column_N.
QStringList jsonKeys(const std::vector<Column>& columns) {
    QStringList keys;
    for (size_t i = 0; i < columns.size(); ++i) {
        const QString& name = columns[i].name;
        keys << (name.isEmpty() || keys.contains(name) ? QStringLiteral("column_%1").arg(i + 1) : name);
    }
    return keys;
}

QString text(const RowSet& rows) {
    QString out;
    for (const auto& row : rows.rows) {
        QStringList fields;
        for (size_t i = 0; i < row.size(); ++i) fields << textField(row[i], rows.columns[i]);
        out += fields.join(QLatin1Char('\t')) + QLatin1Char('\n');
    }
    return out;
}

QString csv(const RowSet& rows) {
    if (rows.columns.empty()) return {};  // a statement without a result
    QStringList header;
    for (size_t i = 0; i < rows.columns.size(); ++i) {
        const QString& name = rows.columns[i].name;
        header << csvField(name.isEmpty() ? QStringLiteral("column_%1").arg(i + 1) : name);
    }
    QString out = header.join(QLatin1Char(',')) + QLatin1String("\r\n");
    for (const auto& row : rows.rows) {
        QStringList fields;
        for (size_t i = 0; i < row.size(); ++i)
            fields << (isNull(row[i]) ? QString() : csvField(plainText(row[i], rows.columns[i])));
        out += fields.join(QLatin1Char(',')) + QLatin1String("\r\n");
    }
    return out;
}

QString json(const RowSet& rows) {
    const QStringList keys = jsonKeys(rows.columns);
    QStringList objects;
    for (const auto& row : rows.rows) {
        QStringList members;
        for (size_t i = 0; i < row.size(); ++i) members << jsonString(keys[int(i)]) + QLatin1Char(':') + jsonValue(row[i], rows.columns[i]);
        objects << QLatin1Char('{') + members.join(QLatin1Char(',')) + QLatin1Char('}');
    }
    return objects.isEmpty() ? QStringLiteral("[]\n") : QLatin1String("[\n") + objects.join(QLatin1String(",\n")) + QLatin1String("\n]\n");
}

}  // namespace

QByteArray formatRows(const RowSet& rows, RowFormat format) {
    switch (format) {
    case RowFormat::Text: return text(rows).toUtf8();
    case RowFormat::Csv: return csv(rows).toUtf8();
    case RowFormat::Json: return json(rows).toUtf8();
    }
    return {};
}

}  // namespace kivdb::cli

#include "cli/row_formats.h"

#include <QDateTime>
#include <QLocale>
#include <algorithm>
#include <cmath>
#include <cstdio>

namespace kivdb::cli {

namespace {

bool isNull(const Value& value) { return !value.isValid(); }

// yyyy-MM-dd HH:mm:ss, with .zzz when there are milliseconds; written out by hand, as
// every date of a big result comes here.
QString dateTimeText(const QDateTime& when) {
    const QDate d = when.date();
    const QTime t = when.time();
    char text[32];
    const int length = t.msec() ? std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d.%03d", d.year(), d.month(),
                                                d.day(), t.hour(), t.minute(), t.second(), t.msec())
                                : std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d", d.year(), d.month(),
                                                d.day(), t.hour(), t.minute(), t.second());
    return QString::fromLatin1(text, length);
}

// A non-null value as text, the same in every format; money and decimals with the digits
// after the point the server shows for their column.
QString plainText(const Value& value, const Column& column) {
    switch (value.typeId()) {
    case QMetaType::Bool: return value.toBool() ? QStringLiteral("1") : QStringLiteral("0");
    case QMetaType::Double:
        if (column.scale >= 0 && std::isfinite(value.toDouble())) return QString::number(value.toDouble(), 'f', column.scale);
        return QString::number(value.toDouble(), 'f', QLocale::FloatingPointShortest);
    case QMetaType::QDateTime: return dateTimeText(value.toDateTime());
    case QMetaType::QByteArray: return QStringLiteral("0x") + QString::fromLatin1(value.toByteArray().toHex());
    default: return value.toString();
    }
}

// Appends `text` with each character `escape` answers for replaced by that answer (null: kept).
template <typename Escape>
void appendEscaped(QString& out, const QString& text, Escape escape) {
    const QChar* run = text.constBegin();
    for (const QChar* c = run; c != text.constEnd(); ++c) {
        const QLatin1String replacement = escape(*c);
        if (replacement.isNull()) continue;
        out.append(run, c - run).append(replacement);
        run = c + 1;
    }
    out.append(run, text.constEnd() - run);
}

QLatin1String textEscape(QChar c) {
    switch (c.unicode()) {
    case '\\': return QLatin1String("\\\\");
    case '\t': return QLatin1String("\\t");
    case '\n': return QLatin1String("\\n");
    case '\r': return QLatin1String("\\r");
    default: return QLatin1String();
    }
}

void appendTextField(QString& out, const Value& value, const Column& column) {
    if (isNull(value)) {
        out += QLatin1String("NULL");
        return;
    }
    const QString text = plainText(value, column);
    if (text == QLatin1String("NULL")) out += QLatin1String("\\NULL");
    else appendEscaped(out, text, textEscape);
}

void appendCsvField(QString& out, const QString& text) {
    const bool quoted = text.isEmpty() || std::any_of(text.begin(), text.end(), [](QChar c) {
                            return c == QLatin1Char(',') || c == QLatin1Char('"') || c == QLatin1Char('\r') ||
                                   c == QLatin1Char('\n');
                        });
    if (!quoted) {
        out += text;
        return;
    }
    out += QLatin1Char('"');
    appendEscaped(out, text, [](QChar c) { return c == QLatin1Char('"') ? QLatin1String("\"\"") : QLatin1String(); });
    out += QLatin1Char('"');
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

// Formatted text waiting to go out, written once it reaches about a megabyte.
class Output {
public:
    explicit Output(FILE* out) : out_(out) {}
    QString& text() { return pending_; }
    void writeIfFull() {
        if (pending_.size() >= kPieceChars) write();
    }
    void write() {
        const QByteArray bytes = pending_.toUtf8();
        std::fwrite(bytes.constData(), 1, size_t(bytes.size()), out_);
        pending_.truncate(0);
    }

private:
    static constexpr qsizetype kPieceChars = 512 * 1024;
    FILE* out_;
    QString pending_;
};

void appendText(QString& out, const std::vector<Value>& row, const std::vector<Column>& columns) {
    for (size_t i = 0; i < row.size(); ++i) {
        if (i) out += QLatin1Char('\t');
        appendTextField(out, row[i], columns[i]);
    }
    out += QLatin1Char('\n');
}

void appendCsvHeader(QString& out, const std::vector<Column>& columns) {
    for (size_t i = 0; i < columns.size(); ++i) {
        if (i) out += QLatin1Char(',');
        const QString& name = columns[i].name;
        appendCsvField(out, name.isEmpty() ? QStringLiteral("column_%1").arg(i + 1) : name);
    }
    out += QLatin1String("\r\n");
}

void appendCsv(QString& out, const std::vector<Value>& row, const std::vector<Column>& columns) {
    for (size_t i = 0; i < row.size(); ++i) {
        if (i) out += QLatin1Char(',');
        if (!isNull(row[i])) appendCsvField(out, plainText(row[i], columns[i]));
    }
    out += QLatin1String("\r\n");
}

void appendJson(QString& out, const std::vector<Value>& row, const std::vector<Column>& columns, const QStringList& keys,
                bool first) {
    out += first ? QLatin1String("[\n{") : QLatin1String(",\n{");
    for (size_t i = 0; i < row.size(); ++i) {
        if (i) out += QLatin1Char(',');
        out += jsonString(keys[int(i)]) + QLatin1Char(':') + jsonValue(row[i], columns[i]);
    }
    out += QLatin1Char('}');
}

}  // namespace

void writeRows(Cursor& rows, RowFormat format, FILE* out) {
    constexpr int kPageRows = 1000;
    const std::vector<Column>& columns = rows.columns();
    const QStringList keys = format == RowFormat::Json ? jsonKeys(columns) : QStringList();
    Output output(out);
    QString& text = output.text();
    // A statement without a result prints no CSV header.
    if (format == RowFormat::Csv && !columns.empty()) appendCsvHeader(text, columns);
    bool first = true;
    while (!rows.atEnd()) {
        for (const auto& row : rows.fetch(kPageRows)) {
            switch (format) {
            case RowFormat::Text: appendText(text, row, columns); break;
            case RowFormat::Csv: appendCsv(text, row, columns); break;
            case RowFormat::Json: appendJson(text, row, columns, keys, first); break;
            }
            first = false;
        }
        output.writeIfFull();
    }
    if (format == RowFormat::Json) text += first ? QLatin1String("[]\n") : QLatin1String("\n]\n");
    output.write();
}

}  // namespace kivdb::cli

#include "testing/spreadsheet_reader.h"

#include <QFile>
#include <QXmlStreamReader>
#include <zlib.h>

namespace kivdb::testing {

namespace {

quint32 le(const QByteArray& data, qsizetype at, int bytes) {
    if (at < 0 || at + bytes > data.size()) return 0;
    quint32 value = 0;
    for (int i = bytes - 1; i >= 0; --i) value = value << 8 | quint8(data[at + i]);
    return value;
}

QByteArray inflateRaw(const QByteArray& packed, quint32 size) {
    QByteArray out(qsizetype(size), Qt::Uninitialized);
    z_stream stream = {};
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(packed.constData()));
    stream.avail_in = uInt(packed.size());
    stream.next_out = reinterpret_cast<Bytef*>(out.data());
    stream.avail_out = uInt(out.size());
    if (inflateInit2(&stream, -MAX_WBITS) != Z_OK) return {};
    const int rc = inflate(&stream, Z_FINISH);
    inflateEnd(&stream);
    return rc == Z_STREAM_END ? out : QByteArray();
}

// Number formats the format knows by number alone.
const std::map<int, QString> kBuiltInFormats = {{1, "0"}, {2, "0.00"}, {3, "#,##0"}, {4, "#,##0.00"}};

// The number format of each cell style, by the style's index.
QStringList styleFormats(const QByteArray& styles) {
    std::map<int, QString> custom = kBuiltInFormats;
    QStringList formats;
    QXmlStreamReader xml(styles);
    bool inCellStyles = false;
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isStartElement() && xml.name() == u"numFmt")
            custom[xml.attributes().value("numFmtId").toInt()] = xml.attributes().value("formatCode").toString();
        else if (xml.name() == u"cellXfs")
            inCellStyles = xml.isStartElement();
        else if (inCellStyles && xml.isStartElement() && xml.name() == u"xf") {
            const int id = xml.attributes().value("numFmtId").toInt();
            formats << (id == 0 ? QString() : custom.count(id) ? custom[id] : QStringLiteral("#%1").arg(id));
        }
    }
    return formats;
}

int columnIndex(QStringView reference) {
    int index = 0;
    for (const QChar c : reference) {
        if (!c.isLetter()) break;
        index = index * 26 + (c.unicode() - 'A' + 1);
    }
    return index - 1;
}

}  // namespace

std::map<QString, QByteArray> readZipEntries(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return {};
    const QByteArray zip = file.readAll();
    qsizetype end = zip.size() - 22;
    while (end >= 0 && le(zip, end, 4) != 0x06054b50) --end;
    if (end < 0) return {};
    std::map<QString, QByteArray> entries;
    qsizetype at = le(zip, end + 16, 4);
    for (quint32 n = le(zip, end + 10, 2); n > 0 && le(zip, at, 4) == 0x02014b50; --n) {
        const quint32 method = le(zip, at + 10, 2), packedSize = le(zip, at + 20, 4), size = le(zip, at + 24, 4);
        const quint32 nameLength = le(zip, at + 28, 2);
        const qsizetype local = le(zip, at + 42, 4);
        const QString name = QString::fromUtf8(zip.mid(at + 46, nameLength));
        const QByteArray packed = zip.mid(local + 30 + le(zip, local + 26, 2) + le(zip, local + 28, 2), packedSize);
        entries[name] = method == 0 ? packed : inflateRaw(packed, size);
        at += 46 + nameLength + le(zip, at + 30, 2) + le(zip, at + 32, 2);
    }
    return entries;
}

QList<QStringList> readSheet(const QString& path, int sheet) {
    auto entries = readZipEntries(path);
    const auto part = entries.find(QStringLiteral("xl/worksheets/sheet%1.xml").arg(sheet));
    if (part == entries.end()) return {};
    const QStringList formats = styleFormats(entries[QStringLiteral("xl/styles.xml")]);
    QList<QStringList> rows;
    QXmlStreamReader xml(part->second);
    QString type, format, value;
    int column = 0;
    while (!xml.atEnd()) {
        xml.readNext();
        if (!xml.isStartElement() && !xml.isEndElement()) continue;
        if (xml.name() == u"row" && xml.isStartElement()) {
            while (rows.size() < xml.attributes().value("r").toInt()) rows.append(QStringList());
        } else if (xml.name() == u"c" && xml.isStartElement()) {
            type = xml.attributes().value("t").toString();
            format = formats.value(xml.attributes().value("s").toInt());
            column = columnIndex(xml.attributes().value("r"));
            value.clear();
        } else if ((xml.name() == u"v" || xml.name() == u"t") && xml.isStartElement()) {
            value += xml.readElementText();
        } else if (xml.name() == u"c") {
            QString cell = type == u"inlineStr" || type == u"str" ? u'\'' + value
                           : type == u"b"                         ? QString(value == u"1" ? "TRUE" : "FALSE")
                                                                  : value;
            if (type.isEmpty() || type == u"n") cell += format.isEmpty() ? QString() : " @ " + format;
            QStringList& row = rows.last();
            while (row.size() < column) row.append(QString());
            row.append(cell);
        }
    }
    return rows;
}

}  // namespace kivdb::testing

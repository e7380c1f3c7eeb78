#include "platform/host_text.h"

#include "platform/field_values.h"

#include <QStringDecoder>
#include <QStringEncoder>

namespace kivdb {

namespace {

constexpr char16_t kEuro = 0x20AC;
constexpr char kGbkEuroByte = char(0x80);

bool isAscii(QByteArrayView bytes) {
    for (char c : bytes)
        if (uchar(c) >= 0x80) return false;
    return true;
}

[[noreturn]] void refuseBytes(const char* encoding, QByteArrayView bytes, qsizetype at) {
    if (at < 0)
        throw ValueError(QStringLiteral("文本含有 %1 编码以外的字节，未执行").arg(QLatin1String(encoding)),
                         ErrorKind::Argument);
    throw ValueError(QStringLiteral("文本第 %1 字节 0x%2 起不是有效的 %3 编码，未执行")
                         .arg(at + 1)
                         .arg(uint(uchar(bytes[at])), 2, 16, QLatin1Char('0'))
                         .arg(QLatin1String(encoding)),
                         ErrorKind::Argument);
}

bool inRange(uchar b, uchar low, uchar high) { return b >= low && b <= high; }

// The length of the GB18030 sequence at i, 0 when the bytes there are not one. A single
// 0x80 counts as the GBK euro sign.
qsizetype gb18030SequenceAt(QByteArrayView bytes, qsizetype i) {
    const auto at = [&](qsizetype k) { return k < bytes.size() ? uchar(bytes[k]) : uchar(0); };
    const uchar lead = at(i);
    if (lead <= 0x80) return 1;
    if (lead == 0xFF) return 0;
    const uchar second = at(i + 1);
    if (inRange(second, 0x40, 0x7E) || inRange(second, 0x80, 0xFE)) return 2;
    if (inRange(second, 0x30, 0x39) && inRange(at(i + 2), 0x81, 0xFE) && inRange(at(i + 3), 0x30, 0x39))
        return 4;
    return 0;
}

// Opening the converter by name costs more than converting a short value, so each thread
// keeps one of each, its state cleared before every use.
QStringDecoder& gb18030Decoder() {
    thread_local QStringDecoder decoder("GB18030", QStringConverter::Flag::Stateless);
    decoder.resetState();
    return decoder;
}

QStringEncoder& gb18030Encoder() {
    thread_local QStringEncoder encoder("GB18030", QStringConverter::Flag::Stateless);
    encoder.resetState();
    return encoder;
}

QString decodeGb18030(QByteArrayView bytes) {
    QString text;
    qsizetype start = 0;
    // Runs between euro bytes go through the converter whole.
    auto decodeRun = [&](qsizetype end) {
        if (end == start) return;
        QStringDecoder& decoder = gb18030Decoder();
        text += decoder.decode(bytes.sliced(start, end - start));
        if (decoder.hasError()) refuseBytes("GB18030", bytes, -1);
    };
    for (qsizetype i = 0; i < bytes.size();) {
        const qsizetype length = gb18030SequenceAt(bytes, i);
        if (length == 0) refuseBytes("GB18030", bytes, i);
        if (length == 1 && bytes[i] == kGbkEuroByte) {
            decodeRun(i);
            text += QChar(kEuro);
            start = i + 1;
        }
        i += length;
    }
    decodeRun(bytes.size());
    return text;
}

QByteArray encodeGb18030(const QString& text) {
    QByteArray bytes;
    const QStringView view(text);
    qsizetype start = 0;
    auto encodeRun = [&](qsizetype end) {
        if (end == start) return;
        bytes += gb18030Encoder().encode(view.sliced(start, end - start));
    };
    for (qsizetype i = 0; i < view.size(); ++i) {
        if (view[i] != kEuro) continue;
        encodeRun(i);
        bytes += kGbkEuroByte;
        start = i + 1;
    }
    encodeRun(view.size());
    return bytes;
}

}  // namespace

std::optional<HostEncoding> hostEncodingNamed(QByteArrayView name) {
    const QByteArray n = name.toByteArray().toUpper();
    if (n == "UTF-8" || n == "UTF8") return HostEncoding::Utf8;
    if (n == "GB18030" || n == "GBK" || n == "CP936") return HostEncoding::Gb18030;
    return std::nullopt;
}

QString decodeHostText(QByteArrayView bytes, HostEncoding encoding) {
    if (isAscii(bytes)) return QString::fromLatin1(bytes);
    if (encoding == HostEncoding::Gb18030) return decodeGb18030(bytes);
    QStringDecoder decoder(QStringConverter::Utf8, QStringConverter::Flag::Stateless);
    QString text = decoder.decode(bytes);
    if (decoder.hasError()) refuseBytes("UTF-8", bytes, -1);
    return text;
}

QByteArray encodeHostText(const QString& text, HostEncoding encoding) {
    if (encoding == HostEncoding::Utf8) return text.toUtf8();
    return encodeGb18030(text);
}

}  // namespace kivdb

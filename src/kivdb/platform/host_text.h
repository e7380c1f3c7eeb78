#pragma once
// Text crossing the C interface as the host's bytes. The default is GB18030: byte for byte
// what GBK hosts already send for every GBK character, and four-byte sequences for the rest
// of Unicode, so text read from the database reaches the host without loss and comes back
// unchanged. The one GBK byte GB18030 lacks, 0x80 for the euro sign, is kept as GBK has it.
// UTF-8 is the other choice. Bytes that are not text in the encoding (a stray lead byte, a
// truncated sequence) are refused: guessing would store something the host never meant.
#include <QByteArray>
#include <QString>
#include <optional>

namespace kivdb {

enum class HostEncoding { Gb18030, Utf8 };

// "GB18030", "GBK", "CP936" or "UTF-8"/"UTF8", any case; nullopt for another name.
std::optional<HostEncoding> hostEncodingNamed(QByteArrayView name);

// Throws ValueError naming the first byte that is not text in the encoding.
QString decodeHostText(QByteArrayView bytes, HostEncoding encoding);
QByteArray encodeHostText(const QString& text, HostEncoding encoding);

}  // namespace kivdb

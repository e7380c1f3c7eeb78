#include "platform/field_values.h"
#include "platform/host_text.h"

#include <gtest/gtest.h>

namespace kivdb {
namespace {

// Characters GBK lacks reach a GB18030 host as the standard's four-byte sequences and come
// back unchanged; GBK's own characters keep GBK's bytes. Expected bytes are the standard's.
TEST(HostText, Gb18030CarriesEveryCharacterBothWays) {
    struct Case {
        const char* utf8;
        QByteArray gb18030;
    } cases[] = {
        {"a\U00020000b", QByteArray::fromHex("619532823662")},  // outside the BMP
        {"\U0001F600", QByteArray::fromHex("9439fc36")},
        {"ß", QByteArray::fromHex("81308938")},
        {"₩", QByteArray::fromHex("8136b239")},
        {"\u00a0", QByteArray::fromHex("81308432")},
        {"한", QByteArray::fromHex("83368433")},
        {"华东甲", QByteArray::fromHex("bbaab6abbcd7")},  // GBK's two-byte characters
        {"€5", QByteArray::fromHex("8035")},  // the euro keeps GBK's single byte
        {"Qty = 1", "Qty = 1"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.utf8);
        const QString text = QString::fromUtf8(c.utf8);
        EXPECT_EQ(encodeHostText(text, HostEncoding::Gb18030).toHex(), c.gb18030.toHex());
        EXPECT_EQ(decodeHostText(c.gb18030, HostEncoding::Gb18030), text);
        EXPECT_EQ(decodeHostText(encodeHostText(text, HostEncoding::Utf8), HostEncoding::Utf8), text);
    }
    // A GB18030 host that sends the euro as its two-byte code is understood too.
    EXPECT_EQ(decodeHostText(QByteArray::fromHex("a2e3"), HostEncoding::Gb18030), QString::fromUtf8("€"));
}

TEST(HostText, BytesThatAreNotTextAreRefused) {
    struct Case {
        QByteArray bytes;
        HostEncoding encoding;
        const char* why;
    } cases[] = {
        {"a\x81 b", HostEncoding::Gb18030, "a lead byte followed by a blank"},
        {"a\x81", HostEncoding::Gb18030, "a lead byte at the end"},
        {"a\xff", HostEncoding::Gb18030, "0xFF is no lead byte"},
        {"a\x81\x30\x81", HostEncoding::Gb18030, "a truncated four-byte sequence"},
        {QByteArray::fromHex("61e3329a36"), HostEncoding::Gb18030, "a four-byte sequence beyond Unicode"},
        {"a\xff", HostEncoding::Utf8, "0xFF is never UTF-8"},
        {"a\xe4\xb8", HostEncoding::Utf8, "a truncated sequence"},
        {"\xed\xa0\x80", HostEncoding::Utf8, "an encoded surrogate"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.why);
        EXPECT_THROW(decodeHostText(c.bytes, c.encoding), ValueError);
    }
}

}  // namespace
}  // namespace kivdb

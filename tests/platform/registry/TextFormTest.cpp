#include "platform/registry/TextForm.h"

#include "platform/registry/Registry.h"
#include "runtime/CodePage.h"

#include <gtest/gtest.h>

#include <random>

using namespace Qt::StringLiterals;
using namespace registry;

namespace {

StoredValue text(const char *content)
{
    return {REG_SZ, QByteArray(content) + '\0'};
}

std::string shown(const StoredValue &value)
{
    return valueText(value).toStdString();
}

void expectReturns(const StoredValue &value)
{
    const auto back = valueFromText(valueText(value));
    ASSERT_TRUE(back) << shown(value);
    EXPECT_EQ(back->type, value.type) << shown(value);
    EXPECT_EQ(back->data.toHex(), value.data.toHex()) << shown(value);
}

std::string name(QStringView plain)
{
    return escapedName(plain).toStdString();
}

} // namespace

TEST(TextFormName, StandsAsItIs)
{
    EXPECT_EQ(name(u"Brennmark AS"), "Brennmark AS");
    EXPECT_EQ(name(u"Regningsdel\\Forms\\frmOrdre"), "Regningsdel\\Forms\\frmOrdre");
    EXPECT_EQ(name(u"Blåbærsyltetøy & sønn"), "Blåbærsyltetøy & sønn");
    EXPECT_EQ(name(u"v1.2"), "v1.2");
}

TEST(TextFormName, EscapesWhatWouldMislead)
{
    EXPECT_EQ(name(u"a=b"), "a%3db");
    EXPECT_EQ(name(u"a]b[c"), "a%5db%5bc");
    EXPECT_EQ(name(u";a#"), "%3ba%23");
    EXPECT_EQ(name(u"100%"), "100%25");
    EXPECT_EQ(name(u"a/b"), "a%2fb");
    EXPECT_EQ(name(u"a\r\nb\tc"), "a%0d%0ab%09c");
    EXPECT_EQ(name(u" a b "), "%20a b%20");
    EXPECT_EQ(name(u".."), "%2e%2e");
    EXPECT_EQ(name(u"@"), "%40");
}

TEST(TextFormName, EveryNameComesBack)
{
    for (int first = 1; first < 256; ++first) {
        for (int second = 1; second < 256; ++second) {
            const QString plain = codepage::decode(QByteArray{} + char(first) + char(second));
            const QString escaped = escapedName(plain);
            ASSERT_EQ(unescapedName(escaped), plain) << escaped.toStdString();
            ASSERT_EQ(escaped.trimmed(), escaped);
            ASSERT_FALSE(escaped.contains(u'\n'));
        }
    }
}

TEST(TextFormName, APercentSignWithoutDigitsIsOne)
{
    EXPECT_EQ(unescapedName(u"100%"), u"100%"_s);
    EXPECT_EQ(unescapedName(u"%zz%4"), u"%zz%4"_s);
    EXPECT_EQ(unescapedName(u"%C3"), u"Ã"_s);
}

TEST(TextFormValue, TextIsPlain)
{
    EXPECT_EQ(shown(text("10")), "10");
    EXPECT_EQ(shown(text("Etter forfall, 8 %")), "Etter forfall, 8 %");
    EXPECT_EQ(shown({REG_SZ, "bl\xe5 \x80" + QByteArray(1, '\0')}), "blå €");
    EXPECT_EQ(shown({REG_SZ, {}}), "");
}

TEST(TextFormValue, TextInQuotationMarks)
{
    EXPECT_EQ(shown(text("")), "\"\"");
    EXPECT_EQ(shown(text(" a ")), "\" a \"");
    EXPECT_EQ(shown(text("\"a\"")), "\"\\\"a\\\"\"");
    EXPECT_EQ(shown(text("\"a\" b")), "\"a\" b");
    EXPECT_EQ(shown(text("dword:1")), "\"dword:1\"");
    EXPECT_EQ(shown(text("hex(7):")), "\"hex(7):\"");
    EXPECT_EQ(shown(text("a \"b\"")), "a \"b\"");
    EXPECT_EQ(shown(text("\xa0x")), "\"\u00a0x\"");
}

TEST(TextFormValue, BackslashesAreDoubled)
{
    EXPECT_EQ(shown(text("C:\\Prog\\nytt")), "C:\\\\Prog\\\\nytt");
}

TEST(TextFormValue, WhatIsNoPrintableTextIsBytes)
{
    EXPECT_EQ(shown(text("a\r\nb")), "hex(1):61,0d,0a,62,00");
    EXPECT_EQ(shown(text("\x81")), "hex(1):81,00");
    EXPECT_EQ(shown({REG_SZ, "open"}), "hex(1):6f,70,65,6e");
    EXPECT_EQ(shown({REG_EXPAND_SZ, QByteArray("%A%\0", 4)}), "hex(2):25,41,25,00");
    EXPECT_EQ(shown({REG_BINARY, {}}), "hex(3):");
    EXPECT_EQ(shown({REG_DWORD, QByteArray("\x0a\x00\x00\x80", 4)}), "hex(4):0a,00,00,80");
    EXPECT_EQ(shown({11, QByteArray("\x01", 1)}), "hex(11):01");
}

TEST(TextFormValue, ReadsWhatOlderFilesHold)
{
    EXPECT_EQ(valueFromText(u"a\\r\\nb\\tc\\x01\\x81"), text("a\r\nb\tc\x01\x81"));
    EXPECT_EQ(valueFromText(u"\"\\\"a\\\" b\""), text("\"a\" b"));
    EXPECT_EQ(valueFromText(u"a\\0b"), (StoredValue{REG_SZ, QByteArray("a\0b\0", 4)}));
    EXPECT_EQ(valueFromText(u"expand:\"%HOME%\""),
              (StoredValue{REG_EXPAND_SZ, QByteArray("%HOME%\0", 7)}));
    EXPECT_EQ(valueFromText(u"multi:\"a\\0b\""),
              (StoredValue{REG_MULTI_SZ, QByteArray("a\0b\0\0", 5)}));
    EXPECT_EQ(valueFromText(u"dword:8000000a"),
              (StoredValue{REG_DWORD, QByteArray("\x0a\x00\x00\x80", 4)}));
    EXPECT_EQ(valueFromText(u"hex:00,ff"), (StoredValue{REG_BINARY, QByteArray("\x00\xff", 2)}));
    EXPECT_EQ(valueFromText(u"hex:"), (StoredValue{REG_BINARY, {}}));
    EXPECT_EQ(valueFromText(u"hex(4):01"), (StoredValue{REG_DWORD, QByteArray("\x01", 1)}));
}

TEST(TextFormValue, EveryByteComesBackInEveryType)
{
    for (const quint32 type :
         {0U, REG_SZ, REG_EXPAND_SZ, REG_BINARY, REG_DWORD, REG_MULTI_SZ, 11U, 4294967295U}) {
        expectReturns({type, {}});
        for (int byte = 0; byte < 256; ++byte) {
            const char c = char(byte);
            expectReturns({type, QByteArray(1, c)});
            expectReturns({type, QByteArray(1, c) + "x" + c + QByteArray(1, '\0')});
            expectReturns({type, QByteArray("x") + c + QByteArray(2, '\0')});
        }
    }
}

TEST(TextFormValue, AnyBytesComeBack)
{
    std::mt19937 random(20140309);
    const QByteArray likely("\\\"nrt0x4:; =h,e()\0\0\n", 20);
    for (int round = 0; round < 5000; ++round) {
        QByteArray data;
        for (int left = int(random() % 12); left > 0; --left)
            data += random() % 3 ? likely[random() % likely.size()] : char(random() % 256);
        expectReturns({REG_SZ, data + '\0'});
        expectReturns({quint32(random() % 9), data});
    }
}

TEST(TextFormValue, ReadsWhatAHandWrites)
{
    EXPECT_EQ(valueFromText(u"C:\\Prog"), text("C:\\Prog"));
    EXPECT_EQ(valueFromText(u"a\\"), text("a\\"));
    EXPECT_EQ(valueFromText(u"\\x4"), text("\\x4"));
    EXPECT_EQ(valueFromText(u"\"half"), text("\"half"));
    EXPECT_EQ(valueFromText(u"\""), text("\""));
    EXPECT_EQ(valueFromText(u"hex(7"), text("hex(7"));
    EXPECT_EQ(valueFromText(u"日本"), text("??"));
    EXPECT_EQ(valueFromText(u"expand:%TEMP%"),
              (StoredValue{REG_EXPAND_SZ, QByteArray("%TEMP%\0", 7)}));
    EXPECT_EQ(valueFromText(u"dword:0000000A"),
              (StoredValue{REG_DWORD, QByteArray("\x0a\0\0\0", 4)}));
}

TEST(TextFormValue, BrokenDigitsAreNoValue)
{
    for (const QStringView broken : {u"dword:", u"dword:12", u"dword:0000000g", u"dword:000000010",
                                     u"hex:0", u"hex:00,", u"hex:00 01", u"hex:zz", u"hex():00",
                                     u"hex(x):00", u"hex(7):0,0", u"hex(99999999999):00"})
        EXPECT_FALSE(valueFromText(broken)) << broken.toString().toStdString();
}

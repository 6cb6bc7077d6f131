#include "runtime/CodePage.h"

#include "runtime/Support.h"

using namespace Qt::StringLiterals;

namespace {

const QByteArray kOpenCodes("\x81\x8D\x8F\x90\x9D", 5);

QByteArray allCodes()
{
    QByteArray bytes;
    for (int code = 0; code < 256; ++code)
        bytes.append(static_cast<char>(code));
    return bytes;
}

} // namespace

TEST(CodePage, NorwegianLettersHaveTheirLatinCodes)
{
    EXPECT_EQ(codepage::encode(u"æøåÆØÅ"), QByteArray("\xE6\xF8\xE5\xC6\xD8\xC5"));
    EXPECT_EQ(codepage::decode("\xE6\xF8\xE5\xC6\xD8\xC5"), u"æøåÆØÅ"_s);
}

TEST(CodePage, EveryCodeButTheOpenOnesComesBack)
{
    const QByteArray bytes = allCodes();
    const QString text = codepage::decode(bytes);
    ASSERT_EQ(text.size(), 256);
    for (int code = 0; code < 256; ++code) {
        const char byte = static_cast<char>(code);
        if (kOpenCodes.contains(byte))
            EXPECT_EQ(text[code], QChar(0xFFFD)) << code;
        else
            EXPECT_EQ(codepage::fromUnicode(text[code]), byte) << code;
    }
}

TEST(CodePage, TheRangeFrom128To159HasItsOwnCharacters)
{
    EXPECT_EQ(codepage::decode("\x80\x82\x83\x84\x85\x86\x87\x88\x89\x8A\x8B\x8C\x8E"),
              u"€‚ƒ„…†‡ˆ‰Š‹ŒŽ"_s);
    EXPECT_EQ(codepage::decode("\x91\x92\x93\x94\x95\x96\x97\x98\x99\x9A\x9B\x9C\x9E\x9F"),
              u"‘’“”•–—˜™š›œžŸ"_s);
    EXPECT_EQ(codepage::encode(u"€"), QByteArray("\x80"));
    EXPECT_EQ(codepage::encode(u"–"), QByteArray("\x96"));
    EXPECT_EQ(codepage::encode(u"Ÿ"), QByteArray("\x9F"));
}

TEST(CodePage, AllOtherCodesAreUnicodesOwn)
{
    for (char16_t unit = 0; unit < 0x100; ++unit) {
        if (unit >= 0x80 && unit < 0xA0)
            continue;
        EXPECT_EQ(static_cast<unsigned char>(codepage::fromUnicode(unit)), unit);
    }
}

TEST(CodePage, ACharacterThatThePageLacksBecomesTheReplacement)
{
    for (const char16_t unit :
         {u'\x0081', u'\x0080', u'\x0100', u'Ж', u'−', u'\xFFFD', u'\x0000'}) {
        const char expected = unit == 0 ? '\0' : codepage::kReplacement;
        EXPECT_EQ(codepage::fromUnicode(unit), expected) << int{unit};
    }
    EXPECT_EQ(codepage::kReplacement, '?');
}

TEST(CodePage, ExactlyThe251CharactersOfThePageHaveACode)
{
    int withCode = 0;
    for (int unit = 0; unit < 0x10000; ++unit) {
        const bool isQuestionMark = unit == '?';
        if (isQuestionMark || codepage::fromUnicode(QChar(unit)) != codepage::kReplacement)
            ++withCode;
    }
    EXPECT_EQ(withCode, 256 - kOpenCodes.size());
}

TEST(CodePage, EachHalfOfASurrogatePairIsReplaced)
{
    EXPECT_EQ(codepage::encode(u"a😀b"), QByteArray("a??b"));
}

TEST(CodePage, OneByteForEachUnitAndBack)
{
    EXPECT_EQ(codepage::encode(u"Blåbær & Co").size(), 11);
    EXPECT_TRUE(codepage::encode(u"").isEmpty());
    EXPECT_TRUE(codepage::decode("").isEmpty());
}

#include "output/ehf/mEHF.h"

#include "runtime/Format.h"
#include "runtime/MachineLocale.h"
#include "support/ModuleTest.h"
#include "support/Rounds.h"

#include <limits>
#include <random>

using namespace Qt::StringLiterals;

namespace {

QString belop(qint64 tenThousandths)
{
    return EhfBelop(Currency::fromTenThousandths(tenThousandths));
}

TEST(EhfBelop, IsAbsoluteWithTwoDecimalsAndAPoint)
{
    for (const char *machine : {"nb_NO", "en_US"}) {
        const ScopedLocale locale(MachineLocale::fromName(QString::fromLatin1(machine)));
        EXPECT_EQ(belop(-12500000), u"1250.00"_s);
        EXPECT_EQ(belop(0), u"0.00"_s);
        EXPECT_EQ(belop(10050), u"1.01"_s);
        EXPECT_EQ(belop(-10050), u"1.01"_s);
        EXPECT_EQ(belop(10049), u"1.00"_s);
        EXPECT_EQ(belop(49), u"0.00"_s);
        EXPECT_EQ(belop(50), u"0.01"_s);
        EXPECT_EQ(belop(std::numeric_limits<qint64>::max()), u"922337203685477.58"_s);
    }
    EXPECT_EQ(raised([] { (void)belop(std::numeric_limits<qint64>::min()); }), errors::kOverflow);
}

TEST(EhfBelop, IsTheTextOfItsDigits)
{
    const ScopedLocale locale(MachineLocale::norwegian());
    std::mt19937_64 chance(startValue(4));
    for (int round = 0; round < 20'000; ++round) {
        const auto count = qint64(chance() >> (1 + round % 63));
        const QString digits = u"%1,%2"_s.arg(count / 10000).arg(count % 10000, 4, 10, QChar(u'0'));
        const QString expected = Format(digits, u"#0.00").replace(u',', u'.');
        ASSERT_EQ(belop(count), expected) << count;
        ASSERT_EQ(belop(-count), expected) << count;
    }
}

TEST(EhfProsent, IsSignedWithOneDecimalAndAPoint)
{
    for (const char *machine : {"nb_NO", "en_US"}) {
        const ScopedLocale locale(MachineLocale::fromName(QString::fromLatin1(machine)));
        EXPECT_EQ(EhfProsent(25), u"25.0"_s);
        EXPECT_EQ(EhfProsent(0), u"0.0"_s);
        EXPECT_EQ(EhfProsent(-12.5f), u"-12.5"_s);
        EXPECT_EQ(EhfProsent(0.35f), u"0.4"_s);
    }
}

TEST(EhfHeltall, IsAbsolute)
{
    EXPECT_EQ(EhfHeltall(14), u"14"_s);
    EXPECT_EQ(EhfHeltall(0), u"0"_s);
    EXPECT_EQ(EhfHeltall(-30), u"30"_s);
    EXPECT_EQ(EhfHeltall(std::numeric_limits<qint32>::min()), u"2147483648"_s);
}

TEST(EhfDato, IsYearMonthDay)
{
    EXPECT_EQ(EhfDato(QDate(2014, 3, 9)), u"2014-03-09"_s);
    EXPECT_EQ(EhfDato(QDate(1899, 12, 30)), u"1899-12-30"_s);
    EXPECT_EQ(EhfDato(QDate(101, 1, 1)), u"0101-01-01"_s);
}

TEST(EhfTegn, EscapesWhatStandsAboveZ)
{
    EXPECT_EQ(EhfTegn(u"Blåbær & Co"), "Bl&#x00E5;b&#x00E6;r & Co");
    EXPECT_EQ(EhfTegn(u"æØ{"), "&#x00E6;&#x00D8;&#x007B;");
    EXPECT_EQ(EhfTegn(u"z{|}~\u007f"), "z&#x007B;&#x007C;&#x007D;&#x007E;&#x007F;");
    EXPECT_EQ(EhfTegn(u"\u00a0ÿ"), "&#x00A0;&#x00FF;");
}

TEST(EhfTegn, EscapesAtEveryPlaceOfALongText)
{
    constexpr qsizetype kLength = 200;
    const QString plain(kLength, u'a');
    for (qsizetype i = 0; i < kLength; ++i) {
        QByteArray expected = plain.toLatin1();
        EXPECT_EQ(EhfTegn(QString(plain).replace(i, 1, u"å"_s)), expected.replace(i, 1, "&#x00E5;"))
            << i;
    }
    EXPECT_EQ(EhfTegn(QString(kLength, u'å')), QByteArray("&#x00E5;").repeated(kLength));
}

TEST(EhfTegn, IsTheSameCharacterByCharacter)
{
    std::mt19937 chance(startValue(3));
    for (int round = 0; round < 2'000; ++round) {
        QString text(qsizetype(chance() % 200), Qt::Uninitialized);
        const auto rarity = 1 + chance() % 60;
        for (QChar &c : text)
            c = QChar(char16_t(chance() % rarity == 0 ? chance() % 0x10000 : chance() % 0x7b));
        QByteArray expected;
        for (const QChar c : text)
            expected += EhfTegn(QStringView(&c, 1));
        ASSERT_EQ(EhfTegn(text), expected) << "round " << round;
    }
}

TEST(EhfTegn, LeavesTagsQuotesAndControlCharacters)
{
    const QString text = u"<a b=\"c\" d='e'>&amp;\t\r\n\u0001 AZaz09`^_\\</a>"_s;
    EXPECT_EQ(EhfTegn(text), text.toLatin1());
    EXPECT_EQ(EhfTegn(QString()), QByteArray());
}

TEST(EhfTegn, GivesTheCodeOfTheCodePage)
{
    EXPECT_EQ(EhfTegn(u"€Ÿ™"), "&#x0080;&#x009F;&#x0099;");
    // Not in the code page: the replacement code.
    EXPECT_EQ(EhfTegn(u"Ω"), "&#x003F;");
    EXPECT_EQ(EhfTegn(u"\U0001F69A"), "&#x003F;&#x003F;");
}

} // namespace

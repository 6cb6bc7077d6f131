#include "rules/Kid.h"

#include "runtime/Support.h"

#include <QHash>

#include <random>

using namespace Qt::StringLiterals;

namespace {

struct Example
{
    const char *base;
    const char *kid;
};

/// The settings of a KID; what is not given is absent.
Innstilling settings(const QHash<QString, QString> &stored)
{
    return [stored](const QString &key, const QString &standard) {
        return stored.contains(key) ? stored.value(key) + QChar(0) : standard;
    };
}

Innstilling active(QHash<QString, QString> others = {})
{
    others[u"KIDaktivert"_s] = u"1"_s;
    return settings(others);
}

QString modulus10(const char *base)
{
    return Modulus10(QString::fromLatin1(base));
}

QString modulus11(const char *base)
{
    return Modulus11(QString::fromLatin1(base));
}

} // namespace

TEST(Modulus10, PublishedExamples)
{
    for (const Example &example : {
             Example{"000000123", "0000001230"},
             Example{"234567", "2345676"},
             Example{"0129086", "01290865"},
             Example{"1234", "12344"},
             Example{"60224", "602243"},
             Example{"912340000506700", "9123400005067009"},
             Example{"0100017123400050671", "01000171234000506714"},
             Example{"10001779880270005067", "100017798802700050675"},
             Example{"00800001168837", "008000011688373"},
             Example{"00800003168839", "008000031688395"},
             Example{"00800004168840", "008000041688401"},
             Example{"00800006168842", "008000061688422"},
             Example{"3300008367204", "33000083672049"},
             Example{"12345678", "123456782"},
             Example{"001001", "0010017"},
         }) {
        const QString published = QString::fromLatin1(example.kid);
        // Where the published digit is 0 this system writes "10".
        const QString expected =
            published.endsWith(u'0') ? published.chopped(1) + u"10"_s : published;
        EXPECT_EQ(modulus10(example.base), expected);
    }
}

TEST(Modulus10, RefutedExamples)
{
    EXPECT_NE(modulus10("234567"), u"2345674"_s);
    EXPECT_NE(modulus10("270784137300117001"), u"2707841373001170015"_s);
    EXPECT_NE(modulus10("123456"), u"1234561"_s);
    EXPECT_NE(modulus10("1234"), u"12343"_s);
}

TEST(Modulus10, TenIsWrittenInFull)
{
    EXPECT_EQ(modulus10("0"), u"010"_s);
    EXPECT_EQ(modulus10("000000123"), u"00000012310"_s);
    EXPECT_EQ(modulus10("873"), u"87310"_s); // 6 + 7 + 7 = 20
    EXPECT_EQ(modulus10("873").size(), modulus10("874").size() + 1);
}

TEST(Modulus10, OnlyDigitsCountAndUseUpAWeight)
{
    EXPECT_EQ(modulus10("1a2-3 4"), u"1a2-3 44"_s);
    EXPECT_EQ(Modulus10(u"1234١"_s), u"1234١4"_s); // a digit, but not one of 0 to 9
    EXPECT_EQ(Modulus10(QString()), u"10"_s);
}

TEST(Modulus10, AgreesWithTheSumOfDigits)
{
    std::mt19937 random(20260201);
    for (int round = 0; round < 5000; ++round) {
        QString base;
        int sum = 0;
        const int length = int(random() % 30) + 1;
        for (int i = 0; i < length; ++i) {
            const int digit = int(random() % 10);
            base.prepend(QString::number(digit));
            const int product = i % 2 == 0 ? digit * 2 : digit;
            sum += product % 10 + product / 10;
        }
        EXPECT_EQ(Modulus10(base), base + QString::number(10 - sum % 10));
    }
}

TEST(Modulus10, ASumBeyondSixteenBitsOverflows)
{
    // Each nine adds 9 under either weight: 3640 of them make 32760, within 16 bits.
    EXPECT_EQ(Modulus10(QString(3640, u'9')).last(2), u"10"_s);
    EXPECT_EQ(errorOf([] { (void)Modulus10(QString(3641, u'9')); }), errors::kOverflow);
}

TEST(Modulus11, PublishedExamples)
{
    for (const Example &example : {
             Example{"000000123", "0000001236"}, Example{"000001234", "0000012343"},
             Example{"1000005", "1000005-"}, Example{"31", "310"}, Example{"1234", "12343"},
             Example{"00000000000100", "000000000001007"}, Example{"000023", "000023-"},
             Example{"009778", "0097780"}, Example{"012955", "0129550"},
             Example{"12345678", "123456785"},
             Example{"00020000003200010001", "000200000032000100011"},
             Example{"5123400050670100017", "51234000506701000176"}, Example{"0006", "0006-"},
             Example{"2", "27"}, Example{"11", "116"},
             Example{"234567", "2345676"}, // by either modulus
         })
        EXPECT_EQ(modulus11(example.base), QString::fromLatin1(example.kid));
}

TEST(Modulus11, RefutedExamples)
{
    EXPECT_NE(modulus11("10003"), u"100030"_s);
    EXPECT_NE(modulus11("270784137300117001"), u"2707841373001170015"_s);
    EXPECT_NE(modulus11("1234"), u"12344"_s);
}

TEST(Modulus11, ElevenIsNoughtAndTenIsADash)
{
    EXPECT_EQ(modulus11("62"), u"620"_s); // 4 + 18 = 22: check value 11
    EXPECT_EQ(modulus11("71"), u"71-"_s); // 2 + 21 = 23: check value 10
    EXPECT_EQ(modulus11("70"), u"701"_s); // 21: check value 1
    EXPECT_EQ(Modulus11(QString()), u"0"_s);
}

TEST(Modulus11, OnlyDigitsCountAndUseUpAWeight)
{
    EXPECT_EQ(modulus11("1 2.3x4"), u"1 2.3x43"_s);
}

TEST(Modulus11, AgreesWithTheWeightedSum)
{
    std::mt19937 random(20260202);
    for (int round = 0; round < 5000; ++round) {
        QString base;
        int sum = 0;
        const int length = int(random() % 30) + 1;
        for (int i = 0; i < length; ++i) {
            const int digit = int(random() % 10);
            base.prepend(QString::number(digit));
            sum += digit * (2 + i % 6);
        }
        const QString kid = Modulus11(base);
        ASSERT_EQ(kid.size(), base.size() + 1);
        const int check = kid.back() == u'-' ? 10 : kid.back().digitValue();
        EXPECT_EQ((sum + check) % 11, 0) << kid.toStdString();
    }
}

TEST(Modulus11, ASumBeyondSixteenBitsOverflows)
{
    EXPECT_EQ(errorOf([] { (void)Modulus11(QString(808, u'9')); }), 0);
    EXPECT_EQ(errorOf([] { (void)Modulus11(QString(811, u'9')); }), errors::kOverflow);
}

TEST(LagKID, OfTheInvoiceNumberAlone)
{
    EXPECT_EQ(LagKID(active(), u"1234"_s, u"77"_s), u"0012344"_s);
}

TEST(LagKID, OfCustomerAndInvoice)
{
    const Innstilling both = active({{u"KIDoppbygning"_s, u"1"_s},
                                     {u"KIDlengdeKundenr"_s, u"5"_s},
                                     {u"KIDlengdeFakturanr"_s, u"4"_s}});
    EXPECT_EQ(LagKID(both, u"1234"_s, u"77"_s), Modulus10(u"000771234"_s));
    // Any composition but 0 counts as 1.
    const Innstilling other = active({{u"KIDoppbygning"_s, u"-3"_s}});
    EXPECT_EQ(LagKID(other, u"1234"_s, u"77"_s), Modulus10(u"000077001234"_s));
}

TEST(LagKID, DefaultsAreSixDigitsModulusTenAndNoCustomer)
{
    QStringList asked;
    const Innstilling listening = [&](const QString &key, const QString &standard) {
        asked += key + u'=' + standard;
        return key == u"KIDaktivert"_s ? u"1"_s : standard;
    };
    (void)LagKID(listening, u"1"_s, u"2"_s);
    EXPECT_EQ(asked,
              (QStringList{u"KIDaktivert=0"_s, u"KIDlengdeFakturanr=6"_s, u"KIDlengdeKundenr=6"_s,
                           u"KIDmodulus=10"_s, u"KIDoppbygning=0"_s}));
}

TEST(LagKID, IsEmptyUnlessActivatedWithOne)
{
    EXPECT_EQ(LagKID(settings({}), u"1234"_s, u"77"_s), QString());
    for (const QString &value : {u"0"_s, u"2"_s, u"-1"_s, u"1.5"_s, u"ja"_s})
        EXPECT_EQ(LagKID(settings({{u"KIDaktivert"_s, value}}), u"1234"_s, u"77"_s), QString());
    EXPECT_EQ(LagKID(settings({{u"KIDaktivert"_s, u" 1 stk"_s}}), u"1234"_s, u"77"_s),
              u"0012344"_s);
}

TEST(LagKID, ByModulusElevenOrNone)
{
    const auto by = [](const QString &modulus) {
        return LagKID(active({{u"KIDmodulus"_s, modulus}}), u"1234"_s, u"77"_s);
    };
    EXPECT_EQ(by(u"11"_s), u"0012343"_s);
    EXPECT_EQ(by(u"9"_s), QString());
    EXPECT_EQ(by(QString()), QString());
    EXPECT_EQ(LagKID(active({{u"KIDmodulus"_s, u"11"_s}}), u"23"_s, u"77"_s), u"000023-"_s);
}

TEST(LagKID, EndsInTenWhereTheSumIsDivisibleByTen)
{
    EXPECT_EQ(LagKID(active(), u"873"_s, u"77"_s), u"00087310"_s);
}

TEST(LagKID, CutsNothing)
{
    const Innstilling both = active({{u"KIDoppbygning"_s, u"1"_s}});
    EXPECT_EQ(LagKID(both, u"1"_s, u"123456789"_s), Modulus10(u"123456789000001"_s));
    const Innstilling wide = active({{u"KIDlengdeFakturanr"_s, u"30"_s}});
    EXPECT_EQ(LagKID(wide, u"1234"_s, u"77"_s).size(), 31);
}

TEST(LagKID, TakesFieldsAsTheyStand)
{
    EXPECT_EQ(LagKID(active(), QString(), u"77"_s), u"10"_s);
    EXPECT_EQ(LagKID(active(), u"ingen"_s, u"77"_s), u"ingen10"_s);
    EXPECT_EQ(LagKID(active({{u"KIDlengdeFakturanr"_s, u"0"_s}}), u"1234"_s, u"77"_s), u"12344"_s);
}

TEST(LagKID, ErrorsReachTheCaller)
{
    const auto withLength = [](const QString &length) {
        const auto settings = active({{u"KIDlengdeKundenr"_s, length}});
        return errorOf([&] { (void)LagKID(settings, u"1234"_s, u"77"_s); });
    };
    EXPECT_EQ(withLength(u"-1"_s), errors::kInvalidCall);
    EXPECT_EQ(withLength(u"32768"_s), errors::kOverflow);
    EXPECT_EQ(withLength(u"1e300"_s), errors::kOverflow);
    EXPECT_EQ(withLength(u"x"_s), 0);
}

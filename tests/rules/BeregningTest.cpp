#include "rules/Beregning.h"

#include "rules/Ordrelinjer.h"
#include "runtime/Format.h"

using namespace Qt::StringLiterals;

namespace {

Ordrelinjer summed(std::initializer_list<std::array<QString, 3>> lines,
                   const Innstilling &innstilling = utenInnstillinger())
{
    Ordrelinjer ordre;
    for (const auto &line : lines)
        ordre.add(line[0], line[1], line[2]);
    BeregnSummer(ordre, innstilling, ordre);
    return ordre;
}

void expectSums(const Ordrelinjer &ordre, const QString &netto, const QString &mva,
                const QString &brutto)
{
    EXPECT_EQ(ordre.field(SumFelt::SumNetto), netto);
    EXPECT_EQ(ordre.field(SumFelt::MvaKr), mva);
    EXPECT_EQ(ordre.field(SumFelt::SumBrutto), brutto);
}

/// An order of one line without VAT that sums to `sum`, rounded by the setting.
Ordrelinjer rounded(const QString &sum, const QString &setting)
{
    return summed({{u"1"_s, sum, u"0"_s}}, avrunding(setting));
}

} // namespace

TEST(CelleBelop, ReadsByTheLocale)
{
    for (const MachineLocale &locale : {commaLocale(), pointLocale()}) {
        const ScopedLocale inForce(locale);
        Ordrelinjer ordre;
        ordre.add(u"1,5"_s, u"1 234,50"_s, u"25,0"_s);
        EXPECT_EQ(ordre.tekst(3, 1), locale.decimalPoint == u',' ? u"1,5"_s : u"1.5"_s);
        EXPECT_EQ(CelleBelop(ordre, 3, 1), tenThousandths(15000));
        EXPECT_EQ(CelleBelop(ordre, 4, 1), tenThousandths(12345000));
        EXPECT_EQ(CelleBelop(ordre, 7, 1), tenThousandths(250000));
    }
    const ScopedLocale point(pointLocale());
    Ordrelinjer ordre;
    ordre.settTekst(4, 1, u"1 234,50"_s);
    EXPECT_NE(errorOf([&] { EXPECT_NE(CelleBelop(ordre, 4, 1), tenThousandths(12345000)); }), 0);
}

TEST(CelleBelop, NothingIsNought)
{
    Ordrelinjer ordre;
    ordre.add(QString(), u"   "_s, u"0"_s);
    EXPECT_EQ(CelleBelop(ordre, 3, 1), Currency());
    EXPECT_EQ(CelleBelop(ordre, 4, 1), Currency());
    EXPECT_EQ(CelleBelop(ordre, 7, 1), Currency());
}

TEST(CelleBelop, RefusesWhatIsNoAmount)
{
    Ordrelinjer ordre;
    ordre.add(u"to"_s, u"999999999999999"_s, u"25%"_s);
    EXPECT_EQ(errorOf([&] { (void)CelleBelop(ordre, 3, 1); }), errors::kTypeMismatch);
    EXPECT_EQ(errorOf([&] { (void)CelleBelop(ordre, 4, 1); }), errors::kOverflow);
    EXPECT_EQ(errorOf([&] { (void)CelleBelop(ordre, 7, 1); }), errors::kTypeMismatch);
}

TEST(CelleBelop, ReadsEveryFormThatTheSystemWrites)
{
    for (const MachineLocale &locale : {commaLocale(), pointLocale()}) {
        const ScopedLocale inForce(locale);
        for (const qint64 count : {0LL, 5000LL, 1000000LL, 12345000LL, 12345670000LL, -1000000LL,
                                   -12345670000LL, -50LL * 100, 999999999999990000LL}) {
            for (const QStringView pattern : {u"# ##0.00", u"#0.00", u"0.00"}) {
                Ordrelinjer ordre;
                ordre.settTekst(3, 1, Format(tenThousandths(count), pattern));
                EXPECT_EQ(CelleBelop(ordre, 3, 1), tenThousandths(count))
                    << ordre.tekst(3, 1).toStdString();
            }
        }
    }
}

TEST(NettoPris, TakesVatOutOfAPriceThatIncludesIt)
{
    const Currency price = tenThousandths(1250000);
    EXPECT_EQ(NettoPris(price, 25, -1), tenThousandths(1000000));
    EXPECT_EQ(NettoPris(price, 25, 1), tenThousandths(1000000));
    EXPECT_EQ(NettoPris(tenThousandths(1000000), 15, -1), tenThousandths(869565));
    EXPECT_EQ(NettoPris(price, 0, -1), price);
    EXPECT_EQ(NettoPris(tenThousandths(-1250000), 25, 1), tenThousandths(-1000000));
}

TEST(NettoPris, LeavesANetPrice)
{
    for (const int flag : {0, 2, -2})
        EXPECT_EQ(NettoPris(tenThousandths(1250000), 25, flag), tenThousandths(1250000));
}

TEST(NettoPris, RaisesForARateThatLeavesNothing)
{
    EXPECT_EQ(errorOf([] { (void)NettoPris(tenThousandths(1), -100, 1); }),
              errors::kDivisionByZero);
    EXPECT_EQ(errorOf([] { (void)NettoPris(tenThousandths(1), -100, 0); }), 0);
    EXPECT_EQ(errorOf([] { (void)NettoPris(tenThousandths(kLargestCount), -99.9F, 1); }),
              errors::kOverflow);
}

TEST(LinjeSum, WritesNetAndGross)
{
    Ordrelinjer ordre;
    LinjeSum(ordre, ordre.add(u"2,0"_s, u" 100,00"_s, u"25,0"_s));
    EXPECT_EQ(ordre.netto(1), u" 200,00"_s);
    EXPECT_EQ(ordre.brutto(1), u" 250,00"_s);
    LinjeSum(ordre, ordre.add(u"1"_s, u"100"_s, u"0"_s));
    EXPECT_EQ(ordre.brutto(2), ordre.netto(2));
    LinjeSum(ordre, ordre.add(u"3"_s, u"411522,50"_s, u"10"_s));
    EXPECT_EQ(ordre.netto(3), u"1234 567,50"_s);
    EXPECT_EQ(ordre.brutto(3), u"1358 024,25"_s);
    LinjeSum(ordre, ordre.add(u"-2"_s, u"100"_s, u"25"_s));
    EXPECT_EQ(ordre.netto(4), u"- 200,00"_s);
    EXPECT_EQ(ordre.brutto(4), u"- 250,00"_s);
}

TEST(LinjeSum, FollowsTheLocalesDecimalMark)
{
    const ScopedLocale point(pointLocale());
    Ordrelinjer ordre;
    LinjeSum(ordre, ordre.add(u"1,5"_s, u"1 000,50"_s, u"25,0"_s));
    EXPECT_EQ(ordre.tekst(linjekolonne::kSumNetto, 1), u"1 500.75"_s);
    EXPECT_EQ(ordre.tekst(linjekolonne::kSumBrutto, 1), u"1 875.94"_s);
}

TEST(LinjeSum, EmptyCellsCountAsNought)
{
    Ordrelinjer ordre;
    LinjeSum(ordre, ordre.add(QString(), u"100"_s, QString()));
    EXPECT_EQ(ordre.netto(1), u" 0,00"_s);
    EXPECT_EQ(ordre.brutto(1), u" 0,00"_s);
    LinjeSum(ordre, ordre.add(u"2"_s, u"100"_s, QString()));
    EXPECT_EQ(ordre.brutto(2), u" 200,00"_s);
}

TEST(LinjeSum, LettersCountAsTheNoughtThatAValueStartsWith)
{
    Ordrelinjer ordre;
    LinjeSum(ordre, ordre.add(u"2"_s, u"abc"_s, u"25"_s));
    EXPECT_EQ(ordre.netto(1), u" 0,00"_s);
    LinjeSum(ordre, ordre.add(u"2"_s, u"100"_s, u"abc"_s));
    EXPECT_EQ(ordre.netto(2), u" 200,00"_s);
    EXPECT_EQ(ordre.brutto(2), u" 200,00"_s);
    LinjeSum(ordre, ordre.add(u"abc"_s, u"100"_s, u"25"_s));
    EXPECT_EQ(ordre.brutto(3), u" 0,00"_s);
}

TEST(LinjeSum, AnOverflowLeavesTheCells)
{
    Ordrelinjer ordre;
    const int row = ordre.add(u"100000000"_s, u"100000000"_s, u"25"_s);
    ordre.settTekst(6, row, u"før"_s);
    ordre.settTekst(8, row, u"før"_s);
    LinjeSum(ordre, row);
    EXPECT_EQ(ordre.netto(row), u"før"_s);
    EXPECT_EQ(ordre.brutto(row), u"før"_s);
}

TEST(LinjeSum, TheDiscountColumnTakesNoPart)
{
    Ordrelinjer ordre;
    const int row = ordre.add(u"1"_s, u"100"_s, u"25"_s);
    ordre.settTekst(5, row, u"50,00"_s);
    LinjeSum(ordre, row);
    BeregnSummer(ordre, utenInnstillinger(), ordre);
    EXPECT_EQ(ordre.netto(row), u" 100,00"_s);
    expectSums(ordre, u" 100,00"_s, u" 25,00"_s, u" 125,00"_s);
}

TEST(BeregnSummer, AddsUpTheLines)
{
    expectSums(summed({{u"2"_s, u"100"_s, u"25"_s}, {u"1,5"_s, u"1 000,50"_s, u"15"_s}}),
               u"1 700,75"_s, u" 275,11"_s, u"1 975,86"_s);
}

TEST(BeregnSummer, AnOrderWithoutLinesIsNought)
{
    const Ordrelinjer ordre = summed({});
    expectSums(ordre, u" 0,00"_s, u" 0,00"_s, u" 0,00"_s);
    EXPECT_EQ(ordre.field(SumFelt::Kontrollsiffer), u"0"_s);
    EXPECT_EQ(ordre.field(SumFelt::Avrunding), u"0,00"_s);
}

TEST(BeregnSummer, WritesTheFieldsInOrderAndNoCell)
{
    Ordrelinjer ordre;
    const int row = ordre.add(u"2"_s, u"100"_s, u"25"_s);
    ordre.settTekst(6, row, u"stående"_s);
    ordre.settTekst(8, row, u"stående"_s);
    BeregnSummer(ordre, avrunding(u"1"_s), ordre);
    EXPECT_EQ(ordre.written(),
              (QList<SumFelt>{SumFelt::SumNetto, SumFelt::MvaKr, SumFelt::SumBrutto,
                              SumFelt::Kontrollsiffer, SumFelt::Avrunding}));
    EXPECT_EQ(ordre.netto(row), u"stående"_s);
    EXPECT_EQ(ordre.brutto(row), u"stående"_s);
}

TEST(BeregnSummer, VatIsAddedUpAtFourDecimals)
{
    // Three lines with VAT of 0.005 each: 0.015, not three times 0.01.
    expectSums(summed({{u"1"_s, u"0,02"_s, u"25"_s},
                       {u"1"_s, u"0,02"_s, u"25"_s},
                       {u"1"_s, u"0,02"_s, u"25"_s}}),
               u" 0,06"_s, u" 0,02"_s, u" 0,08"_s);
    // Five lines with VAT of 0.00096 each: 0.0010 five times, not 0.0048.
    const std::array<QString, 3> line{u"0,64"_s, u"0,01"_s, u"15"_s};
    expectSums(summed({line, line, line, line, line}), u" 0,03"_s, u" 0,01"_s, u" 0,04"_s);
}

TEST(BeregnSummer, ALineWithoutQuantityAddsNothing)
{
    expectSums(summed({{QString(), u"100"_s, u"25"_s}, {u"1"_s, u"10"_s, u"0"_s}}), u" 10,00"_s,
               u" 0,00"_s, u" 10,00"_s);
}

TEST(BeregnSummer, NegativeQuantityGivesNegativeSums)
{
    const Ordrelinjer ordre = summed({{u"-2"_s, u"100"_s, u"25"_s}});
    expectSums(ordre, u"- 200,00"_s, u"- 50,00"_s, u"- 250,00"_s);
    EXPECT_EQ(ordre.field(SumFelt::Kontrollsiffer),
              summed({{u"2"_s, u"100"_s, u"25"_s}}).field(SumFelt::Kontrollsiffer));
}

TEST(BeregnSummer, ALineThatDoesNotReadRepeatsTheOneBefore)
{
    expectSums(summed({{u"2"_s, u"100"_s, u"25"_s},
                       {u"abc"_s, u"10"_s, u"25"_s},
                       {u"1"_s, u"10"_s, u"abc"_s}}),
               u" 410,00"_s, u" 150,00"_s, u" 560,00"_s);
    expectSums(summed({{u"abc"_s, u"10"_s, u"25"_s}, {u"1"_s, u"10"_s, u"0"_s}}), u" 10,00"_s,
               u" 0,00"_s, u" 10,00"_s);
}

TEST(BeregnSummer, OverflowingSumsKeepWhatTheyHad)
{
    expectSums(summed({{u"1"_s, u"900000000000000"_s, u"0"_s},
                       {u"1"_s, u"900000000000000"_s, u"0"_s},
                       {u"2"_s, u"1,50"_s, u"0"_s}}),
               u"900000000000 003,00"_s, u" 0,00"_s, u"900000000000 003,00"_s);
}

TEST(BeregnSummer, AGrossSumThatOverflowsIsNought)
{
    const Ordrelinjer ordre = summed({{u"1"_s, u"900000000000000"_s, u"25"_s}}, avrunding(u"1"_s));
    expectSums(ordre, u"900000000000 000,00"_s, u"225000000000 000,00"_s, u" 0,00"_s);
    EXPECT_EQ(ordre.field(SumFelt::Avrunding), u"0,00"_s);
    EXPECT_EQ(ordre.field(SumFelt::Kontrollsiffer), u"0"_s);
}

TEST(BeregnSummer, AnAmountTooLargeForOreHasNoCheckDigit)
{
    Ordrelinjer ordre;
    ordre.add(u"1"_s, u"10000000000000"_s, u"0"_s); // in øre beyond the range
    BeregnSummer(ordre, utenInnstillinger(), ordre);
    EXPECT_EQ(ordre.written(), (QList<SumFelt>{SumFelt::SumNetto, SumFelt::MvaKr,
                                               SumFelt::SumBrutto, SumFelt::Avrunding}));
}

TEST(BeregnSummer, ALostGridAndARefusedFieldArePassedOver)
{
    Ordrelinjer ordre;
    ordre.add(u"2"_s, u"100"_s, u"25"_s);
    ordre.refuse(SumFelt::MvaKr);
    BeregnSummer(ordre, utenInnstillinger(), ordre);
    expectSums(ordre, u" 200,00"_s, QString(), u" 250,00"_s);
    ordre.breakDown();
    BeregnSummer(ordre, utenInnstillinger(), ordre);
    expectSums(ordre, u" 0,00"_s, QString(), u" 0,00"_s);
}

TEST(Avrunding, ToTheNearestWholeKroneHalfToEven)
{
    const struct
    {
        QString sum;
        QString brutto;
        QString field;
    } cases[] = {
        {u"100,50"_s, u" 100,00"_s, u"-0,50"_s}, {u"101,50"_s, u" 102,00"_s, u"0,50"_s},
        {u"102,60"_s, u" 103,00"_s, u"0,40"_s},  {u"102,40"_s, u" 102,00"_s, u"-0,40"_s},
        {u"2,50"_s, u" 2,00"_s, u"-0,50"_s},     {u"3,50"_s, u" 4,00"_s, u"0,50"_s},
        {u"-2,50"_s, u"- 2,00"_s, u"0,50"_s},    {u"-102,60"_s, u"- 103,00"_s, u"-0,40"_s},
        {u"100"_s, u" 100,00"_s, u"0,00"_s},
    };
    for (const auto &c : cases) {
        const Ordrelinjer ordre = rounded(c.sum, u"1"_s);
        EXPECT_EQ(ordre.field(SumFelt::SumBrutto), c.brutto) << c.sum.toStdString();
        EXPECT_EQ(ordre.field(SumFelt::Avrunding), c.field) << c.sum.toStdString();
    }
}

TEST(Avrunding, CutsTowardsZero)
{
    const Ordrelinjer up = rounded(u"102,60"_s, u"2"_s);
    EXPECT_EQ(up.field(SumFelt::SumBrutto), u" 102,00"_s);
    EXPECT_EQ(up.field(SumFelt::Avrunding), u"-0,60"_s);
    const Ordrelinjer down = rounded(u"-102,60"_s, u"2"_s);
    EXPECT_EQ(down.field(SumFelt::SumBrutto), u"- 102,00"_s);
    EXPECT_EQ(down.field(SumFelt::Avrunding), u"0,60"_s);
}

TEST(Avrunding, AnyOtherSettingDoesNothing)
{
    for (const QString &setting :
         {u"0"_s, u"3"_s, u"-1"_s, u"ja"_s, u"99999"_s, u"1e400"_s, QString()}) {
        const Ordrelinjer ordre = rounded(u"102,60"_s, setting);
        EXPECT_EQ(ordre.field(SumFelt::SumBrutto), u" 102,60"_s) << setting.toStdString();
        EXPECT_EQ(ordre.field(SumFelt::Avrunding), u"0,00"_s) << setting.toStdString();
    }
}

TEST(Avrunding, TheSettingIsReadAtEachCalculationWithDefaultNought)
{
    QStringList asked;
    Ordrelinjer ordre;
    const Innstilling listening = [&](const QString &key, const QString &standard) {
        asked += key + u'=' + standard;
        return u"1"_s;
    };
    BeregnSummer(ordre, listening, ordre);
    BeregnSummer(ordre, listening, ordre);
    EXPECT_EQ(asked, (QStringList{u"Avrunding=0"_s, u"Avrunding=0"_s}));
}

TEST(Avrunding, RoundsVatAndNetTogether)
{
    const Ordrelinjer ordre = summed({{u"1"_s, u"82,08"_s, u"25"_s}}, avrunding(u"1"_s));
    expectSums(ordre, u" 82,08"_s, u" 20,52"_s, u" 103,00"_s);
    EXPECT_EQ(ordre.field(SumFelt::Avrunding), u"0,40"_s);
}

TEST(Kontrollsiffer, IsTheLastDigitOverTheAmountInOre)
{
    const auto digit = [](const QString &sum) {
        return summed({{u"1"_s, sum, u"0"_s}}).field(SumFelt::Kontrollsiffer);
    };
    EXPECT_EQ(digit(u"12,34"_s), u"4"_s); // 1234: 8 + 3 + 4 + 1 = 16
    EXPECT_EQ(digit(u"-12,34"_s), u"4"_s);
    EXPECT_EQ(digit(u"8,73"_s), u"0"_s); // a sum of 20 makes "10"
    EXPECT_EQ(digit(u"0"_s), u"0"_s);
    EXPECT_EQ(digit(u"12,335"_s), u"4"_s); // half an øre is rounded away from zero
}

TEST(Kontrollsiffer, IsOfTheRoundedAmount)
{
    EXPECT_EQ(rounded(u"102,60"_s, u"1"_s).field(SumFelt::Kontrollsiffer),
              summed({{u"1"_s, u"103"_s, u"0"_s}}).field(SumFelt::Kontrollsiffer));
}

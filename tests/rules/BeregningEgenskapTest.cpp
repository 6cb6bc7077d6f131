#include "rules/Beregning.h"
#include "rules/Kid.h"

#include "rules/Ordrelinjer.h"
#include "runtime/Format.h"

#include <random>

using namespace Qt::StringLiterals;

// The calculation beside exact integer arithmetic on random orders with fixed start values. Where
// the VAT of a line lies in the middle between two ten-thousandths, the double that it is formed in
// decides for one of them; both are allowed.

namespace {

__extension__ using Wide = __int128;

/// numerator / denominator to the nearest whole number, ties away from zero.
qint64 halfAway(Wide numerator, Wide denominator)
{
    const Wide magnitude = numerator < 0 ? -numerator : numerator;
    const Wide whole = (2 * magnitude + denominator) / (2 * denominator);
    return qint64(numerator < 0 ? -whole : whole);
}

/// numerator / denominator to the nearest whole number, ties to the even one.
qint64 halfEven(Wide numerator, Wide denominator)
{
    const Wide magnitude = numerator < 0 ? -numerator : numerator;
    Wide whole = magnitude / denominator;
    const Wide twiceRest = 2 * (magnitude % denominator);
    if (twiceRest > denominator || (twiceRest == denominator && whole % 2 != 0))
        ++whole;
    return qint64(numerator < 0 ? -whole : whole);
}

/// Text of `count` units of ten to the power -`decimals`, as a user types it.
QString typed(qint64 count, int decimals, QChar mark)
{
    QString digits = QString::number(count < 0 ? -count : count).rightJustified(decimals + 1, u'0');
    if (decimals > 0)
        digits.insert(digits.size() - decimals, mark);
    return count < 0 ? u'-' + digits : digits;
}

/// An amount in øre as "# ##0.00" shows it.
QString shownOre(qint64 ore, QChar mark)
{
    const qint64 magnitude = ore < 0 ? -ore : ore;
    QString whole = QString::number(magnitude / 100);
    whole.insert(std::max<qsizetype>(0, whole.size() - 3), u' ');
    return (ore < 0 ? u"-"_s : QString()) + whole + mark +
           QString::number(magnitude % 100).rightJustified(2, u'0');
}

struct Line
{
    qint64 antall;    // hundredths
    qint64 pris;      // øre
    qint64 mvaTenths; // tenths of a percent
};

/// The exact sums of an order in ten-thousandths.
struct Exact
{
    qint64 netto = 0;
    qint64 lowestMva = 0;
    int ties = 0; ///< each may add one to the lowest VAT

    void add(const Line &line)
    {
        const qint64 x = line.antall * line.pris; // hundredths times øre: ten-thousandths
        const Wide thousandths = Wide(x) * line.mvaTenths;
        netto += x;
        const qint64 above = halfAway(2 * thousandths + 1, 2000);
        const qint64 below = halfAway(2 * thousandths - 1, 2000);
        lowestMva += below;
        ties += int(above - below);
    }
};

constexpr qint64 kKrone = 10000;
constexpr int kOrders = 2000;

qint64 oreOf(qint64 tenThousandthsCount)
{
    return halfAway(tenThousandthsCount, 100);
}

void compare(const MachineLocale &locale, unsigned start, int setting)
{
    const ScopedLocale inForce(locale);
    constexpr QChar mark = u',';
    std::mt19937 random(start);
    const auto between = [&](qint64 from, qint64 to) {
        return std::uniform_int_distribution<qint64>(from, to)(random);
    };
    const std::array<qint64, 6> rates{0, 100, 150, 250, 111, 5};
    int tieless = 0;
    for (int round = 0; round < kOrders; ++round) {
        Ordrelinjer ordre;
        Exact exact;
        for (qint64 left = between(1, 8); left > 0; --left) {
            const Line line{between(-500, 2000), between(0, 2'000'000),
                            rates[size_t(between(0, qint64(rates.size()) - 1))]};
            exact.add(line);
            const int row = ordre.add(typed(line.antall, 2, mark), typed(line.pris, 2, mark),
                                      typed(line.mvaTenths, 1, mark));
            LinjeSum(ordre, row);
            const Wide x = Wide(line.antall) * line.pris;
            ASSERT_EQ(ordre.netto(row), shownOre(halfAway(x, 100), mark));
            ASSERT_EQ(ordre.brutto(row),
                      shownOre(halfAway(x * (1000 + line.mvaTenths), 100 * 1000), mark))
                << ordre.tekst(3, row).toStdString() << " * " << ordre.tekst(4, row).toStdString()
                << " + " << ordre.tekst(7, row).toStdString() << " %";
        }
        BeregnSummer(ordre, avrunding(QString::number(setting)), ordre);

        const auto matches = [&](qint64 mva) {
            const qint64 sum = exact.netto + mva;
            qint64 rest = 0;
            if (setting == 1)
                rest = sum - halfEven(sum, kKrone) * kKrone;
            else if (setting == 2)
                rest = sum % kKrone;
            const QString digits = QString::number(oreOf(sum - rest));
            return ordre.field(SumFelt::MvaKr) == shownOre(oreOf(mva), mark) &&
                   ordre.field(SumFelt::SumBrutto) == shownOre(oreOf(sum - rest), mark) &&
                   ordre.field(SumFelt::Avrunding) == typed(oreOf(-rest), 2, mark) &&
                   ordre.field(SumFelt::Kontrollsiffer) == Modulus10(digits).last(1);
        };
        ASSERT_EQ(ordre.field(SumFelt::SumNetto), shownOre(oreOf(exact.netto), mark));
        int matching = 0;
        for (int up = 0; up <= exact.ties; ++up)
            matching += matches(exact.lowestMva + up) ? 1 : 0;
        ASSERT_GT(matching, 0) << ordre.field(SumFelt::MvaKr).toStdString() << " for "
                               << exact.lowestMva << " with " << exact.ties << " ties";
        tieless += exact.ties == 0 ? 1 : 0;
        // What the fields show can be read again as what they show.
        const QString brutto = ordre.field(SumFelt::SumBrutto);
        ASSERT_EQ(machineForm(Format(toCurrency(machineForm(brutto)), u"# ##0.00")), brutto);
    }
    EXPECT_GT(tieless, kOrders / 10); // orders without any doubt are common
}

} // namespace

TEST(BeregningEgenskap, WithoutRoundingUnderAComma)
{
    compare(commaLocale(), 101, 0);
}

TEST(BeregningEgenskap, RoundedUnderAComma)
{
    compare(commaLocale(), 102, 1);
}

TEST(BeregningEgenskap, CutUnderAComma)
{
    compare(commaLocale(), 103, 2);
}

TEST(BeregningEgenskap, WithoutRoundingUnderAPoint)
{
    compare(pointLocale(), 104, 0);
}

TEST(BeregningEgenskap, RoundedUnderAPoint)
{
    compare(pointLocale(), 105, 1);
}

TEST(BeregningEgenskap, CutUnderAPoint)
{
    compare(pointLocale(), 106, 2);
}

TEST(BeregningEgenskap, NetPricesTimesTheirRateGiveTheGrossPrice)
{
    std::mt19937 random(107);
    std::uniform_int_distribution<qint64> ore(-10'000'000, 10'000'000);
    for (int round = 0; round < 20000; ++round) {
        for (const int rate : {0, 10, 15, 25}) {
            const qint64 price = ore(random) * 100;
            EXPECT_EQ(NettoPris(tenThousandths(price), float(rate), -1),
                      tenThousandths(halfEven(Wide(price) * 100, 100 + rate)))
                << price << " at " << rate;
        }
    }
}

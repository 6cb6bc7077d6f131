#include "posting/run/BokforTest.h"

#include "runtime/Conversions.h"

#include <random>

using namespace Qt::StringLiterals;

namespace {

/// Ten-thousandths of an amount in a row of the database.
qint64 tall(const QString &text)
{
    return toCurrency(text).tenThousandths();
}

/// Runs over random invoices, and what holds of any of them.
class BokforingEgenskapTest : public BokforTest
{
protected:
    using Random = std::mt19937;

    static int mellom(Random &random, int lowest, int highest)
    {
        return std::uniform_int_distribution(lowest, highest)(random);
    }
    static QString literal(qint64 ore)
    {
        return (ore < 0 ? u"-%1.%2"_s : u"%1.%2"_s)
            .arg(qAbs(ore) / 100)
            .arg(qAbs(ore) % 100, 2, 10, QChar(u'0'));
    }

    /// What a random invoice was made of.
    struct Lagt
    {
        int nr;
        bool merket;
        bool iAaret;
        bool fakturert;
        bool kreditnota;
        qint64 avrunding; // ten-thousandths
    };

    /// All groups of an invoice have one sign and outweigh what rounding can grow to.
    Lagt leggTilfeldig(Random &random, int nr)
    {
        static const QString rates[] = {u"25"_s, u"15"_s, u"10"_s, u"0"_s, u"12"_s};
        static const QString statuses[] = {u"Fakturert"_s, u"Fakturert"_s, u"Fakturert"_s,
                                           u"Bokført"_s, u"Betalt"_s};
        Lagt lagt{nr,   mellom(random, 0, 3) > 0,  mellom(random, 0, 24) > 0,
                  true, mellom(random, 0, 5) == 0, 0};
        Faktura faktura{.nr = nr};
        qint64 ore = 0;
        for (int line = mellom(random, 1, 5); line > 0; --line) {
            const qint64 brutto = mellom(random, 5000, 999999) * (lagt.kreditnota ? -1 : 1);
            ore += brutto;
            faktura.linjer.push_back({rates[mellom(random, 0, 4)], literal(brutto)});
        }
        const qint64 avrunding = mellom(random, 0, 1) == 0 ? 0 : mellom(random, -99, 99);
        lagt.avrunding = 100 * avrunding;
        faktura.brutto = literal(ore + avrunding);
        faktura.avrunding = literal(avrunding);
        faktura.fakDato = lagt.iAaret
                              ? u"#%1/15/2014#"_s.arg(mellom(random, 1, 12), 2, 10, QChar(u'0'))
                              : u"#12/31/2013#"_s;
        faktura.status = statuses[mellom(random, 0, 4)];
        lagt.fakturert = faktura.status == u"Fakturert";
        legg(faktura).merket = lagt.merket;
        return lagt;
    }

    /// Holds the database against what was laid in.
    void expectPosted(const std::vector<Lagt> &invoices)
    {
        std::vector<Lagt> posted;
        bool ended = false;
        for (const Lagt &lagt : invoices) {
            if (!lagt.merket || ended)
                continue;
            ended = !lagt.iAaret;
            if (lagt.iAaret && lagt.fakturert)
                posted.push_back(lagt);
        }
        EXPECT_EQ(skjerm.hendelser.contains(u"les fakturaer"_s), !ended);

        QStringList stillFakturert;
        for (const Lagt &lagt : invoices) {
            const bool gone = std::any_of(posted.begin(), posted.end(),
                                          [&](const Lagt &p) { return p.nr == lagt.nr; });
            if (lagt.fakturert && !gone)
                stillFakturert += QString::number(lagt.nr);
        }
        EXPECT_EQ(rows(u"SELECT OrdreNr FROM Ordre WHERE OrdreStatus='Fakturert' ORDER BY ID"_s),
                  stillFakturert);

        const QStringList vouchers = rows(u"SELECT ID,BilagNr FROM Bilag ORDER BY ID"_s);
        const QStringList work = rows(u"SELECT BilagNr,FakNr,Belop,Type FROM tmpTbl ORDER BY ID"_s);
        ASSERT_EQ(vouchers.size(), qsizetype(posted.size()));
        ASSERT_EQ(work.size(), vouchers.size());
        bool credit = false;
        qint64 rounding = 0;
        for (size_t i = 0; i < posted.size(); ++i) {
            SCOPED_TRACE(posted[i].nr);
            credit = credit || posted[i].kreditnota;
            rounding += posted[i].avrunding;
            const QStringList voucher = vouchers[qsizetype(i)].split(u'|');
            qint64 debet = 0;
            qint64 kredit = 0;
            qint64 customer = 0;
            for (const QString &row : rows(
                     u"SELECT Konto,Debet,Kredit FROM BilagLinjer WHERE BilagID="_s + voucher[0])) {
                const QStringList line = row.split(u'|');
                debet += tall(line[1]);
                kredit += tall(line[2]);
                if (line[0] == u"1500")
                    customer = tall(line[1]) + tall(line[2]);
            }
            // What an invoice behind a credit note is out of balance by.
            const bool asCredit = credit && !posted[i].kreditnota;
            EXPECT_EQ(kredit - debet, asCredit ? 2 * rounding : 0);

            const QStringList row = work[qsizetype(i)].split(u'|');
            EXPECT_EQ(row[0], voucher[1]);
            EXPECT_EQ(row[1], QString::number(posted[i].nr));
            EXPECT_EQ(qAbs(tall(row[2])), customer);
            EXPECT_EQ(tall(row[2]) < 0, posted[i].kreditnota);
            EXPECT_EQ(row[3], posted[i].kreditnota ? u"Kreditnota"_s : u"Faktura"_s);
        }
    }
};

} // namespace

TEST_F(BokforingEgenskapTest, VouchersBalanceAndTheRightOrdersArePosted)
{
    constexpr int kRuns = 40;
    int nr = 0;
    for (int run = 0; run < kRuns && !HasFailure(); ++run) {
        SCOPED_TRACE(run);
        Random random(20140309u + unsigned(run));
        for (const QString &table : {u"Bilag"_s, u"BilagLinjer"_s, u"OrdreLinjer"_s, u"Ordre"_s})
            this->run(u"DELETE FROM "_s + table);
        skjerm.rader.clear();
        skjerm.hendelser.clear();
        std::vector<Lagt> invoices;
        for (int count = mellom(random, 1, 9); count > 0; --count)
            invoices.push_back(leggTilfeldig(random, ++nr));
        BokforMerkede(skjerm);
        expectPosted(invoices);
    }
}

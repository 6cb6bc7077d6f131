#include "host/program/HostTest.h"

#include <QDate>
#include <QMap>
#include <QSet>

#include <numeric>

using namespace Qt::StringLiterals;

namespace {

/// What the demo company holds, and that its numbers agree with each other. Amounts are compared in
/// whole øre, read from the text that --sql prints.
class DemoDataTest : public HostTest
{
protected:
    void SetUp() override { makeDemo(); }

    [[nodiscard]] int count(const QString &fromWhere) const
    {
        return single(u"SELECT COUNT (*) FROM "_s + fromWhere).toInt();
    }

    /// Øre of "-12.50"; more than two decimals fail the test.
    static qint64 ore(const QString &amount)
    {
        EXPECT_EQ(amount.section(u'.', 1).size(), 2) << amount.toStdString();
        return QString(amount).remove(u'.').toLongLong();
    }
    static qint64 ore(const Row &row, const QString &column) { return ore(row[column]); }

    /// True when the digits' weighted sum with the given weights from the right is divisible.
    static bool hasCheckDigit11(const QString &digits)
    {
        int sum = 0;
        int weight = 1;
        for (qsizetype i = digits.size() - 1; i >= 0; --i) {
            sum += digits[i].digitValue() * weight;
            weight = weight == 7 ? 2 : weight + 1;
        }
        return sum % 11 == 0;
    }
    static bool hasCheckDigit10(const QString &digits)
    {
        int sum = 0;
        for (qsizetype i = 0; i < digits.size(); ++i) {
            const int fromRight = int(digits.size() - 1 - i);
            const int product = digits[i].digitValue() * (fromRight % 2 == 0 ? 1 : 2);
            sum += product / 10 + product % 10;
        }
        return sum % 10 == 0;
    }
};

TEST_F(DemoDataTest, RegistersAreAsLargeAsAFirmsOwn)
{
    EXPECT_EQ(count(u"Klient"_s), 1);
    EXPECT_EQ(count(u"KundeLev WHERE KundeNr<50000"_s), 30);
    EXPECT_GT(count(u"KundeLev WHERE KundeNr>=50000"_s), 0);
    EXPECT_EQ(count(u"Produkt"_s), 25);
    EXPECT_GE(count(u"Poststed"_s), 100);
    EXPECT_GE(count(u"Bil WHERE Passiv=0 AND BilLoyve<>''"_s), 5);
    EXPECT_GE(count(u"Bil WHERE Passiv=True"_s), 1);
    EXPECT_EQ(single(u"SELECT FirstFakNr FROM Klient"_s), u"1001"_s);
}

TEST_F(DemoDataTest, CustomersLiveAllOverTheCountry)
{
    QSet<QChar> regions;
    for (const Row &row : rows(u"SELECT K.Navn,P.PostSted,K.PostNr FROM KundeLev K LEFT JOIN "
                               u"Poststed P ON K.PostNr=P.PostNr"_s)) {
        EXPECT_NE(row[u"PostSted"_s], u"\\N"_s) << row[u"PostNr"_s].toStdString();
        regions.insert(row[u"PostNr"_s][0]);
    }
    EXPECT_EQ(regions.size(), 10);
    QString texts;
    for (const Row &row : rows(u"SELECT KundeNavn,DeresRef,EgenRef FROM Ordre"_s))
        texts += row.values().join(u' ');
    for (const QChar letter : u"æøåØÅ"_s)
        EXPECT_TRUE(texts.contains(letter)) << QString(letter).toStdString();
}

TEST_F(DemoDataTest, ProductsCoverEachRateWithAndWithoutGrossPrices)
{
    QMap<QString, int> byRate;
    int gross = 0;
    for (const Row &row : rows(u"SELECT MvaSats,BruttoPris FROM Produkt"_s)) {
        ++byRate[row[u"MvaSats"_s]];
        gross += row[u"BruttoPris"_s] == u"True"_s;
    }
    EXPECT_EQ(byRate.keys(), (QStringList{u"0"_s, u"10"_s, u"15"_s, u"25"_s}));
    EXPECT_GT(gross, 0);
    EXPECT_LT(gross, 25);
    // A line's price is without VAT in both cases: 125 with 25 percent included is 100.
    EXPECT_EQ(single(u"SELECT DISTINCT Pris FROM OrdreLinjer WHERE ProduktNr='M220'"_s),
              u"100.00"_s);
    EXPECT_EQ(single(u"SELECT DISTINCT Pris FROM OrdreLinjer WHERE ProduktNr='M230'"_s),
              u"18.40"_s);
}

TEST_F(DemoDataTest, OrdersStandInAllStatusesOverTwoYears)
{
    QMap<QString, int> byStatus;
    QMap<QString, int> byYear;
    int number = 1001;
    for (const Row &row : rows(u"SELECT OrdreNr,OrdreStatus,Year(FakDato) AS Aar,Betalt FROM Ordre "
                               u"ORDER BY OrdreNr"_s)) {
        EXPECT_EQ(row[u"OrdreNr"_s].toInt(), number++);
        EXPECT_EQ(row[u"Betalt"_s], u"False"_s);
        ++byStatus[row[u"OrdreStatus"_s]];
        ++byYear[row[u"Aar"_s]];
    }
    EXPECT_EQ(number, 1061);
    EXPECT_EQ(byStatus.keys(),
              (QStringList{u"Betalt"_s, u"Bokført"_s, u"Fakturert"_s, u"Ordre"_s}));
    EXPECT_EQ(byYear.keys(), (QStringList{u"2013"_s, u"2014"_s}));
    EXPECT_GE(count(u"Ordre WHERE SumBrutto<0"_s), 3);
    EXPECT_GE(count(u"Ordre WHERE SumBrutto<0 AND OrdreStatus='Fakturert'"_s), 1);
    EXPECT_GE(count(u"OrdreLinjer WHERE ProduktNr='' AND ProduktNavn<>''"_s), 5);
    EXPECT_GE(count(u"Ordre WHERE Avrunding>0"_s), 1);
    EXPECT_GE(count(u"Ordre WHERE Avrunding<0"_s), 1);
}

TEST_F(DemoDataTest, StoredSumsOfEachOrderAreThoseOfItsLines)
{
    QHash<QString, std::array<qint64, 3>> lineSums; // net, VAT in øre times 100, gross
    for (const Row &row : rows(u"SELECT OrdreID,PosNr,Antall,Pris,MvaPst,SumNetto,SumBrutto,"
                               u"RabattPst,RabattKr FROM OrdreLinjer"_s)) {
        const qint64 net = ore(row, u"SumNetto"_s);
        const qint64 rate = row[u"MvaPst"_s].toInt();
        const qint64 tenths = qRound64(row[u"Antall"_s].toDouble() * 10);
        EXPECT_EQ(tenths * ore(row, u"Pris"_s), net * 10);
        EXPECT_EQ(net * (100 + rate), ore(row, u"SumBrutto"_s) * 100);
        EXPECT_EQ(row[u"RabattPst"_s], u"0"_s);
        EXPECT_EQ(row[u"RabattKr"_s], u"0.00"_s);
        auto &sums = lineSums[row[u"OrdreID"_s]];
        sums[0] += net;
        sums[1] += net * rate;
        sums[2] += ore(row, u"SumBrutto"_s);
    }
    const auto orders = rows(u"SELECT ID,OrdreNr,SumNetto,MvaKr,SumBrutto,Avrunding FROM Ordre"_s);
    EXPECT_EQ(orders.size(), 60U);
    EXPECT_EQ(lineSums.size(), 60);
    for (const Row &order : orders) {
        SCOPED_TRACE(order[u"OrdreNr"_s].toStdString());
        const auto &sums = lineSums[order[u"ID"_s]];
        EXPECT_EQ(ore(order, u"SumNetto"_s), sums[0]);
        EXPECT_EQ(ore(order, u"MvaKr"_s) * 100, sums[1]);
        EXPECT_EQ(ore(order, u"SumBrutto"_s), sums[2] + ore(order, u"Avrunding"_s));
        EXPECT_NE(ore(order, u"SumBrutto"_s), 0);
        EXPECT_LT(qAbs(ore(order, u"Avrunding"_s)), 100);
        if (ore(order, u"Avrunding"_s) != 0) {
            EXPECT_EQ(ore(order, u"SumBrutto"_s) % 100, 0);
        }
    }
}

TEST_F(DemoDataTest, PositionsRunByTens)
{
    QString order;
    int position = 0;
    for (const Row &row : rows(u"SELECT OrdreID,PosNr FROM OrdreLinjer ORDER BY OrdreID,PosNr"_s)) {
        position = row[u"OrdreID"_s] == order ? position + 10 : 10;
        order = row[u"OrdreID"_s];
        EXPECT_EQ(row[u"PosNr"_s].toInt(), position);
    }
}

TEST_F(DemoDataTest, LongProductNameIsCutOnTheLine)
{
    const QString name = single(u"SELECT ProduktNavn FROM Produkt WHERE ProduktNr='T110'"_s);
    EXPECT_GT(name.size(), 50);
    EXPECT_EQ(single(u"SELECT DISTINCT ProduktNavn FROM OrdreLinjer WHERE ProduktNr='T110'"_s),
              name.left(50));
}

TEST_F(DemoDataTest, HeadersCopyTheCustomer)
{
    for (const Row &row :
         rows(u"SELECT O.OrdreNr,O.KundeNavn,K.Navn,O.FakPostNr,K.PostNr,O.FakPoststed,P.PostSted,"
              u"O.LevPostNr,K.LevPostNr AS EgenLev,O.BetBet,K.BetBet AS Frist,"
              u"O.FakDato,O.ForfallDato,O.OrdreDato,O.LevDato FROM (Ordre O INNER JOIN KundeLev K "
              u"ON O.KundeNr=K.KundeNr) INNER JOIN Poststed P ON O.FakPostNr=P.PostNr"_s)) {
        SCOPED_TRACE(row[u"OrdreNr"_s].toStdString());
        EXPECT_EQ(row[u"KundeNavn"_s], row[u"Navn"_s]);
        EXPECT_EQ(row[u"FakPostNr"_s], row[u"PostNr"_s]);
        EXPECT_EQ(row[u"FakPoststed"_s], row[u"PostSted"_s]);
        EXPECT_EQ(row[u"LevPostNr"_s], row[u"EgenLev"_s]);
        EXPECT_EQ(row[u"BetBet"_s], row[u"Frist"_s]);
        const auto day = [&](const QString &column) {
            return QDate::fromString(row[column], Qt::ISODate);
        };
        EXPECT_EQ(day(u"FakDato"_s).addDays(row[u"BetBet"_s].toInt()), day(u"ForfallDato"_s));
        EXPECT_LE(day(u"OrdreDato"_s), day(u"LevDato"_s));
        EXPECT_LE(day(u"LevDato"_s), day(u"FakDato"_s));
    }
    EXPECT_GT(count(u"Ordre WHERE LevPoststed<>FakPoststed AND LevPostNr<>''"_s), 0);
    EXPECT_GT(count(u"Ordre WHERE LevPostNr=''"_s), 0);
}

TEST_F(DemoDataTest, NumbersHoldTheirCheckDigits)
{
    for (const Row &row : rows(u"SELECT OrdreNr,KundeNr,KID FROM Ordre"_s)) {
        const QString kid = row[u"KID"_s];
        EXPECT_TRUE(hasCheckDigit10(kid)) << kid.toStdString();
        EXPECT_EQ(kid.chopped(1), u"0%1"_s.arg(row[u"KundeNr"_s]) + u"00"_s + row[u"OrdreNr"_s]);
    }
    QSet<QString> seen;
    const auto firms = rows(u"SELECT OrganisasjonsNr FROM KundeLev WHERE OrganisasjonsNr<>''"_s);
    EXPECT_GE(firms.size(), 25U);
    for (const Row &row : firms) {
        const QString number = row[u"OrganisasjonsNr"_s];
        EXPECT_EQ(number.size(), 9);
        EXPECT_TRUE(hasCheckDigit11(number)) << number.toStdString();
        EXPECT_FALSE(seen.contains(number)) << number.toStdString();
        seen.insert(number);
    }
    EXPECT_TRUE(hasCheckDigit11(single(u"SELECT OrganisasjonsNr FROM Klient"_s)));
    const QString account = single(u"SELECT Giro1 FROM Klient"_s);
    EXPECT_EQ(account.size(), 11);
    EXPECT_TRUE(hasCheckDigit11(account));
}

TEST_F(DemoDataTest, SalesAccountIsTheModulesOwnAddition)
{
    EXPECT_EQ(single(u"SELECT Navn FROM Kontoplan WHERE KontoNr=3000"_s),
              u"Salgsinntekter avgiftspliktig"_s);
    EXPECT_EQ(single(u"SELECT Aar FROM Hovedbok WHERE KontoNr=3000"_s), u"2014"_s);
    EXPECT_EQ(count(u"Kontoplan WHERE KontoNr=1500"_s), 1);
    EXPECT_EQ(count(u"Kontoplan WHERE KontoNr=1900"_s), 1);
    EXPECT_EQ(count(u"Kontoplan WHERE KontoNr=7395"_s), 1);
    EXPECT_EQ(count(u"Kontoplan WHERE KontoNr=3100 AND KtoGruppe=55"_s), 1);
}

TEST_F(DemoDataTest, OpeningBalancesSumToNothing)
{
    for (const QLatin1StringView year : {"2013"_L1, "2014"_L1})
        EXPECT_EQ(single(u"SELECT Sum(AapningsSaldo) FROM Hovedbok WHERE Aar="_s + year),
                  u"0.00"_s);
    // What customers owed when the year began.
    EXPECT_EQ(single(u"SELECT AapningsSaldo FROM Hovedbok WHERE KontoNr=1500 AND Aar=2014"_s),
              single(u"SELECT Sum(SumBrutto) FROM Ordre WHERE Year(FakDato)=2013 AND "
                     u"OrdreStatus='Bokført'"_s));
}

TEST_F(DemoDataTest, VouchersBalanceAndCoverThePostedOrders)
{
    QHash<QString, qint64> balance;
    QHash<QString, int> salesLines;
    QHash<QString, Row> customerLine; // by order number
    for (const Row &row : rows(u"SELECT BilagID,Konto,Tekst,Debet,Kredit,MVAkode,cFaktNr,LevNr,"
                               u"FaktDato,FaktForfall FROM BilagLinjer"_s)) {
        balance[row[u"BilagID"_s]] += ore(row, u"Debet"_s) - ore(row, u"Kredit"_s);
        const QString account = row[u"Konto"_s];
        if (account == u"1500"_s) {
            EXPECT_EQ(row[u"cFaktNr"_s].left(1), u"F"_s);
            customerLine.insert(row[u"cFaktNr"_s].mid(1), row);
            continue;
        }
        if (account == u"7395"_s)
            continue;
        ++salesLines[row[u"BilagID"_s]];
        const int code = row[u"MVAkode"_s].toInt();
        EXPECT_EQ(account, code == 0 ? u"3100"_s : u"3000"_s);
        const bool credit = row[u"Tekst"_s].startsWith(u"Kreditnota"_s);
        if (code != 0) {
            EXPECT_EQ(code % 2 == 0, credit) << code;
        }
        EXPECT_EQ(ore(row, credit ? u"Kredit"_s : u"Debet"_s), 0);
    }
    for (auto voucher = balance.cbegin(); voucher != balance.cend(); ++voucher)
        EXPECT_EQ(voucher.value(), 0) << voucher.key().toStdString();

    const auto posted = rows(u"SELECT OrdreNr,KundeNr,SumBrutto,FakDato,ForfallDato FROM Ordre "
                             u"WHERE OrdreStatus='Bokført' OR OrdreStatus='Betalt'"_s);
    EXPECT_EQ(customerLine.size(), qsizetype(posted.size()));
    for (const Row &order : posted) {
        const Row line = customerLine.value(order[u"OrdreNr"_s]);
        SCOPED_TRACE(order[u"OrdreNr"_s].toStdString());
        ASSERT_FALSE(line.isEmpty());
        EXPECT_EQ(ore(line, u"Debet"_s) - ore(line, u"Kredit"_s), ore(order, u"SumBrutto"_s));
        EXPECT_EQ(line[u"LevNr"_s], order[u"KundeNr"_s]);
        EXPECT_EQ(line[u"FaktDato"_s], order[u"FakDato"_s]);
        EXPECT_EQ(line[u"FaktForfall"_s], order[u"ForfallDato"_s]);
    }

    QString year;
    int number = 0;
    const auto vouchers =
        rows(u"SELECT ID,BilagNr,Aar,Year(BilagDato) AS DatoAar,AntPost,BilagType "
             u"FROM Bilag ORDER BY Aar,BilagNr"_s);
    EXPECT_EQ(vouchers.size(), posted.size());
    for (const Row &voucher : vouchers) {
        number = voucher[u"Aar"_s] == year ? number + 1 : 1;
        year = voucher[u"Aar"_s];
        EXPECT_EQ(voucher[u"BilagNr"_s].toInt(), number);
        EXPECT_EQ(voucher[u"DatoAar"_s], year);
        EXPECT_EQ(voucher[u"AntPost"_s].toInt(), salesLines.value(voucher[u"ID"_s]));
        EXPECT_EQ(voucher[u"BilagType"_s], u"Faktura"_s);
    }
}

} // namespace

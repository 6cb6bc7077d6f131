#include "benchmarks/support/Company.h"

#include <utility>

namespace bench {

Company::Company(Database &database, int linesOfAnOrder)
    : m_database(database), m_linesOfAnOrder(linesOfAnOrder), m_lines(linesOfAnOrder)
{
    m_database.send(R"(INSERT INTO "Klient"
        ("KlientNr","Navn","Adr1","Adr2","PostNr","TlfArbeid","OrganisasjonsNr","Giro1")
        VALUES (5,'Fjell Frakt AS','Postboks 1','Åsveien 2','1001','62510000','717171721',
                '99991234566'))");
    growPostalCodes(kFewPostalCodes);
    growCustomers(kFewCustomers);
    growProducts(kFewProducts);
    growOrders(kFewOrders);
    m_database.settle();
}

void Company::insert(int first, int last, const QByteArray &into, const QByteArray &select)
{
    if (first > last)
        return;
    m_database.send("WITH RECURSIVE n(i) AS (SELECT " + QByteArray::number(first) +
                    " UNION ALL SELECT i+1 FROM n WHERE i<" + QByteArray::number(last) +
                    ") INSERT INTO " + into + " SELECT " +
                    QByteArray(select).replace("{kr}", QByteArray::number(m_database.krone())));
}

void Company::growPostalCodes(int count)
{
    insert(std::exchange(m_postalCodes, count) + 1, count, R"("Poststed" ("PostNr","PostSted"))",
           "CAST(1000+i AS TEXT),'Sted ' || i FROM n");
}

void Company::growCustomers(int count)
{
    // Spread over the postal codes that there are.
    const QByteArray codes = QByteArray::number(m_postalCodes);
    insert(std::exchange(m_customers, count) + 1, count,
           R"("KundeLev" ("KlientNr","KundeNr","Navn","Adr1","Adr2","PostNr","BetBet",
              "OrganisasjonsNr","LevAdr1","LevAdr2","LevPostNr","SammeLevAdr","FakturaType"))",
           "5,10000+i,'Ærlig Øl ' || i || ' AS','Postboks 7','Åsveien 3',"
           "CAST(1001+i%" +
               codes +
               " AS TEXT),14,'411223345','Terminal 2','Lagerveien 9',"
               "CAST(1001+(7*i)%" +
               codes + " AS TEXT),FALSE,'EHF' FROM n");
}

void Company::growProducts(int count)
{
    insert(std::exchange(m_products, count) + 1, count,
           R"("Produkt" ("KlientNr","ProduktNr","ProduktNavn","ProduktGruppe","Enhet","InnPris",
              "UtPris","MvaSats","BruttoPris"))",
           "5,'P' || (100000+i),'Kjøring med krokbil, strekning ' || i,'TRANSPORT','stk',"
           "400*{kr},500*{kr},25,FALSE FROM n");
}

QByteArray Company::sumsOf(int lines) const
{
    // VAT as insertLines gives it in turn: 15, 25 and 10 percent.
    constexpr qint64 kNet = 1200; // of which each rate makes whole kroner
    const qint64 net = kNet * lines;
    const qint64 percents =
        15 * qint64((lines + 2) / 3) + 25 * ((lines + 1) / 3) + 10 * (lines / 3);
    const qint64 vat = kNet * percents / 100;
    QByteArray sums;
    for (const qint64 sum : {vat, net, net + vat})
        sums += (sums.isEmpty() ? "" : ",") + QByteArray::number(sum * m_database.krone());
    return sums;
}

void Company::growOrders(int count)
{
    const int first = std::exchange(m_orders, count) + 1;
    insert(first, count,
           R"("Ordre" ("KlientNr","OrdreNr","OrdreStatus","Betalt","EgenRef","DeresRef","KundeNr",
              "KundeNavn","FakAdresse1","FakAdresse2","FakPostNr","FakPoststed","LevAdresse1",
              "LevAdresse2","LevPostNr","LevPoststed","KID","BetBet","OrdreDato","FakDato",
              "ForfallDato","LevDato","RabattPst","RabattKr","MvaKr","SumNetto","SumBrutto",
              "Avrunding","Kontrollsiffer"))",
           "5,i,'Ordre',FALSE,'Kåre','Innkjøp',10001+i%25,'Ærlig Øl AS','Postboks 7',"
           "'Åsveien 3','0010','Oslo','Terminal 2','Lagerveien 9','2317','Hamar','2001000100018',"
           "14,'2014-03-09','2014-03-09','2014-03-23','2014-03-07',0,0," +
               sumsOf(m_linesOfAnOrder) + ",0,7 FROM n");
    insertLines(R"("OrdreNr">=)" + QByteArray::number(first), 1, m_linesOfAnOrder);
}

void Company::growLines(int count)
{
    insertLines(R"("OrdreNr"=1)", std::exchange(m_lines, count) + 1, count);
    m_database.send(R"(UPDATE "Ordre" SET ("MvaKr","SumNetto","SumBrutto")=()" + sumsOf(count) +
                    R"() WHERE "OrdreNr"=1)");
}

void Company::insertLines(const QByteArray &orders, int first, int last)
{
    insert(first, last,
           R"("OrdreLinjer" ("OrdreID","PosNr","ProduktNr","ProduktNavn","Antall","Pris",
              "RabattPst","RabattKr","MvaPst","SumNetto","SumBrutto"))",
           R"("ID",10*i,'P' || (100001+("OrdreNr"+i)%25),'Kjøring på Østlandet',2.5,480*{kr},0,0,
              CASE i%3 WHEN 0 THEN 10 WHEN 1 THEN 15 ELSE 25 END,1200*{kr},1500*{kr}
              FROM "Ordre",n WHERE )" +
               orders);
}

void Company::growVouchers(int count)
{
    insertVouchers(std::exchange(m_vouchers, count) + 1, count, "2014");
}

void Company::growOldVouchers(int count)
{
    insertVouchers(std::exchange(m_oldVouchers, count) + 1, count, "2013");
}

void Company::insertVouchers(int first, int last, const QByteArray &year)
{
    insert(first, last,
           R"("Bilag" ("KlientNr","BilagNr","BilagDato","Tekst","BilagType","AntPost","Aar"))",
           "5,i,'" + year + "-03-09','Faktura Ærlig Øl AS','Faktura',1," + year + " FROM n");
    insert(1, 2, R"("BilagLinjer" ("BilagID","Konto","Tekst","LevNr","Debet","Kredit","MVAkode"))",
           R"("ID",1500*i,'Kundefaktura',10001,100*{kr},0,0 FROM "Bilag",n WHERE "Aar"=)" + year +
               R"( AND "BilagNr">=)" + QByteArray::number(first));
}

void Company::setStatus(const QByteArray &status, int upTo)
{
    m_database.send(R"(UPDATE "Ordre" SET "OrdreStatus"=')" + status + R"(' WHERE "OrdreNr"<=)" +
                    QByteArray::number(upTo));
}

} // namespace bench

#include "output/ehf3/Ehf3Test.h"

#include <QFile>

using namespace Qt::StringLiterals;

Ehf3Test::Ehf3Test()
{
    makeParentTables();
    run(u"INSERT INTO Klient (KlientNr,Navn,Adr1,Adr2,PostNr,TlfArbeid,OrganisasjonsNr,Giro1) "
        u"VALUES (5,'Blåbær & Co Transport AS','Postboks 12','Storgata 5','2317','62 51 00 00',"
        u"'NO 717 171 721 MVA','9999.12.34566')"_s);
    run(u"INSERT INTO Poststed (PostNr,PostSted) VALUES ('2317','Hamar')"_s);
    run(u"INSERT INTO KundeLev (KlientNr,KundeNr,Navn,OrganisasjonsNr) VALUES "
        u"(5,10001,'Et navn av i dag','411223345')"_s);
    // Another client's customer of the same number is another customer.
    run(u"INSERT INTO KundeLev (KlientNr,KundeNr,Navn,OrganisasjonsNr) VALUES (6,10001,'','1')"_s);
    EXPECT_EQ(startModule(), 1);

    const std::initializer_list<std::pair<QString, QString>> products{
        {u"T1"_s, u"'time'"_s}, {u"S1"_s, u"'Stk.'"_s}, {u"K1"_s, u"'kg'"_s}, {u"N1"_s, u"Null"_s}};
    for (const auto &[number, unit] : products)
        run(u"INSERT INTO Produkt (KlientNr,ProduktNr,Enhet) VALUES (5,'%1',%2)"_s.arg(number,
                                                                                       unit));
    // A second product of the number must not double the line, nor another client's give its unit.
    run(u"INSERT INTO Produkt (KlientNr,ProduktNr,Enhet) VALUES (5,'T1','km')"_s);
    run(u"INSERT INTO Produkt (KlientNr,ProduktNr,Enhet) VALUES (6,'X1','kg')"_s);
}

void Ehf3Test::enterOrder(int nr, const QString &brutto, std::initializer_list<Ordrerad> rader)
{
    run(u"INSERT INTO Ordre (KlientNr,OrdreNr,OrdreStatus,EgenRef,DeresRef,KundeNr,KundeNavn,"
        u"FakAdresse1,FakAdresse2,FakPostNr,FakPoststed,LevAdresse1,LevAdresse2,LevPostNr,"
        u"LevPoststed,KID,BetBet,FakDato,ForfallDato,LevDato,SumBrutto) VALUES (5,%1,'Ordre',"
        u"'Kåre','Innkjøp',10001,'Ærlig Øl & Ås AS','Postboks 7','Åsveien 3','0010','Oslo',"
        u"'Terminal 2','Lagerveien 9','2317','Hamar','2001000100018',14,#03/09/2014#,"
        u"#03/23/2014#,#03/07/2014#,%2)"_s.arg(nr)
            .arg(brutto));
    const QString id =
        rows(u"SELECT ID FROM Ordre WHERE KlientNr=5 AND OrdreNr=%1"_s.arg(nr)).value(0);
    int position = 0;
    for (const Ordrerad &rad : rader) {
        run(u"INSERT INTO OrdreLinjer (OrdreID,PosNr,ProduktNr,ProduktNavn,Antall,Pris,MvaPst,"
            u"SumNetto) VALUES (%1,%2,%3)"_s.arg(id)
                .arg(position += 10)
                .arg(QStringList(rad).join(u',')));
    }
}

void Ehf3Test::change(int nr, const QString &assignments)
{
    run(u"UPDATE Ordre SET %1 WHERE KlientNr=5 AND OrdreNr=%2"_s.arg(assignments).arg(nr));
}

QByteArray Ehf3Test::document(int nr)
{
    const Ehf3 ehf = Ehf3Skriver(5).lag(nr);
    EXPECT_EQ(ehf.mangler, QString());
    return ehf.dokument;
}

QString Ehf3Test::value(int nr, const QByteArray &element)
{
    const QByteArray bytes = document(nr);
    const qsizetype tag = bytes.indexOf('<' + element);
    if (tag < 0)
        return u"(mangler)"_s;
    const qsizetype start = bytes.indexOf('>', tag) + 1;
    return QString::fromUtf8(bytes.sliced(start, bytes.indexOf("</" + element, start) - start));
}

QStringList Ehf3Test::missing(int nr)
{
    const Ehf3 ehf = Ehf3Skriver(5).lag(nr);
    EXPECT_EQ(ehf.dokument.isEmpty(), !ehf.mangler.isEmpty());
    return ehf.mangler.split(u'\n', Qt::SkipEmptyParts);
}

QByteArray Ehf3Test::golden(const char *name)
{
    QFile file(QStringLiteral(EHF3_GOLDEN_FOLDER "/") + QString::fromLatin1(name));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name;
    return file.readAll();
}

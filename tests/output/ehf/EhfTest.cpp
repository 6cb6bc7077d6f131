#include "output/ehf/EhfTest.h"

#include "output/ehf/EhfFil.h"

#include <QBuffer>
#include <QFile>

using namespace Qt::StringLiterals;

EhfTest::EhfTest()
{
    makeParentTables();
    run(u"INSERT INTO Klient (KlientNr,Navn,Adr1,Adr2,PostNr,OrganisasjonsNr,Giro1) VALUES "
        u"(5,'Blåbær & Co Transport AS','Postboks 12','Storgata 5','2317','NO 912345678',"
        u"'1503.40.12345')"_s);
    run(u"INSERT INTO Poststed (PostNr,PostSted) VALUES ('2317','Hamar')"_s);
    EXPECT_EQ(startModule(), 1);

    const std::initializer_list<std::pair<QString, QString>> products{
        {u"T1"_s, u"'time'"_s}, {u"T2"_s, u"'T'"_s},  {u"S1"_s, u"'Stk'"_s}, {u"S2"_s, u"''"_s},
        {u"P1"_s, u"'pcs'"_s},  {u"K1"_s, u"'kg'"_s}, {u"N1"_s, u"Null"_s}};
    for (const auto &[number, unit] : products)
        run(u"INSERT INTO Produkt (KlientNr,ProduktNr,Enhet) VALUES (5,'"_s + number + u"',"_s +
            unit + u')');
    // Another client's product of the same number must not double the line.
    run(u"INSERT INTO Produkt (KlientNr,ProduktNr,Enhet) VALUES (6,'T1','kg')"_s);
    run(u"INSERT INTO Produkt (KlientNr,ProduktNr,Enhet) VALUES (6,'X1','kg')"_s);
}

void EhfTest::enterOrder(int nr, const QString &netto, const QString &mva, const QString &brutto,
                         std::initializer_list<Linje> linjer)
{
    const QString number = QString::number(nr);
    run(u"INSERT INTO Ordre (KlientNr,OrdreNr,OrdreStatus,EgenRef,DeresRef,KundeNr,KundeNavn,"
        u"FakAdresse1,FakAdresse2,FakPostNr,FakPoststed,LevAdresse1,LevAdresse2,LevPostNr,"
        u"LevPoststed,KID,BetBet,FakDato,ForfallDato,LevDato,SumNetto,MvaKr,SumBrutto) VALUES (5,"_s +
        number +
        u",'Ordre','Kåre','Innkjøp',10001,'Ærlig Øl & Ås AS','Postboks 7','Åsveien 3','0010',"
        u"'Oslo','Terminal 2','Lagerveien 9','2317','Hamar','2001000100018',14,#03/09/2014#,"
        u"#03/23/2014#,#03/07/2014#,"_s +
        netto + u',' + mva + u',' + brutto + u')');
    const QString id =
        rows(u"SELECT ID FROM Ordre WHERE KlientNr=5 AND OrdreNr="_s + number).join(u',');
    for (const Linje &linje : linjer) {
        const QStringList values(linje);
        run(u"INSERT INTO OrdreLinjer (OrdreID,PosNr,ProduktNr,ProduktNavn,Antall,Pris,MvaPst,"
            u"SumNetto,RabattPst,RabattKr,SumBrutto) VALUES ("_s +
            id + u',' + values.join(u',') + u",0,0,0)"_s);
    }
}

void EhfTest::change(int nr, const QString &assignments)
{
    run(u"UPDATE Ordre SET "_s + assignments + u" WHERE KlientNr=5 AND OrdreNr="_s +
        QString::number(nr));
}

EhfTest::Outcome EhfTest::write(int kreditnota, const QString &ordreNr)
{
    QBuffer file;
    file.open(QIODevice::WriteOnly);
    const int error = raised([&] { SkrivEhfFil(file, kreditnota, ordreNr); });
    return {file.data(), error};
}

QByteArray EhfTest::golden(const char *name)
{
    QFile file(QStringLiteral(EHF_GOLDEN_FOLDER "/") + QString::fromLatin1(name));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name;
    return file.readAll();
}

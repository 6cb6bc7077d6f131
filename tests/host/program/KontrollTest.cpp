#include "host/program/HostTest.h"

using namespace Qt::StringLiterals;

/// The check of the books, on the demo company with one planted fault at a time.
class KontrollTest : public HostTest
{
protected:
    Outcome check() { return host({u"--dsn"_s, m_file, u"--aar"_s, u"2014"_s, u"--kontroll"_s}); }
    /// The findings after the statements have been run in the file, which is then whole again.
    QStringList foundAfter(const QByteArray &sql)
    {
        const QByteArray whole = content(u"demo.db"_s);
        runInFile(u"demo.db"_s, sql);
        const Outcome outcome = check();
        EXPECT_EQ(outcome.status, outcome.out.startsWith("Bøkene til") ? 0 : 1);
        for (const QString &name : files()) {
            if (name != u"demo.db")
                QFile::remove(path(name));
        }
        write(u"demo.db"_s, whole);
        return QString::fromUtf8(outcome.out).split(u'\n', Qt::SkipEmptyParts);
    }

    const QString m_file = makeDemo();
};

TEST_F(KontrollTest, TheDemoCompanysBooksAreInOrder)
{
    const Outcome outcome = check();
    EXPECT_EQ(outcome.status, 0) << ::testing::PrintToString(outcome);
    EXPECT_EQ(outcome.out, "Bøkene til klient 1 i 2014 er i orden\n");
}

TEST_F(KontrollTest, EachFaultIsALineAndTheStatusTells)
{
    const struct
    {
        QByteArray sql; // amounts as ten-thousandths
        QStringList found;
    } faults[] = {
        {"UPDATE BilagLinjer SET Kredit=Kredit-8000 WHERE BilagID=35 AND Konto=3000",
         {u"bilag 11 går ikke i balanse: 0,80 for mye i debet"_s}},
        {"INSERT INTO BilagLinjer (BilagID,Konto,Tekst,Debet,Kredit) VALUES "
         "(0,1500,'Kundefaktura 7',125000,0)",
         {u"linje uten bilag: konto 1500, «Kundefaktura 7», debet 12,50, kredit 0,00"_s}},
        {"UPDATE Bilag SET AntPost=2 WHERE ID=35",
         {u"bilag 11 skal ha 2 salgslinjer (AntPost), men har 1"_s}},
        {"UPDATE BilagLinjer SET cFaktNr='F1036' WHERE cFaktNr='F1035';"
         "UPDATE Ordre SET OrdreStatus='Ordre' WHERE OrdreNr=1035",
         {u"F1036 har 2 kundelinjer, i bilag 11, 12"_s,
          u"bilag 11: kundelinjen til faktura 1036 er 33 825,00 mot fakturasummen 4 600,00, "
          "forskjell 29 225,00"_s}},
        {"UPDATE Bilag SET BilagNr=12 WHERE ID=35", {u"bilag 12 finnes flere ganger"_s}},
        {"UPDATE Ordre SET OrdreStatus='Bokført' WHERE OrdreNr=1044",
         {u"faktura 1044 er «Bokført», men har ikke bilag"_s}},
        {"UPDATE Ordre SET OrdreStatus='Betalt' WHERE OrdreNr=1044",
         {u"faktura 1044 er «Betalt», men har ikke bilag"_s}},
        {"UPDATE Ordre SET OrdreStatus='Fakturert' WHERE OrdreNr=1035",
         {u"faktura 1035 er «Fakturert», men har bilag fra før"_s}},
        {"UPDATE BilagLinjer SET Debet=Debet+5000 WHERE BilagID=35 AND Konto=1500;"
         "UPDATE BilagLinjer SET Kredit=Kredit+5000 WHERE BilagID=35 AND Konto=3000",
         {u"bilag 11: kundelinjen til faktura 1035 er 33 825,50 mot fakturasummen 33 825,00, "
          "forskjell 0,50"_s}},
        {"UPDATE BilagLinjer SET Konto=3999 WHERE BilagID=35 AND Konto=3000",
         {u"konto 3999 mangler i kontoplanen, brukt i bilag 11"_s}},
        {"UPDATE OrdreLinjer SET SumBrutto=SumBrutto-10000 WHERE ID=191",
         {u"ordre 1060: linjene og avrundingen gir 4 944,00, hodet har 4 945,00, forskjell 1,00"_s}},
        {"UPDATE Ordre SET OrdreNr=1064 WHERE OrdreNr=1060",
         {u"ordrenummer 1060 til 1063 mangler"_s}},
    };
    for (const auto &fault : faults)
        EXPECT_EQ(foundAfter(fault.sql), fault.found) << fault.sql.toStdString();
}

TEST_F(KontrollTest, NumbersThatAreThereTwiceAreTold)
{
    // A table that came without its constraint.
    const QByteArray columns = "ID,KlientNr,OrdreNr,OrdreStatus,FakDato,SumBrutto,Avrunding";
    EXPECT_EQ(foundAfter("CREATE TABLE Kopi (ID INTEGER PRIMARY KEY,KlientNr SHORT,OrdreNr LONG,"
                         "OrdreStatus TEXT(10),FakDato DATE,SumBrutto CURRENCY,Avrunding CURRENCY);"
                         "INSERT INTO Kopi SELECT " +
                         columns +
                         " FROM Ordre; DROP TABLE Ordre; ALTER TABLE Kopi RENAME TO Ordre;"
                         "UPDATE Ordre SET OrdreNr=1060 WHERE OrdreNr=1059"),
              (QStringList{u"ordrenummer 1059 mangler"_s, u"ordrenummer 1060 finnes 2 ganger"_s}));
}

TEST_F(KontrollTest, WhatSqliteFindsWrongWithTheFileIsTold)
{
    EXPECT_EQ(foundAfter("PRAGMA ignore_check_constraints=ON;"
                         "UPDATE Produkt SET KlientNr=3000000000 WHERE ID=1"),
              QStringList{u"databasefilen: CHECK constraint failed in Produkt"_s});
}

TEST_F(KontrollTest, RowsThatCannotBeReadAreTold)
{
    EXPECT_EQ(
        foundAfter("UPDATE Ordre SET ForfallDato='9.3.2014' WHERE OrdreNr IN (1044,1050);"
                   "UPDATE BilagLinjer SET FaktDato='2014-02-30' WHERE cFaktNr='F1035'"),
        (QStringList{
            u"raden med ID 44 i Ordre kan ikke leses: Databasen holder en verdi i feltet "
            "«ForfallDato» som ikke passer til feltets type."_s,
            u"raden med ID 50 i Ordre kan ikke leses: Databasen holder en verdi i feltet "
            "«ForfallDato» som ikke passer til feltets type."_s,
            u"raden med ID 88 i BilagLinjer kan ikke leses: Databasen holder en verdi i feltet "
            "«FaktDato» som ikke passer til feltets type."_s}));
}

TEST_F(KontrollTest, ARowWhoseSumCannotBeReadIsTold)
{
    EXPECT_EQ(foundAfter("UPDATE Ordre SET SumBrutto='mye' WHERE OrdreNr=1045"),
              QStringList{u"raden med ID 45 i Ordre kan ikke leses: Databasen holder en verdi i "
                          "feltet «SumBrutto» som ikke passer til feltets type."_s});
}

TEST_F(KontrollTest, AnOrderWithoutANumberIsToldByItsKey)
{
    EXPECT_EQ(foundAfter("UPDATE Ordre SET OrdreNr=NULL WHERE ID=60"),
              QStringList{u"ordren med ID 60 har ikke noe nummer"_s});
}

TEST_F(KontrollTest, BooksOfAClientThatIsNotThereAreNotInOrder)
{
    expectRefusal(host({u"--dsn"_s, m_file, u"--klient"_s, u"9"_s, u"--kontroll"_s}), 1,
                  u"klient 9 finnes ikke"_s);
}

TEST_F(KontrollTest, AnotherYearAndClientAreTheirOwn)
{
    change(u"UPDATE Bilag SET AntPost=9 WHERE Aar=2013"_s);
    EXPECT_EQ(check().status, 0);
    expectRefusal(host({u"--dsn"_s, m_file, u"--kontroll"_s, u"--demo"_s}), 2, u"bare ett"_s);
}

#include "data/Schema.h"
#include "data/clsAdoUtils.h"
#include "shell/component/clsFaktura.h"
#include "state/Messages.h"
#include "state/SharedState.h"
#include "support/ModuleTest.h"
#include "support/SessionTap.h"

using namespace Qt::StringLiterals;

namespace {

const QString kCreateOrdre =
    u"CREATE TABLE Ordre (ID COUNTER CONSTRAINT ID PRIMARY KEY, KlientNr SHORT, OrdreNr LONG, CONSTRAINT KlientOrdre UNIQUE (KlientNr, OrdreNr),OrdreStatus TEXT(10), Betalt BIT, EgenRef TEXT(20), DeresRef TEXT(20), KundeNr LONG, KundeNavn TEXT(40), KundeOrgNr TEXT(20), FakAdresse1 TEXT(40), FakAdresse2 TEXT(40), FakPostNr TEXT(10), FakPoststed TEXT(40), LevAdresse1 TEXT(40), LevAdresse2 TEXT(40), LevPostNr TEXT(10), LevPoststed TEXT(40), KID TEXT(25), BetBet SHORT, OrdreDato DATE, FakDato DATE, ForfallDato DATE, LevDato DATE, RabattPst SINGLE, RabattKr CURRENCY, MvaKr CURRENCY, SumNetto CURRENCY, SumBrutto CURRENCY, Avrunding CURRENCY, Kontrollsiffer SHORT)"_s;
const QString kCreateProdukt =
    u"CREATE TABLE Produkt (ID COUNTER CONSTRAINT ID PRIMARY KEY, KlientNr LONG, ProduktNr TEXT(20), ProduktNavn TEXT(100), ProduktGruppe TEXT(10), Enhet TEXT(10), InnPris CURRENCY, UtPris CURRENCY, MvaSats SINGLE, BruttoPris BIT)"_s;
const QString kCreateOrdreLinjer =
    u"CREATE TABLE OrdreLinjer (ID COUNTER CONSTRAINT ID PRIMARY KEY, OrdreID LONG CONSTRAINT OrdreID REFERENCES Ordre (ID), PosNr SHORT, ProduktNr TEXT(20), ProduktNavn TEXT(50), Antall SINGLE, Pris CURRENCY, RabattPst SINGLE, RabattKr CURRENCY, MvaPst SINGLE, SumNetto CURRENCY, SumBrutto CURRENCY)"_s;
const QStringList kUpgrade{u"ALTER TABLE KundeLev ADD COLUMN LevAdr1 TEXT(40)"_s,
                           u"ALTER TABLE KundeLev ADD COLUMN LevAdr2 TEXT(40)"_s,
                           u"ALTER TABLE KundeLev ADD COLUMN LevPostNr TEXT(10)"_s,
                           u"ALTER TABLE KundeLev ADD COLUMN SammeLevAdr BIT"_s,
                           u"ALTER TABLE KundeLev ADD COLUMN FakturaType TEXT(10)"_s,
                           u"ALTER TABLE Klient ADD COLUMN Logo LONGBINARY NULL"_s,
                           u"ALTER TABLE Klient ADD COLUMN FirstFakNr LONG NULL"_s,
                           u"ALTER TABLE Produkt ADD COLUMN BruttoPris BIT"_s,
                           u"ALTER TABLE Ordre ADD COLUMN KundeOrgNr TEXT(20)"_s,
                           u"ALTER TABLE Ordre ADD COLUMN Avrunding CURRENCY"_s,
                           u"ALTER TABLE Klient ADD COLUMN FakTekstBruk SHORT NULL"_s,
                           u"ALTER TABLE Klient ADD COLUMN FakTekst1 TEXT(255)"_s,
                           u"ALTER TABLE Klient ADD COLUMN FakTekst2 TEXT(255)"_s};
const QString kCountAccount =
    u"SELECT COUNT (*) FROM Kontoplan WHERE KlientNr= 5 AND KontoNr=3000"_s;
const QStringList kMakeAccount{
    u"INSERT INTO Kontoplan (KlientNr,KontoNr,Navn,FastMvaKode,Std,NaerSkjema2,KtoGruppe) VALUES ( 5,3000,'Salgsinntekter avgiftspliktig',1,True,3000,55)"_s,
    u"INSERT INTO Hovedbok (KlientNr,KontoNr,Aar,AapningsSaldo) VALUES ( 5,3000, 2014,0)"_s};
const QString kAddAccount =
    u"INSERT INTO Kontoplan (KlientNr,KontoNr,Navn) VALUES (5,3000,'Salg')"_s;

/// What a start makes of databases of every age.
class TabellerTest : public ModuleTest
{
protected:
    TabellerTest()
    {
        messages::setBox([this](const QString &text, int) { boxes += text; });
    }

    /// The statements of one start.
    QStringList statementsOfAStart()
    {
        SessionTap tap;
        moduleInit = startModule();
        return tap.statements();
    }
    /// "Name:type code" of a table's columns, as a fresh picture of the catalogue has them.
    QStringList columns(const QString &table)
    {
        gSchema.clear();
        (void)TableExists(table);
        QStringList result;
        for (const SchemaCol &known : gSchema) {
            if (known.table == table)
                result += known.column + u':' + QString::number(known.dataType);
        }
        return result;
    }

    qint16 moduleInit = -1;
    QStringList boxes;
};

TEST_F(TabellerTest, ANewDatabaseGetsEveryStatementInOrder)
{
    makeParentTables();
    EXPECT_EQ(statementsOfAStart(),
              QStringList({kCreateOrdre, kCreateProdukt, kCreateOrdreLinjer}) + kUpgrade +
                  QStringList(kCountAccount) + kMakeAccount);
    EXPECT_EQ(moduleInit, 1);
    // The picture knew nothing of the tables just made, so three columns were refused.
    EXPECT_TRUE(gDB->LastError().startsWith(u"-2147217858 - "));
    EXPECT_EQ(boxes, QStringList());
}

TEST_F(TabellerTest, EveryStartAsksForTheIndexOfTheProducts)
{
    makeParentTables();
    for (const bool refused : {false, true}) {
        SessionTap tap;
        if (refused)
            tap.fail(u"provideIndex"_s);
        EXPECT_EQ(startModule(), 1);
        EXPECT_EQ(tap.calls().count(u"provideIndex Produkt.ProduktNr"_s), 1);
        reload();
    }
}

TEST_F(TabellerTest, AnUpToDateDatabaseIsOnlyCounted)
{
    makeParentTables();
    EXPECT_EQ(startModule(), 1);
    reload();
    EXPECT_EQ(statementsOfAStart(), QStringList(kCountAccount));
    EXPECT_EQ(moduleInit, 1);
    EXPECT_EQ(gDB->LastError(), QString());
}

TEST_F(TabellerTest, TheModulesTablesHaveTheToldColumns)
{
    makeParentTables();
    EXPECT_EQ(startModule(), 1);
    EXPECT_EQ(
        columns(u"Ordre"_s),
        QStringList(
            {u"ID:3"_s,          u"KlientNr:2"_s,      u"OrdreNr:3"_s,       u"OrdreStatus:202"_s,
             u"Betalt:11"_s,     u"EgenRef:202"_s,     u"DeresRef:202"_s,    u"KundeNr:3"_s,
             u"KundeNavn:202"_s, u"KundeOrgNr:202"_s,  u"FakAdresse1:202"_s, u"FakAdresse2:202"_s,
             u"FakPostNr:202"_s, u"FakPoststed:202"_s, u"LevAdresse1:202"_s, u"LevAdresse2:202"_s,
             u"LevPostNr:202"_s, u"LevPoststed:202"_s, u"KID:202"_s,         u"BetBet:2"_s,
             u"OrdreDato:7"_s,   u"FakDato:7"_s,       u"ForfallDato:7"_s,   u"LevDato:7"_s,
             u"RabattPst:4"_s,   u"RabattKr:6"_s,      u"MvaKr:6"_s,         u"SumNetto:6"_s,
             u"SumBrutto:6"_s,   u"Avrunding:6"_s,     u"Kontrollsiffer:2"_s}));
    EXPECT_EQ(columns(u"OrdreLinjer"_s),
              QStringList({u"ID:3"_s, u"OrdreID:3"_s, u"PosNr:2"_s, u"ProduktNr:202"_s,
                           u"ProduktNavn:202"_s, u"Antall:4"_s, u"Pris:6"_s, u"RabattPst:4"_s,
                           u"RabattKr:6"_s, u"MvaPst:4"_s, u"SumNetto:6"_s, u"SumBrutto:6"_s}));
    EXPECT_EQ(columns(u"Produkt"_s),
              QStringList({u"ID:3"_s, u"KlientNr:3"_s, u"ProduktNr:202"_s, u"ProduktNavn:202"_s,
                           u"ProduktGruppe:202"_s, u"Enhet:202"_s, u"InnPris:6"_s, u"UtPris:6"_s,
                           u"MvaSats:4"_s, u"BruttoPris:11"_s}));
}

TEST_F(TabellerTest, TheParentsTablesGetTheirColumns)
{
    makeParentTables();
    EXPECT_EQ(startModule(), 1);
    EXPECT_EQ(columns(u"KundeLev"_s).last(5),
              QStringList({u"LevAdr1:202"_s, u"LevAdr2:202"_s, u"LevPostNr:202"_s,
                           u"SammeLevAdr:11"_s, u"FakturaType:202"_s}));
    EXPECT_EQ(columns(u"Klient"_s).last(5),
              QStringList({u"Logo:205"_s, u"FirstFakNr:3"_s, u"FakTekstBruk:2"_s,
                           u"FakTekst1:202"_s, u"FakTekst2:202"_s}));
}

TEST_F(TabellerTest, TheSalesAccountIsMadeForTheActiveClientAndYear)
{
    makeParentTables();
    run(u"INSERT INTO Kontoplan (KlientNr,KontoNr,Navn) VALUES (6,3000,'En annen klients')"_s);
    EXPECT_EQ(startModule(), 1);
    EXPECT_EQ(rows(u"SELECT Navn,FastMvaKode,Std,NaerSkjema2,KtoGruppe FROM Kontoplan WHERE "
                   u"KlientNr=5"_s),
              QStringList(u"Salgsinntekter avgiftspliktig|1|True|3000|55"_s));
    EXPECT_EQ(rows(u"SELECT * FROM Hovedbok"_s), QStringList(u"5|3000|2014|0"_s));
}

TEST_F(TabellerTest, AnExistingSalesAccountGetsNothingNotEvenInANewYear)
{
    makeParentTables();
    run(kAddAccount);
    EXPECT_EQ(startModule(), 1);
    EXPECT_EQ(rows(u"SELECT Navn FROM Kontoplan"_s), QStringList(u"Salg"_s));
    EXPECT_EQ(rows(u"SELECT * FROM Hovedbok"_s), QStringList());
}

TEST_F(TabellerTest, OrderNumbersAreUniqueForEachClient)
{
    makeParentTables();
    EXPECT_EQ(startModule(), 1);
    EXPECT_TRUE(gDB->Execute(u"INSERT INTO Ordre (KlientNr,OrdreNr) VALUES (5,1)"_s));
    EXPECT_TRUE(gDB->Execute(u"INSERT INTO Ordre (KlientNr,OrdreNr) VALUES (6,1)"_s));
    EXPECT_FALSE(gDB->Execute(u"INSERT INTO Ordre (KlientNr,OrdreNr) VALUES (5,1)"_s));
    EXPECT_TRUE(gDB->LastError().startsWith(u"-2147217873 - "));
}

TEST_F(TabellerTest, ALongProductNameIsCutOnItsLine)
{
    makeParentTables();
    EXPECT_EQ(startModule(), 1);
    const QString name(80, u'ø');
    run(u"INSERT INTO Produkt (KlientNr,ProduktNr,ProduktNavn) VALUES (5,'1','"_s + name + u"')"_s);
    run(u"INSERT INTO OrdreLinjer (PosNr,ProduktNavn) VALUES (10,'"_s + name + u"')"_s);
    EXPECT_EQ(rows(u"SELECT ProduktNavn FROM Produkt"_s), QStringList(name));
    EXPECT_EQ(rows(u"SELECT ProduktNavn FROM OrdreLinjer"_s), QStringList(name.first(50)));
}

TEST_F(TabellerTest, AnOlderDatabaseIsUpgradedAndLosesTheUnwantedColumn)
{
    makeParentTables();
    EXPECT_EQ(startModule(), 1);
    run(u"DROP TABLE Produkt"_s);
    run(u"CREATE TABLE Produkt (ID COUNTER CONSTRAINT ID PRIMARY KEY, KlientNr LONG, "
        u"ProduktNr TEXT(20), TekstArtikkel BIT)"_s);
    run(u"INSERT INTO Produkt (KlientNr,ProduktNr,TekstArtikkel) VALUES (5,'A',1)"_s);
    run(u"ALTER TABLE Ordre DROP COLUMN Avrunding"_s);
    reload();
    EXPECT_EQ(statementsOfAStart(),
              QStringList({u"ALTER TABLE Produkt ADD COLUMN BruttoPris BIT"_s,
                           u"ALTER TABLE Ordre ADD COLUMN Avrunding CURRENCY"_s,
                           u"ALTER TABLE Produkt DROP COLUMN TekstArtikkel"_s, kCountAccount}));
    EXPECT_EQ(moduleInit, 1);
    EXPECT_EQ(columns(u"Produkt"_s),
              QStringList({u"ID:3"_s, u"KlientNr:3"_s, u"ProduktNr:202"_s, u"BruttoPris:11"_s}));
    EXPECT_EQ(rows(u"SELECT KlientNr,ProduktNr FROM Produkt"_s), QStringList(u"5|A"_s));
}

TEST_F(TabellerTest, TheUnwantedColumnIsLeftWhereThePictureDoesNotHoldIt)
{
    makeParentTables();
    EXPECT_FALSE(statementsOfAStart().join(u'\n').contains(u"DROP COLUMN"));
}

TEST_F(TabellerTest, WithoutKlientTheStartStandsOnTheAccountAlone)
{
    makeParentTables();
    run(u"DROP TABLE Klient"_s);
    EXPECT_EQ(startModule(), 1);
    reload();
    // The account is there now, so the refused last column decides.
    EXPECT_EQ(startModule(), 0);
    EXPECT_TRUE(gDB->LastError().startsWith(u"-2147217865 - "));
}

TEST_F(TabellerTest, WithoutKundeLevTheStartSucceeds)
{
    makeParentTables();
    run(u"DROP TABLE KundeLev"_s);
    run(kAddAccount);
    EXPECT_EQ(startModule(), 1);
    reload();
    EXPECT_EQ(statementsOfAStart(), kUpgrade.first(5) + QStringList(kCountAccount));
    EXPECT_EQ(moduleInit, 1);
}

TEST_F(TabellerTest, AnotherCaseIsAnotherNameToTheModuleAndTheSameToTheDatabase)
{
    run(u"CREATE TABLE KLIENT (KlientNr SHORT, FAKTEKST2 TEXT(255))"_s);
    run(u"CREATE TABLE Kontoplan (KlientNr SHORT, KontoNr LONG, Navn TEXT(40))"_s);
    run(kAddAccount);
    EXPECT_EQ(startModule(), 0);
    EXPECT_TRUE(gDB->LastError().startsWith(u"-2147217858 - "));
}

TEST_F(TabellerTest, WithoutKontoplanTheLastColumnDecides)
{
    makeParentTables();
    run(u"DROP TABLE Kontoplan"_s);
    EXPECT_EQ(statementsOfAStart().last(), kCountAccount);
    EXPECT_EQ(moduleInit, 1);
    EXPECT_TRUE(gDB->LastError().startsWith(u"-2147217865 - "));
    EXPECT_EQ(rows(u"SELECT * FROM Hovedbok"_s), QStringList());
}

TEST_F(TabellerTest, TheOpeningBalanceDecidesWhenTheAccountIsMade)
{
    makeParentTables();
    run(u"DROP TABLE Hovedbok"_s);
    EXPECT_EQ(startModule(), 0);
    EXPECT_EQ(rows(u"SELECT KontoNr FROM Kontoplan"_s), QStringList(u"3000"_s));
}

TEST_F(TabellerTest, ARefusedAccountDoesNotDecide)
{
    makeParentTables();
    run(u"ALTER TABLE Kontoplan DROP COLUMN KtoGruppe"_s);
    run(u"DROP TABLE Klient"_s);
    EXPECT_EQ(startModule(), 1);
    EXPECT_EQ(rows(u"SELECT KontoNr FROM Kontoplan"_s), QStringList());
    EXPECT_EQ(rows(u"SELECT KontoNr FROM Hovedbok"_s), QStringList(u"3000"_s));
}

TEST_F(TabellerTest, AnEmptyDatabaseGetsTheModulesTablesAndFails)
{
    gSchema.clear();
    const QStringList statements = statementsOfAStart();
    EXPECT_EQ(moduleInit, 0);
    EXPECT_EQ(statements.first(3), QStringList({kCreateOrdre, kCreateProdukt, kCreateOrdreLinjer}));
    // Without any table the catalogue was asked once more, after Ordre was made.
    EXPECT_FALSE(statements.contains(u"ALTER TABLE Ordre ADD COLUMN Avrunding CURRENCY"_s));
    EXPECT_TRUE(statements.contains(u"ALTER TABLE Produkt ADD COLUMN BruttoPris BIT"_s));
    EXPECT_EQ(columns(u"Produkt"_s).size(), 10);
    // GetCount failed with -1, so the refused last column decided.
    EXPECT_EQ(statements.last(), kCountAccount);
}

TEST_F(TabellerTest, ATableThatCannotBeMadeFailsTheStartAndStopsNothing)
{
    makeParentTables();
    run(u"CREATE TABLE ordre (Nr LONG)"_s);
    const QStringList statements = statementsOfAStart();
    EXPECT_EQ(moduleInit, 0);
    EXPECT_EQ(statements.first(2), QStringList({kCreateOrdre, kCreateProdukt}));
    EXPECT_EQ(statements.last(), kMakeAccount.last());
}

TEST_F(TabellerTest, NegativeNumbersHaveTheMinusInTheBlanksPlace)
{
    makeParentTables();
    clsFaktura module;
    module.setConnectStreng(connectionString());
    module.setKlient(-5);
    SessionTap tap;
    module.StartModul();
    EXPECT_EQ(module.ModuleInit(), 1);
    EXPECT_TRUE(tap.statements().contains(
        u"SELECT COUNT (*) FROM Kontoplan WHERE KlientNr=-5 AND KontoNr=3000"_s));
    EXPECT_TRUE(tap.statements().contains(
        u"INSERT INTO Hovedbok (KlientNr,KontoNr,Aar,AapningsSaldo) VALUES (-5,3000, 2014,0)"_s));
}

} // namespace

#include "posting/run/BokforTest.h"

#include "platform/ado/AdoTypes.h"
#include "state/SharedState.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace {

/// Whole runs, held against golden files that both databases share.
class BokforingTest : public BokforTest
{
protected:
    void expectGolden(const char *name)
    {
        QFile file(QStringLiteral(GOLDEN_FOLDER "/") + QLatin1StringView(name) + u".txt"_s);
        const QString content =
            file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
        EXPECT_EQ(kjor(), content.chopped(1).split(u'\n'));
    }

    const Linje v25{u"25"_s, u"125.00"_s};
};

} // namespace

TEST_F(BokforingTest, PlainInvoice)
{
    legg({.nr = 101, .linjer = {v25, {u"25"_s, u"1000.50"_s}}, .brutto = u"1125.50"_s});
    expectGolden("vanlig-faktura");
}

TEST_F(BokforingTest, SeveralRates)
{
    legg({.nr = 101,
          .linjer = {{u"25"_s, u"125"_s}, {u"15"_s, u"115"_s}, {u"10"_s, u"110"_s}},
          .brutto = u"350"_s});
    // Groups that sum up to nothing are left out, and a rate of none of the four has no code.
    legg({.nr = 102,
          .linjer = {{u"25"_s, u"0.10"_s},
                     {u"25"_s, u"0.20"_s},
                     {u"25"_s, u"-0.30"_s},
                     {u"12"_s, u"112"_s},
                     {u"Null"_s, u"7"_s}},
          .brutto = u"119"_s});
    expectGolden("flere-satser");
}

TEST_F(BokforingTest, ZeroRateFirstTakesAllThatFollowsTo3100)
{
    legg({.nr = 101, .linjer = {v25}});
    legg({.nr = 102, .linjer = {{u"0"_s, u"100"_s}, v25}, .brutto = u"225"_s});
    legg({.nr = 103, .linjer = {v25}});
    expectGolden("null-prosent-forst");
}

TEST_F(BokforingTest, ZeroRateLastLeavesTheGroupsBeforeIt)
{
    fallendeGrupper = true;
    legg({.nr = 102, .linjer = {{u"0"_s, u"100"_s}, v25}, .brutto = u"225"_s});
    legg({.nr = 103, .linjer = {v25}});
    expectGolden("null-prosent-sist");
}

TEST_F(BokforingTest, ChosenAccountHoldsForEveryRate)
{
    skjerm.kontoTekst = u" 3050 "_s;
    legg({.nr = 101, .linjer = {{u"0"_s, u"100"_s}, v25}, .brutto = u"225"_s});
    expectGolden("valgt-konto");
}

TEST_F(BokforingTest, PermitTakesTheTextOfTheAccount)
{
    skjerm.kontoTekst = u" 3000 "_s;
    skjerm.loyveTekst = u"L-117"_s;
    legg({.nr = 101, .linjer = {v25}, .avrunding = u"0.25"_s});
    expectGolden("loyve");
}

TEST_F(BokforingTest, CreditNote)
{
    legg({.nr = 101,
          .linjer = {{u"25"_s, u"-125.40"_s},
                     {u"15"_s, u"-115"_s},
                     {u"10"_s, u"-110"_s},
                     {u"0"_s, u"-50"_s}},
          .brutto = u"-400.00"_s,
          .avrunding = u"0.40"_s});
    expectGolden("kreditnota");
}

TEST_F(BokforingTest, AnInvoiceAfterACreditNoteIsWrittenAsOne)
{
    legg({.nr = 101, .linjer = {{u"25"_s, u"-125"_s}}, .brutto = u"-125"_s});
    legg(
        {.nr = 102, .linjer = {{u"25"_s, u"99.75"_s}}, .brutto = u"100"_s, .avrunding = u"0.25"_s});
    expectGolden("kreditnota-saa-faktura");
}

TEST_F(BokforingTest, GroupsOfTheOtherSignKeepItOnAnInvoiceAndLoseItOnACreditNote)
{
    legg({.nr = 101, .linjer = {{u"25"_s, u"200"_s}, {u"10"_s, u"-50"_s}}, .brutto = u"150"_s});
    // The order's own sum makes a credit note of the voucher, the sum of the groups one of the work
    // row.
    legg({.nr = 102, .linjer = {{u"25"_s, u"-100"_s}}, .brutto = u"10"_s});
    legg({.nr = 103, .linjer = {{u"25"_s, u"-200"_s}, {u"10"_s, u"50"_s}}, .brutto = u"-150"_s});
    expectGolden("blandet-fortegn");
}

TEST_F(BokforingTest, RoundingGrowsThroughTheRun)
{
    legg({.nr = 101,
          .linjer = {{u"25"_s, u"124.60"_s}},
          .brutto = u"125.00"_s,
          .avrunding = u"0.40"_s});
    legg({.nr = 102, .linjer = {v25}});
    legg({.nr = 103, .linjer = {v25}, .avrunding = u"Null"_s});
    legg({.nr = 104,
          .linjer = {{u"25"_s, u"125.90"_s}},
          .brutto = u"125.00"_s,
          .avrunding = u"-0.90"_s});
    legg({.nr = 105,
          .linjer = {{u"25"_s, u"124.50"_s}},
          .brutto = u"125.00"_s,
          .avrunding = u"0.50"_s});
    expectGolden("voksende-avrunding");
}

TEST_F(BokforingTest, OnlyMarkedRowsThatAreFakturertStillArePosted)
{
    legg({.nr = 101, .linjer = {v25}, .status = u"Bokført"_s});
    legg({.nr = 102, .linjer = {v25}, .status = u"Betalt"_s});
    legg({.nr = 103, .linjer = {v25}, .klient = 6});
    legg({.nr = 104, .linjer = {v25}}).merket = false;
    legg({.nr = 105, .linjer = {v25}}).celler[bokforkolonne::kFakNr].clear();
    legg({.nr = 106, .linjer = {v25}});
    expectGolden("foreldet-rad");
}

TEST_F(BokforingTest, AnApostropheCostsTheVoucherButNotItsLines)
{
    legg({.nr = 101, .linjer = {v25}, .navn = u"O'Hara Transport"_s});
    legg({.nr = 102, .linjer = {v25}});
    expectGolden("apostrof");
}

TEST_F(BokforingTest, AnInvoiceWithoutLinesHasACustomerLineOfNothing)
{
    legg({.nr = 101, .brutto = u"Null"_s, .avrunding = u"Null"_s});
    legg({.nr = 102,
          .linjer = {{u"25"_s, u"10"_s}, {u"25"_s, u"-10"_s}},
          .brutto = u"0.40"_s,
          .avrunding = u"0.40"_s});
    expectGolden("uten-linjer");
}

TEST_F(BokforingTest, AYearOutsideEndsTheRunInItsMidst)
{
    legg({.nr = 101, .linjer = {v25}});
    legg({.nr = 102, .linjer = {v25}, .fakDato = u"#12/31/2013#"_s});
    legg({.nr = 103, .linjer = {v25}});
    expectGolden("utenfor-aaret");
}

TEST_F(BokforingTest, ARunWithoutMarksOnlyMakesTheWorkTableAnew)
{
    legg({.nr = 101, .linjer = {v25}});
    kjor();
    skjerm.rader.clear();
    legg({.nr = 102, .linjer = {v25}}).merket = false;
    expectGolden("tom-kjoring");
}

TEST_F(BokforingTest, TheFirstVoucherOfAYearAndTheNumbersAfterIt)
{
    run(u"INSERT INTO Bilag (KlientNr,BilagNr,BilagDato,Aar) VALUES (5,90,#12/31/2013#,2013)"_s);
    run(u"INSERT INTO Bilag (KlientNr,BilagNr,BilagDato,Aar) VALUES (6,80,#01/01/2014#,2014)"_s);
    legg({.nr = 101, .linjer = {v25}, .fakDato = u"#12/31/2014#"_s, .forfall = u"#01/14/2015#"_s});
    legg({.nr = 102, .linjer = {v25}, .fakDato = u"#01/01/2014#"_s});
    expectGolden("forste-bilag");
}

TEST_F(BokforingTest, ADueDateThatIsNoneCostsTheCustomerLineAndTheWorkRow)
{
    legg({.nr = 101, .linjer = {v25}, .forfall = u"Null"_s});
    expectGolden("uten-forfall");
}

TEST_F(BokforingTest, NamesNumbersAndDatesAreThoseOfTheListAndAmountsThoseOfTheOrder)
{
    NoterendeSkjerm::Rad &rad = legg({.nr = 101, .linjer = {v25}, .avrunding = u"0.25"_s});
    rad.celler[bokforkolonne::kFakNr] = u"901"_s;
    rad.celler[bokforkolonne::kKundeNr] = u"19999"_s;
    rad.celler[bokforkolonne::kKundeNavn] = u"Gammelt Navn"_s;
    rad.celler[bokforkolonne::kFakDato] = u"01.02.2014"_s;
    rad.celler[bokforkolonne::kForfall] = u"15.02.2014"_s;
    rad.celler[bokforkolonne::kBelop] = u"7 777,00"_s;
    kjor();
    EXPECT_EQ(rows(u"SELECT BilagDato,Tekst FROM Bilag"_s),
              QStringList(u"01.02.2014|Faktura Gammelt Navn"_s));
    EXPECT_EQ(rows(u"SELECT Tekst,LevNr,Debet,FaktDato,FaktForfall,cFaktNr FROM BilagLinjer "
                   u"WHERE Konto=1500"_s),
              QStringList(u"Kundefaktura 901|19999|125,25|01.02.2014|15.02.2014|F901"_s));
    EXPECT_EQ(rows(u"SELECT FakNr,KndNr,FakDto,Forfall,Belop FROM tmpTbl"_s),
              QStringList(u"901|19999|01.02.2014|15.02.2014|125,25"_s));
    EXPECT_EQ(rows(u"SELECT OrdreNr,OrdreStatus FROM Ordre"_s), QStringList(u"101|Bokført"_s));
}

TEST_F(BokforingTest, BlanksAroundTheChoiceOfNoPermitDoNotCount)
{
    const auto permitFor = [this](const QString &choice) {
        static int nr = 100;
        run(u"DELETE FROM BilagLinjer"_s);
        skjerm.rader.clear();
        skjerm.kontoTekst = u" 3020 Frakt "_s;
        skjerm.loyveTekst = choice;
        legg({.nr = ++nr, .linjer = {v25}});
        kjor();
        return rows(u"SELECT Konto,Loyve FROM BilagLinjer ORDER BY ID"_s);
    };
    EXPECT_EQ(permitFor(u" <nei> "_s), QStringList({u"3020|"_s, u"1500|"_s}));
    for (const QString &other : {u""_s, u"<Nei>"_s, u"L-117"_s})
        EXPECT_EQ(permitFor(other), QStringList({u"3020|3020 Frakt"_s, u"1500|3020 Frakt"_s}));
}

TEST_F(BokforingTest, AnApostropheInThePermitCostsTheLinesThatCarryIt)
{
    skjerm.kontoTekst = u"3020'"_s;
    skjerm.loyveTekst = u"L-117"_s;
    legg({.nr = 101, .linjer = {v25}, .avrunding = u"0.25"_s});
    kjor();
    EXPECT_EQ(rows(u"SELECT BilagNr FROM Bilag"_s), QStringList(u"1"_s));
    EXPECT_EQ(rows(u"SELECT Konto FROM BilagLinjer"_s), QStringList(u"7395"_s));
    EXPECT_EQ(rows(u"SELECT Belop FROM tmpTbl"_s), QStringList(u"125,25"_s));
    EXPECT_EQ(rows(u"SELECT OrdreStatus FROM Ordre"_s), QStringList(u"Bokført"_s));
}

TEST_F(BokforingTest, AnInvoiceThatIsPrintedAgainGetsASecondVoucher)
{
    legg({.nr = 101, .linjer = {v25}});
    kjor();
    run(u"UPDATE Ordre SET OrdreStatus='Fakturert' WHERE OrdreNr=101"_s);
    kjor();
    EXPECT_EQ(rows(u"SELECT BilagNr FROM Bilag ORDER BY ID"_s), QStringList({u"1"_s, u"2"_s}));
    EXPECT_EQ(rows(u"SELECT BilagNr FROM tmpTbl"_s), QStringList(u"2"_s));
}

TEST_F(BokforingTest, TheWorkTableOutlivesTheModuleUntilTheNextRun)
{
    legg({.nr = 101, .linjer = {v25}});
    kjor();
    reload();
    gAar = 2014;
    EXPECT_EQ(startModule(), 1);
    EXPECT_EQ(rows(u"SELECT FakNr FROM tmpTbl"_s), QStringList(u"101"_s));
    skjerm.rader.clear();
    kjor();
    EXPECT_TRUE(rows(u"SELECT FakNr FROM tmpTbl"_s).isEmpty());
}

TEST_F(BokforingTest, AnOrderThatCannotBeReadIsLeftWithoutAWord)
{
    nekt = [](const QString &statement) {
        if (statement.startsWith(u"SELECT * FROM Ordre") && statement.endsWith(u"ID=1"))
            throw RunTimeError(ado::errors::kUnspecified);
    };
    legg({.nr = 101, .linjer = {v25}});
    legg({.nr = 102, .linjer = {v25}}).celler[bokforkolonne::kOrdreId].clear();
    kjor();
    EXPECT_EQ(skjerm.hendelser, QStringList({u"framdrift 0 av 2"_s, u"framdrift 1 av 2"_s,
                                             u"framdrift 2 av 2"_s, u"les fakturaer"_s}));
    EXPECT_TRUE(rows(u"SELECT ID FROM Bilag"_s).isEmpty());
}

TEST_F(BokforingTest, TheStatusIsTriedTwice)
{
    int refused = 0;
    nekt = [&refused](const QString &statement) {
        if (statement.startsWith(u"UPDATE Ordre") && ++refused == 1)
            throw RunTimeError(ado::errors::kUnspecified);
    };
    legg({.nr = 101, .linjer = {v25}});
    expectGolden("status-andre-gang");
}

TEST_F(BokforingTest, AStatusThatIsRefusedTwiceLeavesTheInvoiceToBePostedAgain)
{
    nekt = [](const QString &statement) {
        if (statement.startsWith(u"UPDATE Ordre"))
            throw RunTimeError(ado::errors::kUnspecified);
    };
    legg({.nr = 101, .linjer = {v25}});
    const QStringList first = kjor();
    EXPECT_EQ(first.count(u"UPDATE Ordre SET OrdreStatus='Bokført' WHERE ID=1"_s), 2);
    EXPECT_EQ(first.last(), u"5|101|Fakturert"_s);
    const QStringList second = kjor();
    EXPECT_EQ(second.last(), u"5|101|Bokført"_s);
    EXPECT_EQ(rows(u"SELECT BilagNr,Tekst FROM Bilag ORDER BY ID"_s),
              QStringList({u"1|Faktura Ås Pukk AS"_s, u"2|Faktura Ås Pukk AS"_s}));
}

TEST_F(BokforingTest, FailuresOfSingleStatementsLeaveTheOthers)
{
    // What is refused, and the rows that are missing then.
    const auto left = [this](const QString &refused) {
        for (const QString &table : {u"Bilag"_s, u"BilagLinjer"_s, u"OrdreLinjer"_s, u"Ordre"_s})
            run(u"DELETE FROM "_s + table);
        skjerm.rader.clear();
        legg({.nr = 101, .linjer = {v25}, .avrunding = u"0.10"_s});
        nekt = [refused](const QString &statement) {
            if (statement.startsWith(refused))
                throw RunTimeError(ado::errors::kUnspecified);
        };
        skjerm.hendelser.clear();
        BokforMerkede(skjerm);
        nekt = [](const QString &) {};
        EXPECT_TRUE(skjerm.hendelser.contains(u"melding 64 [ 1 faktura er bokført.]"_s));
        EXPECT_EQ(rows(u"SELECT OrdreStatus FROM Ordre"_s), QStringList(u"Bokført"_s));
        return rows(u"SELECT BilagNr,AntPost FROM Bilag"_s) +
               rows(u"SELECT Konto,Debet,Kredit FROM BilagLinjer ORDER BY ID"_s) +
               rows(u"SELECT BilagNr,Belop FROM tmpTbl"_s);
    };
    const QString bilag = u"1|1"_s;
    const QString salg = u"3000|0|125"_s;
    const QString kunde = u"1500|125,1|0"_s;
    const QString avrunding = u"7395|0|0,1"_s;
    const QString arbeid = u"1|125,1"_s;
    EXPECT_EQ(left(u"ingen"_s), QStringList({bilag, salg, kunde, avrunding, arbeid}));
    EXPECT_EQ(left(u"INSERT INTO Bilag ("_s), QStringList({salg, kunde, avrunding, arbeid}));
    EXPECT_EQ(left(u"SELECT Max(BilagNr)"_s), QStringList({bilag, salg, kunde, avrunding, arbeid}));
    EXPECT_EQ(left(u"SELECT MvaPst"_s),
              QStringList({u"1|0"_s, u"1500|0,1|0"_s, avrunding, u"1|0,1"_s}));
    EXPECT_EQ(left(u"INSERT INTO BilagLinjer (BilagID,Konto,Tekst,Debet,Kredit,MVAkode,L"_s),
              QStringList({bilag, kunde, avrunding, arbeid}));
    EXPECT_EQ(left(u"INSERT INTO BilagLinjer (BilagID,Konto,Tekst,LevNr"_s),
              QStringList({bilag, salg, avrunding, arbeid}));
    EXPECT_EQ(left(u"INSERT INTO BilagLinjer (BilagID,Konto,Tekst,Debet,Kredit,MVAkode)"_s),
              QStringList({bilag, salg, kunde, arbeid}));
    EXPECT_EQ(left(u"INSERT INTO tmpTbl"_s), QStringList({bilag, salg, kunde, avrunding}));
    EXPECT_EQ(left(u"SELECT COUNT"_s), QStringList({bilag, salg, kunde, avrunding, arbeid}));
}

TEST_F(BokforingTest, ADateThatCannotBeReadStandsAsThatOfTheInvoiceBefore)
{
    legg({.nr = 101, .linjer = {v25}});
    legg({.nr = 102, .linjer = {v25}, .fakDato = u"Null"_s});
    kjor();
    // Its own date is missing from what is written, so voucher and customer line are refused.
    EXPECT_EQ(rows(u"SELECT BilagNr FROM Bilag"_s), QStringList(u"1"_s));
    EXPECT_EQ(rows(u"SELECT BilagID,Konto FROM BilagLinjer ORDER BY ID"_s),
              QStringList({u"1|3000"_s, u"1|1500"_s, u"0|3000"_s}));
    EXPECT_TRUE(skjerm.hendelser.contains(u"melding 64 [ 2 fakturaer er bokført.]"_s));
}

TEST_F(BokforingTest, ADateThatCannotBeReadInTheFirstInvoiceLiesOutsideTheYear)
{
    legg({.nr = 101, .linjer = {v25}, .fakDato = u"Null"_s});
    kjor();
    EXPECT_TRUE(rows(u"SELECT ID FROM Bilag"_s).isEmpty());
    EXPECT_EQ(skjerm.hendelser.size(), 2);
    EXPECT_TRUE(skjerm.hendelser.value(1).startsWith(u"melding 48 ["));
}

TEST_F(BokforingTest, TheChosenAccountIsReadByItsLeadingNumber)
{
    const auto accountFor = [this](const QString &text) {
        run(u"DELETE FROM BilagLinjer"_s);
        skjerm.rader.clear();
        static int nr = 100;
        legg({.nr = ++nr, .linjer = {v25}});
        skjerm.kontoTekst = text;
        kjor();
        return rows(u"SELECT Konto FROM BilagLinjer WHERE Konto<>1500"_s).join(u',');
    };
    EXPECT_EQ(accountFor(u"1900"_s), u"1900"_s);
    EXPECT_EQ(accountFor(u"1900 Kasse"_s), u"1900"_s);
    EXPECT_EQ(accountFor(u"30 20x"_s), u"3020"_s);
    EXPECT_EQ(accountFor(u"3000 Salg"_s), u"3000"_s);
    EXPECT_EQ(accountFor(u""_s), u"0"_s);
    EXPECT_EQ(accountFor(u"Kasse"_s), u"0"_s);
    // Beyond 16 bits.
    EXPECT_EQ(accountFor(u"32767"_s), u"32767"_s);
    EXPECT_EQ(accountFor(u"40000"_s), u"3000"_s);
}

TEST_F(BokforingTest, VoucherNumbersGoByClientAndYear)
{
    EXPECT_EQ(NyttBilagnr(2014), u"1"_s);
    const auto enterVoucher = [this](int client, int number, const QString &date) {
        run(u"INSERT INTO Bilag (KlientNr,BilagNr,BilagDato) VALUES (%1,%2,%3)"_s.arg(client)
                .arg(number)
                .arg(date));
    };
    enterVoucher(5, 124, u"#12/31/2014#"_s);
    enterVoucher(5, 7, u"#01/01/2014#"_s);
    enterVoucher(5, 800, u"#01/01/2015#"_s);
    enterVoucher(6, 900, u"#06/01/2014#"_s);
    EXPECT_EQ(NyttBilagnr(2014), u" 125"_s);
    EXPECT_EQ(NyttBilagnr(2015), u" 801"_s);
    EXPECT_EQ(NyttBilagnr(2013), u"1"_s);
    gKlient = 6;
    EXPECT_EQ(NyttBilagnr(2014), u" 901"_s);
    gKlient = 5;
    enterVoucher(5, 2147483647, u"#06/01/2016#"_s);
    EXPECT_EQ(NyttBilagnr(2016), u" 2147483648"_s);
    run(u"DROP TABLE Bilag"_s);
    EXPECT_EQ(NyttBilagnr(2014), u"1"_s);
}

TEST_F(BokforingTest, ANumberOneAboveAnotherUsersIsStillTaken)
{
    // Nothing holds the number between the read and the insert.
    nekt = [this, entered = false](const QString &statement) mutable {
        if (statement.startsWith(u"INSERT INTO Bilag (") && !std::exchange(entered, true))
            run(u"INSERT INTO Bilag (KlientNr,BilagNr,BilagDato) VALUES (5,1,#03/09/2014#)"_s);
    };
    legg({.nr = 101, .linjer = {v25}});
    kjor();
    EXPECT_EQ(rows(u"SELECT BilagNr FROM Bilag ORDER BY ID"_s), QStringList({u"1"_s, u"1"_s}));
}

#include "presentation/options/OptionsFixture.h"

#include "rules/Beregning.h"
#include "rules/Innstilling.h"
#include "rules/Kid.h"
#include "rules/Ordre.h"

#include <array>

namespace {

/// What the screen stores, and what the rules make of it.
class FrmOptionsLagreTest : public OptionsFixture
{
protected:
    /// The lines of the settings file.
    QStringList settingsFile() const
    {
        const QByteArray text = settings.content(u"Brennmark AS/Strekkbok.ini"_s);
        return QString::fromLatin1(text).split(u'\n', Qt::SkipEmptyParts);
    }
    static const QStringList &updates(const SessionTap &tap)
    {
        static QStringList found;
        found.clear();
        for (const QString &statement : tap.statements()) {
            if (statement.startsWith(u"UPDATE"_s))
                found += statement;
        }
        return found;
    }
};

const QString kTexts = u"FakTekstBruk,FakTekst1,FakTekst2"_s;

// --- The settings file

TEST_F(FrmOptionsLagreTest, AScreenWithKidOffStoresFourSettings)
{
    open();
    press(u"cmdApply"_s);
    EXPECT_EQ(settingsFile(),
              QStringList({u"[Regningsdel]"_s, u"Avrunding=0"_s, u"Fakturablankett=0"_s,
                           u"KIDaktivert=0"_s, u"PrintVis=0"_s}));
}

TEST_F(FrmOptionsLagreTest, EverySettingIsStoredAsTheNumberShown)
{
    open();
    press(u"Check1"_s);
    press(u"optKID_1"_s);
    type(box(u"Text1"_s), u" 7 "_s);
    type(box(u"Text2"_s), u"8 "_s);
    type(box(u"Text3"_s), u"9"_s);
    press(u"optMOD_1"_s);
    press(u"optLogo_3"_s, 2);
    press(u"optAvrunding_2"_s, 3);
    press(u"chkPrintVis"_s);
    press(u"cmdApply"_s);
    EXPECT_EQ(settingsFile(),
              QStringList({u"[Regningsdel]"_s, u"Avrunding=2"_s, u"Fakturablankett=3"_s,
                           u"KIDaktivert=1"_s, u"KIDlengdeFakturanr=8"_s, u"KIDlengdeKundenr=7"_s,
                           u"KIDmodulus=11"_s, u"KIDoppbygning=1"_s, u"PrintVis=1"_s}));
}

TEST_F(FrmOptionsLagreTest, EachChoiceHasItsNumber)
{
    open();
    for (int i = 3; i >= 0; --i) {
        press(u"optLogo_%1"_s.arg(i), 2);
        press(u"cmdApply"_s);
        EXPECT_EQ(stored(u"Fakturablankett"_s), QString::number(i));
    }
    for (int i = 2; i >= 0; --i) {
        press(u"optAvrunding_%1"_s.arg(i), 3);
        press(u"cmdApply"_s);
        EXPECT_EQ(stored(u"Avrunding"_s), QString::number(i));
    }
}

TEST_F(FrmOptionsLagreTest, TheLengthComesFromTheBoxOfTheChosenStructure)
{
    store(u"KIDaktivert"_s, u"1"_s);
    open();
    type(box(u"Text2"_s), u"8"_s);
    type(box(u"Text3"_s), u"9"_s);
    type(box(u"Text1"_s), u"4"_s);
    press(u"cmdApply"_s);
    EXPECT_EQ(stored(u"KIDoppbygning"_s), u"0"_s);
    EXPECT_EQ(stored(u"KIDlengdeFakturanr"_s), u"9"_s);
    EXPECT_EQ(stored(u"KIDlengdeKundenr"_s), u"4"_s);
    EXPECT_EQ(stored(u"KIDmodulus"_s), u"10"_s);
    // The other box keeps its own text, which the next structure takes.
    press(u"optKID_1"_s);
    press(u"cmdApply"_s);
    EXPECT_EQ(stored(u"KIDlengdeFakturanr"_s), u"8"_s);
    reopen();
    EXPECT_EQ(box(u"Text3"_s).text(), u"8"_s);
}

TEST_F(FrmOptionsLagreTest, LengthsAreStoredAsTyped)
{
    store(u"KIDaktivert"_s, u"1"_s);
    open();
    type(box(u"Text3"_s), u"hundre og tjue"_s);
    type(box(u"Text1"_s), QString());
    press(u"cmdApply"_s);
    EXPECT_EQ(stored(u"KIDlengdeFakturanr"_s), u"hundre og tjue"_s);
    EXPECT_TRUE(settingsFile().contains(u"KIDlengdeKundenr="_s));
    // A value of no length counts as none, so the screen offers its own again.
    reopen();
    EXPECT_EQ(box(u"Text1"_s).text(), u"5"_s);
    EXPECT_EQ(box(u"Text3"_s).text(), u"hundre og tjue"_s);
}

TEST_F(FrmOptionsLagreTest, WithKidOffTheFourValuesKeepWhatTheyHeld)
{
    store(u"KIDaktivert"_s, u"1"_s);
    store(u"KIDoppbygning"_s, u"1"_s);
    store(u"KIDlengdeFakturanr"_s, u"7"_s);
    store(u"KIDlengdeKundenr"_s, u"8"_s);
    store(u"KIDmodulus"_s, u"11"_s);
    open();
    press(u"optMOD_0"_s);
    press(u"optKID_0"_s);
    type(box(u"Text3"_s), u"2"_s);
    press(u"Check1"_s);
    press(u"cmdApply"_s);
    EXPECT_EQ(stored(u"KIDaktivert"_s), u"0"_s);
    EXPECT_EQ(stored(u"KIDoppbygning"_s), u"1"_s);
    EXPECT_EQ(stored(u"KIDlengdeFakturanr"_s), u"7"_s);
    EXPECT_EQ(stored(u"KIDlengdeKundenr"_s), u"8"_s);
    EXPECT_EQ(stored(u"KIDmodulus"_s), u"11"_s);
}

TEST_F(FrmOptionsLagreTest, TheValuesOfThePrintDialogStandApart)
{
    store(u"BrukTekst1"_s, u"1"_s);
    store(u"FakturaTekst1"_s, u"Fra registeret"_s);
    open();
    EXPECT_FALSE(check(u"chkTxt1"_s).isChecked());
    EXPECT_NE(area(1).text(), u"Fra registeret"_s);
    press(u"chkTxt1"_s, 3);
    type(area(1), u"Fra klienten"_s);
    press(u"cmdApply"_s);
    EXPECT_EQ(stored(u"BrukTekst1"_s), u"1"_s);
    EXPECT_EQ(stored(u"FakturaTekst1"_s), u"Fra registeret"_s);
    EXPECT_EQ(client(kTexts), QStringList{u"1|Fra klienten|"_s});
}

TEST_F(FrmOptionsLagreTest, ASettingOutsideItsChoicesBecomesTheDesignChoiceWhenSaved)
{
    store(u"Fakturablankett"_s, u"4"_s);
    store(u"Avrunding"_s, u"-1"_s);
    open();
    EXPECT_EQ(chosen(u"optLogo"_s), 0);
    press(u"cmdApply"_s);
    EXPECT_EQ(stored(u"Fakturablankett"_s), u"0"_s);
    EXPECT_EQ(stored(u"Avrunding"_s), u"0"_s);
}

// --- The client's row

TEST_F(FrmOptionsLagreTest, TheStatementsGoWordForWordInTheirOrder)
{
    open();
    press(u"chkTxt2"_s, 3);
    type(area(1), u"En"_s);
    type(area(2), u"To"_s);
    type(box(u"txtFirstFak"_s), u"1001"_s);
    const SessionTap tap;
    press(u"cmdApply"_s);
    EXPECT_EQ(tap.statements(),
              QStringList({u"SELECT KlientNr,Logo FROM Klient WHERE KlientNr= 5"_s,
                           u"UPDATE Klient SET FirstFakNr=1001 WHERE KlientNr= 5"_s,
                           u"UPDATE Klient SET FakTekstBruk= 2, FakTekst1='En', FakTekst2='To' "
                           u"WHERE KlientNr= 5"_s}));
    EXPECT_EQ(client(u"FirstFakNr,"_s + kTexts), QStringList{u"1001|2|En|To"_s});
    EXPECT_EQ(client(u"FirstFakNr,"_s + kTexts, 6), QStringList{u"Null|Null|Null|Null"_s});
}

TEST_F(FrmOptionsLagreTest, TheTextsInUseHaveTheirNumber)
{
    open();
    const auto expectStored = [&](int number) {
        press(u"cmdApply"_s);
        EXPECT_EQ(client(u"FakTekstBruk"_s), QStringList{QString::number(number)});
    };
    expectStored(0);
    press(u"chkTxt1"_s, 3);
    expectStored(1);
    press(u"chkTxt2"_s);
    expectStored(3);
    press(u"chkTxt1"_s);
    expectStored(2);
    reopen();
    EXPECT_TRUE(check(u"chkTxt2"_s).isChecked());
    EXPECT_FALSE(check(u"chkTxt1"_s).isChecked());
}

TEST_F(FrmOptionsLagreTest, TheOfferedSentenceIsStoredAndAnEmptiedTextIsOfferedItAgain)
{
    open();
    const QString sentence = area(1).text();
    press(u"cmdApply"_s);
    EXPECT_EQ(client(u"FakTekst1"_s), QStringList{sentence});
    clickTab(3);
    type(area(1), QString());
    press(u"cmdApply"_s);
    EXPECT_EQ(client(u"FakTekst1"_s), QStringList{QString()});
    reopen();
    EXPECT_EQ(area(1).text(), sentence);
}

TEST_F(FrmOptionsLagreTest, TextsOfSeveralLinesComeBack)
{
    open();
    clickTab(3);
    type(area(1), u"Takk for\nhandelen, æøå"_s);
    type(area(2), u"\n\nNederst"_s);
    press(u"cmdApply"_s);
    EXPECT_EQ(client(u"FakTekst1,FakTekst2"_s),
              QStringList{u"Takk for\r\nhandelen, æøå|\r\n\r\nNederst"_s});
    reopen();
    EXPECT_EQ(area(1).text(), u"Takk for\r\nhandelen, æøå"_s);
    EXPECT_EQ(area(2).text(), u"\r\n\r\nNederst"_s);
}

TEST_F(FrmOptionsLagreTest, AnApostropheLeavesTheTextsUnchangedAndTheRestIsStored)
{
    run(u"UPDATE Klient SET FakTekstBruk=1, FakTekst1='Gammel', FakTekst2='Annen' WHERE "
        u"KlientNr=5"_s);
    open();
    type(box(u"txtFirstFak"_s), u"500"_s);
    press(u"chkTxt2"_s, 3);
    type(area(1), u"Ola's tekst"_s);
    press(u"optAvrunding_1"_s);
    press(u"chkPrintVis"_s);
    press(u"cmdApply"_s);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    EXPECT_EQ(client(kTexts), QStringList{u"1|Gammel|Annen"_s});
    EXPECT_EQ(client(u"FirstFakNr"_s), QStringList{u"500"_s});
    EXPECT_EQ(stored(u"KIDaktivert"_s), u"0"_s);
    EXPECT_EQ(stored(u"Avrunding"_s), u"1"_s);
    EXPECT_EQ(stored(u"PrintVis"_s), u"1"_s);
}

TEST_F(FrmOptionsLagreTest, AFirstNumberBelowOneIsNotStored)
{
    run(u"UPDATE Klient SET FirstFakNr=1001 WHERE KlientNr=5"_s);
    open();
    for (const QString &text : {u"0"_s, QString(), u"-5"_s, u"0.9"_s, u"tull"_s}) {
        clickTab(3);
        type(box(u"txtFirstFak"_s), text);
        const SessionTap tap;
        press(u"cmdApply"_s);
        EXPECT_EQ(updates(tap).size(), 1) << text.toStdString();
        EXPECT_EQ(client(u"FirstFakNr"_s), QStringList{u"1001"_s}) << text.toStdString();
    }
}

TEST_F(FrmOptionsLagreTest, AFirstNumberGoesAsItStands)
{
    open();
    clickTab(3);
    type(box(u"txtFirstFak"_s), u"12 stk"_s);
    const SessionTap tap;
    press(u"cmdApply"_s);
    EXPECT_EQ(updates(tap).value(0), u"UPDATE Klient SET FirstFakNr=12 stk WHERE KlientNr= 5"_s);
    EXPECT_EQ(client(u"FirstFakNr"_s), QStringList{u"Null"_s});
    EXPECT_EQ(client(u"FakTekstBruk"_s), QStringList{u"0"_s});
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(FrmOptionsLagreTest, AnUntouchedFirstNumberIsStoredAsOne)
{
    run(u"UPDATE Klient SET FirstFakNr=1001 WHERE KlientNr=5"_s);
    open();
    press(u"cmdApply"_s);
    EXPECT_EQ(client(u"FirstFakNr"_s), QStringList{u"1"_s});
}

TEST_F(FrmOptionsLagreTest, WithAnOrderTheFirstNumberIsNotSent)
{
    run(u"UPDATE Klient SET FirstFakNr=1001 WHERE KlientNr=5"_s);
    addOrder();
    open();
    const SessionTap tap;
    press(u"cmdApply"_s);
    EXPECT_EQ(updates(tap).size(), 1);
    EXPECT_TRUE(updates(tap).value(0).startsWith(u"UPDATE Klient SET FakTekstBruk="_s));
    EXPECT_EQ(client(u"FirstFakNr"_s), QStringList{u"1001"_s});
}

TEST_F(FrmOptionsLagreTest, APageOutOfSightIsStoredToo)
{
    open();
    clickTab(3);
    type(box(u"txtFirstFak"_s), u"2000"_s);
    type(area(2), u"Utenfor synet"_s);
    clickTab(1);
    press(u"cmdApply"_s);
    EXPECT_EQ(client(u"FirstFakNr,FakTekst2"_s), QStringList{u"2000|Utenfor synet"_s});
}

// --- The buttons

TEST_F(FrmOptionsLagreTest, LagreLeavesTheScreenOpenAndMayBePressedAgain)
{
    open();
    press(u"chkPrintVis"_s, 3);
    press(u"cmdApply"_s);
    ASSERT_NE(screen(), nullptr);
    EXPECT_EQ(stored(u"PrintVis"_s), u"1"_s);
    press(u"chkPrintVis"_s);
    press(u"cmdApply"_s);
    EXPECT_EQ(stored(u"PrintVis"_s), u"0"_s);
}

TEST_F(FrmOptionsLagreTest, OkStoresAndCloses)
{
    open();
    press(u"chkPrintVis"_s, 3);
    press(u"cmdOK"_s);
    EXPECT_EQ(screen(), nullptr);
    EXPECT_EQ(stored(u"PrintVis"_s), u"1"_s);
    EXPECT_EQ(client(u"FakTekstBruk"_s), QStringList{u"0"_s});
}

TEST_F(FrmOptionsLagreTest, AvbrytAndEscapeStoreNothing)
{
    for (const bool byKey : {false, true}) {
        open();
        press(u"chkPrintVis"_s, 3);
        type(area(2), u"Forkastet"_s);
        const SessionTap tap;
        if (byKey)
            QTest::keyClick(&area(2), Qt::Key_Escape);
        else
            press(u"cmdCancel"_s);
        EXPECT_EQ(screen(), nullptr);
        EXPECT_EQ(tap.statements(), QStringList());
        EXPECT_EQ(stored(u"PrintVis"_s), u"-"_s);
    }
}

TEST_F(FrmOptionsLagreTest, WhatCannotBeStoredHindersNothingElse)
{
    // A folder stands where the settings file is to be.
    QDir().mkpath(settings.filePath(u"Brennmark AS/Strekkbok.ini"_s));
    open();
    press(u"chkTxt1"_s, 3);
    press(u"cmdApply"_s);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    EXPECT_EQ(client(u"FakTekstBruk"_s), QStringList{u"1"_s});
}

// --- What the rules make of it

/// Lines given as quantity, price and VAT percent.
class Celler : public OrdreCeller
{
public:
    using Linje = std::array<QString, 3>;
    explicit Celler(std::vector<Linje> linjer) : m_linjer(std::move(linjer)) {}

    [[nodiscard]] int antallRader() const override { return int(m_linjer.size()); }
    [[nodiscard]] QString tekst(int col, int row) const override
    {
        const Linje &linje = m_linjer[size_t(row - 1)];
        switch (col) {
        case linjekolonne::kAntall:
            return linje[0];
        case linjekolonne::kPris:
            return linje[1];
        case linjekolonne::kMvaPst:
            return linje[2];
        default:
            return {};
        }
    }
    void settTekst(int, int, const QString &) override {}

private:
    std::vector<Linje> m_linjer;
};

class Summer : public OrdreSummer
{
public:
    void settTekst(SumFelt felt, const QString &text) override
    {
        if (felt == SumFelt::Avrunding)
            avrunding = text;
    }
    QString avrunding;
};

TEST_F(FrmOptionsLagreTest, TheKidFollowsWhatIsSaved)
{
    open();
    press(u"Check1"_s);
    press(u"cmdApply"_s);
    EXPECT_EQ(LagKID(LesInnstilling, u"1234"_s, u"10001"_s), u"0012344"_s);
    press(u"optKID_1"_s);
    type(box(u"Text1"_s), u"6"_s);
    type(box(u"Text2"_s), u"5"_s);
    press(u"optMOD_1"_s);
    press(u"cmdApply"_s);
    EXPECT_EQ(LagKID(LesInnstilling, u"1234"_s, u"10001"_s), Modulus11(u"01000101234"_s));
    press(u"Check1"_s);
    press(u"cmdApply"_s);
    EXPECT_EQ(LagKID(LesInnstilling, u"1234"_s, u"10001"_s), QString());
}

TEST_F(FrmOptionsLagreTest, TheTwoDefaultsOfTheCustomersLengthDiffer)
{
    store(u"KIDaktivert"_s, u"1"_s);
    store(u"KIDoppbygning"_s, u"1"_s);
    // Never saved here: six digits.
    EXPECT_EQ(LagKID(LesInnstilling, u"1234"_s, u"77"_s), Modulus10(u"000077001234"_s));
    open();
    EXPECT_EQ(box(u"Text1"_s).text(), u"5"_s);
    press(u"cmdOK"_s);
    EXPECT_EQ(LagKID(LesInnstilling, u"1234"_s, u"77"_s), Modulus10(u"00077001234"_s));
}

TEST_F(FrmOptionsLagreTest, TheRoundingFollowsWhatIsSaved)
{
    const Celler celler({{u"1"_s, u"110"_s, u"0"_s}, {u"3"_s, u"1"_s, u"25"_s}});
    const auto rounded = [&] {
        Summer summer;
        BeregnSummer(celler, LesInnstilling, summer);
        return QString(summer.avrunding).replace(u',', u'.');
    };
    open();
    press(u"optAvrunding_1"_s, 3);
    press(u"cmdApply"_s);
    EXPECT_EQ(rounded(), u"0.25"_s);
    press(u"optAvrunding_2"_s);
    press(u"cmdApply"_s);
    EXPECT_EQ(rounded(), u"-0.75"_s);
    press(u"optAvrunding_0"_s);
    press(u"cmdApply"_s);
    EXPECT_EQ(rounded(), u"0.00"_s);
}

TEST_F(FrmOptionsLagreTest, TheFirstOrderTakesTheFirstNumber)
{
    open();
    clickTab(3);
    type(box(u"txtFirstFak"_s), u"4711"_s);
    press(u"cmdOK"_s);
    EXPECT_EQ(NyttOrdreNr(), 4711);
}

} // namespace

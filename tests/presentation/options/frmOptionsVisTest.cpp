#include "presentation/options/OptionsFixture.h"

namespace {

/// What the screen shows of the stored settings.
class FrmOptionsVisTest : public OptionsFixture
{
protected:
    // With the style's own colours a button's face is what a disabled box has of itself.
    FrmOptionsVisTest()
    {
        QPalette colours = m_before;
        colours.setColor(QPalette::Button, Qt::darkCyan);
        QApplication::setPalette(colours);
    }
    ~FrmOptionsVisTest() override { QApplication::setPalette(m_before); }

private:
    const QPalette m_before = QApplication::palette();
};

const QStringList kOfKid{u"optMOD_0"_s, u"optMOD_1"_s, u"optKID_0"_s, u"optKID_1"_s,
                         u"Text1"_s,    u"Text2"_s,    u"Text3"_s};

// --- Nothing stored

TEST_F(FrmOptionsVisTest, OpensWithItsDefaults)
{
    open();
    EXPECT_FALSE(check(u"Check1"_s).isChecked());
    EXPECT_EQ(chosen(u"optKID"_s), 0);
    EXPECT_EQ(box(u"Text1"_s).text(), u"5"_s);
    EXPECT_EQ(box(u"Text2"_s).text(), u"6"_s);
    EXPECT_EQ(box(u"Text3"_s).text(), u"6"_s);
    EXPECT_EQ(chosen(u"optMOD"_s), 0);
    EXPECT_EQ(chosen(u"optLogo"_s), 0);
    EXPECT_FALSE(check(u"chkTxt1"_s).isChecked());
    EXPECT_FALSE(check(u"chkTxt2"_s).isChecked());
    EXPECT_EQ(area(1).text(), standardSentence());
    EXPECT_EQ(area(2).text(), QString());
    EXPECT_EQ(box(u"txtFirstFak"_s).text(), u"1"_s);
    EXPECT_EQ(chosen(u"optAvrunding"_s), 0);
    EXPECT_FALSE(check(u"chkPrintVis"_s).isChecked());
}

TEST_F(FrmOptionsVisTest, OpeningStoresNothing)
{
    const SessionTap tap;
    open();
    for (const QString &statement : tap.statements())
        EXPECT_TRUE(statement.startsWith(u"SELECT"_s)) << statement.toStdString();
    press(u"cmdCancel"_s);
    EXPECT_EQ(screen(), nullptr);
    EXPECT_EQ(stored(u"KIDaktivert"_s), u"-"_s);
    EXPECT_EQ(client(u"FirstFakNr,FakTekstBruk,FakTekst1,FakTekst2"_s),
              QStringList{u"Null|Null|Null|Null"_s});
    EXPECT_TRUE(storedLogo().isNull());
}

TEST_F(FrmOptionsVisTest, ReadsTheClientsRowInItsOrder)
{
    addOrder();
    const SessionTap tap;
    open();
    EXPECT_EQ(tap.statements(), QStringList({u"SELECT Logo FROM Klient WHERE KlientNr= 5"_s,
                                             u"SELECT COUNT (*) FROM Ordre WHERE KlientNr= 5"_s,
                                             u"SELECT FirstFakNr FROM Klient WHERE KlientNr= 5"_s,
                                             u"SELECT FakTekstBruk FROM Klient WHERE KlientNr= 5"_s,
                                             u"SELECT FakTekst1 FROM Klient WHERE KlientNr= 5"_s,
                                             u"SELECT FakTekst2 FROM Klient WHERE KlientNr= 5"_s}));
}

// --- Page KID

TEST_F(FrmOptionsVisTest, KidIsOnForExactlyOne)
{
    for (const auto &[value, on] : std::vector<std::pair<QString, bool>>{{u"1"_s, true},
                                                                         {u"1,9"_s, true},
                                                                         {u"0"_s, false},
                                                                         {u"2"_s, false},
                                                                         {u"-1"_s, false},
                                                                         {u"1.5"_s, false},
                                                                         {u"ja"_s, false},
                                                                         {QString(), false}}) {
        store(u"KIDaktivert"_s, value);
        open();
        EXPECT_EQ(check(u"Check1"_s).isChecked(), on) << value.toStdString();
        press(u"cmdCancel"_s);
    }
}

TEST_F(FrmOptionsVisTest, WithKidOffItsChoicesAreOff)
{
    open();
    for (const QString &name : kOfKid)
        EXPECT_FALSE(isOn(name)) << name.toStdString();
    for (const QString &name : {u"Text1"_s, u"Text2"_s, u"Text3"_s})
        EXPECT_FALSE(hasWindowGround(name)) << name.toStdString();
}

TEST_F(FrmOptionsVisTest, WithKidOnItsChoicesAreOn)
{
    store(u"KIDaktivert"_s, u"1"_s);
    open();
    for (const QString &name : kOfKid)
        EXPECT_TRUE(isOn(name)) << name.toStdString();
    for (const QString &name : {u"Text1"_s, u"Text2"_s, u"Text3"_s})
        EXPECT_TRUE(hasWindowGround(name)) << name.toStdString();
}

TEST_F(FrmOptionsVisTest, TickingKidTurnsItsChoicesOnAndOff)
{
    open();
    press(u"Check1"_s);
    for (const QString &name : kOfKid)
        EXPECT_TRUE(isOn(name)) << name.toStdString();
    EXPECT_TRUE(hasWindowGround(u"Text2"_s));
    QTest::keyClick(&check(u"Check1"_s), Qt::Key_Space);
    for (const QString &name : kOfKid)
        EXPECT_FALSE(isOn(name)) << name.toStdString();
    EXPECT_FALSE(hasWindowGround(u"Text2"_s));
}

TEST_F(FrmOptionsVisTest, TheStructureIsOneForExactlyOne)
{
    for (const auto &[value, structure] :
         std::vector<std::pair<QString, int>>{{u"1"_s, 1}, {u"0"_s, 0}, {u"2"_s, 0}, {u"x"_s, 0}}) {
        store(u"KIDoppbygning"_s, value);
        open();
        EXPECT_EQ(chosen(u"optKID"_s), structure) << value.toStdString();
        EXPECT_EQ(isOn(u"Label3"_s), structure == 1) << value.toStdString();
        press(u"cmdCancel"_s);
    }
}

TEST_F(FrmOptionsVisTest, TheLabelOfTheStructureFollowsNoLaterChoice)
{
    store(u"KIDaktivert"_s, u"1"_s);
    open();
    press(u"optKID_1"_s);
    EXPECT_EQ(chosen(u"optKID"_s), 1);
    EXPECT_FALSE(isOn(u"Label3"_s));
}

TEST_F(FrmOptionsVisTest, TheLengthsAreShownAsStored)
{
    store(u"KIDlengdeFakturanr"_s, u"8"_s);
    store(u"KIDlengdeKundenr"_s, u"sju"_s);
    open();
    EXPECT_EQ(box(u"Text2"_s).text(), u"8"_s);
    EXPECT_EQ(box(u"Text3"_s).text(), u"8"_s);
    EXPECT_EQ(box(u"Text1"_s).text(), u"sju"_s);
}

TEST_F(FrmOptionsVisTest, ModulusIsElevenForExactlyEleven)
{
    for (const auto &[value, modulus] : std::vector<std::pair<QString, int>>{
             {u"11"_s, 1}, {u"10"_s, 0}, {u"9"_s, 0}, {u"11.1"_s, 0}}) {
        store(u"KIDmodulus"_s, value);
        open();
        EXPECT_EQ(chosen(u"optMOD"_s), modulus) << value.toStdString();
        press(u"cmdCancel"_s);
    }
}

TEST_F(FrmOptionsVisTest, StructureAndModulusAreChosenApart)
{
    store(u"KIDaktivert"_s, u"1"_s);
    open();
    press(u"optKID_1"_s);
    press(u"optMOD_1"_s);
    EXPECT_EQ(chosen(u"optKID"_s), 1);
    EXPECT_EQ(chosen(u"optMOD"_s), 1);
    press(u"optKID_0"_s);
    EXPECT_EQ(chosen(u"optMOD"_s), 1);
}

// --- Page Faktura

TEST_F(FrmOptionsVisTest, WithAnOrderTheFirstNumberIsShownAndStandsFast)
{
    run(u"UPDATE Klient SET FirstFakNr=1001 WHERE KlientNr=5"_s);
    addOrder();
    open();
    EXPECT_EQ(box(u"txtFirstFak"_s).text(), u"1001"_s);
    EXPECT_FALSE(isOn(u"txtFirstFak"_s));
    EXPECT_FALSE(isOn(u"Frame4"_s));
    EXPECT_FALSE(hasWindowGround(u"txtFirstFak"_s));
    clickTab(3);
    QTest::mouseClick(&box(u"txtFirstFak"_s), Qt::LeftButton);
    EXPECT_NE(focused(), u"txtFirstFak"_s);
}

TEST_F(FrmOptionsVisTest, WithoutAnOrderTheStoredFirstNumberIsNotShown)
{
    run(u"UPDATE Klient SET FirstFakNr=1001 WHERE KlientNr=5"_s);
    addOrder(6);
    open();
    EXPECT_EQ(box(u"txtFirstFak"_s).text(), u"1"_s);
    EXPECT_TRUE(isOn(u"txtFirstFak"_s));
    EXPECT_TRUE(isOn(u"Frame4"_s));
    EXPECT_TRUE(hasWindowGround(u"txtFirstFak"_s));
    EXPECT_EQ(box(u"txtFirstFak"_s).alignment() & Qt::AlignHorizontal_Mask, Qt::AlignRight);
}

TEST_F(FrmOptionsVisTest, WithAnOrderAndNoFirstNumberAZeroIsShown)
{
    addOrder();
    open();
    EXPECT_EQ(box(u"txtFirstFak"_s).text(), u"0"_s);
}

TEST_F(FrmOptionsVisTest, ACountThatFailsCountsAsNoOrder)
{
    run(u"DROP TABLE OrdreLinjer"_s);
    run(u"DROP TABLE Ordre"_s);
    open();
    EXPECT_TRUE(isOn(u"txtFirstFak"_s));
    EXPECT_EQ(box(u"txtFirstFak"_s).text(), u"1"_s);
}

TEST_F(FrmOptionsVisTest, TheTextsInUseAreTicked)
{
    for (const auto &[value, first, second] :
         std::vector<std::tuple<int, bool, bool>>{{0, false, false},
                                                  {1, true, false},
                                                  {2, false, true},
                                                  {3, true, true},
                                                  {4, false, false},
                                                  {5, false, false},
                                                  {-1, false, false}}) {
        run(u"UPDATE Klient SET FakTekstBruk=%1 WHERE KlientNr=5"_s.arg(value));
        open();
        EXPECT_EQ(check(u"chkTxt1"_s).isChecked(), first) << value;
        EXPECT_EQ(check(u"chkTxt2"_s).isChecked(), second) << value;
        press(u"cmdCancel"_s);
    }
}

TEST_F(FrmOptionsVisTest, TheTextsAreShown)
{
    run(u"UPDATE Klient SET FakTekst1='Takk for handelen.', FakTekst2='God jul' WHERE "
        u"KlientNr=5"_s);
    open();
    EXPECT_EQ(area(1).text(), u"Takk for handelen."_s);
    EXPECT_EQ(area(2).text(), u"God jul"_s);
}

TEST_F(FrmOptionsVisTest, ABlankFirstTextIsOfferedTheStandardSentence)
{
    for (const QString &value : {QString(), u"   "_s}) {
        run(u"UPDATE Klient SET FakTekst1='%1', FakTekst2='%1' WHERE KlientNr=5"_s.arg(value));
        open();
        EXPECT_EQ(area(1).text(), standardSentence());
        EXPECT_EQ(area(2).text(), value);
        press(u"cmdCancel"_s);
    }
}

TEST_F(FrmOptionsVisTest, TheRoundingIsChosen)
{
    for (const auto &[value, index] : std::vector<std::pair<QString, int>>{
             {u"0"_s, 0}, {u"1"_s, 1}, {u"2"_s, 2}, {u"3"_s, 0}, {u"-1"_s, 0}, {u"99999"_s, 0}}) {
        store(u"Avrunding"_s, value);
        open();
        EXPECT_EQ(chosen(u"optAvrunding"_s), index) << value.toStdString();
        press(u"cmdCancel"_s);
    }
}

TEST_F(FrmOptionsVisTest, ThePreviewIsTickedForExactlyOne)
{
    for (const auto &[value, on] : std::vector<std::pair<QString, bool>>{
             {u"1"_s, true}, {u"0"_s, false}, {u"2"_s, false}, {u"1.1"_s, false}}) {
        store(u"PrintVis"_s, value);
        open();
        EXPECT_EQ(check(u"chkPrintVis"_s).isChecked(), on) << value.toStdString();
        press(u"cmdCancel"_s);
    }
}

TEST_F(FrmOptionsVisTest, ATextAreaTakesLinesAndNoMoreThanItsLength)
{
    open();
    clickTab(3);
    for (const int number : {1, 2}) {
        type(area(number), u"Linje 1\nLinje 2"_s);
        EXPECT_EQ(area(number).text(), u"Linje 1\r\nLinje 2"_s);
        type(area(number), QString(300, u'x'));
        EXPECT_EQ(area(number).text(), QString(255, u'x'));
    }
}

TEST_F(FrmOptionsVisTest, TheClientWithoutARowOpensAllTheSame)
{
    run(u"DELETE FROM Klient WHERE KlientNr=5"_s);
    open();
    EXPECT_TRUE(screen()->isVisible());
    EXPECT_EQ(area(1).text(), standardSentence());
    EXPECT_FALSE(check(u"chkTxt1"_s).isChecked());
    EXPECT_TRUE(logo().isNull());
}

} // namespace

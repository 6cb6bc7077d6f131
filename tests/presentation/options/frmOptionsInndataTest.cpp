#include "presentation/options/OptionsFixture.h"

#include "presentation/screens/frmInvisible.h"
#include "rules/Innstilling.h"
#include "rules/Kid.h"

#include <QClipboard>
#include <QFileDialog>

namespace {

/// What nobody has thought of: spoilt settings, texts of any kind, and what goes away meanwhile.
class FrmOptionsInndataTest : public OptionsFixture
{
protected:
    /// Has a message box answered that comes up during the next statement; its text.
    static std::shared_ptr<QString> answerMessage(const std::function<void()> &before = {})
    {
        auto said = std::make_shared<QString>();
        onNextModal<QMessageBox>([=](QMessageBox &message) {
            *said = message.text();
            if (before)
                before();
            QTest::keyClick(&message, Qt::Key_Return);
        });
        return said;
    }
    /// Takes all screens away, and deletes them as the loop of a modal window does.
    static void unloadEverything()
    {
        unloadForms();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_EQ(screen(), nullptr);
    }
    static void paste(QWidget &into, const QString &text)
    {
        QGuiApplication::clipboard()->setText(text);
        QTest::keyClick(&into, Qt::Key_V, Qt::ControlModifier);
    }
};

// --- Spoilt settings

TEST_F(FrmOptionsInndataTest, SpoiltSettingsOpenAsTheirNumber)
{
    for (const QString &value : {u"abc"_s, u"999"_s, u"-32769"_s, u"1e300"_s, u"\r\n"_s, u"'"_s,
                                 u"\""_s, QString(5000, u'x')}) {
        for (const QString &key :
             {u"KIDaktivert"_s, u"KIDoppbygning"_s, u"KIDlengdeFakturanr"_s, u"KIDlengdeKundenr"_s,
              u"KIDmodulus"_s, u"Fakturablankett"_s, u"Avrunding"_s, u"PrintVis"_s})
            store(key, value);
        open();
        const std::string told = value.left(20).toStdString();
        EXPECT_EQ(QApplication::activeModalWidget(), nullptr) << told;
        EXPECT_FALSE(check(u"Check1"_s).isChecked()) << told;
        EXPECT_EQ(chosen(u"optKID"_s), 0) << told;
        EXPECT_EQ(chosen(u"optMOD"_s), 0) << told;
        EXPECT_EQ(chosen(u"optLogo"_s), 0) << told;
        EXPECT_EQ(chosen(u"optAvrunding"_s), 0) << told;
        EXPECT_FALSE(check(u"chkPrintVis"_s).isChecked()) << told;
        EXPECT_TRUE(control(u"imgBlankett"_s).isVisibleTo(&page(1))) << told;
        press(u"cmdOK"_s);
        EXPECT_EQ(stored(u"Avrunding"_s), u"0"_s) << told;
        EXPECT_EQ(stored(u"KIDmodulus"_s), value) << told;
    }
}

TEST_F(FrmOptionsInndataTest, ANumberBeyondAllBoundsFailsAndItsConditionIsEntered)
{
    store(u"KIDaktivert"_s, QString(400, u'9'));
    store(u"Avrunding"_s, QString(400, u'9'));
    open();
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    EXPECT_TRUE(check(u"Check1"_s).isChecked());
    EXPECT_EQ(chosen(u"optAvrunding"_s), 0);
}

TEST_F(FrmOptionsInndataTest, ASettingBetweenTwoChoicesTakesTheEvenOne)
{
    store(u"Fakturablankett"_s, u"1.5"_s);
    store(u"Avrunding"_s, u"0.5"_s);
    open();
    EXPECT_EQ(chosen(u"optLogo"_s), 2);
    EXPECT_EQ(chosen(u"optAvrunding"_s), 0);
}

TEST_F(FrmOptionsInndataTest, OddLengthsAreStoredAsTypedAndComeBack)
{
    const QStringList odd{u"abc"_s,   u"999"_s, u"5;6"_s,    u"[Annet]"_s, u"a=b"_s,
                          u"\"6\""_s, u"'6'"_s, u"%1 \\x"_s, u"æøå"_s,     QString(4000, u'7')};
    store(u"KIDaktivert"_s, u"1"_s);
    open();
    for (const QString &text : odd) {
        box(u"Text1"_s).selectAll();
        paste(box(u"Text1"_s), text);
        type(box(u"Text3"_s), text.left(50));
        press(u"cmdApply"_s);
        EXPECT_EQ(stored(u"KIDlengdeKundenr"_s), text);
        EXPECT_EQ(stored(u"KIDlengdeFakturanr"_s), text.left(50));
        EXPECT_EQ(stored(u"KIDmodulus"_s), u"10"_s);
        reopen();
        EXPECT_EQ(box(u"Text1"_s).text(), text);
    }
}

// --- Texts

TEST_F(FrmOptionsInndataTest, TextsOfAnyCharactersComeBack)
{
    for (const QString &text : {u"Han sa \"takk\"; -- ikke #nå#, [eller] 50 % ? * _ | \\ & <b>"_s,
                                u"UPDATE Klient SET Navn=NULL"_s, u"æøåÆØÅ € – «sitat»"_s,
                                u"1\u00a0000 kr"_s, QString(255, u'x')}) {
        open();
        clickTab(3);
        type(area(1), text);
        type(area(2), text);
        press(u"cmdOK"_s);
        EXPECT_EQ(client(u"FakTekst1"_s), QStringList{text});
        open();
        EXPECT_EQ(area(1).text(), text);
        EXPECT_EQ(area(2).text(), text);
        press(u"cmdCancel"_s);
    }
    EXPECT_EQ(client(u"Navn"_s), QStringList{u"Strand Transport AS"_s});
}

TEST_F(FrmOptionsInndataTest, APastedTextIsCutAndStored)
{
    open();
    clickTab(3);
    area(2).setFocus();
    paste(area(2), QString(100'000, u'x'));
    EXPECT_EQ(area(2).text(), QString(255, u'x'));
    press(u"cmdApply"_s);
    EXPECT_EQ(client(u"FakTekst2"_s), QStringList{QString(255, u'x')});
}

TEST_F(FrmOptionsInndataTest, TheFirstNumberTakesNoSecondStatement)
{
    open();
    clickTab(3);
    for (const QString &text : {u"1; DROP TABLE Klient"_s, u"1 WHERE 1=1 --"_s, u"7'"_s,
                                u"99999999999999999999"_s, u"1e400"_s}) {
        box(u"txtFirstFak"_s).selectAll();
        paste(box(u"txtFirstFak"_s), text);
        press(u"cmdApply"_s);
        EXPECT_EQ(QApplication::activeModalWidget(), nullptr) << text.toStdString();
        EXPECT_EQ(client(u"FakTekstBruk"_s), QStringList{u"0"_s}) << text.toStdString();
    }
    EXPECT_EQ(rows(u"SELECT COUNT (*) FROM Klient"_s), QStringList{u"2"_s});
}

// --- What goes away

TEST_F(FrmOptionsInndataTest, AnotherActiveClientIsTheOneThatIsStored)
{
    open();
    clickTab(3);
    type(area(2), u"Til klient 6"_s);
    type(box(u"txtFirstFak"_s), u"600"_s);
    gKlient = 6;
    press(u"cmdApply"_s);
    EXPECT_EQ(client(u"FirstFakNr,FakTekst2"_s, 6), QStringList{u"600|Til klient 6"_s});
    EXPECT_EQ(client(u"FirstFakNr,FakTekst2"_s, 5), QStringList{u"Null|Null"_s});
    EXPECT_TRUE(storedLogo(5).isNull());
    EXPECT_FALSE(storedLogo(6).isNull());
}

TEST_F(FrmOptionsInndataTest, EachClientHasItsOwnTexts)
{
    run(u"UPDATE Klient SET FakTekst2='Fem', FakTekstBruk=1 WHERE KlientNr=5"_s);
    run(u"UPDATE Klient SET FakTekst2='Seks', FakTekstBruk=2 WHERE KlientNr=6"_s);
    addOrder(6);
    gKlient = 6;
    open();
    EXPECT_EQ(area(2).text(), u"Seks"_s);
    EXPECT_TRUE(check(u"chkTxt2"_s).isChecked());
    EXPECT_FALSE(isOn(u"txtFirstFak"_s));
    gKlient = 5;
    reopen();
    EXPECT_EQ(area(2).text(), u"Fem"_s);
    EXPECT_TRUE(isOn(u"txtFirstFak"_s));
}

TEST_F(FrmOptionsInndataTest, WithoutADatabaseTheSettingsAreStoredAllTheSame)
{
    gDB.reset(); // a new one that knows no database
    open();
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    EXPECT_EQ(box(u"txtFirstFak"_s).text(), u"1"_s);
    press(u"optAvrunding_1"_s, 3);
    const auto said = answerMessage();
    press(u"cmdOK"_s);
    EXPECT_EQ(*said, u"Feil ved lagring av logo: 91 Objektvariabelen er ikke satt"_s);
    EXPECT_EQ(stored(u"Avrunding"_s), u"1"_s);
    EXPECT_EQ(screen(), nullptr);
}

TEST_F(FrmOptionsInndataTest, ADatabaseThatGoesMeanwhileHindersNoSetting)
{
    open();
    press(u"chkPrintVis"_s, 3);
    SessionTap tap;
    ado::SessionPool::shared().clear();
    tap.fail(u"open"_s);
    const auto said = answerMessage();
    press(u"cmdApply"_s);
    EXPECT_TRUE(said->startsWith(u"Feil ved lagring av logo: "_s)) << said->toStdString();
    EXPECT_EQ(stored(u"PrintVis"_s), u"1"_s);
}

TEST_F(FrmOptionsInndataTest, TheScreenMayBeGoneWhenTheLogosMessageIsAnswered)
{
    for (const QString &button : {u"cmdOK"_s, u"cmdApply"_s}) {
        store(u"PrintVis"_s, u"0"_s);
        QDir().mkpath(logoFile() + u"/mappe"_s);
        open();
        press(u"chkPrintVis"_s, 3);
        type(area(2), button);
        const auto said = answerMessage([] { unloadEverything(); });
        QTest::mouseClick(&control(button), Qt::LeftButton);
        runEvents();
        EXPECT_TRUE(said->startsWith(u"Feil ved lagring av logo: 75"_s)) << said->toStdString();
        EXPECT_EQ(stored(u"PrintVis"_s), u"1"_s);
        EXPECT_EQ(client(u"FakTekst2"_s), QStringList{button});
    }
}

TEST_F(FrmOptionsInndataTest, TheScreensMayBeGoneWhenALogoIsChosen)
{
    const QString path = writePicture(u"logo.bmp"_s, "BMP", QSize(40, 20), Qt::darkGreen);
    for (const bool chooses : {true, false}) {
        open();
        press(u"optLogo_1"_s, 2);
        bool shown = false;
        onNextModal<QFileDialog>([&](QFileDialog &dialog) {
            shown = true;
            unloadEverything();
            dialog.findChild<QLineEdit *>(u"fileNameEdit"_s)->setText(path);
            if (chooses)
                QTest::keyClick(&dialog, Qt::Key_Return);
            else
                dialog.reject();
        });
        QTest::mouseClick(&control(u"cmdLogoInn"_s), Qt::LeftButton);
        runEvents();
        EXPECT_TRUE(shown);
        EXPECT_EQ(screen(), nullptr);
        EXPECT_TRUE(storedLogo().isNull());
    }
}

// --- The temporary file

TEST_F(FrmOptionsInndataTest, ATemporaryFolderThatCannotBeWrittenIsToldWithTheSave)
{
    putLogo(content(writePicture(u"logo.bmp"_s, "BMP", QSize(40, 20), Qt::darkGreen)));
    // Not a folder, so nothing can lie in it.
    const QString file = writeFile(u"fil"_s, "x");
    ASSERT_TRUE(QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner));
    qputenv("TMPDIR", QFile::encodeName(file));
    open();
    EXPECT_EQ(logo().size(), QSize(237, 76));
    const auto said = answerMessage();
    press(u"cmdApply"_s);
    EXPECT_EQ(*said, u"Feil ved lagring av logo: 75 Feil ved tilgang til bane eller fil"_s);
    EXPECT_EQ(QImage::fromData(storedLogo()).size(), QSize(40, 20));
    EXPECT_EQ(stored(u"Avrunding"_s), u"0"_s);
}

TEST_F(FrmOptionsInndataTest, AFolderOfTheFilesNameLeavesTheStoredLogo)
{
    putLogo(content(writePicture(u"logo.bmp"_s, "BMP", QSize(40, 20), Qt::darkGreen)));
    QDir().mkpath(logoFile() + u"/mappe"_s);
    open();
    EXPECT_EQ(logo().size(), QSize(237, 76));
    const auto said = answerMessage();
    press(u"cmdOK"_s);
    EXPECT_TRUE(said->startsWith(u"Feil ved lagring av logo: 75"_s));
    EXPECT_EQ(screen(), nullptr);
    EXPECT_EQ(QImage::fromData(storedLogo()).size(), QSize(40, 20));
}

// --- Lengths in use

TEST_F(FrmOptionsInndataTest, AnEndlessLengthIsRefusedByTheRuleAndNotByTheScreen)
{
    store(u"KIDaktivert"_s, u"1"_s);
    open();
    type(box(u"Text3"_s), u"999999999"_s);
    press(u"cmdOK"_s);
    EXPECT_EQ(raised([] { (void)LagKID(LesInnstilling, u"1"_s, u"2"_s); }), errors::kOverflow);
}

} // namespace

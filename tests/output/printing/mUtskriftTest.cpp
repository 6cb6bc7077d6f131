#include "output/printing/UtskriftTest.h"

#include "data/clsAdoUtils.h"
#include "output/printing/RapportUtgang.h"
#include "output/printout/Fakturautskrift.h"
#include "platform/forms/Forms.h"
#include "presentation/screens/frmDummy.h"
#include "runtime/ComponentFolder.h"
#include "runtime/Paths.h"
#include "shell/component/Main.h"
#include "state/SharedState.h"
#include "support/SessionTap.h"

#include <QMessageBox>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

class MUtskriftTest : public UtskriftTest
{
protected:
    /// Runs it with each statement that the database gets seen by `ser`.
    void mensDenLeser(const std::function<void()> &ser, const std::function<void()> &utfor)
    {
        SessionTap tap;
        tap.rewriteStatements([&](const QString &statement) {
            ser();
            return statement;
        });
        reload();
        connect();
        utfor();
    }
    static bool timeglass()
    {
        const QCursor *peker = QApplication::overrideCursor();
        return peker && peker->shape() == Qt::WaitCursor;
    }
    static void skriv(qint16 modus, const QString &formel1 = {}, const QString &formel2 = {})
    {
        SkrivRapport(u"Fak-mgiro-ulogo.rpt"_s, modus, {}, formel1, formel2);
    }
};

const QMessageBox::Icon kInfo = QMessageBox::Information;

} // namespace

// --- The report folder

TEST(RapportMappe, IsFoundFromTheComponentsFolder)
{
    EXPECT_EQ(rapportMappe(u"C:\\Prog\\bin\\x"_s), u"C:\\Prog\\rpt\\Faktura\\"_s);
    EXPECT_EQ(rapportMappe(u"C:\\Prog\\bin"_s), u"C:\\Prog\\rpt\\Faktura\\"_s);
    EXPECT_EQ(rapportMappe(u"C:\\Prog"_s), u"C:\\Prog\\"_s);
    EXPECT_EQ(rapportMappe(u"C:\\PROG\\BIN"_s), u"C:\\PROG\\BIN\\"_s);
    EXPECT_EQ(rapportMappe(u"C:\\Prog\\binder\\bin"_s), u"C:\\Prog\\rpt\\Faktura\\"_s);
    EXPECT_EQ(rapportMappe(u"\\bin"_s), u"\\rpt\\Faktura\\"_s);
}

TEST_F(MUtskriftTest, TheFolderIsWorkedOutForEachCall)
{
    leggOrdre({});
    for (int i = 0; i < 2; ++i) {
        gRptPath = u"\\et\\annet\\sted"_s;
        skriv(0);
        EXPECT_EQ(gRptPath, rapportMappe(componentFolder()));
        EXPECT_TRUE(gRptPath.endsWith(u"\\rpt\\Faktura\\"_s)) << gRptPath.toStdString();
    }
    EXPECT_EQ(vinduer().size(), 2);
}

// --- The preview

TEST_F(MUtskriftTest, ShowsTheReportInAWindowOfItsOwn)
{
    leggOrdre({.ordreNr = 1031});
    skriv(0);
    ASSERT_EQ(vinduer().size(), 1);
    Forhandsvisning *vist = vindu();
    EXPECT_TRUE(vist->isWindow());
    EXPECT_EQ(vist->objectName(), u"Forhandsvisning"_s);
    EXPECT_EQ(vist->windowTitle(), u"Prøve mgiro-ulogo - Forhåndsvisning"_s);
    EXPECT_EQ(vist->size(), QSize(900, 700));
    EXPECT_EQ(vist->x(), 0);
    EXPECT_EQ(vist->windowState() & ~Qt::WindowActive, Qt::WindowNoState);
    EXPECT_EQ(sider(vist)->zoom(), 100);
    EXPECT_TRUE(QTest::qWaitForWindowActive(vist));
    EXPECT_EQ(tekster(vist),
              QStringList({u"Nr 1031 for Kunde AS"_s, u"Type 99"_s, u"Note ingen"_s, u"125,00"_s}));
    EXPECT_FALSE(timeglass());
}

TEST_F(MUtskriftTest, ThePreviewLeavesTheControlClearedAndItsFormLoaded)
{
    leggOrdre({});
    SkrivRapport(u"Fak-mgiro-ulogo.rpt"_s, 0, u"{Ordre.OrdreNr}=1"_s, u"FakType=1"_s,
                 u"Note='x'"_s);
    ASSERT_NE(kontroll(), nullptr);
    EXPECT_EQ(kontroll()->connect(), QString());
    EXPECT_EQ(kontroll()->reportFileName(), QString());
    EXPECT_EQ(kontroll()->selectionFormula(), QString());
    EXPECT_EQ(kontroll()->formula(0), QString());
    EXPECT_EQ(kontroll()->document(), nullptr);
    EXPECT_FALSE(lasteSkjermer().contains(u"frmDummy"_s));
}

TEST_F(MUtskriftTest, ThePointerIsAnHourglassWhileTheReportRuns)
{
    leggOrdre({});
    int lest = 0;
    for (const qint16 modus : {qint16(0), qint16(1)}) {
        mensDenLeser(
            [&] {
                ++lest;
                EXPECT_TRUE(timeglass());
            },
            [&] {
                skrivere.standardnavn = u"Kontor"_s;
                skriv(modus);
            });
        EXPECT_FALSE(timeglass());
    }
    EXPECT_EQ(lest, 2);
}

TEST_F(MUtskriftTest, EachRunReadsTheDataAfresh)
{
    leggOrdre({.kundeNavn = u"Før AS"_s});
    skriv(0);
    Forhandsvisning *forste = vindu();
    run(u"UPDATE Ordre SET KundeNavn='Etter AS'"_s);
    skriv(0);
    EXPECT_NE(vindu(), forste);
    EXPECT_EQ(tekster(forste).value(0), u"Nr 1 for Før AS"_s);
    EXPECT_EQ(tekster(vindu()).value(0), u"Nr 1 for Etter AS"_s);
}

TEST_F(MUtskriftTest, TheSelectionPicksTheRows)
{
    leggOrdre({.ordreNr = 1, .kundeNavn = u"A"_s});
    leggOrdre({.ordreNr = 2, .kundeNavn = u"B"_s});
    SkrivRapport(u"Liste.rpt"_s, 0, u"{Ordre.KlientNr}= 5 and {Ordre.OrdreNr}=2"_s, {}, {});
    EXPECT_TRUE(tekster(vindu()).contains(u"Ordre 2"_s));
    EXPECT_FALSE(tekster(vindu()).contains(u"Ordre 1"_s));
    SkrivRapport(u"Liste.rpt"_s, 0, {}, {}, {});
    EXPECT_TRUE(tekster(vindu()).contains(u"Ordre 1"_s));
}

TEST_F(MUtskriftTest, AFormulaOfAnEarlierRunIsForgotten)
{
    leggOrdre({});
    skriv(0, u"FakType=1"_s, u"Note='hei'"_s);
    EXPECT_EQ(tekster(vindu()).mid(1, 2), QStringList({u"Type 1"_s, u"Note hei"_s}));
    skriv(0, u"FakType=0"_s, {});
    EXPECT_EQ(tekster(vindu()).mid(1, 2), QStringList({u"Type 0"_s, u"Note ingen"_s}));
    skriv(0, {}, u"Note='igjen'"_s);
    EXPECT_EQ(tekster(vindu()).mid(1, 2), QStringList({u"Type 99"_s, u"Note igjen"_s}));
}

// --- The printer

TEST_F(MUtskriftTest, PrintsWithoutAWindow)
{
    leggOrdre({});
    skrivere.standardnavn = u"Kontor"_s;
    int lest = 0;
    mensDenLeser(
        [&] {
            ++lest;
            // A window out of sight, whose parent is the empty form.
            auto *dummy = Forms::byName(u"frmDummy"_s);
            ASSERT_NE(dummy, nullptr);
            EXPECT_FALSE(dummy->isVisible());
            EXPECT_EQ(dummy->state(), FormState::Minimised);
            ASSERT_NE(kontroll(), nullptr);
            EXPECT_EQ(kontroll()->window().parent, dummy->winId());
            EXPECT_EQ(kontroll()->window().state, report::WindowState::Minimized);
            EXPECT_EQ(kontroll()->destination(), CrystalReport::Destination::Window);
        },
        [&] { skriv(1); });
    EXPECT_EQ(lest, 1);
    EXPECT_EQ(utskrifter().size(), 1);
    EXPECT_TRUE(vinduer().isEmpty());
    EXPECT_FALSE(lasteSkjermer().contains(u"frmDummy"_s));
    EXPECT_FALSE(lasteSkjermer().contains(u"frmInvisible"_s));
}

TEST_F(MUtskriftTest, TheStandardPrinterIsUsedWhereNoneHasBeenChosen)
{
    leggOrdre({});
    skrivere.standardnavn = u"Kontor"_s;
    skriv(1);
    EXPECT_EQ(skrivere.brukt, QStringList{u"Kontor"_s});
    EXPECT_EQ(antallSider(utskrifter().value(0)), 1);
}

TEST_F(MUtskriftTest, WithoutAPrinterAPdfFileIsAskedFor)
{
    leggOrdre({});
    QString tittel;
    QString foreslatt;
    onNextModal<QFileDialog>([&](QFileDialog &dialog) {
        tittel = dialog.windowTitle();
        foreslatt = dialog.findChild<QLineEdit *>(u"fileNameEdit"_s)->text();
        EXPECT_FALSE(timeglass());
        svarMedFil(dialog, fil(u"ut.pdf"_s));
    });
    skriv(1);
    EXPECT_EQ(tittel, u"Skriv til fil (PDF)"_s);
    EXPECT_EQ(foreslatt, u"Prøve mgiro-ulogo.pdf"_s);
    EXPECT_EQ(antallSider(innhold(u"ut.pdf"_s)), 1);
    EXPECT_TRUE(vinduer().isEmpty());
}

TEST_F(MUtskriftTest, CancellingThePdfFileIsSilent)
{
    leggOrdre({});
    onNextModal<QFileDialog>([&](QFileDialog &dialog) { dialog.reject(); });
    skriv(1);
    EXPECT_EQ(meldinger.tekster, QStringList());
    EXPECT_FALSE(lasteSkjermer().contains(u"frmDummy"_s));
    EXPECT_FALSE(lasteSkjermer().contains(u"frmInvisible"_s));
}

TEST_F(MUtskriftTest, TheFormsMayGoWhileTheFileIsAskedFor)
{
    leggOrdre({});
    onNextModal<QFileDialog>([&](QFileDialog &dialog) {
        Forms::instance().logOff();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        svarMedFil(dialog, fil(u"ut.pdf"_s));
    });
    skriv(1);
    EXPECT_EQ(antallSider(innhold(u"ut.pdf"_s)), 1);
}

// --- Failures

TEST_F(MUtskriftTest, AMissingReportIsTold)
{
    SkrivRapport(u"Finnes-ikke.rpt"_s, 0, u"{Ordre.OrdreNr}=7"_s, u"A=1"_s, u"B=2"_s);
    EXPECT_EQ(meldinger.ta(),
              QStringList(u"Beklager! Finner ikke den rapporten du forsøker å starte ("_s +
                          gRptPath +
                          u"Finnes-ikke.rpt)!\n\nSjekk https://www.strekkbok.example/ for "
                          u"oppdateringer."_s));
    EXPECT_EQ(meldinger.ikoner, QList<int>{kInfo});
    EXPECT_TRUE(vinduer().isEmpty());
    // The control stands as the run has set it.
    ASSERT_NE(kontroll(), nullptr);
    EXPECT_EQ(kontroll()->reportFileName(), gRptPath + u"Finnes-ikke.rpt"_s);
    EXPECT_EQ(kontroll()->connect(), connectionString() + u"; DSQ="_s);
    EXPECT_EQ(kontroll()->selectionFormula(), u"{Ordre.OrdreNr}=7"_s);
    EXPECT_EQ(kontroll()->formula(0), u"A=1"_s);
    EXPECT_EQ(kontroll()->formula(1), u"B=2"_s);
    EXPECT_EQ(kontroll()->window().left, 0);
    EXPECT_EQ(kontroll()->window().width, 900);
    EXPECT_EQ(kontroll()->window().height, 700);
    EXPECT_EQ(kontroll()->window().state, report::WindowState::Normal);
    EXPECT_EQ(kontroll()->window().parent, 0u);
    EXPECT_TRUE(kontroll()->window().ownWindow);
    EXPECT_TRUE(kontroll()->window().controls);

    SkrivRapport(u"Finnes-ikke.rpt"_s, 0, {}, u"A=1"_s, {});
    EXPECT_EQ(meldinger.ta().size(), 1);
    EXPECT_EQ(kontroll()->formula(1), QString());
    EXPECT_EQ(kontroll()->selectionFormula(), QString());
}

TEST_F(MUtskriftTest, AReportWithoutRowsIsTold)
{
    skriv(0);
    EXPECT_EQ(meldinger.ta(), QStringList(u"Tomt datasett, ingen poster å vise."_s));
    EXPECT_EQ(meldinger.ikoner, QList<int>{kInfo});
    EXPECT_TRUE(vinduer().isEmpty());
}

TEST_F(MUtskriftTest, OtherFailuresAreToldWithNumberAndText)
{
    leggOrdre({});
    const auto ventet = [&](const QString &start, const QString &inneholder) {
        const QStringList sagt = meldinger.ta();
        ASSERT_EQ(sagt.size(), 1);
        EXPECT_TRUE(sagt[0].startsWith(start)) << sagt[0].toStdString();
        EXPECT_TRUE(sagt[0].contains(inneholder)) << sagt[0].toStdString();
        EXPECT_GT(sagt[0].size(), start.size());
        EXPECT_EQ(std::exchange(meldinger.ikoner, {}), QList<int>{QMessageBox::NoIcon});
    };
    SkrivRapport(u"Feil.rpt"_s, 0, {}, {}, {});
    ventet(u"CRP: 20509 "_s, u"Feil.rpt, linje 4"_s);
    skriv(0, u"FakType="_s);
    ventet(u"CRP: 20515 "_s, {});
    skriv(0, u"Ukjent=1"_s);
    ventet(u"CRP: 20515 "_s, u"Ukjent"_s);
    skriv(0, {}, u"Note='O'Brien'"_s);
    ventet(u"CRP: 20515 "_s, {});
    SkrivRapport(u"Liste.rpt"_s, 0, u"{Ordre.OrdreNr}=12 x"_s, {}, {});
    ventet(u"CRP: 20515 "_s, u"12 x"_s);
    gDB->setConnectionString(u"dsn=/finnes/ikke.db"_s);
    skriv(0);
    ventet(u"CRP: 20536 "_s, {});
    gDB->setConnectionString(connectionString());
    skrivere.standardnavn = u"Nekter"_s;
    skriv(1);
    ventet(u"CRP: 20545 "_s, {});
    skrivere.standardnavn = u"Stjålet"_s;
    skriv(1);
    ventet(u"CRP: 20545 "_s, u"Skriveren «Stjålet» finnes ikke."_s);
    EXPECT_TRUE(vinduer().isEmpty());
}

TEST_F(MUtskriftTest, TheDataSourceIsWhatFollowsDsn)
{
    const QString dsn = connectionString();
    gDB->setConnectionString(u"Provider=x;DSN=y;"_s + dsn);
    SkrivRapport(u"Finnes-ikke.rpt"_s, 0, {}, {}, {});
    EXPECT_EQ(kontroll()->connect(), dsn + u"; DSQ="_s);
    gDB->setConnectionString(u"dsn=a;dsn=b"_s);
    SkrivRapport(u"Finnes-ikke.rpt"_s, 0, {}, {}, {});
    EXPECT_EQ(kontroll()->connect(), u"dsn=a;dsn=b; DSQ="_s);
    EXPECT_EQ(meldinger.ta().size(), 2);
}

TEST_F(MUtskriftTest, AConnectionStringWithoutDsnFails)
{
    leggOrdre({});
    for (const QString &forbindelse : {QString(), u"DSN="_s + path(), u"Provider=x"_s}) {
        gDB->setConnectionString(forbindelse);
        skriv(0);
        EXPECT_EQ(meldinger.ta(), QStringList(u"CRP: 5 "_s + RunTimeError(5).description()));
        EXPECT_EQ(std::exchange(meldinger.ikoner, {}), QList<int>{QMessageBox::NoIcon});
    }
}

TEST_F(MUtskriftTest, ThePointerIsBackBeforeTheMessage)
{
    bool underMeldingen = true;
    onNextModal<QMessageBox>([&](QMessageBox &) { underMeldingen = timeglass(); });
    skriv(0);
    EXPECT_FALSE(underMeldingen);
    EXPECT_EQ(meldinger.ta().size(), 1);
}

TEST_F(MUtskriftTest, AFailedPrintLeavesTheTwoFormsLoaded)
{
    skriv(1);
    EXPECT_EQ(meldinger.ta(), QStringList(u"Tomt datasett, ingen poster å vise."_s));
    EXPECT_TRUE(lasteSkjermer().contains(u"frmDummy"_s));
    EXPECT_TRUE(lasteSkjermer().contains(u"frmInvisible"_s));
    EXPECT_EQ(kontroll()->connect(), connectionString() + u"; DSQ="_s);

    // The next one that goes well takes them down.
    leggOrdre({});
    skrivere.standardnavn = u"Kontor"_s;
    skriv(1);
    EXPECT_FALSE(lasteSkjermer().contains(u"frmDummy"_s));
    EXPECT_FALSE(lasteSkjermer().contains(u"frmInvisible"_s));
    EXPECT_EQ(utskrifter().size(), 1);
}

TEST_F(MUtskriftTest, APrinterThatRefusesLeavesTheTwoFormsLoaded)
{
    leggOrdre({});
    skrivere.standardnavn = u"Nekter"_s;
    skriv(1);
    EXPECT_TRUE(meldinger.ta().value(0).startsWith(u"CRP: 20545 "_s));
    EXPECT_TRUE(lasteSkjermer().contains(u"frmDummy"_s));
    EXPECT_TRUE(lasteSkjermer().contains(u"frmInvisible"_s));
}

// --- Cancelling

TEST_F(MUtskriftTest, AReportThatTakesLongCanBeCancelled)
{
    leggOrdrer(60);
    skrivere.standardnavn = u"Kontor"_s;
    const LangsomTid tid;
    const auto avbrytVed = [&](qint16 modus, void (*avbryt)(QProgressDialog &)) {
        bool kom = false;
        onNextModal<QProgressDialog>([&](QProgressDialog &notat) {
            kom = true;
            EXPECT_EQ(notat.windowTitle(), u"Regningsdel"_s);
            EXPECT_EQ(notat.labelText(), u"Lager rapporten …"_s);
            EXPECT_TRUE(QTest::qWaitForWindowActive(&notat));
            QTest::keyClick(&notat, Qt::Key_Return);
            EXPECT_FALSE(notat.wasCanceled()) << "may have been meant for the screen below";
            avbryt(notat);
        });
        EXPECT_FALSE(SkrivRapport(u"Liste.rpt"_s, modus, {}, {}, {}));
        EXPECT_TRUE(kom);
        EXPECT_EQ(meldinger.tekster, QStringList());
        EXPECT_TRUE(vinduer().isEmpty());
        EXPECT_EQ(skrivere.brukt, QStringList());
        EXPECT_FALSE(timeglass());
        EXPECT_FALSE(lasteSkjermer().contains(u"frmDummy"_s));
    };
    avbrytVed(0, [](QProgressDialog &notat) { QTest::keyClick(&notat, Qt::Key_Escape); });
    ASSERT_NE(kontroll(), nullptr);
    EXPECT_EQ(kontroll()->connect(), QString());
    EXPECT_EQ(kontroll()->reportFileName(), QString());
    avbrytVed(1, [](QProgressDialog &notat) {
        auto *knapp = notat.findChild<QPushButton *>();
        EXPECT_EQ(knapp->text(), u"Avbryt"_s);
        QTest::mouseClick(knapp, Qt::LeftButton);
    });
    EXPECT_FALSE(lasteSkjermer().contains(u"frmInvisible"_s));
    avbrytVed(1, [](QProgressDialog &notat) { notat.close(); });
}

TEST_F(MUtskriftTest, AReportThatTakesLongIsShownInTheEnd)
{
    leggOrdrer(60);
    apne();
    const LangsomTid tid;
    QPointer<QWidget> notat;
    bool kom = false;
    onNextModal<QProgressDialog>([&](QProgressDialog &vist) {
        notat = &vist;
        kom = true;
    });
    EXPECT_TRUE(SkrivRapport(u"Liste.rpt"_s, 0, {}, {}, {}));
    EXPECT_TRUE(kom);
    EXPECT_TRUE(notat.isNull());
    ASSERT_EQ(vinduer().size(), 1);
    EXPECT_TRUE(QTest::qWaitForWindowActive(vindu())) << "in front of the screen below the note";
    EXPECT_EQ(dokument(vindu()).pages.size(), 10u);
}

TEST_F(MUtskriftTest, NoClickAndNoKeyReachesTheScreensWhileAReportTakesItsTime)
{
    leggOrdrer(60);
    apne();
    // As they come from the machine, not handed to the screen itself.
    const auto nyOrdre = [] {
        const auto *knapp = control(u"btnNew"_s);
        QTest::mouseClick(skjerm()->windowHandle(), Qt::LeftButton, {},
                          knapp->mapTo(skjerm(), knapp->rect().center()));
        runEvents();
    };
    const auto lukk = [] {
        QTest::keyClick(skjerm()->windowHandle(), Qt::Key_Escape);
        runEvents();
    };
    {
        const LangsomTid tid;
        onNextModal<QProgressDialog>([&](QProgressDialog &notat) {
            nyOrdre();
            lukk();
            notat.cancel();
        });
        EXPECT_FALSE(SkrivRapport(u"Liste.rpt"_s, 0, {}, {}, {}));
        runEvents();
    }
    ASSERT_NE(skjerm(), nullptr);
    EXPECT_FALSE(erPaa(u"btnSave"_s));
    // They would have gone through.
    nyOrdre();
    EXPECT_TRUE(erPaa(u"btnSave"_s));
    lukk();
    EXPECT_EQ(skjerm(), nullptr);
}

TEST_F(MUtskriftTest, TheComponentMayEndWhileAReportTakesItsTime)
{
    leggOrdrer(60);
    const LangsomTid tid;
    onNextModal<QProgressDialog>([](QProgressDialog &) { Unload(); });
    EXPECT_FALSE(SkrivRapport(u"Liste.rpt"_s, 0, {}, {}, {}));
    EXPECT_EQ(meldinger.tekster, QStringList());
    EXPECT_TRUE(vinduer().isEmpty());
}

// --- The windows' end

TEST_F(MUtskriftTest, TheEndOfTheComponentTakesTheWindowsDown)
{
    leggOrdre({});
    skriv(0);
    skriv(0);
    const QPointer<Forhandsvisning> forste = vinduer().constFirst();
    const QPointer<Forhandsvisning> siste = vindu();
    Unload();
    EXPECT_TRUE(forste.isNull());
    EXPECT_TRUE(siste.isNull());
}

TEST_F(MUtskriftTest, AWindowStaysWhenTheHiddenFormGoes)
{
    leggOrdre({});
    skriv(0);
    Forms::byName(u"frmInvisible"_s)->unload();
    runEvents();
    ASSERT_NE(vindu(), nullptr);
    vindu()->grab();
    EXPECT_EQ(tekster(vindu()).size(), 4);
}

TEST_F(MUtskriftTest, TheWindowIsNoForm)
{
    leggOrdre({.ordreNr = 1});
    leggOrdre({.ordreNr = 2});
    apne();
    klikk(u"cmdFirst"_s);
    skriv(0);
    EXPECT_TRUE(QTest::qWaitForWindowActive(vindu()));
    QTest::keyClick(vindu(), Qt::Key_Escape);
    runEvents();
    skjerm()->activateWindow();
    runEvents();
    EXPECT_EQ(tekst(16), u"1"_s) << "the order screen was not activated anew";
}

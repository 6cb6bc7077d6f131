#include "posting/screen/frmBokforTest.h"

#include "runtime/Clock.h"
#include "state/SharedState.h"

#include <QLabel>

namespace {

/// What a label had to show when it was painted last.
class PaintedText : public QObject
{
public:
    explicit PaintedText(QLabel &label) : m_label(label) { label.installEventFilter(this); }
    [[nodiscard]] QString text() const { return m_text; }

    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Paint)
            m_text = m_label.text();
        return false;
    }

private:
    QLabel &m_label;
    QString m_text;
};

/// A second goes by each time it is asked.
struct RunningClock : Clock
{
    QDateTime now() const override { return start.addSecs(++seconds); }
    const QDateTime start = QDateTime(QDate(2014, 12, 31), QTime(9, 0));
    mutable int seconds = 0;
};

} // namespace

// --- The run

TEST_F(FrmBokforTest, PostsTheMarkedInvoices)
{
    enterMany(3);
    run(u"INSERT INTO Bil (KlientNr,BilLoyve,BilRegNr,BilType,Passiv) VALUES "
        u"(5,'L-1','AB10000','Trekkvogn',0)"_s);
    run(u"INSERT INTO Kontoplan (KlientNr,KontoNr,Navn,KtoGruppe) VALUES (5,3060,'Frakt',55)"_s);
    open();
    pick(box(u"cmbKonto"_s), 1);
    pick(box(u"cmbLoyve"_s), 1);
    clickCell(kBokfor, 1);
    clickCell(kBokfor, 3);
    EXPECT_EQ(transfer(), (Boks{u" 2 fakturaer er bokført."_s, kInfo}));
    EXPECT_EQ(rows(u"SELECT OrdreNr FROM Ordre WHERE OrdreStatus='Bokført' ORDER BY ID"_s),
              QStringList({u"101"_s, u"103"_s}));
    EXPECT_EQ(rows(u"SELECT Konto,Tekst,Loyve FROM BilagLinjer ORDER BY ID"_s),
              QStringList({u"3060|Kundefaktura 101|3060"_s, u"1500|Kundefaktura 101|3060"_s,
                           u"3060|Kundefaktura 103|3060"_s, u"1500|Kundefaktura 103|3060"_s}));
    EXPECT_EQ(grid().dataRowCnt(), 1);
    EXPECT_EQ(at(kFakNr, 1), u"102"_s);
    EXPECT_EQ(at(kBokfor, 1), QString());
}

TEST_F(FrmBokforTest, PostsOnTheTypedAccount)
{
    enterMany(1);
    open();
    QComboBox *list = box(u"cmbKonto"_s);
    list->lineEdit()->selectAll();
    QTest::keyClicks(list, u" 31 5x"_s);
    clickCell(kBokfor, 1);
    transfer();
    EXPECT_EQ(rows(u"SELECT Konto,Loyve FROM BilagLinjer ORDER BY ID"_s),
              QStringList({u"315|"_s, u"1500|"_s}));
}

TEST_F(FrmBokforTest, AStaleListIsPassedOverAndLoadedAnew)
{
    enterMany(2);
    open();
    clickCell(kBokfor, 1);
    clickCell(kBokfor, 2);
    run(u"UPDATE Ordre SET OrdreStatus='Bokført' WHERE OrdreNr=101"_s);
    EXPECT_EQ(transfer(), (Boks{u" 1 faktura er bokført."_s, kInfo}));
    EXPECT_EQ(rows(u"SELECT Tekst FROM BilagLinjer WHERE Konto=1500"_s),
              QStringList(u"Kundefaktura 102"_s));
    EXPECT_EQ(grid().dataRowCnt(), 0);
}

TEST_F(FrmBokforTest, AListOfTheClientBeforeIsPassedOver)
{
    enterMany(1);
    enter({.nr = 601, .linjer = {}, .klient = 6});
    open();
    clickCell(kBokfor, 1);
    gKlient = 6;
    press(u"btnTransfer"_s);
    EXPECT_EQ(rows(u"SELECT COUNT (*) FROM Bilag"_s), QStringList(u"0"_s));
    EXPECT_EQ(at(kFakNr, 1), u"601"_s);
}

TEST_F(FrmBokforTest, TheButtonIsNotResetAndThenRunsForNothing)
{
    enterMany(1);
    open();
    clickCell(kBokfor, 1);
    transfer();
    EXPECT_TRUE(canTransfer());
    EXPECT_EQ(rows(u"SELECT COUNT (*) FROM tmpTbl"_s), QStringList(u"1"_s));
    EXPECT_EQ(statementsOf([] { press(u"btnTransfer"_s); }).size(), 3)
        << "the work table anew, and the list";
    EXPECT_EQ(rows(u"SELECT COUNT (*) FROM tmpTbl"_s), QStringList(u"0"_s));
}

TEST_F(FrmBokforTest, AnInvoiceOfAnotherYearIsAWarningAndTheListStays)
{
    enterMany(1);
    enter({.nr = 201, .linjer = {}, .fakDato = u"#01/01/2015#"_s});
    open();
    press(u"Check1"_s);
    clickCell(kBokfor, 2);
    clickCell(kBokfor, 2);
    EXPECT_EQ(transfer(), (Boks{u"Fakturadato for merket faktura ligger utenfor aktivt "
                                u"regnskapsår.\nDu må stå i riktig år i Strekkbok for å kunne "
                                u"bokføre fakturaen(e)."_s,
                                kWarning}));
    EXPECT_EQ(grid().dataRowCnt(), 2);
    EXPECT_EQ(at(kBokfor, 1), u"1"_s);
    EXPECT_EQ(rows(u"SELECT OrdreStatus FROM Ordre ORDER BY ID"_s),
              QStringList({u"Bokført"_s, u"Fakturert"_s}));
}

TEST_F(FrmBokforTest, TheFootTellsHowFarTheRunIs)
{
    enterMany(3);
    open();
    press(u"Check1"_s);
    clickCell(kBokfor, 3);
    const auto *foot = &control<QLabel>(u"lblFramdrift"_s);
    EXPECT_EQ(foot->text(), QString());
    const PaintedText onScreen(control<QLabel>(u"lblFramdrift"_s));
    runEvents();
    EXPECT_GE(foot->width(), foot->fontMetrics().horizontalAdvance(u"1000 av 1000"_s));
    QStringList seen;
    nekt = [&](const QString &statement) {
        if (!statement.startsWith(u"SELECT * FROM Ordre") || !statement.contains(u"ID="))
            return;
        seen += onScreen.text();
        EXPECT_NE(QApplication::overrideCursor(), nullptr);
    };
    const Boks told = transfer([&] {
        EXPECT_EQ(foot->text(), QString());
        EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    });
    EXPECT_EQ(told.text, u" 2 fakturaer er bokført."_s);
    EXPECT_EQ(seen, QStringList({u"0 av 2"_s, u"1 av 2"_s}));
}

TEST_F(FrmBokforTest, TheWindowStaysPaintedDuringTheRun)
{
    enterMany(5);
    open();
    press(u"Check1"_s);
    clickCell(kBokfor, 5);
    clickCell(kBokfor, 5);
    runEvents();

    RunningClock clock;
    const ScopedClock scope(clock);
    /// Counts what is painted of a widget.
    struct Paintings : QObject
    {
        bool eventFilter(QObject *, QEvent *event) override
        {
            count += event->type() == QEvent::Paint ? 1 : 0;
            return false;
        }
        int count = 0;
    } paintings;
    grid().viewport()->installEventFilter(&paintings);
    std::vector<int> counts;
    nekt = [&](const QString &statement) {
        if (statement.startsWith(u"SELECT COUNT"))
            counts.push_back(paintings.count);
    };
    transfer();
    ASSERT_EQ(counts.size(), 5u);
    EXPECT_EQ(counts.back() - counts.front(), 4) << "once for each invoice";
}

TEST_F(FrmBokforTest, AScreenReaderHearsNowAndThenHowFarTheRunIs)
{
    enterMany(12);
    open();
    press(u"Check1"_s);
    clickCell(kBokfor, 12);
    clickCell(kBokfor, 12);
    RunningClock clock;
    const ScopedClock scope(clock);
    QStringList told;
    nekt = [&](const QString &) {
        const QString text = screen()->accessibleDescription();
        if (!text.isEmpty() && !told.endsWith(text))
            told += text;
    };
    transfer();
    EXPECT_EQ(told, (QStringList{u"0 av 12"_s, u"5 av 12"_s, u"10 av 12"_s}));
    EXPECT_EQ(screen()->accessibleDescription(), QString()) << "the run is over";
}

TEST_F(FrmBokforTest, WhatWaitsInTheEventLoopWaitsUntilTheRunIsOver)
{
    enterMany(3);
    open();
    press(u"Check1"_s);
    clickCell(kBokfor, 3);
    clickCell(kBokfor, 3);
    QStringList happened;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] { happened += u"timer"_s; });
    const auto call = [&] { happened += u"kall"_s; };
    nekt = [&](const QString &statement) {
        if (!statement.startsWith(u"UPDATE Ordre"))
            return;
        happened += u"bokført"_s;
        timer.start(0);
        QMetaObject::invokeMethod(screen(), call, Qt::QueuedConnection);
    };
    transfer();
    EXPECT_EQ(happened.first(3), QStringList(3, u"bokført"_s));
    EXPECT_EQ(happened.count(u"kall"_s), 3);
    EXPECT_TRUE(happened.contains(u"timer"_s));
}

TEST_F(FrmBokforTest, RunsTheJournalsAndLetsPendingEventsRunAfterEach)
{
    enterMany(1);
    open();
    clickCell(kBokfor, 1);
    QStringList happened;
    const auto event = [&] { happened += u"hendelse"_s; };
    screen()->settRapport([&](const QString &rapport, qint16 modus, const QString &utvalg,
                              const QString &formel1, const QString &formel2) {
        EXPECT_EQ(QApplication::overrideCursor(), nullptr);
        happened += u"%1 %2 [%3] [%4] [%5]"_s.arg(rapport).arg(modus).arg(utvalg, formel1, formel2);
        QMetaObject::invokeMethod(screen(), event, Qt::QueuedConnection);
    });
    transfer([&] { EXPECT_TRUE(happened.isEmpty()); });
    EXPECT_EQ(happened,
              QStringList({u"Fakturajournal.rpt 0 [{Klient.KlientNr}= 5] [] []"_s, u"hendelse"_s,
                           u"Salgsjournal.rpt 0 [{Klient.KlientNr}= 5] [] []"_s, u"hendelse"_s}));
}

TEST_F(FrmBokforTest, TheScreenMayBeClosedBetweenTheJournals)
{
    enterMany(1);
    open();
    clickCell(kBokfor, 1);
    const QPointer<frmBokfor> watched = screen();
    int journals = 0;
    screen()->settRapport([&](const QString &, qint16, const QString &, const QString &,
                              const QString &) {
        if (++journals == 1)
            QMetaObject::invokeMethod(screen(), [] { press(u"btnClose"_s); }, Qt::QueuedConnection);
        else
            EXPECT_EQ(screen(), nullptr);
    });
    transfer();
    EXPECT_EQ(journals, 2);
    runEvents();
    EXPECT_TRUE(watched.isNull());
}

TEST_F(FrmBokforTest, TheScreenMayBeClosedUnderTheClosingMessage)
{
    enterMany(1);
    open();
    clickCell(kBokfor, 1);
    const QPointer<frmBokfor> watched = screen();
    transfer([&] {
        screen()->unload();
        EXPECT_EQ(screen(), nullptr);
        QCoreApplication::sendPostedEvents(watched, QEvent::DeferredDelete);
        EXPECT_FALSE(watched.isNull()); // its handler runs still
    });
    QCoreApplication::sendPostedEvents(watched, QEvent::DeferredDelete);
    EXPECT_TRUE(watched.isNull());
    EXPECT_EQ(rows(u"SELECT OrdreStatus FROM Ordre"_s), QStringList(u"Bokført"_s));
}

TEST_F(FrmBokforTest, VoucherNumbersCanBeAskedOfTheScreen)
{
    run(u"INSERT INTO Bilag (KlientNr,BilagNr,BilagDato) VALUES (5,124,#12/31/2014#)"_s);
    EXPECT_EQ(SharedForm<frmBokfor>::get().NyttBilagnr(2014), u" 125"_s);
    EXPECT_EQ(SharedForm<frmBokfor>::get().NyttBilagnr(2015), u"1"_s);
    SharedForm<frmBokfor>::get().unload();
}

TEST_F(FrmBokforTest, TheMainMenuOpensIt)
{
    startModule();
    auto *menu = Forms::byName(u"frmRegningsdel"_s);
    ASSERT_NE(menu, nullptr);
    hands::click(controlOf<QWidget>(menu, u"Command8"_s));
    ASSERT_NE(screen(), nullptr);
    EXPECT_TRUE(screen()->isVisible());
    hands::click(controlOf<QWidget>(menu, u"Command8"_s));
    const auto forms = Forms::loaded();
    EXPECT_EQ(
        std::count_if(forms.begin(), forms.end(),
                      [](const auto &loaded) { return loaded->objectName() == u"frmBokfor"_s; }),
        1);
    menu->close();
    EXPECT_EQ(screen(), nullptr);
}

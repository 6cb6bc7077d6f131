#include "output/lists/frmOversiktTest.h"

#include "data/clsAdoUtils.h"
#include "platform/forms/Image.h"
#include "shell/component/frmRegningsdel.h"
#include "shell/settings/clsRegSettings.h"
#include "state/SharedState.h"
#include "support/Caption.h"
#include "support/SessionTap.h"

#include <QClipboard>
#include <QLabel>
#include <QPushButton>

using namespace Qt::StringLiterals;

// --- As it opens

TEST_F(FrmOversiktTest, TextsAndTips)
{
    open();
    EXPECT_EQ(oversikt()->objectName(), u"frmOversikt"_s);
    EXPECT_EQ(oversikt()->windowTitle(), u"Oversikt"_s);
    EXPECT_EQ(control<QLabel>(u"Label1"_s).text(),
              u"Oversikt over alle ordre/faktura med status.\n"
              u"Dobbeltklikk på posten for å se på den i ordre -bildet, dobbeltklikk i "
              u"kolonnetittel for sortering."_s);
    EXPECT_EQ(captionOf(control<QPushButton>(u"btnPrint"_s)), u"Rapport"_s);
    EXPECT_EQ(captionOf(control<QPushButton>(u"btnRefresh"_s)), u"Oppfrisk"_s);
    EXPECT_EQ(captionOf(control<QPushButton>(u"btnClose"_s)), u"Avslutt"_s);
    EXPECT_EQ(control<Image>(u"imgF1"_s).toolTip(), u" Vis hjelp for dette skjermbildet (F1)"_s);
}

TEST_F(FrmOversiktTest, TheGridAsDesigned)
{
    (void)SharedForm<frmOversikt>::get(); // made, not loaded
    EXPECT_EQ(grid().maxCols(), 8);
    EXPECT_EQ(grid().maxRows(), 10);
    EXPECT_EQ(grid().defaultColWidth(), 10.5);
    QStringList headers;
    for (int col = kNr; col <= kId; ++col) {
        headers += at(col, 0);
        EXPECT_EQ(grid().colHidden(col), col == kId) << col;
        EXPECT_EQ(grid().colWidth(col), col == kNavn ? 20.12 : 10.5) << col;
    }
    EXPECT_EQ(headers, QStringList({u"Faktura nr."_s, u"Kunde nr."_s, u"Navn"_s, u"Fak. dato"_s,
                                    u"Forfall"_s, u"Beløp"_s, u"Status"_s, QString()}));
    oversikt()->load();
}

TEST_F(FrmOversiktTest, AnEmptyTableGivesAnEmptyGrid)
{
    open();
    EXPECT_EQ(grid().dataRowCnt(), 0);
    EXPECT_EQ(grid().maxRows(), 10);
    EXPECT_EQ(gDB->LastError(), QString());
    doubleClickHeader(kNr);
    EXPECT_EQ(grid().dataRowCnt(), 0);
}

TEST_F(FrmOversiktTest, OneStatementReadsTheListWordForWord)
{
    leggMange(3);
    SessionTap tap;
    open();
    EXPECT_EQ(tap.statements(),
              QStringList(u"SELECT * FROM Ordre WHERE KlientNr= 5 ORDER BY ordreNr DESC"_s));
}

TEST_F(FrmOversiktTest, TheHourglassStandsWhileTheListIsRead)
{
    leggMange(3);
    SessionTap tap;
    int lest = 0;
    tap.rewriteStatements([&](const QString &statement) {
        ++lest;
        EXPECT_NE(QApplication::overrideCursor(), nullptr);
        return statement;
    });
    open();
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    press(u"btnRefresh"_s);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    EXPECT_EQ(lest, 2);
}

TEST_F(FrmOversiktTest, ListsTheClientsOrdersByFallingNumber)
{
    const int first = legg({.nr = 9, .status = u"'Betalt'"_s});
    const int second = legg({.nr = 12345,
                             .kundeNr = u"123456"_s,
                             .navn = u"' Ærlig Øl AS '"_s,
                             .fakDato = u"#12/31/2014#"_s,
                             .forfall = u"#01/14/2015#"_s,
                             .brutto = u"-1234567.50"_s,
                             .status = u"'Bokført'"_s});
    legg({.nr = 77, .klient = 6});
    const int third = legg({.nr = 101, .brutto = u"5"_s, .status = u"'Fakturert'"_s});
    open();
    EXPECT_EQ(grid().dataRowCnt(), 3);
    EXPECT_EQ(
        rowText(1),
        u"12345|123456| Ærlig Øl AS |31.12.2014|14.01.2015|-1234 567,50|Bokført|%1"_s.arg(second));
    EXPECT_EQ(rowText(2),
              u"101|10001|Ås Pukk AS|09.03.2014|23.03.2014| 5,00|Fakturert|%1"_s.arg(third));
    EXPECT_EQ(rowText(3),
              u"9|10001|Ås Pukk AS|09.03.2014|23.03.2014| 125,00|Betalt|%1"_s.arg(first));
}

TEST_F(FrmOversiktTest, ANullIsAnEmptyCellAndShiftsNothing)
{
    const int id = legg({.nr = 7,
                         .kundeNr = u"Null"_s,
                         .navn = u"Null"_s,
                         .fakDato = u"Null"_s,
                         .forfall = u"Null"_s,
                         .brutto = u"Null"_s,
                         .status = u"Null"_s});
    open();
    EXPECT_EQ(rowText(1), u"7|||||||%1"_s.arg(id));
}

TEST_F(FrmOversiktTest, ATabInANameShiftsItsRowAloneAndOpensNoOtherOrder)
{
    legg({.nr = 1});
    legg({.nr = 2, .navn = u"'Ås\tPukk'"_s});
    open();
    EXPECT_EQ(at(kNavn, 1), u"Ås"_s);
    EXPECT_EQ(at(kFakDato, 1), u"Pukk"_s);
    EXPECT_EQ(at(kId, 1), u"Ordre"_s);
    EXPECT_EQ(at(kNr, 2), u"1"_s);
    EXPECT_EQ(at(kStatus, 2), u"Ordre"_s);
    EXPECT_EQ(numbers(), QStringList({u"2"_s, u"1"_s}));
}

TEST_F(FrmOversiktTest, TheAmountIsRightAlignedInEveryRow)
{
    leggMange(1);
    open();
    for (const int row : {1, 2, 10}) {
        for (int col = kNr; col <= kStatus; ++col) {
            grid().setCurrent(col, row);
            EXPECT_EQ(grid().typeHAlign(), col == kBelop ? 1 : 0) << col;
        }
    }
}

TEST_F(FrmOversiktTest, TheGridGrowsWithTheOrders)
{
    leggMange(7);
    open();
    EXPECT_EQ(grid().dataRowCnt(), 7);
    EXPECT_EQ(grid().maxRows(), 15);
    EXPECT_TRUE(grid().redraw());
}

TEST_F(FrmOversiktTest, NothingCanBeTypedInTheList)
{
    leggMange(1);
    open();
    clickCell(kNavn, 1);
    for (const int key : {int('X'), int(Qt::Key_F2), int(Qt::Key_Delete)})
        QTest::keyClick(&grid(), Qt::Key(key));
    EXPECT_FALSE(grid().editMode());
    EXPECT_EQ(at(kNavn, 1), u"Ås Pukk AS"_s);
}

TEST_F(FrmOversiktTest, AFailedReadLeavesAnEmptyListAndNoMessage)
{
    leggMange(2);
    open();
    run(u"DROP TABLE OrdreLinjer"_s);
    run(u"DROP TABLE Ordre"_s);
    press(u"btnRefresh"_s);
    EXPECT_EQ(grid().dataRowCnt(), 0);
    EXPECT_TRUE(grid().redraw());
}

// --- The buttons and the menu

TEST_F(FrmOversiktTest, TheReportButtonShowsTheListDialog)
{
    open();
    press(u"btnPrint"_s);
    ASSERT_NE(liste(), nullptr);
    EXPECT_TRUE(liste()->isVisible());
    EXPECT_FALSE(liste()->isModal());
    const frmOrdreSkriv *first = liste();
    press(u"btnPrint"_s);
    EXPECT_EQ(liste(), first);
}

TEST_F(FrmOversiktTest, TheMainMenuOpensItAndLeavesItOpen)
{
    SharedForm<frmRegningsdel>::get().show();
    using Menu = ScreenHands<frmRegningsdel>;
    Menu::press(u"Command5"_s);
    ASSERT_NE(oversikt(), nullptr);
    EXPECT_TRUE(oversikt()->isVisible());
    const frmOversikt *first = oversikt();
    press(u"btnPrint"_s);
    Menu::press(u"Command5"_s);
    EXPECT_EQ(oversikt(), first);
    SharedForm<frmRegningsdel>::get().close();
    runEvents();
    EXPECT_EQ(SharedForm<frmRegningsdel>::existing(), nullptr);
    EXPECT_EQ(oversikt(), first);
    EXPECT_TRUE(oversikt()->isVisible());
    EXPECT_NE(liste(), nullptr);
}

// --- Keys, place and size

TEST_F(FrmOversiktTest, EscapeClosesFromAnyControlAndSoDoesTheButton)
{
    for (const QString &name : {u"fpSpread1"_s, u"btnPrint"_s, u"btnClose"_s}) {
        open();
        QTest::keyClick(&control(name), Qt::Key_Escape);
        runEvents();
        EXPECT_EQ(oversikt(), nullptr) << name.toStdString();
    }
    open();
    press(u"btnClose"_s);
    EXPECT_EQ(oversikt(), nullptr);
}

TEST_F(FrmOversiktTest, F1AndTheHelpImageAskForTheScreensPage)
{
    open();
    QTest::keyClick(&grid(), Qt::Key_F1);
    EXPECT_EQ(gHelpTopic, u"html\\oversikt.htm"_s);
    gHelpTopic.clear();
    press(u"imgF1"_s);
    EXPECT_EQ(gHelpTopic, u"html\\oversikt.htm"_s);
}

TEST_F(FrmOversiktTest, TheKeyboardGoesFromTheListThroughTheButtons)
{
    leggMange(3);
    open();
    EXPECT_EQ(oversikt()->focusWidget(), &grid());
    QTest::keyClick(&grid(), Qt::Key_Down);
    EXPECT_EQ(grid().activeRow(), 2);
    EXPECT_EQ(grid().selectedRowCount(), 1);
    control(u"btnPrint"_s).setFocus();
    QStringList names;
    for (int i = 0; i < 3; ++i) {
        names += oversikt()->focusWidget()->objectName();
        QTest::keyClick(oversikt()->focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ(names, QStringList({u"btnPrint"_s, u"btnRefresh"_s, u"btnClose"_s}));
    legg({.nr = 4});
    control(u"btnRefresh"_s).setFocus();
    QTest::keyClick(oversikt()->focusWidget(), Qt::Key_Space);
    EXPECT_EQ(grid().dataRowCnt(), 4);
}

TEST_F(FrmOversiktTest, SeveralRowsGoToTheClipboard)
{
    legg({.nr = 1, .brutto = u"10"_s});
    legg({.nr = 2, .brutto = u"20"_s});
    open();
    QTest::keyClick(&grid(), Qt::Key_Down, Qt::ShiftModifier);
    QTest::keyClick(&grid(), Qt::Key_C, Qt::ControlModifier);
    const QStringList lines = QApplication::clipboard()->text().split(u'\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 2);
    EXPECT_TRUE(lines[0].startsWith(u"2\t10001\tÅs Pukk AS\t09.03.2014\t23.03.2014\t 20,00\tOrdre"))
        << lines[0].toStdString();
}

TEST_F(FrmOversiktTest, OpensAtItsDefaultPlaceAndComesBackWhereItWasLeft)
{
    open();
    EXPECT_EQ(oversikt()->place(), QRect(195, 195, 9345, 4755)) << "in whole pixels of 15 twips";
    oversikt()->setPlace(600, 450, 10500, 6000);
    const QRect left = oversikt()->place();
    QTest::keyClick(&grid(), Qt::Key_Escape);
    runEvents();
    EXPECT_EQ(gReg->GetSetting(u"Regningsdel\\Forms\\frmOversikt"_s, u"FWidth"_s, {}).chopped(1),
              u"10500"_s);
    open();
    EXPECT_EQ(oversikt()->place(), left);
    oversikt()->close(); // by its close box as well
    runEvents();
    EXPECT_EQ(oversikt(), nullptr);
}

TEST_F(FrmOversiktTest, AMinimisedWindowKeepsTheLastGoodPlace)
{
    open();
    oversikt()->setPlace(600, 450, 10500, 6000);
    press(u"btnClose"_s);
    open();
    oversikt()->setState(FormState::Minimised);
    oversikt()->unload();
    runEvents();
    open();
    EXPECT_EQ(oversikt()->place().width(), 10500);
}

TEST_F(FrmOversiktTest, TheGridTakesWhatTheWindowOffers)
{
    open();
    for (const QSize size : {QSize(9345, 4755), QSize(15000, 9000), QSize(7500, 4500)}) {
        oversikt()->setPlace(200, 200, size.width(), size.height());
        runEvents();
        const QRect place = grid().geometry();
        EXPECT_EQ(place.left() * 15, 60);
        EXPECT_EQ(place.top() * 15, 690);
        EXPECT_EQ(place.width(), oversikt()->width() - 120 / 15);
        EXPECT_EQ(place.height(), oversikt()->height() - 1200 / 15);
        // The name has what the other columns leave.
        double others = 0;
        for (const int col : {kNr, kKundeNr, kFakDato, kForfall, kBelop, kStatus})
            others += grid().colWidth(col) + 0.03;
        EXPECT_NEAR(grid().colWidth(kNavn),
                    grid().twipsToColWidth(grid().widthInTwips() - 330) - others, 1e-6);
        // The buttons stay at the right, and the line follows the panel.
        const QWidget *frame = &control(u"ramme"_s);
        const QWidget *panel = &control(u"panel"_s);
        EXPECT_GE(frame->mapTo(panel, frame->rect().topRight()).x(), panel->width() - 16);
        EXPECT_EQ(control(u"linje"_s).width(), panel->width());
    }
}

TEST_F(FrmOversiktTest, LargerLettersHaveTheirRoomAboveTheGrid)
{
    QFont stor = QApplication::font();
    stor.setPointSizeF(stor.pointSizeF() * 2);
    SharedForm<frmOversikt>::get().setFont(stor);
    open();
    const auto *tekst = &control<QLabel>(u"Label1"_s);
    EXPECT_GE(tekst->height(), tekst->heightForWidth(tekst->width()));
    const QWidget *knapp = &control(u"btnPrint"_s);
    EXPECT_GE(knapp->height(), knapp->sizeHint().height());
    EXPECT_GT(grid().height(), 100);
}

TEST_F(FrmOversiktTest, KeepsItsMinimumSize)
{
    open();
    oversikt()->setPlace(200, 200, 1500, 1500);
    EXPECT_EQ(oversikt()->place().size(), QSize(4005, 4005)) << "4000 twips in whole pixels";
}

TEST_F(FrmOversiktTest, LogOffUnloads)
{
    open();
    oversikt()->setPlace(600, 450, 10500, 6000);
    EXPECT_TRUE(Forms::instance().logOff());
    EXPECT_EQ(oversikt(), nullptr);
    open();
    EXPECT_EQ(oversikt()->place().width(), 10500);
}

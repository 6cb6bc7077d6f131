#include "posting/frmBokfor.h"

#include "platform/forms/Forms.h"
#include "platform/forms/Image.h"
#include "platform/forms/TestApplication.h"
#include "platform/grid/fpSpread.h"
#include "posting/BokforTest.h"
#include "presentation/Skjerm.h"
#include "runtime/Clock.h"
#include "shell/clsRegSettings.h"
#include "state/SharedState.h"
#include "support/SettingsFolder.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>

using namespace Qt::StringLiterals;
using namespace bokforkolonne;

namespace {

/// The posting screen, driven by mouse and keyboard.
class FrmBokforTest : public BokforTest
{
protected:
    void TearDown() override
    {
        for (const QPointer<Form> &form : Forms::loaded()) {
            if (form)
                form->unload();
        }
        runEvents();
    }

    static frmBokfor *form() { return SharedForm<frmBokfor>::existing(); }
    static void open()
    {
        SharedForm<frmBokfor>::get().show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(form()));
    }
    template<class Control>
    static Control *control(const QString &name)
    {
        auto *found = form()->findChild<Control *>(name);
        EXPECT_NE(found, nullptr) << name.toStdString();
        return found;
    }
    static fpSpread &grid() { return *control<fpSpread>(u"fpSpread1"_s); }
    static QPushButton *button(const QString &name) { return control<QPushButton>(name); }
    static QComboBox *box(const QString &name) { return control<QComboBox>(name); }
    static bool canTransfer() { return button(u"btnTransfer"_s)->isEnabled(); }

    static QString at(int col, int row)
    {
        grid().setCurrent(col, row);
        return grid().text();
    }
    /// A row's cells with "|" between them.
    static QString rowText(int row)
    {
        QStringList cells;
        for (int col = 1; col <= 8; ++col)
            cells += at(col, row);
        return cells.join(u'|');
    }
    static QPoint middleOf(int col, int row)
    {
        const QModelIndex index = grid().model()->index(row - 1, col - 1);
        grid().scrollTo(index);
        return grid().visualRect(index).center();
    }
    static void clickCell(int col, int row)
    {
        QTest::mouseClick(grid().viewport(), Qt::LeftButton, {}, middleOf(col, row));
    }
    static void click(QWidget *widget) { QTest::mouseClick(widget, Qt::LeftButton); }
    /// Picks an entry from the drop-down list with the mouse.
    static void pick(QComboBox *list, int entry)
    {
        list->showPopup();
        QAbstractItemView *view = list->view();
        const QModelIndex index = list->model()->index(entry, 0);
        view->scrollTo(index);
        // The list takes no click in its first moments, so that the one that opened it does no
        // harm; a key has the same effect.
        view->setCurrentIndex(index);
        QTest::keyClick(view, Qt::Key_Return);
    }

    struct Boks
    {
        QString text;
        QMessageBox::Icon icon = QMessageBox::NoIcon;
        friend bool operator==(const Boks &, const Boks &) = default;
    };
    /// Presses "Bokfør" and answers the message box that comes up. `meanwhile` runs under the box.
    Boks transfer(const std::function<void()> &meanwhile = [] {})
    {
        Boks seen;
        onNextModal<QMessageBox>([&](QMessageBox &shown) {
            seen = {shown.text(), shown.icon()};
            meanwhile();
            shown.accept();
        });
        click(button(u"btnTransfer"_s));
        return seen;
    }

    /// Invoices with the numbers from 101, each of one line.
    void enterMany(int count)
    {
        for (int nr = 101; nr < 101 + count; ++nr)
            enter({.nr = nr, .linjer = {{u"25"_s, u"125.00"_s}}});
    }

    SettingsFolder settings;
};

const QMessageBox::Icon kInfo = QMessageBox::Information;
const QMessageBox::Icon kWarning = QMessageBox::Warning;

} // namespace

// --- As it opens

TEST_F(FrmBokforTest, TextsAndTips)
{
    open();
    EXPECT_EQ(form()->objectName(), u"frmBokfor"_s);
    EXPECT_EQ(form()->windowTitle(), u"Bokfør"_s);
    EXPECT_EQ(control<QLabel>(u"lblTekst"_s)->text(),
              u"Oversikt over fakturaer som er klargjort for overføring til regnskap. Huk av for "
              u"faktura(ene) som skal overføres og klikk Bokfør."_s);
    EXPECT_EQ(control<QLabel>(u"lblKonto"_s)->text(), u"Konto:"_s);
    EXPECT_EQ(control<QLabel>(u"lblLoyve"_s)->text(), u"Løyve:"_s);
    EXPECT_EQ(box(u"cmbKonto"_s)->toolTip(),
              u"Konto 3000 (3100 v. 0 moms) er standard, velg evt. annen konto"_s);
    EXPECT_EQ(box(u"cmbLoyve"_s)->toolTip(),
              u"Velg løyve hvis det skal spesifiseres, ellers <nei>"_s);
    EXPECT_EQ(control<QCheckBox>(u"Check1"_s)->text(), u"Merk alle"_s);
    EXPECT_EQ(button(u"btnTransfer"_s)->text(), u"Bokfør"_s);
    EXPECT_EQ(button(u"btnClose"_s)->text(), u"Avslutt"_s);
    EXPECT_EQ(control<Image>(u"imgF1"_s)->toolTip(), u" Vis hjelp for dette skjermbildet (F1)"_s);
}

TEST_F(FrmBokforTest, TheGridAsDesigned)
{
    open();
    EXPECT_EQ(grid().maxCols(), 8);
    EXPECT_EQ(grid().maxRows(), 10);
    QStringList headers;
    for (int col = 1; col <= 8; ++col)
        headers += at(col, 0);
    EXPECT_EQ(headers, QStringList({u"Faktura nr."_s, u"Kunde nr."_s, u"Navn"_s, u"Fak. dato"_s,
                                    u"Forfall"_s, u"Beløp"_s, u"Bokfør"_s, QString()}));
    EXPECT_EQ(grid().colWidth(kFakNr), 10.5);
    EXPECT_TRUE(grid().colHidden(kOrdreId));
    EXPECT_FALSE(grid().colHidden(kBokfor));
    grid().setCurrent(kBokfor, 10);
    EXPECT_EQ(grid().cellType().kind, CellKind::CheckBox);
}

TEST_F(FrmBokforTest, OnlyTheMarkCanBeEdited)
{
    enterMany(1);
    open();
    for (const int col : {kFakNr, kKundeNr, kKundeNavn, kFakDato, kForfall, kBelop}) {
        clickCell(col, 1);
        QTest::keyClicks(&grid(), u"7"_s);
        EXPECT_FALSE(grid().editMode()) << col;
    }
    EXPECT_EQ(rowText(1), u"101|10001|Ås Pukk AS|09.03.2014|23.03.2014| 125,00||1"_s);
}

TEST_F(FrmBokforTest, ListsTheClientsInvoicesThatHaveGoneOut)
{
    enter({.nr = 101, .linjer = {}, .status = u"Ordre"_s});
    enter({.nr = 102, .linjer = {}, .status = u"Bokført"_s});
    enter({.nr = 103, .linjer = {}, .status = u"Betalt"_s});
    enter({.nr = 104, .linjer = {}, .klient = 6});
    enter({.nr = 12345,
           .linjer = {},
           .brutto = u"-1234567.50"_s,
           .navn = u"Ærlig Øl AS"_s,
           .fakDato = u"#12/31/2014#"_s,
           .forfall = u"#01/14/2015#"_s});
    enter({.nr = 12346, .linjer = {}, .brutto = u"Null"_s, .forfall = u"Null"_s});
    open();
    EXPECT_EQ(grid().dataRowCnt(), 2);
    EXPECT_EQ(rowText(1), u"12345|10001|Ærlig Øl AS|31.12.2014|14.01.2015|-1234 567,50||5"_s);
    EXPECT_EQ(rowText(2), u"12346|10001|Ås Pukk AS|09.03.2014||||6"_s);
    for (const int row : {1, 2}) {
        grid().setCurrent(kBelop, row);
        EXPECT_EQ(grid().typeHAlign(), 1);
    }
}

TEST_F(FrmBokforTest, TheRowsFollowTheInvoices)
{
    enterMany(10);
    open();
    EXPECT_EQ(grid().maxRows(), 10);
    button(u"btnClose"_s)->click();
    runEvents();
    enter({.nr = 111, .linjer = {}});
    open();
    EXPECT_EQ(grid().maxRows(), 12);
    EXPECT_EQ(grid().dataRowCnt(), 11);
}

TEST_F(FrmBokforTest, RowsThatCameLaterAreMarkedLikeTheFirstOnes)
{
    enterMany(13);
    open();
    for (const int row : {11, 13})
        clickCell(kBokfor, row);
    EXPECT_EQ(transfer(), (Boks{u" 2 fakturaer er bokført."_s, kInfo}));
    EXPECT_EQ(grid().maxRows(), 12);
    EXPECT_EQ(grid().dataRowCnt(), 11);
    EXPECT_EQ(at(kFakNr, 11), u"112"_s);
    for (int row = 1; row <= 12; ++row)
        EXPECT_EQ(at(kBokfor, row), QString()) << row;
    clickCell(kBokfor, 11);
    EXPECT_EQ(at(kBokfor, 11), u"1"_s);
    clickCell(kFakNr, 11);
    QTest::keyClicks(&grid(), u"7"_s);
    EXPECT_FALSE(grid().editMode());
    // Down to a list that fits the design.
    clickCell(kBokfor, 10);
    transfer();
    EXPECT_EQ(grid().maxRows(), 10);
    EXPECT_EQ(grid().dataRowCnt(), 9);
}

TEST_F(FrmBokforTest, AnInvoiceOfLaterIsNotInTheListUntilItIsLoadedAnew)
{
    enterMany(1);
    open();
    enter({.nr = 200, .linjer = {}});
    click(control<QCheckBox>(u"Check1"_s));
    clickCell(kBokfor, 1);
    clickCell(kBokfor, 1);
    EXPECT_EQ(grid().dataRowCnt(), 1);
    transfer(); // loads it
    EXPECT_EQ(grid().dataRowCnt(), 1);
    EXPECT_EQ(at(kFakNr, 1), u"200"_s);
}

TEST_F(FrmBokforTest, WhatTheDatabaseRefusesLeavesItsListEmptyWithoutAWord)
{
    run(u"DROP TABLE Bil"_s);
    run(u"DROP TABLE Kontoplan"_s);
    enterMany(1);
    nekt = [](const QString &statement) {
        if (statement.contains(u"FROM Ordre"))
            throw RunTimeError(errors::kInvalidCall);
    };
    open();
    EXPECT_EQ(grid().dataRowCnt(), 0);
    EXPECT_EQ(box(u"cmbKonto"_s)->count(), 0);
    EXPECT_EQ(box(u"cmbKonto"_s)->currentText(), u"3000"_s);
    EXPECT_EQ(box(u"cmbLoyve"_s)->count(), 1);
    EXPECT_EQ(box(u"cmbLoyve"_s)->currentText(), u"<nei>"_s);
}

TEST_F(FrmBokforTest, WithoutInvoicesNothingCanBePosted)
{
    open();
    EXPECT_EQ(grid().dataRowCnt(), 0);
    EXPECT_FALSE(canTransfer());
    click(control<QCheckBox>(u"Check1"_s));
    EXPECT_EQ(grid().dataRowCnt(), 0);
    EXPECT_FALSE(canTransfer());
}

TEST_F(FrmBokforTest, TheStatementsOfTheLoad)
{
    EXPECT_EQ(
        statementsOf([] { open(); }),
        QStringList({u"SELECT * FROM Ordre WHERE KlientNr= 5 AND OrdreStatus='Fakturert'"_s,
                     u"SELECT BilLoyve,BilRegNr,BilType FROM Bil WHERE Passiv=0 AND KlientNr= 5 "
                     u"ORDER BY BilLoyve,BilRegNr"_s,
                     u"SELECT KontoNr,Navn FROM Kontoplan WHERE (KontoNr=1900 or KtoGruppe=55) AND "
                     u"KlientNr= 5 ORDER BY KontoNr"_s}));
}

// --- The combo boxes

TEST_F(FrmBokforTest, TheAccountsOfTheList)
{
    for (const QString &row :
         {u"5,1900,'Kasse',10"_s, u"5,3020,'Salg utland',55"_s, u"5,3010,Null,55"_s,
          u"5,4000,'Varekjøp',60"_s, u"6,1900,'Fremmed kasse',10"_s})
        run(u"INSERT INTO Kontoplan (KlientNr,KontoNr,Navn,KtoGruppe) VALUES ("_s + row + u')');
    open();
    const QComboBox *list = box(u"cmbKonto"_s);
    QStringList entries;
    for (int i = 0; i < list->count(); ++i)
        entries += list->itemText(i);
    EXPECT_EQ(entries, QStringList({u"1900 Kasse"_s, u"3000 Salgsinntekter avgiftspliktig"_s,
                                    u"3010 "_s, u"3020 Salg utland"_s}));
    EXPECT_EQ(list->currentText(), u"3000"_s);
    EXPECT_EQ(list->view()->minimumWidth(), 150);
    EXPECT_LT(list->width(), 150);
}

TEST_F(FrmBokforTest, TheStandardAccountNeedNotBeInTheList)
{
    run(u"DELETE FROM Kontoplan"_s);
    open();
    EXPECT_EQ(box(u"cmbKonto"_s)->count(), 0);
    EXPECT_EQ(box(u"cmbKonto"_s)->currentText(), u"3000"_s);
}

TEST_F(FrmBokforTest, ThePermitsOfTheList)
{
    for (const QString &row :
         {u"5,'L-2','AB20000','Lastebil',0"_s, u"5,'L-1','AB30000','Varebil',0"_s,
          u"5,'L-1','AB10000','Trekkvogn',0"_s, u"5,'L-9','AB90000','Solgt',1"_s,
          u"6,'L-6','AB60000','Fremmed',0"_s})
        run(u"INSERT INTO Bil (KlientNr,BilLoyve,BilRegNr,BilType,Passiv) VALUES ("_s + row + u')');
    open();
    QComboBox *list = box(u"cmbLoyve"_s);
    QStringList entries;
    for (int i = 0; i < list->count(); ++i)
        entries += list->itemText(i);
    EXPECT_EQ(entries, QStringList({u"<nei>"_s, u"L-1 AB10000 Trekkvogn"_s,
                                    u"L-1 AB30000 Varebil"_s, u"L-2 AB20000 Lastebil"_s}));
    EXPECT_EQ(list->currentText(), u"<nei>"_s);
    EXPECT_EQ(list->view()->minimumWidth(), 200);

    pick(list, 2);
    EXPECT_EQ(list->currentText(), u"L-1"_s);
    pick(list, 0);
    EXPECT_EQ(list->currentText(), u"<nei>"_s);
}

TEST_F(FrmBokforTest, AChosenAccountIsCutToItsNumber)
{
    run(u"INSERT INTO Kontoplan (KlientNr,KontoNr,Navn,KtoGruppe) VALUES (5,1900,'Kasse',10)"_s);
    open();
    QComboBox *list = box(u"cmbKonto"_s);
    pick(list, 1);
    EXPECT_EQ(list->currentText(), u"3000"_s);
    pick(list, 0);
    EXPECT_EQ(list->currentText(), u"1900"_s);
    pick(list, 0);
    EXPECT_EQ(list->currentText(), u"1900"_s);
    // The arrow keys choose as well.
    list->setFocus();
    QTest::keyClick(list, Qt::Key_Down);
    EXPECT_EQ(list->currentText(), u"3000"_s);
}

TEST_F(FrmBokforTest, WhatIsTypedStaysAsItIs)
{
    run(u"INSERT INTO Kontoplan (KlientNr,KontoNr,Navn,KtoGruppe) VALUES (5,1900,'Kasse',10)"_s);
    open();
    QComboBox *list = box(u"cmbKonto"_s);
    list->setFocus();
    list->lineEdit()->selectAll();
    QTest::keyClicks(list, u"19"_s);
    EXPECT_EQ(list->currentText(), u"19"_s) << "no account may be put in its place";
    QTest::keyClicks(list, u"25 x"_s);
    QTest::keyClick(list, Qt::Key_Return);
    EXPECT_EQ(list->currentText(), u"1925 x"_s);
    EXPECT_EQ(list->count(), 2);
}

// --- Marking

TEST_F(FrmBokforTest, MarkingByMouseEnablesTheTransfer)
{
    enterMany(3);
    open();
    EXPECT_FALSE(canTransfer());
    clickCell(kBokfor, 2);
    EXPECT_EQ(at(kBokfor, 2), u"1"_s);
    EXPECT_TRUE(canTransfer());
    clickCell(kBokfor, 3);
    clickCell(kBokfor, 2);
    EXPECT_TRUE(canTransfer());
    clickCell(kBokfor, 3);
    EXPECT_FALSE(canTransfer());
}

TEST_F(FrmBokforTest, MarkingByKeyboard)
{
    enterMany(2);
    open();
    clickCell(kBelop, 2);
    QTest::keyClick(&grid(), Qt::Key_Right);
    QTest::keyClick(&grid(), Qt::Key_Space);
    EXPECT_EQ(at(kBokfor, 2), u"1"_s);
    EXPECT_TRUE(canTransfer());
    QTest::keyClick(&grid(), Qt::Key_Space);
    EXPECT_FALSE(canTransfer());
}

TEST_F(FrmBokforTest, AMarkOnARowWithoutInvoiceCountsForNothing)
{
    enterMany(1);
    open();
    clickCell(kBokfor, 5);
    EXPECT_EQ(at(kBokfor, 5), u"1"_s);
    EXPECT_FALSE(canTransfer());
}

TEST_F(FrmBokforTest, MarkAllMarksTheInvoicesAndLeavesTheButton)
{
    enterMany(2);
    open();
    auto *check = control<QCheckBox>(u"Check1"_s);
    click(check);
    EXPECT_EQ(check->text(), u"Fjern merking"_s);
    runEvents();
    EXPECT_EQ(check->visibleRegion().boundingRect(), check->rect());
    EXPECT_GE(check->width(), check->sizeHint().width());
    EXPECT_EQ(at(kBokfor, 1) + at(kBokfor, 2) + at(kBokfor, 3), u"11"_s);
    EXPECT_FALSE(canTransfer());

    clickCell(kBokfor, 1); // off
    EXPECT_TRUE(canTransfer());
    click(check);
    EXPECT_EQ(check->text(), u"Merk alle"_s);
    EXPECT_EQ(at(kBokfor, 1) + at(kBokfor, 2), u"00"_s);
    EXPECT_TRUE(canTransfer());

    clickCell(kBokfor, 1); // on
    clickCell(kBokfor, 1); // off
    EXPECT_FALSE(canTransfer());
}

TEST_F(FrmBokforTest, MarkAllPassesByRowsWhoseNumberIsNotAboveZero)
{
    enter({.nr = 0, .linjer = {}});
    enter({.nr = -3, .linjer = {}});
    enterMany(1);
    open();
    click(control<QCheckBox>(u"Check1"_s));
    EXPECT_EQ(at(kBokfor, 1) + u'|' + at(kBokfor, 2) + u'|' + at(kBokfor, 3), u"||1"_s);
}

TEST_F(FrmBokforTest, OnlyAClickTurnsAMarkOver)
{
    enterMany(2);
    open();
    clickCell(kBokfor, 1);
    for (const int key : {Qt::Key_Delete, Qt::Key_Backspace, Qt::Key_0, Qt::Key_X, Qt::Key_F2})
        QTest::keyClick(&grid(), Qt::Key(key));
    for (const int key : {Qt::Key_V, Qt::Key_X})
        QTest::keyClick(&grid(), Qt::Key(key), Qt::ControlModifier);
    QTest::keyClick(&grid(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&grid(), Qt::Key_Delete);
    EXPECT_EQ(at(kBokfor, 1), u"1"_s);
    EXPECT_EQ(at(kBokfor, 2), QString());
    EXPECT_TRUE(canTransfer());
    EXPECT_EQ(grid().dataRowCnt(), 2);
}

TEST_F(FrmBokforTest, ADoubleClickIsTwoClicks)
{
    enterMany(1);
    open();
    clickCell(kBokfor, 1);
    EXPECT_TRUE(canTransfer());
    QTest::mouseDClick(grid().viewport(), Qt::LeftButton, {}, middleOf(kBokfor, 1));
    EXPECT_EQ(at(kBokfor, 1), u"1"_s);
    EXPECT_TRUE(canTransfer());
}

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
    click(button(u"btnTransfer"_s));
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
    EXPECT_EQ(statementsOf([] { click(button(u"btnTransfer"_s)); }).size(), 3)
        << "the work table anew, and the list";
    EXPECT_EQ(rows(u"SELECT COUNT (*) FROM tmpTbl"_s), QStringList(u"0"_s));
}

TEST_F(FrmBokforTest, AnInvoiceOfAnotherYearIsAWarningAndTheListStays)
{
    enterMany(1);
    enter({.nr = 201, .linjer = {}, .fakDato = u"#01/01/2015#"_s});
    open();
    click(control<QCheckBox>(u"Check1"_s));
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
    click(control<QCheckBox>(u"Check1"_s));
    clickCell(kBokfor, 3);
    const auto *foot = control<QLabel>(u"lblFramdrift"_s);
    EXPECT_EQ(foot->text(), QString());
    runEvents();
    EXPECT_GE(foot->width(), foot->fontMetrics().horizontalAdvance(u"1000 av 1000"_s));
    QStringList seen;
    nekt = [&](const QString &statement) {
        if (!statement.startsWith(u"SELECT * FROM Ordre") || !statement.contains(u"ID="))
            return;
        seen += foot->text();
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
    click(control<QCheckBox>(u"Check1"_s));
    clickCell(kBokfor, 5);
    clickCell(kBokfor, 5);
    runEvents();

    /// A second goes by each time it is asked.
    struct RunningClock : Clock
    {
        QDateTime now() const override { return start.addSecs(++seconds); }
        const QDateTime start = QDateTime(QDate(2014, 12, 31), QTime(9, 0));
        mutable int seconds = 0;
    } clock;
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

TEST_F(FrmBokforTest, WhatWaitsInTheEventLoopWaitsUntilTheRunIsOver)
{
    enterMany(3);
    open();
    click(control<QCheckBox>(u"Check1"_s));
    clickCell(kBokfor, 3);
    clickCell(kBokfor, 3);
    QStringList happened;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] { happened += u"timer"_s; });
    nekt = [&](const QString &statement) {
        if (!statement.startsWith(u"UPDATE Ordre"))
            return;
        happened += u"bokført"_s;
        timer.start(0);
        QMetaObject::invokeMethod(
            form(), [&] { happened += u"kall"_s; }, Qt::QueuedConnection);
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
    form()->setRapport([&](const QString &rapport, qint16 modus, const QString &utvalg,
                           const QString &formel1, const QString &formel2) {
        EXPECT_EQ(QApplication::overrideCursor(), nullptr);
        happened += u"%1 %2 [%3] [%4] [%5]"_s.arg(rapport).arg(modus).arg(utvalg, formel1, formel2);
        QMetaObject::invokeMethod(
            form(), [&] { happened += u"hendelse"_s; }, Qt::QueuedConnection);
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
    const QPointer<frmBokfor> watched = form();
    int journals = 0;
    form()->setRapport(
        [&](const QString &, qint16, const QString &, const QString &, const QString &) {
            if (++journals == 1)
                QMetaObject::invokeMethod(
                    form(), [] { click(button(u"btnClose"_s)); }, Qt::QueuedConnection);
            else
                EXPECT_EQ(form(), nullptr);
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
    const QPointer<frmBokfor> watched = form();
    transfer([&] {
        form()->unload();
        EXPECT_EQ(form(), nullptr);
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
    click(menu->findChild<QWidget *>(u"Command8"_s));
    ASSERT_NE(form(), nullptr);
    EXPECT_TRUE(form()->isVisible());
    click(menu->findChild<QWidget *>(u"Command8"_s));
    const auto forms = Forms::loaded();
    EXPECT_EQ(
        std::count_if(forms.begin(), forms.end(),
                      [](const auto &loaded) { return loaded->objectName() == u"frmBokfor"_s; }),
        1);
    menu->close();
    EXPECT_EQ(form(), nullptr);
}

// --- Keys, place and size

TEST_F(FrmBokforTest, EscapeClosesFromAnyControl)
{
    for (const QString &name : {u"fpSpread1"_s, u"cmbKonto"_s, u"btnClose"_s}) {
        open();
        QTest::keyClick(control<QWidget>(name), Qt::Key_Escape);
        runEvents();
        EXPECT_EQ(form(), nullptr) << name.toStdString();
    }
}

TEST_F(FrmBokforTest, F1AndTheHelpImageAskForTheScreensPage)
{
    open();
    QTest::keyClick(&grid(), Qt::Key_F1);
    EXPECT_EQ(gHelpTopic, u"html\\bokfor.htm"_s);
    gHelpTopic.clear();
    click(control<Image>(u"imgF1"_s));
    runEvents();
    EXPECT_EQ(gHelpTopic, u"html\\bokfor.htm"_s);
}

TEST_F(FrmBokforTest, TabGoesThroughTheControlsAsTheEyeDoes)
{
    enterMany(1);
    open();
    clickCell(kBokfor, 1); // a disabled button would be left out
    grid().setFocus();
    grid().setTabStop(true);
    QStringList names;
    box(u"cmbKonto"_s)->setFocus();
    for (int i = 0; i < 5; ++i) {
        names += QApplication::focusWidget()->objectName();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ(names, QStringList({u"cmbKonto"_s, u"cmbLoyve"_s, u"Check1"_s, u"btnTransfer"_s,
                                  u"btnClose"_s}));
}

TEST_F(FrmBokforTest, OpensAtItsDefaultPlaceAndComesBackWhereItWasLeft)
{
    open();
    EXPECT_EQ(form()->place(), QRect(195, 195, 9345, 4755)) << "in whole pixels of 15 twips";
    form()->setPlace(600, 450, 12000, 6000);
    const QRect left = form()->place();
    click(button(u"btnClose"_s));
    runEvents();
    EXPECT_EQ(gReg->GetSetting(u"Regningsdel\\Forms\\frmBokfor"_s, u"FWidth"_s, {}).chopped(1),
              u"12000"_s);
    open();
    EXPECT_EQ(form()->place(), left);
}

TEST_F(FrmBokforTest, TheGridTakesWhatTheWindowOffers)
{
    open();
    for (const QSize size :
         {QSize(9345, 4755), QSize(15000, 9000), QSize(7500, 4500), QSize(4005, 4005)}) {
        form()->setPlace(200, 200, size.width(), size.height());
        runEvents();
        const QRect place = grid().geometry();
        EXPECT_EQ(place.left() * 15, 60);
        EXPECT_EQ(place.top() * 15, 690);
        EXPECT_EQ(place.width(), form()->width() - 120 / 15);
        EXPECT_EQ(place.height(), form()->height() - 1200 / 15);
        // The name has what the other columns leave.
        double others = 0;
        for (const int col : {kFakNr, kKundeNr, kFakDato, kForfall, kBelop, kBokfor})
            others += grid().colWidth(col) + 0.03;
        EXPECT_NEAR(grid().colWidth(kKundeNavn),
                    grid().twipsToColWidth(grid().widthInTwips() - 330) - others, 1e-6);
        // The buttons stay at the right, and the line follows the panel.
        const QWidget *frame = control<QWidget>(u"ramme"_s);
        const QWidget *panel = control<QWidget>(u"panel"_s);
        const int right = frame->mapTo(panel, frame->rect().topRight()).x();
        EXPECT_GE(right, panel->width() - 16);
        EXPECT_LT(right, panel->width());
        EXPECT_GE(frame->width(), frame->sizeHint().width());
        EXPECT_EQ(control<QWidget>(u"linje"_s)->width(), panel->width());
    }
}

TEST_F(FrmBokforTest, KeepsItsMinimumSize)
{
    open();
    form()->setPlace(200, 200, 1500, 1500);
    EXPECT_EQ(form()->place().size(), QSize(4005, 4005)) << "4000 twips in whole pixels";
}

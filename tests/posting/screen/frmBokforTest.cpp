#include "posting/screen/frmBokforTest.h"

#include "platform/forms/Image.h"
#include "presentation/screens/Skjerm.h"
#include "shell/settings/clsRegSettings.h"
#include "state/SharedState.h"
#include "support/Caption.h"

#include <QLabel>
#include <QWheelEvent>

// --- As it opens

TEST_F(FrmBokforTest, TextsAndTips)
{
    open();
    EXPECT_EQ(screen()->objectName(), u"frmBokfor"_s);
    EXPECT_EQ(screen()->windowTitle(), u"Bokfør"_s);
    EXPECT_EQ(control<QLabel>(u"lblTekst"_s).text(),
              u"Oversikt over fakturaer som er klargjort for overføring til regnskap. Huk av for "
              u"faktura(ene) som skal overføres og klikk Bokfør."_s);
    EXPECT_EQ(captionOf(control<QLabel>(u"lblKonto"_s)), u"Konto:"_s);
    EXPECT_EQ(captionOf(control<QLabel>(u"lblLoyve"_s)), u"Løyve:"_s);
    EXPECT_EQ(box(u"cmbKonto"_s)->toolTip(),
              u"Konto 3000 (3100 v. 0 moms) er standard, velg evt. annen konto"_s);
    EXPECT_EQ(box(u"cmbLoyve"_s)->toolTip(),
              u"Velg løyve hvis det skal spesifiseres, ellers <nei>"_s);
    EXPECT_EQ(captionOf(control<QCheckBox>(u"Check1"_s)), u"Merk alle"_s);
    EXPECT_EQ(captionOf(*button(u"btnTransfer"_s)), u"Bokfør"_s);
    EXPECT_EQ(captionOf(*button(u"btnClose"_s)), u"Avslutt"_s);
    EXPECT_EQ(control<Image>(u"imgF1"_s).toolTip(), u" Vis hjelp for dette skjermbildet (F1)"_s);
}

TEST_F(FrmBokforTest, InvoicesWithAVoucherFromBeforeAreCountedQuietly)
{
    for (const int nr : {201, 202, 203})
        enter({.nr = nr, .linjer = {{u"25"_s, u"125"_s}}});
    const auto count = [] {
        open();
        const auto *note = &control<QLabel>(u"lblFramdrift"_s);
        EXPECT_GE(note->width(), note->sizeHint().width());
        const QString text = note->text();
        unloadForms();
        runEvents();
        return text;
    };
    EXPECT_EQ(count(), QString());
    run(u"INSERT INTO Bilag (KlientNr,BilagNr,BilagDato,Aar) VALUES (5,7,#03/09/2014#,2014)"_s);
    for (const int nr : {201, 203})
        run(u"INSERT INTO BilagLinjer (BilagID,Konto,cFaktNr) VALUES (1,1500,'F%1')"_s.arg(nr));
    EXPECT_EQ(count(), u"2 av disse har\nbilag fra før"_s);
}

TEST_F(FrmBokforTest, LargerLettersHaveTheirRoom)
{
    for (const double factor : {1.5, 2.0}) {
        QFont large = QApplication::font();
        large.setPointSizeF(large.pointSizeF() * factor);
        SharedForm<frmBokfor>::get().setFont(large);
        open();
        const auto *text = &control<QLabel>(u"lblTekst"_s);
        EXPECT_GE(text->height(), text->heightForWidth(text->width())) << factor;
        const auto *transfer = button(u"btnTransfer"_s);
        EXPECT_GE(transfer->height(), transfer->sizeHint().height()) << factor;
        EXPECT_GT(grid().height(), 100) << factor;
        unloadForms();
        runEvents();
    }
}

TEST_F(FrmBokforTest, TheChoicesShowTheirTextsInLargerLetters)
{
    const QFont before = QApplication::font();
    for (const double factor : {1.0, 1.5, 2.0}) {
        QFont large = before;
        large.setPointSizeF(large.pointSizeF() * factor);
        QApplication::setFont(large);
        open();
        for (const QString &name : {u"cmbKonto"_s, u"cmbLoyve"_s}) {
            const QLineEdit *text = box(name)->lineEdit();
            EXPECT_GE(text->width(), text->fontMetrics().horizontalAdvance(text->text()) + 4)
                << name.toStdString() << " at " << factor;
        }
        unloadForms();
        runEvents();
    }
    QApplication::setFont(before);
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
    press(u"Check1"_s);
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
    press(u"Check1"_s);
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
    EXPECT_EQ(entries(*list), QStringList({u"1900 Kasse"_s, u"3000 Salgsinntekter avgiftspliktig"_s,
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
    EXPECT_EQ(entries(*list), QStringList({u"<nei>"_s, u"L-1 AB10000 Trekkvogn"_s,
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

TEST_F(FrmBokforTest, TheArrowKeysBeginWithTheFirstAccount)
{
    run(u"INSERT INTO Kontoplan (KlientNr,KontoNr,Navn,KtoGruppe) VALUES (5,1900,'Kasse',10)"_s);
    open();
    QComboBox *list = box(u"cmbKonto"_s);
    list->setFocus();
    QTest::keyClick(list, Qt::Key_Down);
    EXPECT_EQ(list->currentText(), u"1900"_s);
}

TEST_F(FrmBokforTest, TheWheelPassesOverAChoiceWithoutTheFocus)
{
    run(u"INSERT INTO Kontoplan (KlientNr,KontoNr,Navn,KtoGruppe) VALUES (5,1900,'Kasse',10)"_s);
    run(u"INSERT INTO Bil (KlientNr,BilLoyve,BilRegNr,BilType,Passiv) VALUES "
        u"(5,'L-1','AB12345','Volvo',0)"_s);
    open();
    for (const auto &[name, text, chosen] : {std::tuple(u"cmbKonto"_s, u"3000"_s, u"1900"_s),
                                             std::tuple(u"cmbLoyve"_s, u"<nei>"_s, u"L-1"_s)}) {
        QComboBox *list = box(name);
        const auto turnWheel = [&] {
            QWheelEvent wheel(QPointF(5, 5), list->mapToGlobal(QPointF(5, 5)), {}, QPoint(0, -120),
                              Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
            QApplication::sendEvent(list, &wheel);
        };
        turnWheel();
        EXPECT_EQ(list->currentText(), text);
        list->setFocus();
        turnWheel();
        EXPECT_EQ(list->currentText(), chosen);
    }
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

TEST_F(FrmBokforTest, ATextThatSpellsAnItemIsNoChoiceOfIt)
{
    run(u"INSERT INTO Kontoplan (KlientNr,KontoNr,Navn,KtoGruppe) VALUES (5,1900,'Kasse',10)"_s);
    run(u"INSERT INTO Bil (KlientNr,BilLoyve,BilRegNr,BilType,Passiv) VALUES "
        u"(5,'L-1','AB12345','Volvo',0)"_s);
    open();
    for (const auto &[name, item] : {std::pair(u"cmbKonto"_s, u"1900 Kasse"_s),
                                     std::pair(u"cmbLoyve"_s, u"L-1 AB12345 Volvo"_s)}) {
        QComboBox *list = box(name);
        ASSERT_GE(list->findText(item), 0);
        list->setFocus();
        list->lineEdit()->selectAll();
        QTest::keyClicks(list, item);
        QTest::keyClick(list, Qt::Key_Return);
        EXPECT_EQ(list->currentText(), item);
        QTest::keyClick(list, Qt::Key_Tab);
        EXPECT_EQ(list->currentText(), item);
    }
}

// --- Keys, place and size

TEST_F(FrmBokforTest, EscapeClosesFromAnyControl)
{
    for (const QString &name : {u"fpSpread1"_s, u"cmbKonto"_s, u"btnClose"_s}) {
        open();
        QTest::keyClick(&control(name), Qt::Key_Escape);
        runEvents();
        EXPECT_EQ(screen(), nullptr) << name.toStdString();
    }
}

TEST_F(FrmBokforTest, F1AndTheHelpImageAskForTheScreensPage)
{
    open();
    QTest::keyClick(&grid(), Qt::Key_F1);
    EXPECT_EQ(gHelpTopic, u"html\\bokfor.htm"_s);
    gHelpTopic.clear();
    press(u"imgF1"_s);
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
    EXPECT_EQ(screen()->place(), QRect(195, 195, 9345, 4755)) << "in whole pixels of 15 twips";
    screen()->setPlace(600, 450, 10500, 6000);
    const QRect left = screen()->place();
    press(u"btnClose"_s);
    runEvents();
    EXPECT_EQ(gReg->GetSetting(u"Regningsdel\\Forms\\frmBokfor"_s, u"FWidth"_s, {}).chopped(1),
              u"10500"_s);
    open();
    EXPECT_EQ(screen()->place(), left);
}

TEST_F(FrmBokforTest, TheGridTakesWhatTheWindowOffers)
{
    open();
    for (const QSize size :
         {QSize(9345, 4755), QSize(15000, 9000), QSize(7500, 4500), QSize(4005, 4005)}) {
        screen()->setPlace(200, 200, size.width(), size.height());
        runEvents();
        const QRect place = grid().geometry();
        EXPECT_EQ(place.left() * 15, 60);
        EXPECT_EQ(place.top() * 15, 690);
        EXPECT_EQ(place.width(), screen()->width() - 120 / 15);
        EXPECT_EQ(place.height(), screen()->height() - 1200 / 15);
        // The name has what the other columns leave.
        double others = 0;
        for (const int col : {kFakNr, kKundeNr, kFakDato, kForfall, kBelop, kBokfor})
            others += grid().colWidth(col) + 0.03;
        EXPECT_NEAR(grid().colWidth(kKundeNavn),
                    grid().twipsToColWidth(grid().widthInTwips() - 330) - others, 1e-6);
        // The buttons stay at the right, and the line follows the panel.
        const QWidget *frame = &control<QWidget>(u"ramme"_s);
        const QWidget *panel = &control<QWidget>(u"panel"_s);
        const int right = frame->mapTo(panel, frame->rect().topRight()).x();
        EXPECT_GE(right, panel->width() - 16);
        EXPECT_LT(right, panel->width());
        EXPECT_GE(frame->width(), frame->sizeHint().width());
        EXPECT_EQ(control<QWidget>(u"linje"_s).width(), panel->width());
    }
}

TEST_F(FrmBokforTest, KeepsItsMinimumSize)
{
    open();
    screen()->setPlace(200, 200, 1500, 1500);
    EXPECT_EQ(screen()->place().size(), QSize(4005, 4005)) << "4000 twips in whole pixels";
}

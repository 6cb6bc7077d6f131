#include "platform/forms/Image.h"
#include "platform/forms/Twips.h"
#include "presentation/spread/mVASpread.h"
#include "registers/products/ProduktFixture.h"
#include "shell/settings/clsRegSettings.h"
#include "support/Caption.h"

#include <sqlite3.h>

// Opening and closing the register, its list, and its layout.

namespace {

class FrmProduktTest : public ProduktFixture
{
protected:
    static QString stored(const QString &key)
    {
        return gReg->GetSetting(u"Regningsdel\\Forms\\frmProdukt"_s, key, u"ingen."_s).chopped(1);
    }
};

const QString kFill = u"SELECT * FROM Produkt WHERE KlientNr= 5 ORDER BY ProduktNr"_s;
// --- Opening

TEST_F(FrmProduktTest, TheMenuOpensOneRegister)
{
    auto *button = Forms::byName(u"frmRegningsdel"_s)->findChild<QWidget *>(u"Command2"_s);
    QTest::mouseClick(button, Qt::LeftButton);
    const frmProdukt *first = screen();
    ASSERT_NE(first, nullptr);
    EXPECT_TRUE(first->isVisible());
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_EQ(screen(), first);
}

TEST_F(FrmProduktTest, OpensWithOnlyAvsluttToClick)
{
    open();
    EXPECT_EQ(screen()->objectName(), u"frmProdukt"_s);
    EXPECT_FALSE(screen()->isModal());
    EXPECT_EQ(selectedTab(), 1);
    EXPECT_EQ(label(), kOpeningLabel);
    EXPECT_EQ(enabledButtons(), u"Avslutt"_s);
    EXPECT_EQ(details(), kDesignTexts);
    EXPECT_FALSE(isNoteUp());
}

TEST_F(FrmProduktTest, OpensAtItsPlaceAndComesBackToTheLast)
{
    SharedForm<frmProdukt>::get().load();
    EXPECT_EQ(screen()->place(), QRect(200 / 15 * 15, 200 / 15 * 15, 9150, 6435));
    open();
    screen()->setPlace(600, 750, 10500, 7500);
    const QRect left = screen()->place();
    screen()->close();
    runEvents();
    EXPECT_EQ(stored(u"FWidth"_s), u"10500"_s);
    EXPECT_EQ(stored(u"FHeight"_s), u"7500"_s);
    open();
    EXPECT_EQ(screen()->place(), left);
}

TEST_F(FrmProduktTest, ControlsHaveTheirTexts)
{
    open();
    const QStringList labels{u"Produktnr.:"_s,  u"Navn:"_s,      u"Produktgruppe:"_s, u"Enhet:"_s,
                             u"Inntakskost:"_s, u"Salgspris:"_s, u"MVA sats (%):"_s,  u"ID:"_s};
    const QWidget *controls[] = {&field(0), &field(1), &field(2), &field(3),
                                 &field(4), &field(5), &rate(),   &field(11)};
    for (int i = 0; i < labels.size(); ++i) {
        const QList<QLabel *> all = screen()->findChildren<QLabel *>();
        EXPECT_TRUE(std::any_of(all.begin(), all.end(), [&](const QLabel *each) {
            return captionOf(*each) == labels[i] && each->buddy() == controls[i];
        })) << labels[i].toStdString();
    }
    EXPECT_EQ(captionOf(gross()), u"Bruttopriser (inkl.mva.)"_s);
    EXPECT_EQ(gross().toolTip(), u"Sett hake her hvis prisene er oppgitt inkl. moms."_s);
    EXPECT_EQ(field(1).maxLength(), 100);
    EXPECT_GE(field(0).maxLength(), 32767);
    EXPECT_EQ(field(4).alignment() & Qt::AlignHorizontal_Mask, Qt::AlignRight);
    EXPECT_EQ(field(5).alignment() & Qt::AlignHorizontal_Mask, Qt::AlignRight);
    EXPECT_TRUE(field(11).isHidden());
    EXPECT_TRUE(control<QLabel>(u"Label3"_s).isHidden());
    const auto *strip = &control<TabStrip>(u"TabStrip1"_s);
    EXPECT_EQ(strip->tabText(0).remove(u'&'), u"Oversikt"_s);
    EXPECT_EQ(strip->tabText(1).remove(u'&'), u"Detaljer"_s);
}

TEST_F(FrmProduktTest, TheRatesAreOfferedFromTheHighestAndOthersCanBeTyped)
{
    open();
    QStringList rates;
    for (int i = 0; i < rate().count(); ++i)
        rates += rate().itemText(i);
    EXPECT_EQ(rates, QStringList({u"25"_s, u"15"_s, u"10"_s, u"0"_s}));
    EXPECT_TRUE(rate().isEditable());

    newProduct();
    type(*rate().lineEdit(), u"1"_s);
    EXPECT_EQ(rate().currentText(), u"1"_s) << "nothing is completed";
    key(Qt::Key_Return);
    EXPECT_EQ(rate().count(), 4) << "a typed rate does not join the list";
}

TEST_F(FrmProduktTest, TheGridIsBuiltAsDesigned)
{
    open();
    EXPECT_EQ(grid().maxCols(), 10);
    QStringList visible;
    for (int col = 1; col <= 10; ++col) {
        if (!grid().colHidden(col))
            visible += grid().model()->headerData(col - 1, Qt::Horizontal).toString();
    }
    EXPECT_EQ(visible, QStringList({u"Produkt nr."_s, u"Produkt navn"_s, u"Enhet"_s, u"Inn pris"_s,
                                    u"Ut pris"_s, u"MVA sats"_s, u"Bruttopris"_s}));
    QStringList hidden;
    for (const int col : {3, 9, 10})
        hidden += grid().model()->headerData(col - 1, Qt::Horizontal).toString();
    EXPECT_EQ(hidden, QStringList({u"Gruppe"_s, u"ID"_s, u"Changed"_s}));
    EXPECT_EQ(grid().defaultColWidth(), 10.5);
    EXPECT_EQ(grid().colWidth(4), 10.5);
    EXPECT_FALSE(grid().protect());
    EXPECT_FALSE(grid().lock());
}

// --- The list

TEST_F(FrmProduktTest, ReadsTheClientsProductsInOrderOfTheirNumbers)
{
    addProduct(u"C3"_s, u"Pære"_s);
    addProduct(u"A1"_s, u"Olje"_s);
    run(u"INSERT INTO Produkt (KlientNr,ProduktNr) VALUES (6,'B2')"_s);
    const SessionTap tap;
    open();
    EXPECT_EQ(tap.statements(), QStringList({kFill}));
    EXPECT_EQ(at(1, 1), u"A1"_s);
    EXPECT_EQ(at(1, 2), u"C3"_s);
    EXPECT_EQ(at(1, 3), QString());
}

TEST_F(FrmProduktTest, ARowShowsItsColumnsInTheirForms)
{
    run(u"INSERT INTO Produkt (KlientNr,ProduktNr,ProduktNavn,ProduktGruppe,Enhet,InnPris,UtPris,"
        u"MvaSats,BruttoPris) VALUES (5,'A1','Olje','Diverse','stk',1234.5,1234.5,12.5,1)"_s);
    run(u"INSERT INTO Produkt (KlientNr,ProduktNr,ProduktNavn,ProduktGruppe,Enhet,InnPris,UtPris,"
        u"MvaSats,BruttoPris) VALUES (5,'B2','','','',0,1234567,0,0)"_s);
    open();
    EXPECT_EQ(rowTexts(1, 1, 10),
              QStringList({u"A1"_s, u"Olje"_s, u"Diverse"_s, u"stk"_s, u"1234,50"_s, u"1 234,50"_s,
                           u"12,5"_s, u"1"_s, u"1"_s, QString()}));
    EXPECT_EQ(rowTexts(2, 1, 10),
              QStringList({u"B2"_s, QString(), u" "_s, u" "_s, u"0,00"_s, u"1234 567,00"_s,
                           u"0,0"_s, u"0"_s, u"2"_s, QString()}));
}

TEST_F(FrmProduktTest, TheColumnsGetTheirTypesAfterTheRows)
{
    addThreeProducts();
    open();
    const auto kindOf = [](int col, int row) {
        grid().setCurrent(col, row);
        return grid().cellType().kind;
    };
    for (const int row : {1, 10}) {
        for (const int col : {5, 6}) {
            EXPECT_EQ(kindOf(col, row), CellKind::Float);
            EXPECT_TRUE(grid().cellType().showThousands);
            EXPECT_EQ(grid().cellType().minimum, QString());
            EXPECT_EQ(grid().cellType().maximum, QString());
        }
        EXPECT_EQ(kindOf(8, row), CellKind::CheckBox);
        EXPECT_EQ(kindOf(7, row), CellKind::Edit);
        EXPECT_EQ(grid().typeHAlign(), int(CellAlign::Centre));
        EXPECT_EQ(kindOf(1, row), CellKind::Edit);
    }
}

TEST_F(FrmProduktTest, AnEmptyRegisterGivesTenEmptyRows)
{
    open();
    EXPECT_EQ(grid().maxRows(), 10);
    EXPECT_EQ(grid().dataRowCnt(), 0);
}

TEST_F(FrmProduktTest, TenProductsKeepTenRows)
{
    addProducts(10);
    open();
    EXPECT_EQ(grid().maxRows(), 10);
    EXPECT_EQ(grid().dataRowCnt(), 10);
}

TEST_F(FrmProduktTest, ElevenProductsGetTwoRowsMore)
{
    addProducts(11);
    open();
    EXPECT_EQ(grid().maxRows(), 13);
    EXPECT_EQ(grid().dataRowCnt(), 11);
}

TEST_F(FrmProduktTest, ProductsBeyondTheCounterAreWrittenOverItsLastRow)
{
    sqlite3 *database = nullptr;
    ASSERT_EQ(sqlite3_open(path().toUtf8().constData(), &database), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(database,
                           "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE "
                           "i<32769) INSERT INTO Produkt (KlientNr,ProduktNr) "
                           "SELECT 5,printf('%05d',i) FROM n",
                           nullptr, nullptr, nullptr),
              SQLITE_OK);
    sqlite3_close(database);
    open();
    EXPECT_EQ(grid().maxRows(), 32771);
    EXPECT_EQ(grid().dataRowCnt(), 32767);
    EXPECT_EQ(at(1, 32766), u"32766"_s);
    EXPECT_EQ(at(1, 32767), u"32769"_s);
}

TEST_F(FrmProduktTest, ANullLeavesItsCellEmptyAndItsFieldAsItWas)
{
    addProduct(u"A1"_s, u"Olje"_s);
    run(u"INSERT INTO Produkt (KlientNr,ProduktNr) VALUES (5,'B2')"_s);
    open();
    EXPECT_EQ(rowTexts(2, 1, 9), QStringList({u"B2"_s, QString(), QString(), QString(), QString(),
                                              QString(), QString(), u"0"_s, u"2"_s}));
    clickCell(1, 1);
    EXPECT_EQ(details(), kOljeDetails);
    clickCell(1, 2);
    QStringList kept = kOljeDetails;
    kept[0] = u"B2"_s;
    kept[8] = u"2"_s;
    EXPECT_EQ(details(), kept);
}

TEST_F(FrmProduktTest, AFailedReadLeavesTheGridClearedWithoutAMessage)
{
    addThreeProducts();
    open();
    ASSERT_EQ(grid().dataRowCnt(), 3);
    run(u"DROP TABLE Produkt"_s);
    clickTab(1);
    EXPECT_EQ(grid().dataRowCnt(), 0);
    EXPECT_EQ(grid().maxRows(), 10);
    EXPECT_TRUE(grid().redraw());
    EXPECT_EQ(enabledButtons(), u"Oppfrisk Avslutt"_s);
}

TEST_F(FrmProduktTest, AfterAFailedReadNyFailsInItsAddition)
{
    open();
    run(u"DROP TABLE Produkt"_s);
    clickTab(1);
    clickTab(2);
    onNextModal<QMessageBox>([](QMessageBox &box) {
        EXPECT_TRUE(box.text().startsWith(u"Kjørefeil 91:"_s)) << box.text().toStdString();
        QTest::keyClick(&box, Qt::Key_Return);
    });
    press(u"btnNew"_s);
    EXPECT_EQ(enabledButtons(), u"Ny Avslutt"_s) << "the rest of the handler does not run";
}

TEST_F(FrmProduktTest, OppfriskReadsAnew)
{
    addThreeProducts();
    open();
    clickTab(1);
    clickCell(1, 2);
    run(u"UPDATE Produkt SET ProduktNavn='Filter stort' WHERE ID=2"_s);
    run(u"DELETE FROM Produkt WHERE ID=1"_s);
    press(u"btnRefresh"_s);
    EXPECT_EQ(at(2, 1), u"Filter stort"_s);
    EXPECT_EQ(grid().dataRowCnt(), 2);
    EXPECT_EQ(grid().selectedRowCount(), 0);
}

TEST_F(FrmProduktTest, InitGridAndAReadUnlockTheGrid)
{
    open();
    const auto isLocked = [] {
        grid().setCurrent(1, 1);
        return grid().lock() || grid().protect();
    };
    SpreadLockAll(grid(), true);
    ASSERT_TRUE(isLocked());
    screen()->InitGrid();
    EXPECT_FALSE(isLocked());
    SpreadLockAll(grid(), true);
    clickTab(1);
    EXPECT_FALSE(isLocked());
}

TEST_F(FrmProduktTest, AnotherClientComesWithTheNextRead)
{
    addProduct(u"A1"_s, u"Olje"_s);
    run(u"INSERT INTO Produkt (KlientNr,ProduktNr) VALUES (6,'K6')"_s);
    open();
    gKlient = 6;
    EXPECT_EQ(at(1, 1), u"A1"_s);
    clickTab(1);
    EXPECT_EQ(at(1, 1), u"K6"_s);
}

// --- Closing and keys

TEST_F(FrmProduktTest, EscapeClosesAheadOfTheControls)
{
    addThreeProducts();
    open();
    changeFirst();
    type(field(1), u"Ulagret"_s);
    QTest::keyClick(&field(1), Qt::Key_Escape);
    EXPECT_EQ(screen(), nullptr);
    runEvents();
    EXPECT_EQ(rows(u"SELECT ProduktNavn FROM Produkt WHERE ID=1"_s), QStringList({u"Olje"_s}));
}

TEST_F(FrmProduktTest, AvsluttCloses)
{
    open();
    const QPointer<frmProdukt> before = screen();
    QTest::mouseClick(&control<QPushButton>(u"btnClose"_s), Qt::LeftButton);
    runEvents();
    EXPECT_TRUE(before.isNull());
}

TEST_F(FrmProduktTest, F1AsksForItsTopic)
{
    open();
    QTest::keyClick(&grid(), Qt::Key_F1);
    EXPECT_EQ(gHelpTopic, u"html\\produkt.htm"_s);
}

TEST_F(FrmProduktTest, TheHelpImageTakesTheSamePathAsTheKey)
{
    open();
    auto &image = control<Image>(u"imgF1"_s);
    EXPECT_EQ(image.size(), QSize(24, 24));
    gHelpTopic.clear();
    QTest::mouseClick(&image, Qt::LeftButton);
    EXPECT_EQ(gHelpTopic, QString());
    runEvents();
    EXPECT_EQ(gHelpTopic, u"html\\produkt.htm"_s);
}

TEST_F(FrmProduktTest, ClosesWithTheSession)
{
    open();
    EXPECT_TRUE(Forms::instance().logOff());
    EXPECT_EQ(screen(), nullptr);
}

TEST_F(FrmProduktTest, ClosesWithTheMenu)
{
    open();
    Forms::byName(u"frmRegningsdel"_s)->close();
    EXPECT_EQ(screen(), nullptr);
}

TEST_F(FrmProduktTest, CanBeOpenedAnew)
{
    addThreeProducts();
    open();
    changeFirst();
    screen()->close();
    runEvents();
    open();
    EXPECT_EQ(selectedTab(), 1);
    EXPECT_EQ(details(), kDesignTexts);
    clickTab(2);
    field(1).setFocus();
    settle();
    EXPECT_NE(focused(), u"txtFields_1"_s);
}

// --- Layout

TEST_F(FrmProduktTest, TheFormHoldsItsSmallestSize)
{
    open();
    screen()->setPlace(200, 200, 3000, 3000);
    runEvents();
    EXPECT_EQ(screen()->width(), twipsToPixels(9100));
    EXPECT_EQ(screen()->height(), twipsToPixels(6400));
}

TEST_F(FrmProduktTest, StripPageAndGridFollowTheForm)
{
    open();
    for (const QSize twips : {QSize(9150, 6435), QSize(15000, 9000)}) {
        screen()->setPlace(200, 200, twips.width(), twips.height());
        runEvents();
        auto &strip = control<TabStrip>(u"TabStrip1"_s);
        EXPECT_EQ(strip.geometry(),
                  twipsToPixels(60, 1020, twips.width() - 120, twips.height() - 1500));
        EXPECT_EQ(grid().size(), page(0).size());
        EXPECT_EQ(strip.geometry() | page(0).geometry(), strip.geometry());
        EXPECT_EQ(page(0).geometry().right(), screen()->width() - 8 - 1);
        auto &close = control<QPushButton>(u"btnClose"_s);
        EXPECT_GT(close.mapTo(screen(), QPoint()).y(), strip.geometry().bottom());
        EXPECT_TRUE(
            screen()->rect().contains(QRect(close.mapTo(screen(), QPoint()), close.size())));
    }
}

TEST_F(FrmProduktTest, TheNameTakesTheSpareWidth)
{
    addProducts(40);
    open();
    const double before = grid().colWidth(2);
    screen()->setPlace(200, 200, 15000, 9000);
    runEvents();
    EXPECT_GT(grid().colWidth(2), before);
    double sum = 0;
    for (const int col : {1, 2, 4, 5, 6, 7, 8})
        sum += grid().colWidth(col) + (col == 2 ? 0 : 0.03);
    EXPECT_NEAR(sum, grid().twipsToColWidth(grid().widthInTwips() - 330), 0.001);
}

TEST_F(FrmProduktTest, TheListTakesASizeThatWasGivenOnTheDetails)
{
    open();
    const double before = grid().colWidth(2);
    clickTab(2);
    screen()->setPlace(200, 200, 15000, 9000);
    runEvents();
    EXPECT_EQ(grid().colWidth(2), before) << "only the list's own page is laid out anew";
    clickTab(1);
    EXPECT_GT(grid().colWidth(2), before);
}

TEST_F(FrmProduktTest, TheDetailsTakeASizeThatWasGivenOnTheList)
{
    addThreeProducts();
    open();
    screen()->setPlace(200, 200, 15000, 9000);
    runEvents();
    doubleClickCell(1, 1);
    EXPECT_EQ(page(1).geometry().right(), screen()->width() - 8 - 1);
}

} // namespace

#include "platform/forms/MsgBox.h"
#include "registers/products/ProduktFixture.h"

#include <QClipboard>

// Saving a product: the statements to the letter, and what the user is told.

namespace {

class FrmProduktLagreTest : public ProduktFixture
{
protected:
    void SetUp() override
    {
        addProduct(u"A1"_s, u"Olje"_s);
        open();
    }
    static void fillIn(const QStringList &texts)
    {
        for (int i = 0; i < texts.size(); ++i)
            type(field(i), texts[i]);
    }
    /// The statements of a save; the note that follows is closed.
    static QStringList savedBy(const SessionTap &tap)
    {
        press(u"btnSave"_s);
        return tap.statements();
    }
    /// Presses Lagre, which is to bring up one message box; its text.
    static QString messageOfSave(int icon = QMessageBox::Warning)
    {
        QString text;
        onNextModal<QMessageBox>([&](QMessageBox &box) {
            text = box.text();
            EXPECT_EQ(box.icon(), icon);
            EXPECT_EQ(box.windowTitle(), applicationTitle());
            EXPECT_EQ(box.buttons().size(), 1);
            QTest::keyClick(&box, Qt::Key_Return);
        });
        press(u"btnSave"_s);
        return text;
    }
    static Form *note() { return Forms::byName(u"frmTMsgBox"_s); }
};

const QString kOlje = u"5|A1|Olje|Diverse|stk|10|20|25|False"_s;

// --- New

TEST_F(FrmProduktLagreTest, ANewProductIsInsertedByItsStatementToTheLetter)
{
    newProduct();
    fillIn({u"B2"_s, u"Filter"_s, u"Diverse"_s, u"stk"_s, u"10"_s, u"20"_s});
    gross().setChecked(true);
    const SessionTap tap;
    EXPECT_EQ(savedBy(tap),
              QStringList({u"INSERT INTO Produkt (KlientNr,ProduktNr,ProduktNavn,"
                           u"ProduktGruppe,Enhet,InnPris,UtPris,MvaSats,BruttoPris) VALUES ( 5,"
                           u"'B2','Filter','Diverse','stk',10.00,20.00,25.0, 1)"_s,
                           u"SELECT @@IDENTITY"_s}));
    EXPECT_EQ(products(), QStringList({kOlje, u"5|B2|Filter|Diverse|stk|10|20|25|True"_s}));
}

TEST_F(FrmProduktLagreTest, ASaveIsConfirmedByTheNote)
{
    newProduct();
    clock.sleeps.clear();
    press(u"btnSave"_s);
    ASSERT_NE(note(), nullptr);
    EXPECT_EQ(note()->windowTitle(), u"Lagre"_s);
    EXPECT_EQ(note()->findChild<QLabel *>(u"Label1"_s)->text(), u"Data er lagret."_s);
    EXPECT_TRUE(note()->findChild<QPushButton *>(u"Command1"_s)->isVisible());
    EXPECT_EQ(clock.sleeps, std::vector<int>({1000}));
}

TEST_F(FrmProduktLagreTest, ASaveEndsTheMode)
{
    newProduct();
    fillIn({u"B2"_s});
    press(u"btnSave"_s);
    EXPECT_EQ(enabledButtons(), u"Ny Endre Avbryt Avslutt"_s);
    EXPECT_EQ(field(0).text(), u"B2"_s);
    EXPECT_EQ(field(11).text(), QString()) << "the new key is not shown";
    EXPECT_EQ(screen()->focusWidget()->objectName(), u"btnChange"_s);
    screen()->activateWindow(); // from the note
    runEvents();
    field(0).setFocus();
    settle();
    EXPECT_NE(focused(), u"txtFields_0"_s);
}

TEST_F(FrmProduktLagreTest, ASecondClickUnderTheNoteStoresNoSecondProduct)
{
    newProduct();
    fillIn({u"B2"_s});
    QTimer::singleShot(0, screen(), [] {
        QTest::mouseClick(&control<QPushButton>(u"btnSave"_s), Qt::LeftButton);
    });
    QTest::mouseClick(&control<QPushButton>(u"btnSave"_s), Qt::LeftButton);
    settle();
    EXPECT_EQ(products(), QStringList({kOlje, u"5|B2||||0|0|25|False"_s}));
    EXPECT_EQ(enabledButtons(), u"Ny Endre Avbryt Avslutt"_s);
    newProduct();
    fillIn({u"C3"_s});
    press(u"btnSave"_s);
    EXPECT_EQ(products().size(), 3);
}

TEST_F(FrmProduktLagreTest, TheListShowsASavedProductWhenItIsTurnedTo)
{
    newProduct();
    fillIn({u"0"_s, u"Først"_s});
    press(u"btnSave"_s);
    EXPECT_EQ(at(1, 1), u"A1"_s);
    clickTab(1);
    EXPECT_EQ(at(2, 1), u"Først"_s);
}

TEST_F(FrmProduktLagreTest, NothingIsValidated)
{
    newProduct();
    press(u"btnSave"_s);
    newProduct();
    fillIn({u"A1"_s});
    press(u"btnSave"_s);
    EXPECT_EQ(products(), QStringList({kOlje, u"5|||||0|0|25|False"_s, u"5|A1||||0|0|25|False"_s}));
}

TEST_F(FrmProduktLagreTest, AnApostropheInANewProductIsSilent)
{
    newProduct();
    fillIn({u"B2"_s, u"O'Hara"_s});
    press(u"btnSave"_s);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    EXPECT_EQ(note(), nullptr);
    EXPECT_EQ(products(), QStringList({kOlje}));
    EXPECT_EQ(enabledButtons(), u"Ny Endre Avbryt Avslutt"_s);
    EXPECT_EQ(gDB->LastError(), QString()) << "it has been read and thrown away";
}

TEST_F(FrmProduktLagreTest, AnOldFailureHidesThatANewProductWasStored)
{
    newProduct();
    fillIn({u"B2"_s});
    EXPECT_FALSE(gDB->Execute(u"tull"_s));
    press(u"btnSave"_s);
    EXPECT_EQ(products().size(), 2);
    EXPECT_EQ(note(), nullptr);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

// --- Change

TEST_F(FrmProduktLagreTest, AChangedProductIsUpdatedByItsStatementToTheLetter)
{
    changeFirst();
    fillIn({u"A2"_s, u"Motorolje"_s, u"Olje"_s, u"liter"_s, u"1234,5"_s, u"99,9"_s});
    type(*rate().lineEdit(), u"12,5"_s);
    const SessionTap tap;
    EXPECT_EQ(
        savedBy(tap),
        QStringList({u"UPDATE Produkt SET KlientNr= 5,ProduktNr='A2',"
                     u"ProduktNavn='Motorolje',ProduktGruppe='Olje',Enhet='liter',"
                     u"InnPris=1234.50,UtPris=99.90,MvaSats=12.5,BruttoPris= 0 WHERE ID=1"_s}));
    EXPECT_EQ(products(), QStringList({u"5|A2|Motorolje|Olje|liter|1234,5|99,9|12,5|False"_s}));
    EXPECT_NE(note(), nullptr);
    EXPECT_EQ(enabledButtons(), u"Ny Endre Avbryt Avslutt"_s);
}

TEST_F(FrmProduktLagreTest, AnUpdateTakesTheProductToTheActiveClient)
{
    changeFirst();
    gKlient = 6;
    press(u"btnSave"_s);
    EXPECT_EQ(products(), QStringList({u"6|A1|Olje|Diverse|stk|10|20|25|False"_s}));
}

TEST_F(FrmProduktLagreTest, AnApostropheInAChangedProductIsTold)
{
    changeFirst();
    type(field(1), u"O'Hara"_s);
    const QString message = messageOfSave();
    const QString start = u"Lagring feilet! - Feilmelding: -2147217900 - "_s;
    EXPECT_TRUE(message.startsWith(start)) << message.toStdString();
    EXPECT_GT(message.size(), start.size());
    EXPECT_EQ(products(), QStringList({kOlje}));
    EXPECT_EQ(note(), nullptr);
}

TEST_F(FrmProduktLagreTest, AFailedUpdateEndsTheModeAndKeepsWhatWasTyped)
{
    changeFirst();
    type(field(1), u"O'Hara"_s);
    (void)messageOfSave();
    EXPECT_EQ(field(1).text(), u"O'Hara"_s);
    EXPECT_EQ(enabledButtons(), u"Ny Endre Avbryt Avslutt"_s);
    EXPECT_EQ(focused(), u"btnChange"_s) << "which is how to try again";
    field(1).setFocus();
    settle();
    EXPECT_NE(focused(), u"txtFields_1"_s);

    press(u"btnChange"_s);
    type(field(1), u"OHara"_s);
    press(u"btnSave"_s);
    EXPECT_EQ(products(), QStringList({u"5|A1|OHara|Diverse|stk|10|20|25|False"_s}));
}

TEST_F(FrmProduktLagreTest, AProductThatIsGoneIsReportedAsSaved)
{
    changeFirst();
    run(u"DELETE FROM Produkt"_s);
    press(u"btnSave"_s);
    ASSERT_NE(note(), nullptr);
    EXPECT_EQ(products(), QStringList());
}

TEST_F(FrmProduktLagreTest, WithoutAnIdNoRowIsChangedAndItIsReportedAsSaved)
{
    doubleClickCell(1, 5);
    press(u"btnChange"_s);
    type(field(1), u"Ingen"_s);
    const SessionTap tap;
    press(u"btnSave"_s);
    EXPECT_TRUE(tap.statements().value(0).endsWith(u" WHERE ID=0"_s));
    EXPECT_NE(note(), nullptr);
    EXPECT_EQ(products(), QStringList({kOlje}));
}

TEST_F(FrmProduktLagreTest, AKeyOfManyDigitsIsKept)
{
    run(u"INSERT INTO Produkt (ID,KlientNr,ProduktNr,ProduktNavn) VALUES (2147483647,5,'Z9','Sist')"_s);
    clickTab(1);
    EXPECT_EQ(at(9, 2), u"2147483647"_s);
    doubleClickCell(1, 2);
    press(u"btnChange"_s);
    type(field(1), u"Aller sist"_s);
    press(u"btnSave"_s);
    EXPECT_EQ(rows(u"SELECT ProduktNavn FROM Produkt WHERE ID=2147483647"_s),
              QStringList({u"Aller sist"_s}));
}

TEST_F(FrmProduktLagreTest, AChangeThatWasLeftOpenGoesAheadOfANewProduct)
{
    changeFirst();
    clickTab(1); // neither saved nor cancelled
    newProduct();
    fillIn({u"B2"_s, u"Filter"_s});
    const SessionTap tap;
    const QStringList statements = savedBy(tap);
    ASSERT_EQ(statements.size(), 1);
    EXPECT_TRUE(statements[0].startsWith(u"UPDATE Produkt SET "_s));
    EXPECT_TRUE(statements[0].endsWith(u" WHERE ID=0"_s));
    EXPECT_EQ(products(), QStringList({kOlje}));
    EXPECT_FALSE(control<QPushButton>(u"btnSave"_s).isEnabled()) << "both modes have ended";
}

TEST_F(FrmProduktLagreTest, ANewProductThatWasLeftOpenBecomesAChangeOfTheChosenOne)
{
    newProduct();
    clickTab(1);
    changeFirst();
    type(field(1), u"Motorolje"_s);
    press(u"btnSave"_s);
    EXPECT_EQ(products(), QStringList({u"5|A1|Motorolje|Diverse|stk|10|20|25|False"_s}));
}

// --- Values

TEST_F(FrmProduktLagreTest, AmountsGoAsTheLocaleReadsThem)
{
    changeFirst();
    const std::pair<QString, QString> cases[] = {
        {QString(), u"0.00"_s},
        {u"0.00"_s, u"0.00"_s},
        {u"ti"_s, u"0.00"_s},
        {u"1 234,50"_s, u"1234.50"_s},
        {u"12.50"_s, u"0.00"_s},
        {u"-5,25"_s, u"-5.25"_s},
        {u"1234 567,00"_s, u"1234567.00"_s},
        {u"0,125"_s, u"0.13"_s},
    };
    for (const auto &[typed, stored] : cases) {
        field(4).setText(typed);
        field(5).setText(typed);
        const SessionTap tap;
        press(u"btnSave"_s);
        EXPECT_TRUE(
            tap.statements().value(0).contains(u",InnPris=%1,UtPris=%1,MvaSats="_s.arg(stored)))
            << typed.toStdString() << ": " << tap.statements().value(0).toStdString();
        press(u"btnChange"_s);
    }
}

TEST_F(FrmProduktLagreTest, RatesGoWithOneDecimal)
{
    changeFirst();
    const std::pair<QString, QString> cases[] = {
        {u"25,0"_s, u"25.0"_s}, {QString(), u"0.0"_s}, {u"15"_s, u"15.0"_s}, {u"mye"_s, u"0.0"_s}};
    for (const auto &[typed, stored] : cases) {
        rate().setEditText(typed);
        const SessionTap tap;
        press(u"btnSave"_s);
        EXPECT_TRUE(tap.statements().value(0).contains(u",MvaSats=%1,BruttoPris="_s.arg(stored)))
            << typed.toStdString();
        press(u"btnChange"_s);
    }
}

TEST_F(FrmProduktLagreTest, TextsGoAsTheyStand)
{
    newProduct();
    fillIn({u" B2 "_s, u"  Æøå  "_s});
    const SessionTap tap;
    press(u"btnSave"_s);
    EXPECT_TRUE(tap.statements().value(0).contains(u"VALUES ( 5,' B2 ','  Æøå  ','','',"_s));
}

TEST_F(FrmProduktLagreTest, PastedLinesAreStoredAsOne)
{
    newProduct();
    const auto paste = [](QLineEdit &into, const QString &text) {
        QGuiApplication::clipboard()->setText(text);
        into.setFocus();
        into.selectAll();
        QTest::keyClick(&into, Qt::Key_V, Qt::ControlModifier);
    };
    paste(field(0), u"B2\r\n"_s); // as a spreadsheet gives a cell
    paste(field(1), u"Filter\r\nstort\tgrønt"_s);
    paste(*rate().lineEdit(), u"15\n"_s);
    press(u"btnSave"_s);
    EXPECT_EQ(products().value(1), u"5|B2|Filter stort grønt|||0|0|15|False"_s);
}

TEST_F(FrmProduktLagreTest, ATextBeyondItsColumnIsCutByTheDatabase)
{
    newProduct();
    fillIn({u"B2"_s, QString(120, u'n'), u"Produktgruppe"_s});
    press(u"btnSave"_s);
    EXPECT_EQ(products().value(1), u"5|B2|%1|Produktgru||0|0|25|False"_s.arg(QString(100, u'n')));
}

// --- Nothing to save

TEST_F(FrmProduktLagreTest, WithoutAModeNothingIsSaved)
{
    doubleClickCell(1, 1);
    QPushButton &save = control<QPushButton>(u"btnSave"_s);
    EXPECT_FALSE(save.isEnabled());
    const SessionTap tap;
    Q_EMIT save.clicked();
    runEvents();
    EXPECT_EQ(tap.statements(), QStringList());
    EXPECT_EQ(note(), nullptr);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    EXPECT_EQ(enabledButtons(), u"Ny Endre Avbryt Avslutt"_s);
}

TEST_F(FrmProduktLagreTest, TheScreenMayBeClosedWhileTheNoteIsUp)
{
    changeFirst();
    type(field(1), u"Motorolje"_s);
    const QPointer<frmProdukt> before = screen();
    QTimer::singleShot(0, screen(), [] {
        screen()->unload();
        QCoreApplication::sendPostedEvents(screen(), QEvent::DeferredDelete);
    });
    QTest::mouseClick(&control<QPushButton>(u"btnSave"_s), Qt::LeftButton);
    runEvents();
    EXPECT_TRUE(before.isNull());
    EXPECT_EQ(products(), QStringList({u"5|A1|Motorolje|Diverse|stk|10|20|25|False"_s}));
}

} // namespace

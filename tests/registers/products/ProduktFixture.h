#pragma once

#include "data/clsAdoUtils.h"
#include "platform/forms/Forms.h"
#include "platform/forms/TabStrip.h"
#include "platform/grid/fpSpread.h"
#include "registers/products/frmProdukt.h"
#include "shell/component/Main.h"
#include "state/SharedState.h"
#include "support/Caption.h"
#include "support/ScreenHands.h"
#include "support/SessionTap.h"
#include "support/SettingsFolder.h"
#include "support/StandingClock.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>

#include <algorithm>

using namespace Qt::StringLiterals;

/// The product register in a started module, on an empty database of client 5 and with settings of
/// the test's own. No test waits: the clock moves when someone sleeps.
class ProduktFixture : public ScreenTest, public ScreenHands<frmProdukt>
{
protected:
    ProduktFixture()
    {
        Main();
        makeParentTables();
        EXPECT_EQ(startModule(), 1);
        (void)gDB->LastError(); // the start on a new database leaves a refusal there
        runEvents();
    }
    /// Stores a product of client 5 with prices 10 and 20 and rate 25.
    void addProduct(const QString &number, const QString &name)
    {
        run(u"INSERT INTO Produkt (KlientNr,ProduktNr,ProduktNavn,ProduktGruppe,Enhet,InnPris,"
            u"UtPris,MvaSats,BruttoPris) VALUES ( 5,'%1','%2','Diverse','stk',10,20,25,0)"_s.arg(
                number, name));
    }
    void addProducts(int count)
    {
        for (int i = 1; i <= count; ++i)
            addProduct(u"P%1"_s.arg(i, 3, 10, QChar(u'0')), u"Vare %1"_s.arg(i));
    }
    /// A1 Olje, B2 Filter and C3 Pære, with ID 1 to 3.
    void addThreeProducts()
    {
        addProduct(u"A1"_s, u"Olje"_s);
        addProduct(u"B2"_s, u"Filter"_s);
        addProduct(u"C3"_s, u"Pære"_s);
    }
    // --- What is on the screen

    static QLineEdit &field(int index) { return control<QLineEdit>(u"txtFields_%1"_s.arg(index)); }
    static QComboBox &rate() { return control<QComboBox>(u"cmbMvaSats"_s); }
    static QCheckBox &gross() { return control<QCheckBox>(u"chkBruttoPris"_s); }
    static QWidget &page(int index) { return control<QWidget>(u"frTabStrip_%1"_s.arg(index)); }
    static QString label() { return control<QLabel>(u"Label1"_s).text(); }
    static int selectedTab() { return control<TabStrip>(u"TabStrip1"_s).selected(); }
    /// The fields 0 to 5, the rate, the check mark and the ID.
    static QStringList details()
    {
        QStringList texts;
        for (int i = 0; i <= 5; ++i)
            texts += field(i).text();
        texts += rate().currentText();
        texts += gross().isChecked() ? u"x"_s : u"-"_s;
        texts += field(11).text();
        return texts;
    }
    /// The captions of the buttons that can be clicked.
    static QString enabledButtons()
    {
        QStringList captions;
        for (const QString &name : {u"btnNew"_s, u"btnChange"_s, u"btnSave"_s, u"btnCancel"_s,
                                    u"btnRefresh"_s, u"btnClose"_s}) {
            const auto &button = control<QPushButton>(name);
            if (button.isEnabled())
                captions += captionOf(button);
        }
        return captions.join(u' ');
    }
    static bool isNoteUp() { return Forms::byName(u"frmTMsgBox"_s) != nullptr; }

    // --- What a user does

    /// Opens the first product for change.
    static void changeFirst()
    {
        doubleClickCell(1, 1);
        press(u"btnChange"_s);
    }
    static void newProduct()
    {
        clickTab(2);
        press(u"btnNew"_s);
    }

    /// The product rows, past the screen.
    QStringList products()
    {
        return rows(u"SELECT KlientNr,ProduktNr,ProduktNavn,ProduktGruppe,Enhet,InnPris,UtPris,"
                    u"MvaSats,BruttoPris FROM Produkt ORDER BY ID"_s);
    }

    SettingsFolder settings;
    StandingClock clock;
};

/// The details of a screen on which nothing has been shown or typed yet.
inline const QStringList kDesignTexts{QString(), QString(), QString(), QString(), u"0.00"_s,
                                      u"0.00"_s, u"25"_s,   u"-"_s,    QString()};
/// The details of the first of the three products.
inline const QStringList kOljeDetails{u"A1"_s,     u"Olje"_s, u"Diverse"_s, u"stk"_s, u" 10,00"_s,
                                      u" 20,00"_s, u"25,0"_s, u"-"_s,       u"1"_s};
/// The label until the first change of tab.
inline const QString kOpeningLabel =
    u"Oversikt over produkter, dobbeltklikk eller merk linje og klikk endre for å redigere et produkt. "_s;

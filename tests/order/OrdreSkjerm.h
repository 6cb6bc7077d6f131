#pragma once

#include "order/frmOrdre.h"
#include "support/ScreenHands.h"
#include "support/SettingsFolder.h"
#include "support/StandingClock.h"
#include "support/UnderlagTest.h"

#include <QLineEdit>

/// Answers every message box that comes up while it lives, and keeps what was said.
class Meldinger : public QObject
{
    Q_OBJECT

public:
    Meldinger();

    /// The number of the button that is pressed in a box that has it; OK or No in the others.
    int svar = 0;
    /// The texts of the boxes so far.
    QStringList tekster;
    /// Their icons, as QMessageBox::Icon.
    QList<int> ikoner;
    /// The object names of the buttons that Enter would have pressed.
    QStringList standardknapper;

    QStringList ta() { return std::exchange(tekster, {}); }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
};

/// What a test stores as an order; the rest of the row has values of its own.
struct Ordrerad
{
    int ordreNr = 1;
    QString status = QStringLiteral("Ordre");
    QString kundeNavn = QStringLiteral("Kunde AS");
    QString sumBrutto = QStringLiteral("125");
    bool betalt = false;
    bool medLinje = true; ///< one line: product P1, 1 piece of 100 with 25 percent
};

/// The order screen in a started module of client 5 in 2014, on the database of this test program:
/// customers 10001 and 10002, product P1, postal codes 0150 and 7010. The clock stands at 9 March
/// 2014.
class OrdreSkjerm : public UnderlagTest
{
protected:
    OrdreSkjerm();
    void TearDown() override;

    // The order screen's hands and eyes under names of their own, since other screens are driven
    // beside it.
    using Bilde = ScreenHands<frmOrdre>;
    static void apne() { Bilde::open(); }
    [[nodiscard]] static frmOrdre *skjerm() { return Bilde::screen(); }
    template<class Control = QWidget>
    static Control *control(const QString &name)
    {
        return &Bilde::control<Control>(name);
    }
    static QLineEdit *felt(int nr)
    {
        return control<QLineEdit>(QStringLiteral("txtFields_%1").arg(nr));
    }
    static QString tekst(int nr) { return felt(nr)->text(); }
    static bool erPaa(const QString &name) { return control(name)->isEnabled(); }
    /// Of btnPrint, btnCopy, btnNew, btnChange, btnSave and btnCancel: those that are enabled.
    static QStringList knapperPaa();
    static QString fokus() { return Bilde::focused(); }
    static void roFokus() { Bilde::settle(); }
    static void klikk(const QString &name)
    {
        skjerm()->activateWindow();
        Bilde::settle();
        Bilde::press(name);
    }
    /// Gives the field the focus as a user does.
    static void gaTil(int nr);
    /// Types over the field's text and stays in it.
    static void skriv(int nr, const QString &text);
    static void tast(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        Bilde::key(key, modifiers);
    }
    static QString celle(int col, int row) { return Bilde::at(col, row); }

    /// Stores an order; returns its ID.
    int leggOrdre(const Ordrerad &rad);
    void leggLinje(int ordreID, int posNr, const QString &produktNr, const QString &antall,
                   const QString &pris);

    SettingsFolder innstillinger;
    StandingClock klokke;
    Meldinger meldinger;
};

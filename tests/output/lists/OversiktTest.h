#pragma once

#include "order/OrdreSkjerm.h"
#include "output/lists/frmOrdreSkriv.h"
#include "output/lists/frmOversikt.h"
#include "platform/forms/Forms.h"
#include "platform/grid/fpSpread.h"
#include "support/Control.h"

#include <QAbstractButton>

/// An order as the overview and the lists see it; the texts are SQL literals.
struct Oversiktsrad
{
    int nr = 1;
    QString kundeNr = QStringLiteral("10001");
    QString navn = QStringLiteral("'Ås Pukk AS'");
    QString fakDato = QStringLiteral("#03/09/2014#");
    QString forfall = QStringLiteral("#03/23/2014#");
    QString brutto = QStringLiteral("125");
    QString status = QStringLiteral("'Ordre'");
    int klient = 5;
};

/// The two screens in a started module of client 5 in 2014, with the clock at 9 March 2014.
class OversiktTest : public OrdreSkjerm
{
protected:
    /// Stores an order; returns its ID.
    int legg(const Oversiktsrad &rad)
    {
        run(QStringLiteral("INSERT INTO Ordre (KlientNr,OrdreNr,KundeNr,KundeNavn,OrdreDato,"
                           "FakDato,ForfallDato,SumBrutto,OrdreStatus) "
                           "VALUES (%1,%2,%3,%4,%5,%5,%6,%7,%8)")
                .arg(rad.klient)
                .arg(rad.nr)
                .arg(rad.kundeNr, rad.navn, rad.fakDato, rad.forfall, rad.brutto, rad.status));
        return rows(QStringLiteral("SELECT Max(ID) FROM Ordre")).value(0).toInt();
    }

    static frmOversikt *oversikt() { return SharedForm<frmOversikt>::existing(); }
    static frmOrdreSkriv *liste() { return SharedForm<frmOrdreSkriv>::existing(); }

    template<class Screen>
    static void show()
    {
        SharedForm<Screen>::get().show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(SharedForm<Screen>::existing()));
        runEvents();
    }
    template<class Control = QWidget>
    static Control *in(Form *form, const QString &name)
    {
        return &controlOf<Control>(form, name);
    }
    static void click(QWidget *control)
    {
        QTest::mouseClick(control, Qt::LeftButton);
        runEvents();
    }
};

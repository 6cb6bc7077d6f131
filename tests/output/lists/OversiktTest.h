#pragma once

#include "order/OrdreSkjerm.h"
#include "output/lists/frmOrdreSkriv.h"
#include "output/lists/frmOversikt.h"
#include "support/ScreenHands.h"

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

    static frmOversikt *oversikt() { return ScreenHands<frmOversikt>::screen(); }
    static frmOrdreSkriv *liste() { return ScreenHands<frmOrdreSkriv>::screen(); }
};

#pragma once

#include "order/OrdreMedLinjer.h"
#include "platform/ado/Connection.h"
#include "platform/ado/SessionPool.h"
#include "presentation/screens/frmTMsgBox.h"
#include "support/SessionTap.h"

#include <QLabel>

using namespace Qt::StringLiterals;

/// The order screen with an order that is ready to be saved.
class OrdreTilLagring : public OrdreMedLinjer
{
protected:
    /// The box that a failed save brings up; the text behind the colon has been read by then.
    const QString feilet = u"Lagring feilet, feil: "_s;
    /// What a save leaves of the buttons, whatever became of it.
    const QStringList knapperEtterLagring{u"btnPrint"_s, u"btnCopy"_s, u"btnChange"_s};

    /// New mode with a header and a line of two P1, entered by keys.
    void nyOrdre()
    {
        apne();
        klikk(u"btnNew"_s);
        skriv(ordrefelt::kKundeNr, u"10001"_s);
        skriv(ordrefelt::kKundeNavn, u"Kunde AS"_s);
        skriv(ordrefelt::kFakPostNr, u"0150"_s);
        skrivLinje(1, u"P1"_s, u"2"_s);
    }
    /// Change mode on an order of three lines; returns its ID.
    int endreOrdre()
    {
        const int id = leggOrdre({.ordreNr = 1, .sumBrutto = u"375"_s, .medLinje = false});
        for (int i = 1; i <= 3; ++i)
            leggLinje(id, i * 10, u"P%1"_s.arg(i), QString::number(i), u"100"_s);
        apne();
        klikk(u"btnChange"_s);
        return id;
    }
    void lagre() { klikk(u"btnSave"_s); }
    /// The second click comes while the note stands.
    void lagreMedDobbeltklikk()
    {
        QWidget *save = control(u"btnSave"_s);
        const auto click = [save] { QTest::mouseClick(save, Qt::LeftButton); };
        QMetaObject::invokeMethod(save, click, Qt::QueuedConnection);
        click();
        roFokus();
    }
    /// Gives the open connection a new session, which a tap can hear.
    void koblePaaNytt()
    {
        gConn.reset();
        ado::SessionPool::shared().clear();
        connect();
    }
    /// The text of the note on the screen; empty without one.
    static QString notat()
    {
        const frmTMsgBox *note = SharedForm<frmTMsgBox>::existing();
        return note && note->isVisible() ? note->findChild<QLabel *>(u"Label1"_s)->text()
                                         : QString();
    }
    QStringList headers() { return rows(u"SELECT OrdreNr,KundeNavn FROM Ordre ORDER BY ID"_s); }
    QStringList lines()
    {
        return rows(u"SELECT OrdreID,PosNr,ProduktNr,ProduktNavn,Antall,Pris,RabattPst,RabattKr,"
                    u"MvaPst,SumNetto,SumBrutto FROM OrdreLinjer ORDER BY OrdreID,PosNr"_s);
    }
    /// The ID that the screen hands to the print dialog.
    static QString utskriftsID()
    {
        QString id;
        frmOrdre::settUtskriftApner([&](const OrdreUtskrift &utskrift) { id = utskrift.fakID; });
        klikk(u"btnPrint"_s);
        frmOrdre::settUtskriftApner({});
        return id;
    }
};

#include "order/OrdreSkjerm.h"

#include "data/clsAdoUtils.h"
#include "shell/component/frmRegningsdel.h"
#include "state/SharedState.h"

#include <QMessageBox>
#include <QPushButton>

using namespace Qt::StringLiterals;

Meldinger::Meldinger()
{
    qApp->installEventFilter(this);
}

bool Meldinger::eventFilter(QObject *watched, QEvent *event)
{
    auto *box = event->type() == QEvent::Show ? qobject_cast<QMessageBox *>(watched) : nullptr;
    if (!box)
        return false;
    tekster += box->text();
    ikoner += box->icon();
    standardknapper += box->defaultButton() ? box->defaultButton()->objectName() : QString();
    QMetaObject::invokeMethod(
        box,
        [this, box] {
            for (const int nr : {svar, 1, 7}) {
                if (auto *button = box->findChild<QPushButton *>(u"button%1"_s.arg(nr))) {
                    button->click();
                    return;
                }
            }
            // The question of a file dialog has the toolkit's own buttons.
            if (QAbstractButton *yes = box->button(QMessageBox::Yes); yes && svar == 6) {
                yes->click();
                return;
            }
            ADD_FAILURE() << "no answer for: " << box->text().toStdString();
            box->reject();
        },
        Qt::QueuedConnection);
    return false;
}

OrdreSkjerm::OrdreSkjerm()
{
    makeParentTables();
    run(u"INSERT INTO Klient (KlientNr,Navn,PostNr,TlfArbeid,OrganisasjonsNr,Giro1) "
        u"VALUES (5,'Transport AS','0150','22334455','987654321','12345678903')"_s);
    run(u"INSERT INTO Poststed (PostNr,PostSted) VALUES ('0150','OSLO')"_s);
    run(u"INSERT INTO Poststed (PostNr,PostSted) VALUES ('7010','TRONDHEIM')"_s);
    for (const QString &kunde : {u"10001,'Kunde AS','Gate 1','Bakgården','0150',14"_s,
                                 u"10002,'Nord AS','Vei 2','','7010',30"_s}) {
        run(u"INSERT INTO KundeLev (KlientNr,KundeNr,Navn,Adr1,Adr2,PostNr,BetBet) VALUES (5,"_s +
            kunde + u")"_s);
    }
    EXPECT_EQ(startModule(), 1);
    SharedForm<frmRegningsdel>::get().unload();
    // What the start has left there of the columns that it could not add.
    (void)gDB->LastError();
    run(u"INSERT INTO Produkt (KlientNr,ProduktNr,ProduktNavn,UtPris,MvaSats,BruttoPris) "
        u"VALUES (5,'P1','Frakt',100,25,0)"_s);
    runEvents();
}

void OrdreSkjerm::TearDown()
{
    unloadForms();
    runEvents();
    frmOrdre::settUtskriftApner({});
    EXPECT_EQ(meldinger.ta(), QStringList()) << "not looked at by the test";
}

QStringList OrdreSkjerm::knapperPaa()
{
    QStringList names;
    for (const QString &name :
         {u"btnPrint"_s, u"btnCopy"_s, u"btnNew"_s, u"btnChange"_s, u"btnSave"_s, u"btnCancel"_s}) {
        if (erPaa(name))
            names += name;
    }
    return names;
}

void OrdreSkjerm::gaTil(int nr)
{
    klikk(u"txtFields_%1"_s.arg(nr));
}

void OrdreSkjerm::skriv(int nr, const QString &text)
{
    gaTil(nr);
    ASSERT_EQ(skjerm()->focusWidget(), felt(nr));
    hands::typeOver(*felt(nr), text);
}

int OrdreSkjerm::leggOrdre(const Ordrerad &rad)
{
    run(u"INSERT INTO Ordre "
        u"(KlientNr,OrdreNr,OrdreStatus,Betalt,EgenRef,DeresRef,KundeNr,KundeNavn,"
        u"FakAdresse1,FakAdresse2,FakPostNr,FakPoststed,LevAdresse1,LevAdresse2,LevPostNr,"
        u"LevPoststed,KID,BetBet,OrdreDato,FakDato,ForfallDato,LevDato,RabattPst,MvaKr,SumNetto,"
        u"SumBrutto,Avrunding) VALUES (5,%1,'%2',%3,'Kari','Ola',10001,'%4','Gate 1','Bakgården',"
        u"'0150','OSLO','Kai 3','Port 4','7010','TRONDHEIM','0000018',14,#03/01/2014#,#03/02/2014#,"
        u"#03/16/2014#,#03/03/2014#,0,25,100,%5,0)"_s.arg(rad.ordreNr)
            .arg(rad.status)
            .arg(int(rad.betalt))
            .arg(rad.kundeNavn, rad.sumBrutto));
    const int id = rows(u"SELECT Max(ID) FROM Ordre"_s).value(0).toInt();
    if (rad.medLinje)
        leggLinje(id, 10, u"P1"_s, u"1"_s, u"100"_s);
    return id;
}

void OrdreSkjerm::leggLinje(int ordreID, int posNr, const QString &produktNr, const QString &antall,
                            const QString &pris)
{
    run(u"INSERT INTO OrdreLinjer (OrdreID,PosNr,ProduktNr,ProduktNavn,Antall,Pris,RabattPst,"
        u"RabattKr,MvaPst,SumNetto,SumBrutto) VALUES (%1,%2,'%3','Frakt',%4,%5,0,0,25,100,125)"_s
            .arg(ordreID)
            .arg(posNr)
            .arg(produktNr, antall, pris));
}

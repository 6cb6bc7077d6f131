#pragma once

#include "data/clsAdoUtils.h"
#include "output/printing/UtskriftTest.h"
#include "output/printing/frmUtskrift.h"
#include "shell/settings/clsRegSettings.h"
#include "state/SharedState.h"
#include "support/ScreenHands.h"
#include "support/SessionTap.h"

#include <QCheckBox>
#include <QRadioButton>
#include <QRegularExpression>

/// The print dialog as the order screen opens it, driven by mouse and keyboard.
class FrmUtskriftTest : public UtskriftTest
{
protected:
    FrmUtskriftTest()
    {
        skrivere.standardnavn = QStringLiteral("Kontor");
        // What an EHF document must have.
        run(QStringLiteral(
            "UPDATE Klient SET Adr1='Postboks 1',Adr2='Havnegata 2' WHERE KlientNr=5"));
        run(QStringLiteral("UPDATE Produkt SET Enhet='stk' WHERE KlientNr=5"));
    }

    using Dialog = ScreenHands<frmUtskrift>;
    static frmUtskrift *dialog() { return Dialog::screen(); }
    template<class Control>
    static Control *i(const QString &name)
    {
        return &Dialog::control<Control>(name);
    }
    static QRadioButton *original() { return i<QRadioButton>(QStringLiteral("optType_1")); }
    static QRadioButton *kopi() { return i<QRadioButton>(QStringLiteral("optType_0")); }
    static QCheckBox *ehf() { return i<QCheckBox>(QStringLiteral("chkEHF")); }
    static QString felttekst(const QString &name) { return i<QLineEdit>(name)->text(); }
    static void klikkI(const QString &name) { Dialog::press(name); }
    static void merk(QAbstractButton *valg) { hands::click(*valg); }
    static void skrivI(const QString &name, const QString &text)
    {
        hands::typeOver(*i<QLineEdit>(name), text);
    }

    /// The order screen on the one order, and the dialog that its button opens.
    void aapneFor(const Ordrerad &rad)
    {
        leggOrdre(rad);
        aapne();
    }
    void aapne()
    {
        apne();
        klikk(QStringLiteral("btnPrint"));
        ASSERT_NE(dialog(), nullptr);
    }
    /// "Skriv", with an answer to the printer dialog.
    void skrivUt(int eksemplarer = 1, const QString &skriver = QStringLiteral("Kontor"))
    {
        onNextModal<QDialog>([=](QDialog &d) { svarMedSkriver(d, skriver, eksemplarer); });
        klikkI(QStringLiteral("OKButton"));
    }
    void avbrytSkriveren()
    {
        onNextModal<QDialog>([](QDialog &d) { QTest::keyClick(&d, Qt::Key_Escape); });
        klikkI(QStringLiteral("OKButton"));
    }
    void skrivEhf(const QString &navn)
    {
        onNextModal<QFileDialog>([=, this](QFileDialog &d) { svarMedFil(d, fil(navn)); });
        klikkI(QStringLiteral("OKButton"));
    }
    static void innstill(const QString &key, const QString &verdi)
    {
        gReg->SaveSetting(QStringLiteral("Regningsdel"), key, verdi);
    }
    QStringList statuser()
    {
        return rows(QStringLiteral("SELECT KlientNr,OrdreNr,OrdreStatus FROM Ordre ORDER BY ID"));
    }
    /// The statements that change data while `utfor` runs.
    QStringList endringer(const std::function<void()> &utfor)
    {
        SessionTap tap;
        ado::SessionPool::shared().clear();
        utfor();
        return tap.statements().filter(
            QRegularExpression(QStringLiteral("^(UPDATE|INSERT|DELETE)")));
    }
    /// What "Skriv" hands to the report control, which keeps it when the data cannot be read.
    struct Overlevert
    {
        QString rapport;
        QString utvalg;
        QString type;
        QString note;
    };
    Overlevert overlevert()
    {
        innstill(QStringLiteral("PrintVis"), QStringLiteral("1"));
        const QString forbindelse = gDB->ConnectionString();
        gDB->setConnectionString(QStringLiteral("dsn=/finnes/ikke.db"));
        klikkI(QStringLiteral("OKButton"));
        gDB->setConnectionString(forbindelse);
        EXPECT_TRUE(meldinger.ta().value(0).startsWith(QStringLiteral("CRP: ")));
        const CrystalReport *k = kontroll();
        return {k->reportFileName().section(u'\\', -1), k->selectionFormula(), k->formula(0),
                k->formula(1)};
    }
};

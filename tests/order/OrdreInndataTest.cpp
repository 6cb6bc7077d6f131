#include "order/OrdreTilLagring.h"
#include "shell/component/frmRegningsdel.h"
#include "shell/settings/clsRegSettings.h"

#include <QClipboard>
#include <QMessageBox>

using namespace linjekolonne;
namespace hode = ordrefelt;

namespace {

const QString kTypefeil = u"Kjørefeil 13:\n\nTypene stemmer ikke overens\n"_s;
const QString kFeilDager =
    kTypefeil + u"Betalingsbet.: skriv antall dager med siffer, for eksempel 14."_s;
const QString kFeilDato =
    kTypefeil + u"Faktura dato: skriv datoen som dd.mm.åååå, for eksempel 31.12.2014."_s;
const QString kOverflyt = u"Kjørefeil 6:\n\nOverflyt"_s;

/// What is typed, and what comes of it.
struct Tilfelle
{
    QString typed;
    QString result;  ///< empty for nothing
    QString message; ///< empty for none
};

/// What users do that nobody has thought of: keys alone, pasted text, numbers and dates of any
/// kind, and windows that go away in the middle of something.
class OrdreInndataTest : public OrdreTilLagring
{
protected:
    /// A key for whatever has the focus, in any window.
    static void trykk(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
        roFokus();
    }
    static void lim(const QString &text)
    {
        QGuiApplication::clipboard()->setText(text);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_V, Qt::ControlModifier);
    }
    /// The header's sums: net, VAT, gross.
    static QString summer()
    {
        return QStringList{tekst(hode::kSumNetto), tekst(hode::kMvaKr), tekst(hode::kSumBrutto)}
            .join(u'|');
    }
};

/// Ends the session as soon as a message box is on the screen.
class Avlogger : public QObject
{
public:
    Avlogger() { qApp->installEventFilter(this); }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Show && qobject_cast<QMessageBox *>(watched))
            QMetaObject::invokeMethod(this, &Avlogger::loggAv, Qt::QueuedConnection);
        return false;
    }

private:
    static void loggAv()
    {
        Forms::instance().logOff();
        // As the event loop of the box does it.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
};

TEST_F(OrdreInndataTest, AnOrderIsEnteredFromTheMenuByKeysAlone)
{
    for (const QString &key : {u"KIDaktivert"_s, u"KIDoppbygning"_s})
        gReg->SaveSetting(u"Regningsdel"_s, key, u"1"_s);
    SharedForm<frmRegningsdel>::get().show();
    roFokus();
    while (QApplication::focusWidget()->objectName() != u"Command3")
        trykk(Qt::Key_Tab);
    trykk(Qt::Key_Space);
    // The menu has put itself in front of what it has opened.
    skjerm()->activateWindow();
    roFokus();

    trykk(Qt::Key_N, Qt::AltModifier);
    ASSERT_TRUE(QTest::qWaitFor([] { return erPaa(u"btnSave"_s); }));
    trykk(Qt::Key_Tab);
    ASSERT_EQ(fokus(), u"cmdKunder"_s);
    onNextModal<Form>([](Form &) {
        runEvents();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    });
    trykk(Qt::Key_Space);
    EXPECT_EQ(tekst(hode::kKundeNavn), u"Nord AS"_s);
    EXPECT_FALSE(tekst(hode::kKID).startsWith(u"010002")) << "the number has not been left yet";
    trykk(Qt::Key_Backtab, Qt::ShiftModifier);
    trykk(Qt::Key_Tab);
    const QString kid = tekst(hode::kKID);
    EXPECT_TRUE(kid.startsWith(u"010002000001")) << kid.toStdString();
    for (int keys = 0; fokus() != u"vaSpread1" && keys < 40; ++keys)
        trykk(Qt::Key_Tab);
    tastInn(u"P1"_s);
    gridtast(Qt::Key_Tab);
    tastInn(u"3"_s);
    trykk(Qt::Key_L, Qt::AltModifier); // straight out of the open cell
    ASSERT_TRUE(QTest::qWaitFor([] { return !notat().isEmpty(); }));
    EXPECT_EQ(rows(u"SELECT KundeNr,KundeNavn,KID,ForfallDato,SumBrutto FROM Ordre"_s),
              QStringList{u"10002|Nord AS|%1|08.04.2014|375"_s.arg(kid)});
    EXPECT_EQ(rows(u"SELECT PosNr,ProduktNr,Antall,SumBrutto FROM OrdreLinjer"_s),
              QStringList{u"10|P1|3|375"_s});
}

// --- Text

TEST_F(OrdreInndataTest, PastedLinesBecomeOne)
{
    nyOrdre();
    skriv(hode::kKundeNavn, u"AS"_s);
    felt(hode::kKundeNavn)->home(false);
    lim(u"En\r\nto\ntre\tfire "_s);
    EXPECT_EQ(tekst(hode::kKundeNavn), u"En to tre fire AS"_s);
    QTest::keyClicks(felt(hode::kKundeNavn), u"x"_s);
    EXPECT_EQ(tekst(hode::kKundeNavn), u"En to tre fire xAS"_s) << "the cursor is behind the text";
    lagre();
    EXPECT_EQ(headers(), QStringList{u"1|En to tre fire xAS"_s});
}

TEST_F(OrdreInndataTest, ALongTextIsCutToItsColumnAndShownFromItsBeginning)
{
    nyOrdre();
    skriv(hode::kKundeNavn, {});
    lim(QString(5000, u'x'));
    lagre();
    skjerm()->unload();
    runEvents();
    apne();
    EXPECT_EQ(tekst(hode::kKundeNavn), QString(40, u'x'));
    EXPECT_EQ(felt(hode::kKundeNavn)->cursorPosition(), 0);
}

TEST_F(OrdreInndataTest, StatementsTypedAsTextDoNothing)
{
    nyOrdre();
    skriv(hode::kKundeNavn, u"a'); DELETE FROM Produkt; --"_s);
    lagre();
    EXPECT_EQ(meldinger.ta(), QStringList{feilet});
    EXPECT_EQ(rows(u"SELECT COUNT (*) FROM Produkt"_s), QStringList{u"1"_s});
}

// --- Numbers

TEST_F(OrdreInndataTest, QuantitiesOfAnyKind)
{
    const struct
    {
        QString typed;
        QString shown;
        QString sums;
    } kSaker[] = {
        {u"-0"_s, u"0,00"_s, u" 0,00| 0,00| 0,00"_s},
        {u"1,25"_s, u"1,25"_s, u" 125,00| 31,25| 156,25"_s},
        {u",5"_s, u"0,50"_s, u" 50,00| 12,50| 62,50"_s},
        {u"5,"_s, u"5,00"_s, u" 500,00| 125,00| 625,00"_s},
        {u"1 000"_s, u"1 000,00"_s, u"100 000,00|25 000,00|125 000,00"_s},
        {u"--1"_s, u"1 000,00"_s, u"100 000,00|25 000,00|125 000,00"_s}, // no number: as it was
        {u"-3"_s, u"-3,00"_s, u"- 300,00|- 75,00|- 375,00"_s},
    };
    nyOrdre();
    for (const auto &sak : kSaker) {
        skrivCelle(kAntall, 1, sak.typed);
        EXPECT_EQ(celle(kAntall, 1), sak.shown) << sak.typed.toStdString();
        EXPECT_EQ(summer(), sak.sums) << sak.typed.toStdString();
    }
}

TEST_F(OrdreInndataTest, ALineBeyondAllAmountsKeepsItsSumsAndAddsNothing)
{
    nyOrdre();
    skrivCelle(kAntall, 1, u"99999999999999"_s);
    EXPECT_EQ(celle(kSumNetto, 1), u" 200,00"_s);
    EXPECT_EQ(celle(kSumBrutto, 1), u" 250,00"_s);
    EXPECT_EQ(summer(), u" 0,00| 0,00| 0,00"_s);
    lagre();
    EXPECT_EQ(meldinger.ta(), QStringList{u"Feil som må rettes før ordren kan lagres:\n"
                                          "fakturasum kan ikke være 0\n"_s});
}

TEST_F(OrdreInndataTest, CustomerNumbersOfAnyKind)
{
    const QString ukjent = u"Feil som må rettes før ordren kan lagres:\n"
                           "ugyldig/manglende kundenummer\n"_s;
    const struct
    {
        QString typed;
        QString message; ///< empty for none
        QString stored;  ///< empty when nothing is
    } kSaker[] = {
        {u" 10001 "_s, {}, u"10001"_s},    {u"123456789"_s, ukjent, {}},
        {u"99999999999"_s, ukjent, {}},    {u"-1"_s, ukjent, {}},
        {u"10001 OR 1=1"_s, {}, u"0"_s}, // the condition takes the text as it stands
        {u"10 001"_s, feilet, u"10001"_s},
    };
    for (const auto &sak : kSaker) {
        nyOrdre();
        skriv(hode::kKundeNr, sak.typed);
        lagre();
        EXPECT_EQ(meldinger.ta().join(QString()), sak.message) << sak.typed.toStdString();
        EXPECT_EQ(rows(u"SELECT KundeNr FROM Ordre"_s).join(QString()), sak.stored)
            << sak.typed.toStdString();
        run(u"DELETE FROM OrdreLinjer"_s);
        run(u"DELETE FROM Ordre"_s);
        skjerm()->unload();
        runEvents();
    }
}

TEST_F(OrdreInndataTest, DaysOfPaymentOfAnyKind)
{
    const Tilfelle kSaker[] = {
        {u"-5"_s, u"04.03.2014"_s, {}},
        {u" 14 "_s, u"23.03.2014"_s, {}},
        {u"14,9"_s, u"23.03.2014"_s, {}},
        {u"32768"_s, u"26.11.2103"_s, {}},
        {u"14.9"_s, u"26.11.2103"_s, kFeilDager},
        {u"3000000"_s, u"26.11.2103"_s, kOverflyt},
        {u"99999999999999999999"_s, u"26.11.2103"_s, kOverflyt},
    };
    apne();
    klikk(u"btnNew"_s);
    for (const auto &sak : kSaker) {
        skriv(hode::kBetBet, sak.typed);
        tast(Qt::Key_Tab);
        EXPECT_EQ(tekst(hode::kForfallDato), sak.result) << sak.typed.toStdString();
        EXPECT_EQ(meldinger.ta().join(QString()), sak.message) << sak.typed.toStdString();
    }
}

// --- Dates

TEST_F(OrdreInndataTest, InvoiceDatesOfAnyKind)
{
    const Tilfelle kSaker[] = {
        {u"29.2.2016"_s, u"14.03.2016"_s, {}},
        {u"29.2.2015"_s, u"14.03.2016"_s, kFeilDato},
        {u"1/2/14"_s, u"15.02.2014"_s, {}},
        {u"2014-12-31"_s, u"14.01.2015"_s, {}},
        {u"31.12.9999"_s, u"14.01.2015"_s, kOverflyt},
        {u"1.13.2014"_s, u"14.01.2015"_s, kFeilDato},
        {u""_s, u"14.01.2015"_s, kFeilDato},
    };
    apne();
    klikk(u"btnNew"_s);
    skriv(hode::kBetBet, u"14"_s);
    for (const auto &sak : kSaker) {
        skriv(hode::kFakDato, sak.typed);
        tast(Qt::Key_Tab);
        EXPECT_EQ(tekst(hode::kForfallDato), sak.result) << sak.typed.toStdString();
        EXPECT_EQ(meldinger.ta().join(QString()), sak.message) << sak.typed.toStdString();
        EXPECT_EQ(fokus() == u"vaSpread1", sak.message.isEmpty()) << sak.typed.toStdString();
    }
}

TEST_F(OrdreInndataTest, TheLastDayOfAllIsStored)
{
    nyOrdre();
    skriv(hode::kLevDato, u"31.12.9999"_s);
    skriv(hode::kOrdreDato, u"29.2.2012"_s);
    lagre();
    EXPECT_EQ(rows(u"SELECT LevDato,OrdreDato FROM Ordre"_s),
              QStringList{u"31.12.9999|29.02.2012"_s});
}

// --- Windows that go away

TEST_F(OrdreInndataTest, WhatCannotBeLeftKeepsNobodyFromClosing)
{
    const std::pair<int, QString> kUmulige[] = {
        {hode::kFakDato, u"snart"_s}, {hode::kBetBet, u"x"_s}, {hode::kFakPostNr, u"01'50"_s}};
    for (const auto &[nr, text] : kUmulige) {
        for (const bool byKey : {true, false}) {
            apne();
            klikk(u"btnNew"_s);
            skriv(nr, text);
            if (byKey)
                tast(Qt::Key_Escape);
            else
                skjerm()->close();
            runEvents();
            EXPECT_EQ(skjerm(), nullptr) << nr;
            EXPECT_EQ(meldinger.ta(), QStringList()) << nr;
        }
    }
}

TEST_F(OrdreInndataTest, EscapeInAnOpenListClosesTheListOnly)
{
    nyOrdre();
    klikkCelle(kPris, 1);
    klikkCelle(kProduktNr, 1);
    ASSERT_NE(QApplication::activePopupWidget(), nullptr);
    QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Escape);
    runEvents();
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    ASSERT_NE(skjerm(), nullptr);
    EXPECT_EQ(celle(kProduktNr, 1), u"P1"_s);
}

TEST_F(OrdreInndataTest, TheSessionMayEndWhileAnErrorOfAFieldIsShown)
{
    for (const bool byMouse : {false, true}) {
        apne();
        klikk(u"btnNew"_s);
        skriv(hode::kBetBet, u"x"_s);
        const QPointer<frmOrdre> screen = skjerm();
        const Avlogger avlogger;
        if (byMouse)
            QTest::mousePress(control(u"vaSpread1"_s), Qt::LeftButton);
        QTest::keyClick(skjerm()->focusWidget(), Qt::Key_Tab);
        runEvents();
        EXPECT_EQ(meldinger.ta(), QStringList{kFeilDager});
        EXPECT_EQ(screen, nullptr);
    }
}

} // namespace

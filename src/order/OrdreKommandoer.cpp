#include "order/OrdreKommandoer.h"

#include "data/clsAdoUtils.h"
#include "data/mFaktura.h"
#include "order/OrdreFelter.h"
#include "order/OrdreHode.h"
#include "order/OrdreKnapper.h"
#include "order/OrdreLager.h"
#include "order/OrdreLinjer.h"
#include "platform/forms/Forms.h"
#include "platform/forms/MsgBox.h"
#include "registers/customers/frmKunder.h"
#include "rules/Innstilling.h"
#include "rules/Ordre.h"
#include "rules/SjekkKlient.h"
#include "runtime/Clock.h"
#include "runtime/Conversions.h"
#include "runtime/Format.h"
#include "state/SharedState.h"
#include "ui_frmOrdre.h"

#include <QPointer>

using namespace Qt::StringLiterals;
using namespace ordrefelt;

namespace {

const QString kSeKundene = u"Klikk for å se kundene"_s;

/// The number that a new order shows.
QString visningsNr()
{
    qint32 forste = 0;
    if (gDB->GetCount(u"Ordre"_s, klientVilkar()) == 0) {
        passOver([&] { forste = HentFelt(u"FirstFakNr"_s, u"Klient"_s, klientVilkar()).toLong(); });
    }
    return QString::number(forste > 1 ? forste : NyttOrdreNr());
}

} // namespace

OrdreKommandoer::OrdreKommandoer(const OrdreRom &rom, OrdreKnapper &knapper, OrdreHode &hode,
                                 OrdreLinjer &linjer, OrdreLager &lager)
    : OrdreRom(rom), m_knapper(knapper), m_hode(hode), m_linjer(linjer), m_lager(lager)
{
}

void OrdreKommandoer::aktiver()
{
    if (m_tilstand.InnID < 1)
        m_tilstand.InnID = 0;
    m_hode.settGrenser();
    if (!m_tilstand.iModus()) {
        const OrdreLinjer::FellesProduktliste felles(m_linjer);
        passOver([this] { m_lager.LesOrdre(m_tilstand.InnID); });
        passOver([this] { m_lager.VisOrdre(); });
        cmdLast_Click();
    }
    if (m_tilstand.InnID > 0) {
        m_knapper.SettNavigering(false);
        m_knapper.skjulNavigering();
    }
    // In a mode as well: after the list of customers saving and closing are left.
    m_ui.btnCancel->setEnabled(false);

    const bool avrunder =
        enters([] { return leadingNumber(LesInnstilling(u"Avrunding"_s, u"0"_s)) != 0; });
    QLineEdit &felt = m_felter[kAvrunding];
    m_ui.Label5->setEnabled(avrunder);
    felt.setEnabled(avrunder);
    QPalette farger;
    if (!avrunder)
        farger.setColor(QPalette::Base, felt.palette().color(QPalette::Button));
    felt.setPalette(farger);
}

void OrdreKommandoer::btnNew_Click()
{
    m_tilstand.settModus(OrdreModus::Ny);
    m_ui.cmdKunder->setToolTip(kSeKundene);
    m_knapper.SettNavigering(false);
    m_knapper.SettKnapper({.lagre = true});
    passOver([this] { TomSkjema(); });
    passOver([this] { m_felter.settTekst(kOrdreNr, visningsNr()); });
    passOver([this] { settDagens(); });
    m_ui.vaSpread1->setTabStop(true);
    gridIBruk();
    passOver([this] { visAarvarsel(); });
    QString mangler;
    passOver([&] { mangler = SjekkKlient(); });
    if (!mangler.isEmpty()) {
        MsgBox(u"Det er ufullstendig informasjon på klienten,\r\n"
               "den bør rettes før ordre registreres:\r\n\r\n"_s +
                   mangler + u"\r\n\r\nOppdateres i Klient ajourhold i Strekkbok.\r\n"_s,
               msgbox::kExclamation);
    }
}

void OrdreKommandoer::btnCopy_Click()
{
    if (m_tilstand.iModus())
        return;
    m_tilstand.settModus(OrdreModus::Ny);
    m_knapper.SettNavigering(false);
    m_knapper.SettKnapper({.lagre = true});
    m_felter.settTekst(kOrdreNr, QString::number(NyttOrdreNr()));
    settDagens();
    // The KID is the copied order's until this field is left.
    tilKundeNr();
}

void OrdreKommandoer::btnChange_Click()
{
    if (!KanEndres(m_felter.tekst(kOrdreStatus)))
        return;
    m_tilstand.settModus(OrdreModus::Endre);
    m_ui.cmdKunder->setToolTip(kSeKundene);
    for (int nr = 0; nr < kSumNetto; ++nr)
        m_felter[nr].setEnabled(true);
    m_ui.vaSpread1->setTabStop(true);
    tilKundeNr();
    m_knapper.SettNavigering(false);
    m_knapper.SettKnapper({.lagre = true});
    gridIBruk();
    visAarvarsel();
}

void OrdreKommandoer::btnCancel_Click()
{
    if (m_tilstand.ErEndre()) {
        // The set is detached, so it needs a connection for the time of reading. It stands on its
        // first order afterwards, whichever was being changed.
        m_tilstand.rsOrdre->setActiveConnection(gDB->ConnectionString());
        m_tilstand.rsOrdre->requery();
        m_tilstand.rsOrdre->clearActiveConnection();
        m_lager.VisFelter();
        m_lager.VisOrdre();
        tilKundeNr();
        m_tilstand.settModus(OrdreModus::Visning);
    }
    if (m_tilstand.ErNy()) {
        TomSkjema();
        m_tilstand.settModus(OrdreModus::Visning);
    }
    m_knapper.SettNavigering(false);
    m_knapper.SettKnapper({.ny = true, .endre = m_tilstand.AktivID > 0});
    m_ui.btnCancel->setEnabled(false);
}

void OrdreKommandoer::btnPrint_Click(const UtskriftApner &apner)
{
    OrdreUtskrift utskrift;
    // Cut at a decimal comma, so a sum above -1 is none of a credit note.
    passOver([&] { utskrift.ErKreditnota = leadingNumber(m_felter.tekst(kSumBrutto)) < 0; });
    utskrift.fakID = QString::number(m_tilstand.AktivID);
    utskrift.fakNr = m_felter.tekst(kOrdreNr);
    utskrift.original =
        m_felter.tekst(kOrdreStatus) == ordrestatus::kOrdre || m_tilstand.TvingOriginal;
    m_tilstand.TvingOriginal = false;
    if (apner)
        passOver([&] { apner(utskrift); });
    m_ui.btnNew->setEnabled(true);
}

void OrdreKommandoer::chkBetalt_Click()
{
    if (!m_ui.chkBetalt->isChecked() || !KanMerkesBetalt(m_felter.tekst(kOrdreStatus)))
        return;
    // The screen may be closed while the question is up.
    const QPointer<QCheckBox> boks = m_ui.chkBetalt;
    int svar = answer::kNo;
    passOver([&] {
        svar = MsgBox(u"Vil du merke denne fakturaen som Betalt?"_s,
                      msgbox::kYesNo + msgbox::kQuestion + msgbox::kDefaultButton2);
    });
    if (svar != answer::kYes || !boks)
        return;
    passOver([this] {
        if (!gDB->Execute(BetaltSql(m_tilstand.rsOrdre->integer(u"ID"))))
            return;
        m_felter.settTekst(kOrdreStatus, ordrestatus::kBetalt.toString());
        m_ui.chkBetalt->setEnabled(false);
    });
}

void OrdreKommandoer::cmdFirst_Click()
{
    tilEnde(&ado::Recordset::moveFirst);
}

void OrdreKommandoer::cmdLast_Click()
{
    tilEnde(&ado::Recordset::moveLast);
}

void OrdreKommandoer::cmdNext_Click()
{
    if (enters([this] { return !m_tilstand.rsOrdre->eof(); }))
        passOver([this] { m_tilstand.rsOrdre->moveNext(); });
    visPost();
}

void OrdreKommandoer::cmdPrevious_Click()
{
    if (enters([this] { return !m_tilstand.rsOrdre->bof(); }))
        passOver([this] { m_tilstand.rsOrdre->movePrevious(); });
    visPost();
}

void OrdreKommandoer::cmdKunder_Click()
{
    if (!m_tilstand.iModus()) {
        m_ui.cmdKunder->setToolTip(u"Du må stå i Ny eller Endre -modus for å se kundene"_s);
        return;
    }
    m_ui.cmdKunder->setToolTip(kSeKundene);
    SharedForm<frmKunder>::get().velgFor(m_hode);
}

void OrdreKommandoer::imgAar_Click()
{
    if (!m_ui.imgAar->isVisible() || !enters([this] { return m_hode.erUtenforAar(); }))
        return;
    m_ui.imgAar->setToolTip(u"Ordredato ligger utenfor aktivt regnskapsår ("_s +
                            QString::number(gAar) + u") i Strekkbok!"_s);
}

void OrdreKommandoer::TomSkjema()
{
    m_hode.tomFelter();
    m_linjer.InitLinjer();
    tilKundeNr();
}

void OrdreKommandoer::tilEnde(void (ado::Recordset::*flytt)())
{
    passOver([&] { ((*m_tilstand.rsOrdre).*flytt)(); });
    passOver([this] { m_tilstand.lesAktivID(); });
    visPost();
}

/// Shows the record to which the set has moved.
void OrdreKommandoer::visPost()
{
    passOver([this] { m_lager.VisFelter(); });
    passOver([this] { m_lager.VisOrdre(); });
    tilKundeNr();
    m_knapper.SettNavigering(true);
}

/// What a new order and a copy start with. Error 13 when the days of payment are no number.
void OrdreKommandoer::settDagens()
{
    const QDate iDag = Clock::current().today();
    m_felter.settTekst(kOrdreStatus, ordrestatus::kOrdre.toString());
    for (const int nr : {kOrdreDato, kLevDato, kFakDato})
        m_felter.settTekst(nr, Format(iDag, u"dd.mm.yyyy"));
    m_felter.settTekst(kForfallDato, m_felter.forfallFra(iDag));
}

/// No command takes the warning away again. Error 13 when the order date is no date.
void OrdreKommandoer::visAarvarsel()
{
    if (m_hode.erUtenforAar())
        m_ui.imgAar->setVisible(true);
}

void OrdreKommandoer::gridIBruk()
{
    m_ui.vaSpread1->setEditModeReplace(true);
    m_ui.btnCancel->setEnabled(true);
}

void OrdreKommandoer::tilKundeNr()
{
    m_felter[kKundeNr].setFocus();
}

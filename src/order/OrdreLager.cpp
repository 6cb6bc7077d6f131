#include "order/OrdreLager.h"

#include "data/clsAdoUtils.h"
#include "data/mFaktura.h"
#include "order/OrdreFelter.h"
#include "order/OrdreKnapper.h"
#include "order/OrdreLinjer.h"
#include "presentation/spread/Radtekst.h"
#include "presentation/spread/mVASpread.h"
#include "rules/Ordre.h"
#include "runtime/Conversions.h"
#include "runtime/Format.h"
#include "state/SharedState.h"
#include "ui_frmOrdre.h"

using namespace Qt::StringLiterals;
using namespace ordrefelt;

namespace {

/// The fields from the first one to this are bound to the record.
constexpr int kSisteBundne = kAvrunding;

/// The text that a header field shows for its column.
QString hodetekst(const ado::Recordset &ordre, int nr)
{
    const int felt = ordre.fieldIndex(OrdreFelter::datafelt(nr));
    if (ordre.isNull(felt))
        return {};
    switch (nr) {
    case kSumNetto:
    case kMvaKr:
    case kSumBrutto:
        return Format(ordre.currency(felt), u"# ##0.00");
    case kAvrunding:
        return Format(ordre.currency(felt), u"0.00");
    default:
        return ordre.text(felt);
    }
}

} // namespace

OrdreLager::OrdreLager(const OrdreRom &rom, OrdreKnapper &knapper, OrdreLinjer &linjer)
    : OrdreRom(rom), m_knapper(knapper), m_linjer(linjer)
{
}

void OrdreLager::LesOrdre(qint32 innId)
{
    QString setning =
        u"SELECT ID,KlientNr,OrdreNr,OrdreStatus,Betalt,EgenRef,DeresRef,KundeNr,KundeNavn,"_s
        u"FakAdresse1,FakAdresse2,FakPostNr,FakPoststed,"_s
        u"LevAdresse1,LevAdresse2,LevPostNr,LevPoststed,KID,BetBet,OrdreDato,FakDato,ForfallDato,"_s
        u"LevDato,RabattPst,RabattKr,MvaKr,"_s
        u"SumNetto,SumBrutto,Avrunding,Kontrollsiffer FROM Ordre WHERE "_s +
        klientVilkar();
    if (innId > 0)
        setning += u" AND ID="_s + numberToText(innId);
    m_tilstand.rsOrdre = gDB->GetRS(setning, true);
    if (gDB->EmptyRS(m_tilstand.rsOrdre)) {
        m_tilstand.AktivID = 0;
        tomFelter();
        return;
    }
    const ado::Recordset &ordre = *m_tilstand.rsOrdre;
    passOver([this] { m_tilstand.lesAktivID(); });
    VisFelter();
    // The first order's, though another one shows next; a move does not ask again for the box.
    QString status;
    passOver([&] { status = ordre.text(u"OrdreStatus"); });
    m_ui.chkBetalt->setEnabled(KanMerkesBetalt(status));
    if (status != ordrestatus::kOrdre)
        m_ui.btnChange->setEnabled(false);
}

void OrdreLager::tomFelter()
{
    for (int nr = 0; nr <= kSisteBundne; ++nr)
        m_felter.settTekst(nr, {});
    m_ui.chkBetalt->setChecked(false);
}

void OrdreLager::VisFelter()
{
    if (gDB->EmptyRS(m_tilstand.rsOrdre))
        return;
    const ado::Recordset &ordre = *m_tilstand.rsOrdre;
    if (ordre.bof() || ordre.eof()) {
        tomFelter();
        return;
    }
    for (int nr = 0; nr <= kSisteBundne; ++nr)
        passOver([&] { m_felter.settTekst(nr, hodetekst(ordre, nr)); });
    bool betalt = false;
    passOver([&] { betalt = ordre.value(u"Betalt").toBoolean(); });
    m_ui.chkBetalt->setChecked(betalt);
}

void OrdreLager::VisOrdre()
{
    fpSpread &grid = *m_ui.vaSpread1;
    grid.setRedraw(false);
    m_linjer.InitLinjer();
    if (!gDB->EmptyRS(m_tilstand.rsOrdre)) {
        grid.setRedraw(false); // emptying the grid has put it on
        visLinjer();
    }
    grid.setRedraw(true);
    grid.setTabStop(m_tilstand.iModus());
}

void OrdreLager::visLinjer()
{
    // Beyond the ends of the record set there is no ID, and so no lines are found.
    passOver([this] { m_tilstand.lesAktivID(); });
    Ref<ado::Recordset> linjer;
    passOver([&] {
        linjer =
            gDB->GetRS(u"SELECT * FROM OrdreLinjer WHERE OrdreID="_s +
                           numberToText(m_tilstand.rsOrdre->integer(u"ID")) + u" ORDER BY PosNr"_s,
                       true);
    });
    const bool kanEndres = m_tilstand.AktivID > 0;
    if (gDB->EmptyRS(linjer)) {
        m_knapper.SettKnapper({.ny = true, .endre = kanEndres});
        return;
    }
    using enum Radtekst::Form;
    Radtekst radtekst(*linjer, {{u"ProduktNr"},
                                {u"ProduktNavn"},
                                {u"Antall", EnDesimal},
                                {u"Pris", Belop},
                                {u"RabattKr", TettBelop},
                                {u"SumNetto", Belop},
                                {u"MvaPst", EnDesimal},
                                {u"SumBrutto", Belop},
                                {u"ID", Heltall},
                                {u"PosNr", Heltall}});
    QString rad;
    for (; !linjer->eof(); linjer->moveNext()) {
        passOver([&] { rad = radtekst.rad().toString(); });
        passOver([&] { SpreadAddRow(*m_ui.vaSpread1, rad); });
    }
    m_knapper.SettKnapper({.skriv = true, .kopier = true, .ny = true, .endre = kanEndres});
}

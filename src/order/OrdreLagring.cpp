#include "order/OrdreLagring.h"

#include "data/clsAdoUtils.h"
#include "data/mFaktura.h"
#include "order/OrdreFelter.h"
#include "order/OrdreKnapper.h"
#include "order/OrdreLinjer.h"
#include "platform/forms/MsgBox.h"
#include "presentation/screens/VisMelding.h"
#include "presentation/spread/mVASpread.h"
#include "rules/Ordre.h"
#include "runtime/Conversions.h"
#include "runtime/Format.h"
#include "state/SharedState.h"
#include "ui_frmOrdre.h"

#include <QPointer>
#include <QScopeGuard>

using namespace Qt::StringLiterals;
using namespace ordrefelt;

namespace {

const QString kLinjeskift = u"\r\n"_s;
constexpr int kPosisjonssteg = 10;
constexpr qint16 kNotatSekunder = 1;

/// Whether the number that leads the text is 0; a text whose number has no place counts as such.
bool begynnerMedNull(const QString &tekst)
{
    return enters([&] { return leadingNumber(tekst) == 0; });
}

/// The date of the text in the statement's form. A field that is no date gives the empty text, and
/// the statement fails by it.
QString datoform(const QString &tekst)
{
    if (trimBlanks(tekst).isEmpty())
        return u" Null"_s; // between its marks, so that the statement fails as well
    QString form;
    passOver([&] { form = Format(toDate(tekst), u"mm\\/dd\\/yyyy"); });
    return form;
}

} // namespace

OrdreLagring::OrdreLagring(const OrdreRom &rom, OrdreKnapper &knapper)
    : OrdreRom(rom), m_knapper(knapper)
{
}

void OrdreLagring::btnSave_Click()
{
    // Events run while the note stands. The second click of a double click is none of its own: in
    // New mode it would store the order once more.
    if (m_lagrer)
        return;
    if (const QString tekst = feil(); !tekst.isEmpty()) {
        MsgBox(u"Feil som må rettes før ordren kan lagres:"_s + kLinjeskift + tekst,
               msgbox::kExclamation);
        return;
    }
    qint32 id = m_tilstand.ErEndre() ? m_tilstand.AktivID : 0;
    const int resultat =
        LagreOrdre(m_tilstand.ErNy() ? OrdreModus::Ny : OrdreModus::Endre, u"Ordre"_s, id);

    const QPointer<QWidget> skjerm = m_ui.vaSpread1->window();
    m_lagrer = true;
    const auto ferdig = qScopeGuard([&] {
        if (skjerm)
            m_lagrer = false;
    });
    if (resultat > 0) {
        // Not the order's ID: what follows works with this until the record is read again.
        m_tilstand.AktivID = resultat;
        m_ui.vaSpread1->forgetEdits();
        VisMelding(u"Posten er lagret."_s, msgbox::kInformation, u"Lagre"_s, kNotatSekunder, false);
    } else {
        // As a rule nothing follows: LagreOrdre has asked, and asking empties it.
        MsgBox(u"Lagring feilet, feil: "_s + gDB->LastError(), msgbox::kExclamation);
    }
    if (!skjerm)
        return;
    // The mode goes on, and the way on is to print, which lets the next order be begun.
    m_knapper.SettKnapper({.skriv = true, .kopier = true, .endre = true});
    m_ui.btnCancel->setEnabled(false);
    m_ui.vaSpread1->setEditModeReplace(false);
    if (resultat > 0)
        m_ui.btnPrint->setFocus();
    else
        m_felter[kKundeNr].setFocus();
}

QString OrdreLagring::feil() const
{
    QString tekst;
    const auto leggTil = [&](const QString &linje) { tekst += linje + kLinjeskift; };

    if (const int linje = SjekkLinjer(); linje > 0)
        leggTil(u"linje "_s + Format(linje, u"#0") + u" må ha Produkt nr. og/eller Produkt navn"_s);
    const QString kundeNr = m_felter.tekst(kKundeNr);
    if (trimBlanks(kundeNr).isEmpty()) {
        leggTil(u"kundenummer kan ikke være blank"_s);
    } else if (gDB->GetCount(u"KundeLev"_s, klientVilkar() + u" AND KundeNr="_s + kundeNr) == 0) {
        leggTil(u"ugyldig/manglende kundenummer"_s);
    }
    if (trimBlanks(m_felter.tekst(kKundeNavn)).isEmpty())
        leggTil(u"kundenavn kan ikke være blank"_s);
    const QString postNr = m_felter.tekst(kFakPostNr);
    if (trimBlanks(postNr).isEmpty() || begynnerMedNull(postNr))
        leggTil(u"postnummer kan ikke være blank"_s);
    // Cut at a decimal comma, so an order for less than one krone cannot be saved.
    if (begynnerMedNull(m_felter.tekst(kSumBrutto)))
        leggTil(u"fakturasum kan ikke være 0"_s);
    return tekst;
}

int OrdreLagring::SjekkLinjer() const
{
    fpSpread &grid = *m_ui.vaSpread1;
    const auto erBlank = [&](int kol, int rad) {
        return trimBlanks(SpreadGetText(grid, kol, rad)).isEmpty();
    };
    double brutto = 0; // a line that does not read keeps the one before it
    const int rader = grid.dataRowCnt();
    for (int rad = 1; rad <= rader; ++rad) {
        passOver(
            [&] { brutto = leadingNumber(SpreadGetText(grid, linjekolonne::kSumBrutto, rad)); });
        if (brutto != 0 && erBlank(linjekolonne::kProduktNr, rad) &&
            erBlank(linjekolonne::kProduktNavn, rad))
            return rad;
    }
    return 0;
}

RowValues OrdreLagring::hode(OrdreModus modus) const
{
    RowValues rad;
    const auto tekst = [&](QStringView navn, int felt) { rad.addText(navn, m_felter.tekst(felt)); };
    const auto heltall = [&](QStringView navn, int felt) {
        rad.add(navn, HeltallTilSql(m_felter.tekst(felt)));
    };
    const auto dato = [&](QStringView navn, int felt) {
        rad.add(navn, u'#' + datoform(m_felter.tekst(felt)) + u'#');
    };
    const auto belop = [&](QStringView navn, int felt) {
        rad.add(navn, TallTilSql(m_felter.tekst(felt), u"#0.00"));
    };

    // Kontrollsiffer, KundeOrgNr and RabattKr keep what another program has put there.
    rad.add(u"KlientNr", numberToText(gKlient));
    if (modus == OrdreModus::Ny) {
        QString nyttNr;
        passOver([&] { nyttNr = numberToText(NyttOrdreNr()); });
        rad.add(u"OrdreNr", nyttNr);
    } else {
        heltall(u"OrdreNr", kOrdreNr);
    }
    tekst(u"OrdreStatus", kOrdreStatus);
    rad.add(u"Betalt", numberToText(int{m_ui.chkBetalt->isChecked()}));
    tekst(u"EgenRef", kEgenRef);
    tekst(u"DeresRef", kDeresRef);
    heltall(u"KundeNr", kKundeNr);
    tekst(u"KundeNavn", kKundeNavn);
    tekst(u"FakAdresse1", kFakAdresse1);
    tekst(u"FakAdresse2", kFakAdresse2);
    tekst(u"FakPostNr", kFakPostNr);
    tekst(u"FakPoststed", kFakPostSted);
    tekst(u"LevAdresse1", kLevAdresse1);
    tekst(u"LevAdresse2", kLevAdresse2);
    tekst(u"LevPostNr", kLevPostNr);
    tekst(u"LevPoststed", kLevPostSted);
    tekst(u"KID", kKID);
    heltall(u"BetBet", kBetBet);
    dato(u"OrdreDato", kOrdreDato);
    dato(u"FakDato", kFakDato);
    dato(u"ForfallDato", kForfallDato);
    dato(u"LevDato", kLevDato);
    rad.add(u"RabattPst", u"0"_s);
    belop(u"MvaKr", kMvaKr);
    belop(u"SumNetto", kSumNetto);
    belop(u"SumBrutto", kSumBrutto);
    belop(u"Avrunding", kAvrunding);
    return rad;
}

int OrdreLagring::LagreOrdre(OrdreModus modus, const QString &tabell, qint32 &id) const
{
    const RowValues rad = hode(modus);
    const QString setning = modus == OrdreModus::Ny
                                ? rad.insertInto(tabell)
                                : rad.update(tabell, u"ID="_s + numberToText(id));
    // It holds none of what follows; see the class.
    passOver([] { gConn->beginTrans(); });
    const qint32 nyId = gDB->ExecuteID(setning);
    if (modus == OrdreModus::Ny)
        id = nyId;
    // An older text that nobody has read yet counts as a failure of this statement too.
    if (!gDB->LastError().isEmpty()) {
        passOver([] { gConn->rollbackTrans(); });
        return 0;
    }
    const int resultat = LagreLinjer(id) ? 1 : 0;
    passOver([] { gConn->commitTrans(); });
    return resultat;
}

bool OrdreLagring::LagreLinjer(qint32 ordreId) const
{
    if (ordreId < 1)
        return false;
    const QString ordre = numberToText(ordreId);
    // Nobody looks at a result from here on: a refused line is missing, and lines that could not be
    // deleted are there beside the new ones.
    passOver([&] { gDB->Execute(u"DELETE FROM OrdreLinjer WHERE OrdreID="_s + ordre); });

    fpSpread &grid = *m_ui.vaSpread1;
    const int rader = grid.dataRowCnt();
    int posisjon = 0;
    for (int rad = 1; rad <= rader; ++rad) {
        const auto celle = [&](int kol) { return SpreadGetText(grid, kol, rad); };
        const QString produktNr = trimBlanks(celle(linjekolonne::kProduktNr));
        const QString produktNavn = trimBlanks(celle(linjekolonne::kProduktNavn));
        if (produktNr.isEmpty() && produktNavn.isEmpty())
            continue;
        posisjon += kPosisjonssteg;
        RowValues linje;
        linje.add(u"OrdreID", ordre).add(u"PosNr", numberToText(posisjon));
        linje.addText(u"ProduktNr", produktNr).addText(u"ProduktNavn", produktNavn);
        linje.add(u"Antall", TallTilSql(celle(linjekolonne::kAntall), u"#0.0"));
        linje.add(u"Pris", TallTilSql(celle(linjekolonne::kPris), u"#0.00"));
        linje.add(u"RabattPst", u"0"_s).add(u"RabattKr", u"0"_s);
        linje.add(u"MvaPst", TallTilSql(celle(linjekolonne::kMvaPst), u"#0.0"));
        linje.add(u"SumNetto", TallTilSql(celle(linjekolonne::kSumNetto), u"#0.00"));
        linje.add(u"SumBrutto", TallTilSql(celle(linjekolonne::kSumBrutto), u"#0.00"));
        passOver([&] { gDB->Execute(linje.insertInto(u"OrdreLinjer"_s)); });
    }
    return true;
}

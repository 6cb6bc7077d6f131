#include "order/OrdreLagring.h"

#include "data/clsAdoUtils.h"
#include "data/mFaktura.h"
#include "order/OrdreFelter.h"
#include "order/OrdreKnapper.h"
#include "order/OrdreLinjer.h"
#include "order/OrdreTilstand.h"
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

const QString kLineBreak = u"\r\n"_s;
constexpr int kPositionStep = 10;
constexpr qint16 kNoteSeconds = 1;

/// Whether the number that leads the text is 0; a text whose number has no place counts as such.
bool leadsWithZero(const QString &text)
{
    return enters([&] { return leadingNumber(text) == 0; });
}

/// The date of the text in the statement's form. A field that is no date gives the empty text, and
/// the statement fails by it.
QString dateForm(const QString &text)
{
    if (trimBlanks(text).isEmpty())
        return u" Null"_s; // between its marks, so that the statement fails as well
    QString form;
    passOver([&] { form = Format(toDate(text), u"mm\\/dd\\/yyyy"); });
    return form;
}

} // namespace

OrdreLagring::OrdreLagring(Ui::frmOrdre &ui, OrdreTilstand &tilstand, const OrdreFelter &felter,
                           OrdreKnapper &knapper)
    : m_ui(ui), m_tilstand(tilstand), m_felter(felter), m_knapper(knapper)
{
}

void OrdreLagring::btnSave_Click()
{
    // Events run while the note stands. The second click of a double click is none of its own: in
    // New mode it would store the order once more.
    if (m_lagrer)
        return;
    if (const QString tekst = feil(); !tekst.isEmpty()) {
        MsgBox(u"Feil som må rettes før ordren kan lagres:"_s + kLineBreak + tekst,
               msgbox::kExclamation);
        return;
    }
    qint32 id = m_tilstand.ErEndre ? m_tilstand.AktivID : 0;
    const int resultat = LagreOrdre(m_tilstand.ErNy ? Modus::Ny : Modus::Endre, u"Ordre"_s, id);

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
        VisMelding(u"Posten er lagret."_s, msgbox::kInformation, u"Lagre"_s, kNoteSeconds, false);
    } else {
        // As a rule nothing follows: LagreOrdre has asked, and asking empties it.
        MsgBox(u"Lagring feilet, feil: "_s + gDB->LastError(), msgbox::kExclamation);
    }
    if (!skjerm)
        return;
    // The mode goes on, and the way on is to print, which lets the next order be begun.
    m_knapper.SettKnapper(true, true, false, true, false);
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
    const auto add = [&](const QString &linje) { tekst += linje + kLineBreak; };

    if (const int linje = SjekkLinjer(); linje > 0)
        add(u"linje "_s + Format(linje, u"#0") + u" må ha Produkt nr. og/eller Produkt navn"_s);
    const QString kundeNr = m_felter.text(kKundeNr);
    if (trimBlanks(kundeNr).isEmpty()) {
        add(u"kundenummer kan ikke være blank"_s);
    } else if (gDB->GetCount(u"KundeLev"_s, klientVilkar() + u" AND KundeNr="_s + kundeNr) == 0) {
        add(u"ugyldig/manglende kundenummer"_s);
    }
    if (trimBlanks(m_felter.text(kKundeNavn)).isEmpty())
        add(u"kundenavn kan ikke være blank"_s);
    const QString postNr = m_felter.text(kFakPostNr);
    if (trimBlanks(postNr).isEmpty() || leadsWithZero(postNr))
        add(u"postnummer kan ikke være blank"_s);
    // Cut at a decimal comma, so an order for less than one krone cannot be saved.
    if (leadsWithZero(m_felter.text(kSumBrutto)))
        add(u"fakturasum kan ikke være 0"_s);
    return tekst;
}

int OrdreLagring::SjekkLinjer() const
{
    fpSpread &grid = *m_ui.vaSpread1;
    const auto blank = [&](int col, int row) {
        return trimBlanks(SpreadGetText(grid, col, row)).isEmpty();
    };
    double brutto = 0; // a line that does not read keeps the one before it
    const int rader = grid.dataRowCnt();
    for (int row = 1; row <= rader; ++row) {
        passOver(
            [&] { brutto = leadingNumber(SpreadGetText(grid, linjekolonne::kSumBrutto, row)); });
        if (brutto != 0 && blank(linjekolonne::kProduktNr, row) &&
            blank(linjekolonne::kProduktNavn, row))
            return row;
    }
    return 0;
}

std::vector<OrdreLagring::Kolonne> OrdreLagring::kolonner(Modus modus) const
{
    std::vector<Kolonne> liste;
    liste.reserve(27);
    const auto bare = [&](const char16_t *navn, const QString &verdi) {
        liste.push_back({navn, u"", verdi});
    };
    const auto tekst = [&](const char16_t *navn, int felt) {
        liste.push_back({navn, u"'", m_felter.text(felt)});
    };
    const auto heltall = [&](const char16_t *navn, int felt) {
        bare(navn, HeltallTilSql(m_felter.text(felt)));
    };
    const auto dato = [&](const char16_t *navn, int felt) {
        liste.push_back({navn, u"#", dateForm(m_felter.text(felt))});
    };
    const auto belop = [&](const char16_t *navn, int felt) {
        bare(navn, TallTilSql(m_felter.text(felt), u"#0.00"));
    };

    // Kontrollsiffer, KundeOrgNr and RabattKr keep what another program has put there.
    bare(u"KlientNr", numberToText(gKlient));
    if (modus == Modus::Ny) {
        QString nyttNr;
        passOver([&] { nyttNr = numberToText(NyttOrdreNr()); });
        bare(u"OrdreNr", nyttNr);
    } else {
        heltall(u"OrdreNr", kOrdreNr);
    }
    tekst(u"OrdreStatus", kOrdreStatus);
    bare(u"Betalt", numberToText(int{m_ui.chkBetalt->isChecked()}));
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
    bare(u"RabattPst", u"0"_s);
    belop(u"MvaKr", kMvaKr);
    belop(u"SumNetto", kSumNetto);
    belop(u"SumBrutto", kSumBrutto);
    belop(u"Avrunding", kAvrunding);
    return liste;
}

int OrdreLagring::LagreOrdre(Modus modus, const QString &tabell, qint32 &id) const
{
    const std::vector<Kolonne> liste = kolonner(modus);
    QStringList navn;
    QStringList verdier;
    QStringList tilordninger;
    for (const Kolonne &kolonne : liste) {
        const QString name = QString::fromUtf16(kolonne.navn);
        const QString mark = QString::fromUtf16(kolonne.anforsel);
        const QString literal = mark + kolonne.verdi + mark;
        navn += name;
        verdier += literal;
        tilordninger += name + u'=' + literal;
    }
    const QString statement = modus == Modus::Ny
                                  ? u"INSERT INTO "_s + tabell + u" ("_s + navn.join(u',') +
                                        u") VALUES ("_s + verdier.join(u',') + u')'
                                  : u"UPDATE "_s + tabell + u" SET "_s + tilordninger.join(u',') +
                                        u" WHERE ID="_s + numberToText(id);

    // It holds none of what follows; see the class.
    passOver([] { gConn->beginTrans(); });
    const qint32 nyId = gDB->ExecuteID(statement);
    if (modus == Modus::Ny)
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
    for (int row = 1; row <= rader; ++row) {
        const auto celle = [&](int col) { return SpreadGetText(grid, col, row); };
        const QString produktNr = trimBlanks(celle(linjekolonne::kProduktNr));
        const QString produktNavn = trimBlanks(celle(linjekolonne::kProduktNavn));
        if (produktNr.isEmpty() && produktNavn.isEmpty())
            continue;
        posisjon += kPositionStep;
        const QString statement =
            u"INSERT INTO OrdreLinjer (OrdreID,PosNr,ProduktNr,ProduktNavn,Antall,Pris,RabattPst,"_s
            u"RabattKr,MvaPst,SumNetto,SumBrutto) VALUES ("_s +
            ordre + u',' + numberToText(posisjon) + u",'"_s + produktNr + u"','"_s + produktNavn +
            u"',"_s + TallTilSql(celle(linjekolonne::kAntall), u"#0.0") + u',' +
            TallTilSql(celle(linjekolonne::kPris), u"#0.00") + u",0,0,"_s +
            TallTilSql(celle(linjekolonne::kMvaPst), u"#0.0") + u',' +
            TallTilSql(celle(linjekolonne::kSumNetto), u"#0.00") + u',' +
            TallTilSql(celle(linjekolonne::kSumBrutto), u"#0.00") + u')';
        passOver([&] { gDB->Execute(statement); });
    }
    return true;
}

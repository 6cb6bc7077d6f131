#include "order/OrdreLager.h"

#include "data/clsAdoUtils.h"
#include "data/mFaktura.h"
#include "order/OrdreFelter.h"
#include "order/OrdreKnapper.h"
#include "order/OrdreLinjer.h"
#include "order/OrdreTilstand.h"
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
constexpr int kLastBound = kAvrunding;

/// The text that a header field shows for its column.
QString headerText(const ado::Recordset &ordre, int nr)
{
    const int column = ordre.fieldIndex(OrdreFelter::datafelt(nr));
    if (ordre.isNull(column))
        return {};
    switch (nr) {
    case kSumNetto:
    case kMvaKr:
    case kSumBrutto:
        return Format(ordre.currency(column), u"# ##0.00");
    case kAvrunding:
        return Format(ordre.currency(column), u"0.00");
    default:
        return ordre.text(column);
    }
}

/// Composes the grid rows of an order's lines; the columns are looked up once.
class Linjetekst
{
public:
    explicit Linjetekst(const ado::Recordset &linjer) : m_linjer(linjer)
    {
        for (const QStringView column :
             {u"ProduktNr", u"ProduktNavn", u"Antall", u"Pris", u"RabattKr", u"SumNetto", u"MvaPst",
              u"SumBrutto", u"ID", u"PosNr"})
            m_columns.push_back(linjer.fieldIndex(column));
    }

    /// The current line in the order of the grid's columns, parted by tabs.
    [[nodiscard]] QString current() const
    {
        const auto asItIs = [this](int column) { return m_linjer.text(column); };
        const auto single = [this](int column) { return Format(m_linjer.single(column), u"#0.0"); };
        const auto amount = [this](int column) {
            return Format(m_linjer.currency(column), u"# ##0.00");
        };
        const auto discount = [this](int column) {
            return Format(m_linjer.currency(column), u"#0.00");
        };
        const auto whole = [this](int column) { return Format(m_linjer.integer(column), u"#0"); };

        QString text;
        text.reserve(160);
        int next = 0;
        const auto add = [&](const auto &form) {
            const int column = m_columns[size_t(next++)];
            if (!m_linjer.isNull(column))
                text += form(column);
            if (next < int(m_columns.size()))
                text += u'\t';
        };
        add(asItIs); // ProduktNr
        add(asItIs); // ProduktNavn
        add(single); // Antall
        add(amount); // Pris
        add(discount);
        add(amount); // SumNetto
        add(single); // MvaPst
        add(amount); // SumBrutto
        add(whole);  // ID
        add(whole);  // PosNr
        return text;
    }

private:
    const ado::Recordset &m_linjer;
    std::vector<int> m_columns;
};

} // namespace

OrdreLager::OrdreLager(Ui::frmOrdre &ui, OrdreTilstand &tilstand, const OrdreFelter &felter,
                       OrdreKnapper &knapper, OrdreLinjer &linjer)
    : m_ui(ui), m_tilstand(tilstand), m_felter(felter), m_knapper(knapper), m_linjer(linjer)
{
}

void OrdreLager::LesOrdre(qint32 innId)
{
    QString statement =
        u"SELECT ID,KlientNr,OrdreNr,OrdreStatus,Betalt,EgenRef,DeresRef,KundeNr,KundeNavn,"_s
        u"FakAdresse1,FakAdresse2,FakPostNr,FakPoststed,"_s
        u"LevAdresse1,LevAdresse2,LevPostNr,LevPoststed,KID,BetBet,OrdreDato,FakDato,ForfallDato,"_s
        u"LevDato,RabattPst,RabattKr,MvaKr,"_s
        u"SumNetto,SumBrutto,Avrunding,Kontrollsiffer FROM Ordre WHERE "_s +
        klientVilkar();
    if (innId > 0)
        statement += u" AND ID="_s + numberToText(innId);
    m_tilstand.rsOrdre = gDB->GetRS(statement, true);
    if (gDB->EmptyRS(m_tilstand.rsOrdre)) {
        m_tilstand.AktivID = 0;
        tomFelter();
        return;
    }
    const ado::Recordset &ordre = *m_tilstand.rsOrdre;
    passOver([&] { m_tilstand.AktivID = ordre.integer(u"ID"); });
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
    for (int nr = 0; nr <= kLastBound; ++nr)
        m_felter.setText(nr, {});
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
    for (int nr = 0; nr <= kLastBound; ++nr)
        passOver([&] { m_felter.setText(nr, headerText(ordre, nr)); });
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
    passOver([this] { m_tilstand.AktivID = m_tilstand.rsOrdre->integer(u"ID"); });
    Ref<ado::Recordset> linjer;
    passOver([&] {
        linjer =
            gDB->GetRS(u"SELECT * FROM OrdreLinjer WHERE OrdreID="_s +
                           numberToText(m_tilstand.rsOrdre->integer(u"ID")) + u" ORDER BY PosNr"_s,
                       true);
    });
    const bool kanEndres = m_tilstand.AktivID > 0;
    if (gDB->EmptyRS(linjer)) {
        m_knapper.SettKnapper(false, false, true, kanEndres, false);
        return;
    }
    const Linjetekst tekst(*linjer);
    QString rad;
    for (; !linjer->eof(); linjer->moveNext()) {
        passOver([&] { rad = tekst.current(); });
        passOver([&] { SpreadAddRow(*m_ui.vaSpread1, rad); });
    }
    m_knapper.SettKnapper(true, true, true, kanEndres, false);
}

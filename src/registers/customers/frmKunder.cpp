#include "registers/customers/frmKunder.h"

#include "data/clsAdoUtils.h"
#include "data/mFaktura.h"
#include "platform/forms/OuterRim.h"
#include "presentation/screens/Skjerm.h"
#include "presentation/spread/mVASpread.h"
#include "registers/customers/KundeMottaker.h"
#include "rules/Forfall.h"
#include "runtime/Clock.h"
#include "runtime/Conversions.h"
#include "runtime/Format.h"
#include "state/SharedState.h"
#include "ui_frmKunder.h"

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

enum Utvalg { kAlle = 0, kKunder = 1 };

enum Kolonne {
    kKundeNr = 1,
    kNavn,
    kBetBet,
    kAdr1,
    kAdr2,
    kPostNr,
    kPostSted,
    kLevAdr1,
    kLevAdr2,
    kLevPostNr,
    kLevPostSted,
    kSammeAdr,
    kOrgNr,
    kFakTyp,
    kKolonner = kFakTyp,
};

constexpr int kDesignedRows = 100;
constexpr double kNavnWidth = 24.12; // grid units
constexpr int kWidth = 4770;         // twips, of the window as it is designed

/// A column of the statement; empty when it is Null.
QString joined(const ado::Recordset &rs, QStringView column)
{
    const int index = rs.fieldIndex(column);
    return rs.isNull(index) ? QString() : rs.text(index);
}

/// The customer's row in the grid. The delivery address stands in it twice, and so the columns
/// from 11 on hold something else than their headers say, and the last three fields have no cell.
QString rowText(const ado::Recordset &rs)
{
    const QStringList fields{
        numberToText(rs.integer(u"KundeNr")),
        trimBlanks(rs.text(u"Navn")),
        numberToText(rs.integer(u"BetBet")),
        joined(rs, u"Adr1"),
        joined(rs, u"Adr2"),
        joined(rs, u"PostNr"),
        joined(rs, u"PostSted"),
        joined(rs, u"LevAdr1"),
        joined(rs, u"LevAdr2"),
        joined(rs, u"LevPostNr"),
        joined(rs, u"LevAdr1"),
        joined(rs, u"LevAdr2"),
        joined(rs, u"LevPostNr"),
        joined(rs, u"LevPoststed"),
        joined(rs, u"SammeLevAdr"),
        joined(rs, u"OrganisasjonsNr"),
        rs.isNull(rs.fieldIndex(u"FakturaType")) ? u"Post"_s : joined(rs, u"FakturaType"),
    };
    return fields.join(u'\t');
}

} // namespace

frmKunder::frmKunder()
    : Skjermbilde(
          {.navn = u"frmKunder"_s, .slag = FormKind::Dialog, .hjelp = u"html\\ordre.htm"_s}),
      m_ui(std::make_unique<Ui::frmKunder>())
{
    m_ui->setupUi(this);
    fpSpread &grid = *m_ui->fpSpread1;
    grid.setMaxCols(kKolonner);
    grid.setMaxRows(kDesignedRows);
    grid.setColHeaders({u"Kundenr."_s, u"Kundenavn"_s, u"BetBet"_s, u"Adr1"_s, u"Adr2"_s,
                        u"PostNr"_s, u"PostSted"_s, u"LevAdr1"_s, u"LevAdr2"_s, u"LevPostNr"_s,
                        u"LevPostSted"_s, u"SammeAdr"_s, u"OrgNr"_s, u"FakTyp"_s});
    grid.setColWidth(kNavn, kNavnWidth);
    for (int col = kBetBet; col <= kKolonner; ++col)
        grid.setColHidden(col, true);
    SpreadSetColAlign(grid, kKundeNr, int(CellAlign::Right));
    // A list to choose from: nothing is typed in it, and Enter is left to the default button.
    SpreadLockAll(grid, true);
    grid.setBlockMode(false);
    setCancelButton(m_ui->CancelButton);
    grid.setFocus();

    onEvent(m_ui->optUtvalg_0, &QRadioButton::clicked, this, [this] { optUtvalg_Click(kAlle); });
    onEvent(m_ui->optUtvalg_1, &QRadioButton::clicked, this, [this] { optUtvalg_Click(kKunder); });
    onEvent(&grid, &fpSpread::DblClick, this,
            [this](int col, int row) { fpSpread1_DblClick(col, row); });
    const auto okByEnter = [this] { setDefaultButton(m_ui->OKButton); };
    onEvent(&grid, &fpSpread::Click, this, okByEnter);
    onEvent(&grid, &fpSpread::SelChange, this, okByEnter);
    onEvent(m_ui->OKButton, &QPushButton::clicked, this, [this] { OKButton_Click(); });
    onEvent(m_ui->CancelButton, &QPushButton::clicked, this, [this] { CancelButton_Click(); });
}

frmKunder::~frmKunder() = default;

void frmKunder::velgFor(KundeMottaker &mottaker)
{
    m_mottaker = &mottaker;
    showModal();
}

void frmKunder::settIkkeVis(qint16 value)
{
    if (value > 0)
        m_ikkeVis = value;
}

void frmKunder::onLoad()
{
    Skjermbilde::onLoad();
    setWindowTitle(u"Kundeliste"_s);
    resize(MedBokstavene(*this, size()));
    m_ikkeVis = 0;
    m_sSort = u"KundeNr ASC"_s;
}

void frmKunder::onActivate()
{
    if (m_ikkeVis == 0)
        optUtvalg_Click(kKunder);
}

void frmKunder::onResize()
{
    // The name takes what the window has become wider by.
    fpSpread &grid = *m_ui->fpSpread1;
    const int tegnet = MedBokstavene(*this, QSize(kWidth, 0)).width();
    const int bredere = std::max(0, place().width() - tegnet);
    grid.setColWidth(kNavn, kNavnWidth + grid.twipsToColWidth(bredere));
}

void frmKunder::onUnload()
{
    m_mottaker = nullptr;
}

void frmKunder::optUtvalg_Click(int index)
{
    // Choosing one button takes the mark from the other.
    if (index == kAlle) {
        m_ui->optUtvalg_0->setChecked(true);
        SkrivGrid({}, u"KundeNr"_s);
    } else {
        m_ui->optUtvalg_1->setChecked(true);
        SkrivGrid(u"AND K.KundeNr<50000"_s, u"KundeNr"_s);
    }
}

void frmKunder::SkrivGrid(const QString &sFilter, const QString &sSortering)
{
    const QString statement =
        u"SELECT K.KundeNr,K.Navn,K.Adr1,K.Adr2,K.PostNr,P.PostSted,K.BetBet,K.LevAdr1,K.LevAdr2,"_s
        u"K.LevPostNr,L.PostSted AS LevPostSted,SammeLevAdr,K.OrganisasjonsNr,K.FakturaType "_s
        u"FROM (KundeLev AS K LEFT JOIN Poststed AS P ON K.PostNr=P.PostNr) "_s
        u"LEFT JOIN Poststed AS L ON K.LevPostNr=L.PostNr "_s
        // No blank between number and filter: the dialect parts them.
        u"WHERE "_s +
        klientVilkar() + sFilter + u" ORDER BY "_s + sSortering;
    Ref<ado::Recordset> rs;
    passOver([&] { rs = gDB->GetRS(statement, true); });

    fpSpread &grid = *m_ui->fpSpread1;
    grid.setRedraw(false);
    passOver([&] { SpreadClear(grid); });
    if (rs) {
        // A customer without number, name or terms shows as the one before.
        QString text;
        for (; !rs->eof(); rs->moveNext()) {
            passOver([&] { text = rowText(*rs); });
            passOver([&] { SpreadAddRow(grid, text); });
        }
    }
    if (rs)
        grid.setSortMark(sSortering.startsWith("Navn"_L1) ? kNavn : kKundeNr,
                         !sSortering.endsWith("DESC"_L1));
    // The row that OK takes, where the user has chosen none.
    SpreadSelectRows(grid, grid.activeRow(), grid.activeRow(), true);
    grid.setBlockMode(false);
    grid.setRedraw(true);
}

void frmKunder::fpSpread1_DblClick(int col, int row)
{
    if (row >= 1) {
        OKButton_Click();
        return;
    }
    // Any other header than these two has no clause, and its statement fails.
    QString clause;
    if (col == kKundeNr)
        clause = m_sSort = m_sSort == u"KundeNr ASC"_s ? u"KundeNr DESC"_s : u"KundeNr ASC"_s;
    else if (col == kNavn)
        clause = m_sSort = m_sSort == u"Navn ASC"_s ? u"Navn DESC"_s : u"Navn ASC"_s;
    // The option's filter is not carried over: a sorted list shows all customers.
    SkrivGrid({}, clause);
}

void frmKunder::OKButton_Click()
{
    fpSpread &grid = *m_ui->fpSpread1;
    const int row = grid.activeRow();
    const auto cell = [&](int col) { return SpreadGetText(grid, col, row); };
    if (m_mottaker) {
        KundeMottaker &mottaker = *m_mottaker;
        const auto write = [&](KundeFelt felt, const QString &text) {
            passOver([&] { mottaker.settKundefelt(felt, text); });
        };
        write(KundeFelt::KundeNr, cell(kKundeNr));
        write(KundeFelt::KundeNavn, cell(kNavn));
        write(KundeFelt::BetBet, cell(kBetBet));
        write(KundeFelt::FakAdresse1, cell(kAdr1));
        write(KundeFelt::FakAdresse2, cell(kAdr2));
        write(KundeFelt::FakPostNr, cell(kPostNr));
        write(KundeFelt::FakPostSted, cell(kPostSted));
        write(KundeFelt::LevAdresse1, cell(kLevAdr1));
        write(KundeFelt::LevAdresse2, cell(kLevAdr2));
        write(KundeFelt::LevPostNr, cell(kLevPostNr));
        write(KundeFelt::LevPostSted, cell(kLevPostSted));
        write(KundeFelt::OrganisasjonsNr, Format(cell(kOrgNr), u"@@@\\ @@@\\ @@@"));
        passOver(
            [&] { mottaker.settSammeLevAdr(toLong(std::abs(leadingNumber(cell(kSammeAdr))))); });
        passOver([&] {
            mottaker.settKundefelt(KundeFelt::ForfallDato,
                                   ForfallsDato(Clock::current().today(), mottaker.betBet()));
        });
        write(KundeFelt::FakturaType, cell(kFakTyp));
    }
    CancelButton_Click();
}

void frmKunder::CancelButton_Click()
{
    unload();
}

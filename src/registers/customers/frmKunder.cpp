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

constexpr int kRaderIUtformingen = 100;
constexpr double kNavnebredde = 24.12; // grid units
constexpr int kBredde = 4770;          // twips, of the window as it is designed

/// The cells that go to the receiver as they stand, in the order of KundeFelt.
constexpr std::pair<KundeFelt, Kolonne> kSomDeEr[] = {
    {KundeFelt::KundeNr, kKundeNr},         {KundeFelt::KundeNavn, kNavn},
    {KundeFelt::BetBet, kBetBet},           {KundeFelt::FakAdresse1, kAdr1},
    {KundeFelt::FakAdresse2, kAdr2},        {KundeFelt::FakPostNr, kPostNr},
    {KundeFelt::FakPostSted, kPostSted},    {KundeFelt::LevAdresse1, kLevAdr1},
    {KundeFelt::LevAdresse2, kLevAdr2},     {KundeFelt::LevPostNr, kLevPostNr},
    {KundeFelt::LevPostSted, kLevPostSted},
};

/// The customer's row in the grid. The delivery address stands in it twice, and so the columns
/// from 11 on hold something else than their headers say, and the last three fields have no cell.
QString radtekst(const ado::Recordset &rs)
{
    QStringList celler{numberToText(rs.integer(u"KundeNr")), trimBlanks(rs.text(u"Navn")),
                       numberToText(rs.integer(u"BetBet"))};
    for (const QStringView navn :
         {u"Adr1", u"Adr2", u"PostNr", u"PostSted", u"LevAdr1", u"LevAdr2", u"LevPostNr",
          u"LevAdr1", u"LevAdr2", u"LevPostNr", u"LevPoststed", u"SammeLevAdr", u"OrganisasjonsNr",
          u"FakturaType"}) {
        const int felt = rs.fieldIndex(navn);
        if (!rs.isNull(felt))
            celler += rs.text(felt);
        else
            celler += navn == u"FakturaType" ? u"Post"_s : QString();
    }
    return celler.join(u'\t');
}

} // namespace

frmKunder::frmKunder()
    : Skjermbilde(
          {.navn = u"frmKunder"_s, .slag = FormKind::Dialog, .hjelp = u"html\\kunder.htm"_s}),
      m_ui(std::make_unique<Ui::frmKunder>())
{
    m_ui->setupUi(this);
    LikeKnapper(*this, {88, 0});
    fpSpread &grid = *m_ui->fpSpread1;
    grid.setMaxCols(kKolonner);
    grid.setMaxRows(kRaderIUtformingen);
    grid.setColHeaders({u"Kundenr."_s, u"Kundenavn"_s, u"BetBet"_s, u"Adr1"_s, u"Adr2"_s,
                        u"PostNr"_s, u"PostSted"_s, u"LevAdr1"_s, u"LevAdr2"_s, u"LevPostNr"_s,
                        u"LevPostSted"_s, u"SammeAdr"_s, u"OrgNr"_s, u"FakTyp"_s});
    grid.setColWidth(kNavn, kNavnebredde);
    for (int kol = kBetBet; kol <= kKolonner; ++kol)
        grid.setColHidden(kol, true);
    SpreadSetColAlign(grid, kKundeNr, int(CellAlign::Right));
    // A list to choose from: nothing is typed in it, and Enter is left to the default button.
    SpreadLockAll(grid, true);
    grid.setBlockMode(false);
    setCancelButton(m_ui->CancelButton);
    grid.setFocus();

    onEvent(m_ui->optUtvalg_0, &QRadioButton::clicked, this, [this] { optUtvalg_Click(kAlle); });
    onEvent(m_ui->optUtvalg_1, &QRadioButton::clicked, this, [this] { optUtvalg_Click(kKunder); });
    onEvent(&grid, &fpSpread::DblClick, this,
            [this](int kol, int rad) { fpSpread1_DblClick(kol, rad); });
    const auto okMedEnter = [this] { setDefaultButton(m_ui->OKButton); };
    onEvent(&grid, &fpSpread::Click, this, okMedEnter);
    onEvent(&grid, &fpSpread::SelChange, this, okMedEnter);
    onEvent(m_ui->OKButton, &QPushButton::clicked, this, [this] { OKButton_Click(); });
    onEvent(m_ui->CancelButton, &QPushButton::clicked, this, [this] { CancelButton_Click(); });
}

frmKunder::~frmKunder() = default;

void frmKunder::velgFor(KundeMottaker &mottaker)
{
    m_mottaker = &mottaker;
    showModal();
}

void frmKunder::settIkkeVis(qint16 verdi)
{
    if (verdi > 0)
        m_ikkeVis = verdi;
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
    const int tegnet = MedBokstavene(*this, QSize(kBredde, 0)).width();
    const int bredere = std::max(0, place().width() - tegnet);
    grid.setColWidth(kNavn, kNavnebredde + grid.twipsToColWidth(bredere));
}

void frmKunder::onUnload()
{
    m_mottaker = nullptr;
}

void frmKunder::optUtvalg_Click(int indeks)
{
    // Choosing one button takes the mark from the other.
    if (indeks == kAlle) {
        m_ui->optUtvalg_0->setChecked(true);
        SkrivGrid({}, u"KundeNr"_s);
    } else {
        m_ui->optUtvalg_1->setChecked(true);
        SkrivGrid(u"AND K.KundeNr<50000"_s, u"KundeNr"_s);
    }
}

void frmKunder::SkrivGrid(const QString &sFilter, const QString &sSortering)
{
    const QString setning =
        u"SELECT K.KundeNr,K.Navn,K.Adr1,K.Adr2,K.PostNr,P.PostSted,K.BetBet,K.LevAdr1,K.LevAdr2,"_s
        u"K.LevPostNr,L.PostSted AS LevPostSted,SammeLevAdr,K.OrganisasjonsNr,K.FakturaType "_s
        u"FROM (KundeLev AS K LEFT JOIN Poststed AS P ON K.PostNr=P.PostNr) "_s
        u"LEFT JOIN Poststed AS L ON K.LevPostNr=L.PostNr "_s
        // No blank between number and filter: the dialect parts them.
        u"WHERE "_s +
        klientVilkar() + sFilter + u" ORDER BY "_s + sSortering;
    Ref<ado::Recordset> rs;
    passOver([&] { rs = gDB->GetRS(setning, true); });

    fpSpread &grid = *m_ui->fpSpread1;
    grid.setRedraw(false);
    passOver([&] { SpreadClear(grid); });
    if (rs) {
        // A customer without number, name or terms shows as the one before.
        QString tekst;
        for (; !rs->eof(); rs->moveNext()) {
            passOver([&] { tekst = radtekst(*rs); });
            passOver([&] { SpreadAddRow(grid, tekst); });
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

void frmKunder::fpSpread1_DblClick(int kol, int rad)
{
    if (rad >= 1) {
        OKButton_Click();
        return;
    }
    // Any other header than these two has no clause, and its statement fails.
    QString ledd;
    if (kol == kKundeNr)
        ledd = m_sSort = m_sSort == u"KundeNr ASC"_s ? u"KundeNr DESC"_s : u"KundeNr ASC"_s;
    else if (kol == kNavn)
        ledd = m_sSort = m_sSort == u"Navn ASC"_s ? u"Navn DESC"_s : u"Navn ASC"_s;
    // The option's filter is not carried over: a sorted list shows all customers.
    SkrivGrid({}, ledd);
}

void frmKunder::OKButton_Click()
{
    fpSpread &grid = *m_ui->fpSpread1;
    const int rad = grid.activeRow();
    const auto celle = [&](int kol) { return SpreadGetText(grid, kol, rad); };
    if (m_mottaker) {
        KundeMottaker &mottaker = *m_mottaker;
        const auto skriv = [&](KundeFelt felt, const QString &tekst) {
            passOver([&] { mottaker.settKundefelt(felt, tekst); });
        };
        for (const auto &[felt, kol] : kSomDeEr)
            skriv(felt, celle(kol));
        skriv(KundeFelt::OrganisasjonsNr, Format(celle(kOrgNr), u"@@@\\ @@@\\ @@@"));
        passOver(
            [&] { mottaker.settSammeLevAdr(toLong(std::abs(leadingNumber(celle(kSammeAdr))))); });
        passOver([&] {
            mottaker.settKundefelt(KundeFelt::ForfallDato,
                                   ForfallsDato(Clock::current().today(), mottaker.betBet()));
        });
        skriv(KundeFelt::FakturaType, celle(kFakTyp));
    }
    CancelButton_Click();
}

void frmKunder::CancelButton_Click()
{
    unload();
}

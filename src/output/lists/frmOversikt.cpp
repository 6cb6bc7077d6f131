#include "output/lists/frmOversikt.h"

#include "data/clsAdoUtils.h"
#include "data/mFaktura.h"
#include "order/frmOrdre.h"
#include "output/lists/frmOrdreSkriv.h"
#include "platform/forms/Forms.h"
#include "platform/forms/OuterRim.h"
#include "platform/grid/fpSpread.h"
#include "presentation/screens/Skjerm.h"
#include "presentation/screens/Timeglass.h"
#include "presentation/spread/Fakturaliste.h"
#include "presentation/spread/Radtekst.h"
#include "presentation/spread/mVASpread.h"
#include "runtime/Conversions.h"
#include "state/SharedState.h"
#include "ui_frmOversikt.h"

using namespace Qt::StringLiterals;

namespace {

enum Kolonne { kOrdreNr = 1, kKundeNr, kKundeNavn, kFakDato, kForfall, kBelop, kStatus, kOrdreId };

} // namespace

frmOversikt::frmOversikt()
    : Skjermbilde({.navn = u"frmOversikt"_s,
                   .hjelp = u"html\\oversikt.htm"_s,
                   .lukkesMedEscape = true,
                   .standard = {9345, 4755},
                   .minst = {4000, 4000}}),
      m_ui(std::make_unique<Ui::frmOversikt>())
{
    m_ui->setupUi(this);
    LikeKnapper(*this, {76, 0});

    fpSpread &grid = *m_ui->fpSpread1;
    LagFakturaliste(grid, u"Status"_s);
    grid.setFocus();

    onEvent(&grid, &fpSpread::DblClick, this,
            [this](int kol, int rad) { fpSpread1_DblClick(kol, rad); });
    onEvent(m_ui->btnPrint, &QPushButton::clicked, this,
            [] { SharedForm<frmOrdreSkriv>::get().show(); });
    onEvent(m_ui->btnRefresh, &QPushButton::clicked, this, [this] { LesOversikt(); });
    onEvent(m_ui->btnClose, &QPushButton::clicked, this, [this] { unload(); });
    setCommandKey(Qt::CTRL | Qt::Key_P, m_ui->btnPrint);
    setCommandKey(Qt::Key_F5, m_ui->btnRefresh);
}

frmOversikt::~frmOversikt() = default;

void frmOversikt::onLoad()
{
    Skjermbilde::onLoad();
    m_ui->Label1->setText(
        u"Oversikt over alle ordre/faktura med status.\n"
        "Dobbeltklikk på posten for å se på den i ordre -bildet, dobbeltklikk i kolonnetittel for "
        "sortering."_s);
    LesOversikt();
}

void frmOversikt::LesOversikt()
{
    Timeglass timeglass;
    fpSpread &grid = *m_ui->fpSpread1;
    grid.setRedraw(false);
    passOver([&] { SpreadClear(grid); });
    SpreadSetCellAlign(grid, kAll, kBelop, int(CellAlign::Right));
    passOver([&] {
        const Ref<ado::Recordset> rs = gDB->GetRS(
            u"SELECT * FROM Ordre WHERE "_s + klientVilkar() + u" ORDER BY ordreNr DESC"_s, true);
        if (gDB->EmptyRS(rs))
            return;
        using enum Radtekst::Form;
        Radtekst radtekst(*rs, {{u"ordreNr", Heltall},
                                {u"KundeNr", Heltall},
                                {u"KundeNavn"},
                                {u"fakDato", Dato},
                                {u"ForfallDato", Dato},
                                {u"SumBrutto", Belop},
                                {u"OrdreStatus"},
                                {u"ID", Heltall}});
        for (; !rs->eof(); rs->moveNext()) {
            passOver([&] { SpreadAddRow(grid, radtekst.rad()); });
            timeglass.holdVinduene();
        }
    });
    grid.setRedraw(true);
    m_sortering.glem();
}

void frmOversikt::fpSpread1_DblClick(int kol, int rad)
{
    if (rad == 0)
        m_sortering.sorter(*m_ui->fpSpread1, qint16(kol));
    else
        visOrdre(rad);
}

void frmOversikt::visOrdre(int rad)
{
    auto &ordre = SharedForm<frmOrdre>::get();
    ordre.load();
    // A row without an order opens the screen as the menu does: 0 is not taken.
    ordre.settInnID(toLong(leadingNumber(SpreadGetText(*m_ui->fpSpread1, kOrdreId, rad))));
    ordre.show();
}

void frmOversikt::onResize()
{
    TilpassOverskrift(*this, *m_ui->topp, *m_ui->Label1);
    tilpassNavn(*m_ui->fpSpread1, kKundeNavn);
}

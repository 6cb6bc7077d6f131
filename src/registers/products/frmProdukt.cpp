#include "registers/products/frmProdukt.h"

#include "data/clsAdoUtils.h"
#include "data/mFaktura.h"
#include "platform/forms/LockedText.h"
#include "platform/forms/OneLine.h"
#include "platform/forms/OuterRim.h"
#include "platform/forms/SendKey.h"
#include "platform/forms/Twips.h"
#include "presentation/screens/Skjerm.h"
#include "presentation/spread/mVASpread.h"
#include "registers/products/ProduktKolonne.h"
#include "runtime/Format.h"
#include "state/SharedState.h"
#include "ui_frmProdukt.h"

#include <QFocusEvent>
#include <QScopeGuard>

#include <limits>

using namespace Qt::StringLiterals;

namespace {

constexpr int kOversikt = 1;
constexpr int kDetaljer = 2;
constexpr int kInnPris = 4; // of txtFields
constexpr int kUtPris = 5;

// Pixels.
constexpr int kKodebredde = 180;
constexpr int kTallbredde = 110;

// Twips.
constexpr int kSideVenstre = 120;
constexpr int kStripeVenstre = 60;
constexpr int kStripeTopp = 1020;
constexpr int kVedStripen = 120;
constexpr int kOverOgUnderStripen = 1500;
constexpr int kBunnHoyde = kOverOgUnderStripen - kStripeTopp;
constexpr int kSidemarg = 60;

/// A program's text stands with its beginning in sight and the selection start at 0.
void settTekst(QLineEdit &felt, const QString &tekst)
{
    const ProgramWrites skriver;
    felt.setText(tekst);
    felt.setCursorPosition(0);
}

void settTekst(QComboBox &boks, const QString &tekst)
{
    const ProgramWrites skriver;
    boks.setCurrentIndex(-1);
    boks.setEditText(tekst);
    boks.lineEdit()->setCursorPosition(0);
}

/// An empty value leaves a blank in its cell.
QString blankForTom(const QString &tekst)
{
    return tekst.isEmpty() ? u" "_s : tekst;
}

/// Changes of focus between controls, not those of a window that loses or regains the user.
bool erFlytting(const QEvent *event)
{
    const Qt::FocusReason grunn = static_cast<const QFocusEvent *>(event)->reason();
    return grunn != Qt::ActiveWindowFocusReason && grunn != Qt::PopupFocusReason;
}

} // namespace

frmProdukt::frmProdukt()
    : Skjermbilde({.navn = u"frmProdukt"_s,
                   .hjelp = u"html\\produkt.htm"_s,
                   .lukkesMedEscape = true,
                   .standard = {9150, 6435},
                   .minst = {9100, 6400}}),
      m_ui(std::make_unique<Ui::frmProdukt>())
{
    m_ui->setupUi(this);
    LikeKnapper(*this, {84, 26});
    m_txtFields = {m_ui->txtFields_0, m_ui->txtFields_1, m_ui->txtFields_2,
                   m_ui->txtFields_3, m_ui->txtFields_4, m_ui->txtFields_5};
    for (QLineEdit *kode : {m_ui->txtFields_0, m_ui->txtFields_2, m_ui->txtFields_3})
        kode->setMaximumWidth(kKodebredde);
    for (QWidget *tall :
         std::initializer_list<QWidget *>{m_ui->cmbMvaSats, m_ui->txtFields_4, m_ui->txtFields_5})
        tall->setMaximumWidth(kTallbredde);
    m_ui->txtFields_11->hide();
    m_ui->Label3->hide();
    // Completion would write a rate that nobody has typed.
    m_ui->cmbMvaSats->setCompleter(nullptr);

    fpSpread &grid = *m_ui->vaSpread1;
    grid.setColHeaders({u"Produkt nr."_s, u"Produkt navn"_s, u"Gruppe"_s, u"Enhet"_s, u"Inn pris"_s,
                        u"Ut pris"_s, u"MVA sats"_s, u"Bruttopris"_s, u"ID"_s, u"Changed"_s});
    grid.setColWidth(kolonne::ProduktNavn, 16.5);
    // A small type, in which the widths leave the name its room.
    SpreadLitenSkrift(grid);
    for (const int kol : {kolonne::Gruppe, kolonne::ID, kolonne::Changed})
        grid.setColHidden(kol, true);

    m_ark = {.faner = m_ui->TabStrip1,
             .ark = {m_ui->frTabStrip_0, m_ui->frTabStrip_1},
             .venstre = kSideVenstre,
             .marg = kSidemarg};
    m_ark.leggBortAndre(kOversikt);
    m_ark.hentFram(kOversikt);
    kobleKontroller();
}

frmProdukt::~frmProdukt() = default;

void frmProdukt::kobleKontroller()
{
    onEvent(m_ui->TabStrip1, &TabStrip::clicked, this, [this] { TabStrip1_Click(); });
    onEvent(m_ui->btnNew, &QPushButton::clicked, this, [this] { btnNew_Click(); });
    onEvent(m_ui->btnChange, &QPushButton::clicked, this, [this] { btnChange_Click(); });
    onEvent(m_ui->btnSave, &QPushButton::clicked, this, [this] { btnSave_Click(); });
    onEvent(m_ui->btnCancel, &QPushButton::clicked, this, [this] { btnCancel_Click(); });
    onEvent(m_ui->btnRefresh, &QPushButton::clicked, this, [this] { btnRefresh_Click(); });
    onEvent(m_ui->btnClose, &QPushButton::clicked, this, [this] { unload(); });
    setCommandKey(Qt::CTRL | Qt::Key_N, m_ui->btnNew);
    setCommandKey(Qt::CTRL | Qt::Key_S, m_ui->btnSave);
    setCommandKey(Qt::Key_F5, m_ui->btnRefresh);

    onEvent(m_ui->vaSpread1, &fpSpread::DblClick, this,
            [this](int kol, int rad) { vaSpread1_DblClick(kol, rad); });
    onEvent(m_ui->vaSpread1, &fpSpread::SelChange, this,
            [this](int, int, int, int, int, int gjeldende) { VisProdukt(gjeldende); });
    onEvent(m_ui->vaSpread1, &fpSpread::LeaveCell, this,
            [this](int kol, int rad, int nyKol, int nyRad, bool *) {
                vaSpread1_LeaveCell(kol, rad, nyKol, nyRad);
            });

    for (QLineEdit *felt : m_txtFields) {
        felt->installEventFilter(this);
        holdOneLine(*felt);
        keepWhileLocked(*felt);
    }
    holdOneLine(*m_ui->cmbMvaSats->lineEdit());
    keepWhileLocked(*m_ui->cmbMvaSats->lineEdit());
    m_ui->cmbMvaSats->installEventFilter(this);
    m_ui->chkBruttoPris->installEventFilter(this);
    // A press past the focus, as from assistive technology.
    onEvent(m_ui->chkBruttoPris, &QCheckBox::clicked, this, [this](bool avkrysset) {
        if (!iModus())
            m_ui->chkBruttoPris->setChecked(!avkrysset);
    });
}

// --- The life of the form

void frmProdukt::onLoad()
{
    avsluttModus();
    Skjermbilde::onLoad();
    InitGrid();
    FyllGrid();
    const ProgramWrites skriver;
    m_ui->cmbMvaSats->clear();
    m_ui->cmbMvaSats->addItems({gMva25, gMva15, gMva10, gMva0});
    m_ui->vaSpread1->setFocus();
}

void frmProdukt::onResize()
{
    TabStrip &stripe = *m_ui->TabStrip1;
    const QSize side = pageSize();
    const int stripebredde = pixelsToTwips(side.width()) - kVedStripen;
    const int stripehoyde = pixelsToTwips(side.height()) - kOverOgUnderStripen;
    stripe.setGeometry(twipsToPixels(kStripeVenstre, kStripeTopp, stripebredde, stripehoyde));
    m_ui->topp->setGeometry(0, 0, side.width(), stripe.y());
    const int bunn = twipsToPixels(kBunnHoyde);
    m_ui->bunn->setGeometry(0, side.height() - bunn, side.width(), bunn);

    m_ark.tilpass(side.width());
    m_ui->vaSpread1->setGeometry(m_ui->frTabStrip_0->rect());
    if (stripe.selected() == kOversikt)
        tilpassNavn(*m_ui->vaSpread1, kolonne::ProduktNavn);
}

void frmProdukt::onUnload()
{
    m_rsProdukt.reset();
    Skjermbilde::onUnload();
}

// --- The list and the details

void frmProdukt::InitGrid()
{
    SpreadLockAll(*m_ui->vaSpread1, false);
}

void frmProdukt::FyllGrid()
{
    fpSpread &grid = *m_ui->vaSpread1;
    m_sortering.glem();
    grid.setRedraw(false);
    passOver([&] { SpreadLockAll(grid, false); });
    passOver([&] { SpreadClear(grid); });

    m_rsProdukt.reset();
    passOver([&] {
        m_rsProdukt = gDB->GetRS(
            u"SELECT * FROM Produkt WHERE "_s + klientVilkar() + u" ORDER BY ProduktNr"_s, false);
    });
    passOver([&] {
        if (m_rsProdukt->recordCount() > grid.maxRows())
            grid.setMaxRows(m_rsProdukt->recordCount() + 2);
    });

    const Ref<ado::Recordset> &rs = m_rsProdukt;
    qint16 rad = 0;
    const auto skriv = [&](int kol, const auto &tekst) {
        passOver([&] { SpreadSetText(grid, kol, rad, tekst()); });
    };
    for (; rs && !rs->eof(); rs->moveNext()) {
        // What a 16-bit counter cannot number is written over its last row.
        if (rad < std::numeric_limits<qint16>::max())
            ++rad;
        skriv(kolonne::ProduktNr, [&] { return rs->text(u"ProduktNr"); });
        skriv(kolonne::ProduktNavn, [&] { return rs->text(u"ProduktNavn"); });
        skriv(kolonne::Gruppe, [&] { return blankForTom(rs->text(u"ProduktGruppe")); });
        skriv(kolonne::Enhet, [&] { return blankForTom(rs->text(u"Enhet")); });
        skriv(kolonne::InnPris, [&] { return Format(rs->currency(u"InnPris"), u"#0.00"); });
        skriv(kolonne::UtPris, [&] { return Format(rs->currency(u"UtPris"), u"# ##0.00"); });
        skriv(kolonne::MvaSats, [&] { return Format(rs->single(u"MvaSats"), u"#0.0"); });
        skriv(kolonne::BruttoPris, [&] {
            const Value brutto = rs->value(u"BruttoPris");
            return !brutto.isNull() && brutto.toBoolean() ? u"1"_s : u"0"_s;
        });
        skriv(kolonne::ID, [&] { return Format(rs->integer(u"ID"), u"#0"); });
    }

    SpreadSetCellType(grid, kolonne::InnPris, kAll, int(CellKind::Float));
    SpreadSetCellType(grid, kolonne::UtPris, kAll, int(CellKind::Float));
    SpreadSetCellType(grid, kolonne::BruttoPris, kAll, int(CellKind::CheckBox));
    SpreadSetCellAlign(grid, kAll, kolonne::MvaSats, int(CellAlign::Centre));
    grid.setRedraw(true);
}

void frmProdukt::BlankFelter()
{
    for (QLineEdit *felt : m_txtFields)
        settTekst(*felt, QString());
    settTekst(*m_ui->txtFields_11, QString());
    settTekst(*m_txtFields[kInnPris], u"0.00"_s);
    settTekst(*m_txtFields[kUtPris], u"0.00"_s);
    m_ui->chkBruttoPris->setChecked(false);
    const ProgramWrites skriver;
    m_ui->cmbMvaSats->setCurrentIndex(0);
    m_txtFields[0]->setFocus();
}

void frmProdukt::VisProdukt(qint32 rad)
{
    const QString id = SpreadGetText(*m_ui->vaSpread1, kolonne::ID, rad);
    settTekst(*m_ui->txtFields_11, id);
    Ref<ado::Recordset> rs;
    passOver([&] {
        rs = gDB->GetRS(u"SELECT * FROM Produkt WHERE "_s + klientVilkar() + u" AND ID="_s + id,
                        true);
    });
    if (gDB->EmptyRS(rs))
        return;
    passOver([&] { settTekst(*m_txtFields[0], rs->text(u"ProduktNr")); });
    passOver([&] { settTekst(*m_txtFields[1], rs->text(u"ProduktNavn")); });
    passOver([&] { settTekst(*m_txtFields[2], rs->text(u"ProduktGruppe")); });
    passOver([&] { settTekst(*m_txtFields[3], rs->text(u"Enhet")); });
    passOver(
        [&] { settTekst(*m_txtFields[kInnPris], Format(rs->currency(u"InnPris"), u"# ##0.00")); });
    passOver(
        [&] { settTekst(*m_txtFields[kUtPris], Format(rs->currency(u"UtPris"), u"# ##0.00")); });
    passOver([&] { settTekst(*m_ui->cmbMvaSats, Format(rs->single(u"MvaSats"), u"#0.0")); });
    passOver([&] { settTekst(*m_ui->txtFields_11, Format(rs->integer(u"ID"), u"#0")); });
    passOver([&] { m_ui->chkBruttoPris->setChecked(rs->value(u"BruttoPris").toBoolean()); });
}

void frmProdukt::SettKnapper(const Valg &valg)
{
    m_ui->btnNew->setEnabled(valg.ny);
    m_ui->btnChange->setEnabled(valg.endre);
    m_ui->btnSave->setEnabled(valg.lagre);
    m_ui->btnCancel->setEnabled(valg.avbryt);
    m_ui->btnRefresh->setEnabled(m_ui->TabStrip1->selected() == kOversikt);
    m_ui->btnClose->setEnabled(true);
}

bool frmProdukt::harValgtRad() const
{
    return m_ui->vaSpread1->selectedRowCount() > 0;
}

// --- Events of the controls

void frmProdukt::TabStrip1_Click()
{
    const int valgt = m_ui->TabStrip1->selected();
    m_ark.hentFram(valgt);
    m_ark.leggBortAndre(valgt);
    if (valgt == kDetaljer) {
        m_ui->Label1->setText(u"Produkt detaljer, klikk på Ny for å legge inn ny post eller Endre "
                              "for å redigere en post."_s);
        SettKnapper({.ny = true, .endre = harValgtRad()});
        if (harValgtRad())
            VisProdukt(m_ui->vaSpread1->firstSelectedRow());
    } else {
        m_ui->Label1->setText(
            u"Oversikt over produkter, dobbeltklikk eller merk og klikk på Detaljer for å "
            "redigere."_s);
        btnRefresh_Click();
        SettKnapper({});
    }
    onResize();
}

void frmProdukt::btnNew_Click()
{
    m_ui->TabStrip1->select(kDetaljer);
    m_ui->TabStrip1->update();
    m_ark.hentFram(kDetaljer);
    BlankFelter();
    m_bNy = true;
    laasFelter();
    // The addition stays pending and is never completed: LagrePost writes the row.
    m_rsProdukt->addNew();
    SettKnapper({.lagre = true, .avbryt = true});
}

void frmProdukt::btnChange_Click()
{
    // Still in browse mode, so that the field sends the focus on to the name.
    m_txtFields[0]->setFocus();
    m_bEndre = true;
    laasFelter();
    SettKnapper({.lagre = true, .avbryt = true});
}

void frmProdukt::btnSave_Click()
{
    // Events run while the note stands. The second click of a double click is none of its own: it
    // would store a new product once more.
    if (m_lagrer)
        return;
    const QPointer<frmProdukt> skjerm(this);
    m_lagrer = true;
    const auto slutt = qScopeGuard([&] {
        if (skjerm)
            m_lagrer = false;
    });
    LagreProdukt();
    if (skjerm)
        SettKnapper({.ny = true, .endre = true, .avbryt = true});
}

/// What was typed stays to be seen, and the button stays on.
void frmProdukt::btnCancel_Click()
{
    avsluttModus();
    SettKnapper({.ny = true, .endre = true, .avbryt = true});
}

void frmProdukt::btnRefresh_Click()
{
    InitGrid();
    FyllGrid();
}

void frmProdukt::vaSpread1_DblClick(int kol, int rad)
{
    if (rad < 1) { // a column header
        m_sortering.sorter(*m_ui->vaSpread1, qint16(kol));
        return;
    }
    SpreadSelectRows(*m_ui->vaSpread1, rad, rad, true);
    VisProdukt(rad);
    m_ui->TabStrip1->select(kDetaljer);
    m_ark.hentFram(kDetaljer);
    SettKnapper({.ny = true, .endre = harValgtRad()});
}

void frmProdukt::avsluttModus()
{
    m_bNy = false;
    m_bEndre = false;
    laasFelter();
}

/// A browsed field sends the focus on, and takes no text on roads that need none.
void frmProdukt::laasFelter()
{
    for (QLineEdit *felt : m_txtFields)
        felt->setReadOnly(!iModus());
    m_ui->cmbMvaSats->lineEdit()->setReadOnly(!iModus());
}

// --- Focus of the details

bool frmProdukt::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::FocusIn:
        // A menu over a browsed field takes the key that sends the focus on, and gives it back.
        if (!erFlytting(event) && iModus())
            break;
        fikkFokus(watched, event);
        return true;
    case QEvent::FocusOut:
        if (erFlytting(event))
            mistetFokus(watched);
        break;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        // The list would come up over a box that sends the focus on.
        if (watched == m_ui->cmbMvaSats && !iModus())
            return true;
        break;
    default:
        break;
    }
    return Skjermbilde::eventFilter(watched, event);
}

void frmProdukt::fikkFokus(QObject *kontroll, QEvent *event)
{
    QLineEdit *pris = prisfelt(kontroll);
    int start = 0;
    if (pris)
        start = pris->hasSelectedText() ? pris->selectionStart() : pris->cursorPosition();
    // The control's own answer comes first: it may select the text from its beginning.
    kontroll->event(event);
    if (!iModus())
        sendKey(Qt::Key_Tab);
    if (pris)
        pris->setSelection(start, int(pris->text().size()));
}

void frmProdukt::mistetFokus(QObject *kontroll)
{
    if (QLineEdit *pris = prisfelt(kontroll))
        passOver([&] { settTekst(*pris, Format(pris->text(), u"# ##0.00")); });
}

QLineEdit *frmProdukt::prisfelt(const QObject *kontroll) const
{
    for (QLineEdit *felt : {m_txtFields[kInnPris], m_txtFields[kUtPris]}) {
        if (felt == kontroll)
            return felt;
    }
    return nullptr;
}

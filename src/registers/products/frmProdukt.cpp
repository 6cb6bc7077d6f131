#include "registers/products/frmProdukt.h"

#include "data/clsAdoUtils.h"
#include "data/mFaktura.h"
#include "platform/forms/LockedText.h"
#include "platform/forms/OneLine.h"
#include "platform/forms/OuterRim.h"
#include "platform/forms/SendKey.h"
#include "platform/forms/Twips.h"
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

constexpr int kListTab = 1;
constexpr int kDetailsTab = 2;
constexpr int kCostField = 4; // of txtFields
constexpr int kPriceField = 5;

// Twips.
constexpr int kPageLeft = 120;
constexpr int kStripLeft = 60;
constexpr int kStripTop = 1020;
constexpr int kBesideStrip = 120;
constexpr int kAboveAndBelowStrip = 1500;
constexpr int kFootHeight = kAboveAndBelowStrip - kStripTop;
constexpr int kPageMargin = 60;

/// A program's text stands with its beginning in sight and the selection start at 0.
void putText(QLineEdit &field, const QString &text)
{
    const ProgramWrites writes;
    field.setText(text);
    field.setCursorPosition(0);
}

void putText(QComboBox &box, const QString &text)
{
    const ProgramWrites writes;
    box.setCurrentIndex(-1);
    box.setEditText(text);
    box.lineEdit()->setCursorPosition(0);
}

/// An empty value leaves a blank in its cell.
QString blankForEmpty(const QString &text)
{
    return text.isEmpty() ? u" "_s : text;
}

/// Changes of focus between controls, not those of a window that loses or regains the user.
bool isMove(const QEvent *event)
{
    const Qt::FocusReason reason = static_cast<const QFocusEvent *>(event)->reason();
    return reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason;
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
    m_txtFields = {m_ui->txtFields_0, m_ui->txtFields_1, m_ui->txtFields_2,
                   m_ui->txtFields_3, m_ui->txtFields_4, m_ui->txtFields_5};
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
    for (const int col : {kolonne::Gruppe, kolonne::ID, kolonne::Changed})
        grid.setColHidden(col, true);

    m_ark = {.faner = m_ui->TabStrip1,
             .ark = {m_ui->frTabStrip_0, m_ui->frTabStrip_1},
             .venstre = kPageLeft,
             .marg = kPageMargin};
    m_ark.leggBortAndre(kListTab);
    m_ark.hentFram(kListTab);
    connectControls();
}

frmProdukt::~frmProdukt() = default;

void frmProdukt::connectControls()
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
            [this](int col, int row) { vaSpread1_DblClick(col, row); });
    onEvent(m_ui->vaSpread1, &fpSpread::SelChange, this,
            [this](int, int, int, int, int, int curRow) { VisProdukt(curRow); });
    onEvent(m_ui->vaSpread1, &fpSpread::LeaveCell, this,
            [this](int col, int row, int newCol, int newRow, bool *) {
                vaSpread1_LeaveCell(col, row, newCol, newRow);
            });

    for (QLineEdit *field : m_txtFields) {
        field->installEventFilter(this);
        holdOneLine(*field);
        keepWhileLocked(*field);
    }
    holdOneLine(*m_ui->cmbMvaSats->lineEdit());
    keepWhileLocked(*m_ui->cmbMvaSats->lineEdit());
    m_ui->cmbMvaSats->installEventFilter(this);
    m_ui->chkBruttoPris->installEventFilter(this);
    // A press past the focus, as from assistive technology.
    onEvent(m_ui->chkBruttoPris, &QCheckBox::clicked, this, [this](bool checked) {
        if (!isEditing())
            m_ui->chkBruttoPris->setChecked(!checked);
    });
}

// --- The life of the form

void frmProdukt::onLoad()
{
    setMode(false, false);
    Skjermbilde::onLoad();
    InitGrid();
    FyllGrid();
    const ProgramWrites writes;
    m_ui->cmbMvaSats->clear();
    m_ui->cmbMvaSats->addItems({gMva25, gMva15, gMva10, gMva0});
    m_ui->vaSpread1->setFocus();
}

void frmProdukt::onResize()
{
    TabStrip &strip = *m_ui->TabStrip1;
    const QSize page = pageSize();
    const int stripWidth = pixelsToTwips(page.width()) - kBesideStrip;
    const int stripHeight = pixelsToTwips(page.height()) - kAboveAndBelowStrip;
    strip.setGeometry(twipsToPixels(kStripLeft, kStripTop, stripWidth, stripHeight));
    m_ui->topp->setGeometry(0, 0, page.width(), strip.y());
    const int foot = twipsToPixels(kFootHeight);
    m_ui->bunn->setGeometry(0, page.height() - foot, page.width(), foot);

    m_ark.tilpass(page.width());
    m_ui->vaSpread1->setGeometry(m_ui->frTabStrip_0->rect());
    if (strip.selected() == kListTab)
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
    qint16 row = 0;
    const auto write = [&](int col, const auto &text) {
        passOver([&] { SpreadSetText(grid, col, row, text(), false); });
    };
    for (; rs && !rs->eof(); rs->moveNext()) {
        // What a 16-bit counter cannot number is written over its last row.
        if (row < std::numeric_limits<qint16>::max())
            ++row;
        write(kolonne::ProduktNr, [&] { return rs->text(u"ProduktNr"); });
        write(kolonne::ProduktNavn, [&] { return rs->text(u"ProduktNavn"); });
        write(kolonne::Gruppe, [&] { return blankForEmpty(rs->text(u"ProduktGruppe")); });
        write(kolonne::Enhet, [&] { return blankForEmpty(rs->text(u"Enhet")); });
        write(kolonne::InnPris, [&] { return Format(rs->currency(u"InnPris"), u"#0.00"); });
        write(kolonne::UtPris, [&] { return Format(rs->currency(u"UtPris"), u"# ##0.00"); });
        write(kolonne::MvaSats, [&] { return Format(rs->single(u"MvaSats"), u"#0.0"); });
        write(kolonne::BruttoPris, [&] {
            const Value gross = rs->value(u"BruttoPris");
            return !gross.isNull() && gross.toBoolean() ? u"1"_s : u"0"_s;
        });
        write(kolonne::ID, [&] { return Format(rs->integer(u"ID"), u"#0"); });
    }

    SpreadSetCellType(grid, kolonne::InnPris, kAll, int(CellKind::Float), false, {}, {});
    SpreadSetCellType(grid, kolonne::UtPris, kAll, int(CellKind::Float), false, {}, {});
    SpreadSetCellType(grid, kolonne::BruttoPris, kAll, int(CellKind::CheckBox), false, {}, {});
    SpreadSetCellAlign(grid, kAll, kolonne::MvaSats, int(CellAlign::Centre));
    grid.setRedraw(true);
}

void frmProdukt::BlankFelter()
{
    for (QLineEdit *field : m_txtFields)
        putText(*field, QString());
    putText(*m_ui->txtFields_11, QString());
    putText(*m_txtFields[kCostField], u"0.00"_s);
    putText(*m_txtFields[kPriceField], u"0.00"_s);
    m_ui->chkBruttoPris->setChecked(false);
    const ProgramWrites writes;
    m_ui->cmbMvaSats->setCurrentIndex(0);
    m_txtFields[0]->setFocus();
}

void frmProdukt::VisProdukt(qint32 row)
{
    const QString id = SpreadGetText(*m_ui->vaSpread1, kolonne::ID, row);
    putText(*m_ui->txtFields_11, id);
    Ref<ado::Recordset> rs;
    passOver([&] {
        rs = gDB->GetRS(u"SELECT * FROM Produkt WHERE "_s + klientVilkar() + u" AND ID="_s + id,
                        true);
    });
    if (gDB->EmptyRS(rs))
        return;
    passOver([&] { putText(*m_txtFields[0], rs->text(u"ProduktNr")); });
    passOver([&] { putText(*m_txtFields[1], rs->text(u"ProduktNavn")); });
    passOver([&] { putText(*m_txtFields[2], rs->text(u"ProduktGruppe")); });
    passOver([&] { putText(*m_txtFields[3], rs->text(u"Enhet")); });
    passOver(
        [&] { putText(*m_txtFields[kCostField], Format(rs->currency(u"InnPris"), u"# ##0.00")); });
    passOver(
        [&] { putText(*m_txtFields[kPriceField], Format(rs->currency(u"UtPris"), u"# ##0.00")); });
    passOver([&] { putText(*m_ui->cmbMvaSats, Format(rs->single(u"MvaSats"), u"#0.0")); });
    passOver([&] { putText(*m_ui->txtFields_11, Format(rs->integer(u"ID"), u"#0")); });
    passOver([&] { m_ui->chkBruttoPris->setChecked(rs->value(u"BruttoPris").toBoolean()); });
}

void frmProdukt::SettKnapper(bool bNew, bool bChange, bool bSave, bool bCancel)
{
    m_ui->btnNew->setEnabled(bNew);
    m_ui->btnChange->setEnabled(bChange);
    m_ui->btnSave->setEnabled(bSave);
    m_ui->btnCancel->setEnabled(bCancel);
    m_ui->btnRefresh->setEnabled(m_ui->TabStrip1->selected() == kListTab);
    m_ui->btnClose->setEnabled(true);
}

bool frmProdukt::isRowSelected() const
{
    return m_ui->vaSpread1->selectedRowCount() > 0;
}

// --- Events of the controls

void frmProdukt::TabStrip1_Click()
{
    const int selected = m_ui->TabStrip1->selected();
    m_ark.hentFram(selected);
    m_ark.leggBortAndre(selected);
    if (selected == kDetailsTab) {
        m_ui->Label1->setText(u"Produkt detaljer, klikk på Ny for å legge inn ny post eller Endre "
                              "for å redigere en post."_s);
        SettKnapper(true, isRowSelected(), false, false);
        if (isRowSelected())
            VisProdukt(m_ui->vaSpread1->firstSelectedRow());
    } else {
        m_ui->Label1->setText(
            u"Oversikt over produkter, dobbeltklikk eller merk og klikk på Detaljer for å "
            "redigere."_s);
        btnRefresh_Click();
        SettKnapper(false, false, false, false);
    }
    onResize();
}

void frmProdukt::btnNew_Click()
{
    m_ui->TabStrip1->select(kDetailsTab);
    m_ui->TabStrip1->update();
    m_ark.hentFram(kDetailsTab);
    BlankFelter();
    setMode(true, m_bEndre);
    // The addition stays pending and is never completed: LagrePost writes the row.
    m_rsProdukt->addNew();
    SettKnapper(false, false, true, true);
}

void frmProdukt::btnChange_Click()
{
    // Still in browse mode, so that the field sends the focus on to the name.
    m_txtFields[0]->setFocus();
    setMode(m_bNy, true);
    SettKnapper(false, false, true, true);
}

void frmProdukt::btnSave_Click()
{
    // Events run while the note stands. The second click of a double click is none of its own: it
    // would store a new product once more.
    if (m_lagrer)
        return;
    const QPointer<frmProdukt> self(this);
    m_lagrer = true;
    const auto ended = qScopeGuard([&] {
        if (self)
            m_lagrer = false;
    });
    LagreProdukt();
    if (self)
        SettKnapper(true, true, false, true);
}

/// What was typed stays to be seen, and the button stays on.
void frmProdukt::btnCancel_Click()
{
    setMode(false, false);
    SettKnapper(true, true, false, true);
}

void frmProdukt::btnRefresh_Click()
{
    InitGrid();
    FyllGrid();
}

void frmProdukt::vaSpread1_DblClick(int col, int row)
{
    if (row < 1) { // a column header
        m_sortering.sorter(*m_ui->vaSpread1, qint16(col));
        return;
    }
    SpreadSelectRows(*m_ui->vaSpread1, row, row, true);
    VisProdukt(row);
    m_ui->TabStrip1->select(kDetailsTab);
    m_ark.hentFram(kDetailsTab);
    SettKnapper(true, isRowSelected(), false, false);
}

/// A browsed field sends the focus on, and takes no text on roads that need none.
void frmProdukt::setMode(bool isNew, bool isChange)
{
    m_bNy = isNew;
    m_bEndre = isChange;
    for (QLineEdit *field : m_txtFields)
        field->setReadOnly(!isEditing());
    m_ui->cmbMvaSats->lineEdit()->setReadOnly(!isEditing());
}

// --- Focus of the details

bool frmProdukt::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::FocusIn:
        // A menu over a browsed field takes the key that sends the focus on, and gives it back.
        if (!isMove(event) && isEditing())
            break;
        gotFocus(watched, event);
        return true;
    case QEvent::FocusOut:
        if (isMove(event))
            lostFocus(watched);
        break;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        // The list would come up over a box that sends the focus on.
        if (watched == m_ui->cmbMvaSats && !isEditing())
            return true;
        break;
    default:
        break;
    }
    return Skjermbilde::eventFilter(watched, event);
}

void frmProdukt::gotFocus(QObject *control, QEvent *event)
{
    QLineEdit *price = priceField(control);
    int start = 0;
    if (price)
        start = price->hasSelectedText() ? price->selectionStart() : price->cursorPosition();
    // The control's own answer comes first: it may select the text from its beginning.
    control->event(event);
    if (!isEditing())
        sendKey(Qt::Key_Tab);
    if (price)
        price->setSelection(start, int(price->text().size()));
}

void frmProdukt::lostFocus(QObject *control)
{
    if (QLineEdit *price = priceField(control))
        passOver([&] { putText(*price, Format(price->text(), u"# ##0.00")); });
}

QLineEdit *frmProdukt::priceField(const QObject *control) const
{
    for (QLineEdit *field : {m_txtFields[kCostField], m_txtFields[kPriceField]}) {
        if (field == control)
            return field;
    }
    return nullptr;
}

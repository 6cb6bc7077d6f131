#include "output/printing/Forhandsvisning.h"

#include "output/printing/Sidevisning.h"
#include "output/printing/Skriver.h"
#include "platform/forms/CommonDialog.h"
#include "platform/forms/ModalDialog.h"
#include "platform/forms/MsgBox.h"
#include "platform/forms/NorwegianTexts.h"
#include "platform/forms/OuterRim.h"
#include "platform/forms/OwnPicture.h"
#include "platform/forms/PassingWheel.h"
#include "platform/report/ReportError.h"
#include "presentation/screens/Skjerm.h"
#include "runtime/RunTimeError.h"

#include <QAccessibleWidget>
#include <QAction>
#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QSpinBox>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr QSize kBilde{16, 16};
constexpr QSize kStorrelse{900, 700}; // where the settings have none
constexpr int kSmalest = 600;         // wide, unless the buttons do with less
constexpr int kZoomvalg[] = {25, 50, 75, 100, 125, 150, 200, 300, 400};
const QString kSidebredde = u"Sidebredde"_s;
const QString kHelSide = u"Hel side"_s;

QString prosent(int zoom)
{
    return QString::number(zoom) + u" %"_s;
}

/// Runs what may fail on its way to a printer or a file, and tells the user.
void meldVedFeil(const std::function<void()> &utfor)
{
    try {
        utfor();
    } catch (const RunTimeError &feil) {
        if (feil.number() != report::errors::kCancelled)
            MsgBox(feil.description(), msgbox::kExclamation);
    }
}

} // namespace

Forhandsvisning::Forhandsvisning(std::shared_ptr<const report::Document> dokument,
                                 const report::WindowSettings &vindu)
    : QWidget(nullptr, Qt::Window), m_dokument(std::move(dokument)),
      m_sider(new Sidevisning(m_dokument, this))
{
    installNorwegianTexts();
    ignorePassingWheel(*this);
    QAccessible::registerAccessibleInterface(new QAccessibleWidget(this, QAccessible::Window));
    setObjectName(u"Forhandsvisning"_s);
    setLocale(QLocale(QLocale::NorwegianBokmal, QLocale::Norway));
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(m_dokument->title.isEmpty() ? u"Forhåndsvisning"_s
                                               : m_dokument->title + u" - Forhåndsvisning"_s);
    m_sider->setObjectName(u"sider"_s);
    m_sider->setAccessibleName(u"Rapportens sider"_s);

    auto *rader = new QVBoxLayout(this);
    rader->setContentsMargins(0, 0, 0, 0);
    rader->setSpacing(0);
    if (vindu.controls) {
        m_linjer = new QBoxLayout(QBoxLayout::LeftToRight);
        m_linjer->setSpacing(0);
        lagVerktoylinjer();
        rader->addLayout(m_linjer);
    }
    rader->addWidget(m_sider);

    move(vindu.left, y());
    const QSize storrelse(vindu.width > 0 ? vindu.width : kStorrelse.width(),
                          vindu.height > 0 ? vindu.height : kStorrelse.height());
    resize(storrelse.boundedTo(roomFor(*this)));
    if (vindu.state == report::WindowState::Maximized)
        setWindowState(Qt::WindowMaximized);
    if (vindu.controls) {
        onEvent(m_sider, &Sidevisning::sideEndret, this, [this] { visTilstand(); });
        onEvent(m_sider, &Sidevisning::zoomEndret, this, [this] { visZoom(); });
        visTilstand();
        visZoom();
        visTreff();
    }
    lesSidene();
}

Forhandsvisning::~Forhandsvisning()
{
    // The controls outlive this part of the window, and a field that goes tells what was typed.
    for (QObject *barn : findChildren<QObject *>())
        barn->disconnect(this);
}

void Forhandsvisning::lesSidene()
{
    m_sider->setFocus();
}

void Forhandsvisning::settZoom(int prosent)
{
    m_sider->settZoom(prosent);
}

/// A command of the window: button and keys alike.
QAction *Forhandsvisning::handling(const QString &navn, const QString &tekst, const QString &bilde,
                                   const QList<QKeySequence> &taster, std::function<void()> utfor)
{
    auto *kommando = new QAction(tekst, this);
    kommando->setIcon(ownPicture(u":/faktura/%1.svg"_s.arg(bilde), kBilde));
    kommando->setObjectName(navn);
    kommando->setShortcuts(taster);
    kommando->setToolTip(
        u"%1 (%2)"_s.arg(tekst, taster.constFirst().toString(QKeySequence::NativeText)));
    onEvent(kommando, &QAction::triggered, this, std::move(utfor));
    addAction(kommando);
    return kommando;
}

void Forhandsvisning::lagVerktoylinjer()
{
    auto *verktoy = new QToolBar(this);
    verktoy->setObjectName(u"verktoy"_s);
    lagSidevalg(*verktoy);
    verktoy->addSeparator();
    lagZoomvalg(*verktoy);
    verktoy->addSeparator();
    lagUtskriftsvalg(*verktoy);
    m_linjer->addWidget(verktoy);
    auto *sok = new QToolBar(this);
    sok->setObjectName(u"sok"_s);
    lagSok(*sok);
    m_linjer->addWidget(sok, 1);
    for (QToolBar *linje : {verktoy, sok}) {
        linje->setIconSize(kBilde);
        for (QAction *kommando : linje->actions()) {
            if (QWidget *knapp = linje->widgetForAction(kommando);
                knapp && !kommando->objectName().isEmpty())
                knapp->setObjectName(kommando->objectName());
        }
    }
    // The order screen sends the key Tab to move its own focus on, and the key may land here, where
    // it must not take the keyboard from the pages. Every command has a key of its own.
    for (QWidget *felt : std::initializer_list<QWidget *>{m_sidenr, m_zoom, m_sokt})
        felt->setFocusPolicy(Qt::ClickFocus);
}

/// The search goes below the buttons where there is no room beside them.
void Forhandsvisning::leggLinjene()
{
    if (!m_linjer)
        return;
    int samlet = 0;
    int bredest = 0;
    for (int nr = 0; nr < m_linjer->count(); ++nr) {
        const int bredde = m_linjer->itemAt(nr)->sizeHint().width();
        samlet += bredde;
        bredest = std::max(bredest, bredde);
    }
    m_linjer->setDirection(samlet > width() ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
    setMinimumWidth(std::min(bredest, kSmalest));
}

void Forhandsvisning::lagSidevalg(QToolBar &linje)
{
    m_forste = handling(u"cmdForste"_s, u"Første side"_s, u"forste"_s, {Qt::CTRL | Qt::Key_Home},
                        [this] { m_sider->visSide(0); });
    m_forrige =
        handling(u"cmdForrige"_s, u"Forrige side"_s, u"forrige"_s, {Qt::CTRL | Qt::Key_PageUp},
                 [this] { m_sider->visSide(m_sider->side() - 1); });
    m_neste = handling(u"cmdNeste"_s, u"Neste side"_s, u"neste"_s, {Qt::CTRL | Qt::Key_PageDown},
                       [this] { m_sider->visSide(m_sider->side() + 1); });
    m_siste = handling(u"cmdSiste"_s, u"Siste side"_s, u"siste"_s, {Qt::CTRL | Qt::Key_End},
                       [this] { m_sider->visSide(m_sider->antallSider() - 1); });

    m_sidenr = new QSpinBox(&linje);
    m_sidenr->setObjectName(u"txtSide"_s);
    m_sidenr->setAccessibleName(u"Sidenummer"_s);
    m_sidenr->setToolTip(u"Sidenummer"_s);
    m_sidenr->setRange(1, m_sider->antallSider());
    m_sidenr->setButtonSymbols(QAbstractSpinBox::NoButtons);
    m_sidenr->setAlignment(Qt::AlignRight);
    m_sidenr->setKeyboardTracking(false);
    onEvent(m_sidenr, &QSpinBox::valueChanged, this, [this](int nr) { m_sider->visSide(nr - 1); });
    auto *antall = new QLabel(u" av %1 "_s.arg(m_sider->antallSider()), &linje);
    antall->setObjectName(u"lblAntallSider"_s);

    linje.addAction(m_forste);
    linje.addAction(m_forrige);
    linje.addWidget(m_sidenr);
    linje.addWidget(antall);
    linje.addAction(m_neste);
    linje.addAction(m_siste);
}

void Forhandsvisning::lagZoomvalg(QToolBar &linje)
{
    m_zoom = new QComboBox(&linje);
    m_zoom->setObjectName(u"cmbZoom"_s);
    m_zoom->setAccessibleName(u"Forstørrelse"_s);
    m_zoom->setToolTip(u"Forstørrelse (Ctrl og musehjulet)"_s);
    m_zoom->setEditable(true);
    m_zoom->setCompleter(nullptr);
    m_zoom->setInsertPolicy(QComboBox::NoInsert);
    for (const int valg : kZoomvalg)
        m_zoom->addItem(prosent(valg));
    m_zoom->addItems({kSidebredde, kHelSide});
    m_zoom->setMaxVisibleItems(m_zoom->count());
    onEvent(m_zoom, &QComboBox::activated, this, [this] { velgZoom(); });
    onEvent(m_zoom->lineEdit(), &QLineEdit::editingFinished, this, [this] { velgZoom(); });

    linje.addAction(handling(u"cmdZoomUt"_s, u"Mindre"_s, u"zoomut"_s, {Qt::CTRL | Qt::Key_Minus},
                             [this] { m_sider->zoomTrinn(-1); }));
    linje.addWidget(m_zoom);
    linje.addAction(handling(u"cmdZoomInn"_s, u"Større"_s, u"zoominn"_s,
                             {Qt::CTRL | Qt::Key_Plus, Qt::CTRL | Qt::Key_Equal},
                             [this] { m_sider->zoomTrinn(1); }));
    auto *helStorrelse = new QAction(this);
    helStorrelse->setShortcut(Qt::CTRL | Qt::Key_0);
    onEvent(helStorrelse, &QAction::triggered, this, [this] { m_sider->settZoom(100); });
    addAction(helStorrelse);
}

void Forhandsvisning::lagUtskriftsvalg(QToolBar &linje)
{
    QAction *skriv = handling(u"cmdSkriv"_s, u"Skriv ut"_s, u"skriver"_s, {Qt::CTRL | Qt::Key_P},
                              [this] { skrivUt(); });
    QAction *lagre = handling(u"cmdPdf"_s, u"Lagre som PDF"_s, u"pdf"_s, {Qt::CTRL | Qt::Key_S},
                              [this] { lagrePdf(); });
    for (QAction *kommando : {skriv, lagre}) {
        linje.addAction(kommando);
        if (auto *knapp = qobject_cast<QToolButton *>(linje.widgetForAction(kommando)))
            knapp->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    }
}

void Forhandsvisning::lagSok(QToolBar &linje)
{
    m_sokt = new QLineEdit(&linje);
    m_sokt->setObjectName(u"txtSok"_s);
    m_sokt->setAccessibleName(u"Søk i rapporten"_s);
    m_sokt->setPlaceholderText(u"Søk (Ctrl+F)"_s);
    m_sokt->setClearButtonEnabled(true);
    onEvent(m_sokt, &QLineEdit::textEdited, this, [this] { sok(); });
    // The clear button edits without telling so.
    onEvent(m_sokt, &QLineEdit::textChanged, this, [this](const QString &tekst) {
        if (tekst.isEmpty())
            sok();
    });
    m_trefftekst = new QLabel(&linje);
    m_trefftekst->setObjectName(u"lblTreff"_s);
    m_trefftekst->setMinimumWidth(
        m_trefftekst->fontMetrics().horizontalAdvance(u"8888 av 8888 "_s));
    m_trefftekst->setAlignment(Qt::AlignCenter);
    m_forrigeTreff = handling(u"cmdForrigeTreff"_s, u"Forrige treff"_s, u"opp"_s,
                              {Qt::SHIFT | Qt::Key_F3}, [this] { gaaTilTreff(-1); });
    m_nesteTreff = handling(u"cmdNesteTreff"_s, u"Neste treff"_s, u"ned"_s, {Qt::Key_F3},
                            [this] { gaaTilTreff(1); });
    auto *tilSok = new QAction(this);
    tilSok->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_F));
    onEvent(tilSok, &QAction::triggered, this, [this] {
        m_sokt->setFocus(Qt::ShortcutFocusReason);
        m_sokt->selectAll();
    });
    addAction(tilSok);

    linje.addWidget(m_sokt);
    linje.addAction(m_forrigeTreff);
    linje.addAction(m_nesteTreff);
    linje.addWidget(m_trefftekst);
}

void Forhandsvisning::visTilstand()
{
    const int side = m_sider->side();
    const QSignalBlocker stille(m_sidenr);
    m_sidenr->setValue(side + 1);
    for (QAction *bakover : {m_forste, m_forrige})
        bakover->setEnabled(side > 0);
    for (QAction *framover : {m_neste, m_siste})
        framover->setEnabled(side + 1 < m_sider->antallSider());
}

void Forhandsvisning::visZoom()
{
    const QSignalBlocker stille(m_zoom);
    m_zoom->setEditText(prosent(m_sider->zoom()));
}

void Forhandsvisning::velgZoom()
{
    const QString valg = m_zoom->currentText();
    if (valg == kSidebredde) {
        m_sider->settTilpasning(Sidevisning::Tilpasning::Sidebredde);
    } else if (valg == kHelSide) {
        m_sider->settTilpasning(Sidevisning::Tilpasning::HelSide);
    } else {
        bool erTall = false;
        const int zoom = QString(valg).remove(u'%').trimmed().toInt(&erTall);
        if (erTall && zoom != m_sider->zoom())
            m_sider->settZoom(zoom);
    }
    visZoom();
}

void Forhandsvisning::sok()
{
    m_treff = finnTekst(*m_dokument, m_sokt->text());
    // The first hit from the page that is being read.
    const auto forste = std::find_if(m_treff.begin(), m_treff.end(), [this](const Treff &treff) {
        return treff.side >= m_sider->side();
    });
    m_valgtTreff = m_treff.empty()           ? -1
                   : forste == m_treff.end() ? 0
                                             : int(forste - m_treff.begin());
    visTreff();
}

void Forhandsvisning::gaaTilTreff(int retning)
{
    const int antall = int(m_treff.size());
    if (antall == 0)
        return;
    m_valgtTreff = (m_valgtTreff + retning + antall) % antall;
    visTreff();
}

void Forhandsvisning::visTreff()
{
    m_sider->settTreff(m_treff, m_valgtTreff);
    m_sider->visValgtTreff();
    m_trefftekst->setText(m_sokt->text().isEmpty() ? QString()
                          : m_treff.empty()
                              ? u"Ingen treff"_s
                              : u"%1 av %2"_s.arg(m_valgtTreff + 1).arg(m_treff.size()));
    for (QAction *kommando : {m_forrigeTreff, m_nesteTreff})
        kommando->setEnabled(!m_treff.empty());
}

void Forhandsvisning::skrivUt()
{
    const auto dokument = m_dokument; // the window may go while the dialog is up
    CommonDialog dialog;
    dialog.fileName = pdfNavn(*dokument);
    dialog.cancelError = true;
    if (passOver([&] { dialog.showPrinter(); }) != 0)
        return;
    const ValgtSkriver valgt(dialog, dialog.copies);
    meldVedFeil([&] { ::skrivUt(*dokument); });
}

void Forhandsvisning::lagrePdf()
{
    const auto dokument = m_dokument;
    if (const auto fil = velgPdfFil(u"Lagre som PDF"_s, *dokument))
        meldVedFeil([&] { ::skrivPdf(*dokument, *fil); });
}

bool Forhandsvisning::event(QEvent *hendelse)
{
    const bool ferdig = QWidget::event(hendelse);
    // The second when the letters' size has changed.
    if (hendelse->type() == QEvent::Resize || hendelse->type() == QEvent::LayoutRequest)
        leggLinjene();
    return ferdig;
}

void Forhandsvisning::keyPressEvent(QKeyEvent *hendelse)
{
    const bool linjeskift = hendelse->key() == Qt::Key_Return || hendelse->key() == Qt::Key_Enter;
    if (hendelse->key() == Qt::Key_F1)
        VisHjelp(u"html\\forhandsvisning.htm"_s);
    else if (hendelse->matches(QKeySequence::Cancel) && m_sokt && m_sokt->hasFocus())
        lesSidene();
    else if (hendelse->matches(QKeySequence::Cancel))
        close();
    else if (linjeskift && m_sokt && m_sokt->hasFocus())
        gaaTilTreff(hendelse->modifiers().testFlag(Qt::ShiftModifier) ? -1 : 1);
    else
        QWidget::keyPressEvent(hendelse);
}

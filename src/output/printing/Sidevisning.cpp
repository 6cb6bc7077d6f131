#include "output/printing/Sidevisning.h"

#include "platform/report/Painter.h"

#include <QPaintEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr double kPikslerPrMm = 96 / 25.4; // at 100 per cent
constexpr int kMellomrom = 14;             // pixels around the pages
constexpr int kLinje = 40;                 // pixels for an arrow key
constexpr int kLuftVedTreff = 60;          // pixels between a hit and the window's edge
constexpr double kTrinn[] = {10,  15,  25,  33,  50,  67,  75,  90,  100,
                             110, 125, 150, 175, 200, 250, 300, 400, 500};
constexpr QRgb kBakgrunn = 0xff8a929c;
constexpr QRgb kKant = 0xff5d646d;
constexpr QRgb kSkygge = 0x40000000;
constexpr QRgb kTreff = 0xfffff0a0;
constexpr QRgb kValgtTreff = 0xffffb84d;

} // namespace

Sidevisning::Sidevisning(std::shared_ptr<const report::Document> dokument, QWidget *parent)
    : QAbstractScrollArea(parent), m_dokument(std::move(dokument))
{
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::StrongFocus);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    viewport()->setCursor(Qt::OpenHandCursor);
    verticalScrollBar()->setSingleStep(kLinje);
    horizontalScrollBar()->setSingleStep(kLinje);
}

int Sidevisning::antallSider() const
{
    return int(m_dokument->pages.size());
}

int Sidevisning::zoom() const
{
    return int(std::lround(m_zoom));
}

double Sidevisning::pikslerPrMm() const
{
    return kPikslerPrMm * m_zoom / 100;
}

QSize Sidevisning::sidestorrelse() const
{
    return (m_dokument->paper * pikslerPrMm()).toSize();
}

int Sidevisning::sidehoydeMedMellomrom() const
{
    return sidestorrelse().height() + kMellomrom;
}

QRect Sidevisning::sideplass(int side) const
{
    const QSize storrelse = sidestorrelse();
    const int luft = viewport()->width() - storrelse.width();
    const int x = luft > 2 * kMellomrom ? luft / 2 : kMellomrom - horizontalScrollBar()->value();
    const int y = kMellomrom + side * sidehoydeMedMellomrom() - verticalScrollBar()->value();
    return {QPoint(x, y), storrelse};
}

/// The page at a height in the viewport, or the nearest one.
int Sidevisning::sideVed(int y) const
{
    const int ovenfra = y + verticalScrollBar()->value() - kMellomrom / 2;
    return std::clamp(ovenfra / sidehoydeMedMellomrom(), 0, std::max(antallSider() - 1, 0));
}

void Sidevisning::visSide(int side)
{
    side = std::clamp(side, 0, std::max(antallSider() - 1, 0));
    // The last pages may not reach the window's upper edge; they are being read all the same.
    m_folgerRulling = false;
    verticalScrollBar()->setValue(side * sidehoydeMedMellomrom());
    m_folgerRulling = true;
    settSide(side);
}

void Sidevisning::settSide(int side)
{
    if (std::exchange(m_side, side) != side)
        Q_EMIT sideEndret(side);
}

void Sidevisning::settZoom(double prosent)
{
    m_tilpasning = Tilpasning::Prosent;
    bruk(prosent, viewport()->rect().center());
}

void Sidevisning::settTilpasning(Tilpasning tilpasning)
{
    m_tilpasning = tilpasning;
    const int side = m_side;
    bruk(tilpassetZoom(), viewport()->rect().center());
    if (tilpasning == Tilpasning::HelSide)
        visSide(side);
}

void Sidevisning::zoomTrinn(int retning)
{
    // A fitted zoom lies between two steps.
    constexpr double kSammeTrinn = 0.5;
    if (retning > 0) {
        const auto *over =
            std::upper_bound(std::begin(kTrinn), std::end(kTrinn), m_zoom + kSammeTrinn);
        settZoom(over == std::end(kTrinn) ? kStorsteZoom : *over);
    } else {
        const auto *fra =
            std::lower_bound(std::begin(kTrinn), std::end(kTrinn), m_zoom - kSammeTrinn);
        settZoom(fra == std::begin(kTrinn) ? m_zoom : *std::prev(fra));
    }
}

double Sidevisning::tilpassetZoom() const
{
    if (m_tilpasning == Tilpasning::Prosent)
        return m_zoom;
    // Without the scroll bar's coming and going, which would change the answer.
    const double bredde =
        maximumViewportSize().width() - verticalScrollBar()->sizeHint().width() - 2.0 * kMellomrom;
    const double hoyde = maximumViewportSize().height() - 2.0 * kMellomrom;
    const double iBredden = bredde / (m_dokument->paper.width() * kPikslerPrMm);
    const double iHoyden = hoyde / (m_dokument->paper.height() * kPikslerPrMm);
    return 100 * (m_tilpasning == Tilpasning::Sidebredde ? iBredden : std::min(iBredden, iHoyden));
}

/// Zooms; what stands at the point `fast` of the viewport stays there.
void Sidevisning::bruk(double prosent, const QPoint &fast)
{
    prosent = std::clamp<double>(prosent, kMinsteZoom, kStorsteZoom);
    const int side = sideVed(fast.y());
    const QPointF punkt = QPointF(fast - sideplass(side).topLeft()) / pikslerPrMm();
    const bool endret = std::exchange(m_zoom, prosent) != prosent;
    m_folgerRulling = false;
    leggUt();
    const QPoint flytting = (sideplass(side).topLeft() + punkt * pikslerPrMm()).toPoint() - fast;
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() + flytting.x());
    verticalScrollBar()->setValue(verticalScrollBar()->value() + flytting.y());
    m_folgerRulling = true;
    viewport()->update();
    if (endret)
        Q_EMIT zoomEndret();
}

void Sidevisning::leggUt()
{
    const QSize vindu = viewport()->size();
    const int bredde = sidestorrelse().width() + 2 * kMellomrom;
    const int hoyde = antallSider() * sidehoydeMedMellomrom() + kMellomrom;
    horizontalScrollBar()->setRange(0, std::max(0, bredde - vindu.width()));
    horizontalScrollBar()->setPageStep(vindu.width());
    verticalScrollBar()->setRange(0, std::max(0, hoyde - vindu.height()));
    verticalScrollBar()->setPageStep(vindu.height() - kLinje);
}

void Sidevisning::settTreff(std::vector<Treff> treff, int valgt)
{
    m_treff = std::move(treff);
    m_valgt = valgt;
    viewport()->update();
}

void Sidevisning::visValgtTreff()
{
    if (m_valgt < 0)
        return;
    const Treff &treff = m_treff[size_t(m_valgt)];
    const QRectF plass = plassAv(*m_dokument, treff);
    const QPointF hjorne = sideplass(treff.side).topLeft();
    const QRectF iVinduet(hjorne + plass.topLeft() * pikslerPrMm(), plass.size() * pikslerPrMm());
    const auto rull = [](QScrollBar &felt, double fra, double til, int rom) {
        const int luft = std::min(kLuftVedTreff, rom / 3);
        if (fra < luft)
            felt.setValue(felt.value() + int(fra) - luft);
        else if (til > rom - luft)
            felt.setValue(felt.value() + int(til) - rom + luft);
    };
    rull(*verticalScrollBar(), iVinduet.top(), iVinduet.bottom(), viewport()->height());
    rull(*horizontalScrollBar(), iVinduet.left(), iVinduet.right(), viewport()->width());
    settSide(treff.side);
}

void Sidevisning::paintEvent(QPaintEvent *hendelse)
{
    const QRect utsnitt = hendelse->rect();
    QPainter maler(viewport());
    maler.fillRect(utsnitt, QColor::fromRgb(kBakgrunn));
    const int siste = sideVed(utsnitt.bottom());
    for (int side = sideVed(utsnitt.top()); side <= siste && side < antallSider(); ++side)
        tegnSide(maler, side, utsnitt);
}

void Sidevisning::tegnSide(QPainter &maler, int side, const QRect &utsnitt) const
{
    const QRect plass = sideplass(side);
    maler.fillRect(plass.translated(3, 3), QColor::fromRgba(kSkygge));
    maler.setPen(QColor::fromRgb(kKant));
    maler.drawRect(plass.adjusted(-1, -1, 0, 0));
    maler.fillRect(plass, Qt::white);
    maler.save();
    maler.setClipRect(plass & utsnitt);
    maler.translate(plass.topLeft());
    report::paintPage(maler, *m_dokument, side, pikslerPrMm());
    tegnTreff(maler, side);
    maler.restore();
}

/// As with a marker pen: the text below stays black.
void Sidevisning::tegnTreff(QPainter &maler, int side) const
{
    const auto forste = std::lower_bound(m_treff.begin(), m_treff.end(), side,
                                         [](const Treff &t, int nr) { return t.side < nr; });
    maler.setCompositionMode(QPainter::CompositionMode_Multiply);
    for (auto treff = forste; treff != m_treff.end() && treff->side == side; ++treff) {
        const QRectF plass = plassAv(*m_dokument, *treff);
        const bool valgt = treff - m_treff.begin() == m_valgt;
        maler.fillRect(QRectF(plass.topLeft() * pikslerPrMm(), plass.size() * pikslerPrMm()),
                       QColor::fromRgb(valgt ? kValgtTreff : kTreff));
    }
}

void Sidevisning::resizeEvent(QResizeEvent *hendelse)
{
    QAbstractScrollArea::resizeEvent(hendelse);
    if (m_tilpasning == Tilpasning::Prosent) {
        const QScopedValueRollback stille(m_folgerRulling, false);
        leggUt();
    } else {
        settTilpasning(m_tilpasning);
    }
}

void Sidevisning::scrollContentsBy(int dx, int dy)
{
    viewport()->scroll(dx, dy);
    if (m_folgerRulling)
        settSide(sideVed(viewport()->height() / 2));
}

void Sidevisning::wheelEvent(QWheelEvent *hendelse)
{
    if (!hendelse->modifiers().testFlag(Qt::ControlModifier)) {
        QAbstractScrollArea::wheelEvent(hendelse);
        return;
    }
    constexpr double kHakk = 120;   // angle of a notch, in eighths of a degree
    constexpr double kFaktor = 1.1; // of a notch
    m_tilpasning = Tilpasning::Prosent;
    bruk(m_zoom * std::pow(kFaktor, hendelse->angleDelta().y() / kHakk),
         hendelse->position().toPoint());
    hendelse->accept();
}

void Sidevisning::keyPressEvent(QKeyEvent *hendelse)
{
    switch (hendelse->key()) {
    case Qt::Key_Home:
        visSide(0);
        return;
    case Qt::Key_End:
        visSide(antallSider() - 1);
        verticalScrollBar()->setValue(verticalScrollBar()->maximum());
        return;
    case Qt::Key_Space:
        verticalScrollBar()->triggerAction(hendelse->modifiers().testFlag(Qt::ShiftModifier)
                                               ? QScrollBar::SliderPageStepSub
                                               : QScrollBar::SliderPageStepAdd);
        return;
    default:
        QAbstractScrollArea::keyPressEvent(hendelse);
    }
}

void Sidevisning::mousePressEvent(QMouseEvent *hendelse)
{
    if (hendelse->button() != Qt::LeftButton)
        return;
    m_grep = hendelse->position().toPoint();
    viewport()->setCursor(Qt::ClosedHandCursor);
}

void Sidevisning::mouseMoveEvent(QMouseEvent *hendelse)
{
    if (!hendelse->buttons().testFlag(Qt::LeftButton))
        return;
    const QPoint flytting = hendelse->position().toPoint() - m_grep;
    m_grep = hendelse->position().toPoint();
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() - flytting.x());
    verticalScrollBar()->setValue(verticalScrollBar()->value() - flytting.y());
}

void Sidevisning::mouseReleaseEvent(QMouseEvent *)
{
    viewport()->setCursor(Qt::OpenHandCursor);
}

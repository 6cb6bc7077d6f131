#pragma once

#include "output/printing/Rapportsok.h"
#include "platform/report/Document.h"

#include <QAbstractScrollArea>

#include <memory>

/// The pages of a report one below the other. Only those in view are painted, straight from their
/// draw commands, so a report of a thousand pages costs no more than one of two.
class Sidevisning : public QAbstractScrollArea
{
    Q_OBJECT

public:
    /// What the zoom follows.
    enum class Tilpasning { Prosent, Sidebredde, HelSide };

    static constexpr int kMinsteZoom = 10; ///< per cent of the paper's own size at 96 dpi
    static constexpr int kStorsteZoom = 500;

    explicit Sidevisning(std::shared_ptr<const report::Document> dokument,
                         QWidget *parent = nullptr);

    [[nodiscard]] int antallSider() const;
    /// The page that is being read, from 0.
    [[nodiscard]] int side() const { return m_side; }
    /// Shows the page from its top; a number outside the report gives its first or last page.
    void visSide(int side);

    /// Rounded to whole per cent.
    [[nodiscard]] int zoom() const;
    [[nodiscard]] Tilpasning tilpasning() const { return m_tilpasning; }
    /// A zoom outside the range becomes the nearest in it. What stands in the middle stays there.
    void settZoom(double prosent);
    void settTilpasning(Tilpasning tilpasning);
    /// One step out or in.
    void zoomTrinn(int retning);

    /// Marks the hits, and the one with the index `valgt` (-1 for none) more strongly.
    void settTreff(std::vector<Treff> treff, int valgt);
    /// Scrolls as little as it takes to show the chosen hit.
    void visValgtTreff();

    /// Where a page stands in the viewport, in pixels.
    [[nodiscard]] QRect sideplass(int side) const;

Q_SIGNALS:
    void sideEndret(int side);
    void zoomEndret();

protected:
    void paintEvent(QPaintEvent *hendelse) override;
    void resizeEvent(QResizeEvent *hendelse) override;
    void scrollContentsBy(int dx, int dy) override;
    void wheelEvent(QWheelEvent *hendelse) override;
    void keyPressEvent(QKeyEvent *hendelse) override;
    void mousePressEvent(QMouseEvent *hendelse) override;
    void mouseMoveEvent(QMouseEvent *hendelse) override;
    void mouseReleaseEvent(QMouseEvent *hendelse) override;

private:
    [[nodiscard]] double pikslerPrMm() const;
    [[nodiscard]] QSize sidestorrelse() const;
    [[nodiscard]] int sidehoydeMedMellomrom() const;
    [[nodiscard]] int sideVed(int y) const;
    [[nodiscard]] double tilpassetZoom() const;
    void bruk(double prosent, const QPoint &fast);
    void leggUt();
    void settSide(int side);
    void tegnSide(QPainter &maler, int side, const QRect &utsnitt) const;
    void tegnTreff(QPainter &maler, int side) const;

    const std::shared_ptr<const report::Document> m_dokument;
    double m_zoom = 100;
    Tilpasning m_tilpasning = Tilpasning::Prosent;
    int m_side = 0;
    bool m_folgerRulling = true; ///< whether scrolling decides which page is being read
    std::vector<Treff> m_treff;
    int m_valgt = -1;
    QPoint m_grep; ///< where the mouse holds the paper
};

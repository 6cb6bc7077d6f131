#pragma once

#include "output/printing/Rapportsok.h"
#include "platform/report/ReportOutput.h"

#include <QWidget>

#include <functional>
#include <memory>

class QAction;
class QBoxLayout;
class QComboBox;
class QLabel;
class QLineEdit;
class QSpinBox;
class QToolBar;
class Sidevisning;

/// The window that a report is read in: pages, zoom, printing, PDF, search. A top-level window of
/// its own, which shares the document and needs neither report control nor database. It is no form
/// of the module's: coming back from it is no activation of a screen. Closing deletes it.
class Forhandsvisning : public QWidget
{
    Q_OBJECT

public:
    Forhandsvisning(std::shared_ptr<const report::Document> dokument,
                    const report::WindowSettings &vindu);
    ~Forhandsvisning() override;

    [[nodiscard]] std::shared_ptr<const report::Document> dokument() const { return m_dokument; }
    /// Gives the pages the keyboard.
    void lesSidene();
    /// In per cent of the paper's own size.
    void settZoom(int prosent);

protected:
    bool event(QEvent *hendelse) override;
    void keyPressEvent(QKeyEvent *hendelse) override;

private:
    QAction *handling(const QString &navn, const QString &tekst, const QString &bilde,
                      const QList<QKeySequence> &taster, std::function<void()> utfor);
    void lagVerktoylinjer();
    void leggLinjene();
    void lagSidevalg(QToolBar &linje);
    void lagZoomvalg(QToolBar &linje);
    void lagUtskriftsvalg(QToolBar &linje);
    void lagSok(QToolBar &linje);

    void visTilstand();
    void visZoom();
    void velgZoom();
    void sok();
    void gaaTilTreff(int retning);
    void visTreff();
    void skrivUt();
    void lagrePdf();

    const std::shared_ptr<const report::Document> m_dokument;
    Sidevisning *m_sider;
    QBoxLayout *m_linjer = nullptr; ///< of the toolbars; null without controls
    QAction *m_forste = nullptr;
    QAction *m_forrige = nullptr;
    QAction *m_neste = nullptr;
    QAction *m_siste = nullptr;
    QSpinBox *m_sidenr = nullptr;
    QComboBox *m_zoom = nullptr;
    QLineEdit *m_sokt = nullptr;
    QAction *m_forrigeTreff = nullptr;
    QAction *m_nesteTreff = nullptr;
    QLabel *m_trefftekst = nullptr;
    std::vector<Treff> m_treff;
    int m_valgtTreff = -1;
};

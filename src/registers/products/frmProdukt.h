#pragma once

#include "platform/ado/Recordset.h"
#include "presentation/screens/Faneark.h"
#include "presentation/screens/Skjermbilde.h"
#include "presentation/spread/ListeSortering.h"
#include "runtime/Ref.h"

#include <array>
#include <memory>

class QLineEdit;
namespace Ui {
class frmProdukt;
}

/// The product register of the active client: a page with the list of the products and a page with
/// the fields of one product. A product is stored by btnSave alone; what a user changes in the grid
/// stands on the screen until the next fill and then is gone.
///
/// The screen is in browse mode unless `m_bEndre` (change) or `m_bNy` (new) is true. Only saving
/// and cancelling end a mode, so one that was left open by a change of tab stays on beside the
/// next, and then the change is what is saved. In browse mode a field sends the focus on as soon as
/// it gets it, and takes nothing on roads that need no focus.
class frmProdukt : public Skjermbilde
{
    Q_OBJECT

public:
    frmProdukt();
    ~frmProdukt() override;

    /// Unlocks the grid.
    void InitGrid();

protected:
    void onLoad() override;
    void onResize() override;
    void onUnload() override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    // The list and the details.
    void FyllGrid();
    void BlankFelter();
    /// Loads the product of a grid row into the details. Without one there the details stay as they
    /// are, but for the hidden ID.
    void VisProdukt(qint32 rad);
    /// The commands that can be used.
    struct Valg
    {
        bool ny = false;
        bool endre = false;
        bool lagre = false;
        bool avbryt = false;
    };
    void SettKnapper(const Valg &valg);

    // Events of the controls.
    void kobleKontroller();
    void TabStrip1_Click();
    void btnNew_Click();
    void btnChange_Click();
    void btnSave_Click();
    void btnCancel_Click();
    void btnRefresh_Click();
    void vaSpread1_DblClick(int kol, int rad);
    void vaSpread1_LeaveCell(int kol, int rad, int nyKol, int nyRad);

    void avsluttModus();
    void laasFelter();

    // Focus of the details.
    void fikkFokus(QObject *kontroll, QEvent *event);
    void mistetFokus(QObject *kontroll);
    /// The control if it is one of the two amounts, otherwise null.
    [[nodiscard]] QLineEdit *prisfelt(const QObject *kontroll) const;

    // Saving (frmProduktLagre.cpp).
    void LagreProdukt();
    /// Writes the details into `Tabell` and returns the new row's key, or 1 for an update; below 1
    /// after a failure. `Modus` 1 inserts, any other updates the row `ID`.
    [[nodiscard]] qint32 LagrePost(qint16 Modus, const QString &Tabell, qint32 ID) const;

    [[nodiscard]] bool iModus() const { return m_bEndre || m_bNy; }
    [[nodiscard]] bool harValgtRad() const;

    std::unique_ptr<Ui::frmProdukt> m_ui;
    std::array<QLineEdit *, 6> m_txtFields; ///< txtFields_0 to txtFields_5
    Faneark m_ark;
    Ref<ado::Recordset> m_rsProdukt; ///< of the last fill
    bool m_bEndre = false;
    bool m_bNy = false;
    ListeSortering m_sortering;
    bool m_lagrer = false; ///< a save is under way
};

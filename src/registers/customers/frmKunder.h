#pragma once

#include "presentation/screens/Skjermbilde.h"

#include <memory>

class KundeMottaker;
namespace Ui {
class frmKunder;
}

/// The list from which the user picks a customer of the active client. It reads the parent's
/// table `KundeLev` and writes nothing in the database.
class frmKunder : public Skjermbilde
{
    Q_OBJECT

public:
    frmKunder();
    ~frmKunder() override;

    /// Shows the list with modality and returns when it is closed; the form may be deleted by then.
    /// A pick goes to `mottaker`, which must outlive the call. Error 400 when the list is open.
    void velgFor(KundeMottaker &mottaker);

    /// Other than 0: becoming active does not fill the grid. Loading sets it to 0, and only values
    /// above 0 are taken.
    [[nodiscard]] qint16 IkkeVis() const { return m_ikkeVis; }
    void settIkkeVis(qint16 verdi);

    /// Fills the grid with the customers that also meet `sFilter` (empty, or "AND" and a
    /// condition), by the sort clause `sSortering`. After a failed read the grid is empty. Passes
    /// over.
    void SkrivGrid(const QString &sFilter, const QString &sSortering);

protected:
    void onLoad() override;
    void onActivate() override;
    void onResize() override;
    void onUnload() override;

private:
    void optUtvalg_Click(int indeks);
    void fpSpread1_DblClick(int kol, int rad);
    void OKButton_Click();
    void CancelButton_Click();

    std::unique_ptr<Ui::frmKunder> m_ui;
    KundeMottaker *m_mottaker = nullptr; ///< not owned; null when nobody waits for a pick
    qint16 m_ikkeVis = 0;
    QString m_sSort; ///< of the last sorting by a header
};

#pragma once

#include "posting/run/Bokforing.h"
#include "presentation/screens/Skjermbilde.h"

#include <functional>
#include <memory>

namespace Ui {
class frmBokfor;
}

/// Lists the invoices that are ready for the ledger. The user marks some of them, may choose an
/// account and a permit, and starts the posting run.
class frmBokfor : public Skjermbilde
{
    Q_OBJECT

public:
    frmBokfor();
    ~frmBokfor() override;

    /// Runs a report: file name, mode (0 for the preview), selection and two formulas.
    using Rapport = std::function<void(const QString &rapport, qint16 modus, const QString &utvalg,
                                       const QString &formel1, const QString &formel2)>;
    /// What the journals are run by; without one they are left out.
    void settRapport(Rapport rapport) { m_rapport = std::move(rapport); }

    /// The next voucher number of the active client in that calendar year; see ::NyttBilagnr.
    [[nodiscard]] QString NyttBilagnr(qint16 aar) const { return ::NyttBilagnr(aar); }

protected:
    void onLoad() override;
    void onResize() override;

private:
    class Kjoring;

    void LesFakturaer();
    void visMerknad();
    void fyllKonto();
    void fyllLoyve();
    void Check1_Click();
    void fpSpread1_ButtonClicked();
    void btnTransfer_Click();
    void tilpassValg();

    [[nodiscard]] bool erMerket(int rad) const;

    std::unique_ptr<Ui::frmBokfor> m_ui;
    Rapport m_rapport;
};

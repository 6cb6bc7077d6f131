#pragma once

#include "presentation/screens/Skjermbilde.h"

#include <memory>

namespace Ui {
class frmOrdreSkriv;
}

/// The dialog for two reports: the list of orders by date, customer and status, and the reminder
/// list of overdue invoices. It stays open after a report, for another choice.
class frmOrdreSkriv : public Skjermbilde
{
    Q_OBJECT

public:
    frmOrdreSkriv();
    ~frmOrdreSkriv() override;

protected:
    void onLoad() override;

private:
    void fyllKunde();
    void fyllStatus();
    void dtpFraDato_Change();
    void dtpTilDato_Change();
    void optType_Click(bool purreliste);
    void OKButton_Click();

    [[nodiscard]] QString ordreUtvalg() const;
    [[nodiscard]] QString purreUtvalg() const;
    [[nodiscard]] QString kunde() const;

    std::unique_ptr<Ui::frmOrdreSkriv> m_ui;
};

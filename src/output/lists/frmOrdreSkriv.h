#pragma once

#include "platform/forms/Form.h"

#include <memory>

namespace Ui {
class frmOrdreSkriv;
}

/// The dialog for two reports: the list of orders by date, customer and status, and the reminder
/// list of overdue invoices. It stays open after a report, for another choice.
class frmOrdreSkriv : public Form
{
    Q_OBJECT

public:
    frmOrdreSkriv();
    ~frmOrdreSkriv() override;

protected:
    void onLoad() override;
    bool onKeyDown(Qt::Key key, Qt::KeyboardModifiers shift) override;

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

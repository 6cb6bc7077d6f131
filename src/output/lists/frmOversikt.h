#pragma once

#include "presentation/screens/Skjermbilde.h"
#include "presentation/spread/ListeSortering.h"

#include <memory>

namespace Ui {
class frmOversikt;
}

/// All orders and invoices of the active client with their status. A double click on a row opens it
/// in the order screen, one on a column header sorts; nothing is stored from here. The list does
/// not follow what other screens change until it is read again.
class frmOversikt : public Skjermbilde
{
    Q_OBJECT

public:
    frmOversikt();
    ~frmOversikt() override;

protected:
    void onLoad() override;
    void onResize() override;

private:
    void LesOversikt();
    void fpSpread1_DblClick(int kol, int rad);
    void visOrdre(int rad);

    std::unique_ptr<Ui::frmOversikt> m_ui;
    ListeSortering m_sortering;
};

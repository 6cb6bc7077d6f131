#pragma once

#include "order/OrdreUtskrift.h"
#include "presentation/screens/Skjermbilde.h"

#include <memory>

namespace Ui {
class frmUtskrift;
}

/// The print dialog: issues one order as an invoice on paper or as an EHF file, which makes it
/// "Fakturert". The two ways differ in their status statement: an EHF file goes by the order's ID,
/// a printout by its number, which hits that number under every client.
class frmUtskrift : public Skjermbilde
{
    Q_OBJECT

public:
    frmUtskrift();
    ~frmUtskrift() override;

    /// Opens the dialog for an order, without modality. One that is open for another order goes.
    static void apne(const OrdreUtskrift &utskrift);

    /// Whether the EHF file is a credit note. A printout asks the order screen instead.
    void settErKreditnota(bool erKreditnota) { m_erKreditnota = erKreditnota; }

protected:
    void onLoad() override;

private:
    void OKButton_Click();
    void skrivEhf();
    void skrivRapport();
    [[nodiscard]] QString fakType() const;

    std::unique_ptr<Ui::frmUtskrift> m_ui;
    bool m_erKreditnota = false;
    QString m_rapport; ///< the report file
};

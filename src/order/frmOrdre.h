#pragma once

#include "order/OrdreUtskrift.h"
#include "presentation/screens/Skjermbilde.h"

#include <memory>

namespace Ui {
class frmOrdre;
}

/// The entry screen for orders and invoices. It browses the client's orders one at a time and
/// enters new ones.
class frmOrdre : public Skjermbilde
{
    Q_OBJECT

public:
    frmOrdre();
    ~frmOrdre() override;

    /// The ID of the one order to open; 0 for all of the client's.
    [[nodiscard]] qint32 InnID() const;
    /// Takes values above 0 only, so what is held does not go back to 0. To be set before the
    /// screen is shown.
    void settInnID(qint32 id);

    /// The amount to pay, as the screen shows it.
    [[nodiscard]] QString SumBrutto() const;

    /// How the print dialog is opened; while nothing is set, the print command opens none.
    static void settUtskriftApner(UtskriftApner apner);

protected:
    void onLoad() override;
    void onActivate() override;
    void onResize() override;
    bool onKeyDown(Qt::Key key, Qt::KeyboardModifiers shift) override;
    void onUnload() override;

private:
    struct Rom;

    void kobleKommandoer();
    /// Gives the fields of fixed width and the window room for letters larger than the design's.
    void giPlassTilBokstaver();

    std::unique_ptr<Ui::frmOrdre> m_ui;
    std::unique_ptr<Rom> m_rom;
};

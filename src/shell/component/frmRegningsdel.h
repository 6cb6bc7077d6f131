#pragma once

#include "presentation/screens/Skjermbilde.h"

#include <memory>

namespace Ui {
class frmRegningsdel;
}

/// The main menu: five picture buttons from which the other screens open. It holds no data, and
/// when it closes it takes the other screens with it.
class frmRegningsdel : public Skjermbilde
{
    Q_OBJECT

public:
    frmRegningsdel();
    ~frmRegningsdel() override;

protected:
    void onLoad() override;
    void onUnload() override;

private:
    std::unique_ptr<Ui::frmRegningsdel> m_ui;
};

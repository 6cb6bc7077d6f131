#pragma once

#include "presentation/screens/Skjermbilde.h"

#include <memory>

namespace Ui {
class frmKalkyle;
}

/// The form of a planned adjustment of all product prices. There is nothing behind its choices: it
/// says that the function is not there yet, and its one working command starts a calculator.
class frmKalkyle : public Skjermbilde
{
    Q_OBJECT

public:
    frmKalkyle();
    ~frmKalkyle() override;

protected:
    void onResize() override;

private:
    std::unique_ptr<Ui::frmKalkyle> m_ui;
};

#pragma once

#include "platform/forms/Form.h"

#include <memory>

namespace Ui {
class frmKalkyle;
}

/// The form of a planned adjustment of all product prices. There is nothing behind its choices: it
/// says that the function is not there yet, and its one working command starts a calculator.
class frmKalkyle : public Form
{
    Q_OBJECT

public:
    frmKalkyle();
    ~frmKalkyle() override;

protected:
    void onLoad() override;
    void onResize() override;
    bool onKeyDown(Qt::Key key, Qt::KeyboardModifiers shift) override;
    void onUnload() override;

private:
    std::unique_ptr<Ui::frmKalkyle> m_ui;
};

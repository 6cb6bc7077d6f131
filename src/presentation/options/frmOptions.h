#pragma once

#include "presentation/screens/Faneark.h"
#include "presentation/screens/Skjermbilde.h"

#include <array>
#include <memory>

class QRadioButton;
namespace Ui {
class frmOptions;
}

/// The module's settings, on three pages. Those of the machine's user lie in the section
/// "Regningsdel" of the settings store, those of the active client in its row of Klient. The screen
/// reads them once, when it opens, and stores all of them at each save; until then a change is on
/// the screen alone.
///
/// Both opening and saving pass over: a setting outside its choices leaves its control as designed,
/// one whose number cannot be read counts as on, and one that cannot be stored hinders none of the
/// others.
class frmOptions : public Skjermbilde
{
    Q_OBJECT

public:
    frmOptions();
    ~frmOptions() override;

protected:
    void onLoad() override;
    void onResize() override;
    bool onKeyDown(Qt::Key tast, Qt::KeyboardModifiers skift) override;

private:
    void kobleKontroller();
    void settMinsteStorrelse();

    // Opening.
    void visKID();
    void visBlankett();
    void visForsteFakturanr(const QString &vilkar);
    void visFakturatekster(const QString &vilkar);

    // Saving.
    void lagreKID();
    void lagreKlient();

    // Events of the controls.
    void Check1_Click();
    void optLogo_Click(qint16 indeks);
    void cmdLogoInn_Click();
    void cmdLogoSlett_Click();
    void tbsOptions_Click();
    void cmdApply_Click();
    void cmdOK_Click();

    std::unique_ptr<Ui::frmOptions> m_ui;
    Faneark m_ark;
    std::array<QRadioButton *, 4> m_optLogo;
    std::array<QRadioButton *, 3> m_optAvrunding;
};

#include "registers/products/frmKalkyle.h"

#include "platform/forms/MsgBox.h"
#include "platform/forms/OuterRim.h"
#include "platform/forms/Twips.h"
#include "presentation/screens/Skjerm.h"
#include "ui_frmKalkyle.h"

#include <QProcess>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace {

constexpr int kSmaleste = 4000; // twips

/// The calculators of the usual desktops, the first that is there is taken.
const QString kKalkulatorer[] = {u"gnome-calculator"_s, u"kcalc"_s,        u"mate-calc"_s,
                                 u"galculator"_s,       u"qalculate-qt"_s, u"xcalc"_s};

/// Starts the desktop's calculator and waits for nothing; without one, nothing happens.
void startKalkulator()
{
    for (const QString &navn : kKalkulatorer) {
        const QString program = QStandardPaths::findExecutable(navn);
        if (!program.isEmpty() && QProcess::startDetached(program, {}))
            return;
    }
}

} // namespace

frmKalkyle::frmKalkyle()
    : Skjermbilde({.navn = u"frmKalkyle"_s,
                   .hjelp = u"html\\kalkyle.htm"_s,
                   .lukkesMedEscape = true,
                   .standard = {7950, 3165},
                   .minst = {kSmaleste, 0}}),
      m_ui(std::make_unique<Ui::frmKalkyle>())
{
    m_ui->setupUi(this);
    LikeKnapper(*this, {76, 26});
    onEvent(m_ui->btnExecute, &QPushButton::clicked, this,
            [] { MsgBox(u"Funksjonen er ikke lagt inn enda."_s, msgbox::kInformation); });
    onEvent(m_ui->btnWinCalc, &QPushButton::clicked, this, [] { startKalkulator(); });
    onEvent(m_ui->btnClose, &QPushButton::clicked, this, [this] { unload(); });
}

frmKalkyle::~frmKalkyle() = default;

void frmKalkyle::onResize()
{
    // In a narrow form the captions take more lines, none of which may be cut.
    setMinimumTwips(kSmaleste, pixelsToTwips(layout()->minimumHeightForWidth(width())));
}

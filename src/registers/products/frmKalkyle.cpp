#include "registers/products/frmKalkyle.h"

#include "platform/forms/MsgBox.h"
#include "platform/forms/OuterRim.h"
#include "platform/forms/SendKey.h"
#include "platform/forms/Twips.h"
#include "presentation/screens/Skjerm.h"
#include "ui_frmKalkyle.h"

#include <QProcess>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace {

constexpr int kNarrowest = 4000; // twips

/// The calculators of the usual desktops, the first that is there is taken.
const QString kCalculators[] = {u"gnome-calculator"_s, u"kcalc"_s,        u"mate-calc"_s,
                                u"galculator"_s,       u"qalculate-qt"_s, u"xcalc"_s};

/// Starts the desktop's calculator and waits for nothing; without one, nothing happens.
void startCalculator()
{
    for (const QString &name : kCalculators) {
        const QString program = QStandardPaths::findExecutable(name);
        if (!program.isEmpty() && QProcess::startDetached(program, {}))
            return;
    }
}

} // namespace

frmKalkyle::frmKalkyle() : Form(u"frmKalkyle"_s), m_ui(std::make_unique<Ui::frmKalkyle>())
{
    m_ui->setupUi(this);
    setMinimumTwips(kNarrowest, 0);
    onEvent(m_ui->btnExecute, &QPushButton::clicked, this,
            [] { MsgBox(u"Funksjonen er ikke lagt inn enda."_s, msgbox::kInformation); });
    onEvent(m_ui->btnWinCalc, &QPushButton::clicked, this, [] { startCalculator(); });
    onEvent(m_ui->btnClose, &QPushButton::clicked, this, [this] { unload(); });
    onEvent(m_ui->imgF1, &Image::clicked, this, [] { sendKey(Qt::Key_F1); });
}

frmKalkyle::~frmKalkyle() = default;

void frmKalkyle::onLoad()
{
    HentSkjermPlass(*this, 200, 200, 7950, 3165);
    VisHjelpBilde(*this);
}

void frmKalkyle::onResize()
{
    // In a narrow form the captions take more lines, none of which may be cut.
    setMinimumTwips(kNarrowest, pixelsToTwips(layout()->minimumHeightForWidth(width())));
}

bool frmKalkyle::onKeyDown(Qt::Key key, Qt::KeyboardModifiers)
{
    if (key == Qt::Key_Escape)
        unload();
    else if (key == Qt::Key_F1)
        VisHjelp(u"html\\kalkyle.htm"_s);
    return false;
}

void frmKalkyle::onUnload()
{
    LagreSkjermPlass(*this);
}

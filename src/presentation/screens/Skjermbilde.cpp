#include "presentation/screens/Skjermbilde.h"

#include "presentation/screens/Skjerm.h"
#include "presentation/spread/mVASpread.h"

namespace {

constexpr qint32 kFraKanten = 200; // twips, of a screen whose place is not stored yet

} // namespace

Skjermbilde::Skjermbilde(const Trekk &trekk) : Form(trekk.navn, trekk.slag), m_trekk(trekk)
{
    setMinimumTwips(trekk.minst.width(), trekk.minst.height());
}

void Skjermbilde::onLoad()
{
    if (m_trekk.standard.isValid())
        HentSkjermPlass(*this, kFraKanten, kFraKanten, m_trekk.standard.width(),
                        m_trekk.standard.height());
    VisHjelpBilde(*this);
}

bool Skjermbilde::onKeyDown(Qt::Key tast, Qt::KeyboardModifiers)
{
    if (tast == Qt::Key_F1)
        VisHjelp(m_trekk.hjelp);
    else if (tast == Qt::Key_Escape && m_trekk.lukkesMedEscape)
        unload();
    return false;
}

void Skjermbilde::onUnload()
{
    if (m_trekk.standard.isValid())
        LagreSkjermPlass(*this);
}

void Skjermbilde::tilpassNavn(fpSpread &grid, int kol) const
{
    SpreadTilpassNavn(grid, kol, HarStoreBokstaver(*this));
}

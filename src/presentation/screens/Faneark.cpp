#include "presentation/screens/Faneark.h"

#include "platform/forms/TabStrip.h"
#include "platform/forms/Twips.h"

#include <QFrame>

namespace {

constexpr int kUtenforVinduet = -20000; // twips

} // namespace

void Faneark::hentFram(int nr) const
{
    QFrame *valgt = m_ark.at(size_t(nr - 1));
    valgt->move(twipsToPixels(m_venstre), valgt->y());
    valgt->show();
    valgt->raise();
    for (QFrame *ark : m_ark) {
        if (ark == valgt)
            continue;
        // Else the focus would run through the fields of the page that goes, as if tabbed.
        if (ark->isAncestorOf(ark->window()->focusWidget()))
            m_faner->setFocus();
        ark->hide();
    }
}

void Faneark::leggBortAndre(int nr) const
{
    for (QFrame *ark : m_ark) {
        if (ark == m_ark.at(size_t(nr - 1)))
            continue;
        ark->move(twipsToPixels(kUtenforVinduet), ark->y());
        ark->hide();
    }
}

void Faneark::tilpass(int bredde) const
{
    const int marg = twipsToPixels(m_marg);
    const QRect plass = m_faner->clientArea().adjusted(marg, marg, -marg, -marg);
    for (QFrame *ark : m_ark)
        ark->setGeometry(ark->x(), plass.top(), bredde - 2 * twipsToPixels(m_venstre),
                         plass.height());
}

#include "presentation/screens/Faneark.h"

#include "platform/forms/TabStrip.h"
#include "platform/forms/Twips.h"

#include <QFrame>

namespace {

constexpr int kUtenforVinduet = -20000; // twips

} // namespace

void Faneark::hentFram(int nr) const
{
    QFrame *valgt = ark.at(size_t(nr - 1));
    valgt->move(twipsToPixels(venstre), valgt->y());
    valgt->show();
    valgt->raise();
    for (QFrame *annet : ark) {
        if (annet == valgt)
            continue;
        // Else the focus would run through the fields of the page that goes, as if tabbed.
        if (annet->isAncestorOf(annet->window()->focusWidget()))
            faner->setFocus();
        annet->hide();
    }
}

void Faneark::leggBortAndre(int nr) const
{
    for (QFrame *annet : ark) {
        if (annet == ark.at(size_t(nr - 1)))
            continue;
        annet->move(twipsToPixels(kUtenforVinduet), annet->y());
        annet->hide();
    }
}

void Faneark::tilpass(int bredde) const
{
    const int luft = twipsToPixels(marg);
    const QRect plass = faner->clientArea().adjusted(luft, luft, -luft, -luft);
    for (QFrame *blad : ark)
        blad->setGeometry(blad->x(), plass.top(), bredde - 2 * twipsToPixels(venstre),
                          plass.height());
}

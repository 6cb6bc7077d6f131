#include "output/printing/RapportUtgang.h"

#include "output/printing/Forhandsvisning.h"
#include "output/printing/Skriver.h"

#include <QCoreApplication>

#include <utility>

namespace {

void lukkVedSlutt()
{
    RapportUtgang::felles().lukkAlle();
}

} // namespace

RapportUtgang &RapportUtgang::felles()
{
    static RapportUtgang utgang;
    return utgang;
}

void RapportUtgang::show(std::shared_ptr<const report::Document> dokument,
                         const report::WindowSettings &vinduvalg)
{
    m_siste.clear();
    m_usett.reset();
    if (vinduvalg.state == report::WindowState::Minimized) {
        m_usett = std::move(dokument);
        return;
    }
    std::erase_if(m_vinduer, [](const auto &vindu) { return vindu.isNull(); });
    // The windows that are left go ahead of the application object.
    qRemovePostRoutine(lukkVedSlutt);
    qAddPostRoutine(lukkVedSlutt);
    m_siste = new Forhandsvisning(std::move(dokument), vinduvalg);
    m_vinduer.emplace_back(m_siste);
    m_siste->show();
}

void RapportUtgang::setZoom(int prosent)
{
    if (m_siste)
        m_siste->settZoom(prosent);
}

void RapportUtgang::bringToFront()
{
    if (!m_siste)
        return;
    const auto iForgrunnen = [vindu = m_siste.data()] {
        vindu->raise();
        vindu->activateWindow();
        vindu->lesSidene();
    };
    iForgrunnen();
    // Once more when the events at hand are through: a dialog that shows a report and closes hands
    // the activity back to the screen below it.
    QMetaObject::invokeMethod(m_siste.data(), iForgrunnen, Qt::QueuedConnection);
}

void RapportUtgang::print(const report::Document &dokument)
{
    // A file dialog lets events run, and the report control may go with them.
    const auto holdt = std::exchange(m_usett, nullptr);
    skrivUt(dokument);
}

std::vector<QPointer<Forhandsvisning>> RapportUtgang::vinduer() const
{
    std::vector<QPointer<Forhandsvisning>> aapne;
    std::copy_if(m_vinduer.begin(), m_vinduer.end(), std::back_inserter(aapne),
                 [](const auto &vindu) { return vindu && vindu->isVisible(); });
    return aapne;
}

void RapportUtgang::lukkAlle()
{
    qRemovePostRoutine(lukkVedSlutt);
    m_usett.reset();
    for (const QPointer<Forhandsvisning> &vindu : std::exchange(m_vinduer, {}))
        delete vindu.data();
}

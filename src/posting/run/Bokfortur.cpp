#include "posting/run/Bokfortur.h"

#include "data/clsAdoUtils.h"
#include "platform/ado/AdoTypes.h"
#include "runtime/Clock.h"
#include "state/SharedState.h"

#include <utility>

namespace {

constexpr int kLengst = 60'000; // milliseconds
constexpr int kLengstApning = 10'000;
constexpr int kPause = 100;

bool enKjoringErIGang = false;

} // namespace

Bokfortur::Ytterst::Ytterst() : m_er(!std::exchange(enKjoringErIGang, true)) {}

Bokfortur::Ytterst::~Ytterst()
{
    if (m_er)
        enKjoringErIGang = false;
}

Bokfortur::Bokfortur(std::function<void()> venter) : m_venter(std::move(venter))
{
    if (!m_ytterst)
        return;
    // A server may be on its way back just now, and the run would go on when it is there.
    for (int ventet = 0; ventet < kLengstApning && !apnet(); ventet += kPause)
        Clock::current().sleep(kPause);
    if (m_forbindelse.state() == ado::ObjectState::Open)
        vent();
}

bool Bokfortur::apnet()
{
    return passOver([this] { m_forbindelse.open(gDB->ConnectionString()); }) == 0;
}

void Bokfortur::behold()
{
    if (!m_harTur)
        return;
    // Where the database is away there is nothing to wait for: the run's own statement tells.
    passOver([this] {
        if (!m_forbindelse.takeTurn())
            vent();
    });
}

/// A server that is away meanwhile is waited for as well.
void Bokfortur::vent()
{
    m_harTur = false;
    for (int ventet = 0; ventet < kLengst; ventet += kPause) {
        const int feil = passOver([this] { m_harTur = m_forbindelse.takeTurn(); });
        // Who may not write beside the database cannot post in it either.
        if (m_harTur || feil == ado::errors::kNoPermission)
            return;
        m_venter();
        Clock::current().sleep(kPause);
    }
}

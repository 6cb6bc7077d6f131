#include "posting/Bokfortur.h"

#include "data/clsAdoUtils.h"
#include "runtime/Clock.h"
#include "state/SharedState.h"

#include <utility>

namespace {

constexpr int kLengst = 60'000; // milliseconds
constexpr int kPause = 100;

bool enKjoringErIGang = false;

} // namespace

Bokfortur::Bokfortur(std::function<void()> venter)
    : m_ytterst(!std::exchange(enKjoringErIGang, true)), m_venter(std::move(venter))
{
    if (!m_ytterst)
        return;
    passOver([this] { m_forbindelse.open(gDB->ConnectionString()); });
    vent();
}

Bokfortur::~Bokfortur()
{
    if (m_ytterst)
        enKjoringErIGang = false;
}

void Bokfortur::behold()
{
    if (m_harTur)
        vent();
}

/// A database that gives no turns, such as one that this user may not write to, is not waited for.
void Bokfortur::vent()
{
    passOver([this] {
        int ventet = 0;
        while (!(m_harTur = m_forbindelse.takeTurn()) && ventet < kLengst) {
            m_venter();
            Clock::current().sleep(kPause);
            ventet += kPause;
        }
    });
}

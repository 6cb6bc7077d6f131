#include "platform/ado/postgres/PostgresTurn.h"

#include "platform/ado/postgres/Libpq.h"
#include "platform/ado/postgres/PostgresLink.h"

#include <utility>

namespace ado {

namespace {

constexpr char kTry[] = "SELECT pg_try_advisory_lock(1400129634)"; // any number of our own
constexpr char kIsTaken[] =
    "SELECT COUNT(*) > 0 FROM pg_locks WHERE locktype = 'advisory' AND granted AND classid = 0 AND "
    "objid = 1400129634 AND database = (SELECT oid FROM pg_database WHERE datname = "
    "current_database())";
/// Tells those who wait that the turn was given back, and not lost with a session.
constexpr char kListen[] = "LISTEN strekkbok_tur";
constexpr char kGiveBack[] = "UNLISTEN *; SELECT pg_advisory_unlock_all(); NOTIFY strekkbok_tur";
constexpr char kGiveUp[] = "UNLISTEN *";
/// Longer than a holder waits for a server that is being restarted.
constexpr int kFreeForGood = 150; // looks, ten of them a second
constexpr char kJustStarted[] =
    "SELECT clock_timestamp() - pg_postmaster_start_time() < interval '15 seconds'";

bool isTrue(const PostgresResult &answer)
{
    return *PQgetvalue(answer.get(), 0, 0) == 't';
}

} // namespace

bool PostgresTurn::take(PostgresLink &link)
{
    if (m_state == State::Held)
        return true;
    if (!std::exchange(m_listens, true))
        link.run(kListen);
    // Whoever had it before a restart has not come back yet, perhaps.
    if (m_state == State::None && isTrue(link.run(kJustStarted)))
        m_state = State::Waiting;
    if (m_state == State::Waiting && !mayFollow(link))
        return false;
    m_state = isTrue(link.run(kTry)) ? State::Held : State::Waiting;
    m_givenBack = false;
    m_seenFree = 0;
    return m_state == State::Held;
}

bool PostgresTurn::mayFollow(PostgresLink &link)
{
    const bool isTaken = isTrue(link.run(kIsTaken));
    m_givenBack = (link.takeNotifications() || m_givenBack) && !isTaken;
    m_seenFree = isTaken ? 0 : m_seenFree + 1;
    return m_givenBack || m_seenFree >= kFreeForGood;
}

void PostgresTurn::release(PostgresLink &link) noexcept
{
    const bool held = std::exchange(m_state, State::None) == State::Held;
    if (std::exchange(m_listens, false))
        passOver([&] { link.run(held ? kGiveBack : kGiveUp); });
    m_givenBack = false;
    m_seenFree = 0;
}

void PostgresTurn::lose()
{
    if (m_state == State::Held)
        m_state = State::Lost;
    m_listens = false;
    m_givenBack = false;
    m_seenFree = 0; // who has lost it with the server must have all the time to come back
}

} // namespace ado

#include "platform/ado/postgres/PostgresTurn.h"

#include "platform/ado/postgres/PostgresLink.h"

#include <libpq-fe.h>

#include <utility>

namespace ado {

namespace {

constexpr char kTry[] = "SELECT pg_try_advisory_lock(1400129634)"; // any number of our own
constexpr char kHolder[] = "SELECT pid FROM pg_locks WHERE locktype = 'advisory' AND granted AND "
                           "classid = 0 AND objid = 1400129634 AND database = (SELECT oid FROM "
                           "pg_database WHERE datname = current_database())";
constexpr int kFreeForGood = 50; // looks
constexpr char kJustStarted[] =
    "SELECT clock_timestamp() - pg_postmaster_start_time() < interval '5 seconds'";

bool isTrue(const PostgresResult &answer)
{
    return *PQgetvalue(answer.get(), 0, 0) == 't';
}

} // namespace

bool PostgresTurn::take(PostgresLink &link)
{
    if (m_state == State::Held)
        return true;
    // Whoever had it before a restart has not come back yet, perhaps.
    if (m_state == State::None && isTrue(link.run(kJustStarted)))
        m_state = State::Waiting;
    if (m_state == State::Waiting && !mayFollow(link))
        return false;
    if (isTrue(link.run(kTry))) {
        m_state = State::Held;
    } else {
        m_state = State::Waiting;
        static_cast<void>(mayFollow(link)); // notes who has it
    }
    return m_state == State::Held;
}

bool PostgresTurn::mayFollow(PostgresLink &link)
{
    const PostgresResult holder = link.run(kHolder);
    if (PQntuples(holder.get()) > 0) {
        m_holder = PQgetvalue(holder.get(), 0, 0);
        m_seenFree = 0;
        return false;
    }
    if (++m_seenFree >= kFreeForGood)
        return true;
    // With its session gone, the holder may still be at work.
    const QByteArray isThere = "SELECT COUNT(*) > 0 FROM pg_stat_activity WHERE pid = 0" + m_holder;
    return isTrue(link.run(isThere.constData()));
}

void PostgresTurn::release(PostgresLink &link) noexcept
{
    if (std::exchange(m_state, State::None) == State::Held)
        passOver([&] { link.run("SELECT pg_advisory_unlock_all()"); });
}

void PostgresTurn::lose()
{
    if (m_state == State::Held)
        m_state = State::Lost;
}

} // namespace ado

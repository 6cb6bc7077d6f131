#include "platform/ado/postgres/PostgresTurn.h"

#include "platform/ado/postgres/PostgresLink.h"

#include <libpq-fe.h>

#include <utility>

namespace ado {

namespace {

constexpr char kTry[] = "SELECT pg_try_advisory_lock(1400129634)"; // any number of our own
constexpr char kLook[] = "SELECT COUNT(*) = 0 FROM pg_locks WHERE locktype = 'advisory' AND "
                         "classid = 0 AND objid = 1400129634 AND database = (SELECT oid FROM "
                         "pg_database WHERE datname = current_database())";
constexpr int kFreeForGood = 10; // looks

bool isTrue(const PostgresResult &answer)
{
    return *PQgetvalue(answer.get(), 0, 0) == 't';
}

} // namespace

bool PostgresTurn::take(PostgresLink &link)
{
    if (m_state == State::Held)
        return true;
    if (m_state == State::Waiting && !isTrue(link.run(kLook))) {
        m_seenFree = 0;
        return false;
    }
    if (m_state == State::Waiting && ++m_seenFree < kFreeForGood)
        return false;
    if (isTrue(link.run(kTry))) {
        m_state = State::Held;
    } else {
        m_state = State::Waiting;
        m_seenFree = 0;
    }
    return m_state == State::Held;
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

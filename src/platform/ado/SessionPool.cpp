#include "platform/ado/SessionPool.h"

#include "platform/ado/Session.h"

#include <utility>

namespace ado {

SessionPool &SessionPool::shared()
{
    static SessionPool pool;
    return pool;
}

SessionPool::SessionPool(Opener opener) : m_opener(std::move(opener)) {}

SessionPool::~SessionPool() = default;

std::shared_ptr<Session> SessionPool::acquire(const DataSource &source)
{
    auto &idle = m_idle[source.key];
    if (!idle)
        idle = std::make_shared<IdleList>();

    std::unique_ptr<Session> session;
    if (!idle->empty()) {
        session = std::move(idle->back());
        idle->pop_back();
        // What is wrong with the source is wrong for the others, too; each of them might wait for
        // it.
        if (!session->usable()) {
            session.reset();
            idle->clear();
        }
    }
    if (!session)
        session = m_opener(source);

    const auto giveBack = [home = std::weak_ptr(idle)](Session *returned) {
        std::unique_ptr<Session> owned(returned);
        const auto place = home.lock();
        if (place && place->size() < kIdlePerSource && owned->reset())
            place->push_back(std::move(owned));
    };
    return {session.release(), giveBack};
}

std::shared_ptr<Session> SessionPool::acquire(const QString &connectionString)
{
    if (!m_lastSource.byTextAlone || connectionString != m_lastText) {
        m_lastSource = resolve(ConnectionString(connectionString));
        m_lastText = connectionString;
    }
    return acquire(m_lastSource);
}

std::size_t SessionPool::idleCount(const DataSource &source) const
{
    const auto idle = m_idle.value(source.key);
    return idle ? idle->size() : 0;
}

void SessionPool::clear()
{
    // A session that is out finds its list again, so only the lists are emptied.
    for (const auto &idle : std::as_const(m_idle))
        idle->clear();
}

SessionPool::Opener SessionPool::setOpener(Opener opener)
{
    clear();
    return std::exchange(m_opener, std::move(opener));
}

} // namespace ado

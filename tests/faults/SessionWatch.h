#pragma once

#include "platform/ado/SessionPool.h"

#include <QString>

#include <functional>

namespace faults {

/// Stands between the module and its database sessions while it lives: `after` is called each time
/// that a call to one has returned with success, with its name: "open", "begin", "execute",
/// "query", "commit" or "rollback".
class SessionWatch
{
public:
    using After = std::function<void(const char *call)>;

    explicit SessionWatch(After after);
    ~SessionWatch();
    SessionWatch(const SessionWatch &) = delete;
    SessionWatch &operator=(const SessionWatch &) = delete;

private:
    ado::SessionPool::Opener m_previous;
};

} // namespace faults

#pragma once

namespace ado {

class PostgresLink;

/// The turn of Connection::takeTurn at a database on a server: an advisory lock, which ends with
/// its session. A session may end while its process goes on, so whoever waits for the turn takes it
/// only when its holder has given it back, or when it has stood free for a while; a holder that
/// lost it takes it back at once.
class PostgresTurn
{
public:
    /// To be asked again, some times a second, until it is true.
    [[nodiscard]] bool take(PostgresLink &link);
    void release(PostgresLink &link) noexcept;
    /// The session ended below it.
    void lose();

private:
    enum class State {
        None,
        Waiting, // another one has it, or had it lately
        Held,
        Lost,
    };
    [[nodiscard]] bool mayFollow(PostgresLink &link);

    State m_state = State::None;
    bool m_listens = false;   // for who gives it back
    bool m_givenBack = false; // by the one who had it last
    int m_seenFree = 0;       // so many times at a stretch
};

} // namespace ado

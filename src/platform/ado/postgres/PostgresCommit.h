#pragma once

#include <QByteArray>

#include <functional>

namespace ado {

class PostgresLink;

/// The BEGIN and the COMMIT of a session. If the connection ends before it is known that the
/// transaction was committed, the server is asked what became of it, by the number that it has
/// there.
class PostgresCommit
{
public:
    enum class Purpose { Read, Change };

    /// `reopen` puts the session on a new connection.
    PostgresCommit(PostgresLink &link, std::function<void()> reopen);

    /// Begins for a first statement of that purpose. One that changes something would get a number
    /// anyway; it gets it at once, which spares a question before the commit.
    void begin(Purpose purpose);
    /// True when the transaction is stored, false when it went down with its connection. Raises
    /// what the server says against it, and when it cannot be found out.
    [[nodiscard]] bool send();
    /// There is a new connection, perhaps with a server that has lived on or anew.
    void forgetLife() { m_serverLife.clear(); }

private:
    bool wasStored() const;

    PostgresLink &m_link;
    std::function<void()> m_reopen;
    QByteArray m_number;     // of the transaction; empty while it is not known to have one
    QByteArray m_serverLife; // as of this connection; empty before its first commit
};

} // namespace ado

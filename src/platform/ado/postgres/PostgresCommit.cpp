#include "platform/ado/postgres/PostgresCommit.h"

#include "platform/ado/AdoTypes.h"
#include "platform/ado/postgres/Libpq.h"
#include "platform/ado/postgres/PostgresLink.h"
#include "runtime/Clock.h"

using namespace Qt::StringLiterals;

namespace ado {

namespace {

constexpr int kStatusPause = 100; // milliseconds between two questions
/// Tells one life of the server from the next: one that comes back from a crash begins to count
/// anew, one that was stopped in order goes on.
constexpr char kAskLife[] = "SELECT pg_stat_get_bgwriter_stat_reset_time()";

} // namespace

PostgresCommit::PostgresCommit(PostgresLink &link, std::function<void()> reopen)
    : m_link(link), m_reopen(std::move(reopen))
{
}

void PostgresCommit::begin(Purpose purpose)
{
    m_number.clear();
    if (purpose == Purpose::Read)
        m_link.run("BEGIN");
    else
        m_number = PQgetvalue(m_link.run("BEGIN; SELECT txid_current()").get(), 0, 0);
}

bool PostgresCommit::send()
{
    if (!m_link.isAlive())
        return false; // it ended with the connection, before the commit
    PostgresResult result;
    try {
        if (m_number.isEmpty())
            m_number = PQgetvalue(m_link.run("SELECT txid_current_if_assigned()").get(), 0, 0);
        if (m_serverLife.isEmpty())
            m_serverLife = PQgetvalue(m_link.run(kAskLife).get(), 0, 0);
        result = m_link.run("COMMIT");
    } catch (const RunTimeError &) {
        if (!m_link.isLost())
            throw;
        return !m_number.isEmpty() && wasStored();
    }
    // An aborted transaction is rolled back by COMMIT, without an error.
    if (qstrcmp(PQcmdStatus(result.get()), "COMMIT") != 0)
        throw RunTimeError(errors::kUnspecified,
                           u"Transaksjonen er avbrutt av databasen; ingenting i den er lagret."_s);
    return true;
}

/// What became of a transaction whose COMMIT was cut off. A server that has come back from a crash
/// may have given the number to another transaction.
bool PostgresCommit::wasStored() const
{
    const QByteArray question = kAskLife + QByteArray(", txid_status(") + m_number + ')';
    const QByteArray life = m_serverLife; // a new connection forgets it
    for (int waited = 0; waited < m_link.patience(); waited += kStatusPause) {
        if (m_link.isLost() && passOver(m_reopen) != 0)
            break;
        QByteArray status;
        bool sameLife = false;
        const int error = passOver([&] {
            const PostgresResult answer = m_link.run(question.constData());
            sameLife = life == PQgetvalue(answer.get(), 0, 0);
            status = PQgetvalue(answer.get(), 0, 1);
        });
        if (status == "committed" && sameLife)
            return true;
        // A server that came back from a crash may not know the number at all.
        if (status == "aborted" || error == errors::kTypeMismatch)
            return false;
        if (status != "in progress" && !m_link.isLost())
            break;
        Clock::current().sleep(kStatusPause); // it has not noticed yet that the connection ended
    }
    throw RunTimeError(errors::kUnspecified,
                       u"Forbindelsen til databasetjeneren ble brutt under lagringen; det er "
                       "uvisst om endringen er lagret."_s);
}

} // namespace ado

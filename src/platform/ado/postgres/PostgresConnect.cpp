#include "platform/ado/postgres/PostgresConnect.h"

#include "platform/ado/AdoTypes.h"
#include "platform/ado/postgres/Libpq.h"
#include "platform/ado/postgres/PostgresError.h"
#include "runtime/Clock.h"

#include <QDeadlineTimer>
#include <QRegularExpression>
#include <QTimeZone>

#include <algorithm>
#include <memory>
#include <poll.h>
#include <resolv.h>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace ado {

namespace {

using OwnedConnection = std::unique_ptr<PGconn, void (*)(PGconn *)>;

constexpr int kConnectTimeout = 9; // seconds
constexpr int kRestartPause = 100; // milliseconds between two attempts
constexpr int kLookupTimeout = 4;  // seconds, of one name, all name servers together
static_assert(kLookupTimeout >= MAXNS, "each name server is waited for");

struct Default
{
    QLatin1StringView keyword;
    QLatin1StringView value;
};

// A keyword of the connection string comes before its default.
constexpr Default kDefaults[] = {
    {"application_name"_L1, "Strekkbok Regningsdel"_L1},
    // A server that has vanished without a farewell is noticed within ten seconds.
    {"keepalives_idle"_L1, "5"_L1},
    {"keepalives_interval"_L1, "2"_L1},
    {"keepalives_count"_L1, "2"_L1},
    {"tcp_user_timeout"_L1, "9000"_L1},
};

// What the session relies on, whatever the server or the role has; the connection string may still
// say otherwise.
constexpr QLatin1StringView kSettings = "-c lock_timeout=8000 -c standard_conforming_strings=on "
                                        "-c extra_float_digits=1 "
                                        "-c default_transaction_isolation=read\\ committed"_L1;

/// The server hands a moment that was stored with its zone over in the session's, which is this
/// machine's own as long as nobody names another one. A zone that is in no list is left out, since
/// a server refuses the whole session for it.
QString machinesZone()
{
    const QByteArray zone = QTimeZone::systemTimeZoneId();
    return QTimeZone::isTimeZoneIdAvailable(zone) ? u" -c TimeZone="_s + QLatin1StringView(zone)
                                                  : QString();
}

QMap<QString, QString> completed(QMap<QString, QString> keywords)
{
    for (const Default &setting : kDefaults) {
        if (!keywords.contains(setting.keyword))
            keywords.insert(setting.keyword, setting.value);
    }
    keywords.insert(u"client_encoding"_s, u"UTF8"_s);
    QString &options = keywords[u"options"_s];
    options = QString(kSettings) + machinesZone() + u' ' + options;
    return keywords;
}

/// While it lives, this thread asks each name server once and soon gives up. libpq waits for the
/// system to find a host's address, which goes on for half a minute where no name server answers;
/// so it is eight seconds at most, for the name as it stands and within the machine's own domain.
class ShortLookup
{
public:
    ShortLookup()
    {
        if ((_res.options & RES_INIT) == 0)
            res_init();
        const int eachWaits = kLookupTimeout / std::max(_res.nscount, 1);
        m_wait = std::exchange(_res.retrans, std::min(_res.retrans, eachWaits));
        m_tries = std::exchange(_res.retry, 1);
    }
    ~ShortLookup()
    {
        _res.retrans = m_wait;
        _res.retry = m_tries;
    }
    ShortLookup(const ShortLookup &) = delete;
    ShortLookup &operator=(const ShortLookup &) = delete;

private:
    int m_wait = 0; // seconds
    int m_tries = 0;
};

/// Waits for the connection; false when it did not come about.
bool waitUntilOpen(PGconn *connection, const QDeadlineTimer &deadline)
{
    PostgresPollingStatusType wanted = PGRES_POLLING_WRITING;
    while (wanted == PGRES_POLLING_READING || wanted == PGRES_POLLING_WRITING) {
        const short event = wanted == PGRES_POLLING_READING ? POLLIN : POLLOUT;
        pollfd socket{PQsocket(connection), event, 0};
        const int ready = ::poll(&socket, 1, int(deadline.remainingTime()));
        if (ready == 0)
            return false;
        if (ready > 0)
            wanted = PQconnectPoll(connection);
        else if (errno != EINTR)
            return false;
    }
    return wanted == PGRES_POLLING_OK;
}

/// libpq's keywords as its functions take them.
class Parameters
{
public:
    explicit Parameters(const QMap<QString, QString> &keywords)
    {
        const QMap<QString, QString> all = completed(keywords);
        for (auto pair = all.begin(); pair != all.end(); ++pair) {
            m_texts.push_back(pair.key().toUtf8());
            m_texts.push_back(pair.value().toUtf8());
        }
        for (std::size_t i = 0; i < m_texts.size(); i += 2) {
            m_names.push_back(m_texts[i].constData());
            m_values.push_back(m_texts[i + 1].constData());
        }
        m_names.push_back(nullptr);
        m_values.push_back(nullptr);
    }

    [[nodiscard]] OwnedConnection startConnection() const
    {
        OwnedConnection connection(PQconnectStartParams(m_names.data(), m_values.data(), 0),
                                   PQfinish);
        if (!connection)
            throw RunTimeError(errors::kUnspecified, u"Det er ikke nok minne."_s);
        PQsetErrorVerbosity(connection.get(), PQERRORS_SQLSTATE);
        const PQnoticeProcessor passOverNotice = [](void *, const char *) {};
        PQsetNoticeProcessor(connection.get(), passOverNotice, nullptr);
        return connection;
    }

private:
    std::vector<QByteArray> m_texts;
    std::vector<const char *> m_names;
    std::vector<const char *> m_values;
};

QString nameOf(PGconn *connection)
{
    const auto text = [](const char *part) { return QString::fromUtf8(part); };
    const QString host = text(PQhost(connection));
    return host.startsWith(u'/') || host.isEmpty()
               ? u"«%1»"_s.arg(host)
               : u"«%1:%2»"_s.arg(host, text(PQport(connection)));
}

/// What libpq tells of the failed attempt, which ends with the SQLSTATE if a server answered.
PostgresFailure failureOf(PGconn *connection, bool timedOut)
{
    PostgresFailure failure;
    const QString message = QString::fromUtf8(PQerrorMessage(connection)).trimmed();
    static const QRegularExpression state(u":\\s+([0-9A-Z]{5})$"_s,
                                          QRegularExpression::MultilineOption);
    if (const auto found = state.match(message); found.hasMatch()) {
        failure.state = found.captured(1).toLatin1();
    } else if (PQconnectionNeedsPassword(connection) != 0) {
        failure.state = "28P01";
    } else if (timedOut) {
        failure.message = u"den svarer ikke"_s;
    } else {
        const QString firstLine = message.section(u'\n', 0, 0);
        const QString password = QString::fromUtf8(PQpass(connection));
        if (password.isEmpty() || !firstLine.contains(password))
            failure.message = firstLine;
    }
    return failure;
}

} // namespace

pg_conn *connectPostgres(const QMap<QString, QString> &keywords, bool known)
{
    const Parameters parameters(keywords);
    const int patience = 1000 * connectPatience(keywords);
    // libpq leaves the time to the caller of this way to connect.
    const QDeadlineTimer deadline(patience);
    const ShortLookup lookup;
    for (int waited = 0;; waited += kRestartPause) {
        OwnedConnection connection = parameters.startConnection();
        const bool started = PQstatus(connection.get()) != CONNECTION_BAD;
        if (started && waitUntilOpen(connection.get(), deadline)) {
            PQsetErrorVerbosity(connection.get(), PQERRORS_DEFAULT);
            return connection.release();
        }
        const bool timedOut = started && PQstatus(connection.get()) != CONNECTION_BAD;
        const PostgresFailure failure = failureOf(connection.get(), timedOut);
        const bool restarts = failure.state == "57P03";
        known = known || restarts;
        const bool mayReturn = restarts || (known && failure.state.isEmpty() && !timedOut);
        if (!mayReturn || waited >= patience || deadline.hasExpired())
            throw postgresConnectError(failure, nameOf(connection.get()),
                                       keywords.value(u"dbname"_s, u"brukerens egen"_s));
        Clock::current().sleep(kRestartPause);
    }
}

int connectPatience(const QMap<QString, QString> &keywords)
{
    const int asked = keywords.value(u"connect_timeout"_s).toInt();
    return asked > 0 ? std::min(asked, kConnectTimeout) : kConnectTimeout;
}

} // namespace ado

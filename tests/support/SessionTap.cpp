#include "support/SessionTap.h"

#include "platform/ado/AdoTypes.h"
#include "platform/ado/Session.h"

using namespace Qt::StringLiterals;

namespace {

using LogPointer = std::shared_ptr<SessionTap::Log>;

/// Notes a call and lets it go on, or fail.
template<class Call>
auto noted(SessionTap::Log &log, const QString &name, const QString &details, Call call)
{
    log.calls += details.isEmpty() ? name : name + u' ' + details;
    if (log.failing.contains(name))
        throw RunTimeError(ado::errors::kUnspecified, u"Nektet: "_s + name);
    if constexpr (std::is_void_v<decltype(call())>) {
        call();
        log.after(name);
    } else {
        auto result = call();
        log.after(name);
        return result;
    }
}

class TappedSession : public ado::Session
{
public:
    TappedSession(LogPointer log, std::unique_ptr<ado::Session> session)
        : m_log(std::move(log)), m_session(std::move(session))
    {
    }

    void begin() override
    {
        noted(*m_log, u"begin"_s, {}, [this] { m_session->begin(); });
    }
    void commit() override
    {
        noted(*m_log, u"commit"_s, {}, [this] { m_session->commit(); });
    }
    void rollback() override
    {
        noted(*m_log, u"rollback"_s, {}, [this] { m_session->rollback(); });
    }
    void execute(QStringView statement) override
    {
        noted(*m_log, u"execute"_s, statement.toString(),
              [&] { m_session->execute(passedOn(statement)); });
    }
    ado::RowSet query(QStringView statement) override
    {
        return noted(*m_log, u"query"_s, statement.toString(),
                     [&] { return m_session->query(passedOn(statement)); });
    }
    void writeBack(ado::RowSet &rows, const std::vector<int> &changedRows) override
    {
        noted(*m_log, u"writeBack"_s, {}, [&] { m_session->writeBack(rows, changedRows); });
    }
    void append(QStringView table, const ado::RowSet &rows,
                const std::function<void(int rows)> &added) override
    {
        noted(*m_log, u"append"_s, table.toString(),
              [&] { m_session->append(table, rows, added); });
    }
    qint64 lastNumber(QStringView table) override { return m_session->lastNumber(table); }
    void continueCounter(QStringView table, qint64 lastNumber) override
    {
        m_session->continueCounter(table, lastNumber);
    }
    void provideIndex(QStringView table, QStringView index, const QStringList &items) override
    {
        noted(*m_log, u"provideIndex"_s, u"%1.%2"_s.arg(table, index),
              [&] { m_session->provideIndex(table, index, items); });
    }
    const ado::dialect::Catalog &catalog() override { return m_session->catalog(); }
    QStringList damages() override { return m_session->damages(); }
    bool takeTurn() override { return m_session->takeTurn(); }
    bool transactionLost() const noexcept override { return m_session->transactionLost(); }
    bool reset() noexcept override
    {
        m_log->calls += u"release"_s;
        return m_session->reset();
    }
    bool usable() noexcept override { return m_session->usable(); }

private:
    [[nodiscard]] QString passedOn(QStringView statement) const
    {
        const QString text = statement.toString();
        return m_log->rewrite ? m_log->rewrite(text) : text;
    }

    LogPointer m_log;
    std::unique_ptr<ado::Session> m_session;
};

} // namespace

SessionTap::SessionTap() : m_log(std::make_shared<Log>())
{
    m_previous = ado::SessionPool::shared().setOpener([this](const ado::DataSource &source) {
        return noted(*m_log, u"open"_s, {},
                     [&] { return std::make_unique<TappedSession>(m_log, m_previous(source)); });
    });
}

SessionTap::~SessionTap()
{
    ado::SessionPool::shared().setOpener(m_previous);
}

QStringList SessionTap::statements() const
{
    QStringList result;
    for (const QString &call : std::as_const(m_log->calls)) {
        if (call.startsWith(u"execute ") || call.startsWith(u"query "))
            result += call.sliced(call.indexOf(u' ') + 1);
    }
    return result;
}

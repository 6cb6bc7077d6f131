#include "faults/SessionWatch.h"

#include "platform/ado/Session.h"

namespace faults {

namespace {

class WatchedSession : public ado::Session
{
public:
    WatchedSession(SessionWatch::After after, std::unique_ptr<ado::Session> session)
        : m_after(std::move(after)), m_session(std::move(session))
    {
        m_after("open");
    }

    void begin() override
    {
        m_session->begin();
        m_after("begin");
    }
    void commit() override
    {
        m_session->commit();
        m_after("commit");
    }
    void rollback() override
    {
        m_session->rollback();
        m_after("rollback");
    }
    void execute(QStringView statement) override
    {
        m_session->execute(statement);
        m_after("execute");
    }
    ado::RowSet query(QStringView statement) override
    {
        ado::RowSet rows = m_session->query(statement);
        m_after("query");
        return rows;
    }
    void writeBack(ado::RowSet &rows, const std::vector<int> &changedRows) override
    {
        m_session->writeBack(rows, changedRows);
    }
    void append(QStringView table, const ado::RowSet &rows) override
    {
        m_session->append(table, rows);
        m_after("append");
    }
    qint64 lastNumber(QStringView table) override { return m_session->lastNumber(table); }
    void continueCounter(QStringView table, qint64 lastNumber) override
    {
        m_session->continueCounter(table, lastNumber);
    }
    const ado::dialect::Catalog &catalog() override { return m_session->catalog(); }
    QStringList damages() override { return m_session->damages(); }
    bool takeTurn() override { return m_session->takeTurn(); }
    bool transactionLost() const noexcept override { return m_session->transactionLost(); }
    bool reset() noexcept override { return m_session->reset(); }
    bool usable() noexcept override { return m_session->usable(); }

private:
    const SessionWatch::After m_after;
    const std::unique_ptr<ado::Session> m_session;
};

} // namespace

SessionWatch::SessionWatch(After after)
{
    m_previous = ado::SessionPool::shared().setOpener(
        [this, after = std::move(after)](const ado::DataSource &source) {
            return std::make_unique<WatchedSession>(after, m_previous(source));
        });
}

SessionWatch::~SessionWatch()
{
    ado::SessionPool::shared().setOpener(m_previous);
}

} // namespace faults

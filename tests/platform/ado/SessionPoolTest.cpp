#include "platform/ado/SessionPool.h"

#include "platform/ado/Session.h"
#include "platform/ado/Support.h"

#include <QDir>

namespace ado::test {

namespace {

/// A session that does nothing but tell what becomes of it.
class IdleSession final : public Session
{
public:
    struct Log
    {
        int opened = 0;
        int closed = 0;
        int resets = 0;
        bool resetSucceeds = true;
        bool usable = true;
    };
    explicit IdleSession(Log &log) : m_log(log) { ++m_log.opened; }
    ~IdleSession() override { ++m_log.closed; }

    void begin() override {}
    void commit() override {}
    void rollback() override {}
    void execute(QStringView) override {}
    RowSet query(QStringView) override { return {}; }
    void writeBack(RowSet &, const std::vector<int> &) override {}
    void append(QStringView, const RowSet &, const std::function<void(int)> &) override {}
    qint64 lastNumber(QStringView) override { return 0; }
    void continueCounter(QStringView, qint64) override {}
    void provideIndex(QStringView, QStringView, const QStringList &) override {}
    const dialect::Catalog &catalog() override { return m_catalog; }
    bool takeTurn() override { return true; }
    bool reset() noexcept override
    {
        ++m_log.resets;
        return m_log.resetSucceeds;
    }
    bool usable() noexcept override { return m_log.usable; }

private:
    Log &m_log;
    dialect::Catalog m_catalog;
};

DataSource source(const QString &key)
{
    DataSource result;
    result.key = key;
    return result;
}

} // namespace

class SessionPoolTest : public testing::Test
{
protected:
    IdleSession::Log m_log;
    SessionPool m_pool{[this](const DataSource &) { return std::make_unique<IdleSession>(m_log); }};
};

TEST_F(SessionPoolTest, ReturnedSessionIsCleanedAndHandedOutAgain)
{
    const Session *first = m_pool.acquire(source(u"a"_s)).get();
    EXPECT_EQ(m_log.resets, 1);
    EXPECT_EQ(m_pool.idleCount(source(u"a"_s)), 1U);
    EXPECT_EQ(m_pool.acquire(source(u"a"_s)).get(), first);
    EXPECT_EQ(m_log.opened, 1);
    EXPECT_EQ(m_log.closed, 0);
}

TEST_F(SessionPoolTest, SourcesDoNotShareSessions)
{
    static_cast<void>(m_pool.acquire(source(u"a"_s)));
    const auto other = m_pool.acquire(source(u"b"_s));
    EXPECT_EQ(m_log.opened, 2);
    EXPECT_EQ(m_pool.idleCount(source(u"a"_s)), 1U);
    EXPECT_EQ(m_pool.idleCount(source(u"b"_s)), 0U);
}

TEST_F(SessionPoolTest, SessionThatCannotBeCleanedIsClosed)
{
    m_log.resetSucceeds = false;
    static_cast<void>(m_pool.acquire(source(u"a"_s)));
    EXPECT_EQ(m_pool.idleCount(source(u"a"_s)), 0U);
    EXPECT_EQ(m_log.closed, 1);
}

TEST_F(SessionPoolTest, IdleSessionThatIsNoLongerUsableIsReplaced)
{
    static_cast<void>(m_pool.acquire(source(u"a"_s)));
    m_log.usable = false;
    const auto session = m_pool.acquire(source(u"a"_s));
    EXPECT_EQ(m_log.opened, 2);
    EXPECT_EQ(m_log.closed, 1);
}

TEST_F(SessionPoolTest, KeepsFourIdleSessionsOfASource)
{
    std::vector<std::shared_ptr<Session>> owned;
    for (int i = 0; i < 6; ++i)
        owned.push_back(m_pool.acquire(source(u"a"_s)));
    EXPECT_EQ(m_log.opened, 6);
    owned.clear();
    EXPECT_EQ(m_pool.idleCount(source(u"a"_s)), 4U);
    EXPECT_EQ(m_log.closed, 2);
}

TEST_F(SessionPoolTest, ClearClosesTheIdleAndLetsTheOthersComeBack)
{
    auto kept = m_pool.acquire(source(u"a"_s));
    static_cast<void>(m_pool.acquire(source(u"a"_s)));
    m_pool.clear();
    EXPECT_EQ(m_log.closed, 1);
    kept.reset();
    EXPECT_EQ(m_pool.idleCount(source(u"a"_s)), 1U);
}

TEST_F(SessionPoolTest, FailedOpeningIsRaisedAndLeavesNothing)
{
    SessionPool pool([](const DataSource &) -> std::unique_ptr<Session> {
        throw RunTimeError(errors::kUnspecified, u"nei"_s);
    });
    EXPECT_EQ(errorOf([&] { static_cast<void>(pool.acquire(source(u"a"_s))); }),
              errors::kUnspecified);
    EXPECT_EQ(pool.idleCount(source(u"a"_s)), 0U);
}

TEST(SessionPool, ConnectionStringNamesWhatItNamesNow)
{
    IdleSession::Log log;
    QStringList opened;
    SessionPool pool([&](const DataSource &source) {
        opened += source.location;
        return std::make_unique<IdleSession>(log);
    });
    const auto use = [&](const QString &dsn) { static_cast<void>(pool.acquire(u"dsn="_s + dsn)); };
    const QTemporaryDir folder;
    const QString here = folder.path();
    ASSERT_TRUE(QDir(here).mkdir(u"under"_s));
    const QString before = QDir::currentPath();
    const Variable ini("ODBCINI", here + u"/odbc.ini"_s);
    const auto writeIni = [&](const QString &database) {
        QFile file(here + u"/odbc.ini"_s);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(u"[Firma]\nDriver=SQLite3\nDatabase=%1\n"_s.arg(database).toUtf8());
    };

    for (const QString &dsn : {u"/a.db"_s, u"/b.db"_s, u"/a.db"_s})
        use(dsn);
    ASSERT_TRUE(QDir::setCurrent(here));
    use(u"./c.db"_s);
    ASSERT_TRUE(QDir::setCurrent(u"under"_s));
    use(u"./c.db"_s);
    ASSERT_TRUE(QDir::setCurrent(before));
    writeIni(u"/d.db"_s);
    use(u"Firma"_s);
    writeIni(u"/e.db"_s);
    use(u"Firma"_s);
    EXPECT_EQ(opened, (QStringList{u"/a.db"_s, u"/b.db"_s, here + u"/c.db"_s,
                                   here + u"/under/c.db"_s, u"/d.db"_s, u"/e.db"_s}));
    EXPECT_EQ(errorOf([&] { use(QString()); }), errors::kUnspecified);
}

TEST(SessionPool, SessionMayOutliveThePool)
{
    IdleSession::Log log;
    auto pool = std::make_unique<SessionPool>(
        [&log](const DataSource &) { return std::make_unique<IdleSession>(log); });
    auto session = pool->acquire(source(u"a"_s));
    static_cast<void>(pool->acquire(source(u"a"_s)));
    pool.reset();
    EXPECT_EQ(log.closed, 1);
    session.reset();
    EXPECT_EQ(log.closed, 2);
}

} // namespace ado::test

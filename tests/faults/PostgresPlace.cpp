#include "faults/Place.h"
#include "faults/Work.h"
#include "support/PostgresCluster.h"

using namespace Qt::StringLiterals;

namespace faults {

namespace {

class PostgresPlace final : public Place
{
public:
    PostgresPlace()
        : m_prepared(PostgresCluster::shared().createDatabase()), m_name(m_prepared + u"_i_bruk"_s)
    {
        prepareDatabase(PostgresCluster::shared().connectionString(m_prepared));
        copy();
    }
    ~PostgresPlace() override
    {
        for (const QString &name : {m_name, m_prepared})
            administer(u"DROP DATABASE %1 WITH (FORCE)"_s.arg(name));
    }

    QString connectionString() const override
    {
        return PostgresCluster::shared().connectionString(m_name);
    }
    void restore() override
    {
        administer(u"DROP DATABASE %1 WITH (FORCE)"_s.arg(m_name));
        copy();
    }
    QString integrity() override
    {
        // The server ends what a client had sent before it died.
        const QString others =
            u"SELECT COUNT(*) FROM pg_stat_activity WHERE datname = '%1'"_s.arg(m_name);
        while (administer(others) != u"0"_s) {
        }
        return u"ok"_s;
    }
    int randomPoints() const override { return 50; }

private:
    static QString administer(const QString &sql)
    {
        return PostgresCluster::shared().run(u"postgres"_s, sql);
    }

    void copy() const { administer(u"CREATE DATABASE %1 TEMPLATE %2"_s.arg(m_name, m_prepared)); }

    const QString m_prepared;
    const QString m_name;
};

} // namespace

std::unique_ptr<Place> makePlace()
{
    return std::make_unique<PostgresPlace>();
}

} // namespace faults

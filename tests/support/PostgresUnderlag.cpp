#include "support/PostgresCluster.h"
#include "support/Underlag.h"

namespace {

class PostgresUnderlag final : public Underlag
{
public:
    QString connectionString(const QString &) const override
    {
        return m_database.connectionString();
    }

    QString integrity(const QString &) const override
    {
        // The server ends what a client had sent before it died.
        const QString others =
            QStringLiteral("SELECT COUNT(*) FROM pg_stat_activity WHERE datname = '%1'")
                .arg(m_database.name());
        while (PostgresCluster::shared().run(QStringLiteral("postgres"), others) != u"0") {
        }
        return QStringLiteral("ok");
    }
    int killPoints() const override { return 24; }

private:
    PostgresDatabase m_database;
};

} // namespace

std::unique_ptr<Underlag> makeUnderlag()
{
    return std::make_unique<PostgresUnderlag>();
}

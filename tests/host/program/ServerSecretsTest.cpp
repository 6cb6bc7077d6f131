#include "host/program/ServerTest.h"

using namespace Qt::StringLiterals;

namespace {

constexpr auto kSecret = "Hemmelig17"_L1;

class ServerSecretsTest : public ServerTest
{
protected:
    /// Ways to name a database that lead nowhere, each with the secret in it.
    [[nodiscard]] QStringList wrongNames() const
    {
        const QString secret = kSecret;
        return {
            tcpUri(u"postgres:"_s + secret),
            u"dsn="_s + tcpUri(u"postgres"_s) + u";pwd="_s + secret,
            u"dsn="_s + tcpUri(u"x:y"_s) + u";uid=postgres;password="_s + secret,
            u"postgresql://postgres:%1@127.0.0.1:1/firma"_s.arg(secret),
            u"postgresql://postgres:%1@/firma?host=/finnes/ikke"_s.arg(secret),
            u"postgresql://postgres:%1@127.0.0.1:port/firma"_s.arg(secret),
            u"postgresql://postgres:%1@127.0.0.1/firma?ukjent=1"_s.arg(secret),
            u"postgresql:postgres:%1@127.0.0.1/firma"_s.arg(secret),
            u"PostgreSQL://postgres:%1@127.0.0.1/firma"_s.arg(secret),
            u"postgresql://postgres@127.0.0.1/firma;pwd="_s + secret,
            u"dsn=ukjent;uid=postgres;pwd="_s + secret,
            u"ukjent;pwd="_s + secret,
        };
    }
    static void expectSecret(const QStringList &arguments, const Outcome &outcome)
    {
        EXPECT_NE(outcome.status, 0) << arguments.join(u' ').toStdString();
        EXPECT_FALSE(outcome.err.isEmpty());
        EXPECT_FALSE(outcome.err.contains(kSecret)) << outcome.err.toStdString();
        EXPECT_FALSE(outcome.out.contains(kSecret.data())) << outcome.out.toStdString();
    }
};

TEST_F(ServerSecretsTest, NoRefusalShowsThePassword)
{
    const QString file = makeDemo();
    for (const QString &name : wrongNames()) {
        for (const QStringList &arguments :
             {QStringList{u"--dsn"_s, name},
              {u"--dsn"_s, name, u"--demo"_s},
              {u"--dsn"_s, name, u"--sql"_s, u"SELECT Navn FROM Klient"_s},
              {u"--dsn"_s, name, u"--ehf"_s, u"1001"_s, u"--ut"_s, u"x.xml"_s},
              {u"--kopier"_s, name, u"kopi.db"_s},
              {u"--kopier"_s, file, name}})
            expectSecret(arguments, host(arguments));
    }
    EXPECT_EQ(files(), QStringList{u"demo.db"_s});
}

TEST_F(ServerSecretsTest, MisplacedArgumentsAreNotShownInFull)
{
    for (const QString &name : wrongNames()) {
        for (const QStringList &arguments : {QStringList{name},
                                             {u"-dsn="_s + name},
                                             {u"--dsm="_s + name},
                                             {u"--klient"_s, name},
                                             {u"--demo="_s + name},
                                             {u"--kopier"_s, u"a"_s, u"b"_s, name}})
            expectSecret(arguments, host(arguments));
    }
}

TEST_F(ServerSecretsTest, NoProgressShowsThePassword)
{
    const QString password = QString::fromLatin1(PostgresCluster::kPassword);
    const QString dsn = u"dsn="_s + tcpUri(u"postgres"_s) + u";pwd="_s + password;
    Outcome outcome = demo(dsn);
    EXPECT_EQ(outcome.status, 0) << ::testing::PrintToString(outcome);
    EXPECT_FALSE(outcome.out.contains(password.toUtf8()));
    outcome = host({u"--kopier"_s, dsn, u"kopi.db"_s});
    EXPECT_EQ(outcome.status, 0) << ::testing::PrintToString(outcome);
    EXPECT_FALSE(outcome.out.contains(password.toUtf8()));
    EXPECT_TRUE(outcome.out.contains("på 127.0.0.1 til")) << outcome.out.toStdString();
}

} // namespace

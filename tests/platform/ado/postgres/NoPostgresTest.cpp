#include "platform/ado/Provider.h"
#include "platform/ado/Support.h"

#include <QFile>

namespace ado::test {

namespace {

constexpr auto kSecret = "hemmelig"_L1;

/// Opens what the connection string names, in a build without PostgreSQL.
void expectRefusal(const QString &connectionString)
{
    const auto attempt = [&] { Opened connection(connectionString); };
    EXPECT_EQ(errorOf(attempt), errors::kUnspecified) << connectionString.toStdString();
    const QString text = textOf(attempt);
    EXPECT_TRUE(text.contains(u"bygget uten PostgreSQL"_s)) << text.toStdString();
    EXPECT_FALSE(text.contains(kSecret)) << text.toStdString();
}

} // namespace

TEST(NoPostgres, AddressIsRefusedWithoutItsPassword)
{
    for (const QString &address :
         {u"postgresql://kari:%1@127.0.0.1/firma"_s, u"postgres://kari:%1@127.0.0.1/firma"_s,
          u"postgresql://kari@127.0.0.1/firma;pwd=%1"_s, u"postgresql://%1"_s})
        expectRefusal(u"dsn="_s + address.arg(kSecret));
}

TEST(NoPostgres, DataSourceOfAServerIsRefusedWithoutItsPassword)
{
    const Database file;
    const QString path = file.folder() + u"/odbc.ini"_s;
    QFile ini(path);
    ASSERT_TRUE(ini.open(QIODevice::WriteOnly));
    ini.write("[Server]\nDriver=PostgreSQL Unicode\nServername=127.0.0.1\nDatabase=firma\n"
              "Password=hemmelig\n[Fil]\nDriver=SQLite3\nDatabase=" +
              QFile::encodeName(file.path()) + '\n');
    ini.close();
    const Variable user("ODBCINI", path);
    expectRefusal(u"dsn=Server"_s);
    expectRefusal(u"dsn=Server;uid=kari;pwd=hemmelig"_s);
    // A file goes on as ever.
    Opened(u"dsn=Fil"_s).run(u"CREATE TABLE t (Nr LONG)"_s);
    EXPECT_EQ(Tool(file.path()).text("SELECT Count(*) FROM sqlite_master"), "1");
}

} // namespace ado::test

#include "platform/ado/OdbcIni.h"

#include "platform/ado/Support.h"

#include <QDir>

namespace ado::test {

TEST(OdbcIni, SectionAndKeywordsMatchWithoutRegardToCase)
{
    const auto section = odbcSection(u"[Annen]\nDatabase=a\n\n[ Firma ]\n Driver = PostgreSQL \r\n"
                                     "SERVERNAME=vert\n; Port=1\n# Port=2\nPort=3\nPort=4\nTom=\n"
                                     "uten tegn\n[Siste]\nDatabase=b\n",
                                     u"fIRMA");
    ASSERT_TRUE(section.has_value());
    EXPECT_EQ(*section, (OdbcEntries{{u"driver"_s, u"PostgreSQL"_s},
                                     {u"servername"_s, u"vert"_s},
                                     {u"port"_s, u"3"_s},
                                     {u"tom"_s, QString()}}));
}

TEST(OdbcIni, MissingSectionIsNothingAndEmptyOneIsEmpty)
{
    EXPECT_FALSE(odbcSection(u"[Firma]\nDatabase=a\n", u"Firm").has_value());
    EXPECT_FALSE(odbcSection(u"", u"Firma").has_value());
    EXPECT_TRUE(odbcSection(u"[Firma]\n[Annen]\nDatabase=a", u"Firma")->empty());
}

TEST(OdbcIni, BareNameThatIsAnExistingFileIsThatFile)
{
    const Database file;
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(file.folder()));
    EXPECT_EQ(resolve(ConnectionString(u"dsn=firma.db")).location, file.path());
    const QString text = textOf([] { (void)resolve(ConnectionString(u"dsn=borte.db")); });
    EXPECT_TRUE(text.contains(u"«borte.db»") && text.contains(u"odbc.ini")) << text.toStdString();
    EXPECT_EQ(resolve(ConnectionString(u"dsn=./borte.db")).location,
              file.folder() + u"/borte.db"_s);
    ASSERT_TRUE(QDir::setCurrent(before));
}

TEST(OdbcIni, EmptyVariableOfTheEnvironmentIsNone)
{
    const Database file;
    QFile ini(file.folder() + u"/.odbc.ini"_s);
    ASSERT_TRUE(ini.open(QIODevice::WriteOnly));
    ini.write("\xEF\xBB\xBF[Firma]\r\nDatabase=a\r\n"); // as some editors leave it
    ini.close();
    const Variable home("HOME", file.folder());
    const Variable user("ODBCINI", QString());
    const Variable system("ODBCSYSINI", QString());
    EXPECT_EQ(odbcDataSource(u"firma"), (OdbcEntries{{u"database"_s, u"a"_s}}));
}

} // namespace ado::test

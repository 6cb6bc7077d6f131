#include "data/Schema.h"
#include "data/clsAdoUtils.h"
#include "platform/ado/SessionPool.h"
#include "shell/component/clsFaktura.h"
#include "state/Messages.h"
#include "state/SharedState.h"
#include "support/ModuleTest.h"
#include "support/SessionTap.h"
#include "support/StartModule.h"

#include <QDir>
#include <QFile>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

/// Starts that cannot succeed: nothing is shown, nothing is raised, ModuleInit tells.
class StartFailureTest : public ModuleTest
{
protected:
    StartFailureTest()
    {
        messages::setBox([this](const QString &text, int) { boxes += text; });
    }
    ~StartFailureTest() override { EXPECT_EQ(boxes, QStringList()); }

    static qint16 start(const QString &connectionString) { return startAsParent(connectionString); }

    /// The three tables that an empty database lacks, then the columns from the first to the last,
    /// then the sales account.
    static void expectAllFour(const QStringList &statements)
    {
        constexpr int kColumns = 13; // one of the steps drops what is not there
        ASSERT_GE(statements.size(), 3 + kColumns + 1);
        EXPECT_TRUE(statements[0].startsWith(u"CREATE TABLE Ordre ("));
        EXPECT_TRUE(statements[1].startsWith(u"CREATE TABLE Produkt ("));
        EXPECT_TRUE(statements[2].startsWith(u"CREATE TABLE OrdreLinjer ("));
        EXPECT_EQ(statements[3], u"ALTER TABLE KundeLev ADD COLUMN LevAdr1 TEXT(40)"_s);
        EXPECT_EQ(statements[2 + kColumns], u"ALTER TABLE Klient ADD COLUMN FakTekst2 TEXT(255)"_s);
        EXPECT_TRUE(statements[3 + kColumns].contains(u"Kontoplan"));
    }

    QStringList boxes;
};

TEST_F(StartFailureTest, WithoutAConnectionString)
{
    clsFaktura module;
    module.StartModul();
    EXPECT_EQ(module.ModuleInit(), 0);
    EXPECT_EQ(gDB->ConnectionString(), QString());
    EXPECT_NE(gDB->LastError(), QString());
    ASSERT_TRUE(gConn);
    EXPECT_EQ(gConn->state(), ado::ObjectState::Closed);
    EXPECT_TRUE(gSchema.empty());
}

TEST_F(StartFailureTest, WithTextThatIsNoConnectionString)
{
    EXPECT_EQ(start(u"tull og tøys"_s), 0);
    EXPECT_EQ(gDB->ConnectionString(), QString());
}

TEST_F(StartFailureTest, WithAFileThatDoesNotExist)
{
    const QString missing = folder() + u"/borte.db"_s;
    EXPECT_EQ(start(u"dsn="_s + missing), 0);
    EXPECT_EQ(gDB->ConnectionString(), QString());
    EXPECT_FALSE(QFile::exists(missing));
}

TEST_F(StartFailureTest, WithAFolder)
{
    EXPECT_EQ(start(u"dsn="_s + folder()), 0);
}

TEST_F(StartFailureTest, WithAFileThatIsNoDatabase)
{
    const QString path = folder() + u"/brev.txt"_s;
    const QByteArray text(4096, 'x');
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
    file.close();

    EXPECT_EQ(start(u"dsn="_s + path), 0);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), text);
}

TEST_F(StartFailureTest, AFailedOpenReachesNoSession)
{
    SessionTap tap;
    tap.fail(u"open"_s);
    EXPECT_EQ(start(connectionString()), 0);
    // gConn's; gDB has no connection string.
    EXPECT_EQ(tap.calls(), QStringList(u"open"_s));
    EXPECT_EQ(gDB->ConnectionString(), QString());
    EXPECT_NE(gDB->LastError(), QString());
}

TEST_F(StartFailureTest, AFailedSecondStartSendsNothingToTheOldDatabase)
{
    makeParentTables();
    // By the picture of an empty database every table is made anew at each start of this load.
    EXPECT_EQ(start(connectionString()), 1);
    gConn = nullptr; // its session would be used again, and go past the tap
    const SessionTap tap;
    EXPECT_EQ(start(u"tull"_s), 0);
    EXPECT_EQ(gConn->state(), ado::ObjectState::Closed);
    EXPECT_EQ(tap.calls(), QStringList());
    EXPECT_NE(gDB->LastError(), QString());
}

TEST_F(StartFailureTest, AllFourTableOperationsAreTriedAfterARefusedFirstOne)
{
    makeParentTables();
    SessionTap tap;
    tap.fail(u"execute"_s);
    EXPECT_EQ(start(connectionString()), 0);
    expectAllFour(tap.statements());
}

TEST_F(StartFailureTest, AnErrorOutOfATableOperationFailsTheStartAndStopsNothing)
{
    makeParentTables();
    SessionTap tap;
    // Every write is refused, and the rollback too, so the error leaves each operation.
    tap.fail(u"execute"_s);
    tap.fail(u"rollback"_s);
    EXPECT_EQ(start(connectionString()), 0);
    const QStringList statements = tap.statements();
    EXPECT_TRUE(statements[0].startsWith(u"CREATE TABLE Ordre "));
    EXPECT_TRUE(statements[1].startsWith(u"CREATE TABLE Produkt "));
    EXPECT_TRUE(statements[2].startsWith(u"CREATE TABLE OrdreLinjer "));
    EXPECT_GT(statements.size(), 3);
    boxes.clear(); // the columns tell of an error of their own
}

TEST_F(StartFailureTest, AFailedStartCanBeFollowedByAGoodOne)
{
    makeParentTables();
    clsFaktura module;
    module.setKlient(5);
    module.setCurrentYear(2014);
    module.StartModul();
    EXPECT_EQ(module.ModuleInit(), 0);
    module.setConnectStreng(connectionString());
    module.StartModul();
    EXPECT_EQ(module.ModuleInit(), 1);
}

TEST_F(StartFailureTest, AFailedSecondStartLeavesTheOldDatabase)
{
    makeParentTables();
    EXPECT_EQ(start(connectionString()), 1);
    reload();
    EXPECT_EQ(start(connectionString()), 1);
    // All tables are found in the picture of a database that was up to date; the open decides.
    EXPECT_EQ(start(u"tull"_s), 0);
    EXPECT_EQ(gConn->state(), ado::ObjectState::Closed);
    EXPECT_EQ(gDB->ConnectionString(), QString());
    EXPECT_FALSE(gDB->Execute(u"DELETE FROM Kontoplan"_s));
    EXPECT_NE(gDB->LastError(), QString());
    EXPECT_EQ(rows(u"SELECT KontoNr FROM Kontoplan"_s), QStringList(u"3000"_s));

    EXPECT_EQ(start(connectionString()), 1);
    EXPECT_EQ(gDB->GetCount(u"Kontoplan"_s, u"KontoNr=3000"_s), 1);
}

/// Rights bind an ordinary user only, so a privileged run becomes one while it lives.
class OrdinaryUser
{
public:
    OrdinaryUser() : m_before(geteuid())
    {
        if (m_before == 0) {
            EXPECT_EQ(seteuid(kNobody), 0);
        }
    }
    ~OrdinaryUser()
    {
        if (m_before == 0) {
            EXPECT_EQ(seteuid(0), 0);
        }
    }
    OrdinaryUser(const OrdinaryUser &) = delete;
    OrdinaryUser &operator=(const OrdinaryUser &) = delete;

private:
    static constexpr uid_t kNobody = 65534;
    uid_t m_before;
};

class ReadOnlyStartTest : public StartFailureTest
{
protected:
    /// The file and its folder can be read by everyone and written by nobody.
    void lock()
    {
        ado::SessionPool::shared().clear();
        const auto reading = QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther;
        ASSERT_TRUE(QFile::setPermissions(path(), reading));
        ASSERT_TRUE(QFile::setPermissions(folder(), reading | QFile::ExeOwner | QFile::ExeGroup |
                                                        QFile::ExeOther));
    }
    ~ReadOnlyStartTest() override
    {
        QFile::setPermissions(folder(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
};

TEST_F(ReadOnlyStartTest, ANewDatabaseCannotGetItsTables)
{
    makeParentTables();
    lock();
    const OrdinaryUser user;
    EXPECT_EQ(startModule(), 0);
    EXPECT_TRUE(gDB->LastError().startsWith(u"-2147217911 - "));
    reload();
}

TEST_F(ReadOnlyStartTest, AnUpToDateDatabaseStartsAndCanBeRead)
{
    makeParentTables();
    EXPECT_EQ(startModule(), 1);
    reload();
    lock();
    const OrdinaryUser user;
    EXPECT_EQ(startModule(), 1);
    EXPECT_EQ(gDB->GetCount(u"Kontoplan"_s, QString()), 1);
    EXPECT_FALSE(gDB->Execute(u"DELETE FROM Kontoplan"_s));
    EXPECT_TRUE(gDB->LastError().startsWith(u"-2147217911 - "));
    reload();
}

} // namespace

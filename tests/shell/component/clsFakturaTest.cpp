#include "shell/component/clsFaktura.h"

#include "data/Schema.h"
#include "data/clsAdoUtils.h"
#include "output/ehf/mEHF.h"
#include "rules/Ordre.h"
#include "rules/SjekkKlient.h"
#include "runtime/Paths.h"
#include "shell/component/Main.h"
#include "shell/settings/clsRegSettings.h"
#include "state/Messages.h"
#include "state/SharedState.h"
#include "support/ModuleTest.h"
#include "support/SessionTap.h"

#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

/// The instances, their shared values, and Main.
class ClsFakturaTest : public ModuleTest
{
protected:
    ClsFakturaTest()
    {
        messages::setBox(
            [this](const QString &text, int style) { boxes += u"%1: %2"_s.arg(style).arg(text); });
    }

    /// An up-to-date database beside the test's own, in which client 5 has one order of that
    /// number; its connection string.
    QString makeSecondDatabase(int ordreNr)
    {
        const QString second = folder() + u"/andre.db"_s;
        makeParentTables();
        EXPECT_EQ(startModule(), 1);
        run(u"INSERT INTO Ordre (KlientNr,OrdreNr) VALUES (5,%1)"_s.arg(ordreNr));
        reload();
        EXPECT_TRUE(QFile::rename(path(), second));
        EXPECT_TRUE(QFile(path()).open(QIODevice::WriteOnly));
        return u"dsn="_s + second;
    }

    QStringList boxes;
};

TEST_F(ClsFakturaTest, MainFillsTheSharedState)
{
    EXPECT_FALSE(gFaktura);
    Main();
    ASSERT_TRUE(gFaktura);
    EXPECT_EQ(gFaktura->ModuleInit(), 1);
    EXPECT_EQ(gReg->Company(), u"Brennmark AS"_s);
    EXPECT_EQ(gReg->AppName(), u"Strekkbok"_s);
    EXPECT_EQ(QStringList({gMva0, gMva10, gMva15, gMva25}),
              QStringList({u"0"_s, u"10"_s, u"15"_s, u"25"_s}));
    EXPECT_EQ(boxes, QStringList());
    EXPECT_FALSE(gDB);
    EXPECT_FALSE(gConn);
}

TEST_F(ClsFakturaTest, AnInstanceThatIsNotReadyIsToldAndEndsNothing)
{
    const auto instance = Ref<clsFaktura>::make();
    instance->setModuleInit(0);
    TaImot(instance);
    EXPECT_EQ(boxes,
              QStringList(u"16: Initiering av Regningsdel feilet!, - Programmet avslutter!"_s));
    EXPECT_EQ(gFaktura.get(), instance.get());
    EXPECT_EQ(gReg->AppName(), u"Strekkbok"_s);
    EXPECT_EQ(QStringList({gMva0, gMva10, gMva15, gMva25}),
              QStringList({u"0"_s, u"10"_s, u"15"_s, u"25"_s}));
}

TEST_F(ClsFakturaTest, UnloadLeavesEverythingAsBeforeLoad)
{
    makeParentTables();
    Main();
    EXPECT_EQ(startModule(), 1);
    EXPECT_GT(gSchema.size(), 1u);
    Unload();
    EXPECT_FALSE(gFaktura);
    EXPECT_FALSE(gReg);
    EXPECT_FALSE(gDB);
    EXPECT_FALSE(gConn);
    EXPECT_EQ(gConnect + gAppPath + gHelpFile + gRptPath + gMva25, QString());
    EXPECT_EQ(gKlient, 0);
    EXPECT_EQ(gKlientInn, 0);
    EXPECT_EQ(gAar, 0);
    EXPECT_TRUE(gSchema.empty());
}

TEST_F(ClsFakturaTest, AnInstanceBeginsReadyAndWorksOutThePaths)
{
    const clsFaktura module;
    EXPECT_EQ(module.ModuleInit(), 1);
    // This program holds the class, so its own folder is where the search begins.
    const QString program =
        paths::toModule(QFileInfo(QFile::symLinkTarget(u"/proc/self/exe"_s)).absolutePath());
    EXPECT_EQ(gAppPath, paths::applicationFolder(program));
    EXPECT_TRUE(program.startsWith(gAppPath));
    EXPECT_FALSE(gAppPath.contains(u'/'));
    EXPECT_EQ(gHelpFile, gAppPath + u"\\help\\Regningsdel.chm"_s);
    EXPECT_EQ(gRptPath, gAppPath + u"\\rpt\\Faktura"_s);
}

TEST_F(ClsFakturaTest, TheThreeValuesAreSharedByAllInstances)
{
    clsFaktura one;
    clsFaktura other;
    one.setConnectStreng(u"dsn=a"_s);
    one.setKlient(7);
    one.setCurrentYear(2014);
    EXPECT_EQ(other.ConnectStreng(), u"dsn=a"_s);
    EXPECT_EQ(other.Klient(), 7);
    EXPECT_EQ(other.CurrentYear(), 2014);
    EXPECT_EQ(gConnect, u"dsn=a"_s);
    EXPECT_EQ(gKlient, 7);
    EXPECT_EQ(gKlientInn, 7);
    EXPECT_EQ(gAar, 2014);
    EXPECT_FALSE(gConn);
    EXPECT_FALSE(gDB);
}

TEST_F(ClsFakturaTest, ModuleInitBelongsToTheInstance)
{
    clsFaktura one;
    clsFaktura other;
    one.setModuleInit(0);
    EXPECT_EQ(one.ModuleInit(), 0);
    EXPECT_EQ(other.ModuleInit(), 1);
}

TEST_F(ClsFakturaTest, AFurtherInstanceKeepsTheClient)
{
    clsFaktura one;
    one.setKlient(7);
    gKlient = 99;
    const clsFaktura further;
    EXPECT_EQ(gKlient, 7);
    EXPECT_EQ(further.Klient(), 7);
}

TEST_F(ClsFakturaTest, KlientReadsTheStoredValueAndStatementsTheActiveOne)
{
    clsFaktura module;
    module.setKlient(7);
    gKlient = 8;
    EXPECT_EQ(module.Klient(), 7);
}

TEST_F(ClsFakturaTest, DroppingAnInstanceLeavesTheModuleRunning)
{
    makeParentTables();
    EXPECT_EQ(startModule(), 1);
    ASSERT_TRUE(gConn);
    EXPECT_EQ(gConn->state(), ado::ObjectState::Open);
    EXPECT_EQ(gDB->GetCount(u"Ordre"_s, QString()), 0);
}

TEST_F(ClsFakturaTest, StartOpensTheSharedConnectionWithClientSideCursors)
{
    makeParentTables();
    EXPECT_EQ(startModule(), 1);
    EXPECT_EQ(gConn->cursorLocation(), ado::CursorLocation::Client);
    EXPECT_EQ(gConn->connectionString(), connectionString());
    EXPECT_EQ(gDB->ConnectionString(), connectionString());
}

TEST_F(ClsFakturaTest, AConnectionStringSetAfterTheStartWaitsForTheNextOne)
{
    const QString second = makeSecondDatabase(41);
    makeParentTables();
    EXPECT_EQ(startModule(), 1);
    reload();
    EXPECT_EQ(startModule(), 1);
    const Ref<ado::Connection> first = gConn;

    clsFaktura module;
    module.setConnectStreng(second);
    EXPECT_EQ(module.ConnectStreng(), second);
    EXPECT_EQ(gConn.get(), first.get());
    EXPECT_EQ(gConn->connectionString(), connectionString());
    EXPECT_EQ(gDB->ConnectionString(), connectionString());
    EXPECT_EQ(NyttOrdreNr(), 1);

    module.StartModul();
    EXPECT_EQ(module.ModuleInit(), 1);
    EXPECT_NE(gConn.get(), first.get());
    EXPECT_EQ(gConn->connectionString(), second);
    EXPECT_EQ(gDB->ConnectionString(), second);
    EXPECT_EQ(NyttOrdreNr(), 42);
}

TEST_F(ClsFakturaTest, AClientSetAfterTheStartIsTheOneOfEveryLaterStatement)
{
    makeParentTables();
    EXPECT_EQ(startModule(), 1);
    clsFaktura module;
    module.setKlient(6);
    EXPECT_EQ(gKlient, 6);

    const SessionTap tap;
    EXPECT_EQ(NyttOrdreNr(), 1);
    (void)SjekkKlient();
    (void)raised([] { (void)EhfDokument(0, u"1"_s); });
    (void)EhfLinjer(0, u"1"_s);
    const QStringList statements = tap.statements();
    EXPECT_GE(statements.size(), 6);
    for (const QString &statement : statements) {
        EXPECT_TRUE(statement.contains(u"KlientNr= 6"_s)) << statement.toStdString();
        EXPECT_FALSE(statement.contains(u"KlientNr= 5"_s)) << statement.toStdString();
    }
}

TEST_F(ClsFakturaTest, OnlyTheStartedInstanceTellsOfAFailure)
{
    Main();
    clsFaktura module;
    module.StartModul();
    EXPECT_EQ(module.ModuleInit(), 0);
    EXPECT_EQ(gFaktura->ModuleInit(), 1);
}

TEST_F(ClsFakturaTest, AStartBeginsWithOneWhateverWasSet)
{
    makeParentTables();
    clsFaktura module;
    module.setConnectStreng(connectionString());
    module.setKlient(5);
    module.setCurrentYear(2014);
    module.setModuleInit(0);
    module.StartModul();
    EXPECT_EQ(module.ModuleInit(), 1);
}

TEST_F(ClsFakturaTest, ASecondStartTakesAFreshConnectionAndTheOldPicture)
{
    makeParentTables();
    EXPECT_EQ(startModule(), 1);
    reload();
    // The database is up to date now, as it is at every start but the first.
    EXPECT_EQ(startModule(), 1);
    const ado::Connection *first = gConn.get();
    const Ref<ado::Connection> keptAlive = gConn;
    run(u"CREATE TABLE Senere (Nr LONG)"_s);
    const size_t picture = gSchema.size();

    EXPECT_EQ(startModule(), 1);
    EXPECT_NE(gConn.get(), first);
    EXPECT_EQ(gConn->state(), ado::ObjectState::Open);
    EXPECT_EQ(gSchema.size(), picture);
    EXPECT_FALSE(TableExists(u"Senere"_s));
    EXPECT_EQ(gDB->LastError(), QString());
}

TEST_F(ClsFakturaTest, ASecondStartInTheLoadThatMadeTheTablesFailsByTheOldPicture)
{
    makeParentTables();
    EXPECT_EQ(startModule(), 1);
    // The picture was taken before the tables were made, so they are made again, and refused.
    EXPECT_EQ(startModule(), 0);
    reload();
    EXPECT_EQ(startModule(), 1);
}

} // namespace

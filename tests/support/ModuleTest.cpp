#include "support/ModuleTest.h"

#include "data/clsAdoUtils.h"
#include "host/parent/ParentTables.h"
#include "platform/ado/SessionPool.h"
#include "shell/component/Main.h"
#include "state/Messages.h"
#include "state/SharedState.h"
#include "support/Rows.h"
#include "support/StartModule.h"

#include <QFile>

using namespace Qt::StringLiterals;

ModuleTest::ModuleTest() : m_path(m_folder.filePath(u"data.db"_s))
{
    QFile file(m_path);
    if (!file.open(QIODevice::WriteOnly))
        ADD_FAILURE() << "no database file";
    reload();
}

ModuleTest::~ModuleTest()
{
    reload();
    messages::setBox({});
}

void ModuleTest::reload()
{
    Unload();
    ado::SessionPool::shared().clear();
}

void ModuleTest::makeParentTables()
{
    ado::Connection connection;
    connection.open(connectionString());
    createParentTables(connection);
    gKlient = gKlientInn = 5;
    gAar = 2014;
}

void ModuleTest::connect()
{
    gConn = Ref<ado::Connection>::make();
    gConn->open(connectionString());
    gDB->setConnectionString(connectionString());
}

qint16 ModuleTest::startModule()
{
    return startAsParent(connectionString());
}

void ModuleTest::run(const QString &statement)
{
    try {
        ado::Connection connection;
        connection.open(connectionString());
        connection.execute(statement);
    } catch (const RunTimeError &error) {
        ADD_FAILURE() << statement.toStdString() << "\n" << error.what();
    }
}

QStringList ModuleTest::rows(const QString &statement)
{
    try {
        return rowsOf(connectionString(), statement);
    } catch (const RunTimeError &error) {
        ADD_FAILURE() << statement.toStdString() << "\n" << error.what();
        return {};
    }
}

#include "reports/DemoDatabase.h"

#include "host/demo/DemoCompany.h"
#include "host/demo/DemoOrders.h"
#include "host/parent/ParentTables.h"
#include "platform/ado/Connection.h"
#include "platform/ado/Recordset.h"
#include "support/StartModule.h"

using namespace Qt::StringLiterals;

namespace {

constexpr qint16 kClient = 1;
constexpr qint16 kYear = 2014;

template<class Fill>
void inTransaction(const QString &connectionString, Fill &&fill)
{
    ado::Connection connection;
    connection.open(connectionString);
    connection.beginTrans();
    fill(connection);
    connection.commitTrans();
}

} // namespace

void makeDemoDatabase(const QString &connectionString)
{
    inTransaction(connectionString, [](ado::Connection &connection) {
        createParentTables(connection);
        fillParentTables(connection, kClient, kYear);
    });
    startAsParent(connectionString, kClient, kYear);
    inTransaction(connectionString, [](ado::Connection &connection) {
        fillModuleRegisters(connection, kClient);
        fillOrders(connection, kClient, kYear);
    });
}

void storeDemoLogo(const QString &connectionString, const QByteArray &bytes)
{
    ado::Recordset set;
    set.setActiveConnection(connectionString);
    set.setLockType(ado::LockType::Optimistic);
    set.setSource(u"SELECT KlientNr, Logo FROM Klient WHERE KlientNr=%1"_s.arg(kClient));
    set.open();
    set.setValue(u"Logo", Value(bytes));
    set.updateBatch();
}

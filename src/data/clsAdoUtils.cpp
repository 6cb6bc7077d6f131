#include "data/clsAdoUtils.h"

#include <utility>

using namespace Qt::StringLiterals;

void clsAdoUtils::openWorkingConnection(ado::Connection &connection) const
{
    connection.setConnectionString(m_connectionString);
    connection.setCursorLocation(ado::CursorLocation::Server);
    connection.open({}, {}, {}, ado::options::kUnspecified);
}

void clsAdoUtils::setLastError(const RunTimeError &error)
{
    m_lastError = QString::number(error.number()) + u" - "_s + error.description();
}

/// A rollback is tried on any open connection, begun transaction or not; if it is refused, the
/// connection still closes with its scope.
void clsAdoUtils::trapWrite(const RunTimeError &error, ado::Connection &connection)
{
    setLastError(error);
    if (connection.state() == ado::ObjectState::Open) {
        connection.rollbackTrans();
        connection.close();
    }
}

bool clsAdoUtils::EmptyRS(const Ref<ado::Recordset> &adoRS)
{
    try {
        return !adoRS || (adoRS->bof() && adoRS->eof());
    } catch (const RunTimeError &error) {
        setLastError(error);
        return true;
    }
}

bool clsAdoUtils::Execute(const QString &SQL)
{
    ado::Connection connection;
    try {
        openWorkingConnection(connection);
        connection.transact([&] { connection.execute(SQL, ado::options::kUnspecified); });
        connection.close();
        return true;
    } catch (const RunTimeError &error) {
        trapWrite(error, connection);
        return false;
    }
}

Ref<ado::Recordset> clsAdoUtils::GetRS(const QString &SQL, bool bReadOnly)
{
    try {
        auto rs = Ref<ado::Recordset>::make();
        rs->setActiveConnection(m_connectionString);
        rs->setLockType(bReadOnly ? ado::LockType::ReadOnly : ado::LockType::Optimistic);
        rs->setCursorType(ado::CursorType::Keyset);
        rs->setSource(SQL);
        rs->open();
        rs->clearActiveConnection();
        return rs;
    } catch (const RunTimeError &error) {
        setLastError(error);
        return nullptr;
    }
}

qint32 clsAdoUtils::GetCount(const QString &TableName, const QString &WhereClause)
{
    ado::Recordset rs;
    try {
        QString statement = u"SELECT COUNT (*) FROM "_s + TableName;
        if (!WhereClause.isEmpty())
            statement += u" WHERE "_s + WhereClause;
        rs.setActiveConnection(m_connectionString);
        rs.setCursorLocation(ado::CursorLocation::Client);
        rs.setLockType(ado::LockType::ReadOnly);
        rs.setCursorType(ado::CursorType::Keyset);
        rs.setSource(statement);
        rs.open();
        rs.clearActiveConnection();
        return rs.integer(0);
    } catch (const RunTimeError &error) {
        setLastError(error);
        if (rs.state() == ado::ObjectState::Open)
            rs.close();
        return -1;
    }
}

bool clsAdoUtils::PutRS(const Ref<ado::Recordset> &rs)
{
    if (EmptyRS(rs) || rs->lockType() == ado::LockType::ReadOnly)
        return false;

    ado::Connection connection;
    try {
        openWorkingConnection(connection);
        connection.transact([&] {
            rs->setActiveConnection(connection); // takes back what a lost transaction had accepted
            rs->updateBatch(ado::AffectRecords::All);
        });
        rs->clearActiveConnection();
        connection.close();
        return true;
    } catch (const RunTimeError &error) {
        // The connection ends with this call, so the caller's set must not go on naming it.
        rs->clearActiveConnection();
        trapWrite(error, connection);
        return false;
    }
}

QString clsAdoUtils::LastError()
{
    return std::exchange(m_lastError, QString());
}

qint32 clsAdoUtils::ExecuteID(const QString &SQL)
{
    try {
        ado::Connection connection;
        ado::Recordset identity;
        identity.setCursorLocation(ado::CursorLocation::Server);
        identity.setCursorType(ado::CursorType::ForwardOnly);
        identity.setLockType(ado::LockType::ReadOnly);
        identity.setSource(u"SELECT @@IDENTITY"_s);

        openWorkingConnection(connection);
        qint32 id = 0;
        connection.transact([&] {
            connection.execute(SQL, ado::options::kText + ado::options::kNoRecords);
            // On the inserting connection: any other one would not see the row's key.
            identity.setActiveConnection(connection);
            identity.open(ado::options::kText);
            id = identity.integer(0);
            identity.close();
        });
        connection.close();
        return id;
    } catch (const RunTimeError &error) {
        // No rollback and no close: the transaction has ended with its connection's scope.
        setLastError(error);
        return 0;
    }
}

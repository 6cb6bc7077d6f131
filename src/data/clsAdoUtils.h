#pragma once

#include "platform/ado/Connection.h"
#include "platform/ado/Recordset.h"
#include "runtime/Ref.h"

#include <QString>

/// The one way in which the module's screens and helpers read and write the database.
///
/// Each operation works on a short connection of its own, each write in a transaction of its own,
/// and every record set is handed out detached; the caller owns it and closes it. Statements are
/// passed on unchanged. An operation traps its errors: it leaves number, " - " and description in
/// LastError and returns a failure value. Only an error inside that handling (a refused rollback)
/// reaches the caller.
class clsAdoUtils
{
public:
    /// Taken anew by each operation; see ado::Connection for its form.
    [[nodiscard]] const QString &ConnectionString() const { return m_connectionString; }
    void setConnectionString(const QString &sData) { m_connectionString = sData; }

    /// A flag that nothing reads: one dialect serves the whole module. 0 false, -1 true.
    [[nodiscard]] qint16 isSQL() const { return m_isSQL; }
    void setIsSQL(qint16 value) { m_isSQL = value; }

    /// True when there is nothing to read: no object, no rows at all, or a failure (a closed set).
    /// Where the cursor stands makes no difference.
    [[nodiscard]] bool EmptyRS(const Ref<ado::Recordset> &adoRS);

    /// True when the statement ran and was committed. After a failure nothing of it remains.
    bool Execute(const QString &SQL);

    /// All rows of a query, detached; no object after a failure. A set that is not `bReadOnly` can
    /// be edited and written back by PutRS.
    [[nodiscard]] Ref<ado::Recordset> GetRS(const QString &SQL, bool bReadOnly);

    /// The number of rows of `TableName`, limited by `WhereClause` (without the word WHERE) unless
    /// that is empty; -1 after a failure.
    [[nodiscard]] qint32 GetCount(const QString &TableName, const QString &WhereClause);

    /// Writes the changes of a detached set back; true when they were committed. False without any
    /// LastError for an empty set and for a read-only one. The set is detached again in any case.
    bool PutRS(const Ref<ado::Recordset> &rs);

    /// The text of the last failure, or empty; reading empties it. A success does not, so it is to
    /// be read right after a failure only.
    [[nodiscard]] QString LastError();

    /// Runs an insert and returns the key that the database gave the row; what it reports for a
    /// table without a counter is its own affair. 0 after a failure, and then nothing is stored.
    qint32 ExecuteID(const QString &SQL);

private:
    void openWorkingConnection(ado::Connection &connection) const;
    void setLastError(const RunTimeError &error);
    void trapWrite(const RunTimeError &error, ado::Connection &connection);

    QString m_connectionString;
    QString m_lastError;
    qint16 m_isSQL = 0;
};

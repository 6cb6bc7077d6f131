#pragma once

#include "platform/ado/AdoTypes.h"
#include "runtime/Ref.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

namespace ado {

class Recordset;
class Session;

/// A connection to a data source. It is cheap to open: the session under it comes from a pool and
/// goes back to it, clean, on close. Copies are not made; a Recordset may share it while attached.
/// All operations raise RunTimeError with a number of ado::errors; none leaves a half-open state.
class Connection
{
public:
    Connection();
    /// Rolls back an open transaction and closes.
    ~Connection();
    Connection(const Connection &) = delete;
    Connection &operator=(const Connection &) = delete;

    /// Keyword=value pairs parted by ";"; "dsn" names the data source.
    void setConnectionString(const QString &text) { m_connectionString = text; }
    [[nodiscard]] const QString &connectionString() const { return m_connectionString; }
    void setCursorLocation(CursorLocation location) { m_cursorLocation = location; }
    [[nodiscard]] CursorLocation cursorLocation() const { return m_cursorLocation; }
    [[nodiscard]] ObjectState state() const;

    /// Opens the data source. A non-empty `connectionString` replaces the property; a non-empty
    /// user or password wins over those in the text. Error 3705 when open already; kUnspecified
    /// when the source cannot be reached or is no database.
    void open(const QString &connectionString = {}, const QString &user = {},
              const QString &password = {}, int options = options::kUnspecified);
    /// Error 3704 when closed. An open transaction is rolled back.
    void close();

    /// Error 3704 when closed; kUnspecified when the transaction state does not allow it.
    void beginTrans();
    void commitTrans();
    void rollbackTrans();

    /// Runs `work` between beginTrans and commitTrans, and all of it again, some times at most,
    /// when the transaction was lost with the way to the database before it was committed. What
    /// else `work` or the commit raises leaves the transaction to the caller's rollbackTrans.
    void transact(const std::function<void()> &work);

    /// Runs exactly one statement in the desktop dialect; rows that it returns are dropped.
    void execute(const QString &statement, int options = options::kUnspecified);

    /// Makes an index over columns of a table unless it is there; an item is a column's name, or
    /// "Year(column)" as statements ask for it. One that begins with a text is made on a server
    /// only: sessions with a file have lookups in its place. The module makes one for its own
    /// products; a parent's tables are the parent's.
    void provideIndex(const QString &table, const QString &index, const QStringList &items);

    /// Takes the turn at what only one connection at a time, of any process, is to do with the
    /// database; false while another one has it. It is kept until this connection closes or its
    /// process dies. Lost with its session, it is taken anew by the next call, if it is free.
    [[nodiscard]] bool takeTurn();

    /// What a database in a file finds wrong with it; 3704 when closed.
    [[nodiscard]] QStringList damages();

    /// The columns of all tables, one row each: TABLE_NAME, COLUMN_NAME, ORDINAL_POSITION,
    /// DATA_TYPE (small integer, a DataType code), CHARACTER_MAXIMUM_LENGTH, with names in the case
    /// in which they were created; tables by name, columns by position.
    [[nodiscard]] Ref<Recordset> openSchema(SchemaList list);

private:
    friend class Recordset;
    Session &session() const; // 3704 when closed

    QString m_connectionString;
    CursorLocation m_cursorLocation = CursorLocation::Server;
    std::shared_ptr<Session> m_session;
    bool m_inTransaction = false;
    std::shared_ptr<bool> m_committed; // of the last transaction begun
};

} // namespace ado

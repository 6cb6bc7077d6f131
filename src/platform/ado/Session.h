#pragma once

#include "platform/ado/RowSet.h"
#include "platform/ado/dialect/Translator.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

namespace ado {

/// One open session with a database: what a provider has to offer. A session belongs to one
/// Connection (or lies in the pool) at a time. Every operation raises RunTimeError with a number of
/// ado::errors and a Norwegian text without secrets.
class Session
{
public:
    /// How often work is begun that a database loses each time.
    static constexpr int kAttempts = 5;
    /// How many rows are added between two times that it is told.
    static constexpr int kAddedAtOnce = 1000;

    virtual ~Session() = default;

    /// Starts a transaction; it takes no lock before its first statement. The caller begins no
    /// second one, and commits or rolls back only what it has begun.
    virtual void begin() = 0;
    /// Raises, too, when the database has given the transaction up on its own (a full disk).
    virtual void commit() = 0;
    virtual void rollback() = 0;
    /// True when the transaction has gone down with the session's way to the database, and nothing
    /// of it is stored; rolled back, it can be run again from its beginning.
    [[nodiscard]] virtual bool transactionLost() const noexcept { return false; }

    /// Runs one statement of the desktop dialect and drops its rows.
    virtual void execute(QStringView statement) = 0;
    /// Runs one statement of the desktop dialect and returns its rows; a statement without rows
    /// returns a set without columns.
    virtual RowSet query(QStringView statement) = 0;
    /// Writes the changed columns of the given changed rows back to the base table, a row found by
    /// its key; outside a transaction all of them or none. The rows are accepted when all are
    /// written. Raises kRowNotFound for a row that is gone, kSyntax for a set without the key of
    /// its one table.
    virtual void writeBack(RowSet &rows, const std::vector<int> &changedRows) = 0;
    /// Adds all rows of `rows` to a table at once, each value to the column of its name, those of a
    /// counter too, which is moved on behind them. All rows or none. Raises kNoSuchTable, and what
    /// a refused row raises. Now and then `added` is told how many are on their way; what it raises
    /// ends the work as well.
    virtual void append(QStringView table, const RowSet &rows,
                        const std::function<void(int rows)> &added) = 0;
    void append(QStringView table, const RowSet &rows)
    {
        append(table, rows, [](int) {});
    }
    /// The last number that the table's counter has given; 0 when it has none or has given none.
    virtual qint64 lastNumber(QStringView table) = 0;
    /// From now on the table's counter gives numbers behind that one; nothing for one that stands
    /// there already, and for a table without a counter.
    virtual void continueCounter(QStringView table, qint64 lastNumber) = 0;
    /// Makes an index unless it is there; dialect/IndexTranslator.h tells the arguments, the errors
    /// and which is left out.
    virtual void provideIndex(QStringView table, QStringView index, const QStringList &items) = 0;
    /// The tables as they are now; valid until the next call on the session.
    virtual const dialect::Catalog &catalog() = 0;

    /// What the database finds wrong with its own file, a line each; nothing on a server, which
    /// looks after its files itself.
    virtual QStringList damages() { return {}; }
    /// Takes the turn of Connection::takeTurn; what has it already keeps it, until reset().
    virtual bool takeTurn() = 0;

    /// Makes the session fit for the next owner: rolled back, nothing pending, no identity and no
    /// turn left.
    /// False when it cannot be used again.
    virtual bool reset() noexcept = 0;
    /// False when an idle session does not stand on the source that it was opened on, nor can be
    /// put back on it.
    virtual bool usable() noexcept = 0;
};

} // namespace ado

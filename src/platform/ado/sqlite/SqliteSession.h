#pragma once

#include "platform/ado/KeptRows.h"
#include "platform/ado/Session.h"
#include "platform/ado/WriteBack.h"
#include "platform/ado/sqlite/SqliteDatabase.h"
#include "platform/ado/sqlite/SqliteLookups.h"
#include "platform/ado/sqlite/SqliteStatement.h"
#include "platform/ado/sqlite/SqliteTurn.h"
#include "platform/ado/sqlite/SqliteWriter.h"

#include <QCache>

#include <optional>

namespace ado {

/// A session with a SQLite file. Statements of the same shape share one translation and one
/// prepared statement for as long as no connection, of this process or another, changes the schema.
class SqliteSession final : public Session
{
public:
    /// Raises as SqliteDatabase does.
    explicit SqliteSession(const QString &path);
    ~SqliteSession() override;

    /// Only takes note. The first statement starts the transaction: with the lock for writing when
    /// it writes, else without one, so that a begun transaction hinders nobody.
    void begin() override;
    void commit() override;
    void rollback() override;
    void execute(QStringView statement) override;
    RowSet query(QStringView statement) override;
    void writeBack(RowSet &rows, const std::vector<int> &changedRows) override;
    void append(QStringView table, const RowSet &rows,
                const std::function<void(int rows)> &added) override;
    qint64 lastNumber(QStringView table) override;
    void continueCounter(QStringView table, qint64 lastNumber) override;
    void provideIndex(QStringView table, QStringView index, const QStringList &items) override;
    const dialect::Catalog &catalog() override;
    QStringList damages() override;
    bool takeTurn() override { return m_turn.take(); }
    bool reset() noexcept override;
    bool usable() noexcept override;

private:
    enum class Transaction {
        None,
        Begun,  // nothing asked of the database yet
        Running // or given up by the database, when it is in no transaction
    };
    struct Prepared
    {
        dialect::Translation translation;
        SqliteStatement statement;
    };

    const dialect::Catalog &catalogOfThisMoment(); // leaves m_schemaVersion standing on its row
    void joinTransaction(bool writes);
    void checkRunning();
    template<class Change>
    void allOrNothing(Change change);
    void run(QStringView text, RowSet *rows); // no `rows`: they are dropped
    void changeSchema(const dialect::Translation &translation);
    void forgetSchema();
    bool keepsCounters() const;
    WriteBack::Outcome change(const QByteArray &sql, const std::vector<Value> &values);

    SqliteDatabase m_database;
    SqliteStatement m_beginWriting;
    SqliteStatement m_commit;
    SqliteStatement m_schemaVersion;
    SqliteLookups m_lookups;
    SqliteWriter m_writer;
    SqliteTurn m_turn;
    Transaction m_transaction = Transaction::None;
    bool m_schemaTouched = false; // within the transaction
    // What is known of the schema of that version; no catalogue while nothing is.
    qint64 m_catalogVersion = 0;
    std::optional<dialect::Catalog> m_catalog;
    QCache<QString, Prepared> m_statements; // by shape
    KeptRows m_kept{[this] { return QByteArray::number(m_database.version()); }};
};

} // namespace ado

#pragma once

#include "platform/ado/KeptRows.h"
#include "platform/ado/Session.h"
#include "platform/ado/postgres/PostgresCommit.h"
#include "platform/ado/postgres/PostgresLink.h"
#include "platform/ado/postgres/PostgresTurn.h"
#include "platform/ado/postgres/PostgresWriter.h"

#include <QCache>

#include <optional>

namespace ado {

/// A session with a PostgreSQL server. Statements of the same shape share one translation and one
/// prepared statement. What is known of the schema is kept until a statement meets something else;
/// that statement, which the server refused before it touched a row, is then translated anew.
///
/// A connection that ended while nothing was under way is replaced unseen. Within a transaction, or
/// below a statement, its end is an error, for nobody knows what the server did last.
class PostgresSession final : public Session
{
public:
    /// libpq's keywords. Raises as PostgresLink does.
    explicit PostgresSession(const PostgresLink::Keywords &keywords);
    ~PostgresSession() override;

    /// Only takes note: BEGIN goes with the first statement. Transactions are READ COMMITTED.
    void begin() override;
    void commit() override;
    /// Never raises: a server that is gone has rolled back.
    void rollback() override;
    bool transactionLost() const noexcept override;
    void execute(QStringView statement) override;
    RowSet query(QStringView statement) override;
    void writeBack(RowSet &rows, const std::vector<int> &changedRows) override;
    void append(QStringView table, const RowSet &rows,
                const std::function<void(int rows)> &added) override;
    qint64 lastNumber(QStringView table) override;
    void continueCounter(QStringView table, qint64 lastNumber) override;
    void provideIndex(QStringView table, QStringView index, const QStringList &items) override;
    const dialect::Catalog &catalog() override;
    bool takeTurn() override;
    bool reset() noexcept override;
    bool usable() noexcept override;

private:
    using Purpose = PostgresCommit::Purpose;
    enum class Transaction {
        None,
        Begun,   // nothing asked of the server yet
        Started, // BEGIN and nothing of the owner's
        Running,
        Lost, // the connection ended before the commit
        Over, // by a commit that failed
    };
    class Prepared
    {
    public:
        Prepared(PostgresLink &link, dialect::Translation made)
            : translation(std::move(made)), m_link(link)
        {
        }
        ~Prepared();
        Prepared(const Prepared &) = delete;
        Prepared &operator=(const Prepared &) = delete;

        /// Prepares it at first use.
        const QByteArray &name();

        const dialect::Translation translation;

    private:
        PostgresLink &m_link;
        QByteArray m_name;
    };

    void requireRunning() const;
    void start(Purpose purpose);
    void reopen();
    template<class Read>
    void reading(Read read);
    template<class Action>
    void guarded(Action action);
    template<class Change>
    void allOrNothing(Change change);
    void takeBack(bool savepoint) noexcept;

    void run(QStringView text, RowSet *rows); // no `rows`: they are dropped
    void perform(const dialect::Lexed &lexed, RowSet *rows);
    QByteArray moment();
    void answerIdentity(const dialect::Translation &query, RowSet *rows) const;
    void noteNumber(const PostgresResult &result);
    void changeSchema(const dialect::Translation &translation);
    void provideCollation(const QByteArray &sql);
    const dialect::Catalog &knownCatalog();
    void forgetSchema();

    PostgresLink m_link;
    PostgresCommit m_commit;
    PostgresTurn m_turn;
    PostgresWriter m_writer;
    Transaction m_transaction = Transaction::None;
    bool m_schemaTouched = false; // within the transaction
    qint32 m_identity = 0;
    // What is known of the schema, as of the count of the process's own changes.
    quint64 m_knownChanges = 0;
    std::optional<dialect::Catalog> m_catalog;
    bool m_hasCollation = false;
    QCache<QString, Prepared> m_statements; // by shape
    KeptRows m_kept{[this] { return moment(); }};
};

} // namespace ado

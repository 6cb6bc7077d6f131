#include "platform/ado/postgres/PostgresSession.h"

#include "platform/ado/AdoTypes.h"
#include "platform/ado/WriteBack.h"
#include "platform/ado/dialect/IndexTranslator.h"
#include "platform/ado/postgres/Libpq.h"
#include "platform/ado/postgres/PostgresCatalog.h"
#include "platform/ado/postgres/PostgresCopy.h"
#include "platform/ado/postgres/PostgresError.h"
#include "platform/ado/postgres/PostgresRows.h"

using namespace Qt::StringLiterals;

namespace ado {

namespace {

constexpr int kCachedStatements = 64;

/// Changes of a schema that this process has made. A session that knows of fewer may be wrong about
/// tables that another session of ours has changed.
quint64 schemaChanges = 0;

/// True for what a statement meets that was translated by an outdated picture of the schema. The
/// server finds it before the statement runs.
bool isAboutSchema(const RunTimeError &error)
{
    switch (error.number()) {
    case errors::kNoSuchTable:
    case errors::kNoSuchColumn:
    case errors::kTableExists:
    case errors::kColumnExists:
        return true;
    default:
        return false;
    }
}

bool isQuery(const dialect::Lexed &statement)
{
    return statement.tokens.front().text.compare(u"SELECT", Qt::CaseInsensitive) == 0;
}

} // namespace

PostgresSession::Prepared::~Prepared()
{
    if (!m_name.isEmpty())
        m_link.drop(m_name);
}

const QByteArray &PostgresSession::Prepared::name()
{
    if (m_name.isEmpty())
        m_name = m_link.prepare(translation.sql);
    return m_name;
}

PostgresSession::PostgresSession(const PostgresLink::Keywords &keywords)
    : m_link(keywords), m_commit(m_link, [this] { reopen(); }), m_statements(kCachedStatements)
{
}

PostgresSession::~PostgresSession() = default;

// --- Transactions

void PostgresSession::begin()
{
    m_transaction = Transaction::Begun;
}

void PostgresSession::commit()
{
    if (m_transaction != Transaction::Begun) {
        requireRunning();
        m_transaction = Transaction::Over;
        if (!m_commit.send()) {
            m_transaction = Transaction::Lost;
            throw postgresLost();
        }
    }
    m_transaction = Transaction::None;
    if (std::exchange(m_schemaTouched, false))
        ++schemaChanges;
}

void PostgresSession::rollback()
{
    const Transaction ended = std::exchange(m_transaction, Transaction::None);
    if (std::exchange(m_schemaTouched, false))
        forgetSchema();
    if (ended != Transaction::None && ended != Transaction::Begun && !m_link.isLost())
        passOver([this] { m_link.run("ROLLBACK"); });
}

void PostgresSession::requireRunning() const
{
    if (m_transaction == Transaction::Lost || m_transaction == Transaction::Over)
        throw postgresLost();
}

void PostgresSession::reopen()
{
    forgetSchema();
    m_kept.forget();
    m_commit.forgetLife();
    m_turn.lose();
    m_link.reopen();
}

bool PostgresSession::transactionLost() const noexcept
{
    const bool open =
        m_transaction == Transaction::Started || m_transaction == Transaction::Running;
    return m_transaction == Transaction::Lost || (open && m_link.isLost());
}

/// Sends the BEGIN that is due, on a new connection if the old one has ended. Nothing is lost by
/// trying BEGIN again.
void PostgresSession::start(Purpose purpose)
{
    requireRunning();
    if (m_transaction == Transaction::Started || m_transaction == Transaction::Running)
        return;
    if (!m_link.isAlive())
        reopen();
    for (int left = kAttempts; m_transaction == Transaction::Begun; --left) {
        try {
            m_commit.begin(purpose);
            m_transaction = Transaction::Started;
        } catch (const RunTimeError &) {
            if (!m_link.isLost()) {
                takeBack(false); // a transaction has begun all the same
                throw;
            }
            if (left == 1)
                throw;
            reopen();
        }
    }
}

/// Runs `read`, which changes nothing, and outside a transaction once more on a new connection when
/// the one below it has ended.
template<class Read>
void PostgresSession::reading(Read read)
{
    for (int left = kAttempts;; --left) {
        start(Purpose::Read);
        try {
            read();
            return;
        } catch (const RunTimeError &) {
            if (left == 1 || m_transaction != Transaction::None || !m_link.isLost())
                throw;
        }
    }
}

/// Runs `action`, which sends statements, so that a failure leaves a transaction as it was before.
/// What is due before has been sent by start().
template<class Action>
void PostgresSession::guarded(Action action)
{
    const bool savepoint = m_transaction == Transaction::Running;
    try {
        if (savepoint)
            m_link.run("SAVEPOINT setning");
        action();
        if (savepoint)
            m_link.run("RELEASE setning");
    } catch (...) {
        takeBack(savepoint);
        throw;
    }
    if (m_transaction == Transaction::Started)
        m_transaction = Transaction::Running;
}

void PostgresSession::takeBack(bool savepoint) noexcept
{
    if (m_transaction == Transaction::None)
        return;             // the statement stood alone
    m_hasCollation = false; // if it was made just now, it is gone
    const char *const undo = savepoint ? "ROLLBACK TO setning; RELEASE setning" : "ROLLBACK";
    if (passOver([&] { m_link.run(undo); }) != 0)
        m_transaction = Transaction::Lost;
    else if (!savepoint)
        m_transaction = Transaction::Begun;
}

template<class Change>
void PostgresSession::allOrNothing(Change change)
{
    if (m_transaction != Transaction::None) {
        change();
        return;
    }
    begin();
    try {
        change();
        commit();
    } catch (...) {
        rollback();
        throw;
    }
}

// --- The schema

const dialect::Catalog &PostgresSession::catalog()
{
    reading([this] {
        forgetSchema();
        knownCatalog();
    });
    return *m_catalog;
}

const dialect::Catalog &PostgresSession::knownCatalog()
{
    if (m_knownChanges != schemaChanges)
        forgetSchema();
    if (!m_catalog)
        m_catalog = readCatalog(m_link);
    return *m_catalog;
}

void PostgresSession::forgetSchema()
{
    m_knownChanges = schemaChanges;
    m_catalog.reset();
    m_hasCollation = false;
    m_statements.clear();
}

void PostgresSession::provideCollation(const QByteArray &sql)
{
    if (m_hasCollation || !PostgresWriter::needsCollation(sql))
        return;
    const QByteArray name = PostgresWriter::kCollation;
    const PostgresResult found =
        m_link.run(("SELECT to_regcollation('" + name + "') IS NOT NULL").constData());
    if (*PQgetvalue(found.get(), 0, 0) != 't') {
        m_schemaTouched = m_transaction != Transaction::None;
        try {
            m_link.run(("CREATE COLLATION IF NOT EXISTS \"" + name +
                        "\" (provider = icu, locale = '" + PostgresWriter::kLocale +
                        "', deterministic = false)")
                           .constData());
        } catch (const RunTimeError &error) {
            throw RunTimeError(error.number(),
                               u"Databasen mangler sorteringsrekkefølgen «%1», og den lot seg ikke "
                               "lage: %2"_s.arg(QLatin1StringView(name), error.description()));
        }
    }
    m_hasCollation = true;
}

// --- Statements

void PostgresSession::execute(QStringView statement)
{
    run(statement, nullptr);
}

RowSet PostgresSession::query(QStringView statement)
{
    RowSet rows;
    run(statement, &rows);
    return rows;
}

void PostgresSession::run(QStringView text, RowSet *rows)
{
    const dialect::Lexed lexed = dialect::lex(text);
    const bool mayKeep = rows && isQuery(lexed) && m_transaction == Transaction::None;
    const auto attempt = [&] {
        if (const RowSet *kept = mayKeep ? m_kept.answerTo(text) : nullptr) {
            *rows = *kept;
            return;
        }
        const bool remembered = m_catalog.has_value();
        try {
            perform(lexed, rows);
        } catch (const RunTimeError &error) {
            if (!remembered || !isAboutSchema(error))
                throw;
            forgetSchema();
            perform(lexed, rows);
        }
        if (mayKeep)
            m_kept.take(text, *rows);
    };
    if (isQuery(lexed))
        reading(attempt);
    else
        attempt();
}

/// Whose changes a statement that begins now sees: every change belongs to a transaction, and one
/// that has ended does not begin again.
QByteArray PostgresSession::moment()
{
    QByteArray seen; // empty on a server before 13
    passOver([&] {
        const PostgresResult snapshot = m_link.run("SELECT pg_current_snapshot()");
        seen = PQgetvalue(snapshot.get(), 0, 0);
    });
    return seen;
}

void PostgresSession::perform(const dialect::Lexed &lexed, RowSet *rows)
{
    start(Purpose::Change);
    const dialect::Catalog &tables = knownCatalog();
    Prepared *prepared = m_statements.object(lexed.shape);
    if (!prepared) {
        dialect::Translation translation = dialect::translate(lexed, tables, m_writer);
        if (translation.changesSchema())
            return changeSchema(translation);
        if (translation.kind == dialect::StatementKind::Identity)
            return answerIdentity(translation, rows);
        m_statements.insert(lexed.shape, new Prepared(m_link, std::move(translation)));
        prepared = m_statements.object(lexed.shape);
    }

    const dialect::Translation &translation = prepared->translation;
    const PostgresParameters values(dialect::parameterValues(translation, lexed));
    RowSet read(translation.columns, translation.baseTable);
    guarded([&] {
        provideCollation(translation.sql);
        if (translation.returnsRows())
            m_link.stream(prepared->name(), values,
                          [&](const PGresult *row) { appendRow(row, read); });
        else
            noteNumber(m_link.executePrepared(prepared->name(), values));
    });
    read.shrink();
    if (rows)
        *rows = std::move(read);
}

void PostgresSession::answerIdentity(const dialect::Translation &query, RowSet *rows) const
{
    if (!rows)
        return;
    *rows = RowSet(query.columns);
    rows->store(0).append(m_identity);
    rows->closeRow();
}

/// Keeps the number that an INSERT into a table with a counter returned.
void PostgresSession::noteNumber(const PostgresResult &result)
{
    if (PQntuples(result.get()) == 1)
        m_identity = QByteArray(PQgetvalue(result.get(), 0, 0)).toInt();
}

void PostgresSession::changeSchema(const dialect::Translation &translation)
{
    PostgresWriter::requireShortNames(translation.sql);
    for (const QByteArray &followUp : translation.followUps)
        PostgresWriter::requireShortNames(followUp);
    allOrNothing([&] {
        start(Purpose::Change);
        guarded([&] {
            provideCollation(translation.sql);
            m_link.run(translation.sql.constData());
            for (const QByteArray &followUp : translation.followUps)
                m_link.run(followUp.constData());
        });
        m_schemaTouched = true;
    });
    forgetSchema();
}

void PostgresSession::provideIndex(QStringView table, QStringView index, const QStringList &items)
{
    const dialect::Catalog &tables = catalog();
    const auto made = dialect::translateIndex(table, index, items, tables, m_writer);
    // Of one that is there the server would find out with the table locked against writers.
    const QByteArray known =
        PostgresWriter::knowsRelation(dialect::indexName(*tables.table(table), index));
    if (made && *PQgetvalue(m_link.run(known.constData()).get(), 0, 0) != 't')
        changeSchema(*made);
}

// --- Writing back

void PostgresSession::writeBack(RowSet &rows, const std::vector<int> &changedRows)
{
    std::optional<WriteBack> writeBack;
    allOrNothing([&] {
        start(Purpose::Change);
        const dialect::TableInfo *table =
            rows.baseTable().isEmpty() ? nullptr : knownCatalog().table(rows.baseTable());
        writeBack.emplace(rows, table, m_writer, [this](const auto &sql, const auto &values) {
            WriteBack::Outcome outcome;
            guarded([&] {
                provideCollation(sql);
                const PostgresResult result = m_link.execute(sql, PostgresParameters(values));
                noteNumber(result);
                outcome.rows = QByteArray(PQcmdTuples(result.get())).toLongLong();
                outcome.number = m_identity;
            });
            return outcome;
        });
        writeBack->write(changedRows);
    });
    writeBack->accept(rows); // NOLINT(bugprone-unchecked-optional-access): made above, or raised
}

void PostgresSession::append(QStringView table, const RowSet &rows,
                             const std::function<void(int rows)> &added)
{
    allOrNothing([&] {
        start(Purpose::Change);
        const dialect::TableInfo *target = knownCatalog().table(table);
        if (!target)
            throw RunTimeError(errors::kNoSuchTable, u"Tabellen «%1» finnes ikke."_s.arg(table));
        int next = 0;
        guarded([&] {
            m_link.copyIn(copyStatement(*target, rows.columns()), [&] {
                if (next > 0 && next % kAddedAtOnce == 0)
                    added(next);
                return next < rows.rowCount() ? copyLine(rows, next++) : QByteArray();
            });
            if (const dialect::ColumnInfo *counter = target->counter())
                m_link.run(
                    PostgresWriter::counterBehindRows(target->name, counter->name).constData());
        });
    });
}

qint64 PostgresSession::lastNumber(QStringView table)
{
    QByteArray last = "0";
    reading([&] {
        const dialect::TableInfo *info = knownCatalog().table(table);
        if (const dialect::ColumnInfo *counter = info ? info->counter() : nullptr) {
            const QByteArray query = PostgresWriter::lastNumber(info->name, counter->name);
            last = PQgetvalue(m_link.run(query.constData()).get(), 0, 0);
        }
    });
    return last.toLongLong();
}

void PostgresSession::continueCounter(QStringView table, qint64 lastNumber)
{
    start(Purpose::Change);
    const dialect::TableInfo *info = knownCatalog().table(table);
    if (const dialect::ColumnInfo *counter = info ? info->counter() : nullptr)
        guarded([&] {
            m_link.run(
                PostgresWriter::counterBehind(info->name, counter->name, lastNumber).constData());
        });
}

// --- Between two owners

bool PostgresSession::takeTurn()
{
    start(Purpose::Read);
    return m_turn.take(m_link);
}

bool PostgresSession::reset() noexcept
{
    rollback();
    m_turn.release(m_link);
    m_identity = 0;
    return m_link.isIdle();
}

bool PostgresSession::usable() noexcept
{
    return m_link.isAlive() || passOver([this] { reopen(); }) == 0;
}

} // namespace ado

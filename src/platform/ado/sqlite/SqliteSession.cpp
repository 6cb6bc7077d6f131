#include "platform/ado/sqlite/SqliteSession.h"

#include "platform/ado/AdoTypes.h"
#include "platform/ado/dialect/IndexTranslator.h"
#include "platform/ado/sqlite/SqliteCatalog.h"
#include "platform/ado/sqlite/SqliteRows.h"

#include <QByteArrayList>

#include <limits>
#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace ado {

namespace {

constexpr int kCachedStatements = 64;

} // namespace

SqliteSession::SqliteSession(const QString &path)
    : m_database(path), m_beginWriting(m_database.handle(), "BEGIN IMMEDIATE"),
      m_commit(m_database.handle(), "COMMIT"),
      m_schemaVersion(m_database.handle(), "PRAGMA schema_version"), m_lookups(m_database),
      m_turn(path), m_statements(kCachedStatements)
{
}

SqliteSession::~SqliteSession() = default;

// --- Transactions

void SqliteSession::begin()
{
    m_transaction = Transaction::Begun;
}

void SqliteSession::commit()
{
    if (m_transaction == Transaction::Running) {
        checkRunning();
        const ScopedRun run(m_commit);
        m_commit.step();
    }
    m_transaction = Transaction::None;
    m_schemaTouched = false;
}

void SqliteSession::rollback()
{
    if (m_transaction == Transaction::Running)
        m_lookups.distrust();
    m_transaction = Transaction::None;
    // The schema's version falls back with the schema, and a later change may take the same one.
    if (m_schemaTouched)
        forgetSchema();
    m_schemaTouched = false;
    if (m_database.inTransaction())
        m_database.run("ROLLBACK");
}

void SqliteSession::checkRunning()
{
    if (!m_database.inTransaction())
        throw RunTimeError(errors::kUnspecified,
                           u"Transaksjonen er avbrutt av databasen; ingenting i den er lagret."_s);
}

void SqliteSession::joinTransaction(bool writes)
{
    if (m_transaction == Transaction::Begun) {
        if (writes) {
            const ScopedRun run(m_beginWriting);
            m_beginWriting.step();
        } else {
            m_database.run("BEGIN");
        }
        m_transaction = Transaction::Running;
    } else if (m_transaction == Transaction::Running) {
        checkRunning();
    }
}

template<class Change>
void SqliteSession::allOrNothing(Change change)
{
    const bool alone = m_transaction == Transaction::None;
    joinTransaction(true);
    m_database.run(alone ? "BEGIN IMMEDIATE" : "SAVEPOINT endring");
    try {
        change();
        m_database.run(alone ? "COMMIT" : "RELEASE endring");
    } catch (...) {
        // The error to tell is the change's own. After some the database has rolled back already.
        passOver(
            [&] { m_database.run(alone ? "ROLLBACK" : "ROLLBACK TO endring; RELEASE endring"); });
        throw;
    }
}

// --- Statements

const dialect::Catalog &SqliteSession::catalog()
{
    const ScopedRun run(m_schemaVersion);
    return catalogOfThisMoment();
}

const dialect::Catalog &SqliteSession::catalogOfThisMoment()
{
    m_schemaVersion.step();
    const qint64 version = m_schemaVersion.integer(0);
    if (!m_catalog || version != m_catalogVersion) {
        forgetSchema();
        m_catalog = readCatalog(m_database.handle());
        m_catalogVersion = version;
    }
    return *m_catalog;
}

void SqliteSession::forgetSchema()
{
    m_kept.forget();
    m_catalog.reset();
    m_statements.clear();
    m_lookups.distrust();
}

void SqliteSession::execute(QStringView statement)
{
    run(statement, nullptr);
}

RowSet SqliteSession::query(QStringView statement)
{
    RowSet rows;
    run(statement, &rows);
    return rows;
}

void SqliteSession::run(QStringView text, RowSet *rows)
{
    const dialect::Lexed lexed = dialect::lex(text);
    // Within the transaction the look at the schema's version takes no lock of its own.
    if (const Prepared *known = m_statements.object(lexed.shape))
        joinTransaction(!known->translation.returnsRows());
    // Outside a transaction a query reads under the lock that the look has taken already.
    const ScopedRun look(m_schemaVersion);
    const dialect::Catalog &tables = catalogOfThisMoment();
    const bool mayKeep = rows && m_transaction == Transaction::None;
    if (const RowSet *kept = mayKeep ? m_kept.answerTo(text) : nullptr) {
        *rows = *kept;
        return;
    }
    Prepared *prepared = m_statements.object(lexed.shape);
    if (!prepared) {
        dialect::Translation translation = dialect::translate(lexed, tables, m_writer);
        if (!translation.returnsRows())
            m_schemaVersion.reset(); // a change starts from no snapshot, which may grow old
        if (translation.changesSchema()) {
            changeSchema(translation);
            return;
        }
        m_lookups.update(translation.lookups); // which it names
        SqliteStatement statement(m_database.handle(), translation.sql);
        m_statements.insert(lexed.shape,
                            new Prepared{std::move(translation), std::move(statement)});
        prepared = m_statements.object(lexed.shape);
    } else {
        m_lookups.update(prepared->translation.lookups);
    }

    const dialect::Translation &translation = prepared->translation;
    const std::vector<Value> values = dialect::parameterValues(translation, lexed);
    joinTransaction(!translation.returnsRows());
    const ScopedRun run(prepared->statement);
    prepared->statement.bind(values);
    if (rows && translation.returnsRows()) {
        *rows = RowSet(translation.columns, translation.baseTable);
        readRows(prepared->statement, *rows);
        if (mayKeep)
            m_kept.take(text, *rows);
    } else {
        prepared->statement.step();
    }
}

void SqliteSession::changeSchema(const dialect::Translation &translation)
{
    // Statements that stand prepared would keep a table from being dropped.
    forgetSchema();
    if (m_transaction != Transaction::None)
        m_schemaTouched = true;
    allOrNothing([&] {
        m_database.run(translation.sql.constData());
        for (const QByteArray &followUp : translation.followUps)
            m_database.run(followUp.constData());
    });
}

void SqliteSession::provideIndex(QStringView table, QStringView index, const QStringList &items)
{
    if (const auto made = dialect::translateIndex(table, index, items, catalog(), m_writer))
        changeSchema(*made);
}

// --- Writing back

void SqliteSession::writeBack(RowSet &rows, const std::vector<int> &changedRows)
{
    const dialect::TableInfo *table =
        rows.baseTable().isEmpty() ? nullptr : catalog().table(rows.baseTable());
    WriteBack writeBack(rows, table, m_writer, [this](const auto &sql, const auto &values) {
        return change(sql, values);
    });
    if (m_transaction == Transaction::None) {
        allOrNothing([&] { writeBack.write(changedRows); });
    } else {
        joinTransaction(true);
        writeBack.write(changedRows);
    }
    writeBack.accept(rows);
}

WriteBack::Outcome SqliteSession::change(const QByteArray &sql, const std::vector<Value> &values)
{
    SqliteStatement statement(m_database.handle(), sql);
    statement.bind(values);
    statement.step();
    const qint64 number = sqlite3_last_insert_rowid(m_database.handle());
    if (number > std::numeric_limits<qint32>::max())
        throw RunTimeError(errors::kOutOfRange, u"Tabellen har brukt opp sine nummer."_s);
    return {sqlite3_changes64(m_database.handle()), qint32(number)};
}

void SqliteSession::append(QStringView table, const RowSet &rows,
                           const std::function<void(int rows)> &added)
{
    const dialect::TableInfo *target = catalog().table(table);
    if (!target)
        throw RunTimeError(errors::kNoSuchTable, u"Tabellen «%1» finnes ikke."_s.arg(table));
    QByteArrayList names;
    QByteArrayList places;
    for (const dialect::ResultColumn &column : rows.columns()) {
        names += dialect::Writer::name(column.name);
        places += m_writer.placeHolder(int(names.size()), column.type);
    }
    const QByteArray sql = "INSERT INTO " + dialect::Writer::name(target->name) + " (" +
                           names.join(", ") + ") VALUES (" + places.join(", ") + ')';
    allOrNothing([&] {
        SqliteStatement insert(m_database.handle(), sql);
        std::vector<Value> values(size_t(rows.columnCount()));
        for (int row = 0; row < rows.rowCount(); ++row) {
            for (int column = 0; column < rows.columnCount(); ++column)
                values[size_t(column)] = rows.value(row, column);
            const ScopedRun run(insert);
            insert.bind(values);
            insert.step();
            if ((row + 1) % kAddedAtOnce == 0)
                added(row + 1);
        }
    });
}

/// SQLite makes its table of counters with the first table that has one.
bool SqliteSession::keepsCounters() const
{
    SqliteStatement kept(m_database.handle(),
                         "SELECT COUNT(*) FROM sqlite_schema WHERE name = 'sqlite_sequence'");
    kept.step();
    return kept.integer(0) > 0;
}

qint64 SqliteSession::lastNumber(QStringView table)
{
    if (!keepsCounters())
        return 0;
    SqliteStatement last(m_database.handle(), "SELECT seq FROM sqlite_sequence WHERE name = ?1");
    last.bind({Value(table.toString())});
    return last.step() ? last.integer(0) : 0;
}

void SqliteSession::continueCounter(QStringView table, qint64 lastNumber)
{
    if (!keepsCounters() || this->lastNumber(table) >= lastNumber)
        return;
    const std::vector<Value> name{Value(table.toString())};
    allOrNothing([&] {
        change("DELETE FROM sqlite_sequence WHERE name = ?1", name);
        change("INSERT INTO sqlite_sequence (name, seq) SELECT name, " +
                   QByteArray::number(lastNumber) +
                   " FROM sqlite_schema WHERE name = ?1 AND sql LIKE '%AUTOINCREMENT%'",
               name);
    });
}

QStringList SqliteSession::damages()
{
    QStringList found;
    for (SqliteStatement check(m_database.handle(), "PRAGMA integrity_check"); check.step();)
        found += check.text(0);
    found.removeAll(u"ok"_s);
    return found;
}

// --- Between two owners

bool SqliteSession::reset() noexcept
{
    const bool rolledBack = passOver([this] { rollback(); }) == 0;
    m_turn.release();
    sqlite3_set_last_insert_rowid(m_database.handle(), 0);
    return rolledBack && !m_database.inTransaction() && !m_database.isFrozen();
}

bool SqliteSession::usable() noexcept
{
    return m_database.isCurrent();
}

} // namespace ado

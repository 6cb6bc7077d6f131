#include "host/tasks/CopyTask.h"

#include "host/tasks/CopySchema.h"
#include "host/tasks/HostError.h"
#include "host/tasks/Progress.h"
#include "host/tasks/TableSums.h"
#include "platform/ado/Session.h"

#include <memory>

using namespace Qt::StringLiterals;

using ado::dialect::Catalog;
using ado::dialect::TableInfo;

namespace {

QString allRows(const TableInfo &table)
{
    return u"SELECT * FROM [%1]"_s.arg(table.name);
}

QString counted(int count, const QString &one, const QString &several)
{
    return QString::number(count) + u' ' + (count == 1 ? one : several);
}

/// The database that is copied, as it was at one moment.
class Original
{
public:
    explicit Original(const database::Place &place)
    try : m_session(ado::openSession(withOneView(place.source))) {
        m_session->begin();
        // The first query begins the transaction; only then does the catalogue stand still.
        const Catalog seen = m_session->catalog();
        if (seen.tables().empty())
            throw HostError(u"%1 har ingen tabeller å kopiere"_s.arg(place.name));
        m_session->query(u"SELECT COUNT (*) FROM [%1]"_s.arg(seen.tables().front().name));
        m_catalog = m_session->catalog();
    } catch (const RunTimeError &error) {
        throw HostError(u"kilden lot seg ikke lese: %1"_s.arg(error.description()));
    }

    [[nodiscard]] const Catalog &catalog() const { return m_catalog; }
    [[nodiscard]] ado::RowSet rows(const TableInfo &table) const
    {
        try {
            return m_session->query(allRows(table));
        } catch (const RunTimeError &error) {
            throw HostError(u"kilden lot seg ikke lese, tabellen %1: %2"_s.arg(
                table.name, error.description()));
        }
    }

    [[nodiscard]] qint64 lastNumber(const TableInfo &table) const
    {
        return m_session->lastNumber(table.name);
    }

private:
    /// On a server every statement of a transaction else sees what has been committed by then.
    static ado::DataSource withOneView(ado::DataSource source)
    {
        if (source.kind == ado::DataSource::Kind::PostgresServer)
            source.server[u"options"_s] += u" -c default_transaction_isolation=repeatable\\ read"_s;
        return source;
    }

    std::unique_ptr<ado::Session> m_session;
    Catalog m_catalog;
};

struct Copied
{
    const TableInfo *table;
    TableSums sums;
};

void compare(const std::vector<Copied> &tables, ado::Session &copy, Progress &progress)
{
    int rowCount = 0;
    for (const Copied &original : tables) {
        progress.at(rowCount);
        const QString difference =
            original.sums.difference(TableSums(copy.query(allRows(*original.table))));
        if (!difference.isEmpty()) {
            throw HostError(u"kopien er ikke lik kilden og er ikke lagret; tabellen %1: %2"_s.arg(
                original.table->name, difference));
        }
        rowCount += original.sums.rowCount();
    }
    progress.at(rowCount);
}

} // namespace

void copyDatabase(const database::Place &from, const database::Place &to,
                  const std::function<void(const QString &line)> &say)
{
    if (database::areSame(from, to))
        throw HostError(u"kilden og målet er samme database"_s);
    const Original original(from);
    Progress progress(say); // before the target is begun, and until it is kept or taken back
    database::NewDatabase target(to);

    int rowCount = 0;
    std::vector<Copied> tables;
    QString current;
    try {
        const std::unique_ptr<ado::Session> copy = ado::openSession(to.source);
        copy->begin();
        for (const TableInfo *table : copyOrder(original.catalog())) {
            current = u", tabellen "_s + table->name;
            const ado::RowSet rows = original.rows(*table);
            copy->execute(createStatement(*table, original.catalog()));
            progress.begin(rows.rowCount(), u"rader i "_s + table->name,
                           u"er kopiert, men ingenting er lagret"_s);
            copy->append(table->name, rows, [&](int added) { progress.at(added); });
            copy->continueCounter(table->name, original.lastNumber(*table));
            tables.push_back({table, TableSums(rows)});
            rowCount += rows.rowCount();
            progress.say(table->name + u": "_s + counted(rows.rowCount(), u"rad"_s, u"rader"_s));
            progress.at(rows.rowCount());
        }
        current.clear();
        progress.begin(rowCount, u"rader"_s, u"er kontrollert, men ingenting er lagret"_s);
        compare(tables, *copy, progress);
        copy->commit();
    } catch (const RunTimeError &error) {
        throw HostError(u"kopieringen ble avbrutt%1: %2"_s.arg(current, error.description()));
    }
    target.keep();
    progress.say(u"Kontrollert: antall og summer er like i kilden og kopien"_s);
    progress.say(u"Kopiert fra %1 til %2: %3, %4"_s.arg(
        from.name, to.name, counted(int(tables.size()), u"tabell"_s, u"tabeller"_s),
        counted(rowCount, u"rad"_s, u"rader"_s)));
}

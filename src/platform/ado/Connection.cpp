#include "platform/ado/Connection.h"

#include "platform/ado/Recordset.h"
#include "platform/ado/Session.h"
#include "platform/ado/SessionPool.h"

using namespace Qt::StringLiterals;

namespace ado {

namespace {

void checkOptions(int given)
{
    if (given != options::kUnspecified && (given & ~(options::kText | options::kNoRecords)) != 0)
        throw RunTimeError(errors::kInvalidArgument, u"Ukjent valg for kommandoen."_s);
}

dialect::ResultColumn column(const QString &name, DataType type)
{
    dialect::ResultColumn result;
    result.name = name;
    result.type = type;
    return result;
}

} // namespace

Connection::Connection() = default;

Connection::~Connection()
{
    if (m_session)
        passOver([this] { close(); });
}

ObjectState Connection::state() const
{
    return m_session ? ObjectState::Open : ObjectState::Closed;
}

Session &Connection::session() const
{
    if (!m_session)
        throw RunTimeError(errors::kObjectClosed, u"Tilkoblingen er lukket."_s);
    return *m_session;
}

void Connection::open(const QString &connectionString, const QString &user, const QString &password,
                      int options)
{
    if (m_session)
        throw RunTimeError(errors::kObjectOpen, u"Tilkoblingen er allerede åpen."_s);
    checkOptions(options);
    if (!connectionString.isEmpty())
        m_connectionString = connectionString;
    if (user.isEmpty() && password.isEmpty()) {
        m_session = SessionPool::shared().acquire(m_connectionString);
        return;
    }
    ConnectionString pairs(m_connectionString);
    if (!user.isEmpty())
        pairs.setValue(u"uid", user);
    if (!password.isEmpty())
        pairs.setValue(u"pwd", password);
    m_session = SessionPool::shared().acquire(resolve(pairs));
}

void Connection::close()
{
    static_cast<void>(session());
    // The pool rolls back what is still open.
    m_inTransaction = false;
    m_session.reset();
}

void Connection::beginTrans()
{
    Session &open = session();
    if (m_inTransaction)
        throw RunTimeError(errors::kUnspecified, u"En transaksjon er allerede startet."_s);
    open.begin();
    m_inTransaction = true;
    m_committed = std::make_shared<bool>(false);
}

void Connection::commitTrans()
{
    Session &open = session();
    if (!m_inTransaction)
        throw RunTimeError(errors::kUnspecified, u"Ingen transaksjon er startet."_s);
    open.commit();
    m_inTransaction = false;
    *m_committed = true;
}

void Connection::rollbackTrans()
{
    Session &open = session();
    if (!m_inTransaction)
        throw RunTimeError(errors::kUnspecified, u"Ingen transaksjon er startet."_s);
    open.rollback();
    m_inTransaction = false;
}

void Connection::transact(const std::function<void()> &work)
{
    for (int left = Session::kAttempts;; --left) {
        beginTrans();
        try {
            work();
            commitTrans();
            return;
        } catch (const RunTimeError &) {
            if (left == 1 || !m_session || !m_session->transactionLost())
                throw;
            rollbackTrans();
        }
    }
}

void Connection::execute(const QString &statement, int options)
{
    Session &open = session();
    checkOptions(options);
    open.execute(statement);
}

void Connection::provideIndex(const QString &table, const QString &index, const QStringList &items)
{
    session().provideIndex(table, index, items);
}

bool Connection::takeTurn()
{
    return session().takeTurn();
}

QStringList Connection::damages()
{
    return session().damages();
}

Ref<Recordset> Connection::openSchema(SchemaList list)
{
    Session &open = session();
    if (list != SchemaList::Columns)
        throw RunTimeError(errors::kInvalidArgument, u"Ukjent katalogliste."_s);

    std::vector<const dialect::TableInfo *> tables;
    for (const dialect::TableInfo &table : open.catalog().tables())
        tables.push_back(&table);
    std::sort(tables.begin(), tables.end(), [](const auto *a, const auto *b) {
        return QString::compare(a->name, b->name, Qt::CaseInsensitive) < 0;
    });

    auto rows = std::make_unique<RowSet>(std::vector{
        column(u"TABLE_NAME"_s, DataType::VarWChar),
        column(u"COLUMN_NAME"_s, DataType::VarWChar),
        column(u"ORDINAL_POSITION"_s, DataType::Integer),
        column(u"DATA_TYPE"_s, DataType::SmallInt),
        column(u"CHARACTER_MAXIMUM_LENGTH"_s, DataType::Integer),
    });
    for (const dialect::TableInfo *table : tables) {
        qint32 position = 0;
        for (const dialect::ColumnInfo &info : table->columns) {
            rows->store(0).append(Value(table->name));
            rows->store(1).append(Value(info.name));
            rows->store(2).append(++position);
            rows->store(3).append(qint16(info.type));
            if (info.type == DataType::VarWChar)
                rows->store(4).append(qint32{info.width});
            else
                rows->store(4).appendNull();
            rows->closeRow();
        }
    }
    return Ref<Recordset>(std::shared_ptr<Recordset>(new Recordset(std::move(rows))));
}

} // namespace ado

#include "platform/ado/Recordset.h"

#include "platform/ado/Connection.h"
#include "platform/ado/Session.h"
#include "platform/ado/SessionPool.h"
#include "runtime/Moment.h"

#include <QStringDecoder>

using namespace Qt::StringLiterals;

namespace ado {

Recordset::Recordset() = default;
Recordset::~Recordset() = default;
Recordset::Recordset(Recordset &&) noexcept = default;
Recordset &Recordset::operator=(Recordset &&) noexcept = default;

Recordset::Recordset(std::unique_ptr<RowSet> rows) : m_rows(std::move(rows))
{
    describeFields();
}

// --- The connection

void Recordset::setActiveConnection(const QString &connectionString)
{
    settleChanges();
    m_activeConnectionString = connectionString;
    m_activeConnection = nullptr;
}

void Recordset::setActiveConnection(Connection &connection)
{
    settleChanges();
    m_activeConnectionString.clear();
    m_activeConnection = &connection;
}

void Recordset::settleChanges()
{
    if (m_changesBefore && !*m_committed && m_rows)
        m_rows->takeBack(std::move(*m_changesBefore));
    m_changesBefore.reset();
}

void Recordset::clearActiveConnection()
{
    settleChanges();
    m_activeConnectionString.clear();
    m_activeConnection = nullptr;
}

std::shared_ptr<Session> Recordset::session() const
{
    if (m_activeConnection && m_activeConnection->m_session)
        return m_activeConnection->m_session;
    if (m_activeConnection || m_activeConnectionString.isEmpty())
        throw RunTimeError(errors::kNoConnection,
                           u"Postsettet har ingen åpen tilkobling til datakilden."_s);
    return SessionPool::shared().acquire(m_activeConnectionString);
}

// --- Opening and closing

ObjectState Recordset::state() const
{
    return m_rows ? ObjectState::Open : ObjectState::Closed;
}

void Recordset::open(int options)
{
    if (m_rows)
        throw RunTimeError(errors::kObjectOpen, u"Postsettet er allerede åpent."_s);
    if (options != options::kUnspecified && options != options::kText)
        throw RunTimeError(errors::kInvalidArgument, u"Ukjent valg for postsettet."_s);
    read();
}

void Recordset::requery()
{
    static_cast<void>(rows());
    read();
}

void Recordset::read()
{
    auto fresh = std::make_unique<RowSet>(session()->query(m_source));
    m_rows = fresh->columnCount() > 0 ? std::move(fresh) : nullptr;
    m_position = 0;
    describeFields();
}

void Recordset::describeFields()
{
    m_fields.clear();
    if (!m_rows)
        return;
    m_fields.reserve(m_rows->columns().size());
    for (const dialect::ResultColumn &column : m_rows->columns()) {
        Field field{column.name, column.type, column.width};
        switch (column.type) {
        case DataType::SmallInt:
        case DataType::Boolean:
            field.definedSize = 2;
            break;
        case DataType::Integer:
        case DataType::Single:
            field.definedSize = 4;
            break;
        case DataType::Double:
        case DataType::Currency:
        case DataType::Date:
            field.definedSize = 8;
            break;
        default:
            break;
        }
        m_fields.push_back(std::move(field));
    }
}

void Recordset::close()
{
    static_cast<void>(rows());
    m_rows.reset();
    m_fields.clear();
    m_position = 0;
}

RowSet &Recordset::rows() const
{
    if (!m_rows)
        throw RunTimeError(errors::kObjectClosed, u"Postsettet er lukket."_s);
    return *m_rows;
}

// --- Walking

bool Recordset::bof() const
{
    return rows().rowCount() == 0 || m_position < 0;
}

bool Recordset::eof() const
{
    return m_position >= rows().rowCount();
}

int Recordset::recordCount() const
{
    return rows().rowCount();
}

namespace {

[[noreturn]] void raiseNoCurrentRow()
{
    throw RunTimeError(errors::kNoCurrentRow,
                       u"Enten BOF eller EOF er sann, eller posten er slettet."_s);
}

} // namespace

int Recordset::currentRow() const
{
    const int count = rows().rowCount();
    if (m_position < 0 || m_position >= count)
        raiseNoCurrentRow();
    return m_position;
}

void Recordset::moveFirst()
{
    if (rows().rowCount() == 0)
        raiseNoCurrentRow();
    m_position = 0;
}

void Recordset::moveLast()
{
    const int count = rows().rowCount();
    if (count == 0)
        raiseNoCurrentRow();
    m_position = count - 1;
}

void Recordset::moveNext()
{
    if (eof())
        raiseNoCurrentRow();
    ++m_position;
}

void Recordset::movePrevious()
{
    if (bof())
        raiseNoCurrentRow();
    --m_position;
}

int Recordset::absolutePosition() const
{
    return bof() || eof() ? 0 : m_position + 1;
}

void Recordset::setAbsolutePosition(int position)
{
    const int count = rows().rowCount();
    if (count == 0)
        raiseNoCurrentRow();
    if (position < 1 || position > count)
        throw RunTimeError(errors::kInvalidArgument, u"Posten %1 finnes ikke."_s.arg(position));
    m_position = position - 1;
}

// --- Fields

int Recordset::fieldCount() const
{
    return rows().columnCount();
}

const Field &Recordset::field(int index) const
{
    return m_fields[size_t(checkedIndex(index))];
}

int Recordset::checkedIndex(int index) const
{
    if (index < 0 || index >= rows().columnCount())
        throw RunTimeError(errors::kNoSuchItem, u"Felt nummer %1 finnes ikke."_s.arg(index));
    return index;
}

int Recordset::fieldIndex(QStringView name) const
{
    static_cast<void>(rows());
    for (size_t i = 0; i < m_fields.size(); ++i) {
        if (m_fields[i].name.size() == name.size() &&
            name.compare(m_fields[i].name, Qt::CaseInsensitive) == 0)
            return int(i);
    }
    throw RunTimeError(errors::kNoSuchItem, u"Feltet «%1» finnes ikke."_s.arg(name));
}

// --- Values

Value Recordset::value(int index) const
{
    return rows().value(currentRow(), checkedIndex(index));
}

bool Recordset::isNull(int index) const
{
    return rows().isNull(currentRow(), checkedIndex(index));
}

const ColumnStore *Recordset::stored(int index, DataType type) const
{
    const int row = currentRow();
    const ColumnStore *store = m_rows->unchanged(row, checkedIndex(index));
    const bool fits = store && store->type() == type && !store->isNull(size_t(row));
    return fits ? store : nullptr;
}

QString Recordset::text(int index) const
{
    if (const ColumnStore *store = stored(index, DataType::VarWChar))
        return QString::fromUtf8(store->bytes(size_t(m_position)));
    return value(index).toText();
}

void Recordset::appendText(QString &text, int index) const
{
    const ColumnStore *store = stored(index, DataType::VarWChar);
    if (!store) {
        text += value(index).toText();
        return;
    }
    const QByteArrayView utf8 = store->bytes(size_t(m_position));
    const qsizetype before = text.size();
    text.resize(before + utf8.size()); // as many units as that at most
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    text.truncate(decoder.appendToBuffer(text.data() + before, utf8) - text.constData());
}

Currency Recordset::currency(int index) const
{
    if (const ColumnStore *store = stored(index, DataType::Currency))
        return Currency::fromTenThousandths(store->number<qint64>(size_t(m_position)));
    return value(index).toCurrency();
}

qint32 Recordset::integer(int index) const
{
    if (const ColumnStore *store = stored(index, DataType::Integer))
        return store->number<qint32>(size_t(m_position));
    return value(index).toLong();
}

float Recordset::single(int index) const
{
    if (const ColumnStore *store = stored(index, DataType::Single))
        return store->number<float>(size_t(m_position));
    return value(index).toSingle();
}

QDate Recordset::date(int index) const
{
    if (const ColumnStore *store = stored(index, DataType::Date))
        return utcDay(store->number<qint64>(size_t(m_position)));
    return value(index).toDate().date();
}

QString Recordset::joined(int index, char mark) const
{
    const int column = checkedIndex(index);
    QByteArray utf8; // as it lies in memory: converted once, and no text object for a row
    for (int row = 0; row < m_rows->rowCount(); ++row) {
        if (row > 0)
            utf8 += mark;
        if (m_rows->isNull(row, column))
            continue;
        const ColumnStore *store = m_rows->unchanged(row, column);
        if (store && store->type() == DataType::VarWChar)
            utf8 += store->bytes(size_t(row));
        else
            utf8 += m_rows->value(row, column).toText().toUtf8();
    }
    return QString::fromUtf8(utf8);
}

// --- Changes

void Recordset::checkWritable() const
{
    static_cast<void>(rows());
    if (m_lockType == LockType::ReadOnly)
        throw RunTimeError(errors::kReadOnlySet, u"Postsettet er åpnet bare for lesing."_s);
}

void Recordset::setValue(int index, const Value &value)
{
    checkWritable();
    m_rows->setValue(currentRow(), checkedIndex(index), value);
}

void Recordset::addNew()
{
    checkWritable();
    m_position = m_rows->addRow();
}

void Recordset::updateBatch(AffectRecords /*affected*/)
{
    checkWritable();
    std::optional<RowChanges> before;
    if (m_activeConnection && m_activeConnection->m_inTransaction)
        before = m_rows->changes();
    session()->writeBack(*m_rows, m_rows->changedRows());
    m_changesBefore = std::move(before);
    m_committed = m_changesBefore ? m_activeConnection->m_committed : nullptr;
}

} // namespace ado

#include "platform/ado/sqlite/SqliteStatement.h"

#include "platform/ado/AdoTypes.h"
#include "platform/ado/sqlite/SqliteError.h"
#include "platform/ado/sqlite/StoredDate.h"
#include "platform/ado/sqlite/StoredSingle.h"

#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace ado {

namespace {

[[noreturn]] void raise(sqlite3 *database)
{
    throw sqliteError(sqlite3_extended_errcode(database),
                      QString::fromUtf8(sqlite3_errmsg(database)));
}

int bindBytes(sqlite3_stmt *statement, int index, const QByteArray &bytes)
{
    return sqlite3_bind_blob64(statement, index, bytes.constData(), sqlite3_uint64(bytes.size()),
                               SQLITE_TRANSIENT);
}

int bindText(sqlite3_stmt *statement, int index, const QByteArray &utf8)
{
    return sqlite3_bind_text64(statement, index, utf8.constData(), sqlite3_uint64(utf8.size()),
                               SQLITE_TRANSIENT, SQLITE_UTF8);
}

int bindValue(sqlite3_stmt *statement, int index, const Value &value)
{
    switch (value.type()) {
    case DataType::Empty:
        return sqlite3_bind_null(statement, index);
    case DataType::SmallInt:
    case DataType::Integer:
        return sqlite3_bind_int(statement, index, value.toLong());
    case DataType::Boolean:
        return sqlite3_bind_int(statement, index, value.toBoolean() ? 1 : 0);
    case DataType::Single:
        return sqlite3_bind_double(statement, index, storedSingle(value.toSingle()));
    case DataType::Double:
        return sqlite3_bind_double(statement, index, value.toDouble());
    case DataType::Currency:
        return sqlite3_bind_int64(statement, index, value.toCurrency().tenThousandths());
    case DataType::Date:
        return bindText(statement, index, storedDate(value.toDate()));
    case DataType::LongVarBinary:
        return bindBytes(statement, index, value.toBytes());
    case DataType::VarWChar:
        break;
    }
    return bindText(statement, index, value.toText().toUtf8());
}

} // namespace

void SqliteStatement::Finalizer::operator()(sqlite3_stmt *statement) const noexcept
{
    sqlite3_finalize(statement);
}

SqliteStatement::SqliteStatement(sqlite3 *database, const QByteArray &sql)
{
    sqlite3_stmt *statement = nullptr;
    const char *tail = nullptr;
    if (sqlite3_prepare_v3(database, sql.constData(), int(sql.size()), SQLITE_PREPARE_PERSISTENT,
                           &statement, &tail) != SQLITE_OK)
        raise(database);
    m_handle.reset(statement);
    const QByteArrayView rest(tail, sql.constData() + sql.size());
    if (!statement || !rest.trimmed().isEmpty())
        throw RunTimeError(errors::kSyntax, u"Teksten er ikke nøyaktig én setning."_s);
}

void SqliteStatement::bind(const std::vector<Value> &values)
{
    int index = 0;
    for (const Value &value : values) {
        if (bindValue(m_handle.get(), ++index, value) != SQLITE_OK)
            raise(sqlite3_db_handle(m_handle.get()));
    }
}

bool SqliteStatement::step()
{
    const int code = sqlite3_step(m_handle.get());
    if (code != SQLITE_ROW && code != SQLITE_DONE)
        raise(sqlite3_db_handle(m_handle.get()));
    return code == SQLITE_ROW;
}

void SqliteStatement::reset() noexcept
{
    sqlite3_reset(m_handle.get());
    sqlite3_clear_bindings(m_handle.get());
}

qint64 SqliteStatement::integer(int column) const
{
    return sqlite3_column_int64(m_handle.get(), column);
}

QString SqliteStatement::text(int column) const
{
    const auto *bytes = reinterpret_cast<const char *>(sqlite3_column_text(m_handle.get(), column));
    return QString::fromUtf8(bytes, sqlite3_column_bytes(m_handle.get(), column));
}

} // namespace ado

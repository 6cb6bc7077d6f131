#pragma once

#include "platform/ado/AnyDatabase.h"
#include "platform/ado/Session.h"

namespace ado::test {

/// Many rows added at once.
class Append : public AnyDatabaseTest
{
protected:
    Append()
    {
        m_session->execute(u"CREATE TABLE Ordre (ID COUNTER CONSTRAINT ID PRIMARY KEY, Navn "
                           "TEXT(9), Sum CURRENCY, Bilde LONGBINARY)");
    }
    static dialect::ResultColumn column(const QString &name, DataType type)
    {
        dialect::ResultColumn result;
        result.name = name;
        result.type = type;
        return result;
    }
    static RowSet rowsOf(const std::vector<std::pair<qint32, Value>> &numbered)
    {
        RowSet rows({column(u"ID"_s, DataType::Integer), column(u"Navn"_s, DataType::VarWChar)});
        for (const auto &[number, name] : numbered) {
            rows.store(0).append(number);
            rows.store(1).append(name);
            rows.closeRow();
        }
        return rows;
    }

    std::shared_ptr<Session> m_session =
        SessionPool::shared().acquire(resolve(ConnectionString(dsn())));
};

} // namespace ado::test

#pragma once

#include "platform/ado/Connection.h"
#include "platform/ado/Recordset.h"
#include "platform/ado/SessionPool.h"
#include "runtime/Clock.h"
#include "support/Variable.h"

#include <QFile>
#include <QTemporaryDir>

#include <functional>
#include <gtest/gtest.h>
#include <sqlite3.h>
#include <unistd.h>

/// What the tests of the record interface share.
namespace ado::test {

using namespace Qt::StringLiterals;

/// A database file of its own, empty at first, in a folder that goes away.
class Database
{
public:
    Database()
    {
        // Open to all, so that a test can look at it as another user.
        QFile::setPermissions(m_folder.path(), QFile::Permissions::fromInt(0x7777));
        QFile file(path());
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    }
    /// Idle sessions would keep files open in a folder that is gone.
    ~Database() { SessionPool::shared().clear(); }

    [[nodiscard]] QString folder() const { return m_folder.path(); }
    [[nodiscard]] QString path() const { return m_folder.filePath(u"firma.db"_s); }
    [[nodiscard]] QString dsn() const { return u"dsn="_s + path(); }

private:
    QTemporaryDir m_folder;
};

/// Another program at the same file, which speaks SQLite's own language.
class Tool
{
public:
    explicit Tool(const QString &path)
    {
        EXPECT_EQ(sqlite3_open(QFile::encodeName(path).constData(), &m_database), SQLITE_OK);
        sqlite3_busy_timeout(m_database, 2000);
    }
    ~Tool() { sqlite3_close(m_database); }
    Tool(const Tool &) = delete;
    Tool &operator=(const Tool &) = delete;

    /// The rows as lines, with "|" between the values.
    std::string run(const char *sql)
    {
        std::string lines;
        const auto line = [](void *out, int count, char **values, char **) {
            auto &all = *static_cast<std::string *>(out);
            for (int i = 0; i < count; ++i)
                all += (i > 0         ? "|"
                        : all.empty() ? ""
                                      : "\n") +
                       std::string(values[i] ? values[i] : "");
            return 0;
        };
        EXPECT_EQ(sqlite3_exec(m_database, sql, line, &lines, nullptr), SQLITE_OK)
            << sql << ": " << sqlite3_errmsg(m_database);
        return lines;
    }
    /// The first column of the first row as text; "NULL" for Null and for no row.
    std::string text(const char *sql)
    {
        std::string result = "NULL";
        sqlite3_stmt *statement = nullptr;
        EXPECT_EQ(sqlite3_prepare_v2(m_database, sql, -1, &statement, nullptr), SQLITE_OK)
            << sql << ": " << sqlite3_errmsg(m_database);
        if (sqlite3_step(statement) == SQLITE_ROW &&
            sqlite3_column_type(statement, 0) != SQLITE_NULL)
            result = reinterpret_cast<const char *>(sqlite3_column_text(statement, 0));
        sqlite3_finalize(statement);
        return result;
    }

private:
    sqlite3 *m_database = nullptr;
};

/// A clock that waits for nothing and calls back instead.
class SteppedClock final : public Clock
{
public:
    explicit SteppedClock(std::function<void(int)> onSleep = {}) : m_onSleep(std::move(onSleep)) {}
    void sleep(int milliseconds) override
    {
        slept += milliseconds;
        ++sleeps;
        if (m_onSleep)
            m_onSleep(sleeps);
    }
    int slept = 0;
    int sleeps = 0;

private:
    std::function<void(int)> m_onSleep;
};

/// A user without any rights of his own while it lives: file modes do not bind the superuser, whom
/// tests may run as.
class PlainUser
{
public:
    PlainUser() { become(65534); }
    ~PlainUser() { become(0); }
    PlainUser(const PlainUser &) = delete;
    PlainUser &operator=(const PlainUser &) = delete;

private:
    void become(uid_t user) const
    {
        if (m_wasSuperuser) {
            EXPECT_EQ(seteuid(user), 0);
        }
    }
    const bool m_wasSuperuser = geteuid() == 0;
};

/// An open connection, and short ways to use it.
class Opened : public Connection
{
public:
    explicit Opened(const QString &connectionString) { open(connectionString); }
    explicit Opened(const Database &database) : Opened(database.dsn()) {}

    void run(const QString &statement) { execute(statement); }
    Recordset rows(const QString &statement, LockType lock = LockType::ReadOnly)
    {
        Recordset set;
        set.setActiveConnection(*this);
        set.setLockType(lock);
        set.setSource(statement);
        set.open();
        return set;
    }
    /// The first column of the first row.
    Value value(const QString &statement) { return rows(statement).value(0); }
    /// The first column of all rows, with blanks between.
    QString column(const QString &statement)
    {
        QStringList values;
        for (Recordset set = rows(statement); !set.eof(); set.moveNext())
            values += set.value(0).isNull() ? u"Null"_s : set.text(0);
        return values.join(u' ');
    }
};

/// The number of the error that `action` raises; 0 for none.
template<class Action>
int errorOf(Action &&action)
{
    return passOver(std::forward<Action>(action));
}

/// The text of the error that `action` raises; empty for none.
template<class Action>
QString textOf(Action &&action)
{
    try {
        action();
    } catch (const RunTimeError &error) {
        return error.description();
    }
    return {};
}

} // namespace ado::test

/// How a failed comparison of texts is shown.
inline void PrintTo(const QString &text, std::ostream *out)
{
    *out << '"' << text.toStdString() << '"';
}

#pragma once

#include "runtime/RunTimeError.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <ostream>

inline void PrintTo(const QString &text, std::ostream *out)
{
    *out << '"' << text.toStdString() << '"';
}
inline void PrintTo(const QByteArray &bytes, std::ostream *out)
{
    *out << '"' << bytes.toStdString() << '"';
}
inline void PrintTo(const QStringList &texts, std::ostream *out)
{
    *out << "[\n  " << texts.join(QStringLiteral("\n  ")).toStdString() << "\n]";
}

/// A test with an empty database of its own and with the module's shared state as at load.
class ModuleTest : public ::testing::Test
{
protected:
    ModuleTest();
    ~ModuleTest() override;

    /// Of the test's database file; a fixture may stand on another database.
    [[nodiscard]] virtual QString connectionString() const
    {
        return QStringLiteral("dsn=") + m_path;
    }
    [[nodiscard]] const QString &path() const { return m_path; }
    [[nodiscard]] QString folder() const { return m_folder.path(); }

    /// The parent's tables, with client 5 in year 2014 as the active one.
    void makeParentTables();
    /// Opens gConn and gives gDB its connection string, without touching any table.
    void connect();
    /// Starts the module on the database; ModuleInit.
    qint16 startModule();
    /// As a new load of the component: no shared state, no catalogue picture, no open session.
    void reload();

    /// Runs one statement past gDB; a refusal fails the test.
    void run(const QString &statement);
    /// The rows of a query past gDB, their values as text with "|" between them and Null as "Null".
    QStringList rows(const QString &statement);

private:
    QTemporaryDir m_folder;
    QString m_path;
};

/// The number of the run-time error that `statement` raises, or 0.
template<class Statement>
int raised(Statement &&statement)
{
    return passOver(std::forward<Statement>(statement));
}

#pragma once

#include <QHash>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <ostream>
#include <vector>

class QProcess;

inline void PrintTo(const QString &text, std::ostream *out)
{
    *out << '"' << text.toStdString() << '"';
}

/// What a run of the host program left behind.
struct Outcome
{
    int status = -1; ///< -1 when it crashed or was never started
    QByteArray out;
    QString err;
};
inline void PrintTo(const Outcome &outcome, std::ostream *out)
{
    *out << "status " << outcome.status << "\nout: " << outcome.out.toStdString()
         << "\nerr: " << outcome.err.toStdString();
}

/// Drives the built host program in a folder of its own, whose name holds blanks and a "%1".
class HostTest : public ::testing::Test
{
protected:
    /// One row of a query: the text of each column by its name.
    using Row = QHash<QString, QString>;

    HostTest();

    [[nodiscard]] QString path(const QString &name) const;
    [[nodiscard]] static QString programFile();

    /// What programs that the test starts find in their environment. No window of theirs comes up
    /// where the tests run, and their settings are not those of who runs the tests.
    QProcessEnvironment environment;

    /// Lets the programs that the test starts find no library of that file name.
    void hideLibrary(const QString &name);

    /// Gives a process that the test starts itself the test's folder and environment.
    void prepare(QProcess &process) const;
    /// Runs a program with the test's folder as its current one; `locale` becomes its LC_ALL.
    [[nodiscard]] Outcome start(const QString &program, const QStringList &arguments,
                                const QString &locale = {}) const;
    [[nodiscard]] Outcome host(const QStringList &arguments, const QString &locale = {}) const;

    /// Makes the demo database "demo.db" for client 1 and 2014, and returns its path.
    QString makeDemo();

    /// The rows of a query in that database. A refusal fails the test.
    [[nodiscard]] std::vector<Row> rows(const QString &query) const;
    /// The one value of a query with one row and one column.
    [[nodiscard]] QString single(const QString &query) const;
    /// Runs a statement without rows. A refusal fails the test.
    void change(const QString &statement) const;

    /// All rows of the parent's and the module's tables in a database, as --sql prints them.
    [[nodiscard]] QByteArray dump(const QString &dsn) const;
    /// What --sql prints for a query in that database. A refusal fails the test.
    [[nodiscard]] QByteArray answer(const QString &dsn, const QString &query) const;
    /// Runs statements of SQLite's own language on a file in the folder, past the program. Foreign
    /// keys are not checked.
    void runInFile(const QString &name, const QByteArray &sql) const;

    [[nodiscard]] QByteArray content(const QString &name) const;
    void write(const QString &name, const QByteArray &bytes) const;
    /// The names in the test's folder, hidden ones too.
    [[nodiscard]] QStringList files() const;

    /// Expects the status, no output, and one line of error text that holds `fragment`.
    static void expectRefusal(const Outcome &outcome, int status, const QString &fragment);

private:
    QTemporaryDir m_folder;
    QTemporaryDir m_settings;
};

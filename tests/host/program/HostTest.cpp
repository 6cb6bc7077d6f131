#include "host/program/HostTest.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>

#include <sqlite3.h>

using namespace Qt::StringLiterals;

HostTest::HostTest()
    : environment(QProcessEnvironment::systemEnvironment()),
      m_folder(QDir::tempPath() + u"/vert %1 prøve XXXXXX"_s)
{
    if (!QCoreApplication::instance()) { // QProcess wants one
        static int argc = 1;
        static char name[] = "vert_test";
        static char *argv[] = {name, nullptr};
        static const QCoreApplication application(argc, argv);
    }
    EXPECT_TRUE(m_folder.isValid());
    environment.insert(u"XDG_CONFIG_HOME"_s, m_settings.path());
    environment.remove(u"DISPLAY"_s);
    environment.remove(u"QT_QPA_PLATFORM"_s);
}

QString HostTest::path(const QString &name) const
{
    return m_folder.filePath(name);
}

QString HostTest::programFile()
{
    return QStringLiteral(HOST_PROGRAM);
}

void HostTest::prepare(QProcess &process) const
{
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(m_folder.path());
}

Outcome HostTest::start(const QString &program, const QStringList &arguments,
                        const QString &locale) const
{
    QProcess process;
    prepare(process);
    if (!locale.isEmpty()) {
        QProcessEnvironment other = environment;
        other.insert(u"LC_ALL"_s, locale);
        process.setProcessEnvironment(other);
    }
    process.start(program, arguments);
    Outcome outcome;
    if (!process.waitForFinished(-1))
        return outcome;
    if (process.exitStatus() == QProcess::NormalExit)
        outcome.status = process.exitCode();
    outcome.out = process.readAllStandardOutput();
    outcome.err = QString::fromUtf8(process.readAllStandardError());
    return outcome;
}

Outcome HostTest::host(const QStringList &arguments, const QString &locale) const
{
    return start(programFile(), arguments, locale);
}

void HostTest::hideLibrary(const QString &name)
{
    // An empty file stands in its way.
    ASSERT_TRUE(QDir(path(QString())).mkpath(u"bibliotek"_s));
    write(u"bibliotek/"_s + name, {});
    environment.insert(u"LD_LIBRARY_PATH"_s, path(u"bibliotek"_s));
}

QString HostTest::makeDemo()
{
    const QString database = path(u"demo.db"_s);
    const Outcome outcome = host({u"--demo"_s, u"--dsn"_s, database, u"--aar"_s, u"2014"_s});
    EXPECT_EQ(outcome.status, 0) << ::testing::PrintToString(outcome);
    return database;
}

std::vector<HostTest::Row> HostTest::rows(const QString &query) const
{
    const Outcome outcome = host({u"--dsn"_s, path(u"demo.db"_s), u"--sql"_s, query});
    EXPECT_EQ(outcome.status, 0) << query.toStdString() << '\n'
                                 << ::testing::PrintToString(outcome);
    QStringList lines = QString::fromUtf8(outcome.out).split(u'\n');
    QStringList names = lines.takeFirst().split(u'\t');
    for (QString &name : names)
        name = name.section(u':', 0, -2);
    std::vector<Row> result;
    for (const QString &line : lines) {
        if (line.isEmpty())
            continue; // behind the last line feed
        const QStringList fields = line.split(u'\t');
        EXPECT_EQ(fields.size(), names.size()) << line.toStdString();
        Row row;
        for (qsizetype i = 0; i < qMin(fields.size(), names.size()); ++i)
            row.insert(names[i], fields[i]);
        result.push_back(row);
    }
    return result;
}

QString HostTest::single(const QString &query) const
{
    const std::vector<Row> found = rows(query);
    if (found.size() != 1 || found.front().size() != 1) {
        ADD_FAILURE() << "not one value: " << query.toStdString();
        return {};
    }
    return *found.front().cbegin();
}

void HostTest::change(const QString &statement) const
{
    const Outcome outcome = host({u"--dsn"_s, path(u"demo.db"_s), u"--sql"_s, statement});
    EXPECT_EQ(outcome.status, 0) << statement.toStdString() << '\n'
                                 << ::testing::PrintToString(outcome);
    EXPECT_EQ(outcome.out, QByteArray());
}

QByteArray HostTest::dump(const QString &dsn) const
{
    QByteArray text;
    for (const QLatin1StringView table :
         {"Klient ORDER BY KlientNr"_L1, "KundeLev ORDER BY KlientNr,KundeNr"_L1,
          "Poststed ORDER BY PostNr"_L1, "Kontoplan ORDER BY KlientNr,KontoNr"_L1,
          "Hovedbok ORDER BY KlientNr,KontoNr,Aar"_L1, "Bilag ORDER BY ID"_L1,
          "BilagLinjer ORDER BY ID"_L1, "Bil ORDER BY KlientNr,BilRegNr"_L1,
          "Produkt ORDER BY ID"_L1, "Ordre ORDER BY ID"_L1, "OrdreLinjer ORDER BY ID"_L1})
        text += answer(dsn, u"SELECT * FROM "_s + table);
    return text;
}

QByteArray HostTest::answer(const QString &dsn, const QString &query) const
{
    const Outcome outcome = host({u"--dsn"_s, dsn, u"--sql"_s, query});
    EXPECT_EQ(outcome.status, 0) << ::testing::PrintToString(outcome);
    return outcome.out;
}

void HostTest::runInFile(const QString &name, const QByteArray &sql) const
{
    sqlite3 *database = nullptr;
    EXPECT_EQ(sqlite3_open(path(name).toUtf8().constData(), &database), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(database, sql.constData(), nullptr, nullptr, nullptr), SQLITE_OK)
        << sql.toStdString() << ": " << sqlite3_errmsg(database);
    sqlite3_close(database);
}

QByteArray HostTest::content(const QString &name) const
{
    QFile file(path(name));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
    return file.readAll();
}

void HostTest::write(const QString &name, const QByteArray &bytes) const
{
    QFile file(path(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly)) << name.toStdString();
    EXPECT_EQ(file.write(bytes), bytes.size());
}

QStringList HostTest::files() const
{
    return QDir(m_folder.path())
        .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
}

void HostTest::expectRefusal(const Outcome &outcome, int status, const QString &fragment)
{
    EXPECT_EQ(outcome.status, status) << ::testing::PrintToString(outcome);
    EXPECT_EQ(outcome.out, QByteArray());
    EXPECT_EQ(outcome.err.count(u'\n'), 1) << outcome.err.toStdString();
    EXPECT_TRUE(outcome.err.endsWith(u'\n')) << outcome.err.toStdString();
    EXPECT_TRUE(outcome.err.contains(fragment))
        << outcome.err.toStdString() << "  lacks: " << fragment.toStdString();
}

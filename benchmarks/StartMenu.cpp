// From a parent's call to the painted main menu, with the loading of the component from its file,
// beside a whole program that shows an empty window of the toolkit; and the most memory that the
// process has held by then. Each start is a process of its own.

#include "benchmarks/support/Application.h"
#include "benchmarks/support/PlainDatabase.h"
#include "benchmarks/support/Report.h"
#include "host/parent/ParentTables.h"
#include "host/tasks/Component.h"
#include "platform/ado/Connection.h"

#include <QApplication>
#include <QProcess>
#include <QTemporaryDir>
#include <QWidget>

#include <sys/resource.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int kRounds = 15;
constexpr qint16 kClient = 5;
constexpr qint16 kYear = 2014;
// What the program does as a child of itself.
const QString kMenu = u"menu"_s;
const QString kWindow = u"window"_s;

struct Start
{
    double milliseconds = 0;
    double megabytes = 0;
};

/// In the child, when all is painted.
int tell(double seconds)
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    std::printf("%f %f\n", 1000 * seconds, double(usage.ru_maxrss) / 1024);
    return 0;
}

int startMenu(const QString &connectionString)
{
    Component component(QStringLiteral(COMPONENT_FILE));
    return tell(bench::cpuSecondsOf([&] {
        if (component.start(connectionString, kClient, kYear) != 1)
            qFatal("the module did not start");
        QApplication::processEvents();
    }));
}

/// With all that the program has done before, the application object among it.
int showEmptyWindow()
{
    QWidget window;
    window.show();
    QApplication::processEvents();
    return tell(bench::cpuSecondsSpent());
}

Start costOfChild(const QStringList &arguments)
{
    QProcess child;
    child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    child.start(QCoreApplication::applicationFilePath(), arguments);
    if (!child.waitForFinished() || child.exitCode() != 0)
        qFatal("a start failed");
    const QList<QByteArray> numbers = child.readAllStandardOutput().simplified().split(' ');
    return {numbers.value(0).toDouble(), numbers.value(1).toDouble()};
}

/// A database that a parent has had for a while: with its tables and the module's.
QString makeDatabase(const QString &path)
{
    bench::makeEmptyFile(path);
    const QString connectionString = u"dsn="_s + path;
    {
        ado::Connection connection;
        connection.open(connectionString);
        createParentTables(connection);
    }
    static_cast<void>(costOfChild({kMenu, connectionString}));
    return connectionString;
}

} // namespace

int main(int argc, char *argv[])
{
    const bench::Application application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments().sliced(1);
    if (arguments.value(0) == kWindow)
        return showEmptyWindow();
    if (arguments.value(0) == kMenu)
        return startMenu(arguments.value(1));

    const QTemporaryDir folder;
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(folder.path()));
    const QString connectionString = makeDatabase(folder.filePath(u"firma.db"_s));
    Start menu, window;
    const bench::Pair milliseconds = bench::inTurn(
        kRounds, [&] { return (menu = costOfChild({kMenu, connectionString})).milliseconds; },
        [&] { return (window = costOfChild({kWindow})).milliseconds; });
    bench::report("start to painted menu, beside a program with an empty window", milliseconds.ours,
                  milliseconds.plain, "ms", milliseconds.ratio, bench::Aim::ratioAtMost(2));
    bench::report("memory of the started program, beside the same", menu.megabytes,
                  window.megabytes, "MB", bench::Aim::valueAtMost(33));
    return 0;
}

#include "data/clsAdoUtils.h"
#include "host/tasks/Component.h"
#include "host/tasks/CopyTask.h"
#include "host/tasks/Database.h"
#include "host/tasks/Ehf3Task.h"
#include "host/tasks/EhfTask.h"
#include "host/tasks/HostError.h"
#include "host/tasks/Options.h"
#include "host/tasks/PdfTask.h"
#include "host/tasks/Progress.h"
#include "host/tasks/SqlTask.h"
#include "host/tasks/Tour.h"
#include "host/tour/ScreenTour.h"
#include "posting/run/Bokkontroll.h"
#include "runtime/Clock.h"
#include "runtime/RunTimeError.h"
#include "state/SharedState.h"

#include <QApplication>
#include <QDir>
#include <QIcon>
#include <QMessageBox>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <type_traits>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

void print(const QByteArray &text)
{
    if (std::fwrite(text.constData(), 1, size_t(text.size()), stdout) != size_t(text.size()) ||
        std::fflush(stdout) != 0) {
        throw HostError(u"utskriften lot seg ikke skrive"_s);
    }
}

void printLine(const QString &line)
{
    print(line.toUtf8() + '\n');
}

/// What breaks a line, or steers a terminal, may stand in any name that the user gave.
QString inOneLine(QString text)
{
    const auto isControl = [](QChar c) {
        return c.category() == QChar::Other_Control || c.category() == QChar::Separator_Line ||
               c.category() == QChar::Separator_Paragraph;
    };
    std::replace_if(text.begin(), text.end(), isControl, u' ');
    return text;
}

bool hasDisplay()
{
    const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
    if (platform.isEmpty())
        return !qEnvironmentVariableIsEmpty("DISPLAY");
    return !platform.startsWith("offscreen") && !platform.startsWith("minimal");
}

/// Whether the main menu comes up and the program lives until it is closed.
bool showsMenu(const Options &options)
{
    return (options.task == Options::Task::Tour || options.task == Options::Task::Start) &&
           hasDisplay();
}

QStringList faultsInBooks()
{
    Progress progress(printLine);
    return KontrollerBoker([&](int done, int all) {
        if (done == 0)
            progress.begin(all, u"kontroller"_s, u"er gjort"_s);
        progress.at(done);
    });
}

void checkBooks(const Options &options)
{
    const QStringList found = faultsInBooks();
    for (const QString &line : found)
        printLine(inOneLine(line));
    if (!found.isEmpty())
        throw HostError(u"kontrollen av bøkene fant %1 feil"_s.arg(found.size()));
    // Of a client number that was mistyped nothing is out of order.
    if (gDB->GetCount(u"Klient"_s, u"KlientNr=%1"_s.arg(options.klient)) == 0)
        throw HostError(u"klient %1 finnes ikke i databasen"_s.arg(options.klient));
    printLine(u"Bøkene til klient %1 i %2 er i orden"_s.arg(options.klient).arg(options.aar));
}

/// All invoices that are chosen, each by `write` to a file of its own.
void writeAll(const Options &options, const QString &ending,
              const std::function<void(const Invoice &invoice, const QString &target)> &write)
{
    const QDir folder(options.mappe);
    if (!folder.exists())
        throw HostError(u"mappen %1 finnes ikke"_s.arg(options.mappe));
    const auto writeOne = [&](const Invoice &invoice) {
        const QString name = invoiceFileName(invoice, ending);
        write(invoice, folder.filePath(name));
        return name;
    };
    writeEach(findInvoices({options.fraDato, options.tilDato, options.status}), writeOne,
              [](const QString &line) { printLine(inOneLine(line)); });
}

void writeEhf3s(const Options &options)
{
    constexpr int kReadAtOnce = 100;
    Ehf3Skriver writer(gKlient, kReadAtOnce);
    writeAll(options, u".xml"_s, [&](const Invoice &invoice, const QString &target) {
        writeEhf3(writer, invoice.number, target, options.erstatt);
    });
}

/// What needs no module, only the database.
void performOnDatabase(const database::Place &place, const Options &options)
{
    tour::useDatabase(place, options);
    switch (options.task) {
    case Options::Task::Sql:
        print(runStatement(options.statement));
        break;
    case Options::Task::Ehf:
        writeEhf(options.ordreNr, options.ut, options.erstatt);
        printLine(u"EHF skrevet: "_s + options.ut);
        break;
    case Options::Task::Ehf3:
        writeEhf3(options.ordreNr, options.ut, options.erstatt);
        printLine(u"EHF 3.0 skrevet: "_s + options.ut);
        break;
    case Options::Task::AllEhf3:
        writeEhf3s(options);
        break;
    case Options::Task::Pdf:
        writeInvoicePdf(findInvoice(options.ordreNr), options.ut, options.erstatt);
        printLine(u"PDF skrevet: "_s + options.ut);
        break;
    case Options::Task::AllPdf:
        writeAll(options, u".pdf"_s, [&](const Invoice &invoice, const QString &target) {
            writeInvoicePdf(invoice, target, options.erstatt);
        });
        break;
    case Options::Task::Check:
        checkBooks(options);
        break;
    default: // the tasks that perform() does itself
        break;
    }
}

void perform(const Options &options)
{
    if (options.task == Options::Task::Help) {
        print(helpText().toUtf8());
        return;
    }
    if (options.task == Options::Task::Version) {
        printLine(u"strekkbok-vert %1"_s.arg(QStringLiteral(FAKTURA_VERSION)));
        return;
    }
    if (options.task == Options::Task::Copy) {
        copyDatabase(database::locate(options.fra), database::locate(options.til), printLine);
        return;
    }
    Component component(QCoreApplication::applicationDirPath() + u"/libFaktura.so"_s);
    if (options.task == Options::Task::Screens) {
        screentour::run(component, options, printLine);
        return;
    }
    const database::Place place = database::locate(options.dsn);
    if (options.task == Options::Task::Tour)
        tour::run(component, place, options, printLine);
    else if (options.task == Options::Task::Start)
        tour::startModule(component, place, options, printLine);
    else if (options.task == Options::Task::Demo)
        tour::makeDemo(component, place, options, printLine);
    else
        performOnDatabase(place, options);
    if (showsMenu(options)) {
        printLine(u"Hovedmenyen er åpen. Programmet lever til vinduene er lukket."_s);
        QCoreApplication::exec();
    }
}

/// The platform without a display tells at every turn what it cannot do; that is no news.
void passOnMessage(QtMsgType, const QMessageLogContext &, const QString &text)
{
    if (!text.startsWith("This plugin does not support"_L1) &&
        !text.startsWith("QStandardPaths: XDG_RUNTIME_DIR not set"_L1))
        std::fprintf(stderr, "%s\n", text.toUtf8().constData());
}

int fail(const QString &line, int status)
{
    std::fprintf(stderr, "strekkbok-vert: %s\n", inOneLine(line).toUtf8().constData());
    return status;
}

/// Qt tells of a missing display in several lines and ends the program by a signal; here is the one
/// line that a user gets, before anything is begun. That the machine lacks the environment's
/// locale, of which Qt tells in four, takes nothing from the user.
void tellOfDisplay(QtMsgType type, const QMessageLogContext &, const QString &)
{
    if (type != QtFatalMsg)
        return;
    QStringList tried;
    for (const char *name : {"DISPLAY", "QT_QPA_PLATFORM"}) {
        if (!qEnvironmentVariableIsEmpty(name))
            tried += QString::fromLatin1(name) + u'=' + qEnvironmentVariable(name);
    }
    std::_Exit(fail(u"ingen skjerm svarer (%1)"_s.arg(tried.join(u", "_s)), HostError::kNoDisplay));
}

template<class Application>
std::unique_ptr<QCoreApplication> makeQuietly(int &argc, char **argv, QtMessageHandler handler)
{
    qInstallMessageHandler(tellOfDisplay);
    auto application = std::make_unique<Application>(argc, argv);
    qInstallMessageHandler(handler);
    if constexpr (std::is_base_of_v<QGuiApplication, Application>) {
        // As the menu is called, so that its title stays as it is: others get the name behind them.
        QGuiApplication::setApplicationDisplayName(u"Strekkbok - Faktura"_s);
        QGuiApplication::setDesktopFileName(u"strekkbok-vert"_s);
        QGuiApplication::setWindowIcon(QIcon(u":/vert/ordre.svg"_s));
    }
    return application;
}

/// With windows only where some will be shown: the other tasks run on any machine.
std::unique_ptr<QCoreApplication> makeApplication(const Options &options, int &argc, char **argv)
{
    if (options.task == Options::Task::Pdf || options.task == Options::Task::AllPdf) {
        qputenv("QT_QPA_PLATFORM", "offscreen"); // letters, but no window
        return makeQuietly<QGuiApplication>(argc, argv, passOnMessage);
    }
    if (options.task == Options::Task::Screens) {
        if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
            qputenv("QT_QPA_PLATFORM", "offscreen");
        return makeQuietly<QApplication>(argc, argv, passOnMessage);
    }
    if (showsMenu(options))
        return makeQuietly<QApplication>(argc, argv, nullptr);
    return makeQuietly<QCoreApplication>(argc, argv, nullptr);
}

/// A desktop starts the program without options, and nobody reads what it prints there.
void showReason(const Options &options, const QString &line)
{
    if (options.task != Options::Task::Tour || !showsMenu(options) || ::isatty(STDERR_FILENO) != 0)
        return;
    QMessageBox box(QMessageBox::Critical, {}, line);
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

/// The bookkeeping program is Norwegian on any machine, and the module reads and writes dates and
/// numbers by the environment, in which "C" is Norwegian to it. What the letters are stays.
void speakNorwegian()
{
    if (const QByteArray all = qgetenv("LC_ALL"); !all.isEmpty()) {
        qputenv("LC_CTYPE", all);
        qunsetenv("LC_ALL");
    }
    qputenv("LC_NUMERIC", "C");
    qputenv("LC_TIME", "C");
}

} // namespace

int main(int argc, char **argv)
{
    // A file that may not grow is told by the write that fails.
    std::signal(SIGXFSZ, SIG_IGN);
    speakNorwegian();
    try {
        QStringList arguments;
        for (int i = 1; i < argc; ++i)
            arguments += QString::fromLocal8Bit(argv[i]);
        const Options options = parseOptions(arguments, Clock::current().today().year());
        const std::unique_ptr<QCoreApplication> application = makeApplication(options, argc, argv);
        try {
            perform(options);
        } catch (const HostError &error) {
            showReason(options, error.line());
            throw;
        }
        return 0;
    } catch (const HostError &error) {
        return fail(error.line(), error.status());
    } catch (const RunTimeError &error) {
        return fail(u"%1 - %2"_s.arg(error.number()).arg(error.description()), HostError::kFailed);
    }
}

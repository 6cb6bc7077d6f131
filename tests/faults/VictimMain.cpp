// The module in a process of its own, to be killed or to compete with others:
//
//   fault_victim TASK CONNECTION-STRING [step]
//
// It starts the module and reports each statement on the standard output, a line at a time, before
// it goes on; the tasks are at the end of this file. With "step" it also reports each call that
// reached a database session, and waits after every report for a line on the standard input.

#include "data/clsAdoUtils.h"
#include "faults/Work.h"
#include "platform/ado/AdoTypes.h"
#include "runtime/RunTimeError.h"
#include "state/SharedState.h"
#include "support/SessionTap.h"

#include <csignal>
#include <map>
#include <sys/prctl.h>
#include <unistd.h>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr unsigned kLongestLife = 300; // seconds
constexpr int kOrders = 200;
constexpr int kLinesOfOrder = 3;

bool stepping = false;

/// The next line of the standard input. The process ends with it.
QString readLine()
{
    QByteArray line;
    for (char byte = 0; byte != '\n';) {
        if (::read(STDIN_FILENO, &byte, 1) != 1)
            ::_exit(0);
        line += byte;
    }
    return QString::fromUtf8(line.chopped(1));
}

void report(const QString &text)
{
    const QByteArray line = text.toUtf8() + '\n';
    if (::write(STDOUT_FILENO, line.constData(), static_cast<std::size_t>(line.size())) !=
        line.size())
        ::_exit(3);
    if (stepping)
        static_cast<void>(readLine());
}

faults::Witness reporter()
{
    faults::Witness witness;
    if (stepping)
        witness.starts = [](const QString &effect) { report(u"starts "_s + effect); };
    witness.done = [](const QString &effect) { report(u"done "_s + effect); };
    witness.failed = [](const QString &effect, const QString &error) {
        report(u"failed "_s + effect + u'|' + error);
    };
    return witness;
}

/// Saves order after order as a user who, told of a failed save, saves again. The first one waits
/// for a line of the standard input when it has drawn its number.
void saveOrders()
{
    const QString taken = QString::number(ado::errors::kIntegrity) + u" - "_s;
    bool waited = false;
    for (int saved = 0; saved < kOrders;) {
        faults::Witness witness;
        witness.starts = [&](const QString &) {
            if (!std::exchange(waited, true)) {
                report(u"drawn"_s);
                static_cast<void>(readLine());
            }
        };
        witness.failed = [](const QString &effect, const QString &error) {
            if (!effect.startsWith(u"hode"))
                report(u"failed %1|%2"_s.arg(effect, error));
        };
        const faults::SavedOrder order = faults::saveNewOrder(kLinesOfOrder, witness);
        if (order.error.isEmpty()) {
            report(u"saved %1|%2"_s.arg(order.number).arg(order.id));
            ++saved;
        } else if (order.error.startsWith(taken)) {
            report(u"lost %1|%2"_s.arg(order.number).arg(order.error));
        } else {
            report(u"failed %1|%2"_s.arg(order.number).arg(order.error));
            return;
        }
    }
}

void runStatements()
{
    for (;;) {
        const QString statement = readLine();
        if (gDB->Execute(statement))
            report(u"done"_s);
        else
            report(u"failed "_s + gDB->LastError());
    }
}

const std::map<QString, void (*)()> kTasks{
    // A new order of 10 lines, and the prepared order once more.
    {u"save-new"_s, [] { static_cast<void>(faults::saveNewOrder(faults::kLines, reporter())); }},
    {u"save-again"_s, [] { faults::saveOrderAgain(reporter()); }},
    // The 200 statements of a posting run.
    {u"post"_s, [] { faults::postInvoices(reporter()); }},
    // 200 orders, the first after one line of the standard input.
    {u"save-orders"_s, saveOrders},
    // Each line of the standard input, as a statement.
    {u"statements"_s, runStatements},
};

int run(const QString &task, const QString &connectionString)
{
    bool started = false;
    SessionTap tap;
    tap.afterEach([&](const QString &call) {
        if (started && stepping)
            report(u"call "_s + call);
    });
    if (faults::startModule(connectionString) != 1) {
        report(u"failed start|"_s + gDB->LastError());
        return 1;
    }
    report(u"ready"_s);
    started = true;
    kTasks.at(task)();
    started = false;
    report(u"end"_s);
    faults::unloadModule();
    return 0;
}

} // namespace

int main(int count, char **arguments)
{
    // Nothing of it outlives the test, whatever becomes of that.
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    ::alarm(kLongestLife);
    if (count < 3)
        return 2;
    stepping = count > 3 && qstrcmp(arguments[3], "step") == 0;
    try {
        return run(QString::fromUtf8(arguments[1]), QString::fromUtf8(arguments[2]));
    } catch (const RunTimeError &error) {
        report(u"failed untrapped|"_s + error.description());
        return 1;
    }
}

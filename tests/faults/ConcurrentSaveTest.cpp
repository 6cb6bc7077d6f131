#include "faults/Place.h"
#include "faults/Victim.h"
#include "faults/Work.h"
#include "support/ModuleTest.h"
#include "support/Rows.h"

#include <QRegularExpression>
#include <QSet>

#include <poll.h>

using namespace Qt::StringLiterals;

namespace faults {

namespace {

constexpr int kProcesses = 8;
constexpr int kOrdersOfEach = 200;

/// Takes the reports of all processes as they come, until all have ended.
void watchAll(const std::vector<std::unique_ptr<Victim>> &processes)
{
    std::vector<pollfd> reports;
    for (const auto &process : processes)
        reports.push_back({process->descriptor(), POLLIN, 0});
    for (std::size_t open = reports.size(); open > 0;) {
        ::poll(reports.data(), reports.size(), -1);
        for (std::size_t i = 0; i < reports.size(); ++i) {
            if (reports[i].revents != 0 && !processes[i]->take()) {
                reports[i].fd = -1;
                --open;
            }
        }
    }
}

} // namespace

TEST(ConcurrentSaveTest, EightProcessesSaveForOneClientAtOnce)
{
    const std::unique_ptr<Place> place = makePlace();
    std::vector<std::unique_ptr<Victim>> processes;
    for (int i = 0; i < kProcesses; ++i) {
        processes.push_back(std::make_unique<Victim>(u"save-orders"_s, place->connectionString()));
        ASSERT_EQ(processes.back()->next(), u"ready"_s);
        ASSERT_EQ(processes.back()->next(), u"drawn"_s);
    }
    // All have drawn the same number by now.
    for (const auto &process : processes)
        process->send();
    watchAll(processes);

    QStringList saved; // "number|id"
    QStringList lost;  // "number|error"
    for (const auto &process : processes) {
        EXPECT_EQ(process->told(u"failed"_s), QStringList());
        EXPECT_EQ(process->told(u"saved"_s).size(), kOrdersOfEach);
        saved += process->told(u"saved"_s);
        lost += process->told(u"lost"_s);
        EXPECT_EQ(process->finish(), 0);
    }

    // Every number once and none left out, although some were drawn by several.
    ASSERT_EQ(place->integrity(), u"ok"_s);
    const QString client = u" FROM Ordre WHERE KlientNr=5 AND KundeNavn='Ny kunde AS'"_s;
    QStringList stored = rowsOf(place->connectionString(), u"SELECT OrdreNr,ID"_s + client);
    const QSet<QString> numbers = [&] {
        QSet<QString> found;
        for (const QString &row : std::as_const(stored))
            found += row.section(u'|', 0, 0);
        return found;
    }();
    EXPECT_EQ(numbers.size(), kProcesses * kOrdersOfEach);
    const QString first = QString::number(kInvoices + 2);
    EXPECT_TRUE(numbers.contains(first));
    EXPECT_TRUE(numbers.contains(QString::number(kInvoices + 1 + kProcesses * kOrdersOfEach)));
    std::sort(stored.begin(), stored.end());
    std::sort(saved.begin(), saved.end());
    EXPECT_EQ(stored, saved);

    // Whoever came second was told why, and his number went to somebody else.
    EXPECT_EQ(lost.filter(QRegularExpression(u'^' + first + u"\\|"_s)).size(), kProcesses - 1);
    for (const QString &loser : std::as_const(lost)) {
        EXPECT_TRUE(numbers.contains(loser.section(u'|', 0, 0)));
        EXPECT_TRUE(loser.contains(u"det finnes alt en post med samme verdi"))
            << loser.toStdString();
    }

    QMap<QString, QStringList> lines; // positions by the order's ID
    for (const QString &row : rowsOf(place->connectionString(),
                                     u"SELECT OrdreID,PosNr FROM OrdreLinjer WHERE ProduktNavn="
                                     u"'Ny linje' ORDER BY OrdreID,PosNr"_s))
        lines[row.section(u'|', 0, 0)] += row.section(u'|', 1);
    EXPECT_EQ(lines.size(), saved.size());
    for (const QString &order : std::as_const(saved))
        EXPECT_EQ(lines.value(order.section(u'|', 1)), (QStringList{u"10"_s, u"20"_s, u"30"_s}))
            << order.toStdString();
    unloadModule();
}

} // namespace faults

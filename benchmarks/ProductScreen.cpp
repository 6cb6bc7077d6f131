// The product register with 10,000 products: opening it, beside a plain loop on the database's own
// interface that fills a bare grid in a bare window; and what a step in the list and a key in the
// details cost.

#include "benchmarks/ModuleDatabase.h"
#include "benchmarks/Report.h"
#include "platform/forms/Forms.h"
#include "platform/forms/TabStrip.h"
#include "platform/grid/fpSpread.h"
#include "registers/products/frmProdukt.h"

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QVBoxLayout>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

constexpr int kProducts = 10'000;
constexpr int kRounds = 9;
constexpr int kSteps = 300;
constexpr int kCols = 9;
constexpr QSize kWindow{606, 429};

void insertProducts()
{
    gConn->beginTrans();
    for (int i = 1; i <= kProducts; ++i)
        gConn->execute(u"INSERT INTO Produkt (KlientNr,ProduktNr,ProduktNavn,ProduktGruppe,Enhet,"
                       u"InnPris,UtPris,MvaSats,BruttoPris) VALUES (5,'P%1','Kjøring med krokbil, "
                       u"strekning %2','TRANSPORT','stk',%2.25,%2.50,25,0)"_s
                           .arg(i * 7919 % kProducts, 5, 10, QChar(u'0'))
                           .arg(i));
    gConn->commitTrans();
}

/// The fill of a program that knows this one table and this one form of its texts.
void fillPlain(const bench::PlainDatabase &database, fpSpread &grid)
{
    bench::PlainQuery products(
        database, "SELECT ProduktNr,ProduktNavn,ProduktGruppe,Enhet,InnPris,UtPris,MvaSats,"
                  "BruttoPris,ID FROM Produkt WHERE KlientNr=5 ORDER BY ProduktNr");
    sqlite3_stmt *row = products.handle();
    grid.setRedraw(false);
    grid.setMaxRows(kProducts + 2);
    for (int at = 1; products.next(); ++at) {
        for (int col = 1; col <= kCols; ++col) {
            grid.setCurrent(col, at);
            if (col == 5 || col == 6) {
                char amount[32];
                const sqlite3_int64 count = sqlite3_column_int64(row, col - 1);
                std::snprintf(amount, sizeof amount, "%lld,%02lld", count / 10000,
                              count % 10000 / 100);
                grid.setText(QString::fromLatin1(amount));
            } else {
                const auto *text =
                    reinterpret_cast<const char *>(sqlite3_column_text(row, col - 1));
                grid.setText(QString::fromUtf8(text));
            }
        }
    }
    grid.setRedraw(true);
}

/// A bare window with a bare grid, shown and painted.
double plainOpening(const bench::PlainDatabase &database)
{
    auto window = std::make_unique<QWidget>();
    return bench::secondsOf([&] {
        auto *layout = new QVBoxLayout(window.get());
        auto *grid = new fpSpread;
        layout->addWidget(grid);
        fillPlain(database, *grid);
        window->resize(kWindow);
        window->show();
        QApplication::processEvents();
    });
}

frmProdukt &screen()
{
    return SharedForm<frmProdukt>::get();
}

void closeScreen()
{
    screen().unload();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

double opening()
{
    const double seconds = bench::secondsOf([] {
        screen().show();
        QApplication::processEvents();
    });
    closeScreen();
    return seconds;
}

/// Milliseconds for each of `kSteps` presses of a key, everything that it brings about included.
std::vector<double> presses(QWidget &into, Qt::Key key)
{
    std::vector<double> steps;
    for (int step = 0; step < kSteps; ++step) {
        steps.push_back(1000 * bench::secondsOf([&] {
                            QTest::keyClick(&into, key);
                            QApplication::processEvents();
                        }));
    }
    return steps;
}

void reportPresses(const char *what, const std::vector<double> &ours,
                   const std::vector<double> &plain)
{
    const double median = bench::median(ours);
    const double yardstick = bench::median(plain);
    bench::report(
        what, bench::amount(median, "ms"), bench::amount(yardstick, "ms"), median / yardstick,
        "no pause; longest " + bench::amount(*std::max_element(ours.begin(), ours.end()), "ms"));
}

void measureOpening(const bench::PlainDatabase &database)
{
    std::vector<double> ours, plain, ratios;
    for (int round = 0; round < kRounds; ++round) {
        plain.push_back(plainOpening(database));
        ours.push_back(opening());
        ratios.push_back(ours.back() / plain.back());
    }
    bench::report("register of 10,000 products opened, beside a plain fill",
                  bench::amount(1000 * bench::median(ours), "ms"),
                  bench::amount(1000 * bench::median(plain), "ms"), bench::median(ratios),
                  "at most 2");
}

void measureKeys(const bench::PlainDatabase &database)
{
    QWidget window;
    auto *layout = new QVBoxLayout(&window);
    auto *bareGrid = new fpSpread;
    auto *bareField = new QLineEdit;
    layout->addWidget(bareGrid);
    layout->addWidget(bareField);
    fillPlain(database, *bareGrid);
    window.resize(kWindow);
    window.show();
    QApplication::processEvents();
    const std::vector<double> plainSteps = presses(*bareGrid, Qt::Key_Down);
    const std::vector<double> plainLetters = presses(*bareField, Qt::Key_A);

    screen().show();
    QApplication::processEvents();
    auto *grid = screen().findChild<fpSpread *>(u"vaSpread1"_s);
    reportPresses("a row down in the register's list, beside a bare grid",
                  presses(*grid, Qt::Key_Down), plainSteps);
    grid->setCurrent(1, 1);
    Q_EMIT grid->DblClick(1, 1);
    screen().findChild<QPushButton *>(u"btnChange"_s)->click();
    QApplication::processEvents();
    reportPresses("a letter in the register's details, beside a bare field",
                  presses(*screen().findChild<QLineEdit *>(u"txtFields_2"_s), Qt::Key_A),
                  plainLetters);
    closeScreen();
}

} // namespace

int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication app(argc, argv);
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"produkt.db"_s);
    const bench::ModuleDatabase module(path);
    insertProducts();
    const bench::PlainDatabase database(path);
    measureOpening(database);
    measureKeys(database);
    return 0;
}

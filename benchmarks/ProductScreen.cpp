// The product register with 10,000 products: opening it, beside a plain loop on the database's own
// interface that fills a bare grid in a bare window; and what a step in the list and a key in the
// details cost.

#include "benchmarks/support/Application.h"
#include "benchmarks/support/Company.h"
#include "benchmarks/support/FileDatabase.h"
#include "benchmarks/support/ModuleDatabase.h"
#include "benchmarks/support/Report.h"
#include "benchmarks/works/BareGrid.h"
#include "benchmarks/works/Screens.h"
#include "platform/forms/Forms.h"
#include "platform/forms/TabStrip.h"
#include "platform/grid/fpSpread.h"
#include "registers/products/frmProdukt.h"

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

constexpr int kProducts = 10'000;
constexpr int kRounds = 9;
constexpr int kSteps = 300;
constexpr int kCols = 9;
constexpr double kFrame = 16; // milliseconds
constexpr QSize kWindow{606, 429};

/// The fill of a program that knows this one table and this one form of its texts.
void fillPlain(const bench::PlainDatabase &database, fpSpread &grid)
{
    bench::PlainQuery products(
        database, "SELECT ProduktNr,ProduktNavn,ProduktGruppe,Enhet,InnPris,UtPris,MvaSats,"
                  "BruttoPris,ID FROM Produkt WHERE KlientNr=5 ORDER BY ProduktNr");
    sqlite3_stmt *row = products.handle();
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
}

frmProdukt &screen()
{
    return SharedForm<frmProdukt>::get();
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

/// The middle one and the longest, of which no user is to notice a pause.
void reportPresses(const std::string &what, const std::vector<double> &ours,
                   const std::vector<double> &plain)
{
    bench::report(what, bench::median(ours), bench::median(plain), "ms",
                  bench::Aim::valueAtMost(kFrame));
    bench::report("the longest of them", *std::max_element(ours.begin(), ours.end()),
                  *std::max_element(plain.begin(), plain.end()), "ms", bench::Aim::none());
}

void measureOpening(const bench::PlainDatabase &database)
{
    const bench::Work opening = bench::productRegister();
    const bench::Pair seconds = bench::inTurn(
        kRounds, [&] { return opening.seconds(); },
        [&] {
            return bench::secondsOf([&] {
                bench::showBareGrid(kWindow, [&](fpSpread &grid) { fillPlain(database, grid); });
            });
        });
    bench::report("register of 10,000 products opened, beside a plain fill", 1000 * seconds.ours,
                  1000 * seconds.plain, "ms", seconds.ratio, bench::Aim::ratioAtMost(2));
}

void measureKeys(const bench::PlainDatabase &database)
{
    QWidget window;
    auto *layout = new QVBoxLayout(&window);
    auto *bareGrid = new fpSpread;
    auto *bareField = new QLineEdit;
    layout->addWidget(bareGrid);
    layout->addWidget(bareField);
    bareGrid->setRedraw(false);
    fillPlain(database, *bareGrid);
    bareGrid->setRedraw(true);
    window.resize(kWindow);
    window.show();
    QApplication::processEvents();
    const std::vector<double> plainSteps = presses(*bareGrid, Qt::Key_Down);
    const std::vector<double> plainLetters = presses(*bareField, Qt::Key_A);

    bench::closeScreens();
    bench::openScreen<frmProdukt>();
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
    bench::closeScreens();
}

} // namespace

int main(int argc, char *argv[])
{
    const bench::Application application(argc, argv);
    bench::FileDatabase file;
    const bench::ModuleDatabase module(file);
    bench::Company company(file);
    company.growProducts(kProducts);
    const bench::PlainDatabase database(file.path());
    measureOpening(database);
    measureKeys(database);
    return 0;
}

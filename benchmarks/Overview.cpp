// The overview of 100,000 orders, from the click in the menu to the painted window, beside a plain
// read of the same rows on the database's own interface and beside a QTableWidget filled by it; and
// what the window costs in memory.

#include "benchmarks/support/Application.h"
#include "benchmarks/support/Company.h"
#include "benchmarks/support/FileDatabase.h"
#include "benchmarks/support/ModuleDatabase.h"
#include "benchmarks/support/Report.h"
#include "output/lists/frmOversikt.h"
#include "platform/forms/Forms.h"

#include <QApplication>
#include <QTableWidget>
#include <QTest>

#include <memory>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

constexpr int kOrders = 100'000;
constexpr int kRounds = 5;
constexpr int kCols = 8;
constexpr double kMegabyte = 1024 * 1024;
constexpr QSize kWindow{623, 317};

/// Reads every column of the rows once and keeps nothing.
double plainRead(const bench::PlainDatabase &database)
{
    return bench::secondsOf([&] {
        bench::PlainQuery query(database,
                                "SELECT * FROM Ordre WHERE KlientNr=5 ORDER BY OrdreNr DESC");
        sqlite3_stmt *rows = query.handle();
        qint64 read = 0;
        while (query.next()) {
            for (int col = 0; col < sqlite3_column_count(rows); ++col) {
                if (sqlite3_column_type(rows, col) == SQLITE_TEXT)
                    read += *sqlite3_column_text(rows, col);
                else
                    read += sqlite3_column_int64(rows, col);
            }
        }
        if (read == 0)
            qFatal("nothing was read");
    });
}

/// Reads the eight columns alone and makes an item of each, with no more care for its form than a
/// program takes that knows this one table.
std::unique_ptr<QTableWidget> filledTable(const bench::PlainDatabase &database)
{
    auto table = std::make_unique<QTableWidget>(kOrders, kCols);
    bench::PlainQuery rows(database,
                           "SELECT OrdreNr,KundeNr,KundeNavn,FakDato,ForfallDato,SumBrutto,"
                           "OrdreStatus,ID FROM Ordre WHERE KlientNr=5 ORDER BY OrdreNr DESC");
    for (int row = 0; rows.next(); ++row) {
        for (int col = 0; col < kCols; ++col) {
            const auto *text =
                reinterpret_cast<const char *>(sqlite3_column_text(rows.handle(), col));
            table->setItem(row, col, new QTableWidgetItem(QString::fromUtf8(text)));
        }
    }
    table->resize(kWindow);
    table->show();
    QApplication::processEvents();
    return table;
}

/// What a window costs that `open` opens and `close` closes.
struct Cost
{
    double seconds = 0;
    double megabytes = 0;
};
template<class Open, class Close>
Cost costOf(Open open, Close close)
{
    Cost cost;
    const double before = bench::bytesInUse();
    cost.seconds = bench::secondsOf(open);
    cost.megabytes = (bench::bytesInUse() - before) / kMegabyte;
    close();
    return cost;
}

void clickOverview()
{
    QTest::mouseClick(Forms::byName(u"frmRegningsdel"_s)->findChild<QWidget *>(u"Command5"_s),
                      Qt::LeftButton);
    QApplication::processEvents();
}

void closeOverview()
{
    SharedForm<frmOversikt>::get().unload();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void report(const char *what, const bench::Pair &seconds, const bench::Aim &aim)
{
    bench::report(what, 1000 * seconds.ours, 1000 * seconds.plain, "ms", seconds.ratio, aim);
}

void measureOpening(const bench::PlainDatabase &database)
{
    Cost oursCost, tableCost;
    const auto open = [&] {
        oursCost = costOf(clickOverview, closeOverview);
        return oursCost.seconds;
    };
    report("overview of 100,000 orders opened, beside a plain read",
           bench::inTurn(kRounds, open, [&] { return plainRead(database); }),
           bench::Aim::ratioAtMost(1.3));
    report("overview of 100,000 orders opened, beside QTableWidget",
           bench::inTurn(kRounds, open,
                         [&] {
                             std::unique_ptr<QTableWidget> widget;
                             tableCost = costOf([&] { widget = filledTable(database); },
                                                [&] { widget.reset(); });
                             return tableCost.seconds;
                         }),
           bench::Aim::ratioAtMost(1));
    bench::report("overview of 100,000 orders, memory beside QTableWidget", oursCost.megabytes,
                  tableCost.megabytes, "MB", bench::Aim::ratioAtMost(0.2));
}

} // namespace

int main(int argc, char *argv[])
{
    const bench::Application application(argc, argv);
    bench::FileDatabase file;
    const bench::ModuleDatabase module(file);
    bench::Company company(file, 0);
    company.growOrders(kOrders);
    company.setStatus("Fakturert", kOrders);
    measureOpening(bench::PlainDatabase(file.path()));
    return 0;
}

#include "benchmarks/support/Application.h"
#include "benchmarks/support/Report.h"
#include "benchmarks/works/GridRows.h"
#include "platform/grid/fpSpread.h"
#include "presentation/spread/mVASpread.h"

#include <QAbstractTableModel>
#include <QApplication>
#include <QCollator>
#include <QScrollBar>
#include <QStringList>
#include <QTableWidget>

#include <algorithm>
#include <functional>
#include <memory>
#include <utility>

// 100,000 rows by 8 columns, as the order overview fills them, beside a QTableWidget filled cell by
// cell and a bare list of strings; and what it costs to scroll through them.

namespace {

constexpr int kRows = 100000;
constexpr int kRowsAtHand = 500;
constexpr int kSortings = 3;
constexpr double kMegabyte = 1024 * 1024;

struct Cost
{
    double seconds;
    double megabytes;
};

/// What it costs to make the thing that `make` returns; the thing is gone afterwards.
template<class Make>
Cost costOf(Make make)
{
    const double before = bench::bytesInUse();
    Cost cost{};
    decltype(make()) thing;
    cost.seconds = bench::secondsOf([&] { thing = make(); });
    cost.megabytes = (bench::bytesInUse() - before) / kMegabyte;
    return cost;
}

/// The middle times of five runs each, taken in turn so that a busy moment of the machine falls on
/// both; the memory is the same in all.
template<class Make, class MakeOther>
std::pair<Cost, Cost> medianCostsOf(Make make, MakeOther makeOther)
{
    std::vector<double> seconds;
    std::vector<double> otherSeconds;
    Cost cost{};
    Cost other{};
    for (int run = 0; run < 5; ++run) {
        cost = costOf(make);
        seconds.push_back(cost.seconds);
        other = costOf(makeOther);
        otherSeconds.push_back(other.seconds);
    }
    cost.seconds = bench::median(seconds);
    other.seconds = bench::median(otherSeconds);
    return {cost, other};
}

/// The texts of one row: made when asked for, or made beforehand.
using RowText = std::function<QString(int row)>;
using FieldText = std::function<QString(int row, int col)>;

std::unique_ptr<fpSpread> filledGrid(const RowText &text, bool redraw = false)
{
    auto grid = std::make_unique<fpSpread>();
    grid->setMaxCols(bench::kGridCols);
    grid->setRedraw(redraw);
    SpreadClear(*grid);
    for (int row = 1; row <= kRows; ++row)
        SpreadAddRow(*grid, text(row));
    grid->setRedraw(true);
    return grid;
}

std::unique_ptr<QTableWidget> filledTable(const FieldText &text)
{
    auto table = std::make_unique<QTableWidget>(kRows, bench::kGridCols);
    for (int row = 1; row <= kRows; ++row) {
        for (int col = 1; col <= bench::kGridCols; ++col)
            table->setItem(row - 1, col - 1, new QTableWidgetItem(text(row, col)));
    }
    return table;
}

std::unique_ptr<QStringList> filledList()
{
    auto list = std::make_unique<QStringList>();
    list->reserve(kRows * bench::kGridCols);
    for (int row = 1; row <= kRows; ++row) {
        for (int col = 1; col <= bench::kGridCols; ++col)
            list->append(bench::gridCell(row, col));
    }
    return list;
}

/// The formatting alone: every row's text is made and thrown away.
std::unique_ptr<qsizetype> formattedRows()
{
    auto length = std::make_unique<qsizetype>(0);
    for (int row = 1; row <= kRows; ++row)
        *length += bench::gridRow(row).size();
    return length;
}

class TrivialModel : public QAbstractTableModel
{
public:
    [[nodiscard]] int rowCount(const QModelIndex &) const override { return kRows; }
    [[nodiscard]] int columnCount(const QModelIndex &) const override { return bench::kGridCols; }
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override
    {
        return role == Qt::DisplayRole
                   ? QVariant(bench::gridCell(index.row() + 1, index.column() + 1))
                   : QVariant();
    }
};

/// Milliseconds for each of 200 steps through the whole table, painting included.
double scrollStep(QTableView &view)
{
    view.resize(900, 600);
    view.show();
    QApplication::processEvents();
    QPixmap page(view.viewport()->size());
    const int steps = 200;
    return 1000.0 / steps * bench::secondsOf([&] {
               for (int step = 0; step < steps; ++step) {
                   view.verticalScrollBar()->setValue(int(qint64{kRows} * step / steps));
                   view.viewport()->render(&page);
               }
           });
}

/// By the amounts as text, which come in another order than their numbers.
void measureSorting()
{
    const auto amounts = [] {
        std::vector<QString> texts;
        for (int row = 1; row <= kRows; ++row)
            texts.push_back(bench::gridCell(row, bench::kAmountCol));
        return texts;
    };
    QCollator norwegian(QLocale(QLocale::NorwegianBokmal, QLocale::Norway));
    norwegian.setCaseSensitivity(Qt::CaseInsensitive);
    const bench::Pair sorting = bench::inTurn(
        kSortings,
        [&] {
            const auto sorted = filledGrid(bench::gridRow);
            return bench::cpuSecondsOf([&] { SpreadSort(*sorted, bench::kAmountCol, true); });
        },
        [&] {
            std::vector<QString> sorted = amounts();
            return bench::cpuSecondsOf(
                [&] { std::stable_sort(sorted.begin(), sorted.end(), norwegian); });
        });
    bench::report("grid 100,000 rows sorted, beside sorting the texts alone", 1000 * sorting.ours,
                  1000 * sorting.plain, "ms", sorting.ratio, bench::Aim::ratioAtMost(1.4));
}

} // namespace

int main(int argc, char *argv[])
{
    const bench::Application application(argc, argv);

    // With the formatting of the texts: memory, and the time beside formatting alone.
    const Cost list = costOf(filledList);
    const Cost table = costOf([] { return filledTable(bench::gridCell); });
    const auto [grid, formatting] =
        medianCostsOf([] { return filledGrid(bench::gridRow); }, formattedRows);
    bench::report("grid 100,000 x 8 beside QTableWidget, memory", grid.megabytes, table.megabytes,
                  "MB", bench::Aim::ratioAtMost(0.2));
    bench::report("grid 100,000 x 8 beside a list of strings, memory", grid.megabytes,
                  list.megabytes, "MB", bench::Aim::none());
    bench::report("grid, formatted and filled, beside formatting alone", 1000 * grid.seconds,
                  1000 * formatting.seconds, "ms", bench::Aim::none());

    // With the texts of some rows at hand, so that only the filling costs time. Each cell of the
    // table gets a string of its own, as it does from a record set.
    QStringList rows;
    QStringList fields;
    for (int row = 1; row <= kRowsAtHand; ++row) {
        rows << bench::gridRow(row);
        for (int col = 1; col <= bench::kGridCols; ++col)
            fields << bench::gridCell(row, col);
    }
    const auto rowAtHand = [&](int row) { return rows[row % kRowsAtHand]; };
    const auto fieldAtHand = [&](int row, int col) {
        const QString &text = fields[row % kRowsAtHand * bench::kGridCols + col - 1];
        return QString(text.constData(), text.size());
    };
    const auto [gridFill, tableFill] = medianCostsOf([&] { return filledGrid(rowAtHand); },
                                                     [&] { return filledTable(fieldAtHand); });
    const auto [withRedraw, withoutRedraw] = medianCostsOf(
        [&] { return filledGrid(rowAtHand, true); }, [&] { return filledGrid(rowAtHand); });
    bench::report("grid 100,000 x 8 filled beside QTableWidget, time", 1000 * gridFill.seconds,
                  1000 * tableFill.seconds, "ms", bench::Aim::ratioAtMost(0.2));
    bench::report("grid filled with redraw on, beside redraw off", 1000 * withRedraw.seconds,
                  1000 * withoutRedraw.seconds, "ms", bench::Aim::none());

    measureSorting();

    TrivialModel model;
    QTableView plain;
    plain.setModel(&model);
    const auto scrolled = filledGrid(rowAtHand);
    const double plainStep = scrollStep(plain);
    const double gridStep = scrollStep(*scrolled);
    bench::report("grid scrolled by a page, beside a plain QTableView", gridStep, plainStep, "ms",
                  bench::Aim::none());
    return 0;
}

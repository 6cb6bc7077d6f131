// How fast the order screen is: opening it for a client with many orders, beside a plain loop on
// the database's own interface that reads the same rows and does nothing with them; moving to the
// next order, beside a plain loop that reads its lines into a bare grid, and with a long product
// list beside a short one; cell moves likewise; and leaving a cell of a long order beside the
// arithmetic alone.

#include "benchmarks/support/Application.h"
#include "benchmarks/support/Company.h"
#include "benchmarks/support/FileDatabase.h"
#include "benchmarks/support/ModuleDatabase.h"
#include "benchmarks/works/Screens.h"
#include "order/frmOrdre.h"
#include "platform/grid/fpSpread.h"
#include "presentation/spread/mVASpread.h"
#include "rules/Beregning.h"

#include <QKeyEvent>

#include <string>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

constexpr int kOrders = 20'000;
constexpr int kProducts = 25'000;
constexpr int kLongOrder = 200; // lines
constexpr int kRounds = 9;
constexpr int kMoves = 50;
constexpr double kFrame = 16;  // milliseconds
constexpr double kMoveAim = 2; // milliseconds

/// Reads every value of every row as the database has it; the number of values.
int plainRead(const bench::PlainDatabase &database, const char *sql)
{
    bench::PlainQuery query(database, sql);
    sqlite3_stmt *statement = query.handle();
    std::vector<sqlite3_int64> numbers;
    std::vector<std::string> texts;
    while (query.next()) {
        for (int i = 0; i < sqlite3_column_count(statement); ++i) {
            if (sqlite3_column_type(statement, i) == SQLITE_TEXT)
                texts.emplace_back(
                    reinterpret_cast<const char *>(sqlite3_column_text(statement, i)));
            else
                numbers.push_back(sqlite3_column_int64(statement, i));
        }
    }
    return int(numbers.size() + texts.size());
}

constexpr const char *kOrdersSql =
    "SELECT ID,KlientNr,OrdreNr,OrdreStatus,Betalt,EgenRef,DeresRef,KundeNr,KundeNavn,FakAdresse1,"
    "FakAdresse2,FakPostNr,FakPoststed,LevAdresse1,LevAdresse2,LevPostNr,LevPoststed,KID,BetBet,"
    "OrdreDato,FakDato,ForfallDato,LevDato,RabattPst,RabattKr,MvaKr,SumNetto,SumBrutto,Avrunding,"
    "Kontrollsiffer FROM Ordre WHERE KlientNr=5";
constexpr const char *kProductsSql = "SELECT * FROM Produkt WHERE KlientNr=5";
constexpr const char *kFirstLinesSql = "SELECT * FROM OrdreLinjer WHERE OrdreID=1 ORDER BY PosNr";
constexpr const char *kLastLinesSql =
    "SELECT * FROM OrdreLinjer WHERE OrdreID=20000 ORDER BY PosNr";
constexpr const char *kGridLinesSql =
    "SELECT ProduktNr,ProduktNavn,Antall,Pris,RabattKr,SumNetto,MvaPst,SumBrutto,ID,PosNr "
    "FROM OrdreLinjer WHERE OrdreID=?1 ORDER BY PosNr";

/// Gives the last order as many lines as the long one has.
void insertLongOrder(bench::Database &database)
{
    database.send("WITH RECURSIVE n(i) AS (SELECT 11 UNION ALL SELECT i+1 FROM n WHERE i<" +
                  QByteArray::number(kLongOrder) +
                  ") INSERT INTO OrdreLinjer (OrdreID,PosNr,ProduktNr,ProduktNavn,Antall,Pris,"
                  "RabattPst,RabattKr,MvaPst,SumNetto,SumBrutto) SELECT OrdreID,10*i,ProduktNr,"
                  "ProduktNavn,Antall,Pris,RabattPst,RabattKr,MvaPst,SumNetto,SumBrutto "
                  "FROM OrdreLinjer,n WHERE OrdreID=20000 AND PosNr=10");
}

/// The order screen as its user sees it.
class Screen
{
public:
    Screen() { m_other->load(); }

    /// Seconds until the screen, which comes up after another one, has read and shown its orders.
    double open()
    {
        m_other->show();
        const double seconds = bench::secondsOf([] { SharedForm<frmOrdre>::get().show(); });
        bench::settle();
        return seconds;
    }
    /// Seconds of one Tab key out of a cell without the painting that follows.
    double leaveCell(int col, int row)
    {
        fpSpread &sheet = grid();
        sheet.setEditMode(false);
        sheet.setCurrent(col, row);
        sheet.setAction(fpSpread::ActiveCellAction);
        QKeyEvent key(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier);
        const double seconds = bench::secondsOf([&] { QCoreApplication::sendEvent(&sheet, &key); });
        bench::settle();
        return seconds;
    }
    /// Seconds until the product cell of a line stands open for typing.
    double openProductCell()
    {
        fpSpread &sheet = grid();
        sheet.setEditMode(false);
        sheet.setCurrent(1, 1);
        sheet.setAction(fpSpread::ActiveCellAction);
        const double seconds = bench::secondsOf([&] { sheet.setEditMode(true); });
        bench::settle();
        sheet.setEditMode(false);
        return seconds;
    }
    static fpSpread &grid() { return *form().findChild<fpSpread *>(u"vaSpread1"_s); }

private:
    static frmOrdre &form() { return *SharedForm<frmOrdre>::existing(); }

    Form *m_other = new Form(u"frmAnnet"_s);
};

/// The cells of an order without any grid, and its sums without any field.
class PlainOrder : public OrdreCeller, public OrdreSummer
{
public:
    explicit PlainOrder(const fpSpread &grid)
    {
        for (int row = 0; row < grid.dataRowCnt(); ++row) {
            for (int col = 0; col < grid.maxCols(); ++col)
                m_cells.push_back(grid.model()->index(row, col).data().toString());
        }
        m_cols = grid.maxCols();
    }
    [[nodiscard]] int antallRader() const override { return int(m_cells.size()) / m_cols; }
    [[nodiscard]] QString tekst(int col, int row) const override { return m_cells[at(col, row)]; }
    void settTekst(int col, int row, const QString &text) override { m_cells[at(col, row)] = text; }
    void settTekst(SumFelt, const QString &text) override { m_sum = text; }

private:
    [[nodiscard]] size_t at(int col, int row) const { return size_t((row - 1) * m_cols + col - 1); }

    int m_cols = 0;
    std::vector<QString> m_cells;
    QString m_sum;
};

void measureOpening(Screen &screen, const bench::PlainDatabase &database)
{
    std::vector<double> opening;
    std::vector<double> plain;
    for (int i = 0; i < kRounds; ++i) {
        opening.push_back(screen.open());
        plain.push_back(bench::secondsOf([&] {
            plainRead(database, kOrdersSql);
            plainRead(database, kProductsSql);
            plainRead(database, kFirstLinesSql);
            plainRead(database, kLastLinesSql);
        }));
    }
    bench::report("open the order screen, 20,000 orders", bench::median(opening) * 1e3,
                  bench::median(plain) * 1e3, "ms", bench::Aim::ratioAtMost(1.5));
}

double moveTime(const bench::Work &move)
{
    std::vector<double> seconds;
    for (int i = 0; i < kMoves; ++i)
        seconds.push_back(move.cpuSeconds());
    return bench::median(seconds);
}

/// The lines of an order, by a statement prepared once and an index that leads to them, into a bare
/// grid.
double plainMoveTime(bench::FileDatabase &file)
{
    const bench::PlainDatabase database(file.copyTo(u"grense.db"_s));
    teachModuleWords(database);
    database.send("CREATE INDEX EgenLinje ON OrdreLinjer (OrdreID)");
    bench::PlainQuery lines(database, kGridLinesSql);
    fpSpread grid;
    std::vector<double> seconds;
    for (int i = 0; i < kMoves; ++i) {
        seconds.push_back(bench::cpuSecondsOf([&] {
            grid.setRedraw(false);
            SpreadClear(grid);
            sqlite3_bind_int(lines.handle(), 1, i + 1);
            while (lines.next()) {
                QStringList cells;
                for (int col = 0; col < sqlite3_column_count(lines.handle()); ++col)
                    cells += QString::fromUtf8(
                        reinterpret_cast<const char *>(sqlite3_column_text(lines.handle(), col)));
                SpreadAddRow(grid, cells.join(u'\t'));
            }
            lines.reset();
            grid.setRedraw(true);
        }));
    }
    return bench::median(seconds);
}

/// Seconds for leaving a cell of the name, which runs the sums of a short order only.
double cellMoveTime(Screen &screen)
{
    std::vector<double> seconds;
    for (int i = 0; i < kMoves; ++i)
        seconds.push_back(screen.leaveCell(2, 1));
    return bench::median(seconds);
}

double openCellTime(Screen &screen)
{
    std::vector<double> seconds;
    for (int i = 0; i < kMoves; ++i)
        seconds.push_back(screen.openProductCell());
    return bench::median(seconds);
}

void measureLongOrder(Screen &screen)
{
    bench::clickOn<frmOrdre>("cmdLast");
    bench::settle();
    if (Screen::grid().dataRowCnt() != kLongOrder)
        qFatal("not the long order");
    PlainOrder order(Screen::grid());
    std::vector<double> leaving;
    std::vector<double> arithmetic;
    for (int i = 0; i < kMoves; ++i) {
        leaving.push_back(screen.leaveCell(3, 7));
        arithmetic.push_back(bench::secondsOf([&] {
            LinjeSum(order, 7);
            BeregnSummer(
                order, [](const QString &, const QString &standard) { return standard; }, order);
        }));
    }
    bench::report("leave a cell, order of 200 lines", bench::median(leaving) * 1e3,
                  bench::median(arithmetic) * 1e3, "ms", bench::Aim::valueAtMost(kFrame));
}

} // namespace

int main(int argc, char *argv[])
{
    const bench::Application application(argc, argv);
    bench::FileDatabase file;
    const bench::ModuleDatabase module(file);
    bench::closeScreens();
    bench::Company company(file);
    company.growOrders(kOrders);
    insertLongOrder(file);
    const bench::PlainDatabase database(file.path());

    Screen screen;
    measureOpening(screen, database);
    measureLongOrder(screen);
    bench::clickOn<frmOrdre>("cmdFirst");
    const bench::Work next = bench::nextOrder();
    const double fewMoves = moveTime(next);
    const double plainMoves = plainMoveTime(file);
    bench::report("move to the next order of 10 lines, 25 products", fewMoves * 1e3,
                  plainMoves * 1e3, "ms", bench::Aim::valueAtMost(kMoveAim));

    const double fewCells = cellMoveTime(screen);
    const double fewOpened = openCellTime(screen);
    company.growProducts(kProducts);
    const double manyMoves = moveTime(next);
    bench::report("move to the next order of 10 lines, 25,000 products", manyMoves * 1e3,
                  plainMoves * 1e3, "ms", bench::Aim::valueAtMost(kMoveAim));
    const double manyCells = cellMoveTime(screen);
    bench::report("leave a cell, 25,000 products, beside 25", manyCells * 1e3, fewCells * 1e3, "ms",
                  bench::Aim::ratioAtMost(1.1));
    const double manyOpened = openCellTime(screen);
    bench::report("open a product cell, 25,000 products, beside 25", manyOpened * 1e3,
                  fewOpened * 1e3, "ms", bench::Aim::valueAtMost(kFrame));
    return 0;
}

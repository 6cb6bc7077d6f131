// How fast the order screen is: opening it for a client with many orders and moving among them,
// beside plain loops on the database's own interface that read the same rows and do nothing with
// them; cell moves with a long product list beside those with a short one; and leaving a cell of a
// long order beside the arithmetic alone.

#include "benchmarks/ModuleDatabase.h"
#include "benchmarks/Report.h"
#include "order/frmOrdre.h"
#include "platform/forms/Forms.h"
#include "platform/grid/fpSpread.h"
#include "rules/Beregning.h"
#include "shell/component/frmRegningsdel.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPushButton>
#include <QTemporaryDir>

#include <string>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

constexpr int kOrders = 20'000;
constexpr int kProducts = 10'000;
constexpr int kFewProducts = 10;
constexpr int kLongOrder = 200; // lines
constexpr int kRounds = 9;
constexpr int kMoves = 50;

void insertProducts(int first, int beyond)
{
    for (int i = first; i < beyond; ++i) {
        gConn->execute(
            u"INSERT INTO Produkt (KlientNr,ProduktNr,ProduktNavn,Enhet,UtPris,MvaSats,"
            u"BruttoPris) VALUES (5,'N%1','Kjøring på Østlandet','stk',493.82,25,0)"_s.arg(
                i, 5, 10, QChar(u'0')));
    }
}

void insertLines(int order, int lines)
{
    for (int line = 1; line <= lines; ++line) {
        gConn->execute(u"INSERT INTO OrdreLinjer (OrdreID,PosNr,ProduktNr,ProduktNavn,Antall,Pris,"
                       u"RabattPst,RabattKr,MvaPst,SumNetto,SumBrutto) VALUES (%1,%2,'N00001',"
                       u"'Kjøring på Østlandet',2.5,493.82,0,0,25,1234.55,1543.19)"_s.arg(order)
                           .arg(line * 10));
    }
}

/// Few products, and orders of which the last is the long one.
void insertOrders()
{
    gConn->beginTrans();
    for (int order = 1; order <= kOrders; ++order) {
        gConn->execute(
            u"INSERT INTO Ordre (KlientNr,OrdreNr,OrdreStatus,Betalt,EgenRef,DeresRef,KundeNr,"
            u"KundeNavn,FakAdresse1,FakAdresse2,FakPostNr,FakPoststed,LevAdresse1,LevAdresse2,"
            u"LevPostNr,LevPoststed,KID,BetBet,OrdreDato,FakDato,ForfallDato,LevDato,RabattPst,"
            u"RabattKr,MvaKr,SumNetto,SumBrutto,Avrunding,Kontrollsiffer) VALUES (5,%1,'Ordre',0,"
            u"'Kåre','Innkjøp',10001,'Ærlig Øl AS','Postboks 7','Åsveien 3','0010','Oslo',"
            u"'Terminal 2','Lagerveien 9','2317','Hamar','2001000100018',14,#03/09/2014#,"
            u"#03/09/2014#,#03/23/2014#,#03/07/2014#,0,0,3086.38,12345.50,15431.88,0,7)"_s.arg(
                order));
        insertLines(order, order == kOrders ? kLongOrder : 2);
    }
    insertProducts(0, kFewProducts);
    gConn->commitTrans();
}

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
        settle();
        return seconds;
    }
    double click(const QString &button)
    {
        auto *found = form().findChild<QAbstractButton *>(button);
        const double seconds = bench::secondsOf([&] { found->click(); });
        settle();
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
        settle();
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
        settle();
        sheet.setEditMode(false);
        return seconds;
    }
    static fpSpread &grid() { return *form().findChild<fpSpread *>(u"vaSpread1"_s); }

private:
    static frmOrdre &form() { return *SharedForm<frmOrdre>::existing(); }
    static void settle() { QCoreApplication::processEvents(); }

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
    bench::report("open the order screen, 20,000 orders",
                  bench::amount(bench::median(opening) * 1e3, "ms"),
                  bench::amount(bench::median(plain) * 1e3, "ms"),
                  bench::median(opening) / bench::median(plain), "1.5");
}

double moveTime(Screen &screen)
{
    std::vector<double> seconds;
    screen.click(u"cmdFirst"_s);
    for (int i = 0; i < kMoves; ++i)
        seconds.push_back(screen.click(u"cmdNext"_s));
    return bench::median(seconds);
}

double plainMoveTime(const bench::PlainDatabase &database)
{
    std::vector<double> seconds;
    for (int i = 0; i < kMoves; ++i) {
        seconds.push_back(bench::secondsOf([&] {
            plainRead(database, kProductsSql);
            plainRead(database, kFirstLinesSql);
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
    screen.click(u"cmdLast"_s);
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
    bench::report("leave a cell, order of 200 lines",
                  bench::amount(bench::median(leaving) * 1e6, "us"),
                  bench::amount(bench::median(arithmetic) * 1e6, "us"),
                  bench::median(leaving) / bench::median(arithmetic), "one frame, 16 ms");
}

} // namespace

int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication app(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"ordre.db"_s);
    const bench::ModuleDatabase module(path);
    SharedForm<frmRegningsdel>::get().unload();
    insertOrders();
    const bench::PlainDatabase database(path);

    Screen screen;
    measureOpening(screen, database);
    const double fewMoves = moveTime(screen);
    const double fewPlain = plainMoveTime(database);
    bench::report("move to the next order", bench::amount(fewMoves * 1e6, "us"),
                  bench::amount(fewPlain * 1e6, "us"), fewMoves / fewPlain, "one frame, 16 ms");
    measureLongOrder(screen);

    screen.click(u"cmdFirst"_s);
    const double fewCells = cellMoveTime(screen);
    const double fewOpened = openCellTime(screen);
    gConn->beginTrans();
    insertProducts(kFewProducts, kProducts);
    gConn->commitTrans();
    const double manyMoves = moveTime(screen);
    const double manyPlain = plainMoveTime(database);
    bench::report("move to the next order, 10,000 products", bench::amount(manyMoves * 1e3, "ms"),
                  bench::amount(manyPlain * 1e3, "ms"), manyMoves / manyPlain, "one frame, 16 ms");
    const double manyCells = cellMoveTime(screen);
    bench::report("leave a cell, 10,000 products (beside 10)", bench::amount(manyCells * 1e6, "us"),
                  bench::amount(fewCells * 1e6, "us"), manyCells / fewCells, "1.0");
    const double manyOpened = openCellTime(screen);
    bench::report("open a product cell, 10,000 products (beside 10)",
                  bench::amount(manyOpened * 1e6, "us"), bench::amount(fewOpened * 1e6, "us"),
                  manyOpened / fewOpened, "one frame, 16 ms");
    return 0;
}

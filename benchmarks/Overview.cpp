// The overview of 100,000 orders, from the click in the menu to the painted window, beside a plain
// read of the same rows on the database's own interface and beside a QTableWidget filled by it; and
// what the window costs in memory.

#include "benchmarks/ModuleDatabase.h"
#include "benchmarks/Report.h"
#include "output/lists/frmOversikt.h"
#include "platform/forms/Forms.h"

#include <QApplication>
#include <QTableWidget>
#include <QTemporaryDir>
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

void insertOrders()
{
    gConn->beginTrans();
    for (int i = 1; i <= kOrders; ++i) {
        gConn->execute(
            u"INSERT INTO Ordre (KlientNr,OrdreNr,OrdreStatus,Betalt,EgenRef,DeresRef,KundeNr,"
            u"KundeNavn,FakAdresse1,FakAdresse2,FakPostNr,FakPoststed,LevAdresse1,LevAdresse2,"
            u"LevPostNr,LevPoststed,KID,BetBet,OrdreDato,FakDato,ForfallDato,LevDato,RabattPst,"
            u"MvaKr,SumNetto,SumBrutto,Avrunding) VALUES (5,%1,'Fakturert',0,'Kari','Ola',%2,"
            u"'Fjellveien Transport AS','Fjellveien 1','','0150','OSLO','','','','','00000%1',14,"
            u"#03/01/2014#,#03/02/2014#,#03/16/2014#,#03/03/2014#,0,%3.25,%3,%3.25,0)"_s.arg(i)
                .arg(10000 + i % 700)
                .arg(i));
    }
    gConn->commitTrans();
}

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

void measureOpening(const bench::PlainDatabase &database)
{
    std::vector<double> ours, read, table, besideRead, besideTable;
    Cost oursCost, tableCost;
    for (int round = 0; round < kRounds; ++round) {
        read.push_back(plainRead(database));
        std::unique_ptr<QTableWidget> widget;
        tableCost = costOf([&] { widget = filledTable(database); }, [&] { widget.reset(); });
        table.push_back(tableCost.seconds);
        oursCost = costOf(clickOverview, closeOverview);
        ours.push_back(oursCost.seconds);
        besideRead.push_back(ours.back() / read.back());
        besideTable.push_back(ours.back() / table.back());
    }
    const auto ms = [](double seconds) { return bench::amount(1000 * seconds, "ms"); };
    bench::report("overview of 100,000 orders opened, beside a plain read", ms(bench::median(ours)),
                  ms(bench::median(read)), bench::median(besideRead), "at most 2");
    bench::report("overview of 100,000 orders opened, beside QTableWidget", ms(bench::median(ours)),
                  ms(bench::median(table)), bench::median(besideTable), "below 1");
    bench::report("overview of 100,000 orders, memory beside QTableWidget",
                  bench::amount(oursCost.megabytes, "MB"), bench::amount(tableCost.megabytes, "MB"),
                  oursCost.megabytes / tableCost.megabytes, "at most 0.20");
}

} // namespace

int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication app(argc, argv);
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"oversikt.db"_s);
    const bench::ModuleDatabase module(path);
    insertOrders();
    const bench::PlainDatabase database(path);
    measureOpening(database);
    return 0;
}

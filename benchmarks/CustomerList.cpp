// The list of 1,000 customers among 5,000 postal codes, from the command to the painted window,
// beside a plain loop on the database's own interface that fills a bare grid in a bare window with
// the same rows.

#include "benchmarks/support/Application.h"
#include "benchmarks/support/Company.h"
#include "benchmarks/support/FileDatabase.h"
#include "benchmarks/support/ModuleDatabase.h"
#include "benchmarks/works/BareGrid.h"
#include "benchmarks/works/Screens.h"
#include "presentation/spread/mVASpread.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int kCustomers = 1'000;
constexpr int kPostalCodes = 5'000;
constexpr int kRounds = 15;
constexpr int kCols = 14;
constexpr QSize kWindow{318, 382};

void showPlainList(const bench::PlainDatabase &database)
{
    bench::PlainQuery customers(
        database,
        "SELECT K.KundeNr,K.Navn,K.BetBet,K.Adr1,K.Adr2,K.PostNr,P.PostSted,K.LevAdr1,K.LevAdr2,"
        "K.LevPostNr,L.PostSted,K.SammeLevAdr,K.OrganisasjonsNr,K.FakturaType "
        "FROM KundeLev K LEFT JOIN Poststed P ON K.PostNr=P.PostNr "
        "LEFT JOIN Poststed L ON K.LevPostNr=L.PostNr "
        "WHERE K.KlientNr=5 AND K.KundeNr<50000 ORDER BY K.KundeNr");
    bench::showBareGrid(kWindow, [&](fpSpread &grid) {
        grid.setMaxCols(kCols);
        SpreadClear(grid);
        QString row;
        while (customers.next()) {
            row.clear();
            for (int col = 0; col < kCols; ++col) {
                if (col > 0)
                    row += u'\t';
                row += QString::fromUtf8(
                    reinterpret_cast<const char *>(sqlite3_column_text(customers.handle(), col)));
            }
            SpreadAddRow(grid, row);
        }
        if (grid.dataRowCnt() != kCustomers)
            qFatal("the plain list is not whole");
    });
}

} // namespace

int main(int argc, char *argv[])
{
    const bench::Application application(argc, argv);
    bench::FileDatabase database;
    const bench::ModuleDatabase module(database);
    bench::Company company(database);
    company.growPostalCodes(kPostalCodes);
    company.growCustomers(kCustomers);
    const bench::PlainDatabase plain(database.copyTo(u"grense.db"_s));
    teachModuleWords(plain);

    bench::closeScreens();
    const bench::Work list = bench::customerList();
    const bench::Pair seconds = bench::inTurn(
        kRounds, [&] { return list.cpuSeconds(); },
        [&] { return bench::cpuSecondsOf([&] { showPlainList(plain); }); });
    bench::report("1,000 customers, 5,000 postal codes, beside a plain fill", 1000 * seconds.ours,
                  1000 * seconds.plain, "ms", seconds.ratio, bench::Aim::ratioAtMost(2.5));
    return 0;
}

// How the costs of the module's works follow what a company has: each work in a database that grows
// tenfold and tenfold again, with the exponent that fits. The cost is the processors' time, a
// server's included: the disk is no part of the question, and how long a program waits for a server
// depends on who else has a processor.

#include "benchmarks/support/Growth.h"
#include "benchmarks/support/Application.h"
#include "benchmarks/support/Company.h"
#include "benchmarks/support/ModuleDatabase.h"
#include "benchmarks/support/Report.h"
#include "benchmarks/works/Documents.h"
#include "benchmarks/works/Posting.h"
#include "benchmarks/works/Screens.h"
#include "benchmarks/works/Statements.h"

#include <functional>
#include <sched.h>

using bench::Company;
using bench::Reads;

namespace {

constexpr int kDocuments = 20;
constexpr int kInvoices = 20;
constexpr int kStatements = 50;
// A work is run again until so much time has gone, or so often.
constexpr double kEnough = 0.3; // seconds
constexpr int kLeastRounds = 3;
constexpr int kMostRounds = 15;

const std::vector<int> kOrders{60, 600, 6'000, 60'000};
const std::vector<int> kRegister{25, 250, 2'500, 25'000};
const std::vector<int> kPostalCodes{50, 500, 5'000};
const std::vector<int> kVouchers{100, 1'000, 10'000, 100'000};
const std::vector<int> kLines{10, 100, 1'000};

struct Measured
{
    bench::Work work;
    Reads reads;
};
using Works = std::vector<Measured>;

/// The best of some runs, in seconds for a unit: what disturbs one only ever adds to it.
double bestOf(const bench::Work &work, const bench::Database &database)
{
    bench::closeScreens();
    double spent = 0;
    double best = 0;
    for (int round = 0; round < kLeastRounds || (spent < kEnough && round < kMostRounds); ++round) {
        work.prepare();
        const double before = database.secondsOutside();
        double seconds = bench::cpuSecondsOf(work.run);
        seconds += database.secondsOutside() - before;
        spent += seconds;
        best = round == 0 ? seconds : std::min(best, seconds);
    }
    return best / work.units;
}

/// A new company grows by `grow` from size to size, and each of its works is measured at each.
void measure(const char *by, const std::vector<int> &sizes, void (Company::*grow)(int),
             const std::function<Works(Company &)> &worksOn)
{
    const auto database = bench::makeDatabase();
    const bench::ModuleDatabase module(*database);
    Company company(*database);
    const Works works = worksOn(company);
    std::vector<std::vector<bench::SizeAndCost>> costs(works.size());
    for (const int size : sizes) {
        (company.*grow)(size);
        database->settle();
        for (size_t i = 0; i < works.size(); ++i)
            costs[i].push_back({double(size), bestOf(works[i].work, *database)});
    }
    for (size_t i = 0; i < works.size(); ++i)
        bench::reportGrowth(std::string(database->name()) + ", " + works[i].work.name + ", by " +
                                by,
                            costs[i], works[i].reads);
}

/// What is measured on any database.
void measureBoth()
{
    using namespace bench;
    const auto postingAlone = [](Company &company) {
        return Works{{posting(company, kInvoices), Reads::ItsOwn}};
    };
    measure("orders", kOrders, &Company::growOrders, [](Company &) {
        return Works{{ehfDocuments(kDocuments), Reads::ItsOwn},
                     {ehf3Documents(kDocuments), Reads::ItsOwn},
                     {savedOrder(), Reads::ItsOwn},
                     {customerList(), Reads::ItsOwn}};
    });
    measure("orders", kOrders, &Company::growOrders, postingAlone);
    measure("products", kRegister, &Company::growProducts, [](Company &) {
        return Works{{ehfDocuments(kDocuments), Reads::ItsOwn},
                     {ehf3Documents(kDocuments), Reads::ItsOwn},
                     {savedOrder(), Reads::ItsOwn}};
    });
    measure("customers", kRegister, &Company::growCustomers, [](Company &) {
        return Works{{customerList(), Reads::Everything},
                     {ehf3Documents(kDocuments), Reads::ItsOwn},
                     {savedOrder(), Reads::ItsOwn}};
    });
    measure("postal codes", kPostalCodes, &Company::growPostalCodes, [](Company &) {
        return Works{{ehfDocuments(kDocuments), Reads::ItsOwn}, {customerList(), Reads::ItsOwn}};
    });
    measure("vouchers of the year", kVouchers, &Company::growVouchers, postingAlone);
    measure("vouchers of other years", kVouchers, &Company::growOldVouchers, postingAlone);
    measure("lines", kLines, &Company::growLines, [](Company &) {
        return Works{{ehfDocuments(1), Reads::Everything},
                     {ehf3Documents(1), Reads::Everything},
                     {savedOrder(), Reads::Everything}};
    });
}

/// What the module itself decides, whatever database it stands on.
void measureTheRest(const bench::Database &database)
{
    using namespace bench;
    const QString folder = database.folder();
    measure("orders", kOrders, &Company::growOrders, [&](Company &) {
        return Works{
            {nextOrder(), Reads::ItsOwn},           {orderScreen(), Reads::Everything},
            {overview(), Reads::Everything},        {invoicesToPdf(folder, 1), Reads::ItsOwn},
            {listToPdf(folder), Reads::Everything}, {ownTransactions(kStatements), Reads::ItsOwn}};
    });
    measure("products", kRegister, &Company::growProducts, [](Company &) {
        return Works{{nextOrder(), Reads::ItsOwn}, {productRegister(), Reads::Everything}};
    });
    measure("lines", kLines, &Company::growLines, [&](Company &) {
        return Works{{firstOrder(), Reads::Everything},
                     {invoicesToPdf(folder, 1), Reads::Everything}};
    });
    std::vector<SizeAndCost> sorting;
    for (const int rows : kVouchers)
        sorting.push_back({double(rows), bestOf(sortedGrid(rows), database)});
    reportGrowth("sort, by rows", sorting, Reads::InOrder);
}

/// Program and server take turns, so one processor is enough. To wake the other one on another
/// processor may cost several times what a statement does, and whether that comes about is chance.
void useOneProcessor()
{
    cpu_set_t one;
    CPU_ZERO(&one);
    CPU_SET(sched_getcpu(), &one);
    if (sched_setaffinity(0, sizeof one, &one) != 0)
        qFatal("one processor alone cannot be had");
}

} // namespace

int main(int argc, char *argv[])
{
    useOneProcessor();
    const bench::Application application(argc, argv);
    measureBoth();
    const auto database = bench::makeDatabase();
    if (!database->isServer())
        measureTheRest(*database);
    return 0;
}

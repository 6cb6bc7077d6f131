// The works that cost processor time rather than disk, one at a time and for a program that counts
// instructions: those of `bench::counted` and what it calls. Without a name it tells the names.

#include "benchmarks/support/Application.h"
#include "benchmarks/support/Company.h"
#include "benchmarks/support/FileDatabase.h"
#include "benchmarks/support/ModuleDatabase.h"
#include "benchmarks/works/Documents.h"
#include "benchmarks/works/Posting.h"
#include "benchmarks/works/Screens.h"
#include "benchmarks/works/Statements.h"

#include <cstdio>

namespace bench {

/// The script ./bench names it to the counting program, so it stays a function of its own.
[[gnu::noinline]] void counted(const Work &work)
{
    work.run();
}

} // namespace bench

namespace {

constexpr int kDocuments = 50;
constexpr int kInvoices = 20;
constexpr int kStatements = 100;
constexpr int kCustomers = 1'000;
constexpr int kOrders = 2'000;
constexpr int kRows = 10'000;

std::vector<bench::Work> worksOn(bench::Company &company, const QString &folder)
{
    using namespace bench;
    return {ehfDocuments(kDocuments),
            ehf3Documents(kDocuments),
            posting(company, kInvoices),
            customerList(),
            nextOrder(),
            savedOrder(),
            invoicesToPdf(folder, 1),
            listToPdf(folder),
            overview(),
            productRegister(),
            ownTransactions(kStatements),
            sortedGrid(kRows)};
}

} // namespace

int main(int argc, char *argv[])
{
    const bench::Application application(argc, argv);
    bench::FileDatabase database;
    const bench::ModuleDatabase module(database);
    bench::Company company(database);
    const std::string name = argc > 1 ? argv[1] : "";
    for (const bench::Work &work : worksOn(company, database.folder())) {
        if (name.empty())
            std::printf("%s\n", work.name.c_str());
        if (name != work.name)
            continue;
        company.growCustomers(kCustomers);
        company.growOrders(kOrders);
        bench::closeScreens();
        // What is done once for all is done before it is counted; the faces that the first PDF file
        // adds to the fonts are taken up by the second.
        static_cast<void>(work.seconds());
        static_cast<void>(work.seconds());
        work.prepare();
        bench::counted(work);
        std::printf("%s %d\n", work.unit.c_str(), work.units);
    }
    return 0;
}

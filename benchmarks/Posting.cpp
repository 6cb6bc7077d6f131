// A posting run over 1,000 invoices of three lines, beside a plain loop that sends the very
// statements that reached SQLite on a kept connection, with the same transactions and the same wait
// for the disk. The loop stands on a copy of the same file and takes its turn whenever the run has
// posted another few invoices, so both meet the disk in the same moods. Then shorter runs in a
// ledger with many vouchers, beside those in an empty one.

#include "benchmarks/works/Posting.h"
#include "benchmarks/support/Company.h"
#include "benchmarks/support/FileDatabase.h"
#include "benchmarks/support/ModuleDatabase.h"

#include <QCoreApplication>

#include <optional>
#include <string>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

constexpr int kInvoices = 1000;
constexpr int kLines = 3;
constexpr int kTurn = 20; // invoices
constexpr int kFewInvoices = 20;
constexpr int kVouchers = 100'000;
constexpr int kRounds = 5;

/// What reached SQLite, a list of statements for each turn.
using Turns = std::vector<std::vector<std::string>>;

/// All invoices of the database, posted in turns.
class AllInTurns : public bench::MarkedInvoices
{
public:
    AllInTurns() : MarkedInvoices(kInvoices) {}

    void framdrift(int behandlet, int) override
    {
        if (behandlet > 0 && behandlet % kTurn == 0)
            turnEnds();
    }

protected:
    virtual void turnEnds() = 0;
};

void startModule(const QString &connectionString)
{
    Main();
    gKlient = gKlientInn = 5;
    gAar = 2014;
    gDB->setConnectionString(connectionString);
}

/// A run of which every statement is noted on its way into SQLite.
class Recording final : public AllInTurns
{
public:
    static Turns of(const QString &path)
    {
        startModule(u"dsn="_s + path);
        Recording run;
        s_turns = &run.m_turns;
        sqlite3_auto_extension(reinterpret_cast<void (*)()>(watch));
        BokforMerkede(run);
        sqlite3_cancel_auto_extension(reinterpret_cast<void (*)()>(watch));
        Unload();
        return run.m_turns;
    }

private:
    void turnEnds() override { m_turns.emplace_back(); }

    static int watch(sqlite3 *database, char **, const void *)
    {
        return sqlite3_trace_v2(database, SQLITE_TRACE_STMT, note, nullptr);
    }
    static int note(unsigned, void *, void *statement, void *)
    {
        char *sql = sqlite3_expanded_sql(static_cast<sqlite3_stmt *>(statement));
        const std::string text = sql;
        sqlite3_free(sql);
        // What a session asks on its own account is no part of the work.
        if (text.rfind("PRAGMA", 0) != 0 && text.find("sqlite_") == std::string::npos)
            s_turns->back().push_back(text);
        return 0;
    }

    static inline Turns *s_turns = nullptr;
    Turns m_turns{1};
};

/// The measured run; the plain loop gets its turn after each of the run's.
class Measured final : public AllInTurns
{
public:
    Measured(const QString &plainPath, const Turns &turns) : m_turns(turns), m_plain(plainPath)
    {
        bench::teachModuleWords(m_plain);
        m_plain.send("PRAGMA foreign_keys=ON");
        m_plain.send("PRAGMA journal_mode=WAL");
        m_plain.send("PRAGMA synchronous=FULL");
    }

    void run()
    {
        m_start = std::chrono::steady_clock::now();
        BokforMerkede(*this);
        // What the run does behind its last turn is nothing.
    }

    std::vector<double> module, plain, ratios; // seconds a turn

private:
    void turnEnds() override
    {
        const auto now = std::chrono::steady_clock::now();
        module.push_back(std::chrono::duration<double>(now - m_start).count());
        plain.push_back(bench::secondsOf([&] {
            for (const std::string &sql : m_turns[plain.size()])
                m_plain.send(sql.c_str());
        }));
        ratios.push_back(module.back() / plain.back());
        m_start = std::chrono::steady_clock::now();
    }

    const Turns &m_turns;
    const bench::PlainDatabase m_plain;
    std::chrono::steady_clock::time_point m_start;
};

/// Statements without the marks of their transactions.
int countOfStatements(const Turns &turns)
{
    int count = 0;
    for (const std::vector<std::string> &turn : turns) {
        for (const std::string &sql : turn)
            count += sql.rfind("BEGIN", 0) == 0 || sql.rfind("COMMIT", 0) == 0 ? 0 : 1;
    }
    return count;
}

double sum(const std::vector<double> &values)
{
    double total = 0;
    for (const double value : values)
        total += value;
    return total;
}

void measureRun()
{
    bench::FileDatabase origin;
    {
        const bench::ModuleDatabase module(origin);
        bench::Company company(origin, kLines);
        company.growOrders(kInvoices);
        company.setStatus("Fakturert", kInvoices);
    }
    const Turns turns = Recording::of(origin.copyTo(u"opptak.db"_s));

    startModule(u"dsn="_s + origin.copyTo(u"modul.db"_s));
    Measured measured(origin.copyTo(u"grense.db"_s), turns);
    measured.run();
    const double module = sum(measured.module);
    const double plain = sum(measured.plain);
    const double ratio = bench::median(measured.ratios);
    const int statements = countOfStatements(turns);
    bench::report("posting invoices of 3 lines, beside a plain loop", kInvoices / module,
                  kInvoices / plain, "/s", ratio, bench::Aim::ratioAtMost(1.3));
    bench::report("the same as statements", statements / module, statements / plain, "/s", ratio,
                  bench::Aim::ratioAtMost(1.3));
    Unload();
}

/// Invoices to post in a ledger, with the module not started.
class Ledger
{
public:
    explicit Ledger(void (bench::Company::*grow)(int) = nullptr)
    {
        const bench::ModuleDatabase module(m_database);
        m_company.emplace(m_database, kLines);
        if (grow)
            (*m_company.*grow)(kVouchers);
    }

    /// Seconds for an invoice.
    double post()
    {
        startModule(m_database.connectionString());
        const double seconds = bench::posting(*m_company, kFewInvoices).seconds();
        Unload();
        return seconds;
    }

private:
    bench::FileDatabase m_database;
    std::optional<bench::Company> m_company;
};

void measureFullLedger(const char *what, Ledger &empty, Ledger &&full)
{
    const bench::Pair seconds =
        bench::inTurn(kRounds, [&] { return full.post(); }, [&] { return empty.post(); });
    bench::report(what, 1 / seconds.ours, 1 / seconds.plain, "/s", seconds.ratio,
                  bench::Aim::ratioAtMost(1.2));
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv); // the module starts without its screens
    measureRun();
    Ledger empty;
    measureFullLedger("posting beside 100,000 vouchers of other years, beside none", empty,
                      Ledger(&bench::Company::growOldVouchers));
    measureFullLedger("posting beside 100,000 vouchers of the year, beside none", empty,
                      Ledger(&bench::Company::growVouchers));
    return 0;
}

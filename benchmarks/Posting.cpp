// A posting run over 1,000 invoices of three lines, beside a plain loop that sends the very
// statements that reached SQLite on a kept connection, with the same transactions and the same wait
// for the disk. The loop stands on a copy of the same file and takes its turn whenever the run has
// posted another few invoices, so both meet the disk in the same moods.

#include "benchmarks/ModuleDatabase.h"
#include "benchmarks/Report.h"
#include "platform/ado/sqlite/NorwegianCollation.h"
#include "platform/ado/sqlite/SqliteFunctions.h"
#include "posting/run/Bokforing.h"

#include <QTemporaryDir>

#include <string>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

constexpr int kInvoices = 1000;
constexpr int kTurn = 20; // invoices

/// What reached SQLite, a list of statements for each turn.
using Turns = std::vector<std::vector<std::string>>;

/// All invoices of the database, marked.
class AlleMerket : public BokforSkjerm
{
public:
    int antallRader() const override { return kInvoices; }
    bool erMerket(int) const override { return true; }
    QString celle(int col, int row) const override
    {
        switch (col) {
        case bokforkolonne::kFakNr:
        case bokforkolonne::kOrdreId:
            return QString::number(row);
        case bokforkolonne::kKundeNr:
            return u"10001"_s;
        case bokforkolonne::kKundeNavn:
            return u"Åsgård Pukk & Grus AS"_s;
        case bokforkolonne::kFakDato:
            return u"09.03.2014"_s;
        case bokforkolonne::kForfall:
            return u"23.03.2014"_s;
        default:
            return {};
        }
    }
    QString konto() const override { return u"3000"_s; }
    QString loyve() const override { return u"<nei>"_s; }
    void framdrift(int behandlet, int) override
    {
        if (behandlet > 0 && behandlet % kTurn == 0)
            turnEnds();
    }
    void melding(const QString &text, int) override
    {
        if (text != u" %1 fakturaer er bokført."_s.arg(kInvoices))
            qFatal("the run told: %s", qPrintable(text));
    }
    void lesFakturaer() override {}
    void skrivRapport(const QString &, qint16, const QString &, const QString &,
                      const QString &) override
    {
    }
    void slippHendelser() override {}

protected:
    virtual void turnEnds() = 0;
};

/// A file with the invoices, which nobody has open any more.
void makeInvoices(const QString &path)
{
    const bench::ModuleDatabase module(path);
    gConn->beginTrans();
    for (int id = 1; id <= kInvoices; ++id) {
        gConn->execute(u"INSERT INTO Ordre (KlientNr,OrdreNr,OrdreStatus,KundeNr,KundeNavn,FakDato,"
                       u"ForfallDato,SumBrutto,Avrunding) VALUES (5,%1,'Fakturert',10001,"
                       u"'Åsgård Pukk & Grus AS',#03/09/2014#,#03/23/2014#,350,0)"_s.arg(id));
        for (const int rate : {10, 15, 25})
            gConn->execute(u"INSERT INTO OrdreLinjer (OrdreID,PosNr,ProduktNavn,Antall,Pris,MvaPst,"
                           u"SumNetto,SumBrutto) VALUES (%1,%2,'Kjøring på Østlandet',1,100,%2,100,"
                           u"%3)"_s.arg(id)
                               .arg(rate)
                               .arg(100 + rate));
    }
    gConn->commitTrans();
}

void startModule(const QString &path)
{
    Main();
    gKlient = gKlientInn = 5;
    gAar = 2014;
    gDB->setConnectionString(u"dsn="_s + path);
}

/// A run of which every statement is noted on its way into SQLite.
class Recording final : public AlleMerket
{
public:
    static Turns of(const QString &path)
    {
        startModule(path);
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
class Measured final : public AlleMerket
{
public:
    Measured(const QString &plainPath, const Turns &turns) : m_turns(turns), m_plain(plainPath)
    {
        ado::addNorwegianCollation(m_plain.handle());
        ado::addFunctions(m_plain.handle());
        m_plain.send("PRAGMA foreign_keys=ON");
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

} // namespace

int main()
{
    const QTemporaryDir folder;
    const QString paths[] = {folder.filePath(u"opptak.db"_s), folder.filePath(u"modul.db"_s),
                             folder.filePath(u"grense.db"_s)};
    makeInvoices(paths[0]);
    for (const QString &copy : {paths[1], paths[2]}) {
        if (!QFile::copy(paths[0], copy))
            qFatal("cannot copy the database");
    }
    const Turns turns = Recording::of(paths[0]);

    startModule(paths[1]);
    Measured measured(paths[2], turns);
    measured.run();
    const double module = sum(measured.module);
    const double plain = sum(measured.plain);
    const double ratio = bench::median(measured.ratios);
    const int statements = countOfStatements(turns);
    bench::report("Posting 1,000 invoices of 3 lines, beside a plain loop",
                  bench::amount(module, "s"), bench::amount(plain, "s"), ratio, "time <= 1.3 x");
    bench::report("The same as statements", bench::amount(statements / module, "/s"),
                  bench::amount(statements / plain, "/s"), ratio, "time <= 1.3 x");
    Unload();
    return 0;
}

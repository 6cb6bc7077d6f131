// What saving an order costs the processor, beside a plain loop on the database's own interface
// that stores the same header and lines by prepared statements, each in a transaction of its own as
// the module has them, in a copy of the database with an index of its own.

#include "benchmarks/support/Application.h"
#include "benchmarks/support/Company.h"
#include "benchmarks/support/FileDatabase.h"
#include "benchmarks/support/ModuleDatabase.h"
#include "benchmarks/works/Screens.h"

#include <memory>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

constexpr int kRounds = 9;

struct Size
{
    int lines;
    double aim; // of few lines the note that tells of the save is the most
};
constexpr Size kSizes[] = {{10, 4}, {100, 2}, {1'000, 2}};

class PlainSaving
{
public:
    explicit PlainSaving(const QString &path) : m_database(path)
    {
        teachModuleWords(m_database);
        m_database.send("CREATE INDEX EgenLinje ON OrdreLinjer (OrdreID)");
        m_database.send("PRAGMA journal_mode=WAL");
        m_database.send("PRAGMA synchronous=FULL");
        for (const char *sql :
             {"BEGIN IMMEDIATE", "COMMIT",
              "UPDATE Ordre SET OrdreNr=1,OrdreStatus='Ordre',Betalt=0,EgenRef='Kåre',"
              "DeresRef='Innkjøp',KundeNr=10002,KundeNavn='Ærlig Øl AS',FakAdresse1='Postboks 7',"
              "FakAdresse2='Åsveien 3',FakPostNr='0010',FakPoststed='Oslo',"
              "LevAdresse1='Terminal 2',LevAdresse2='Lagerveien 9',LevPostNr='2317',"
              "LevPoststed='Hamar',KID='2001000100018',BetBet=14,OrdreDato='2014-03-09',"
              "FakDato='2014-03-09',ForfallDato='2014-03-23',LevDato='2014-03-07',RabattPst=0,"
              "MvaKr=30860000,SumNetto=123460000,SumBrutto=154320000,Avrunding=0 WHERE ID=1",
              "DELETE FROM OrdreLinjer WHERE OrdreID=1",
              "INSERT INTO OrdreLinjer (OrdreID,PosNr,ProduktNr,ProduktNavn,Antall,Pris,RabattPst,"
              "RabattKr,MvaPst,SumNetto,SumBrutto) VALUES (1,10,'P100002','Kjøring på Østlandet',"
              "2.5,4940000,0,0,25,12350000,15440000)"})
            m_statements.push_back(std::make_unique<bench::PlainQuery>(m_database, sql));
    }

    void save(int lines) const
    {
        inTransaction(kHeader);
        inTransaction(kDelete);
        for (int line = 0; line < lines; ++line)
            inTransaction(kLine);
    }

private:
    enum Statement : size_t { kBegin, kCommit, kHeader, kDelete, kLine };

    void inTransaction(Statement statement) const
    {
        for (const Statement each : {kBegin, statement, kCommit}) {
            if (m_statements[each]->next())
                qFatal("a statement gave a row");
            m_statements[each]->reset();
        }
    }

    bench::PlainDatabase m_database;
    std::vector<std::unique_ptr<bench::PlainQuery>> m_statements;
};

} // namespace

int main(int argc, char *argv[])
{
    const bench::Application application(argc, argv);
    bench::FileDatabase database;
    const bench::ModuleDatabase module(database);
    bench::Company company(database);
    const PlainSaving plain(database.copyTo(u"grense.db"_s));
    for (const auto &[lines, aim] : kSizes) {
        company.growLines(lines);
        bench::closeScreens();
        const bench::Work saving = bench::savedOrder();
        const bench::Pair seconds = bench::inTurn(
            kRounds, [&] { return saving.cpuSeconds(); },
            [&, lines = lines] { return bench::cpuSecondsOf([&] { plain.save(lines); }); });
        bench::report("save an order of " + std::to_string(lines) + " lines, processor time",
                      1000 * seconds.ours, 1000 * seconds.plain, "ms", seconds.ratio,
                      bench::Aim::ratioAtMost(aim));
    }
    return 0;
}

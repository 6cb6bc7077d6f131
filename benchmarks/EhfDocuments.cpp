// How fast whole EHF documents come out of the database, beside a plain loop on the database's own
// interface that reads the same rows and does nothing with them. The loop has a copy of the
// database with indexes of its own, so it needs to look at no other row. Those of EHF 3.0 stand
// beside the former, and files of many beside what the module reads for them.

#include "benchmarks/support/Company.h"
#include "benchmarks/support/FileDatabase.h"
#include "benchmarks/support/ModuleDatabase.h"
#include "benchmarks/works/Documents.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#include <optional>
#include <string>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

constexpr int kClient = 5;
constexpr int kDocuments = 100;
constexpr int kFiles = 10'000;
constexpr int kRounds = 9;

/// A value as the database has it.
struct PlainValue
{
    int type;
    sqlite3_int64 whole;
    double number;
    std::string text;
};

/// One of the three queries of a document.
class DocumentQuery
{
public:
    DocumentQuery(const bench::PlainDatabase &database, const char *sql) : m_query(database, sql) {}

    /// Reads all values of all rows for client and order; the number of rows.
    int read(int order, std::vector<PlainValue> &values)
    {
        sqlite3_stmt *statement = m_query.handle();
        sqlite3_bind_int(statement, 1, kClient);
        if (sqlite3_bind_parameter_count(statement) > 1)
            sqlite3_bind_int(statement, 2, order);
        int rows = 0;
        for (; m_query.next(); ++rows) {
            for (int i = 0; i < sqlite3_column_count(statement); ++i)
                values.push_back(value(statement, i));
        }
        m_query.reset();
        return rows;
    }

private:
    static PlainValue value(sqlite3_stmt *row, int column)
    {
        PlainValue result{sqlite3_column_type(row, column), 0, 0, {}};
        if (result.type == SQLITE_INTEGER)
            result.whole = sqlite3_column_int64(row, column);
        else if (result.type == SQLITE_FLOAT)
            result.number = sqlite3_column_double(row, column);
        else if (result.type == SQLITE_TEXT)
            result.text = reinterpret_cast<const char *>(sqlite3_column_text(row, column));
        return result;
    }

    bench::PlainQuery m_query;
};

constexpr const char *kClientSql =
    "SELECT K.Navn,K.Adr1,K.Adr2,K.PostNr,P.PostSted,K.OrganisasjonsNr,K.Giro1 FROM Klient K "
    "LEFT JOIN Poststed P ON K.PostNr=P.PostNr WHERE K.KlientNr=?1";
constexpr const char *kOrderSql =
    "SELECT OrdreNr,EgenRef,DeresRef,KundeNr,KundeNavn,FakAdresse1,FakAdresse2,FakPostNr,"
    "FakPoststed,BetBet,KID,LevAdresse1,LevAdresse2,LevPostNr,LevPoststed,FakDato,ForfallDato,"
    "LevDato,SumNetto,MvaKr,SumBrutto FROM Ordre WHERE KlientNr=?1 AND OrdreNr=?2";
constexpr const char *kLinesSql =
    "SELECT L.PosNr,L.ProduktNr,L.ProduktNavn,L.Antall,L.Pris,P.Enhet,L.RabattPst,L.RabattKr,"
    "L.MvaPst,L.SumNetto,L.SumBrutto FROM (Ordre O INNER JOIN OrdreLinjer L ON O.ID=L.OrdreID) "
    "LEFT JOIN Produkt P ON L.ProduktNr=P.ProduktNr WHERE O.KlientNr=?1 AND P.KlientNr=?1 "
    "AND O.OrdreNr=?2";

/// The rows of every document, by statements prepared once.
class PlainReader
{
public:
    explicit PlainReader(const QString &path) : m_database(path)
    {
        teachModuleWords(m_database);
        m_database.send("CREATE INDEX EgenProdukt ON Produkt (ProduktNr,KlientNr)");
        m_database.send("CREATE INDEX EgenLinje ON OrdreLinjer (OrdreID)");
        m_database.send("ANALYZE");
        m_queries.emplace(m_database);
    }

    void readAll()
    {
        for (int order = 1; order <= kDocuments; ++order) {
            m_values.clear();
            const int rows = m_queries->client.read(order, m_values) +
                             m_queries->head.read(order, m_values) +
                             m_queries->lines.read(order, m_values);
            if (rows != bench::Company::kLines + 2)
                qFatal("the plain loop did not find its rows");
        }
    }

private:
    struct Queries
    {
        explicit Queries(const bench::PlainDatabase &database)
            : client(database, kClientSql), head(database, kOrderSql), lines(database, kLinesSql)
        {
        }

        DocumentQuery client, head, lines;
    };

    bench::PlainDatabase m_database;
    std::optional<Queries> m_queries; // ahead of its database
    std::vector<PlainValue> m_values;
};

void measure(bench::FileDatabase &database, int products, int postalCodes)
{
    PlainReader plain(database.copyTo(u"grense-%1-%2.db"_s.arg(products).arg(postalCodes)));
    const bench::Work documents = bench::ehfDocuments(kDocuments);
    const bench::Pair seconds = bench::inTurn(
        kRounds, [&] { return documents.cpuSeconds(); },
        [&] { return bench::cpuSecondsOf([&] { plain.readAll(); }) / kDocuments; });
    bench::report("EHF document of 10 lines, " + std::to_string(products) + " products, " +
                      std::to_string(postalCodes) + " postal codes",
                  1 / seconds.ours, 1 / seconds.plain, "/s", seconds.ratio,
                  bench::Aim::ratioAtMost(2));
}

void compare(const std::string &what, const bench::Work &ours, const bench::Work &other, int rounds)
{
    const bench::Pair seconds = bench::inTurn(
        rounds, [&] { return ours.cpuSeconds(); }, [&] { return other.cpuSeconds(); });
    bench::report(what, 1 / seconds.ours, 1 / seconds.plain, "/s", seconds.ratio,
                  bench::Aim::ratioAtMost(1.5));
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv); // the module starts without its screens
    bench::FileDatabase database;
    const bench::ModuleDatabase module(database);
    bench::Company company(database);
    company.growOrders(kDocuments);
    for (const int products : {25, 1'000, 10'000}) {
        company.growProducts(products);
        measure(database, products, bench::Company::kFewPostalCodes);
    }
    company.growPostalCodes(5'000);
    measure(database, 10'000, 5'000);
    compare("EHF 3.0 document of 10 lines, beside EHF", bench::ehf3Documents(kDocuments),
            bench::ehfDocuments(kDocuments), kRounds);
    company.growOrders(kFiles);
    database.settle();
    const QTemporaryDir folder;
    compare("10,000 files of EHF 3.0, beside reading one by one",
            bench::ehf3Files(folder.path(), kFiles), bench::ehf3Reads(kFiles), 3);
    return 0;
}

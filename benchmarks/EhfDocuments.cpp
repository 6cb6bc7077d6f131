// How fast whole EHF documents come out of the database, beside a plain loop on the database's own
// interface that reads the same rows and does nothing with them.

#include "benchmarks/ModuleDatabase.h"
#include "benchmarks/Report.h"
#include "output/ehf/EhfFil.h"

#include <QBuffer>
#include <QTemporaryDir>

#include <string>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

constexpr int kClient = 5;
constexpr int kProducts = 25;
constexpr int kDocuments = 1000;
constexpr int kLines = 10;
constexpr int kRounds = 9;

/// `kDocuments` orders of `kLines` lines.
void insertOrders()
{
    gConn->beginTrans();
    bench::ModuleDatabase::insertClient();
    for (int product = 1; product <= kProducts; ++product)
        gConn->execute(u"INSERT INTO Produkt (KlientNr,ProduktNr,ProduktNavn,Enhet) VALUES "
                       u"(5,'P%1','Kjøring %1','%2')"_s.arg(product)
                           .arg(product % 3 == 0 ? u"time"_s : u"stk"_s));
    for (int order = 1; order <= kDocuments; ++order) {
        gConn->execute(
            u"INSERT INTO Ordre (KlientNr,OrdreNr,EgenRef,DeresRef,KundeNr,KundeNavn,FakAdresse1,"
            u"FakAdresse2,FakPostNr,FakPoststed,LevAdresse1,LevAdresse2,LevPostNr,LevPoststed,KID,"
            u"BetBet,FakDato,ForfallDato,LevDato,SumNetto,MvaKr,SumBrutto) VALUES (5,%1,'Kåre',"
            u"'Innkjøp',10001,'Ærlig Øl AS','Postboks 7','Åsveien 3','0010','Oslo','Terminal 2',"
            u"'Lagerveien 9','2317','Hamar','2001000100018',14,#03/09/2014#,#03/23/2014#,"
            u"#03/07/2014#,12345.50,3086.38,15431.88)"_s.arg(order));
        for (int line = 1; line <= kLines; ++line)
            gConn->execute(
                u"INSERT INTO OrdreLinjer (OrdreID,PosNr,ProduktNr,ProduktNavn,Antall,Pris,"
                u"RabattPst,RabattKr,MvaPst,SumNetto,SumBrutto) VALUES (%1,%2,'P%3',"
                u"'Kjøring på Østlandet',2.5,493.82,0,0,25,1234.55,1543.19)"_s.arg(order)
                    .arg(line * 10)
                    .arg((order + line) % kProducts + 1));
    }
    gConn->commitTrans();
}

/// One EHF file of each order.
void writeDocuments()
{
    QByteArray bytes;
    for (int order = 1; order <= kDocuments; ++order) {
        bytes.resize(0);
        QBuffer file(&bytes);
        file.open(QIODevice::WriteOnly);
        SkrivEhfFil(file, 0, QString::number(order));
        if (!bytes.endsWith("</Invoice>\r\n"))
            qFatal("a document is not whole");
    }
}

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
void readRows(const bench::PlainDatabase &database)
{
    DocumentQuery client(database, kClientSql);
    DocumentQuery head(database, kOrderSql);
    DocumentQuery lines(database, kLinesSql);
    std::vector<PlainValue> values;
    for (int order = 1; order <= kDocuments; ++order) {
        values.clear();
        const int rows =
            client.read(order, values) + head.read(order, values) + lines.read(order, values);
        if (rows != kLines + 2)
            qFatal("the plain loop did not find its rows");
    }
}

} // namespace

int main()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"ehf.db"_s);
    const bench::ModuleDatabase module(path);
    insertOrders();
    const bench::PlainDatabase database(path);

    std::vector<double> ours, plain, ratios;
    for (int round = 0; round < kRounds; ++round) {
        plain.push_back(bench::secondsOf([&] { readRows(database); }));
        ours.push_back(bench::secondsOf(writeDocuments));
        ratios.push_back(ours.back() / plain.back());
    }
    bench::report("EHF documents of 10 lines, beside reading their rows",
                  bench::amount(kDocuments / bench::median(ours), "/s"),
                  bench::amount(kDocuments / bench::median(plain), "/s"), bench::median(ratios),
                  "time <= 1.5 x");
    return 0;
}

// How fast and how small 100,000 orders are read into a detached record set, beside a plain loop on
// the database's own interface that copies the same values into plain structs.

#include "benchmarks/support/PlainDatabase.h"
#include "benchmarks/support/Report.h"
#include "platform/ado/Connection.h"
#include "platform/ado/Recordset.h"

#include <QTemporaryDir>

#include <optional>

using namespace Qt::StringLiterals;

namespace {

constexpr int kOrders = 100'000;
constexpr int kRounds = 9;
constexpr double kMegabyte = 1e6;

const QString kColumns =
    u"ID,KlientNr,OrdreNr,OrdreStatus,Betalt,EgenRef,DeresRef,KundeNr,KundeNavn,FakAdresse1,"
    u"FakAdresse2,FakPostNr,FakPoststed,LevAdresse1,LevAdresse2,LevPostNr,LevPoststed,KID,BetBet,"
    u"OrdreDato,FakDato,ForfallDato,LevDato,RabattPst,RabattKr,MvaKr,SumNetto,SumBrutto,"
    u"Avrunding,Kontrollsiffer"_s;

/// A believable order, a little different from its neighbours.
QString orderValues(int number)
{
    const QString status =
        QStringList{u"Ordre"_s, u"Fakturert"_s, u"Bokført"_s, u"Betalt"_s}[number % 4];
    const QString name =
        QStringList{u"Fjordbygg Entreprenør AS"_s, u"Ås Grus og Pukk"_s, u"Nordre Ørland kommune"_s,
                    u"Haugen"_s, u"Sørvågen Sjømat og Frakt AS"_s}[number % 5];
    const int day = number % 28 + 1;
    const int month = number % 12 + 1;
    const QString date =
        u"#%1/%2/2014#"_s.arg(month, 2, 10, QChar(u'0')).arg(day, 2, 10, QChar(u'0'));
    const QString place = u"'Industriveien %1','Postboks %2','7%3','Trondheim'"_s.arg(number % 300)
                              .arg(number % 90)
                              .arg(number % 1000, 3, 10, QChar(u'0'));
    return u"1,%1,'%2',%3,'Kari Nordmann','Bestilling %4',%5,'%6',%7,%7,'%8',14,%9,%9,%9,%9,"_s
               .arg(number)
               .arg(status)
               .arg(number % 4 == 3 ? 1 : 0)
               .arg(number % 5000)
               .arg(10000 + number % 500)
               .arg(name, place)
               .arg(number, 16, 10, QChar(u'0'))
               .arg(date) +
           u"0,0,%1.25,%2.50,%3.00,0.25,7"_s.arg(number % 9000)
               .arg(number % 36000)
               .arg(number % 45000);
}

void makeDatabase(const QString &path)
{
    bench::makeEmptyFile(path);
    ado::Connection connection;
    connection.open(u"dsn="_s + path);
    connection.execute(
        u"CREATE TABLE Ordre (ID COUNTER CONSTRAINT ID PRIMARY KEY, KlientNr SHORT, OrdreNr LONG, "
        u"CONSTRAINT KlientOrdre UNIQUE (KlientNr, OrdreNr),OrdreStatus TEXT(10), Betalt BIT, "
        u"EgenRef TEXT(20), DeresRef TEXT(20), KundeNr LONG, KundeNavn TEXT(40), KundeOrgNr "
        u"TEXT(20), FakAdresse1 TEXT(40), FakAdresse2 TEXT(40), FakPostNr TEXT(10), FakPoststed "
        u"TEXT(40), LevAdresse1 TEXT(40), LevAdresse2 TEXT(40), LevPostNr TEXT(10), LevPoststed "
        u"TEXT(40), KID TEXT(25), BetBet SHORT, OrdreDato DATE, FakDato DATE, ForfallDato DATE, "
        u"LevDato DATE, RabattPst SINGLE, RabattKr CURRENCY, MvaKr CURRENCY, SumNetto CURRENCY, "
        u"SumBrutto CURRENCY, Avrunding CURRENCY, Kontrollsiffer SHORT)"_s);
    const QString insert = u"INSERT INTO Ordre (%1) VALUES ("_s.arg(kColumns.sliced(3));
    connection.beginTrans();
    for (int number = 1; number <= kOrders; ++number)
        connection.execute(insert + orderValues(number) + u')');
    connection.commitTrans();
}

/// The same values as a program would hold them that knows this one table.
struct PlainOrder
{
    int id, klientNr, ordreNr;
    std::string ordreStatus;
    bool betalt;
    std::string egenRef, deresRef;
    int kundeNr;
    std::string kundeNavn, fakAdresse1, fakAdresse2, fakPostNr, fakPoststed, levAdresse1,
        levAdresse2, levPostNr, levPoststed, kid;
    int betBet;
    std::string ordreDato, fakDato, forfallDato, levDato;
    double rabattPst;
    sqlite3_int64 rabattKr, mvaKr, sumNetto, sumBrutto, avrunding;
    int kontrollsiffer;
};

std::string plainText(sqlite3_stmt *row, int column)
{
    const auto *text = reinterpret_cast<const char *>(sqlite3_column_text(row, column));
    return text ? std::string(text, static_cast<std::size_t>(sqlite3_column_bytes(row, column)))
                : std::string();
}

std::vector<PlainOrder> readPlain(const bench::PlainDatabase &database, const QByteArray &sql)
{
    std::vector<PlainOrder> orders;
    orders.reserve(kOrders); // spares it the moving that a growing vector does
    bench::PlainQuery query(database, sql.constData());
    sqlite3_stmt *row = query.handle();
    while (query.next()) {
        PlainOrder &o = orders.emplace_back();
        int column = 0;
        const auto whole = [&] { return sqlite3_column_int(row, column++); };
        const auto money = [&] { return sqlite3_column_int64(row, column++); };
        const auto text = [&] { return plainText(row, column++); };
        o.id = whole();
        o.klientNr = whole();
        o.ordreNr = whole();
        o.ordreStatus = text();
        o.betalt = whole() != 0;
        o.egenRef = text();
        o.deresRef = text();
        o.kundeNr = whole();
        o.kundeNavn = text();
        o.fakAdresse1 = text();
        o.fakAdresse2 = text();
        o.fakPostNr = text();
        o.fakPoststed = text();
        o.levAdresse1 = text();
        o.levAdresse2 = text();
        o.levPostNr = text();
        o.levPoststed = text();
        o.kid = text();
        o.betBet = whole();
        o.ordreDato = text();
        o.fakDato = text();
        o.forfallDato = text();
        o.levDato = text();
        o.rabattPst = sqlite3_column_double(row, column++);
        o.rabattKr = money();
        o.mvaKr = money();
        o.sumNetto = money();
        o.sumBrutto = money();
        o.avrunding = money();
        o.kontrollsiffer = whole();
    }
    return orders;
}

/// As the module's record access opens and detaches it.
ado::Recordset readRecordset(const QString &connectionString, const QString &statement)
{
    ado::Recordset rows;
    rows.setActiveConnection(connectionString);
    rows.setLockType(ado::LockType::ReadOnly);
    rows.setCursorType(ado::CursorType::Keyset);
    rows.setSource(statement);
    rows.open();
    rows.clearActiveConnection();
    return rows;
}

} // namespace

int main()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"ordrer.db"_s);
    makeDatabase(path);
    const QString statement = u"SELECT %1 FROM Ordre WHERE KlientNr= 1"_s.arg(kColumns);
    const QByteArray plainSql = statement.toUtf8();
    const bench::PlainDatabase database(path, SQLITE_OPEN_NOMUTEX);

    double ourBytes = 0;
    double plainBytes = 0;
    const bench::Pair seconds = bench::inTurn(
        kRounds,
        [&] {
            std::optional<ado::Recordset> rows;
            const double before = bench::bytesInUse();
            const double time =
                bench::secondsOf([&] { rows = readRecordset(u"dsn="_s + path, statement); });
            ourBytes = bench::bytesInUse() - before;
            if (rows->recordCount() != kOrders)
                qFatal("the record set is not whole");
            return time;
        },
        [&] {
            std::vector<PlainOrder> orders;
            const double before = bench::bytesInUse();
            const double time = bench::secondsOf([&] { orders = readPlain(database, plainSql); });
            plainBytes = bench::bytesInUse() - before;
            if (orders.size() != kOrders)
                qFatal("the plain loop did not find its rows");
            return time;
        });
    bench::report("100,000 orders into a record set, time", 1000 * seconds.ours,
                  1000 * seconds.plain, "ms", seconds.ratio, bench::Aim::ratioAtMost(1.3));
    bench::report("100,000 orders in a record set, memory", ourBytes / kMegabyte,
                  plainBytes / kMegabyte, "MB", bench::Aim::valueAtMost(60));
    return 0;
}

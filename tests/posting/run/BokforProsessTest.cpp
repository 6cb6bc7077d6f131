#include "posting/run/BokforProsessTest.h"

#include "data/clsAdoUtils.h"
#include "platform/ado/Connection.h"
#include "shell/component/Main.h"
#include "state/SharedState.h"
#include "support/Child.h"

#include <fcntl.h>
#include <memory>

using namespace Qt::StringLiterals;

void BokforProsessTest::prepare(int invoices)
{
    ado::Connection connection;
    connection.open(connectionString());
    connection.beginTrans();
    for (const QString &table : {u"Bilag"_s, u"BilagLinjer"_s, u"OrdreLinjer"_s, u"Ordre"_s})
        connection.execute(u"DELETE FROM "_s + table);
    connection.execute(u"DELETE FROM Kontoplan WHERE KontoNr=1500"_s);
    connection.execute(u"INSERT INTO Kontoplan (KlientNr,KontoNr) VALUES (5,1500)"_s);
    for (int nr = kFirst; nr < kFirst + invoices; ++nr) {
        connection.execute(
            u"INSERT INTO Ordre (KlientNr,OrdreNr,OrdreStatus,KundeNr,KundeNavn,FakDato,"
            u"ForfallDato,SumBrutto,Avrunding) VALUES (5,%1,'Fakturert',10001,'Kunde %1',"
            u"#03/09/2014#,#03/23/2014#,350,0)"_s.arg(nr));
        ado::Recordset id;
        id.setActiveConnection(connection);
        id.setSource(u"SELECT @@IDENTITY"_s);
        id.open();
        for (const int rate : {10, 15, 25})
            connection.execute(u"INSERT INTO OrdreLinjer (OrdreID,MvaPst,SumNetto,SumBrutto) "
                               u"VALUES (%1,%2,100,%3)"_s.arg(id.integer(0))
                                   .arg(rate)
                                   .arg(100 + rate));
    }
    connection.commitTrans();
}

void BokforProsessTest::loadList(NoterendeSkjerm &list)
{
    for (const QString &row : rows(u"SELECT OrdreNr,KundeNavn,ID FROM Ordre WHERE "
                                   u"OrdreStatus='Fakturert' ORDER BY OrdreNr"_s)) {
        const QStringList cells = row.split(u'|');
        list.rader.push_back({{{},
                               cells[0],
                               u"10001"_s,
                               cells[1],
                               u"09.03.2014"_s,
                               u"23.03.2014"_s,
                               {},
                               {},
                               cells[2]},
                              true});
    }
}

void BokforProsessTest::startAnew()
{
    Main();
    gKlient = gKlientInn = 5;
    gAar = 2014;
    gDB->setConnectionString(connectionString());
}

bool BokforProsessTest::booksAreWhole(int invoices)
{
    int vouchers = 0;
    for (int nr = kFirst; nr < kFirst + invoices; ++nr) {
        const QStringList found =
            rows(u"SELECT ID,AntPost FROM Bilag WHERE Tekst='Faktura Kunde %1'"_s.arg(nr));
        const bool posted =
            count(u"Ordre WHERE OrdreStatus='Bokført' AND OrdreNr=%1"_s.arg(nr)) == 1;
        if (!posted && found.isEmpty())
            continue;
        if (!posted || found.size() != 1 || !found[0].endsWith(u"|3"))
            return false;
        ++vouchers;
        if (rows(u"SELECT Konto,Debet,Kredit FROM BilagLinjer WHERE BilagID=%1 ORDER BY "
                 u"Konto,Kredit"_s.arg(found[0].section(u'|', 0, 0))) !=
            QStringList{u"1500|350|0"_s, u"3000|0|110"_s, u"3000|0|115"_s, u"3000|0|125"_s})
            return false;
    }
    QStringList numbers = rows(u"SELECT BilagNr FROM Bilag"_s);
    return numbers.size() == vouchers && numbers.removeDuplicates() == 0 &&
           count(u"BilagLinjer"_s) == 4 * vouchers;
}

std::vector<int> BokforProsessTest::inProcesses(int processes, const std::function<int()> &work,
                                                const std::function<void()> &meanwhile)
{
    reload(); // nothing open is shared with the children
    int told[2];
    int goOn[2];
    // Closed for a server that is started meanwhile.
    EXPECT_EQ(::pipe2(told, O_CLOEXEC) + ::pipe2(goOn, O_CLOEXEC), 0);
    std::vector<std::unique_ptr<Child>> running;
    for (int i = 0; i < processes; ++i)
        running.push_back(std::make_unique<Child>(
            [&] {
                ::close(goOn[1]);
                startAnew();
                char byte = static_cast<char>(work());
                return ::write(told[1], &byte, 1) == 1 && ::read(goOn[0], &byte, 1) == 0 ? 0 : 1;
            },
            120)); // one waits for the other
    ::close(told[1]);
    ::close(goOn[0]);
    meanwhile();
    std::vector<int> results;
    for (char byte = 0; int(results.size()) < processes && readByte(told[0], byte);)
        results.push_back(byte);
    ::close(goOn[1]);
    ::close(told[0]);
    for (const auto &process : running)
        EXPECT_EQ(process->wait(), 0);
    startAnew();
    return results;
}

#include "posting/BokforProsessTest.h"

#include "data/clsAdoUtils.h"
#include "platform/ado/Connection.h"
#include "shell/Main.h"
#include "state/SharedState.h"

using namespace Qt::StringLiterals;

void BokforProsessTest::prepare(int invoices)
{
    ado::Connection connection;
    connection.open(connectionString());
    connection.beginTrans();
    for (const QString &table : {u"Bilag"_s, u"BilagLinjer"_s, u"OrdreLinjer"_s, u"Ordre"_s})
        connection.execute(u"DELETE FROM "_s + table);
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

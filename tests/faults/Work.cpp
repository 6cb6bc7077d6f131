#include "faults/Work.h"

#include "data/clsAdoUtils.h"
#include "host/parent/ParentTables.h"
#include "platform/ado/SessionPool.h"
#include "rules/Ordre.h"
#include "runtime/Conversions.h"
#include "shell/component/Main.h"
#include "state/SharedState.h"
#include "support/Rows.h"
#include "support/StartModule.h"

using namespace Qt::StringLiterals;

namespace faults {

namespace {

constexpr int kOldOrder = kInvoices + 1; // number and ID
constexpr std::array kAccounts{3000, 3001, 3100, 1500, 7395};

QString headEffect()
{
    return u"hode"_s;
}
QString linesGoneEffect()
{
    return u"gamle linjer slettet"_s;
}
QString lineEffect(int position)
{
    return u"linje %1"_s.arg(position);
}
QString voucherEffect(int invoice)
{
    return u"bilag %1"_s.arg(invoice);
}
QString voucherLineEffect(const QString &voucher, const QString &account)
{
    return u"bilag %1 konto %2"_s.arg(voucher, account);
}
QString workRowEffect(int invoice)
{
    return u"tmpTbl %1"_s.arg(invoice);
}
QString postedEffect(int invoice)
{
    return u"bokført %1"_s.arg(invoice);
}

/// Runs `statement` through gDB; true when it returned success.
bool execute(const QString &effect, const QString &statement, const Witness &witness)
{
    witness.starts(effect);
    if (!gDB->Execute(statement)) {
        witness.failed(effect, gDB->LastError());
        return false;
    }
    witness.done(effect);
    return true;
}

const QString kHeadColumns =
    u"KlientNr,OrdreNr,OrdreStatus,Betalt,EgenRef,DeresRef,KundeNr,KundeNavn,FakAdresse1,"
    u"FakAdresse2,FakPostNr,FakPoststed,LevAdresse1,LevAdresse2,LevPostNr,LevPoststed,KID,BetBet,"
    u"OrdreDato,FakDato,ForfallDato,LevDato,RabattPst,MvaKr,SumNetto,SumBrutto,Avrunding"_s;

QString headInsert(qint32 number)
{
    return u"INSERT INTO Ordre ("_s + kHeadColumns + u") VALUES ("_s + numberToText(gKlient) +
           u',' + QString::number(number) +
           u",'Ordre',0,'Kåre','Innkjøp',10001,'Ny kunde AS','Postboks 7','','0010','Oslo',"
           u"'Terminal 2','','2317','Hamar','2001000100018',14,#03/09/2014#,#03/09/2014#,"
           u"#03/23/2014#,#03/07/2014#,0,250.00,1000.00,1250.00,0.00)"_s;
}

QString lineInsert(qint32 order, int position)
{
    return u"INSERT INTO OrdreLinjer (OrdreID,PosNr,ProduktNr,ProduktNavn,Antall,Pris,RabattPst,"
           u"RabattKr,MvaPst,SumNetto,SumBrutto) VALUES (%1,%2,'P%2','Ny linje',2.0,50.00,0,0,"
           u"25.0,100.00,125.00)"_s.arg(order)
               .arg(position);
}

void saveLines(qint32 order, int count, const Witness &witness)
{
    for (int line = 1; line <= count; ++line)
        execute(lineEffect(10 * line), lineInsert(order, 10 * line), witness);
}

/// Runs the statement of an order's header; its LastError.
QString saveHead(const QString &statement, qint32 &id, const Witness &witness)
{
    witness.starts(headEffect());
    id = gDB->ExecuteID(statement);
    const QString error = gDB->LastError();
    if (error.isEmpty())
        witness.done(headEffect());
    else
        witness.failed(headEffect(), error);
    return error;
}

} // namespace

// --- The database and the module

void prepareDatabase(const QString &connectionString)
{
    {
        ado::Connection connection;
        connection.open(connectionString);
        createParentTables(connection);
    }
    startModule(connectionString);
    gConn->beginTrans();
    gConn->execute(u"INSERT INTO Klient (KlientNr,Navn) VALUES (5,'Fjell Frakt AS')"_s);
    gConn->execute(u"CREATE TABLE tmpTbl (ID COUNTER CONSTRAINT ID PRIMARY KEY, KlientNr SHORT, "
                   u"BilagNr LONG, FakNr LONG, KndNr LONG, Type TEXT(10), FakDto DATE, Forfall "
                   u"DATE, Belop CURRENCY)"_s);
    for (int number = 1; number <= kOldOrder; ++number)
        gConn->execute(u"INSERT INTO Ordre (KlientNr,OrdreNr,OrdreStatus,KundeNavn) VALUES "
                       u"(5,%1,'Fakturert','Gammel kunde AS')"_s.arg(number));
    for (int line = 1; line <= kLines; ++line)
        gConn->execute(u"INSERT INTO OrdreLinjer (OrdreID,PosNr,ProduktNavn) VALUES (%1,%2,"
                       u"'Gammel linje')"_s.arg(kOldOrder)
                           .arg(10 * line));
    gConn->commitTrans();
    unloadModule();
}

qint16 startModule(const QString &connectionString)
{
    Main();
    return startAsParent(connectionString, kClient, kYear);
}

void unloadModule()
{
    Unload();
    ado::SessionPool::shared().clear();
}

// --- The work

SavedOrder saveNewOrder(int lines, const Witness &witness)
{
    SavedOrder order;
    order.number = NyttOrdreNr();
    gConn->beginTrans();
    order.error = saveHead(headInsert(order.number), order.id, witness);
    if (!order.error.isEmpty()) {
        gConn->rollbackTrans();
        return order;
    }
    execute({}, u"DELETE FROM OrdreLinjer WHERE OrdreID="_s + QString::number(order.id), witness);
    saveLines(order.id, lines, witness);
    gConn->commitTrans();
    return order;
}

void saveOrderAgain(const Witness &witness)
{
    gConn->beginTrans();
    qint32 unused = 0;
    const QString id = QString::number(kOldOrder);
    if (saveHead(u"UPDATE Ordre SET KundeNavn='Ny kunde AS',SumNetto=1000.00 WHERE ID="_s + id,
                 unused, witness)
            .isEmpty()) {
        execute(linesGoneEffect(), u"DELETE FROM OrdreLinjer WHERE OrdreID="_s + id, witness);
        saveLines(kOldOrder, kLines, witness);
        gConn->commitTrans();
    } else {
        gConn->rollbackTrans();
    }
}

void postInvoices(const Witness &witness)
{
    for (int invoice = 1; invoice <= kInvoices; ++invoice) {
        witness.starts(voucherEffect(invoice));
        const qint32 voucher = gDB->ExecuteID(
            u"INSERT INTO Bilag (KlientNr,BilagNr,BilagDato,Tekst,BilagType,AntPost,Aar) VALUES ("_s +
            numberToText(gKlient) +
            u",%1,#12/31/2014#,'Faktura Øst AS','Faktura',3, 2014)"_s.arg(invoice));
        if (const QString error = gDB->LastError(); error.isEmpty())
            witness.done(voucherEffect(invoice));
        else
            witness.failed(voucherEffect(invoice), error);
        for (const int account : kAccounts)
            execute(
                voucherLineEffect(QString::number(invoice), QString::number(account)),
                u"INSERT INTO BilagLinjer (BilagID,Konto,Tekst,Debet,Kredit,MVAkode,Loyve) VALUES "
                u"("_s +
                    numberToText(voucher) +
                    u",%1,'Kundefaktura %2',0,125.00,1,'')"_s.arg(account).arg(invoice),
                witness);
        execute(
            workRowEffect(invoice),
            u"INSERT INTO tmpTbl (KlientNr,BilagNr,FakNr,KndNr,Type,FakDto,Forfall,Belop) "
            u"VALUES ( 5,%1,%1,10001,'Faktura',#12/31/2014#,#01/14/2015#,125.00)"_s.arg(invoice),
            witness);
        execute(postedEffect(invoice), BokfortSql(QString::number(invoice)), witness);
    }
}

// --- What it leaves

QStringList effectsOfNewOrder()
{
    QStringList effects{headEffect()};
    for (int line = 1; line <= kLines; ++line)
        effects += lineEffect(10 * line);
    return effects;
}

QStringList effectsOfOrderAgain()
{
    QStringList effects = effectsOfNewOrder();
    effects.insert(1, linesGoneEffect());
    return effects;
}

QStringList effectsOfPosting()
{
    QStringList effects;
    for (int invoice = 1; invoice <= kInvoices; ++invoice) {
        effects += voucherEffect(invoice);
        for (const int account : kAccounts)
            effects += voucherLineEffect(QString::number(invoice), QString::number(account));
        effects << workRowEffect(invoice) << postedEffect(invoice);
    }
    return effects;
}

QStringList foundEffects(const QString &connectionString, const QStringList &plan)
{
    QStringList found;
    const auto numbers = [&](const QString &statement, QString (*effect)(int)) {
        for (const QString &row : rowsOf(connectionString, statement))
            found += effect(row.toInt());
    };
    const auto isNew = u" WHERE KundeNavn='Ny kunde AS'"_s;
    for (const QString &row : rowsOf(connectionString, u"SELECT COUNT (*) FROM Ordre"_s + isNew))
        found.resize(row.toInt(), headEffect());
    if (rowsOf(connectionString, u"SELECT ID FROM OrdreLinjer WHERE ProduktNavn='Gammel linje'"_s)
            .isEmpty())
        found += linesGoneEffect();
    numbers(u"SELECT PosNr FROM OrdreLinjer WHERE ProduktNavn='Ny linje'"_s, lineEffect);
    numbers(u"SELECT BilagNr FROM Bilag"_s, voucherEffect);
    for (const QString &row : rowsOf(
             connectionString, u"SELECT B.BilagNr,L.Konto FROM BilagLinjer L LEFT JOIN Bilag B ON "
                               u"L.BilagID=B.ID"_s))
        found += voucherLineEffect(row.section(u'|', 0, 0), row.section(u'|', 1));
    numbers(u"SELECT BilagNr FROM tmpTbl"_s, workRowEffect);
    numbers(u"SELECT OrdreNr FROM Ordre WHERE OrdreStatus='Bokført'"_s, postedEffect);

    const auto place = [&plan](const QString &effect) {
        const qsizetype index = plan.indexOf(effect);
        return index < 0 ? plan.size() : index;
    };
    std::stable_sort(found.begin(), found.end(),
                     [&](const QString &a, const QString &b) { return place(a) < place(b); });
    return found;
}

} // namespace faults

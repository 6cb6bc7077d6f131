#include "host/tasks/Tour.h"

#include "data/clsAdoUtils.h"
#include "data/mFaktura.h"
#include "host/demo/DemoCompany.h"
#include "host/demo/DemoOrders.h"
#include "host/parent/ParentTables.h"
#include "host/tasks/Component.h"
#include "host/tasks/Database.h"
#include "host/tasks/Ehf3Task.h"
#include "host/tasks/EhfTask.h"
#include "host/tasks/HostError.h"
#include "platform/ado/Connection.h"
#include "state/SharedState.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

/// Runs `fill` in one transaction on the database.
template<class Fill>
void inTransaction(const database::Place &place, Fill &&fill)
{
    ado::Connection connection;
    connection.open(place.connectionString);
    connection.beginTrans();
    fill(connection);
    connection.commitTrans();
}

/// A database made by an earlier version has no indexes yet. They only save time, so a database
/// that refuses them is used without.
void makeIndexes(const database::Place &place)
{
    passOver([&] {
        ado::Connection connection;
        connection.open(place.connectionString);
        provideParentIndexes(connection);
    });
}

/// The first posting run of a database would find no work table to drop, and leave the text of that
/// error behind, by which the next order would lose its lines. Each run makes its own.
void makeWorkTable(const database::Place &place)
{
    // It is there in most databases.
    passOver([&] {
        inTransaction(place, [](ado::Connection &connection) {
            connection.execute(u"CREATE TABLE tmpTbl (ID LONG)"_s);
        });
    });
}

void fillDatabase(Component &component, const database::Place &place, const Options &options,
                  database::NewDatabase &made, const tour::Say &say)
{
    inTransaction(place, [&](ado::Connection &connection) {
        createParentTables(connection);
        fillParentTables(connection, options.klient, options.aar);
    });
    made.takeTables();
    say(u"Foreldreprogrammets tabeller og registre er laget: %1"_s.arg(place.name));
    tour::startModule(component, place, options, say);
    inTransaction(place, [&](ado::Connection &connection) {
        fillModuleRegisters(connection, options.klient);
        fillOrders(connection, options.klient, options.aar);
    });
}

/// One of the two formats.
struct Format
{
    QString name;
    QString ending; ///< of a file's name
    QByteArray (*document)(int orderNumber);
    void (*write)(int orderNumber, const QString &target, bool replace);
};

/// A file of the same content is left alone, another one is replaced only when that was asked for.
void writeIn(const Format &format, const QString &file, int orderNumber, bool replace,
             const tour::Say &say)
{
    const QString target = file + format.ending;
    QFile existing(target);
    if (!existing.exists() || replace) {
        format.write(orderNumber, target, replace);
        say(u"%1 skrevet: %2"_s.arg(format.name, target));
        return;
    }
    const bool same =
        existing.open(QIODevice::ReadOnly) && existing.readAll() == format.document(orderNumber);
    say((same ? u"%1 finnes fra før, uendret: %2"_s
              : u"%1 finnes fra før med annet innhold (--erstatt skriver på nytt): %2"_s)
            .arg(format.name, target));
}

/// The file beside the database that gets the order's number, without its ending.
QString fileBeside(const QString &path, QLatin1StringView kind, int orderNumber)
{
    return QFileInfo(path).absoluteDir().filePath(kind + u'-' + QString::number(orderNumber));
}

} // namespace

void tour::startModule(Component &component, const database::Place &place, const Options &options,
                       const Say &say)
{
    // The module tells only that it failed, and each attempt at a silent server takes seconds.
    if (!place.isFile()) {
        const QString reason = database::reasonForFailedOpen(place.connectionString);
        if (!reason.isEmpty())
            throw HostError(u"modulen ble ikke startet: "_s + reason.simplified());
    }
    const auto start = [&] {
        return component.start(place.connectionString, options.klient, options.aar);
    };
    const bool makesTables = !database::hasModuleTables(place);
    int ready = start();
    // A start that has made its tables leaves texts of errors behind, by which the first save would
    // fail half way.
    if (ready != 0 && makesTables) {
        component.unload();
        ready = start();
    }
    if (ready == 0) {
        const QString reason = database::reasonForFailedStart(place.connectionString);
        throw HostError(u"modulen ble ikke klar (ModuleInit 0)"_s +
                        (reason.isEmpty() ? QString() : u": "_s + reason.simplified()));
    }
    makeWorkTable(place);
    makeIndexes(place);
    say(u"Modulen er startet for klient %1, år %2: ModuleInit %3"_s.arg(options.klient)
            .arg(options.aar)
            .arg(ready));
}

void tour::makeDemo(Component &component, const database::Place &place, const Options &options,
                    const Say &say)
{
    database::NewDatabase made(place);
    try {
        fillDatabase(component, place, options, made, say);
    } catch (const RunTimeError &error) {
        throw HostError(u"demodatabasen ble ikke laget: %1"_s.arg(error.description()));
    }
    made.keep();
    say(u"Demofirmaet er lagt inn, med ordre fra %1 og %2"_s.arg(options.aar - 1).arg(options.aar));
}

void tour::run(Component &component, const database::Place &place, const Options &options,
               const Say &say)
{
    const QString &path = place.source.location;
    if (database::isMade(path)) {
        say(u"Databasen finnes fra før og brukes: %1"_s.arg(path));
        startModule(component, place, options, say);
    } else {
        makeDemo(component, place, options, say);
    }
    useDatabase(place, options);
    const int invoice = newestOrder(u"OrdreStatus='Fakturert' AND SumBrutto>0");
    const int creditNote = newestOrder(u"OrdreStatus='Fakturert' AND SumBrutto<0");
    writeEhfs(fileBeside(path, "Faktura"_L1, invoice), invoice, options.erstatt, say);
    writeEhfs(fileBeside(path, "Kreditnota"_L1, creditNote), creditNote, options.erstatt, say);
    say(u"Prøv videre med disse valgene til ./run eller strekkbok-vert:"_s);
    say(u"  --sql \"SELECT OrdreNr,KundeNavn,OrdreStatus,SumBrutto FROM Ordre ORDER BY OrdreNr\""_s);
    if (invoice != 0)
        say(u"  --ehf %1 --ut faktura.xml"_s.arg(invoice));
    say(u"  --help"_s);
}

void tour::useDatabase(const database::Place &place, const Options &options)
{
    gDB->setConnectionString(place.connectionString);
    gKlient = options.klient;
    gAar = options.aar;
}

int tour::newestOrder(QStringView clause)
{
    const Ref<ado::Recordset> found =
        gDB->GetRS(u"SELECT Max(OrdreNr) AS Nr FROM Ordre WHERE "_s + klientVilkar() + u" AND "_s +
                       clause.toString(),
                   true);
    if (!found)
        throw HostError(gDB->LastError().simplified());
    return found->isNull(0) ? 0 : found->integer(0);
}

void tour::writeEhfs(const QString &file, int orderNumber, bool replace, const Say &say)
{
    if (orderNumber == 0) {
        say(u"Ingen fakturert %1 å skrive"_s.arg(
            QFileInfo(file).fileName().section(u'-', 0, 0).toLower()));
        return;
    }
    writeIn({u"EHF"_s, u".xml"_s, ehfDocument, writeEhf}, file, orderNumber, replace, say);
    try {
        writeIn({u"EHF 3.0"_s, u"-EHF3.xml"_s, ehf3Document, writeEhf3}, file, orderNumber, replace,
                say);
    } catch (const HostError &error) { // which is no reason to stop
        say(u"EHF 3.0: "_s + error.line());
    }
}

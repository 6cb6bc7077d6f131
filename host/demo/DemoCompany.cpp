#include "host/demo/DemoCompany.h"

#include "host/demo/DemoTable.h"
#include "host/demo/Insert.h"
#include "platform/ado/Connection.h"

#include <initializer_list>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

/// How a column of the demo company's data goes into the column of the same name.
enum class Kind { Text, Number, Amount, Quantity };
struct Column
{
    QStringView name;
    Kind kind;
};
using enum Kind;

/// The row as it stands, with the client's number unless the table knows no clients.
QString insertion(QStringView table, std::optional<qint16> client, const DemoTable::Row &row,
                  std::initializer_list<Column> columns)
{
    Insert insert(table);
    if (client)
        insert.number(u"KlientNr", *client);
    for (const auto &[name, kind] : columns) {
        switch (kind) {
        case Text:
            insert.text(name, row.text(name));
            break;
        case Number:
            insert.number(name, row.integer(name));
            break;
        case Amount:
            insert.amount(name, row.amount(name));
            break;
        case Quantity:
            insert.quantity(name, row.amount(name));
            break;
        }
    }
    return insert.statement();
}

/// All rows of the data of that table.
void enter(ado::Connection &connection, QStringView table, std::optional<qint16> client,
           std::initializer_list<Column> columns)
{
    const DemoTable data(table.toString().toLower());
    for (const auto &row : data.rows())
        connection.execute(insertion(table, client, row, columns));
}

void fillAccounts(ado::Connection &connection, qint16 client, qint16 year)
{
    const DemoTable accounts(u"kontoplan"_s);
    for (const auto &row : accounts.rows()) {
        connection.execute(insertion(u"Kontoplan", client, row,
                                     {{u"KontoNr", Number},
                                      {u"Navn", Text},
                                      {u"FastMvaKode", Number},
                                      {u"Std", Number},
                                      {u"NaerSkjema2", Number},
                                      {u"KtoGruppe", Number}}));
        const auto openingBalance = [&](int balanceYear, QStringView column) {
            connection.execute(Insert(u"Hovedbok")
                                   .number(u"KlientNr", client)
                                   .number(u"KontoNr", row.integer(u"KontoNr"))
                                   .number(u"Aar", balanceYear)
                                   .amount(u"AapningsSaldo", row.amount(column))
                                   .statement());
        };
        openingBalance(year - 1, u"Fjoraret");
        openingBalance(year, u"Aaret");
    }
}

} // namespace

void fillParentTables(ado::Connection &connection, qint16 client, qint16 year)
{
    enter(connection, u"Poststed", {}, {{u"PostNr", Text}, {u"PostSted", Text}});
    enter(connection, u"Klient", client,
          {{u"Navn", Text},
           {u"Adr1", Text},
           {u"Adr2", Text},
           {u"PostNr", Text},
           {u"TlfArbeid", Text},
           {u"OrganisasjonsNr", Text},
           {u"Giro1", Text}});
    enter(connection, u"KundeLev", client,
          {{u"KundeNr", Number},
           {u"Navn", Text},
           {u"Adr1", Text},
           {u"Adr2", Text},
           {u"PostNr", Text},
           {u"BetBet", Number},
           {u"OrganisasjonsNr", Text}});
    enter(connection, u"Bil", client,
          {{u"BilLoyve", Text}, {u"BilRegNr", Text}, {u"BilType", Text}, {u"Passiv", Number}});
    fillAccounts(connection, client, year);
}

void fillModuleRegisters(ado::Connection &connection, qint16 client)
{
    enter(connection, u"Produkt", client,
          {{u"ProduktNr", Text},
           {u"ProduktNavn", Text},
           {u"ProduktGruppe", Text},
           {u"Enhet", Text},
           {u"InnPris", Amount},
           {u"UtPris", Amount},
           {u"MvaSats", Quantity},
           {u"BruttoPris", Number}});
    const DemoTable firms(u"klient"_s);
    for (const auto &row : firms.rows()) {
        connection.execute(u"UPDATE Klient SET FirstFakNr=%1,FakTekstBruk=1,FakTekst1=%2,"
                           u"FakTekst2='' WHERE KlientNr=%3"_s.arg(row.integer(u"FirstFakNr"))
                               .arg(textLiteral(row.text(u"FakTekst1")))
                               .arg(client));
    }
    const DemoTable customers(u"kundelev"_s);
    for (const auto &row : customers.rows()) {
        connection.execute(u"UPDATE KundeLev SET LevAdr1=%1,LevAdr2=%2,LevPostNr=%3,"
                           u"SammeLevAdr=%4,FakturaType=%5 WHERE KlientNr=%6 AND KundeNr=%7"_s
                               .arg(textLiteral(row.text(u"LevAdr1")),
                                    textLiteral(row.text(u"LevAdr2")),
                                    textLiteral(row.text(u"LevPostNr")))
                               .arg(row.integer(u"SammeLevAdr"))
                               .arg(textLiteral(row.text(u"FakturaType")))
                               .arg(client)
                               .arg(row.integer(u"KundeNr")));
    }
}

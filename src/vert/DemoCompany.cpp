#include "vert/DemoCompany.h"

#include "platform/ado/Connection.h"
#include "vert/DemoTable.h"
#include "vert/Insert.h"

using namespace Qt::StringLiterals;

namespace {

void fillAccounts(ado::Connection &connection, qint16 client, qint16 year)
{
    const DemoTable accounts(u"kontoplan"_s);
    for (const auto &row : accounts.rows()) {
        connection.execute(Insert(u"Kontoplan")
                               .number(u"KlientNr", client)
                               .number(u"KontoNr", row.integer(u"KontoNr"))
                               .text(u"Navn", row.text(u"Navn"))
                               .number(u"FastMvaKode", row.integer(u"FastMvaKode"))
                               .number(u"Std", row.integer(u"Std"))
                               .number(u"NaerSkjema2", row.integer(u"NaerSkjema2"))
                               .number(u"KtoGruppe", row.integer(u"KtoGruppe"))
                               .statement());
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
    const DemoTable places(u"poststed"_s);
    for (const auto &row : places.rows()) {
        connection.execute(Insert(u"Poststed")
                               .text(u"PostNr", row.text(u"PostNr"))
                               .text(u"PostSted", row.text(u"PostSted"))
                               .statement());
    }
    const DemoTable firms(u"klient"_s);
    for (const auto &row : firms.rows()) {
        connection.execute(Insert(u"Klient")
                               .number(u"KlientNr", client)
                               .text(u"Navn", row.text(u"Navn"))
                               .text(u"Adr1", row.text(u"Adr1"))
                               .text(u"Adr2", row.text(u"Adr2"))
                               .text(u"PostNr", row.text(u"PostNr"))
                               .text(u"TlfArbeid", row.text(u"TlfArbeid"))
                               .text(u"OrganisasjonsNr", row.text(u"OrganisasjonsNr"))
                               .text(u"Giro1", row.text(u"Giro1"))
                               .statement());
    }
    const DemoTable customers(u"kundelev"_s);
    for (const auto &row : customers.rows()) {
        connection.execute(Insert(u"KundeLev")
                               .number(u"KlientNr", client)
                               .number(u"KundeNr", row.integer(u"KundeNr"))
                               .text(u"Navn", row.text(u"Navn"))
                               .text(u"Adr1", row.text(u"Adr1"))
                               .text(u"Adr2", row.text(u"Adr2"))
                               .text(u"PostNr", row.text(u"PostNr"))
                               .number(u"BetBet", row.integer(u"BetBet"))
                               .text(u"OrganisasjonsNr", row.text(u"OrganisasjonsNr"))
                               .statement());
    }
    const DemoTable vehicles(u"bil"_s);
    for (const auto &row : vehicles.rows()) {
        connection.execute(Insert(u"Bil")
                               .number(u"KlientNr", client)
                               .text(u"BilLoyve", row.text(u"BilLoyve"))
                               .text(u"BilRegNr", row.text(u"BilRegNr"))
                               .text(u"BilType", row.text(u"BilType"))
                               .number(u"Passiv", row.integer(u"Passiv"))
                               .statement());
    }
    fillAccounts(connection, client, year);
}

void fillModuleRegisters(ado::Connection &connection, qint16 client)
{
    const DemoTable products(u"produkt"_s);
    for (const auto &row : products.rows()) {
        connection.execute(Insert(u"Produkt")
                               .number(u"KlientNr", client)
                               .text(u"ProduktNr", row.text(u"ProduktNr"))
                               .text(u"ProduktNavn", row.text(u"ProduktNavn"))
                               .text(u"ProduktGruppe", row.text(u"ProduktGruppe"))
                               .text(u"Enhet", row.text(u"Enhet"))
                               .amount(u"InnPris", row.amount(u"InnPris"))
                               .amount(u"UtPris", row.amount(u"UtPris"))
                               .quantity(u"MvaSats", row.amount(u"MvaSats"))
                               .number(u"BruttoPris", row.integer(u"BruttoPris"))
                               .statement());
    }
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

#include "host/parent/ParentTables.h"

#include "platform/ado/Connection.h"

#include <array>

using namespace Qt::StringLiterals;

void createParentTables(ado::Connection &connection)
{
    // BilagLinjer has no reference to Bilag: a voucher line may stand with BilagID 0.
    static const std::array statements{
        u"CREATE TABLE Klient (KlientNr SHORT CONSTRAINT KlientNr PRIMARY KEY, Navn TEXT(40), "
        u"Adr1 TEXT(40), Adr2 TEXT(40), PostNr TEXT(10), TlfArbeid TEXT(20), "
        u"OrganisasjonsNr TEXT(20), Giro1 TEXT(20))"_s,
        u"CREATE TABLE KundeLev (KlientNr SHORT, KundeNr LONG, Navn TEXT(40), Adr1 TEXT(40), "
        u"Adr2 TEXT(40), PostNr TEXT(10), BetBet SHORT, OrganisasjonsNr TEXT(20), "
        u"CONSTRAINT KlientKunde PRIMARY KEY (KlientNr, KundeNr))"_s,
        u"CREATE TABLE Poststed (PostNr TEXT(10) CONSTRAINT PostNr PRIMARY KEY, "
        u"PostSted TEXT(40))"_s,
        u"CREATE TABLE Kontoplan (KlientNr SHORT, KontoNr LONG, Navn TEXT(40), FastMvaKode SHORT, "
        u"Std BIT, NaerSkjema2 SHORT, KtoGruppe SHORT, "
        u"CONSTRAINT KlientKonto PRIMARY KEY (KlientNr, KontoNr))"_s,
        u"CREATE TABLE Hovedbok (KlientNr SHORT, KontoNr LONG, Aar SHORT, AapningsSaldo CURRENCY, "
        u"CONSTRAINT KlientKontoAar PRIMARY KEY (KlientNr, KontoNr, Aar))"_s,
        u"CREATE TABLE Bilag (ID COUNTER CONSTRAINT ID PRIMARY KEY, KlientNr SHORT, BilagNr LONG, "
        u"BilagDato DATE, Tekst TEXT(60), BilagType TEXT(20), AntPost SHORT, Aar SHORT)"_s,
        u"CREATE TABLE BilagLinjer (ID COUNTER CONSTRAINT ID PRIMARY KEY, BilagID LONG, "
        u"Konto LONG, Tekst TEXT(60), LevNr LONG, Debet CURRENCY, Kredit CURRENCY, "
        u"FaktDato DATE, FaktForfall DATE, MVAkode SHORT, cFaktNr TEXT(20), Loyve TEXT(20))"_s,
        u"CREATE TABLE Bil (KlientNr SHORT, BilLoyve TEXT(20), BilRegNr TEXT(10), "
        u"BilType TEXT(30), Passiv BIT, "
        u"CONSTRAINT KlientBil PRIMARY KEY (KlientNr, BilRegNr))"_s,
    };
    for (const QString &statement : statements)
        connection.execute(statement);
    provideParentIndexes(connection);
}

void provideParentIndexes(ado::Connection &connection)
{
    connection.provideIndex(u"Bilag"_s, u"KlientAarNr"_s,
                            {u"KlientNr"_s, u"Year(BilagDato)"_s, u"BilagNr"_s});
}

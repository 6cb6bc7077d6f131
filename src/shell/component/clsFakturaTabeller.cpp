#include "data/RowValues.h"
#include "data/Schema.h"
#include "data/clsAdoUtils.h"
#include "data/mFaktura.h"
#include "runtime/Conversions.h"
#include "shell/component/clsFaktura.h"
#include "state/SharedState.h"

using namespace Qt::StringLiterals;

bool clsFaktura::LagTabellOrdre()
{
    return TableExists(u"Ordre"_s) ||
           gDB->Execute(
               u"CREATE TABLE Ordre (ID COUNTER CONSTRAINT ID PRIMARY KEY, KlientNr SHORT, "
               u"OrdreNr LONG, CONSTRAINT KlientOrdre UNIQUE (KlientNr, OrdreNr),OrdreStatus "
               u"TEXT(10), Betalt BIT, EgenRef TEXT(20), DeresRef TEXT(20), KundeNr LONG, "
               u"KundeNavn TEXT(40), KundeOrgNr TEXT(20), FakAdresse1 TEXT(40), FakAdresse2 "
               u"TEXT(40), FakPostNr TEXT(10), FakPoststed TEXT(40), LevAdresse1 TEXT(40), "
               u"LevAdresse2 TEXT(40), LevPostNr TEXT(10), LevPoststed TEXT(40), KID TEXT(25), "
               u"BetBet SHORT, OrdreDato DATE, FakDato DATE, ForfallDato DATE, LevDato DATE, "
               u"RabattPst SINGLE, RabattKr CURRENCY, MvaKr CURRENCY, SumNetto CURRENCY, "
               u"SumBrutto CURRENCY, Avrunding CURRENCY, Kontrollsiffer SHORT)"_s);
}

// Client and name are wider than in the other two tables, as databases have them: a long name is
// cut when it reaches a line.
bool clsFaktura::LagTabellProdukt()
{
    return TableExists(u"Produkt"_s) ||
           gDB->Execute(
               u"CREATE TABLE Produkt (ID COUNTER CONSTRAINT ID PRIMARY KEY, KlientNr LONG, "
               u"ProduktNr TEXT(20), ProduktNavn TEXT(100), ProduktGruppe TEXT(10), Enhet "
               u"TEXT(10), InnPris CURRENCY, UtPris CURRENCY, MvaSats SINGLE, BruttoPris BIT)"_s);
}

bool clsFaktura::LagTabellOrdreLinjer()
{
    return TableExists(u"OrdreLinjer"_s) ||
           gDB->Execute(
               u"CREATE TABLE OrdreLinjer (ID COUNTER CONSTRAINT ID PRIMARY KEY, OrdreID LONG "
               u"CONSTRAINT OrdreID REFERENCES Ordre (ID), PosNr SHORT, ProduktNr TEXT(20), "
               u"ProduktNavn TEXT(50), Antall SINGLE, Pris CURRENCY, RabattPst SINGLE, RabattKr "
               u"CURRENCY, MvaPst SINGLE, SumNetto CURRENCY, SumBrutto CURRENCY)"_s);
}

bool clsFaktura::OppgraderTabeller()
{
    AddField(u"KundeLev"_s, u"LevAdr1"_s, FieldType::Text, 40);
    AddField(u"KundeLev"_s, u"LevAdr2"_s, FieldType::Text, 40);
    AddField(u"KundeLev"_s, u"LevPostNr"_s, FieldType::Text, 10);
    AddField(u"KundeLev"_s, u"SammeLevAdr"_s, FieldType::Bit);
    AddField(u"KundeLev"_s, u"FakturaType"_s, FieldType::Text, 10);
    AddField(u"Klient"_s, u"Logo"_s, FieldType::LongBinary);
    AddField(u"Klient"_s, u"FirstFakNr"_s, FieldType::Long);
    // In a new database the catalogue does not know the tables just made, so the database refuses
    // these three; that is no failure of the start.
    AddField(u"Produkt"_s, u"BruttoPris"_s, FieldType::Bit);
    AddField(u"Ordre"_s, u"KundeOrgNr"_s, FieldType::Text, 20);
    AddField(u"Ordre"_s, u"Avrunding"_s, FieldType::Currency);
    DropField(u"Produkt"_s, u"TekstArtikkel"_s);
    AddField(u"Klient"_s, u"FakTekstBruk"_s, FieldType::Short);
    AddField(u"Klient"_s, u"FakTekst1"_s, FieldType::Text, 255);
    const bool sisteKolonne = AddField(u"Klient"_s, u"FakTekst2"_s, FieldType::Text, 255);

    // An account that is there gets nothing, not even a balance for a new year.
    if (gDB->GetCount(u"Kontoplan"_s, klientVilkar() + u" AND KontoNr=3000"_s) != 0)
        return sisteKolonne;

    const QString klient = numberToText(gKlient);
    gDB->Execute(insertStatement(
        u"Kontoplan"_s, u"KlientNr,KontoNr,Navn,FastMvaKode,Std,NaerSkjema2,KtoGruppe"_s,
        klient + u",3000,'Salgsinntekter avgiftspliktig',1,True,3000,55"_s));
    return gDB->Execute(insertStatement(u"Hovedbok"_s, u"KlientNr,KontoNr,Aar,AapningsSaldo"_s,
                                        klient + u",3000,"_s + numberToText(gAar) + u",0"_s));
}

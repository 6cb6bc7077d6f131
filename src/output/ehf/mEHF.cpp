#include "output/ehf/mEHF.h"

#include "data/clsAdoUtils.h"
#include "data/mFaktura.h"
#include "output/ehf/EhfTekst.h"
#include "runtime/Conversions.h"
#include "runtime/Format.h"
#include "state/SharedState.h"

#include <QStringBuilder>

using namespace Qt::StringLiterals;

namespace {

constexpr int kKreditnota = 1;

// What a piece of usual size takes, in characters.
constexpr qsizetype kVanligHodelengde = 1024;
constexpr qsizetype kVanligDokumentlengde = 4096;
constexpr qsizetype kVanligLinjelengde = 1024;

constexpr QStringView kLand = u"<cac:Country>\n"
                              u"<cbc:IdentificationCode>NO</cbc:IdentificationCode>\n"
                              u"</cac:Country>\n";

/// One row of an amount.
template<std::size_t Lengde>
void leggBelop(EhfTekst &ut, const char16_t (&merke)[Lengde], Currency belop)
{
    ut.leggVerdi(merke, EhfBelop(belop), u" currencyID=\"NOK\"");
}

struct Adresse
{
    QString linje1, linje2, postNr, poststed;
};

/// The active client as the document names it; empty texts when there is no such client.
struct Selger
{
    QString navn;
    Adresse adresse;
    QString organisasjonsNr; ///< nine digits
    QString giro;
};

/// The order row as the document reads it. Without such an order: empty texts, zero amounts and the
/// date of value 0.
struct Ordrehode
{
    QString ordreNr, egenRef, deresRef;
    QString kundeNr; ///< with the blank in front of a non-negative number
    QString kundeNavn;
    Adresse fakturaAdresse, leveringsadresse;
    qint16 betBet = 0;
    QDate fakDato = dateZero().date();
    QDate forfallDato = dateZero().date();
    QDate levDato = dateZero().date();
    Currency sumNetto, mvaKr, sumBrutto;
};

struct Ordrelinje
{
    qint32 posNr;
    QString produktNr, produktNavn;
    float antall;
    Currency pris;
    QString enhet;
    float mvaPst;
    Currency sumNetto;
};

/// The rightmost nine characters, zero-filled when they are a number; a missing number is all
/// zeros.
QString niSifre(const QString &organisasjonsNr)
{
    return organisasjonsNr.isEmpty() ? u"000000000"_s
                                     : Format(organisasjonsNr.right(9), u"000000000");
}

Selger lesSelger()
{
    enum { Navn, Adr1, Adr2, PostNr, PostSted, OrganisasjonsNr, Giro1 };
    const Ref<ado::Recordset> rs =
        gDB->GetRS(u"SELECT K.Navn,K.Adr1,K.Adr2,K.PostNr,P.PostSted,K.OrganisasjonsNr,K.Giro1 "
                   u"FROM Klient K LEFT JOIN Poststed P ON K.PostNr=P.PostNr "
                   u"WHERE K."_s %
                       klientVilkar(),
                   true);
    Selger selger;
    if (!gDB->EmptyRS(rs)) {
        selger.navn = rs->text(Navn);
        selger.adresse = {rs->text(Adr1), rs->text(Adr2), rs->text(PostNr), rs->text(PostSted)};
        selger.organisasjonsNr = niSifre(rs->text(OrganisasjonsNr));
        selger.giro = rs->text(Giro1);
    }
    rs->close();
    return selger;
}

Ordrehode lesOrdre(const QString &ordreNr)
{
    // KID is selected with the rest and not read: the document carries no payment reference.
    enum {
        OrdreNr,
        EgenRef,
        DeresRef,
        KundeNr,
        KundeNavn,
        FakAdresse1,
        FakAdresse2,
        FakPostNr,
        FakPoststed,
        BetBet,
        KID,
        LevAdresse1,
        LevAdresse2,
        LevPostNr,
        LevPoststed,
        FakDato,
        ForfallDato,
        LevDato,
        SumNetto,
        MvaKr,
        SumBrutto
    };
    const Ref<ado::Recordset> rs = gDB->GetRS(
        u"SELECT OrdreNr,EgenRef,DeresRef,KundeNr,KundeNavn,FakAdresse1,FakAdresse2,FakPostNr,"
        u"FakPoststed,BetBet,KID,"
        u"LevAdresse1,LevAdresse2,LevPostNr,LevPoststed,FakDato,ForfallDato,LevDato,SumNetto,"
        u"MvaKr,SumBrutto "
        u"FROM Ordre WHERE "_s %
            klientVilkar() % u" AND OrdreNr="_s % ordreNr,
        true);
    Ordrehode ordre;
    if (!gDB->EmptyRS(rs)) {
        ordre.ordreNr = rs->text(OrdreNr);
        ordre.egenRef = rs->text(EgenRef);
        ordre.deresRef = rs->text(DeresRef);
        ordre.kundeNr = numberToText(rs->integer(KundeNr));
        ordre.kundeNavn = rs->text(KundeNavn);
        ordre.fakturaAdresse = {rs->text(FakAdresse1), rs->text(FakAdresse2), rs->text(FakPostNr),
                                rs->text(FakPoststed)};
        ordre.leveringsadresse = {rs->text(LevAdresse1), rs->text(LevAdresse2), rs->text(LevPostNr),
                                  rs->text(LevPoststed)};
        ordre.betBet = rs->value(BetBet).toInteger();
        ordre.fakDato = rs->date(FakDato);
        ordre.forfallDato = rs->date(ForfallDato);
        ordre.levDato = rs->date(LevDato);
        ordre.sumNetto = rs->currency(SumNetto);
        ordre.mvaKr = rs->currency(MvaKr);
        ordre.sumBrutto = rs->currency(SumBrutto);
    }
    rs->close();
    return ordre;
}

/// The first address line is the post box and the second the street, for all three addresses.
void leggAdresse(EhfTekst &ut, const Adresse &adresse)
{
    ut.leggVerdi(u"cbc:Postbox", adresse.linje1);
    ut.leggVerdi(u"cbc:StreetName", adresse.linje2);
    ut.leggVerdi(u"cbc:CityName", adresse.poststed);
    ut.leggVerdi(u"cbc:PostalZone", adresse.postNr);
    ut.legg(kLand);
}

void leggNavnOgAdresse(EhfTekst &ut, const QString &navn, const Adresse &adresse)
{
    ut.legg(u"<cac:PartyName>\n");
    ut.leggVerdi(u"cbc:Name", navn);
    ut.legg(u"</cac:PartyName>\n"
            u"<cac:PostalAddress>\n");
    leggAdresse(ut, adresse);
    ut.legg(u"</cac:PostalAddress>\n");
}

/// A credit note refers to itself: an order keeps no link to the invoice that it reverses.
void leggIdentifikasjon(EhfTekst &ut, bool kreditnota, const QString &nummer,
                        const Ordrehode &ordre)
{
    ut.leggVerdi(u"cbc:ID", nummer);
    ut.leggVerdi(u"cbc:IssueDate", EhfDato(ordre.fakDato));
    ut.legg(u"<cbc:DocumentCurrencyCode>NOK</cbc:DocumentCurrencyCode>\n");
    ut.legg(kreditnota ? QStringView(u"<cac:BillingReference>\n"
                                     u"<cac:InvoiceDocumentReference>\n")
                       : QStringView(u"<cac:OrderReference>\n"));
    ut.leggVerdi(u"cbc:ID", ordre.ordreNr);
    ut.legg(kreditnota ? QStringView(u"</cac:InvoiceDocumentReference>\n"
                                     u"</cac:BillingReference>\n")
                       : QStringView(u"</cac:OrderReference>\n"));
}

void leggSelger(EhfTekst &ut, bool kreditnota, const Selger &selger, const Ordrehode &ordre)
{
    ut.legg(u"<cac:AccountingSupplierParty>\n"
            u"<cac:Party>\n");
    leggNavnOgAdresse(ut, selger.navn, selger.adresse);
    if (!kreditnota) {
        ut.legg(u"<cac:PartyTaxScheme>\n"
                u"<cbc:CompanyID>NO");
        ut.legg(selger.organisasjonsNr);
        ut.legg(u"MVA</cbc:CompanyID>\n"
                u"<cac:TaxScheme>\n"
                u"<cbc:ID schemeID=\"UN/ECE 5153\" schemeAgencyID=\"6\">VAT</cbc:ID>\n"
                u"</cac:TaxScheme>\n"
                u"</cac:PartyTaxScheme>\n");
    }
    ut.legg(u"<cac:PartyLegalEntity>\n");
    ut.leggVerdi(u"cbc:CompanyID", selger.organisasjonsNr);
    ut.legg(u"</cac:PartyLegalEntity>\n"
            u"<cac:Contact>\n");
    ut.leggVerdi(u"cbc:ID", ordre.egenRef);
    ut.legg(u"</cac:Contact>\n"
            u"</cac:Party>\n"
            u"</cac:AccountingSupplierParty>\n");
}

void leggKunde(EhfTekst &ut, bool kreditnota, const Selger &selger, const Ordrehode &ordre)
{
    ut.legg(u"<cac:AccountingCustomerParty>\n"
            u"<cac:Party>\n"
            u"<cac:PartyIdentification>\n");
    ut.leggVerdi(u"cbc:ID", ordre.kundeNr);
    ut.legg(u"</cac:PartyIdentification>\n");
    leggNavnOgAdresse(ut, ordre.kundeNavn, ordre.fakturaAdresse);
    if (kreditnota) {
        // The customer's own organisation number is not stored, so the supplier's stands here. The
        // closing tag has a blank and no line feed.
        ut.legg(u"<cac:PartyLegalEntity>\n");
        ut.leggVerdi(u"cbc:CompanyID", selger.organisasjonsNr);
        ut.legg(u"</cac:PartyLegalEntity> ");
    }
    ut.legg(u"<cac:Contact>\n");
    ut.leggVerdi(u"cbc:ID", ordre.deresRef);
    ut.legg(u"</cac:Contact>\n"
            u"</cac:Party>\n"
            u"</cac:AccountingCustomerParty>\n");
}

/// The payment terms in days stand as the means code, and the payment id stays empty.
void leggLeveringOgBetaling(EhfTekst &ut, const Selger &selger, const Ordrehode &ordre)
{
    ut.legg(u"<cac:Delivery>\n");
    ut.leggVerdi(u"cbc:ActualDeliveryDate", EhfDato(ordre.levDato));
    ut.legg(u"<cac:DeliveryLocation>\n"
            u"<cac:Address>\n");
    leggAdresse(ut, ordre.leveringsadresse);
    ut.legg(u"</cac:Address>\n"
            u"</cac:DeliveryLocation>\n"
            u"</cac:Delivery>\n"
            u"<cac:PaymentMeans>\n");
    ut.leggVerdi(u"cbc:PaymentMeansCode", EhfHeltall(ordre.betBet));
    ut.leggVerdi(u"cbc:PaymentDueDate", EhfDato(ordre.forfallDato));
    ut.legg(u"<cbc:PaymentID></cbc:PaymentID>\n"
            u"<cac:PayeeFinancialAccount>\n"
            u"<cbc:ID schemeID=\"BBAN\">");
    ut.legg(selger.giro);
    ut.legg(u"</cbc:ID>\n"
            u"</cac:PayeeFinancialAccount>\n"
            u"</cac:PaymentMeans>\n");
}

/// The percentage of the whole document, worked back from its sums.
Currency mvaProsent(const Ordrehode &ordre)
{
    const double mva = (ordre.mvaKr * Currency::fromInteger(100)).toDouble();
    if (ordre.sumNetto.isZero())
        throw RunTimeError(mva == 0 ? errors::kOverflow : errors::kDivisionByZero);
    return Currency::fromDouble(mva / ordre.sumNetto.toDouble());
}

/// One subtotal for the whole document, whatever rates its lines have, and of category S whether
/// there is VAT or not.
void leggMva(EhfTekst &ut, const Ordrehode &ordre)
{
    ut.legg(u"<cac:TaxTotal>\n");
    leggBelop(ut, u"cbc:TaxAmount", ordre.mvaKr);
    ut.legg(u"<cac:TaxSubtotal>\n");
    leggBelop(ut, u"cbc:TaxableAmount", ordre.sumNetto);
    leggBelop(ut, u"cbc:TaxAmount", ordre.mvaKr);
    ut.legg(u"<cac:TaxCategory>\n"
            u"<cbc:ID>S</cbc:ID>\n");
    ut.leggVerdi(u"cbc:Percent", EhfBelop(mvaProsent(ordre)));
    ut.legg(u"<cac:TaxScheme>\n"
            u"<cbc:ID>VAT</cbc:ID>\n"
            u"</cac:TaxScheme>\n"
            u"</cac:TaxCategory>\n"
            u"</cac:TaxSubtotal>\n"
            u"</cac:TaxTotal>\n");
}

/// The last rows of the piece: no line feed at their end.
void leggSum(EhfTekst &ut, const Ordrehode &ordre)
{
    ut.legg(u"<cac:LegalMonetaryTotal>\n");
    leggBelop(ut, u"cbc:LineExtensionAmount", ordre.sumNetto);
    leggBelop(ut, u"cbc:TaxExclusiveAmount", ordre.sumNetto);
    leggBelop(ut, u"cbc:TaxInclusiveAmount", ordre.sumBrutto);
    leggBelop(ut, u"cbc:PayableAmount", ordre.sumBrutto);
    ut.legg(u"</cac:LegalMonetaryTotal>");
}

/// The attribute of the quantity tag, or nothing for a unit that has no code. Whatever begins with
/// "t" goes out as hours, "tonn" too.
QStringView enhetskode(const QString &enhet)
{
    const QString liten = enhet.toLower();
    if (liten.startsWith(u't'))
        return u" unitCode=\"HUR\"";
    if (liten == u"stk" || liten == u"pcs" || liten.isEmpty())
        return u" unitCode=\"NAR\"";
    return {};
}

/// The line's VAT by its own rate, which need not add up to that of the order.
Currency linjeMva(Currency sumNetto, float mvaPst)
{
    return Currency::fromDouble(sumNetto.toDouble() * double{mvaPst} / 100.0);
}

Ordrelinje lesLinje(const ado::Recordset &rs)
{
    enum {
        PosNr,
        ProduktNr,
        ProduktNavn,
        Antall,
        Pris,
        Enhet,
        RabattPst,
        RabattKr,
        MvaPst,
        SumNetto,
        SumBrutto
    };
    Ordrelinje linje{.posNr = rs.integer(PosNr),
                     .produktNr = trimBlanks(rs.text(ProduktNr)),
                     .produktNavn = trimBlanks(rs.text(ProduktNavn)),
                     .antall = rs.single(Antall),
                     .pris = rs.currency(Pris),
                     .enhet = rs.text(Enhet),
                     .mvaPst = rs.single(MvaPst),
                     .sumNetto = rs.currency(SumNetto)};
    // Read and not written, but a Null among them ends the document like any other.
    (void)rs.single(RabattPst);
    (void)rs.currency(RabattKr);
    (void)rs.currency(SumBrutto);
    return linje;
}

void leggLinje(EhfTekst &ut, bool kreditnota, const Ordrelinje &linje)
{
    // The credit note's own tags have a blank behind them, and neither closing tag a line feed.
    ut.legg(kreditnota ? QStringView(u"<cac:CreditNoteLine> \n")
                       : QStringView(u"<cac:InvoiceLine>\n"));
    ut.leggVerdi(u"cbc:ID", EhfHeltall(linje.posNr / 10));
    // Alone with its sign: the amounts have lost theirs.
    const QString mengde = trimLeftBlanks(numberToText(linje.antall));
    if (kreditnota)
        ut.leggVerdi(u"cbc:CreditedQuantity", mengde, enhetskode(linje.enhet));
    else
        ut.leggVerdi(u"cbc:InvoicedQuantity", mengde, enhetskode(linje.enhet));
    leggBelop(ut, u"cbc:LineExtensionAmount", linje.sumNetto);
    // Order and invoice are one row, so there is no line of another order to refer to.
    ut.legg(u"<cac:OrderLineReference>\n"
            u"<cbc:LineID>0</cbc:LineID>\n"
            u"</cac:OrderLineReference>\n"
            u"<cac:TaxTotal>\n");
    leggBelop(ut, u"cbc:TaxAmount", linjeMva(linje.sumNetto, linje.mvaPst));
    ut.legg(u"</cac:TaxTotal>\n"
            u"<cac:Item>\n");
    ut.leggVerdi(u"cbc:Name", linje.produktNavn);
    ut.legg(u"<cac:SellersItemIdentification>\n");
    ut.leggVerdi(u"cbc:ID", linje.produktNr);
    ut.legg(u"</cac:SellersItemIdentification>\n"
            u"<cac:ClassifiedTaxCategory>\n");
    ut.leggVerdi(u"cbc:ID", linje.mvaPst == 0 ? u"Z" : u"S");
    ut.leggVerdi(u"cbc:Percent", EhfProsent(linje.mvaPst));
    ut.legg(u"<cac:TaxScheme>\n"
            u"<cbc:ID>VAT</cbc:ID>\n"
            u"</cac:TaxScheme>\n"
            u"</cac:ClassifiedTaxCategory>\n"
            u"</cac:Item>\n"
            u"<cac:Price>\n");
    leggBelop(ut, u"cbc:PriceAmount", linje.pris);
    ut.legg(u"</cac:Price>\n");
    ut.legg(kreditnota ? QStringView(u"</cac:CreditNoteLine> ")
                       : QStringView(u"</cac:InvoiceLine>"));
}

} // namespace

QString EhfHode(int kreditnota, const QString &stilark)
{
    const bool erKreditnota = kreditnota == kKreditnota;
    EhfTekst ut(kVanligHodelengde);
    ut.legg(u"<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
            u"<?xml-stylesheet type='text/xsl' href='");
    ut.legg(stilark);
    ut.legg(
        u"'?>\n"
        u"<!-- XML file generated by Strekkbok Regningsdel (https://www.strekkbok.example/)-->\n");
    if (erKreditnota)
        ut.legg(u"<CreditNote xsi:schemaLocation=\""
                u"urn:oasis:names:specification:ubl:schema:xsd:CreditNote-2 "
                u"UBL-CreditNote-2.0.xsd\"\n"
                u"xmlns=\"urn:oasis:names:specification:ubl:schema:xsd:CreditNote-2\"\n");
    else
        ut.legg(u"<Invoice xsi:schemaLocation=\""
                u"urn:oasis:names:specification:ubl:schema:xsd:Invoice-2 "
                u"UBL-Invoice-2.0.xsd\"\n"
                u"xmlns=\"urn:oasis:names:specification:ubl:schema:xsd:Invoice-2\"\n");
    ut.legg(
        u"xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\"\n"
        u"xmlns:cac=\"urn:oasis:names:specification:ubl:schema:xsd:CommonAggregateComponents-2\"\n"
        u"xmlns:cbc=\"urn:oasis:names:specification:ubl:schema:xsd:CommonBasicComponents-2\"\n"
        u"xmlns:ext=\"urn:oasis:names:specification:ubl:schema:xsd:CommonExtensionComponents-2\">\n"
        u"<cbc:UBLVersionID>2.0</cbc:UBLVersionID>\n"
        u"<cbc:CustomizationID>urn:www.cenbii.eu:transaction:");
    ut.legg(erKreditnota ? u"biicoretrdm014" : u"biicoretrdm010");
    ut.legg(u":ver1.0</cbc:CustomizationID>\n"
            u"<cbc:ProfileID>urn:www.cenbii.eu:profile:bii05:ver1.0</cbc:ProfileID>");
    return std::move(ut).tekst();
}

QString EhfDokument(int kreditnota, const QString &ordreNr)
{
    const bool erKreditnota = kreditnota == kKreditnota;
    const Selger selger = lesSelger();
    const Ordrehode ordre = lesOrdre(ordreNr);

    EhfTekst ut(kVanligDokumentlengde);
    leggIdentifikasjon(ut, erKreditnota, ordreNr, ordre);
    leggSelger(ut, erKreditnota, selger, ordre);
    leggKunde(ut, erKreditnota, selger, ordre);
    if (!erKreditnota)
        leggLeveringOgBetaling(ut, selger, ordre);
    leggMva(ut, ordre);
    leggSum(ut, ordre);
    return std::move(ut).tekst();
}

QString EhfLinjer(int kreditnota, const QString &ordreNr)
{
    const QString klient = klientVilkar();
    // The condition on P.KlientNr undoes the left join: a line without a product is left out.
    const Ref<ado::Recordset> rs = gDB->GetRS(
        u"SELECT L.PosNr,L.ProduktNr,L.ProduktNavn,L.Antall,L.Pris,P.Enhet,L.RabattPst,L.RabattKr,"
        u"L.MvaPst,L.SumNetto,L.SumBrutto "
        u"FROM (Ordre O INNER JOIN OrdreLinjer L ON O.ID=L.OrdreID) "
        u"LEFT JOIN Produkt P ON L.ProduktNr=P.ProduktNr "
        u"WHERE O."_s %
            klient % u" AND P."_s % klient % u" AND O.OrdreNr="_s % ordreNr,
        true);
    if (gDB->EmptyRS(rs))
        return {};

    EhfTekst ut(rs->recordCount() * kVanligLinjelengde);
    for (; !rs->eof(); rs->moveNext())
        leggLinje(ut, kreditnota == kKreditnota, lesLinje(*rs));
    rs->close();
    return std::move(ut).tekst();
}

QString EhfSlutt(int kreditnota)
{
    return kreditnota == kKreditnota ? u"</CreditNote>"_s : u"</Invoice>"_s;
}

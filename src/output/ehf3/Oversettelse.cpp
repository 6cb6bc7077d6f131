#include "output/ehf3/Oversettelse.h"

#include "output/ehf3/Belop.h"
#include "output/ehf3/Dokument.h"
#include "output/ehf3/Enhet.h"
#include "output/ehf3/XmlTekst.h"

using namespace Qt::StringLiterals;

namespace {

using namespace ehf3;

// --- The words of the table

/// An element's name in an invoice and in a credit note; none where it has no place.
struct Merke
{
    constexpr Merke(const char *begge) : faktura(begge), kreditnota(begge) {}
    constexpr Merke(std::string_view iFaktura, std::string_view iKreditnota)
        : faktura(iFaktura), kreditnota(iKreditnota)
    {
    }

    std::string_view faktura;
    std::string_view kreditnota;
};
constexpr std::string_view kIngen;

/// One row: an element on its level, or the group that the deeper ones behind it stand in.
template<class Kilde>
struct Rad
{
    int niva;
    Merke merke;
    QString (*verdi)(const Kilde &) = nullptr; ///< none for a group
    XmlTekst::Attributt (*attributt)(const Kilde &) = nullptr;
};

template<class Kilde>
XmlTekst::Attributt orgNr(const Kilde &)
{
    return {"schemeID", "0192"};
}

template<class Kilde>
XmlTekst::Attributt kroner(const Kilde &)
{
    return {"currencyID", "NOK"};
}

XmlTekst::Attributt enhet(const Dokumentlinje &linje)
{
    return {"unitCode", enhetskode(linje.enhet)};
}

template<class Kilde>
QString norge(const Kilde &)
{
    return u"NO"_s;
}

template<class Kilde>
QString mva(const Kilde &)
{
    return u"VAT"_s;
}

template<class Kilde>
QString kategori(const Kilde &kilde)
{
    return kilde.sats.isZero() ? u"Z"_s : u"S"_s;
}

QString belop(Currency verdi)
{
    return tall(verdi, 2);
}

QString dato(QDate dag)
{
    return QString::number(10000 * dag.year() + 100 * dag.month() + dag.day())
        .rightJustified(8, u'0')
        .insert(6, u'-')
        .insert(4, u'-');
}

/// The first line of an address that has one, and the second of one that has both.
QString gate(const Adresse &adresse)
{
    return adresse.linje1.isEmpty() ? adresse.linje2 : adresse.linje1;
}
QString gate2(const Adresse &adresse)
{
    return adresse.linje1.isEmpty() ? QString() : adresse.linje2;
}

/// An order without a place of delivery was delivered at the buyer's, as on paper.
const Adresse &levering(const Dokument &d)
{
    return d.ordre.levering.erTom() ? d.ordre.kunde.adresse : d.ordre.levering;
}

/// A company's form is the last word of its name, rarely the first; as on paper.
bool erForetak(const Dokument &d)
{
    const QString navn = u' ' + d.ordre.selger.navn.toUpper();
    return navn.endsWith(u" AS") || navn.endsWith(u" ASA") || navn.endsWith(u" NUF") ||
           navn.startsWith(u" AS ");
}

QString betalingsvilkar(const Dokument &d)
{
    return d.erKreditnota || !d.ordre.betalingsfrist
               ? QString()
               : u"Netto %1 dager"_s.arg(*d.ordre.betalingsfrist);
}

// --- The table

using D = Dokument;
using M = Mvagruppe;
using L = Dokumentlinje;

// clang-format off

/// Down to the sum of VAT.
constexpr Rad<Dokument> kHode[] = {
    {1, "cbc:CustomizationID", [](const D &) { return u"urn:cen.eu:en16931:2017#compliant#urn:fdc:peppol.eu:2017:poacc:billing:3.0"_s; }},
    {1, "cbc:ProfileID", [](const D &) { return u"urn:fdc:peppol.eu:2017:poacc:billing:01:1.0"_s; }},
    {1, "cbc:ID", [](const D &d) { return QString::number(d.ordre.ordreNr); }},
    {1, "cbc:IssueDate", [](const D &d) { return dato(d.ordre.fakturert); }},
    {1, {"cbc:DueDate", kIngen}, [](const D &d) { return dato(d.ordre.forfall); }},
    {1, {"cbc:InvoiceTypeCode", "cbc:CreditNoteTypeCode"}, [](const D &d) { return d.erKreditnota ? u"381"_s : u"380"_s; }},
    {1, "cbc:DocumentCurrencyCode", [](const D &) { return u"NOK"_s; }},
    {1, "cbc:BuyerReference", [](const D &d) { return d.ordre.deresRef; }},
    {1, "cac:OrderReference"},
    {2,   "cbc:ID", [](const D &d) { return d.ordre.deresRef.isEmpty() ? QString::number(d.ordre.ordreNr) : QString(); }},

    {1, "cac:AccountingSupplierParty"},
    {2,   "cac:Party"},
    {3,     "cbc:EndpointID", [](const D &d) { return d.ordre.selger.orgNr; }, orgNr},
    {3,     "cac:PostalAddress"},
    {4,       "cbc:StreetName", [](const D &d) { return gate(d.ordre.selger.adresse); }},
    {4,       "cbc:AdditionalStreetName", [](const D &d) { return gate2(d.ordre.selger.adresse); }},
    {4,       "cbc:CityName", [](const D &d) { return d.ordre.selger.adresse.sted; }},
    {4,       "cbc:PostalZone", [](const D &d) { return d.ordre.selger.adresse.postNr; }},
    {4,       "cac:Country"},
    {5,         "cbc:IdentificationCode", norge},
    {3,     "cac:PartyTaxScheme"},
    {4,       "cbc:CompanyID", [](const D &d) { return u"NO"_s + d.ordre.selger.orgNr + u"MVA"_s; }},
    {4,       "cac:TaxScheme"},
    {5,         "cbc:ID", mva},
    {3,     "cac:PartyTaxScheme"},
    {4,       "cbc:CompanyID", [](const D &d) { return erForetak(d) ? u"Foretaksregisteret"_s : QString(); }},
    {4,       "cac:TaxScheme"},
    {5,         "cbc:ID", [](const D &d) { return erForetak(d) ? u"TAX"_s : QString(); }},
    {3,     "cac:PartyLegalEntity"},
    {4,       "cbc:RegistrationName", [](const D &d) { return d.ordre.selger.navn; }},
    {4,       "cbc:CompanyID", [](const D &d) { return d.ordre.selger.orgNr; }, orgNr},
    {3,     "cac:Contact"},
    {4,       "cbc:Name", [](const D &d) { return d.ordre.varRef; }},
    {4,       "cbc:Telephone", [](const D &d) { return d.ordre.selger.telefon; }},

    {1, "cac:AccountingCustomerParty"},
    {2,   "cac:Party"},
    {3,     "cbc:EndpointID", [](const D &d) { return d.ordre.kunde.orgNr; }, orgNr},
    {3,     "cac:PartyIdentification"},
    {4,       "cbc:ID", [](const D &d) { return QString::number(d.ordre.kunde.nummer); }},
    {3,     "cac:PostalAddress"},
    {4,       "cbc:StreetName", [](const D &d) { return gate(d.ordre.kunde.adresse); }},
    {4,       "cbc:AdditionalStreetName", [](const D &d) { return gate2(d.ordre.kunde.adresse); }},
    {4,       "cbc:CityName", [](const D &d) { return d.ordre.kunde.adresse.sted; }},
    {4,       "cbc:PostalZone", [](const D &d) { return d.ordre.kunde.adresse.postNr; }},
    {4,       "cac:Country"},
    {5,         "cbc:IdentificationCode", norge},
    {3,     "cac:PartyLegalEntity"},
    {4,       "cbc:RegistrationName", [](const D &d) { return d.ordre.kunde.navn; }},
    {4,       "cbc:CompanyID", [](const D &d) { return d.ordre.kunde.orgNr; }, orgNr},

    {1, "cac:Delivery"},
    {2,   "cbc:ActualDeliveryDate", [](const D &d) { return dato(d.ordre.levert); }},
    {2,   "cac:DeliveryLocation"},
    {3,     "cac:Address"},
    {4,       "cbc:StreetName", [](const D &d) { return gate(levering(d)); }},
    {4,       "cbc:AdditionalStreetName", [](const D &d) { return gate2(levering(d)); }},
    {4,       "cbc:CityName", [](const D &d) { return levering(d).sted; }},
    {4,       "cbc:PostalZone", [](const D &d) { return levering(d).postNr; }},
    {4,       "cac:Country"},
    {5,         "cbc:IdentificationCode", norge},

    {1, "cac:PaymentMeans"},
    {2,   "cbc:PaymentMeansCode", [](const D &) { return u"30"_s; }},
    {2,   {kIngen, "cbc:PaymentDueDate"}, [](const D &d) { return dato(d.ordre.forfall); }},
    {2,   "cbc:PaymentID", [](const D &d) { return d.ordre.kid; }},
    {2,   "cac:PayeeFinancialAccount"},
    {3,     "cbc:ID", [](const D &d) { return d.ordre.selger.konto; }},
    {1, "cac:PaymentTerms"},
    {2,   "cbc:Note", betalingsvilkar},

    {1, "cac:TaxTotal"},
    {2,   "cbc:TaxAmount", [](const D &d) { return belop(d.mva); }, kroner},
};

/// For each rate, in the sum of VAT.
constexpr Rad<Mvagruppe> kMvagruppe[] = {
    {2,   "cac:TaxSubtotal"},
    {3,     "cbc:TaxableAmount", [](const M &m) { return belop(m.grunnlag); }, kroner},
    {3,     "cbc:TaxAmount", [](const M &m) { return belop(m.mva); }, kroner},
    {3,     "cac:TaxCategory"},
    {4,       "cbc:ID", kategori},
    {4,       "cbc:Percent", [](const M &m) { return tall(m.sats, 0); }},
    {4,       "cac:TaxScheme"},
    {5,         "cbc:ID", mva},
};

constexpr Rad<Dokument> kSummer[] = {
    {1, "cac:LegalMonetaryTotal"},
    {2,   "cbc:LineExtensionAmount", [](const D &d) { return belop(d.netto); }, kroner},
    {2,   "cbc:TaxExclusiveAmount", [](const D &d) { return belop(d.netto); }, kroner},
    {2,   "cbc:TaxInclusiveAmount", [](const D &d) { return belop(d.brutto); }, kroner},
    {2,   "cbc:PayableRoundingAmount", [](const D &d) { return d.avrunding.isZero() ? QString() : belop(d.avrunding); }, kroner},
    {2,   "cbc:PayableAmount", [](const D &d) { return belop(d.aBetale); }, kroner},
};

/// For each line.
constexpr Rad<Dokumentlinje> kLinje[] = {
    {1, {"cac:InvoiceLine", "cac:CreditNoteLine"}},
    {2,   "cbc:ID", [](const L &l) { return QString::number(l.nr); }},
    {2,   {"cbc:InvoicedQuantity", "cbc:CreditedQuantity"}, [](const L &l) { return tall(l.antall, 0); }, enhet},
    {2,   "cbc:LineExtensionAmount", [](const L &l) { return belop(l.netto); }, kroner},
    {2,   "cac:Item"},
    {3,     "cbc:Description", [](const L &l) { return l.beskrivelse; }},
    {3,     "cbc:Name", [](const L &l) { return l.navn; }},
    {3,     "cac:SellersItemIdentification"},
    {4,       "cbc:ID", [](const L &l) { return l.varenr; }},
    {3,     "cac:ClassifiedTaxCategory"},
    {4,       "cbc:ID", kategori},
    {4,       "cbc:Percent", [](const L &l) { return tall(l.sats, 0); }},
    {4,       "cac:TaxScheme"},
    {5,         "cbc:ID", mva},
    {2,   "cac:Price"},
    {3,     "cbc:PriceAmount", [](const L &l) { return belop(l.pris); }, kroner},
};

// clang-format on

// --- From the table to the text

constexpr std::string_view kFaktura =
    "Invoice xmlns=\"urn:oasis:names:specification:ubl:schema:xsd:Invoice-2\""
    " xmlns:cac=\"urn:oasis:names:specification:ubl:schema:xsd:CommonAggregateComponents-2\""
    " xmlns:cbc=\"urn:oasis:names:specification:ubl:schema:xsd:CommonBasicComponents-2\"";
constexpr std::string_view kKreditnota =
    "CreditNote xmlns=\"urn:oasis:names:specification:ubl:schema:xsd:CreditNote-2\""
    " xmlns:cac=\"urn:oasis:names:specification:ubl:schema:xsd:CommonAggregateComponents-2\""
    " xmlns:cbc=\"urn:oasis:names:specification:ubl:schema:xsd:CommonBasicComponents-2\"";

template<class Kilde, std::size_t antall>
void skrivRader(XmlTekst &ut, const Rad<Kilde> (&rader)[antall], const Kilde &kilde,
                bool kreditnota)
{
    for (const Rad<Kilde> &rad : rader) {
        const std::string_view merke = kreditnota ? rad.merke.kreditnota : rad.merke.faktura;
        if (merke.empty())
            continue;
        if (!rad.verdi) {
            ut.gruppe(rad.niva, merke);
            continue;
        }
        ut.element(rad.niva, merke, rad.verdi(kilde),
                   rad.attributt ? rad.attributt(kilde) : XmlTekst::Attributt{});
    }
}

} // namespace

QByteArray ehf3::skrivXml(const Dokument &dokument)
{
    const bool kreditnota = dokument.erKreditnota;
    XmlTekst ut(kreditnota ? kKreditnota : kFaktura);
    skrivRader(ut, kHode, dokument, kreditnota);
    for (const Mvagruppe &gruppe : dokument.mvagrupper)
        skrivRader(ut, kMvagruppe, gruppe, kreditnota);
    skrivRader(ut, kSummer, dokument, kreditnota);
    for (const Dokumentlinje &linje : dokument.linjer)
        skrivRader(ut, kLinje, linje, kreditnota);
    return std::move(ut).ferdig();
}

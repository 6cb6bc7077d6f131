#include "output/ehf3/Mangler.h"

#include "output/ehf3/Belop.h"
#include "output/ehf3/Dokument.h"
#include "rules/Ordre.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

using namespace ehf3;

/// So many digits, the last one of which is the check digit by modulus 11 of the others, with the
/// weights 2 to 7 from the right; not nought alone.
bool erGyldigNummer(const QString &nummer, qsizetype lengde)
{
    const auto erSiffer = [](QChar c) { return c >= u'0' && c <= u'9'; };
    const auto erNull = [](QChar c) { return c == u'0'; };
    if (nummer.size() != lengde || !std::all_of(nummer.begin(), nummer.end(), erSiffer) ||
        std::all_of(nummer.begin(), nummer.end(), erNull))
        return false;
    int sum = 0;
    for (qsizetype fraHoyre = 0; fraHoyre < lengde; ++fraHoyre) {
        const int vekt = fraHoyre == 0 ? 1 : int((fraHoyre - 1) % 6) + 2;
        sum += vekt * nummer[lengde - 1 - fraHoyre].digitValue();
    }
    return sum % 11 == 0;
}

/// As a user writes it.
QString vist(Currency tallet, int desimaler)
{
    return tall(tallet, desimaler).replace(u'.', u',');
}

/// Collects the reasons.
class Gransker
{
public:
    explicit Gransker(const Dokument &dokument) : m_dokument(dokument), m_ordre(dokument.ordre) {}

    QStringList grunner()
    {
        granskSelger();
        granskKunde();
        granskOrdre();
        for (const Dokumentlinje &linje : m_dokument.linjer)
            granskLinje(linje);
        for (const Mvagruppe &gruppe : m_dokument.mvagrupper)
            granskSats(gruppe);
        // What is said of a line, or of nothing to be paid, tells why the sums do not agree.
        const bool linjeneGaarOpp =
            !m_dokument.linjer.empty() &&
            std::ranges::all_of(m_dokument.linjer,
                                [](const Dokumentlinje &linje) { return gaarOpp(linje); });
        if (linjeneGaarOpp && !m_dokument.aBetale.isZero() && !gaarOpp(m_dokument)) {
            iOrdrebildet(u"%1 har %2 å betale, mens linjene med mva blir %3"_s.arg(
                ordre(), vist(m_dokument.aBetale, 2), vist(m_dokument.brutto, 2)));
        }
        return m_grunner;
    }

private:
    void iKlientkortet(const QString &felt)
    {
        m_grunner += (u"Klienten "_s + m_ordre.selger.navn).trimmed() + u" mangler "_s + felt +
                     u"; rettes i klientkortet"_s;
    }
    /// An order that has been sent is changed no more.
    void iOrdrebildet(const QString &grunn)
    {
        m_grunner += grunn + (m_ordre.status == ordrestatus::kOrdre
                                  ? u"; rettes i ordrebildet"_s
                                  : u"; ordren krediteres og skrives på nytt"_s);
    }

    [[nodiscard]] QString ordre() const { return u"Ordre %1"_s.arg(m_ordre.ordreNr); }

    void granskSelger()
    {
        constexpr qsizetype kKontosifre = 11;
        const Selger &selger = m_ordre.selger;
        if (!selger.finnes) {
            m_grunner += u"Klienten finnes ikke i klientregisteret"_s;
            return;
        }
        if (selger.navn.isEmpty())
            iKlientkortet(u"navn"_s);
        if (!erGyldigNummer(selger.orgNr, kOrgNrSifre))
            iKlientkortet(u"gyldig organisasjonsnummer"_s);
        if (!erGyldigNummer(selger.konto, kKontosifre))
            iKlientkortet(u"gyldig bankkonto"_s);
    }

    void granskKunde()
    {
        const Kunde &kunde = m_ordre.kunde;
        if (kunde.navn.isEmpty())
            iOrdrebildet(ordre() + u" mangler kundenavn"_s);
        if (!kunde.finnes) {
            iOrdrebildet(u"%1 har kunde %2, som ikke finnes i kunderegisteret"_s.arg(
                ordre(), QString::number(kunde.nummer)));
        } else if (!erGyldigNummer(kunde.orgNr, kOrgNrSifre)) {
            m_grunner +=
                u"Kunden %1 mangler gyldig organisasjonsnummer; rettes i kundekortet"_s.arg(
                    kunde.navn.isEmpty() ? QString::number(kunde.nummer) : kunde.navn);
        }
    }

    void granskOrdre()
    {
        const auto granskDato = [&](QDate dato, const QString &felt) {
            if (!dato.isValid())
                iOrdrebildet(ordre() + u" mangler "_s + felt);
        };
        granskDato(m_ordre.fakturert, u"fakturadato"_s);
        granskDato(m_ordre.forfall, u"forfallsdato"_s);
        granskDato(m_ordre.levert, u"leveringsdato"_s);
        if (m_dokument.aBetale.isZero())
            iOrdrebildet(ordre() + u" har ingenting å betale"_s);
        if (m_dokument.linjer.empty())
            iOrdrebildet(ordre() + u" har ingen linjer"_s);
    }

    void granskLinje(const Dokumentlinje &linje)
    {
        if (linje.navn.isEmpty())
            iOrdrebildet(u"Linje %1 mangler produktnavn"_s.arg(linje.nr));
        if (!gaarOpp(linje)) {
            iOrdrebildet(u"Linje %1 har sum netto %2, som ikke er antall %3 ganger pris %4"_s.arg(
                QString::number(linje.nr), vist(linje.netto, 2), vist(linje.antall, 0),
                vist(linje.pris, 2)));
        }
    }

    /// By the rules a rate that rounds to nought has no VAT.
    void granskSats(const Mvagruppe &gruppe)
    {
        const Currency halv = Currency::fromTenThousandths(Currency::kScale / 2);
        if (gruppe.sats.isNegative() || (gruppe.sats < halv && gruppe.mva.abs() >= halv)) {
            iOrdrebildet(u"%1 har mva-satsen %2 %, som formatet ikke tar"_s.arg(
                ordre(), vist(gruppe.sats, 0)));
        }
    }

    static constexpr qsizetype kOrgNrSifre = 9;

    const Dokument &m_dokument;
    const Grunnlag &m_ordre;
    QStringList m_grunner;
};

} // namespace

QStringList ehf3::manglerI(const Dokument &dokument)
{
    return Gransker(dokument).grunner();
}

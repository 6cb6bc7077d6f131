#include "posting/run/Bokkontroll.h"

#include "data/clsAdoUtils.h"
#include "data/mFaktura.h"
#include "posting/run/Bokfortur.h"
#include "rules/Ordre.h"
#include "runtime/Conversions.h"
#include "runtime/Format.h"
#include "runtime/Value.h"
#include "state/SharedState.h"

#include <QHash>

#include <array>
#include <map>
#include <optional>
#include <set>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

constexpr qint32 kKundekonto = 1500;
constexpr qint32 kAvrundingskonto = 7395;

/// The rows of a query, of which a Null counts as nothing.
class Rader
{
public:
    explicit Rader(const QString &sql)
    {
        m_rader.setActiveConnection(gDB->ConnectionString());
        m_rader.setSource(sql);
        m_rader.open();
    }
    [[nodiscard]] bool slutt() const { return m_rader.eof(); }
    void neste() { m_rader.moveNext(); }
    [[nodiscard]] bool erNull(int felt) const { return m_rader.isNull(felt); }
    [[nodiscard]] qint32 tall(int felt) const { return erNull(felt) ? 0 : m_rader.integer(felt); }
    [[nodiscard]] QString tekst(int felt) const
    {
        return erNull(felt) ? QString() : m_rader.text(felt);
    }
    [[nodiscard]] Currency belop(int felt) const
    {
        return erNull(felt) ? Currency() : m_rader.currency(felt);
    }

private:
    ado::Recordset m_rader;
};

/// What the database says to a query; empty when it can be read.
QString lesefeil(const QString &sql)
{
    try {
        const Rader rader(sql);
        return {};
    } catch (const RunTimeError &feil) {
        return feil.description();
    }
}

struct Bilag
{
    qint32 nr = 0;
    bool erFaktura = false;
    qint32 antPost = 0;
    qint32 salgslinjer = 0;
    Currency differanse; // debet less credit
};

struct Ordre
{
    qint32 nr = 0;
    QString status;
    bool iAaret = false; // invoiced in the active year
    Currency brutto;
    Currency sumLinjer; // with the rounding
};

/// Other programs may have stored parts of an øre, which would be a fault of 0,00.
QString kroner(Currency belop)
{
    const bool heleOre = belop.tenThousandths() % (Currency::kScale / 100) == 0;
    return heleOre ? trimBlanks(Format(belop, u"# ##0.00")) : Value(belop).toText();
}

/// What the customer's line of an invoice has in cFaktNr.
QString fakturamerke(qint32 ordreNr)
{
    return u'F' + QString::number(ordreNr);
}

/// The customers' lines of the active year, as they name their invoices.
QString kundelinjer(const QString &felter)
{
    return u"SELECT "_s + felter +
           u" FROM BilagLinjer INNER JOIN Bilag ON BilagLinjer.BilagID=Bilag.ID WHERE Bilag."_s +
           klientVilkar() + u" AND Bilag.Aar="_s + numberToText(gAar);
}

class Kontroll
{
public:
    static constexpr int antallSteg() { return int(kSteg.size()); }
    QStringList kjor(const std::function<void(int gjort, int alle)> &steg)
    {
        int gjort = 0;
        for (const auto ett : kSteg) {
            steg(gjort++, antallSteg());
            try {
                (this->*ett)();
            } catch (const RunTimeError &) {
                if (m_funn.isEmpty())
                    throw;
                break; // by a row that has been told; without it the rest cannot be judged
            }
        }
        return m_funn;
    }

private:
    void kontrollerFil();
    void kontrollerLesbarhet();
    void lesBilag();
    void lesOrdre();
    void lesLinjer();
    void kontrollerBilag();
    void kontrollerLinjerUtenBilag();
    void kontrollerKundelinjer();
    void kontrollerKonti();
    void kontrollerOrdre();
    void kontrollerOrdrenumre();

    static constexpr std::array kSteg{
        &Kontroll::kontrollerFil,
        &Kontroll::kontrollerLesbarhet,
        &Kontroll::lesBilag,
        &Kontroll::lesOrdre,
        &Kontroll::lesLinjer,
        &Kontroll::kontrollerBilag,
        &Kontroll::kontrollerLinjerUtenBilag,
        &Kontroll::kontrollerKundelinjer,
        &Kontroll::kontrollerKonti,
        &Kontroll::kontrollerOrdre,
        &Kontroll::kontrollerOrdrenumre,
    };

    struct Kundelinje
    {
        qint32 bilag; // its ID
        Currency belop;
    };

    std::map<qint32, Bilag> m_bilag;                          // by ID
    std::map<qint32, Ordre> m_ordre;                          // by ID
    std::map<QString, std::vector<Kundelinje>> m_kundelinjer; // by cFaktNr
    std::map<qint32, qint32> m_konti;                         // the first voucher's number
    QStringList m_funn;
};

void Kontroll::kontrollerFil()
{
    ado::Connection forbindelse;
    forbindelse.open(gDB->ConnectionString());
    for (const QString &feil : forbindelse.damages())
        m_funn += u"databasefilen: "_s + feil;
}

/// One row that cannot be read, such as a date that another program has left in a form of its own,
/// empties the screens of all rows.
void Kontroll::kontrollerLesbarhet()
{
    for (const QString &tabell : {u"Ordre"_s, u"OrdreLinjer"_s, u"Bilag"_s, u"BilagLinjer"_s}) {
        if (lesefeil(u"SELECT * FROM "_s + tabell).isEmpty())
            continue;
        for (Rader rader(u"SELECT ID FROM "_s + tabell); !rader.slutt(); rader.neste()) {
            const qint32 id = rader.tall(0);
            const QString feil = lesefeil(u"SELECT * FROM %1 WHERE ID=%2"_s.arg(tabell).arg(id));
            if (!feil.isEmpty())
                m_funn += u"raden med ID %1 i %2 kan ikke leses: %3"_s.arg(id).arg(tabell, feil);
        }
    }
}

void Kontroll::lesBilag()
{
    for (Rader rader(u"SELECT ID,BilagNr,BilagType,AntPost FROM Bilag WHERE "_s + klientVilkar() +
                     u" AND Aar="_s + numberToText(gAar));
         !rader.slutt(); rader.neste())
        m_bilag[rader.tall(0)] = {rader.tall(1), rader.tekst(2) == u"Faktura", rader.tall(3), 0,
                                  Currency()};
}

void Kontroll::lesOrdre()
{
    for (Rader rader(u"SELECT ID,OrdreNr,OrdreStatus,Year(FakDato),SumBrutto,Avrunding FROM Ordre "
                     u"WHERE "_s +
                     klientVilkar());
         !rader.slutt(); rader.neste()) {
        if (rader.erNull(1))
            m_funn += u"ordren med ID %1 har ikke noe nummer"_s.arg(rader.tall(0));
        else
            m_ordre[rader.tall(0)] = {rader.tall(1), rader.tekst(2), rader.tall(3) == gAar,
                                      rader.belop(4), rader.belop(5)};
    }
    for (Rader rader(u"SELECT OrdreLinjer.OrdreID,OrdreLinjer.SumBrutto FROM OrdreLinjer INNER "
                     u"JOIN Ordre ON OrdreLinjer.OrdreID=Ordre.ID WHERE Ordre."_s +
                     klientVilkar());
         !rader.slutt(); rader.neste()) {
        const auto ordre = m_ordre.find(rader.tall(0));
        if (ordre != m_ordre.end()) // else it came later, or has no number
            ordre->second.sumLinjer += rader.belop(1);
    }
}

void Kontroll::lesLinjer()
{
    for (Rader rader(kundelinjer(u"BilagLinjer.BilagID,BilagLinjer.Konto,BilagLinjer.Debet,"
                                 u"BilagLinjer.Kredit,BilagLinjer.cFaktNr"_s));
         !rader.slutt(); rader.neste()) {
        const auto funnet = m_bilag.find(rader.tall(0));
        if (funnet == m_bilag.end()) // it came after the vouchers were read
            continue;
        Bilag &bilag = funnet->second;
        const qint32 konto = rader.tall(1);
        const Currency belop = rader.belop(2) - rader.belop(3);
        const QString merke = rader.tekst(4);
        bilag.differanse += belop;
        m_konti.try_emplace(konto, bilag.nr);
        if (!merke.isEmpty())
            m_kundelinjer[merke].push_back({rader.tall(0), belop});
        else if (konto != kAvrundingskonto)
            ++bilag.salgslinjer;
    }
}

void Kontroll::kontrollerBilag()
{
    std::map<qint32, int> numre;
    for (const auto &[id, bilag] : m_bilag) {
        const QString navn = u"bilag %1"_s.arg(bilag.nr);
        if (++numre[bilag.nr] == 2)
            m_funn += navn + u" finnes flere ganger"_s;
        if (!bilag.differanse.isZero())
            m_funn +=
                navn + u" går ikke i balanse: "_s + kroner(bilag.differanse.abs()) +
                (bilag.differanse.isNegative() ? u" for mye i kredit"_s : u" for mye i debet"_s);
        if (bilag.erFaktura && bilag.antPost != bilag.salgslinjer)
            m_funn += navn + u" skal ha %1 salgslinjer (AntPost), men har %2"_s.arg(bilag.antPost)
                                 .arg(bilag.salgslinjer);
    }
}

/// They belong to no client.
void Kontroll::kontrollerLinjerUtenBilag()
{
    for (Rader rader(u"SELECT Konto,Tekst,Debet,Kredit FROM BilagLinjer WHERE BilagID=0"_s);
         !rader.slutt(); rader.neste())
        m_funn += u"linje uten bilag: konto %1, «%2», debet %3, kredit %4"_s.arg(rader.tall(0))
                      .arg(rader.tekst(1), kroner(rader.belop(2)), kroner(rader.belop(3)));
}

void Kontroll::kontrollerKundelinjer()
{
    QHash<QString, const Ordre *> ordreMed; // by the mark, of two the older
    for (const auto &[id, ordre] : m_ordre) {
        const Ordre *&funnet = ordreMed[fakturamerke(ordre.nr)];
        funnet = funnet ? funnet : &ordre;
    }
    for (const auto &[merke, linjer] : m_kundelinjer) {
        QStringList numre;
        for (const Kundelinje &linje : linjer)
            numre += QString::number(m_bilag[linje.bilag].nr);
        if (linjer.size() > 1)
            m_funn += u"%1 har %2 kundelinjer, i bilag %3"_s.arg(merke)
                          .arg(linjer.size())
                          .arg(numre.join(u", "_s));
        const Ordre *const ordre = ordreMed.value(merke);
        if (!ordre)
            continue;
        for (const Kundelinje &linje : linjer) {
            const Currency forskjell = linje.belop - ordre->brutto;
            if (!forskjell.isZero())
                m_funn +=
                    u"bilag %1: kundelinjen til faktura %2 er %3 mot fakturasummen %4, forskjell %5"_s
                        .arg(m_bilag[linje.bilag].nr)
                        .arg(ordre->nr)
                        .arg(kroner(linje.belop), kroner(ordre->brutto), kroner(forskjell));
        }
    }
}

void Kontroll::kontrollerKonti()
{
    std::set<qint32> kjente;
    for (Rader rader(u"SELECT KontoNr FROM Kontoplan WHERE "_s + klientVilkar()); !rader.slutt();
         rader.neste())
        kjente.insert(rader.tall(0));
    for (const auto &[konto, bilagNr] : m_konti) {
        if (!kjente.contains(konto))
            m_funn += u"konto %1 mangler i kontoplanen, brukt i bilag %2"_s.arg(konto).arg(bilagNr);
    }
}

void Kontroll::kontrollerOrdre()
{
    for (const auto &[id, ordre] : m_ordre) {
        const bool harBilag = m_kundelinjer.contains(fakturamerke(ordre.nr));
        const bool skalHaBilag =
            ordre.status == ordrestatus::kBokfort || ordre.status == ordrestatus::kBetalt;
        if (ordre.iAaret && skalHaBilag && !harBilag)
            m_funn += u"faktura %1 er «%2», men har ikke bilag"_s.arg(ordre.nr).arg(ordre.status);
        if (ordre.status == ordrestatus::kFakturert && harBilag)
            m_funn += u"faktura %1 er «Fakturert», men har bilag fra før"_s.arg(ordre.nr);
        const Currency forskjell = ordre.brutto - ordre.sumLinjer;
        if (!forskjell.isZero())
            m_funn += u"ordre %1: linjene og avrundingen gir %2, hodet har %3, forskjell %4"_s
                          .arg(ordre.nr)
                          .arg(kroner(ordre.sumLinjer), kroner(ordre.brutto), kroner(forskjell));
    }
}

void Kontroll::kontrollerOrdrenumre()
{
    std::map<qint32, int> numre;
    for (const auto &[id, ordre] : m_ordre)
        ++numre[ordre.nr];
    std::optional<qint64> forrige; // two numbers may be further apart than any number is from 0
    for (const auto &[nr, antall] : numre) {
        if (forrige && nr - *forrige == 2)
            m_funn += u"ordrenummer %1 mangler"_s.arg(nr - 1);
        else if (forrige && nr - *forrige > 2)
            m_funn += u"ordrenummer %1 til %2 mangler"_s.arg(*forrige + 1).arg(nr - 1);
        if (antall > 1)
            m_funn += u"ordrenummer %1 finnes %2 ganger"_s.arg(nr).arg(antall);
        forrige = nr;
    }
}

} // namespace

QStringList KontrollerBoker(const std::function<void(int gjort, int alle)> &steg)
{
    QStringList funn = Kontroll().kjor(steg);
    if (!funn.isEmpty()) {
        // A run that is under way looks like faults until it is done.
        const Bokfortur tur([&] { steg(0, Kontroll::antallSteg()); });
        funn = Kontroll().kjor(steg);
    }
    return funn;
}

int AntallMedBilagFraFor()
{
    std::set<QString> bokforte;
    for (Rader rader(kundelinjer(u"BilagLinjer.cFaktNr"_s) + u" AND BilagLinjer.Konto="_s +
                     numberToText(kKundekonto));
         !rader.slutt(); rader.neste())
        bokforte.insert(rader.tekst(0));
    int antall = 0;
    for (Rader rader(u"SELECT OrdreNr FROM Ordre WHERE "_s + klientVilkar() + u" AND "_s +
                     StatusLik(ordrestatus::kFakturert));
         !rader.slutt(); rader.neste())
        antall += bokforte.contains(fakturamerke(rader.tall(0))) ? 1 : 0;
    return antall;
}

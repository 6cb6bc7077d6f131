#include "output/ehf3/Grunnlag.h"

#include "data/clsAdoUtils.h"
#include "output/ehf3/XmlTekst.h"
#include "runtime/Conversions.h"
#include "state/SharedState.h"

#include <QStringBuilder>

#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

using namespace ehf3;

/// The rows of a query, one after the other.
class Rader
{
public:
    explicit Rader(const QString &setning) : m_rs(gDB->GetRS(setning, true))
    {
        if (!m_rs) // the text is ours, and is not to be left behind for whoever asks next
            throw RunTimeError(errors::kInvalidCall, gDB->LastError());
    }

    [[nodiscard]] bool erSlutt() const { return m_rs->eof(); }
    void neste() { m_rs->moveNext(); }

    [[nodiscard]] QString tekst(int kol) const
    {
        return m_rs->isNull(kol) ? QString() : lovligTekst(m_rs->text(kol)).trimmed();
    }
    [[nodiscard]] qint32 heltall(int kol) const
    {
        return m_rs->isNull(kol) ? 0 : m_rs->integer(kol);
    }
    [[nodiscard]] bool mangler(int kol) const { return m_rs->isNull(kol); }
    [[nodiscard]] float single(int kol) const { return m_rs->isNull(kol) ? 0 : m_rs->single(kol); }
    [[nodiscard]] Currency belop(int kol) const
    {
        return m_rs->isNull(kol) ? Currency() : m_rs->currency(kol);
    }
    [[nodiscard]] QDate dato(int kol) const
    {
        return m_rs->isNull(kol) ? QDate() : m_rs->date(kol);
    }
    /// Four columns, from `kol` on.
    [[nodiscard]] Adresse adresse(int kol) const
    {
        return {tekst(kol), tekst(kol + 1), tekst(kol + 2), tekst(kol + 3)};
    }
    /// What is left of a number that is written with blanks and points, and "NO" and "MVA" around.
    [[nodiscard]] QString nummer(int kol) const
    {
        QString tekst = m_rs->isNull(kol) ? QString() : m_rs->text(kol).toUpper();
        return tekst.remove(u"NO"_s).remove(u"MVA"_s).removeIf(
            [](QChar c) { return c.isSpace() || c == u'.'; });
    }

private:
    Ref<ado::Recordset> m_rs;
};

} // namespace

const Grunnlag *ehf3::Grunnlagsleser::les(qint32 ordreNr)
{
    if (ordreNr < m_fra || ordreNr >= m_til) {
        try {
            lesBlokk(ordreNr, m_blokk);
        } catch (const RunTimeError &) {
            if (m_blokk == 1)
                throw;
            lesBlokk(ordreNr, 1); // which order cannot be read is told of that one alone
        }
    }
    const auto funnet = m_ordrer.find(ordreNr);
    return funnet == m_ordrer.end() ? nullptr : &funnet->second;
}

void ehf3::Grunnlagsleser::lesBlokk(qint32 fra, qint32 antall)
{
    m_ordrer.clear();
    m_fra = fra;
    m_til = fra; // until it is read
    const qint64 siste = std::min<qint64>(m_fra + antall - 1, std::numeric_limits<qint32>::max());
    QString utvalg = u" WHERE O.KlientNr="_s % numberToText(m_klient) % u" AND O.OrdreNr"_s;
    // A server plans for a range of any length and anew each time; of one number it knows that it
    // is one row's.
    if (siste == m_fra)
        utvalg += u'=' + numberToText(m_fra);
    else
        utvalg += u">="_s % numberToText(m_fra) % u" AND O.OrdreNr<="_s % numberToText(siste);
    lesSelger();
    lesHoder(utvalg);
    if (!m_ordrer.empty())
        lesLinjer(utvalg);
    m_til = m_fra + antall;
}

void ehf3::Grunnlagsleser::lesSelger()
{
    if (m_selger)
        return;
    enum { Navn, Adr1, OrganisasjonsNr = Adr1 + 4, Giro1, TlfArbeid };
    const Rader rader(u"SELECT K.Navn,K.Adr1,K.Adr2,K.PostNr,P.PostSted,K.OrganisasjonsNr,K.Giro1,"
                      u"K.TlfArbeid FROM Klient K LEFT JOIN Poststed P ON K.PostNr=P.PostNr "
                      u"WHERE K.KlientNr="_s %
                      numberToText(m_klient));
    if (rader.erSlutt()) {
        m_selger.emplace();
        return;
    }
    m_selger = Selger{.finnes = true,
                      .navn = rader.tekst(Navn),
                      .adresse = rader.adresse(Adr1),
                      .telefon = rader.tekst(TlfArbeid),
                      .orgNr = rader.nummer(OrganisasjonsNr),
                      .konto = rader.nummer(Giro1)};
}

void ehf3::Grunnlagsleser::lesHoder(const QString &utvalg)
{
    enum {
        OrdreNr,
        KundeNr,
        KundeNavn,
        FakAdresse1,
        OrganisasjonsNr = FakAdresse1 + 4,
        LevAdresse1,
        EgenRef = LevAdresse1 + 4,
        DeresRef,
        KID,
        BetBet,
        FakDato,
        ForfallDato,
        LevDato,
        SumBrutto,
        Avrunding,
        OrdreStatus,
        KundensNr
    };
    Rader rader(
        u"SELECT O.OrdreNr,O.KundeNr,O.KundeNavn,O.FakAdresse1,O.FakAdresse2,O.FakPostNr,"
        u"O.FakPoststed,K.OrganisasjonsNr,O.LevAdresse1,O.LevAdresse2,O.LevPostNr,O.LevPoststed,"
        u"O.EgenRef,O.DeresRef,O.KID,O.BetBet,O.FakDato,O.ForfallDato,O.LevDato,O.SumBrutto,"
        u"O.Avrunding,O.OrdreStatus,K.KundeNr "
        u"FROM Ordre O LEFT JOIN KundeLev K ON O.KlientNr=K.KlientNr AND O.KundeNr=K.KundeNr"_s %
        utvalg);
    for (; !rader.erSlutt(); rader.neste()) {
        Grunnlag &hode = m_ordrer[rader.heltall(OrdreNr)];
        hode.ordreNr = rader.heltall(OrdreNr);
        hode.status = rader.tekst(OrdreStatus);
        hode.selger = *m_selger;
        hode.kunde = {.nummer = rader.heltall(KundeNr),
                      .finnes = !rader.mangler(KundensNr),
                      .navn = rader.tekst(KundeNavn),
                      .adresse = rader.adresse(FakAdresse1),
                      .orgNr = rader.nummer(OrganisasjonsNr)};
        hode.levering = rader.adresse(LevAdresse1);
        hode.varRef = rader.tekst(EgenRef);
        hode.deresRef = rader.tekst(DeresRef);
        hode.kid = rader.tekst(KID);
        hode.fakturert = rader.dato(FakDato);
        hode.forfall = rader.dato(ForfallDato);
        hode.levert = rader.dato(LevDato);
        hode.aBetale = rader.belop(SumBrutto);
        if (!rader.mangler(Avrunding))
            hode.avrunding = rader.belop(Avrunding);
        if (!rader.mangler(BetBet))
            hode.betalingsfrist = rader.heltall(BetBet);
    }
}

/// Product numbers need not be unique: of several products the first one made has the unit.
void ehf3::Grunnlagsleser::lesLinjer(const QString &utvalg)
{
    enum { OrdreNr, ID, ProduktNr, ProduktNavn, Antall, Pris, MvaPst, SumNetto, Enhet };
    Rader rader(u"SELECT O.OrdreNr,L.ID,L.ProduktNr,L.ProduktNavn,L.Antall,L.Pris,L.MvaPst,"
                u"L.SumNetto,P.Enhet FROM (Ordre O INNER JOIN OrdreLinjer L ON O.ID=L.OrdreID) "
                u"LEFT JOIN Produkt P ON L.ProduktNr=P.ProduktNr AND O.KlientNr=P.KlientNr"_s %
                utvalg % u" ORDER BY O.OrdreNr,L.PosNr,L.ID,P.ID"_s);
    for (qint32 forrige = 0; !rader.erSlutt(); rader.neste()) {
        const qint32 id = rader.heltall(ID);
        if (id == forrige)
            continue;
        forrige = id;
        m_ordrer[rader.heltall(OrdreNr)].linjer.push_back({.varenr = rader.tekst(ProduktNr),
                                                           .tekst = rader.tekst(ProduktNavn),
                                                           .enhet = rader.tekst(Enhet),
                                                           .antall = rader.single(Antall),
                                                           .sats = rader.single(MvaPst),
                                                           .pris = rader.belop(Pris),
                                                           .netto = rader.belop(SumNetto)});
    }
}

#include "posting/run/Bokforing.h"

#include "data/RowValues.h"
#include "data/clsAdoUtils.h"
#include "data/mFaktura.h"
#include "posting/run/Bokfortur.h"
#include "rules/Ordre.h"
#include "runtime/Conversions.h"
#include "runtime/Format.h"
#include "state/Messages.h"
#include "state/SharedState.h"

#include <optional>

using namespace Qt::StringLiterals;
using namespace bokforkolonne;

namespace {

constexpr qint16 kSalgskonto = 3000;
constexpr qint16 kAvgiftsfriKonto = 3100;
constexpr QStringView kStandardKonto = u"3000"; // in the combo box: no account was chosen
constexpr QStringView kUtenLoyve = u"<nei>";
constexpr qint16 kForhandsvisning = 0; // how the journals are run

QString sqlBelop(Currency belop)
{
    return BelopTilSql(belop, u"#0.00");
}

/// A Null counts as nothing.
Currency belop(const ado::Recordset &rad, QStringView felt)
{
    const int indeks = rad.fieldIndex(felt);
    return rad.isNull(indeks) ? Currency() : rad.currency(indeks);
}

/// Whether the VAT group has that rate; the rate of a group without one is none at all.
bool harSats(const ado::Recordset &gruppe, const QString &sats)
{
    const int indeks = gruppe.fieldIndex(u"Mva");
    return !gruppe.isNull(indeks) && double{gruppe.single(indeks)} == toDouble(sats);
}

QString klient()
{
    return numberToText(gKlient);
}

/// One run, with what it carries from invoice to invoice. A statement is put together bit by bit,
/// so one of which a bit has failed is incomplete and the database refuses it.
class Kjoring
{
public:
    explicit Kjoring(BokforSkjerm &skjerm) : m_skjerm(skjerm), m_valgt(trimBlanks(skjerm.konto()))
    {
        brukValgtKonto();
        if (trimBlanks(skjerm.loyve()) != kUtenLoyve)
            m_loyve = m_valgt; // the box of the permit only decides whether there is a text
    }

    void kjor();

private:
    [[nodiscard]] QString celle(int kol) const { return m_skjerm.celle(kol, m_rad); }
    [[nodiscard]] QString sqlDato(int kol) const
    {
        return Format(toDate(celle(kol)), u"\\#mm\\/dd\\/yyyy\\#");
    }
    [[nodiscard]] bool skalBokfores(int rad) const
    {
        return m_skjerm.erMerket(rad) && !m_skjerm.celle(kFakNr, rad).isEmpty();
    }
    [[nodiscard]] int antallMerket() const;

    void lagArbeidstabell();
    bool bokforRad();
    void tell(const ado::Recordset &ordre);
    void skrivBilag(const Ref<ado::Recordset> &grupper);
    void skrivSalgslinje(const ado::Recordset &gruppe);
    void skrivKundelinje();
    void skrivAvrunding();
    void skrivArbeidsrad();
    void settBokfort();
    void visJournaler();

    void brukValgtKonto();
    [[nodiscard]] int mvaKode(const ado::Recordset &gruppe) const;
    void skrivLinje(const QString &kolonner, const QString &verdier)
    {
        utfor(insertStatement(u"BilagLinjer"_s, kolonner, verdier));
    }
    void utfor(const QString &setning)
    {
        m_tur->behold();
        passOver([&] { gDB->Execute(setning); });
    }

    BokforSkjerm &m_skjerm;
    std::optional<Bokfortur> m_tur; // for as long as the run and its journals last
    const QString m_valgt;          // the text of the account's combo box
    QString m_loyve;

    // Carried through the whole run.
    qint16 m_konto = kSalgskonto;
    bool m_erKredit = false;
    Currency m_avrunding;
    qint16 m_antall = 0;

    // Of the invoice under way; what cannot be read stands as for the one before it.
    int m_rad = 0;
    QDate m_dato = dateZero().date();
    int m_antPost = 0;
    QString m_bilagNr;
    qint32 m_bilagId = 0;
    Currency m_sum;
};

void Kjoring::kjor()
{
    const int merket = antallMerket();
    int behandlet = 0;
    const auto vis = [&] { m_skjerm.framdrift(behandlet, merket); };
    vis();
    m_tur.emplace(vis);
    lagArbeidstabell();
    const int rader = m_skjerm.antallRader();
    for (m_rad = 1; m_rad <= rader; ++m_rad) {
        if (!skalBokfores(m_rad))
            continue;
        m_tur->behold();
        if (!bokforRad())
            return;
        ++behandlet;
        vis();
    }
    m_skjerm.lesFakturaer();
    if (m_antall > 0) {
        m_skjerm.melding(numberToText(m_antall) + u" faktura"_s +
                             (m_antall >= 2 ? u"er"_s : QString()) + u" er bokført."_s,
                         messages::kInformation);
        visJournaler();
    }
}

int Kjoring::antallMerket() const
{
    int antall = 0;
    for (int rad = 1; rad <= m_skjerm.antallRader(); ++rad)
        antall += skalBokfores(rad) ? 1 : 0;
    return antall;
}

void Kjoring::lagArbeidstabell()
{
    utfor(u"DROP TABLE tmpTbl"_s);
    utfor(u"CREATE TABLE tmpTbl (ID COUNTER CONSTRAINT ID PRIMARY KEY, KlientNr SHORT, BilagNr "
          u"LONG, FakNr LONG, KndNr LONG, Type TEXT(10), FakDto DATE, Forfall DATE, Belop "
          u"CURRENCY)"_s);
}

/// False when the invoice ends the run.
bool Kjoring::bokforRad()
{
    passOver([&] { m_dato = toDate(celle(kFakDato)).date(); });
    if (m_dato.year() != gAar) {
        m_skjerm.melding(u"Fakturadato for merket faktura ligger utenfor aktivt regnskapsår.\r\n"
                         u"Du må stå i riktig år i Strekkbok for å kunne bokføre fakturaen(e)."_s,
                         messages::kExclamation);
        return false;
    }
    const Ref<ado::Recordset> ordre = gDB->GetRS(u"SELECT * FROM Ordre WHERE "_s + klientVilkar() +
                                                     ErFakturertVilkar(celle(kOrdreId)),
                                                 true);
    // A list that is no longer true must not post an order twice.
    if (gDB->EmptyRS(ordre))
        return true;
    tell(*ordre);

    const Ref<ado::Recordset> grupper = gDB->GetRS(
        u"SELECT MvaPst As Mva,Sum(SumNetto) As Netto,Sum(SumBrutto) As Brutto FROM OrdreLinjer "
        u"WHERE OrdreID="_s +
            numberToText(ordre->integer(u"ID")) + u" GROUP BY MvaPst HAVING Sum(SumBrutto)<>0;"_s,
        true);
    skrivBilag(grupper);
    m_sum = Currency();
    // Groups that could not be read are none.
    for (; grupper && !grupper->eof(); grupper->moveNext())
        skrivSalgslinje(*grupper);
    skrivKundelinje();
    skrivAvrunding();
    skrivArbeidsrad();
    settBokfort();
    return true;
}

void Kjoring::tell(const ado::Recordset &ordre)
{
    passOver([&] { m_antall = toInteger(m_antall + 1.0); });
    if (enters([&] { return belop(ordre, u"SumBrutto").isNegative(); }))
        m_erKredit = true; // and so it stays for all that follow
    // A voucher carries the rounding of those before it as well, on both sides.
    passOver([&] { m_avrunding += belop(ordre, u"Avrunding"); });
}

void Kjoring::skrivBilag(const Ref<ado::Recordset> &grupper)
{
    // The groups alone, without the customer's line and the rounding's.
    passOver([&] { m_antPost = grupper->recordCount(); });
    m_bilagNr = NyttBilagnr(qint16(m_dato.year()));
    QString dato;
    passOver([&] { dato = sqlDato(kFakDato); });
    RowValues bilag;
    bilag.add(u"KlientNr", klient()).add(u"BilagNr", m_bilagNr).add(u"BilagDato", dato);
    bilag.addText(u"Tekst", (m_erKredit ? u"Kreditnota "_s : u"Faktura "_s) + celle(kKundeNavn));
    bilag.addText(u"BilagType", u"Faktura"_s); // the same for both
    bilag.add(u"AntPost", numberToText(m_antPost)).add(u"Aar", numberToText(m_dato.year()));
    passOver([&] { m_bilagId = gDB->ExecuteID(bilag.insertInto(u"Bilag"_s)); });
}

void Kjoring::skrivSalgslinje(const ado::Recordset &gruppe)
{
    const int kode = mvaKode(gruppe);
    if (kode == 0)
        m_konto = kAvgiftsfriKonto; // and it stays so for all that follows
    brukValgtKonto();

    QString verdier = numberToText(m_bilagId) + u',' + numberToText(m_konto) + u",'"_s +
                      (m_erKredit ? u"Kreditnota "_s : u"Kundefaktura "_s) + celle(kFakNr) +
                      u"',"_s;
    passOver([&] {
        const Currency brutto = gruppe.currency(u"Brutto");
        verdier +=
            m_erKredit ? sqlBelop(brutto.abs()) + u",0,"_s : u"0,"_s + sqlBelop(brutto) + u',';
    });
    verdier += numberToText(kode) + u",'"_s + m_loyve + u'\'';
    passOver([&] { m_sum += gruppe.currency(u"Brutto"); });
    skrivLinje(u"BilagID,Konto,Tekst,Debet,Kredit,MVAkode,Loyve"_s, verdier);
}

void Kjoring::skrivKundelinje()
{
    passOver([&] { m_sum += m_avrunding; });
    QString verdier = numberToText(m_bilagId) + u",1500,"_s +
                      (m_erKredit ? u"'Kreditnota "_s : u"'Kundefaktura "_s) + celle(kFakNr) +
                      u"',"_s + celle(kKundeNr) + u',';
    passOver([&] {
        verdier += m_erKredit ? u"0,"_s + sqlBelop(m_sum.abs()) + u',' : sqlBelop(m_sum) + u",0,"_s;
    });
    passOver([&] { verdier += sqlDato(kFakDato) + u',' + sqlDato(kForfall); });
    verdier += u",0,'F"_s + celle(kFakNr) + u"','"_s + m_loyve + u'\'';
    skrivLinje(
        u"BilagID,Konto,Tekst,LevNr,Debet,Kredit,FaktDato,FaktForfall,MVAkode,cFaktNr,Loyve"_s,
        verdier);
}

void Kjoring::skrivAvrunding()
{
    if (m_avrunding.isZero())
        return;
    // The side follows the sign alone, for credit notes too.
    QString verdier = numberToText(m_bilagId) + u",7395,'Øreavrunding',"_s;
    passOver([&] {
        const QString kroner = sqlBelop(m_avrunding.abs());
        verdier += m_avrunding.isNegative() ? kroner + u",0"_s : u"0,"_s + kroner;
    });
    skrivLinje(u"BilagID,Konto,Tekst,Debet,Kredit,MVAkode"_s, verdier + u",0"_s);
}

void Kjoring::skrivArbeidsrad()
{
    QString verdier = klient() + u',' + m_bilagNr + u',' + celle(kFakNr) + u',' + celle(kKundeNr) +
                      // By the sign, where the voucher's texts go by the mark.
                      (m_sum.isNegative() ? u",'Kreditnota',"_s : u",'Faktura',"_s);
    passOver([&] { verdier += sqlDato(kFakDato) + u',' + sqlDato(kForfall); });
    passOver([&] { verdier += u',' + sqlBelop(m_sum); });
    utfor(insertStatement(u"tmpTbl"_s, u"KlientNr,BilagNr,FakNr,KndNr,Type,FakDto,Forfall,Belop"_s,
                          verdier));
}

void Kjoring::settBokfort()
{
    const QString id = celle(kOrdreId);
    utfor(BokfortSql(id));
    if (enters([&] {
            return gDB->GetCount(u"Ordre"_s, u"ID="_s + id + u" AND "_s +
                                                 StatusLik(ordrestatus::kBokfort)) == 0;
        }))
        utfor(BokfortSql(id));
}

void Kjoring::visJournaler()
{
    for (const QString &rapport : {u"Fakturajournal.rpt"_s, u"Salgsjournal.rpt"_s}) {
        m_skjerm.skrivRapport(rapport, kForhandsvisning, u"{Klient.KlientNr}="_s + klient(), {},
                              {});
        m_skjerm.slippHendelser();
    }
}

/// A number beyond 16 bits leaves the account as it is.
void Kjoring::brukValgtKonto()
{
    if (m_valgt != kStandardKonto)
        passOver([&] { m_konto = toInteger(leadingNumber(m_valgt)); });
}

int Kjoring::mvaKode(const ado::Recordset &gruppe) const
{
    int kode = 0;
    if (enters([&] { return harSats(gruppe, gMva25); }))
        kode = 1;
    else if (enters([&] { return harSats(gruppe, gMva10); }))
        kode = 3;
    else if (enters([&] { return harSats(gruppe, gMva15); }))
        kode = 5;
    return kode != 0 && m_erKredit ? kode + 1 : kode;
}

} // namespace

void BokforMerkede(BokforSkjerm &skjerm)
{
    Kjoring(skjerm).kjor();
}

QString NyttBilagnr(qint16 aar)
{
    QString nummer = u"1"_s;
    const Ref<ado::Recordset> rs =
        gDB->GetRS(u"SELECT Max(BilagNr) AS MaxNr FROM Bilag WHERE "_s + klientVilkar() +
                       u" AND Year(Bilag.BilagDato)="_s + numberToText(aar),
                   true);
    // A year without vouchers has one row with Null in it.
    if (!gDB->EmptyRS(rs))
        passOver([&] { nummer = numberToText(qint64{rs->integer(u"MaxNr")} + 1); });
    return nummer;
}

#include "order/OrdreFelter.h"

#include "platform/forms/LockedText.h"
#include "platform/forms/OneLine.h"
#include "rules/Forfall.h"
#include "runtime/Conversions.h"

#include <QLabel>
#include <QLineEdit>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

// The organisation number's field shows our reference until a customer is picked.
constexpr std::array<QStringView, ordrefelt::kAntall> kDatafelter{
    u"KundeNavn",   u"FakAdresse1", u"FakAdresse2",
    u"FakPostNr",   u"FakPostSted", u"LevAdresse1",
    u"LevAdresse2", u"LevPostNr",   u"LevPostSted",
    u"BetBet",      u"OrdreDato",   u"LevDato",
    u"FakDato",     u"ForfallDato", u"EgenRef",
    u"DeresRef",    u"OrdreNr",     u"OrdreStatus",
    u"KundeNr",     u"KID",         u"SumNetto",
    u"MvaKr",       u"SumBrutto",   u"Kontrollsiffer",
    u"EgenRef",     u"Avrunding",   u"",
};

/// Reads a field; an error in what stands there gets `form` as its second line.
template<class Les>
auto medForm(const QString &form, Les les)
{
    try {
        return les();
    } catch (const RunTimeError &feil) {
        if (feil.number() != errors::kTypeMismatch)
            throw;
        throw RunTimeError(feil.number(), feil.description() + u'\n' + form);
    }
}

} // namespace

OrdreFelter::OrdreFelter(const QWidget &skjerm)
{
    for (int nr = 0; nr < ordrefelt::kAntall; ++nr) {
        auto *const felt = skjerm.findChild<QLineEdit *>(u"txtFields_%1"_s.arg(nr));
        Q_ASSERT(felt);
        holdOneLine(*felt);
        keepWhileLocked(*felt);
        m_felter[size_t(nr)] = felt;
    }
}

QString OrdreFelter::tekst(int nr) const
{
    return (*this)[nr].text();
}

void OrdreFelter::settTekst(int nr, const QString &tekst) const
{
    QLineEdit &felt = (*this)[nr];
    const ProgramWrites skriver;
    felt.setText(tekst);
    felt.home(false);
}

QDate OrdreFelter::dato(int nr) const
{
    return medForm(ledetekst(nr) + u": skriv datoen som dd.mm.åååå, for eksempel 31.12.2014."_s,
                   [&] { return toDate(tekst(nr)).date(); });
}

QString OrdreFelter::forfallFra(QDate fra) const
{
    return medForm(ledetekst(ordrefelt::kBetBet) +
                       u": skriv antall dager med siffer, for eksempel 14."_s,
                   [&] { return ForfallsDato(fra, tekst(ordrefelt::kBetBet)); });
}

QString OrdreFelter::ledetekst(int nr) const
{
    const QLineEdit *felt = &(*this)[nr];
    for (const QLabel *ledetekst : felt->window()->findChildren<QLabel *>()) {
        if (ledetekst->buddy() == felt)
            return ledetekst->text().remove(u'&').remove(u':');
    }
    return {};
}

int OrdreFelter::nrFor(const QObject *kontroll) const
{
    const auto funnet = std::ranges::find(m_felter, kontroll);
    return funnet == m_felter.end() ? -1 : int(funnet - m_felter.begin());
}

QStringView OrdreFelter::datafelt(int nr)
{
    return kDatafelter.at(size_t(nr));
}

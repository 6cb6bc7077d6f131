#include "output/printout/Fakturautskrift.h"

#include "rules/Innstilling.h"
#include "runtime/Conversions.h"
#include "runtime/Paths.h"
#include "state/SharedState.h"

using namespace Qt::StringLiterals;

namespace {

/// The stored text without the store's closing zero character.
QString tekstinnstilling(const QString &nokkel, const QString &standard)
{
    return LesInnstilling(nokkel, standard).remove(QChar(u'\0'));
}

} // namespace

QString rapportMappe(const QString &komponentmappe)
{
    const QString foran = paths::applicationFolder(komponentmappe);
    return foran == komponentmappe ? komponentmappe + u'\\' : foran + u"\\rpt\\Faktura\\"_s;
}

QString fakturablankett()
{
    const double blankett = leadingNumber(LesInnstilling(u"Fakturablankett"_s, u"0"_s));
    if (blankett == 1)
        return u"Fak-mgiro-mlogo.rpt"_s;
    if (blankett == 2)
        return u"Fak-ugiro-ulogo.rpt"_s;
    if (blankett == 3)
        return u"Fak-ugiro-mlogo.rpt"_s;
    return u"Fak-mgiro-ulogo.rpt"_s;
}

QString fakturautvalg(const QString &fakNr)
{
    return u"{Ordre.KlientNr}="_s + numberToText(gKlient) + u" and {Ordre.OrdreNr}="_s + fakNr;
}

QString fakTypeFormel(bool erKreditnota, bool original)
{
    if (erKreditnota)
        return original ? u"FakType=-1"_s : u"FakType=-2"_s;
    return original ? u"FakType=1"_s : u"FakType=0"_s;
}

QString merknadFormel()
{
    if (tekstinnstilling(u"BrukTekst1"_s, u"0"_s) != u"1")
        return {};
    return u"Note='"_s + tekstinnstilling(u"FakturaTekst1"_s, {}) + u'\'';
}

QString fakturafilnavn(bool erKreditnota, const QString &fakNr)
{
    return (erKreditnota ? u"Kreditnota-"_s : u"Faktura-"_s) + trimBlanks(fakNr);
}

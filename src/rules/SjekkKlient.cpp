#include "rules/SjekkKlient.h"

#include "data/clsAdoUtils.h"
#include "data/mFaktura.h"
#include "runtime/Conversions.h"
#include "state/SharedState.h"

using namespace Qt::StringLiterals;

QString SjekkKlient()
{
    constexpr qsizetype kTelefonsifre = 8;
    const QString maaRettes = u"\tMå rettes\r\n"_s;
    const QString borRettes = u"\tBør rettes\r\n"_s;

    Ref<ado::Recordset> rs;
    passOver([&] {
        rs = gDB->GetRS(u"SELECT PostNr,TlfArbeid,OrganisasjonsNr,Giro1 FROM Klient WHERE "_s +
                            klientVilkar(),
                        true);
    });
    // Each of these is true as well where there is nothing to read.
    if (!enters([&] { return !rs->eof(); }))
        return {};
    const auto erNull = [&](QStringView felt) { return rs->isNull(rs->fieldIndex(felt)); };
    const auto erBlank = [&](QStringView felt) {
        return enters([&] { return erNull(felt) || trimBlanks(rs->text(felt)).isEmpty(); });
    };

    QString feil;
    // Not trimmed, alone of the four: blanks count as a postal code.
    if (enters([&] { return erNull(u"PostNr") || rs->text(u"PostNr").isEmpty(); }))
        feil += u"PostNr mangler"_s + maaRettes;
    if (erBlank(u"TlfArbeid"))
        feil += u"Tlf. arbeid mangler"_s + borRettes;
    else if (enters([&] { return trimBlanks(rs->text(u"TlfArbeid")).size() < kTelefonsifre; }))
        feil += u"Tlf. arbeid feil"_s + borRettes;
    if (erBlank(u"OrganisasjonsNr"))
        feil += u"Org.Nr mangler"_s + maaRettes;
    if (erBlank(u"Giro1"))
        feil += u"Bankkonto mangler"_s + maaRettes;
    return feil;
}

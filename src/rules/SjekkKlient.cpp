#include "rules/SjekkKlient.h"

#include "data/clsAdoUtils.h"
#include "data/mFaktura.h"
#include "runtime/Conversions.h"
#include "state/SharedState.h"

using namespace Qt::StringLiterals;

QString SjekkKlient()
{
    constexpr qsizetype kTelephoneDigits = 8;
    const QString required = u"\tMå rettes\r\n"_s;
    const QString advised = u"\tBør rettes\r\n"_s;

    Ref<ado::Recordset> rs;
    passOver([&] {
        rs = gDB->GetRS(u"SELECT PostNr,TlfArbeid,OrganisasjonsNr,Giro1 FROM Klient WHERE "_s +
                            klientVilkar(),
                        true);
    });
    // Each of these is true as well where there is nothing to read.
    const bool hasRow = enters([&] { return !rs->eof(); });
    if (!hasRow)
        return {};
    const auto isNull = [&](QStringView column) { return rs->isNull(rs->fieldIndex(column)); };
    const auto isBlank = [&](QStringView column) {
        return enters([&] { return isNull(column) || trimBlanks(rs->text(column)).isEmpty(); });
    };

    QString faults;
    // Not trimmed, alone of the four: blanks count as a postal code.
    if (enters([&] { return isNull(u"PostNr") || rs->text(u"PostNr").isEmpty(); }))
        faults += u"PostNr mangler"_s + required;
    if (isBlank(u"TlfArbeid"))
        faults += u"Tlf. arbeid mangler"_s + advised;
    else if (enters([&] { return trimBlanks(rs->text(u"TlfArbeid")).size() < kTelephoneDigits; }))
        faults += u"Tlf. arbeid feil"_s + advised;
    if (isBlank(u"OrganisasjonsNr"))
        faults += u"Org.Nr mangler"_s + required;
    if (isBlank(u"Giro1"))
        faults += u"Bankkonto mangler"_s + required;
    return faults;
}

#include "runtime/RunTimeError.h"

using namespace Qt::StringLiterals;

namespace {

/// The standard description of an error number.
QString standardDescription(int number)
{
    switch (number) {
    case errors::kInvalidCall:
        return u"Ugyldig prosedyrekall eller argument"_s;
    case errors::kOverflow:
        return u"Overflyt"_s;
    case 7:
        return u"Ikke nok minne"_s;
    case 9:
        return u"Indeksen er utenfor det gyldige området"_s;
    case errors::kDivisionByZero:
        return u"Divisjon med null"_s;
    case errors::kTypeMismatch:
        return u"Typene stemmer ikke overens"_s;
    case 52:
        return u"Ugyldig filnavn eller filnummer"_s;
    case errors::kFileNotFound:
        return u"Finner ikke filen"_s;
    case 55:
        return u"Filen er allerede åpen"_s;
    case 57:
        return u"Inn/ut-feil på enheten"_s;
    case 58:
        return u"Filen finnes allerede"_s;
    case 61:
        return u"Disken er full"_s;
    case 62:
        return u"Lesing forbi slutten av filen"_s;
    case 68:
        return u"Enheten er ikke tilgjengelig"_s;
    case 70:
        return u"Ingen tilgang"_s;
    case 71:
        return u"Disken er ikke klar"_s;
    case errors::kPathAccess:
        return u"Feil ved tilgang til bane eller fil"_s;
    case 76:
        return u"Finner ikke banen"_s;
    case errors::kObjectNotSet:
        return u"Objektvariabelen er ikke satt"_s;
    case errors::kInvalidUseOfNull:
        return u"Ugyldig bruk av Null"_s;
    case 438:
        return u"Objektet har ikke denne egenskapen eller metoden"_s;
    case 481:
        return u"Ugyldig bilde"_s;
    case 3021:
        return u"Det finnes ingen gjeldende post"_s;
    case 3265:
        return u"Finner ikke elementet i samlingen"_s;
    case 3704:
        return u"Operasjonen er ikke tillatt når objektet er lukket"_s;
    case 3705:
        return u"Operasjonen er ikke tillatt når objektet er åpent"_s;
    default:
        return u"Programdefinert eller objektdefinert feil"_s;
    }
}

} // namespace

RunTimeError::RunTimeError(int number) : RunTimeError(number, standardDescription(number)) {}

RunTimeError::RunTimeError(int number, QString description)
    : m_number(number), m_description(std::move(description)), m_what(m_description.toUtf8())
{
}

int detail::runPassingOver(void (*run)(void *), void *statement)
{
    try {
        run(statement);
        return 0;
    } catch (const RunTimeError &error) {
        return error.number();
    }
}

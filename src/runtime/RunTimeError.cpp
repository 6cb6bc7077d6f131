#include "runtime/RunTimeError.h"

using namespace Qt::StringLiterals;

namespace {

/// The standard description of an error that is raised by its number alone.
QString standardDescription(int number)
{
    switch (number) {
    case errors::kInvalidCall:
        return u"Ugyldig prosedyrekall eller argument"_s;
    case errors::kOverflow:
        return u"Overflyt"_s;
    case errors::kDivisionByZero:
        return u"Divisjon med null"_s;
    case errors::kTypeMismatch:
        return u"Typene stemmer ikke overens"_s;
    case errors::kFileNotFound:
        return u"Finner ikke filen"_s;
    case errors::kPathAccess:
        return u"Feil ved tilgang til bane eller fil"_s;
    case errors::kObjectNotSet:
        return u"Objektvariabelen er ikke satt"_s;
    case errors::kInvalidUseOfNull:
        return u"Ugyldig bruk av Null"_s;
    case 481:
        return u"Ugyldig bilde"_s;
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

#include "runtime/MachineLocale.h"

#include <QLocale>

#include <cstdlib>
#include <initializer_list>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

/// The first of the variables that has a text, else the empty text.
QString firstSet(std::initializer_list<const char *> variables)
{
    for (const char *variable : variables) {
        const char *const value = std::getenv(variable);
        if (value != nullptr && *value != '\0')
            return QString::fromLocal8Bit(value);
    }
    return {};
}

/// The pattern with four digits of the year and with the blank U+0020 for every kind of blank.
QString plainDatePattern(const QString &pattern)
{
    QString plain;
    for (const QChar c : pattern) {
        if (c == u'y')
            plain += plain.endsWith(u'y') ? u""_s : u"yyyy"_s;
        else if (c.isSpace())
            plain += u' ';
        else if (c.category() != QChar::Other_Format) // no marks of the writing direction
            plain += c;
    }
    return plain;
}

MachineLocale &inForce()
{
    static MachineLocale locale = MachineLocale::fromEnvironment();
    return locale;
}

} // namespace

const MachineLocale &MachineLocale::current()
{
    return inForce();
}

MachineLocale MachineLocale::norwegian()
{
    return {u',', u"dd.MM.yyyy"_s, true};
}

MachineLocale MachineLocale::fromName(const QString &posixName)
{
    const QString name = posixName.section(u'.', 0, 0).section(u'@', 0, 0);
    if (name.isEmpty() || name == "C"_L1 || name == "POSIX"_L1)
        return norwegian();
    const QLocale locale(name);
    if (locale.language() == QLocale::C || locale.language() == QLocale::NorwegianBokmal)
        return norwegian();
    MachineLocale result;
    result.decimalPoint = locale.decimalPoint() == "."_L1 ? u'.' : u',';
    result.shortDate = plainDatePattern(locale.dateFormat(QLocale::ShortFormat));
    result.dayBeforeMonth = !result.shortDate.startsWith(u'M');
    return result;
}

MachineLocale MachineLocale::fromEnvironment()
{
    MachineLocale result = fromName(firstSet({"LC_ALL", "LC_TIME", "LANG"}));
    result.decimalPoint = fromName(firstSet({"LC_ALL", "LC_NUMERIC", "LANG"})).decimalPoint;
    return result;
}

ScopedLocale::ScopedLocale(MachineLocale locale)
    : m_previous(std::exchange(inForce(), std::move(locale)))
{
}

ScopedLocale::~ScopedLocale()
{
    inForce() = std::move(m_previous);
}

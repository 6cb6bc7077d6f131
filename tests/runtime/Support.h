#pragma once

#include "runtime/Currency.h"
#include "runtime/MachineLocale.h"
#include "runtime/RunTimeError.h"

#include <QString>

#include <gtest/gtest.h>

#include <ostream>

// How GoogleTest shows these types when an expectation fails.
inline void PrintTo(const QString &text, std::ostream *out)
{
    *out << '"' << text.toStdString() << '"';
}
inline void PrintTo(Currency amount, std::ostream *out)
{
    *out << amount.tenThousandths() << " ten-thousandths";
}

/// The number of the run-time error that `statement` raises, 0 for none.
template<class Statement>
int errorOf(Statement &&statement)
{
    return passOver(std::forward<Statement>(statement));
}

/// An amount given in ten-thousandths.
inline Currency tenThousandths(qint64 count)
{
    return Currency::fromTenThousandths(count);
}

inline MachineLocale pointLocale()
{
    return MachineLocale::fromName(QStringLiteral("en_US.UTF-8"));
}
inline MachineLocale commaLocale()
{
    return MachineLocale::norwegian();
}

/// Number text with a decimal comma in the form of the machine's locale; from there it makes text
/// with a comma again, in which a wrong mark shows as a point.
inline QString machineForm(QString text)
{
    if (MachineLocale::current().decimalPoint == u'.') {
        for (QChar &c : text)
            c = c == u',' ? QChar(u'.') : c == u'.' ? QChar(u',') : c;
    }
    return text;
}

inline constexpr qint64 kLargestCount = 9223372036854775807;
inline constexpr qint64 kSmallestCount = -kLargestCount - 1;

#include "runtime/Format.h"

#include "runtime/Conversions.h"
#include "runtime/Decimal.h"
#include "runtime/MachineLocale.h"

#include <algorithm>
#include <optional>

namespace {

/// What a number pattern asks for.
struct NumberPattern
{
    int minimumDigits = 1; ///< whole digits, filled up with zeros
    int decimals = 0;
    bool blankBeforeThousand = false; ///< the literal blank of "# ##0.00"
    bool blankBehind = false;         ///< the literal blank of "00000\ "
};

enum class DatePattern { DayMonthYear, MonthDayYear, MonthDayYearInHashes, Short };

constexpr QStringView kPlacesPattern = u"@@@\\ @@@\\ @@@";

std::optional<NumberPattern> numberPattern(QStringView pattern)
{
    if (pattern == u"#0.00" || pattern == u"0.00")
        return NumberPattern{.decimals = 2};
    if (pattern == u"# ##0.00")
        return NumberPattern{.decimals = 2, .blankBeforeThousand = true};
    if (pattern == u"#0.0")
        return NumberPattern{.decimals = 1};
    if (pattern == u"#0")
        return NumberPattern{};
    if (pattern == u"00000\\ ")
        return NumberPattern{.minimumDigits = 5, .blankBehind = true};
    if (!pattern.isEmpty() &&
        std::all_of(pattern.begin(), pattern.end(), [](QChar c) { return c == u'0'; }))
        return NumberPattern{.minimumDigits = int(pattern.size())};
    return std::nullopt;
}

std::optional<DatePattern> datePattern(QStringView pattern)
{
    if (pattern == u"dd.mm.yyyy")
        return DatePattern::DayMonthYear;
    if (pattern == u"mm\\/dd\\/yyyy")
        return DatePattern::MonthDayYear;
    if (pattern == u"\\#mm\\/dd\\/yyyy\\#")
        return DatePattern::MonthDayYearInHashes;
    if (pattern == u"short date")
        return DatePattern::Short;
    return std::nullopt;
}

template<class Kind>
Kind known(const std::optional<Kind> &pattern)
{
    if (!pattern)
        throw RunTimeError(errors::kInvalidCall);
    return *pattern;
}

QString formatted(Decimal number, const NumberPattern &pattern)
{
    number.roundTo(pattern.decimals);
    const int wholeDigits = std::max(number.exponent, pattern.minimumDigits);
    QVarLengthArray<QChar, 64> out;
    if (number.negative)
        out.append(u'-');
    // `place` counts whole digits from the point, the units being 1, and decimals from 0 downwards.
    for (int place = wholeDigits; place > -pattern.decimals; --place) {
        if (place == 0)
            out.append(MachineLocale::current().decimalPoint);
        if (pattern.blankBeforeThousand && (place == 3 || (place == wholeDigits && place < 3)))
            out.append(u' ');
        const int index = number.exponent - place;
        const bool shown = index >= 0 && index < number.digits.size();
        out.append(shown ? QLatin1Char(number.digits[index]) : QLatin1Char('0'));
    }
    if (pattern.blankBehind)
        out.append(u' ');
    return QString(out.data(), out.size());
}

void appendDigits(QVarLengthArray<QChar, 16> &out, int number, int width)
{
    for (int unit = width == 4 ? 1000 : 10; unit > 0; unit /= 10)
        out.append(QLatin1Char(char('0' + number / unit % 10)));
}

QString formatted(const QDate &date, DatePattern pattern)
{
    if (!date.isValid())
        throw RunTimeError(errors::kTypeMismatch);
    if (pattern == DatePattern::Short)
        return date.toString(MachineLocale::current().shortDate);
    int year = 0;
    int month = 0;
    int day = 0;
    date.getDate(&year, &month, &day);
    const bool dayFirst = pattern == DatePattern::DayMonthYear;
    const bool hashes = pattern == DatePattern::MonthDayYearInHashes;
    const QChar mark = dayFirst ? u'.' : u'/';

    QVarLengthArray<QChar, 16> out;
    if (hashes)
        out.append(u'#');
    appendDigits(out, dayFirst ? day : month, 2);
    out.append(mark);
    appendDigits(out, dayFirst ? month : day, 2);
    out.append(mark);
    appendDigits(out, year, 4);
    if (hashes)
        out.append(u'#');
    return QString(out.data(), out.size());
}

QString inPlaces(QStringView text)
{
    QString out;
    qsizetype next = text.size();
    for (qsizetype i = kPlacesPattern.size() - 1; i >= 0; --i) {
        if (kPlacesPattern[i] == u'@')
            out += next > 0 ? text[--next] : QChar(u' ');
        else if (kPlacesPattern[i] == u' ')
            out += u' ';
    }
    std::reverse(out.begin(), out.end());
    return text.first(next).toString() + out;
}

} // namespace

QString Format(Currency amount, QStringView pattern)
{
    return formatted(Decimal::fromCurrency(amount), known(numberPattern(pattern)));
}

QString Format(double number, QStringView pattern)
{
    return formatted(Decimal::fromDouble(number, kDoubleDigits), known(numberPattern(pattern)));
}

QString Format(float number, QStringView pattern)
{
    return formatted(Decimal::fromDouble(double{number}, kSingleDigits),
                     known(numberPattern(pattern)));
}

QString Format(qint64 number, QStringView pattern)
{
    return formatted(Decimal::fromInteger(number), known(numberPattern(pattern)));
}

QString Format(const QDate &date, QStringView pattern)
{
    return formatted(date, known(datePattern(pattern)));
}

QString Format(const QString &text, QStringView pattern)
{
    if (pattern == kPlacesPattern)
        return inPlaces(text);
    if (pattern.isEmpty())
        return text;
    if (const auto numbers = numberPattern(pattern)) {
        const auto number = Decimal::read(text, MachineLocale::current().decimalPoint);
        // The check keeps "1E99999" from being written out.
        return number && number->fitsDouble() ? formatted(*number, *numbers) : text;
    }
    const DatePattern dates = known(datePattern(pattern));
    return isDate(text) ? formatted(toDate(text).date(), dates) : text;
}

#include "runtime/Format.h"

#include "runtime/Conversions.h"
#include "runtime/Decimal.h"
#include "runtime/MachineLocale.h"

#include <algorithm>
#include <array>
#include <charconv>
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

constexpr int kDecimalsOfAmounts = 4;
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

/// Makes room for `count` characters at the end of `out` and tells where they go.
QChar *grow(QString &out, qsizetype count)
{
    const qsizetype before = out.size();
    if (out.isNull())
        out = QString(count, Qt::Uninitialized); // which takes no more memory than it needs
    else
        out.resize(before + count);
    return out.data() + before;
}

/// Appends the number ± 0.`digits` times ten to the power `exponent`, which has no more decimals
/// than the pattern shows.
void layOut(QString &text, bool negative, QByteArrayView digits, int exponent,
            const NumberPattern &pattern)
{
    const int wholeDigits = std::max(exponent, pattern.minimumDigits);
    const int marks = int(negative) + int(pattern.decimals > 0) + int(pattern.blankBeforeThousand) +
                      int(pattern.blankBehind);
    QChar *out = grow(text, wholeDigits + pattern.decimals + marks);
    if (negative)
        *out++ = u'-';
    // `place` counts whole digits from the point, the units being 1, and decimals from 0 downwards.
    for (int place = wholeDigits; place > -pattern.decimals; --place) {
        if (place == 0)
            *out++ = MachineLocale::current().decimalPoint;
        if (pattern.blankBeforeThousand && place == std::min(3, wholeDigits))
            *out++ = u' ';
        const int index = exponent - place;
        const bool shown = index >= 0 && index < digits.size();
        *out++ = shown ? QLatin1Char(digits[index]) : QLatin1Char('0');
    }
    if (pattern.blankBehind)
        *out = u' ';
}

QString formatted(Decimal number, const NumberPattern &pattern)
{
    number.roundTo(pattern.decimals);
    QString text;
    layOut(text, number.negative, {number.digits.data(), number.digits.size()}, number.exponent,
           pattern);
    return text;
}

/// `count` is the number by ten to the power `scale`. Amounts and whole numbers are nearly all that
/// is written, and a count is rounded without being taken apart into its digits first.
void append(QString &text, qint64 count, int scale, const NumberPattern &pattern)
{
    quint64 unit = 1;
    for (int place = pattern.decimals; place < scale; ++place)
        unit *= 10;
    const quint64 magnitude = count < 0 ? quint64{0} - quint64(count) : quint64(count);
    const quint64 rounded = (magnitude + unit / 2) / unit;
    std::array<char, 20> digits{};
    const char *end = std::to_chars(digits.data(), digits.data() + digits.size(), rounded).ptr;
    const auto size = int(end - digits.data());
    layOut(text, count < 0 && rounded != 0, {digits.data(), size},
           size - std::min(scale, pattern.decimals), pattern);
}

QString formatted(double number, int significant, QStringView pattern)
{
    if (const std::optional<qint64> whole = Decimal::smallWhole(number))
        return Format(*whole, pattern);
    return formatted(Decimal::fromDouble(number, significant), known(numberPattern(pattern)));
}

/// Writes `number` in two digits, or a year in four, to `out`, which is moved behind them.
void writeDigits(QChar *&out, int number, int width)
{
    for (int unit = width == 4 ? 1000 : 10; unit > 0; unit /= 10)
        *out++ = QLatin1Char(char('0' + number / unit % 10));
}

void append(QString &text, const QDate &date, DatePattern pattern)
{
    if (!date.isValid())
        throw RunTimeError(errors::kTypeMismatch);
    if (pattern == DatePattern::Short) {
        text += date.toString(MachineLocale::current().shortDate);
        return;
    }
    int year = 0;
    int month = 0;
    int day = 0;
    date.getDate(&year, &month, &day);
    const bool dayFirst = pattern == DatePattern::DayMonthYear;
    const bool hashes = pattern == DatePattern::MonthDayYearInHashes;
    const QChar mark = dayFirst ? u'.' : u'/';

    QChar *out = grow(text, hashes ? 12 : 10);
    if (hashes)
        *out++ = u'#';
    writeDigits(out, dayFirst ? day : month, 2);
    *out++ = mark;
    writeDigits(out, dayFirst ? month : day, 2);
    *out++ = mark;
    writeDigits(out, year, 4);
    if (hashes)
        *out = u'#';
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

void appendFormat(QString &text, Currency amount, QStringView pattern)
{
    append(text, amount.tenThousandths(), kDecimalsOfAmounts, known(numberPattern(pattern)));
}

void appendFormat(QString &text, qint64 number, QStringView pattern)
{
    append(text, number, 0, known(numberPattern(pattern)));
}

void appendFormat(QString &text, const QDate &date, QStringView pattern)
{
    append(text, date, known(datePattern(pattern)));
}

QString Format(Currency amount, QStringView pattern)
{
    QString text;
    appendFormat(text, amount, pattern);
    return text;
}

QString Format(double number, QStringView pattern)
{
    return formatted(number, kDoubleDigits, pattern);
}

QString Format(float number, QStringView pattern)
{
    return formatted(double{number}, kSingleDigits, pattern);
}

QString Format(qint64 number, QStringView pattern)
{
    QString text;
    appendFormat(text, number, pattern);
    return text;
}

QString Format(const QDate &date, QStringView pattern)
{
    QString text;
    appendFormat(text, date, pattern);
    return text;
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
    (void)known(datePattern(pattern));
    return isDate(text) ? Format(toDate(text), pattern) : text;
}

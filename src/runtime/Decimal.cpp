#include "runtime/Decimal.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace {

constexpr int kDigitLimit = 100000;

bool isDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

bool isGroupBlank(QChar c)
{
    return c == u' ' || c == QChar(0x00A0) || c == QChar(0x202F);
}

bool isMinus(QChar c)
{
    return c == u'-' || c == QChar(0x2212);
}

/// The magnitude, also of the smallest number.
quint64 magnitude(qint64 number)
{
    return number < 0 ? quint64{0} - quint64(number) : quint64(number);
}

/// A place in the text that is being read.
struct Reader
{
    QStringView text;
    qsizetype at = 0;

    [[nodiscard]] bool atEnd() const { return at == text.size(); }
    [[nodiscard]] bool sees(bool (*kind)(QChar)) const { return !atEnd() && kind(text[at]); }

    bool take(bool (*kind)(QChar))
    {
        const bool taken = sees(kind);
        at += taken ? 1 : 0;
        return taken;
    }
    bool take(QChar wanted)
    {
        const bool taken = !atEnd() && text[at] == wanted;
        at += taken ? 1 : 0;
        return taken;
    }
    void skipBlanks()
    {
        while (take(isGroupBlank)) {
        }
    }
    void takeDigits(Decimal::Digits &digits)
    {
        while (sees(isDigit))
            digits.append(char(text[at++].unicode()));
    }
};

/// What stands behind the "E": a sign and one or more digits.
std::optional<int> readExponent(Reader &reader)
{
    const bool negative = reader.take(isMinus);
    if (!negative)
        reader.take(u'+');
    if (!reader.sees(isDigit))
        return std::nullopt;
    int exponent = 0;
    while (reader.sees(isDigit)) {
        exponent = std::min(kDigitLimit, exponent * 10 + reader.text[reader.at].digitValue());
        ++reader.at;
    }
    return negative ? -exponent : exponent;
}

} // namespace

void Decimal::normalise()
{
    while (!digits.isEmpty() && digits.last() == '0')
        digits.removeLast();
    const auto first = std::find_if(digits.begin(), digits.end(), [](char d) { return d != '0'; });
    exponent -= int(first - digits.begin());
    digits.erase(digits.begin(), first);
    if (digits.isEmpty()) {
        negative = false;
        exponent = 0;
    }
}

std::optional<qint64> Decimal::smallWhole(double number)
{
    constexpr double kLimit = 1e6; // no more digits than a single shows
    const bool isSmallWhole = std::fabs(number) < kLimit && std::trunc(number) == number;
    return isSmallWhole ? std::optional(qint64(number)) : std::nullopt;
}

Decimal Decimal::fromInteger(qint64 number)
{
    Decimal decimal;
    decimal.negative = number < 0;
    std::array<char, 20> buffer{};
    const auto end =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), magnitude(number)).ptr;
    decimal.digits.append(buffer.data(), end - buffer.data());
    decimal.exponent = int(decimal.digits.size());
    decimal.normalise();
    return decimal;
}

Decimal Decimal::fromCurrency(Currency amount)
{
    Decimal decimal = fromInteger(amount.tenThousandths());
    if (!decimal.isZero())
        decimal.exponent -= 4;
    return decimal;
}

Decimal Decimal::fromDouble(double number, int significant)
{
    if (!std::isfinite(number))
        throw RunTimeError(errors::kOverflow);
    if (const std::optional<qint64> whole = smallWhole(number))
        return fromInteger(*whole);
    // "d.ddde±xx"
    std::array<char, 40> buffer{};
    const char *end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), std::fabs(number),
                                    std::chars_format::scientific, significant - 1)
                          .ptr;
    const char *const mark = std::find(static_cast<const char *>(buffer.data()), end, 'e');
    Decimal decimal;
    decimal.negative = number < 0;
    for (const char *c = buffer.data(); c != mark; ++c) {
        if (*c != '.')
            decimal.digits.append(*c);
    }
    // from_chars takes no plus sign.
    std::from_chars(mark[1] == '+' ? mark + 2 : mark + 1, end, decimal.exponent);
    ++decimal.exponent;
    decimal.normalise();
    return decimal;
}

std::optional<Decimal> Decimal::read(QStringView text, QChar decimalMark)
{
    Decimal decimal;
    Reader reader{text};
    reader.skipBlanks();
    decimal.negative = reader.take(isMinus);
    if (!decimal.negative)
        reader.take(u'+');
    reader.skipBlanks();

    reader.takeDigits(decimal.digits);
    while (!decimal.digits.isEmpty() && reader.at + 1 < text.size() && reader.sees(isGroupBlank) &&
           isDigit(text[reader.at + 1])) {
        ++reader.at;
        reader.takeDigits(decimal.digits);
    }
    const qsizetype wholeDigits = decimal.digits.size();
    if (reader.take(decimalMark))
        reader.takeDigits(decimal.digits);
    if (decimal.digits.isEmpty() || decimal.digits.size() > kDigitLimit)
        return std::nullopt;
    decimal.exponent = int(wholeDigits);

    if (reader.take([](QChar c) { return QStringView(u"eEdD").contains(c); })) {
        const std::optional<int> exponent = readExponent(reader);
        if (!exponent)
            return std::nullopt;
        decimal.exponent += *exponent;
    }
    reader.skipBlanks();
    if (!reader.atEnd())
        return std::nullopt;
    decimal.normalise();
    return decimal;
}

std::optional<double> Decimal::nearestDouble() const
{
    if (isZero())
        return 0.0;
    QVarLengthArray<char, 64> buffer;
    if (negative)
        buffer.append('-');
    buffer.append('.');
    buffer.append(digits.data(), digits.size());
    buffer.append('e');
    std::array<char, 12> power{};
    const char *const end = std::to_chars(power.data(), power.data() + power.size(), exponent).ptr;
    buffer.append(power.data(), end - power.data());

    double number = 0;
    const auto outcome = std::from_chars(buffer.data(), buffer.data() + buffer.size(), number);
    if (outcome.ec != std::errc::result_out_of_range)
        return number;
    return exponent > 0 ? std::nullopt : std::optional<double>(0);
}

double Decimal::toDouble() const
{
    const std::optional<double> number = nearestDouble();
    if (!number)
        throw RunTimeError(errors::kOverflow);
    return *number;
}

bool Decimal::fitsDouble() const
{
    return exponent <= std::numeric_limits<double>::max_exponent10 || nearestDouble().has_value();
}

Currency Decimal::toCurrency() const
{
    // Digits of the count of ten-thousandths; the largest count has 19.
    const int kept = exponent + 4;
    if (isZero() || kept < 0)
        return {};
    if (kept > kExactDigits)
        throw RunTimeError(errors::kOverflow);
    quint64 count = 0; // up to 10^19, which fits
    for (int i = 0; i < kept; ++i)
        count = count * 10 + quint64(i < digits.size() ? digits[i] - '0' : 0);
    if (kept < digits.size()) {
        const bool tie = digits[kept] == '5' && kept + 1 == digits.size();
        if (tie ? count % 2 != 0 : digits[kept] >= '5')
            ++count;
    }
    const quint64 limit = magnitude(negative ? std::numeric_limits<qint64>::min()
                                             : std::numeric_limits<qint64>::max());
    if (count > limit)
        throw RunTimeError(errors::kOverflow);
    // Unsigned negation first: the smallest amount has no positive counterpart.
    return Currency::fromTenThousandths(qint64(negative ? quint64{0} - count : count));
}

void Decimal::roundTo(int decimals)
{
    const int kept = exponent + decimals;
    if (kept >= digits.size())
        return;
    const bool up = kept >= 0 && digits[kept] >= '5';
    digits.resize(std::max(kept, 0));
    if (up) {
        qsizetype i = digits.size();
        while (i > 0 && digits[i - 1] == '9')
            digits[--i] = '0';
        if (i > 0) {
            ++digits[i - 1];
        } else {
            digits.insert(digits.begin(), '1');
            ++exponent;
        }
    }
    normalise();
}

QString Decimal::toText(int places, QChar decimalMark, bool zeroBeforeMark) const
{
    if (isZero())
        return QStringLiteral("0");

    QVarLengthArray<QChar, 64> text;
    const auto appendDigits = [&](qsizetype from, qsizetype to) {
        for (qsizetype i = from; i < to; ++i)
            text.append(i < digits.size() ? QLatin1Char(digits[i]) : QLatin1Char('0'));
    };
    const auto finished = [&text] { return QString(text.data(), text.size()); };
    const qsizetype decimals = std::max<qsizetype>(0, digits.size() - exponent);
    if (exponent > places || decimals > places) {
        appendDigits(0, 1);
        if (digits.size() > 1) {
            text.append(decimalMark);
            appendDigits(1, digits.size());
        }
        const int power = exponent - 1;
        text.append(u'E');
        text.append(power < 0 ? u'-' : u'+');
        return finished() + QString::number(std::abs(power)).rightJustified(2, u'0');
    }
    if (exponent > 0)
        appendDigits(0, exponent);
    else if (zeroBeforeMark)
        text.append(u'0');
    if (decimals > 0) {
        text.append(decimalMark);
        text.resize(text.size() + std::max(0, -exponent), QChar(u'0'));
        appendDigits(std::max(0, exponent), digits.size());
    }
    return finished();
}

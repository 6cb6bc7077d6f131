#include "runtime/Conversions.h"

#include "runtime/Decimal.h"
#include "runtime/MachineLocale.h"
#include "runtime/Moment.h"

#include <QStringBuilder>

#include <array>
#include <cmath>
#include <limits>
#include <optional>

namespace {

[[noreturn]] void typeMismatch()
{
    throw RunTimeError(errors::kTypeMismatch);
}

Decimal readNumber(QStringView text)
{
    const auto number = Decimal::read(text, MachineLocale::current().decimalPoint);
    if (!number)
        typeMismatch();
    return *number;
}

/// Half to even, in the rounding mode that every thread starts with.
template<class Whole>
Whole rounded(double number)
{
    const double whole = std::nearbyint(number);
    if (!(whole >= std::numeric_limits<Whole>::min() && whole <= std::numeric_limits<Whole>::max()))
        throw RunTimeError(errors::kOverflow);
    return static_cast<Whole>(whole);
}

bool isDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

/// How far a leading number has been read. Mark is the "e" of an exponent.
enum class NumberPlace { Start, Sign, Whole, Fraction, Mark, ExponentSign, Exponent };

/// Where the number stands behind `c`, or nothing if `c` cannot be part of it. In one piece, as a
/// table of the places and what may follow them.
std::optional<NumberPlace> placeAfter(NumberPlace place, QChar c)
{
    using enum NumberPlace;
    if (isDigit(c)) {
        if (place < Whole)
            return Whole;
        return place == Mark || place == ExponentSign ? Exponent : place;
    }
    if ((c == u'-' || c == u'+') && place == Start)
        return Sign;
    if ((c == u'-' || c == u'+') && place == Mark)
        return ExponentSign;
    if (c == u'.' && place < Fraction)
        return Fraction;
    if (QStringView(u"eEdD").contains(c) && (place == Whole || place == Fraction))
        return Mark;
    return std::nullopt;
}

/// A number in a date or a time, and in how many digits it was written.
struct DatePiece
{
    int value = 0;
    int digits = 0;
};

/// The digits from `at` on, which is moved behind them; five are one too many in every place.
DatePiece takePiece(QStringView text, qsizetype &at)
{
    DatePiece piece;
    for (; at < text.size() && piece.digits <= 4; ++at, ++piece.digits) {
        if (!isDigit(text[at]))
            break;
        piece.value = piece.value * 10 + text[at].digitValue();
    }
    return piece;
}

/// The year of one, two or four digits; 0 for none.
int fullYear(DatePiece piece)
{
    if (piece.digits == 1 || piece.digits == 2)
        return piece.value + (piece.value < 30 ? 2000 : 1900);
    return piece.digits == 4 && piece.value >= 100 ? piece.value : 0;
}

/// Three numbers with the same mark between them.
QDate readNumericDate(QStringView text)
{
    qsizetype at = 0;
    const DatePiece first = takePiece(text, at);
    if (at == text.size() || !QStringView(u"./-").contains(text[at]))
        return {};
    const QChar mark = text[at++];
    const DatePiece second = takePiece(text, at);
    if (at == text.size() || text[at] != mark)
        return {};
    ++at;
    const DatePiece third = takePiece(text, at);
    if (at != text.size() || second.digits == 0 || second.digits > 2)
        return {};
    if (first.digits == 4) {
        const bool fits = third.digits == 1 || third.digits == 2;
        return fits ? QDate(fullYear(first), second.value, third.value) : QDate();
    }
    if (first.digits == 0 || first.digits > 2)
        return {};
    return MachineLocale::current().dayBeforeMonth
               ? QDate(fullYear(third), second.value, first.value)
               : QDate(fullYear(third), first.value, second.value);
}

/// "hh:mm" or "hh:mm:ss", each of one or two digits.
QTime readTime(QStringView text)
{
    std::array<int, 3> parts{};
    qsizetype at = 0;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        const DatePiece piece = takePiece(text, at);
        if (piece.digits == 0 || piece.digits > 2)
            return {};
        parts[i] = piece.value;
        if (at == text.size())
            return i == 0 ? QTime() : QTime(parts[0], parts[1], parts[2]);
        if (text[at++] != u':')
            return {};
    }
    return {};
}

/// The invalid date and time for text that is no date.
QDateTime readDate(QStringView text)
{
    text = text.trimmed();
    QTime time(0, 0);
    const qsizetype blank = text.lastIndexOf(u' ');
    if (blank > 0 && text.sliced(blank).contains(u':')) {
        time = readTime(text.sliced(blank + 1));
        text = text.first(blank).trimmed();
    }
    QDate date = readNumericDate(text);
    if (!date.isValid())
        date = QDate::fromString(text.toString(), MachineLocale::current().shortDate);
    return date.isValid() && time.isValid() ? utcMoment(date, time) : QDateTime();
}

} // namespace

QString numberToText(qint64 number)
{
    const QString text = QString::number(number);
    return number < 0 ? text : u' ' % text;
}

QString numberToText(float number)
{
    if (const std::optional<qint64> whole = Decimal::smallWhole(double{number}))
        return numberToText(*whole);
    const Decimal decimal = Decimal::fromDouble(double{number}, kSingleDigits);
    return QChar(decimal.negative ? u'-' : u' ') % decimal.toText(kSingleDigits, u'.', false);
}

double leadingNumber(QStringView text)
{
    // The number is gathered without the blanks; `end` is the length of the longest number in it.
    QVarLengthArray<QChar, 64> gathered;
    qsizetype end = 0;
    NumberPlace place = NumberPlace::Start;
    for (const QChar c : text) {
        if (c == u' ' || c == u'\t' || c == u'\n')
            continue;
        const auto next = placeAfter(place, c);
        if (!next || (*next == NumberPlace::Mark && end == 0)) // ".e3" has no digit to raise
            break;
        place = *next;
        gathered.append(c);
        if (isDigit(c))
            end = gathered.size();
    }
    if (end == 0)
        return 0;
    const auto number = Decimal::read(QStringView(gathered.data(), end), u'.');
    if (!number) // more digits than any number takes
        throw RunTimeError(errors::kOverflow);
    return number->toDouble();
}

double toDouble(QStringView text)
{
    return readNumber(text).toDouble();
}

Currency toCurrency(QStringView text)
{
    return readNumber(text).toCurrency();
}

qint32 toLong(QStringView text)
{
    return toLong(toDouble(text));
}

QDateTime toDate(QStringView text)
{
    QDateTime date = readDate(text);
    if (!date.isValid())
        typeMismatch();
    return date;
}

bool isDate(QStringView text)
{
    return readDate(text).isValid();
}

qint32 toLong(double number)
{
    return rounded<qint32>(number);
}

qint16 toInteger(double number)
{
    return rounded<qint16>(number);
}

QDateTime dateZero()
{
    return utcMoment(QDate(1899, 12, 30));
}

QString trimBlanks(QStringView text)
{
    while (text.endsWith(u' '))
        text.chop(1);
    return trimLeftBlanks(text);
}

QString trimLeftBlanks(QStringView text)
{
    while (text.startsWith(u' '))
        text = text.sliced(1);
    return text.toString();
}

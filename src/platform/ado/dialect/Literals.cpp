#include "platform/ado/dialect/Errors.h"
#include "platform/ado/dialect/Fitting.h"
#include "platform/ado/dialect/Translator.h"
#include "runtime/Conversions.h"
#include "runtime/Decimal.h"
#include "runtime/Moment.h"

#include <QVarLengthArray>

#include <charconv>
#include <optional>

using namespace Qt::StringLiterals;

namespace ado::dialect {

namespace {

constexpr int kFirstYear = 100;

/// The nearest value of a floating type; error 6 when it is beyond the type.
template<class Real>
Real real(QStringView number, bool negative)
{
    QVarLengthArray<char, 64> digits;
    if (negative)
        digits.append('-');
    for (const QChar c : number)
        digits.append(c.toLatin1());
    Real value{};
    const auto result = std::from_chars(digits.begin(), digits.end(), value);
    if (result.ec != std::errc::result_out_of_range)
        return value;
    // Too small is 0; only too large is an error.
    const std::optional<Decimal> decimal = Decimal::read(number, u'.');
    if (decimal && decimal->exponent <= 0)
        return Real{0};
    throw RunTimeError(::errors::kOverflow);
}

Currency money(QStringView number, bool negative)
{
    std::optional<Decimal> amount = Decimal::read(number, u'.');
    if (!amount) // more digits than anyone writes
        throw RunTimeError(::errors::kOverflow);
    amount->negative = negative && !amount->isZero();
    return amount->toCurrency();
}

/// The converter of one literal into one parameter's value.
class Conversion
{
public:
    Conversion(const Parameter &parameter, const Token &token)
        : m_parameter(parameter), m_token(token)
    {
    }

    Value value() const
    {
        switch (m_token.kind) {
        case TokenKind::Text:
            return fromText();
        case TokenKind::Date:
            return Value(dateOfLiteral());
        default:
            return fromNumber(m_token.text, m_parameter.negative);
        }
    }

private:
    Value fromNumber(QStringView number, bool negative) const
    {
        try {
            return converted(number, negative);
        } catch (const RunTimeError &) {
            raiseOutOfRange(m_token, m_parameter.column);
        }
    }

    Value converted(QStringView number, bool negative) const
    {
        switch (m_parameter.type) {
        case DataType::Currency:
            return Value(money(number, negative));
        case DataType::SmallInt:
            return Value(toInteger(real<double>(number, negative)));
        case DataType::Integer:
            return Value(toLong(real<double>(number, negative)));
        case DataType::Single:
            return Value(real<float>(number, negative));
        case DataType::Double:
            return Value(real<double>(number, negative));
        case DataType::Boolean:
            return Value(real<double>(number, negative) != 0);
        case DataType::Date:
            return Value(wholeSeconds(Value(real<double>(number, negative)).toDate()));
        default:
            return fittedText(QString::number(real<double>(number, negative), 'g', 15));
        }
    }

    Value fromText() const
    {
        QString text = m_token.text.sliced(1).chopped(1).toString();
        text.replace("''"_L1, "'"_L1);
        if (m_parameter.type == DataType::VarWChar)
            return fittedText(std::move(text));
        if (m_parameter.type == DataType::Date)
            return Value(dateOfText(text));
        const Lexed lexed = lex(text);
        const Token *number = lexed.tokens.data();
        const bool negative = number->kind == TokenKind::Minus;
        if (negative || number->kind == TokenKind::Plus)
            ++number;
        if (!isNumber(number->kind) || number[1].kind != TokenKind::End)
            raiseDoesNotFit(m_token, m_parameter.column);
        return fromNumber(number->text, negative);
    }

    QDateTime dateOfText(const QString &text) const
    {
        try {
            return toDate(text);
        } catch (const RunTimeError &) {
            raiseDoesNotFit(m_token, m_parameter.column);
        }
    }

    /// #mm/dd/yyyy# or #yyyy-mm-dd#, with a time hh:mm[:ss] behind it or not.
    QDateTime dateOfLiteral() const
    {
        const QStringView text = m_token.text.sliced(1).chopped(1).trimmed();
        const qsizetype blank = text.indexOf(u' ');
        const QStringView day = blank < 0 ? text : text.first(blank);
        const QStringView time = blank < 0 ? QStringView() : text.sliced(blank).trimmed();
        int parts[3];
        QDate date;
        if (numbers(day, u'/', parts) == 3 && day.size() - day.lastIndexOf(u'/') == 5)
            date = QDate(parts[2], parts[0], parts[1]);
        else if (numbers(day, u'-', parts) == 3 && day.indexOf(u'-') == 4)
            date = QDate(parts[0], parts[1], parts[2]);
        int clock[3] = {0, 0, 0};
        const bool timeRead = time.isEmpty() || numbers(time, u':', clock) >= 2;
        if (!date.isValid() || date.year() < kFirstYear || !timeRead ||
            !QTime::isValid(clock[0], clock[1], clock[2]))
            raiseSyntax(m_token, u"«%1» er ingen dato"_s.arg(m_token.text));
        return utcMoment(date, QTime(clock[0], clock[1], clock[2]));
    }

    /// Reads up to three numbers of one to four digits; 0 when the text is anything else.
    static int numbers(QStringView text, QChar separator, int (&parts)[3])
    {
        int count = 0;
        for (const QStringView part : text.tokenize(separator)) {
            const bool digits = std::all_of(part.begin(), part.end(),
                                            [](QChar c) { return c >= u'0' && c <= u'9'; });
            if (count == 3 || !digits || part.isEmpty() || part.size() > 4)
                return 0;
            parts[count++] = part.toInt();
        }
        return count;
    }

    Value fittedText(QString text) const
    {
        return Value(cutText(std::move(text), m_parameter.width));
    }

    const Parameter &m_parameter;
    const Token &m_token;
};

} // namespace

std::vector<Value> parameterValues(const Translation &translation, const Lexed &statement)
{
    std::vector<Value> values;
    values.reserve(translation.parameters.size());
    for (const Parameter &parameter : translation.parameters) {
        const Token &token = statement.tokens[size_t(parameter.token)];
        values.push_back(Conversion(parameter, token).value());
    }
    return values;
}

} // namespace ado::dialect

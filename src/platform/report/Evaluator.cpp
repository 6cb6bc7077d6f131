#include "platform/report/Evaluator.h"

#include "platform/report/Functions.h"
#include "platform/report/ReportError.h"
#include "runtime/Conversions.h"

#include <cmath>

using namespace Qt::StringLiterals;

namespace report {

namespace {

bool isMoney(const Value &value)
{
    return value.type() == DataType::Currency;
}

int sign(double difference)
{
    return difference < 0 ? -1 : difference > 0 ? 1 : 0;
}

Value number(double result)
{
    if (!std::isfinite(result))
        throw RunTimeError(::errors::kOverflow);
    return Value(result);
}

Value moneyResult(Operator op, const Value &left, const Value &right)
{
    switch (op) {
    case Operator::Add:
        return Value(moneyOf(left) + moneyOf(right));
    case Operator::Subtract:
        return Value(moneyOf(left) - moneyOf(right));
    case Operator::Multiply:
        if (isMoney(left) && isMoney(right))
            return Value(left.toCurrency() * right.toCurrency());
        return Value(Currency::fromDouble(numberOf(left) * numberOf(right)));
    case Operator::Divide:
        if (isMoney(right))
            return number(numberOf(left) / numberOf(right));
        return Value(Currency::fromDouble(numberOf(left) / numberOf(right)));
    default:
        return Value(Currency::fromDouble(std::fmod(numberOf(left), numberOf(right))));
    }
}

Value numberResult(Operator op, double left, double right)
{
    switch (op) {
    case Operator::Add:
        return number(left + right);
    case Operator::Subtract:
        return number(left - right);
    case Operator::Multiply:
        return number(left * right);
    case Operator::Divide:
        return number(left / right);
    default:
        return number(std::fmod(left, right));
    }
}

Value dateResult(Operator op, const Value &left, const Value &right)
{
    if (right.type() == DataType::Date)
        return Value(double(right.toDate().daysTo(left.toDate())));
    const double days = numberOf(right);
    if (!(std::abs(days) <= 4e6))
        throw RunTimeError(::errors::kOverflow);
    const auto whole = qint64(op == Operator::Add ? days : -days);
    const QDateTime date = left.toDate().addDays(whole);
    if (date.date().year() < 100 || date.date().year() > 9999)
        throw RunTimeError(::errors::kOverflow);
    return Value(date);
}

Value arithmetic(Operator op, const Value &left, const Value &right)
{
    const bool text = left.type() == DataType::VarWChar || right.type() == DataType::VarWChar;
    if (op == Operator::Join || (op == Operator::Add && text))
        return Value(checkedLength(textOf(left) + textOf(right)));
    if (left.isNull() || right.isNull())
        return {};
    if (left.type() == DataType::Date)
        return dateResult(op, left, right);
    if ((op == Operator::Divide || op == Operator::Modulo) && numberOf(right) == 0)
        throw RunTimeError(::errors::kDivisionByZero);
    if (isMoney(left) || isMoney(right))
        return moneyResult(op, left, right);
    return numberResult(op, numberOf(left), numberOf(right));
}

bool holds(Operator op, const Value &left, const Value &right)
{
    if (left.isNull() || right.isNull())
        return false;
    const int order = compare(left, right);
    switch (op) {
    case Operator::Equal:
        return order == 0;
    case Operator::NotEqual:
        return order != 0;
    case Operator::Less:
        return order < 0;
    case Operator::LessEqual:
        return order <= 0;
    case Operator::Greater:
        return order > 0;
    default:
        return order >= 0;
    }
}

class Evaluation
{
public:
    explicit Evaluation(Environment &environment) : m_environment(environment) {}

    // In one piece: a case for each kind of expression.
    Value of(const Expr &expr)
    {
        switch (expr.kind) {
        case ExprKind::Constant:
            return expr.constant;
        case ExprKind::Field:
            return m_environment.field(expr.column);
        case ExprKind::FormulaName:
            return of(*expr.formula);
        case ExprKind::Not: {
            const Value value = of(*expr.arguments[0]);
            return value.isNull() ? Value() : Value(!value.toBoolean());
        }
        case ExprKind::Range: {
            const Value value = of(*expr.arguments[0]);
            return Value(holds(Operator::GreaterEqual, value, of(*expr.arguments[1])) &&
                         holds(Operator::LessEqual, value, of(*expr.arguments[2])));
        }
        case ExprKind::List:
            return Value(isInList(expr));
        case ExprKind::If:
            if (isTrue(of(*expr.arguments[0])))
                return of(*expr.arguments[1]);
            return expr.arguments.size() > 2 ? of(*expr.arguments[2]) : Value();
        case ExprKind::Aggregate:
            return m_environment.aggregate(expr);
        case ExprKind::Special:
            return m_environment.special(expr.special);
        case ExprKind::Negate:
        case ExprKind::Binary:
        case ExprKind::Call:
            break;
        }
        return computed(expr);
    }

private:
    /// What may fail by its values.
    Value computed(const Expr &expr)
    {
        if (expr.kind == ExprKind::Binary &&
            (expr.op == Operator::And || expr.op == Operator::Or)) {
            const bool left = isTrue(of(*expr.arguments[0]));
            if (left == (expr.op == Operator::Or))
                return Value(left);
            return Value(isTrue(of(*expr.arguments[1])));
        }
        std::vector<Value> values;
        values.reserve(expr.arguments.size());
        for (const ExprPtr &argument : expr.arguments)
            values.push_back(of(*argument));
        try {
            if (expr.kind == ExprKind::Call)
                return expr.function->call(values);
            if (expr.kind == ExprKind::Negate)
                return negated(values[0]);
            return isComparison(expr.op) ? Value(holds(expr.op, values[0], values[1]))
                                         : arithmetic(expr.op, values[0], values[1]);
        } catch (const RunTimeError &error) {
            raiseAt(expr.position, error.description());
        }
    }

    static Value negated(const Value &value)
    {
        if (value.isNull())
            return {};
        return isMoney(value) ? Value(-value.toCurrency()) : Value(-numberOf(value));
    }

    bool isInList(const Expr &expr)
    {
        const Value value = of(*expr.arguments[0]);
        for (size_t i = 1; i < expr.arguments.size(); ++i) {
            if (holds(Operator::Equal, value, of(*expr.arguments[i])))
                return true;
        }
        return false;
    }

    Environment &m_environment;
};

} // namespace

Value evaluate(const Expr &expr, Environment &environment)
{
    return Evaluation(environment).of(expr);
}

bool isTrue(const Value &value)
{
    return !value.isNull() && value.toBoolean();
}

int compare(const Value &a, const Value &b)
{
    switch (a.type()) {
    case DataType::VarWChar:
        return a.toText().compare(b.toText(), Qt::CaseInsensitive);
    case DataType::Date: {
        const QDateTime left = a.toDate();
        const QDateTime right = b.toDate();
        return left < right ? -1 : right < left ? 1 : 0;
    }
    case DataType::Boolean:
        return int(a.toBoolean()) - int(b.toBoolean());
    default:
        break;
    }
    if (isMoney(a) && isMoney(b))
        return a.toCurrency() < b.toCurrency() ? -1 : b.toCurrency() < a.toCurrency() ? 1 : 0;
    return sign(numberOf(a) - numberOf(b));
}

Value sumOf(const Value &a, const Value &b)
{
    if (a.isNull())
        return b;
    return b.isNull() ? a : arithmetic(Operator::Add, a, b);
}

} // namespace report

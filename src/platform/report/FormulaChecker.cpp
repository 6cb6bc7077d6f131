#include "platform/report/FormulaChecker.h"

#include "platform/report/Functions.h"

using namespace Qt::StringLiterals;

namespace report {

namespace {

/// Formulas that name one another twice each would double the work with every one of them.
constexpr qint64 kMostWork = 100'000;
/// Formulas that stand open within one another; each goes through a tree of bounded depth.
constexpr int kMostOpen = 50;

bool isNumeric(Type type)
{
    return type == Type::Number || type == Type::Money || type == Type::Null;
}

bool isTruth(Type type)
{
    return type == Type::Truth || type == Type::Null;
}

/// The type that serves both, or Bytes when there is none.
Type commonType(Type a, Type b)
{
    if (a == b || b == Type::Null)
        return a;
    if (a == Type::Null)
        return b;
    return isNumeric(a) && isNumeric(b) ? Type::Money : Type::Bytes;
}

[[noreturn]] void raiseTypes(int position, Type left, Type right)
{
    raiseAt(position, u"%1 og %2 passer ikke sammen"_s.arg(nameOf(left), nameOf(right)));
}

void requireTruth(const Expr &expr)
{
    if (!isTruth(expr.type))
        raiseAt(expr.position, u"her skal et vilkår stå, ikke %1"_s.arg(nameOf(expr.type)));
}

void requireComparable(const Expr &expr, Type left, Type right)
{
    const Type common = commonType(left, right);
    if (common == Type::Bytes)
        raiseTypes(expr.position, left, right);
}

} // namespace

Type FormulaChecker::check(Expr &expr, Use use)
{
    if (expr.kind == ExprKind::Aggregate && use == Use::RowOnly)
        raiseAt(expr.position, u"en sum kan ikke brukes her"_s);
    const Use inner = expr.kind == ExprKind::Aggregate ? Use::RowOnly : use;
    expr.work = 1;
    for (const ExprPtr &argument : expr.arguments) {
        check(*argument, inner);
        expr.work += argument->work;
    }
    expr.type = typeOfNode(expr, use);
    if (expr.formula)
        expr.work += expr.formula->work;
    if (expr.work > kMostWork)
        raiseAt(expr.position, u"formlene viser til hverandre for mange ganger"_s);
    return expr.type;
}

// In one piece: a case for each kind of expression.
Type FormulaChecker::typeOfNode(Expr &expr, Use use)
{
    switch (expr.kind) {
    case ExprKind::Constant:
        return typeOf(expr.constant.type());
    case ExprKind::Field: {
        const FieldInfo field = m_names.field(expr.name);
        if (field.column < 0)
            raiseAt(expr.position, u"feltet {%1} finnes ikke"_s.arg(expr.name));
        expr.column = field.column;
        return field.type;
    }
    case ExprKind::FormulaName:
        return typeOfFormula(expr, use);
    case ExprKind::Negate:
        if (!isNumeric(expr.arguments[0]->type))
            raiseAt(expr.position, u"her skal et tall stå"_s);
        return expr.arguments[0]->type;
    case ExprKind::Not:
        requireTruth(*expr.arguments[0]);
        return Type::Truth;
    case ExprKind::Binary:
        return typeOfBinary(expr);
    case ExprKind::Range:
    case ExprKind::List:
        for (size_t i = 1; i < expr.arguments.size(); ++i)
            requireComparable(expr, expr.arguments[0]->type, expr.arguments[i]->type);
        return Type::Truth;
    case ExprKind::If:
        return typeOfChoice(expr);
    case ExprKind::Call:
        return typeOfCall(expr);
    case ExprKind::Aggregate:
        return typeOfAggregate(expr);
    case ExprKind::Special:
        break;
    }
    if (expr.special == Special::Today)
        return Type::Date;
    if (expr.special == Special::TimeOfDay)
        return Type::Text;
    if (use == Use::RowOnly)
        raiseAt(expr.position, u"sidetall og radnummer kan ikke brukes her"_s);
    return expr.special == Special::TotalPages ? Type::Text : Type::Number;
}

Type FormulaChecker::typeOfBinary(const Expr &expr) const
{
    const Type left = expr.arguments[0]->type;
    const Type right = expr.arguments[1]->type;
    switch (expr.op) {
    case Operator::And:
    case Operator::Or:
        requireTruth(*expr.arguments[0]);
        requireTruth(*expr.arguments[1]);
        return Type::Truth;
    case Operator::Join:
        if (left == Type::Bytes || right == Type::Bytes)
            raiseTypes(expr.position, left, right);
        return Type::Text;
    default:
        break;
    }
    if (isComparison(expr.op)) {
        requireComparable(expr, left, right);
        if (expr.op != Operator::Equal && expr.op != Operator::NotEqual &&
            commonType(left, right) == Type::Truth)
            raiseTypes(expr.position, left, right);
        return Type::Truth;
    }
    return typeOfArithmetic(expr, left, right);
}

Type FormulaChecker::typeOfArithmetic(const Expr &expr, Type left, Type right) const
{
    const bool adds = expr.op == Operator::Add || expr.op == Operator::Subtract;
    if (isNumeric(left) && isNumeric(right)) {
        const Type common = commonType(left, right);
        // Money in money is a number, as in a share of a sum.
        const bool ratio = expr.op == Operator::Divide && right == Type::Money;
        return ratio ? Type::Number : common;
    }
    if (expr.op == Operator::Add && commonType(left, right) == Type::Text)
        return Type::Text;
    if (adds && left == Type::Date && right == Type::Number)
        return Type::Date;
    if (expr.op == Operator::Subtract && left == Type::Date && right == Type::Date)
        return Type::Number;
    raiseTypes(expr.position, left, right);
}

Type FormulaChecker::typeOfChoice(const Expr &expr) const
{
    requireTruth(*expr.arguments[0]);
    const Type chosen = expr.arguments[1]->type;
    if (expr.arguments.size() == 2)
        return chosen;
    const Type other = expr.arguments[2]->type;
    const Type common = commonType(chosen, other);
    if (common == Type::Bytes && chosen != other)
        raiseTypes(expr.position, chosen, other);
    return common;
}

Type FormulaChecker::typeOfCall(const Expr &expr) const
{
    const Function &function = *expr.function;
    for (size_t i = 0; i < expr.arguments.size(); ++i) {
        const Expr &argument = *expr.arguments[i];
        if (!takesType(function, i, argument.type))
            raiseAt(argument.position,
                    u"«%1» tar ikke imot %2 her"_s.arg(function.name, nameOf(argument.type)));
    }
    if (function.result != Type::Null)
        return function.result;
    const Type first = expr.arguments[0]->type;
    if (!function.givesEither)
        return first;
    const Type second = expr.arguments[1]->type;
    const Type common = commonType(first, second);
    if (common == Type::Bytes && first != second)
        raiseTypes(expr.position, first, second);
    return common;
}

Type FormulaChecker::typeOfAggregate(Expr &expr)
{
    expr.scope = expr.name.isEmpty() ? kOwnScope : m_names.group(expr.name);
    if (expr.scope == kOwnScope && !expr.name.isEmpty())
        raiseAt(expr.position, u"gruppen «%1» finnes ikke"_s.arg(expr.name));
    if (!expr.once.isEmpty())
        expr.onceScope = m_names.group(expr.once);
    if (!expr.once.isEmpty() && expr.onceScope < 0)
        raiseAt(expr.position, u"gruppen «%1» finnes ikke"_s.arg(expr.once));
    if (expr.slot < 0)
        expr.slot = m_slots++;
    if (expr.aggregate == Aggregate::Count || expr.aggregate == Aggregate::RunningCount)
        return Type::Number;
    const Type type = expr.arguments[0]->type;
    const bool extremes = expr.aggregate == Aggregate::Min || expr.aggregate == Aggregate::Max;
    const bool ordered = type == Type::Text || type == Type::Date;
    if (!isNumeric(type) && !(extremes && ordered))
        raiseAt(expr.position, u"%1 kan ikke summeres"_s.arg(nameOf(type)));
    return type;
}

Type FormulaChecker::typeOfFormula(Expr &expr, Use use)
{
    Expr *formula = m_names.formula(expr.name);
    if (!formula)
        raiseAt(expr.position, u"formelen {@%1} finnes ikke"_s.arg(expr.name));
    const State state = m_states.value(formula, State::Untouched);
    if (state == State::Open)
        raiseAt(expr.position, u"formelen {@%1} viser til seg selv"_s.arg(expr.name));
    // What was checked for a band has to be looked at again for narrower use.
    const State wanted = use == Use::RowOnly ? State::DoneForRows : State::Done;
    if (state < wanted) {
        if (m_open == kMostOpen)
            raiseAt(expr.position, u"for mange formler viser til hverandre"_s);
        ++m_open;
        m_states.insert(formula, State::Open);
        check(*formula, use);
        m_states.insert(formula, wanted);
        --m_open;
    }
    expr.formula = formula;
    return formula->type;
}

} // namespace report

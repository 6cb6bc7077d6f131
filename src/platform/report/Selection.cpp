#include "platform/report/Selection.h"

#include "platform/report/Evaluator.h"
#include "platform/report/FormulaChecker.h"
#include "platform/report/Functions.h"
#include "platform/report/Query.h"
#include "runtime/Clock.h"
#include "runtime/Format.h"
#include "runtime/Moment.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace report {

namespace {

/// Constants have no fields, sums or pages.
class NothingButToday : public Environment, public Names
{
public:
    Value field(int) override { return {}; }
    Value aggregate(const Expr &) override { return {}; }
    Value special(Special) override { return Value(utcMoment(Clock::current().today())); }
    FieldInfo field(QStringView) const override { return {}; }
    int group(QStringView) const override { return kOwnScope; }
    Expr *formula(QStringView) override { return nullptr; }
};

bool isConstant(const Expr &expr)
{
    switch (expr.kind) {
    case ExprKind::Field:
    case ExprKind::FormulaName:
    case ExprKind::Aggregate:
        return false;
    case ExprKind::Special:
        return expr.special == Special::Today;
    default:
        return std::all_of(expr.arguments.begin(), expr.arguments.end(),
                           [](const ExprPtr &argument) { return isConstant(*argument); });
    }
}

QString signOf(Operator op)
{
    switch (op) {
    case Operator::Equal:
        return u"="_s;
    case Operator::NotEqual:
        return u"<>"_s;
    case Operator::Less:
        return u"<"_s;
    case Operator::LessEqual:
        return u"<="_s;
    case Operator::Greater:
        return u">"_s;
    case Operator::GreaterEqual:
        return u">="_s;
    case Operator::Add:
        return u"+"_s;
    case Operator::Subtract:
        return u"-"_s;
    case Operator::Multiply:
        return u"*"_s;
    case Operator::Divide:
        return u"/"_s;
    default:
        return {};
    }
}

class Writer
{
public:
    explicit Writer(const Query &query) : m_query(query) {}

    QString condition(Expr &expr)
    {
        if (isConstant(expr))
            return truth(expr);
        switch (expr.kind) {
        case ExprKind::Field:
            return field(expr) + "=True"_L1;
        case ExprKind::Not:
            return "NOT ("_L1 + condition(*expr.arguments[0]) + u')';
        case ExprKind::Range:
            return operand(*expr.arguments[0]) + " BETWEEN "_L1 + operand(*expr.arguments[1]) +
                   " AND "_L1 + operand(*expr.arguments[2]);
        case ExprKind::List:
            return list(expr);
        case ExprKind::Binary:
            if (expr.op == Operator::And || expr.op == Operator::Or)
                return chain(expr);
            if (isComparison(expr.op))
                return operand(*expr.arguments[0]) + signOf(expr.op) + operand(*expr.arguments[1]);
            break;
        case ExprKind::Call:
            if (expr.function->name == u"IsNull")
                return operand(*expr.arguments[0]) + " IS NULL"_L1;
            break;
        default:
            break;
        }
        raiseUnusable(expr);
    }

private:
    [[noreturn]] static void raiseUnusable(Expr &expr)
    {
        raiseAt(expr.position, u"dette kan ikke brukes i et utvalg"_s);
    }

    /// Links of one operator stand side by side, since the database limits the nesting.
    QString chain(Expr &expr)
    {
        Expr *link = &expr;
        QStringList links;
        while (link->kind == ExprKind::Binary && link->op == expr.op) {
            links.prepend(part(*link->arguments[1]));
            link = link->arguments[0].get();
        }
        links.prepend(part(*link));
        return links.join(expr.op == Operator::And ? " AND "_L1 : " OR "_L1);
    }

    QString part(Expr &expr)
    {
        const QString text = condition(expr);
        const bool chained = expr.kind == ExprKind::Binary && !isComparison(expr.op);
        return chained ? u'(' + text + u')' : text;
    }

    QString list(Expr &expr)
    {
        QStringList values;
        for (size_t i = 1; i < expr.arguments.size(); ++i)
            values += operand(*expr.arguments[i]);
        return operand(*expr.arguments[0]) + " IN ("_L1 + values.join(", "_L1) + u')';
    }

    QString operand(Expr &expr)
    {
        if (isConstant(expr))
            return literal(valueOf(expr), expr);
        switch (expr.kind) {
        case ExprKind::Field:
            return field(expr);
        case ExprKind::Negate:
            return "-("_L1 + operand(*expr.arguments[0]) + u')';
        case ExprKind::Call: {
            const QStringView name = expr.function->name;
            if (name == u"Year" || name == u"Month" || name == u"Day")
                return name.toString() + u'(' + operand(*expr.arguments[0]) + u')';
            break;
        }
        case ExprKind::Binary: {
            const QString sign = signOf(expr.op);
            if (!sign.isEmpty() && !isComparison(expr.op))
                // The blanks keep two minus signs from being the mark of a comment.
                return u'(' + operand(*expr.arguments[0]) + u' ' + sign + u' ' +
                       operand(*expr.arguments[1]) + u')';
            break;
        }
        default:
            break;
        }
        raiseUnusable(expr);
    }

    QString field(Expr &expr)
    {
        const QString &name = expr.name;
        const qsizetype dot = name.indexOf(u'.');
        const QString table = name.left(std::max<qsizetype>(dot, 0)).trimmed();
        const QString column = name.sliced(dot + 1).trimmed();
        if (column.isEmpty() || column.contains(u'.') || (dot >= 0 && !m_query.readsTable(table)))
            raiseAt(expr.position, u"feltet {%1} finnes ikke i rapporten"_s.arg(name));
        if (dot < 0)
            return u"[%1]"_s.arg(column);
        return u"[%1].[%2]"_s.arg(table, column);
    }

    Value valueOf(Expr &expr)
    {
        m_checker.check(expr, FormulaChecker::Use::RowOnly);
        return evaluate(expr, m_nothing);
    }

    QString truth(Expr &expr)
    {
        const Value value = valueOf(expr);
        if (!value.isNull() && value.type() != DataType::Boolean)
            raiseAt(expr.position, u"her skal et vilkår stå, ikke %1"_s.arg(nameOf(expr.type)));
        return isTrue(value) ? u"1=1"_s : u"1=0"_s;
    }

    static QString literal(const Value &value, Expr &expr)
    {
        switch (value.type()) {
        case DataType::Double:
            return QString::number(value.toDouble(), 'g', kDigits);
        case DataType::Boolean:
            return value.toBoolean() ? u"True"_s : u"False"_s;
        case DataType::Date:
            return Format(value.toDate(), u"\\#mm\\/dd\\/yyyy\\#");
        case DataType::VarWChar:
            return u'\'' + value.toText().replace(u'\'', "''"_L1) + u'\'';
        default:
            raiseUnusable(expr);
        }
    }

    static constexpr int kDigits = 15;

    const Query &m_query;
    NothingButToday m_nothing;
    FormulaChecker m_checker{m_nothing};
};

} // namespace

QString conditionOf(QStringView selection, const Query &query)
{
    if (selection.trimmed().isEmpty())
        return {};
    const ExprPtr expr = parseFormula(selection);
    return Writer(query).condition(*expr);
}

} // namespace report

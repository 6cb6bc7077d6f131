#pragma once

#include "runtime/Value.h"

#include <QString>
#include <QStringView>

#include <memory>
#include <vector>

/// The one language of report formulas and selections, as a tree.
namespace report {

/// The types of the language. Every whole or floating column is a Number, a CURRENCY one is Money.
enum class Type { Null, Number, Money, Text, Date, Truth, Bytes };

[[nodiscard]] Type typeOf(DataType column);
/// The type's Norwegian name, as in "tall".
[[nodiscard]] QString nameOf(Type type);

enum class ExprKind {
    Constant,
    Field,
    FormulaName, ///< {@Name}
    Negate,
    Not,
    Binary,
    Range,     ///< first argument in second to third
    List,      ///< first argument in the others
    If,        ///< condition, then, else (may be missing)
    Call,      ///< of a function of the table in Functions.h
    Aggregate, ///< over rows
    Special,   ///< a value of the layout, such as the page number
};

enum class Operator {
    And,
    Or,
    Equal,
    NotEqual,
    Less,
    LessEqual,
    Greater,
    GreaterEqual,
    Join, ///< &
    Add,
    Subtract,
    Multiply,
    Divide,
    Modulo,
};

[[nodiscard]] constexpr bool isComparison(Operator op)
{
    return op >= Operator::Equal && op <= Operator::GreaterEqual;
}

enum class Aggregate { Sum, Count, Min, Max, Average, RunningSum, RunningCount };
/// Whether it ends with the current row.
[[nodiscard]] constexpr bool isRunning(Aggregate aggregate)
{
    return aggregate == Aggregate::RunningSum || aggregate == Aggregate::RunningCount;
}
enum class Special { PageNumber, TotalPages, RecordNumber, Today, TimeOfDay };

struct Function;
struct Expr;

/// Owns a tree, or nothing; a copy owns a tree of its own.
class ExprPtr
{
public:
    ExprPtr();
    explicit ExprPtr(std::unique_ptr<Expr> expr);
    ExprPtr(const ExprPtr &other);
    ExprPtr(ExprPtr &&other) noexcept;
    ExprPtr &operator=(ExprPtr other) noexcept;
    ~ExprPtr();

    [[nodiscard]] Expr *get() const { return m_expr.get(); }
    Expr &operator*() const { return *m_expr; }
    Expr *operator->() const { return m_expr.get(); }
    explicit operator bool() const { return m_expr != nullptr; }

private:
    std::unique_ptr<Expr> m_expr;
};

struct Expr
{
    ExprKind kind = ExprKind::Constant;
    int position = 0; ///< of the token that names it, in UTF-16 units from the text's start
    Value constant;   ///< of Constant; a number as double, a date, a text, a truth value
    QString name; ///< of Field and FormulaName; of Aggregate the group, empty for the band's own
    QString once; ///< of Aggregate: the group of which only the first row counts; may be empty
    Operator op = Operator::And;
    Aggregate aggregate = Aggregate::Sum;
    Special special = Special::PageNumber;
    const Function *function = nullptr;
    std::vector<ExprPtr> arguments;
    int depth = 1; ///< levels of the tree, limited by the parser

    // Filled in by the checker.
    Type type = Type::Null;
    int column = -1;               ///< of Field
    const Expr *formula = nullptr; ///< of FormulaName; not owned
    int scope = -1;                ///< of Aggregate: the group's number, kWholeReport or kOwnScope
    int onceScope = -1;            ///< of Aggregate with `once`: that group's number
    int slot = -1;                 ///< of Aggregate: its own number within the report
    qint64 work = 1;               ///< nodes that are gone through, named formulas included
};

inline ExprPtr::ExprPtr() = default;
inline ExprPtr::ExprPtr(std::unique_ptr<Expr> expr) : m_expr(std::move(expr)) {}
inline ExprPtr::ExprPtr(const ExprPtr &other)
    : m_expr(other ? std::make_unique<Expr>(*other) : nullptr)
{
}
inline ExprPtr::ExprPtr(ExprPtr &&other) noexcept = default;
inline ExprPtr &ExprPtr::operator=(ExprPtr other) noexcept
{
    m_expr = std::move(other.m_expr);
    return *this;
}
inline ExprPtr::~ExprPtr() = default;

/// Scopes of an aggregate beside the numbers of groups, which count from 0 for the outermost one.
inline constexpr int kWholeReport = -1;
inline constexpr int kOwnScope = -2; ///< the rows of the band that it stands in

/// Reads exactly one expression. kFormula with the place in the text and the reason when it is
/// none. The tree does not refer to the text.
[[nodiscard]] ExprPtr parseFormula(QStringView text);

/// kFormula: "… ved tegn N: why".
[[noreturn]] void raiseAt(int position, const QString &why);

} // namespace report

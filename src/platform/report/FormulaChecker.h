#pragma once

#include "platform/report/Formula.h"

#include <QHash>

namespace report {

/// A column of the report's rows.
struct FieldInfo
{
    int column = -1;
    Type type = Type::Null;
};

/// What the names in formulas stand for. Names are found without regard to case.
class Names
{
public:
    virtual ~Names() = default;
    /// Column -1 when there is no such field.
    [[nodiscard]] virtual FieldInfo field(QStringView name) const = 0;
    /// The group's number, or kOwnScope when there is none of that name.
    [[nodiscard]] virtual int group(QStringView name) const = 0;
    /// The tree of a named formula, or null. It outlives every tree that names it.
    [[nodiscard]] virtual Expr *formula(QStringView name) = 0;
};

/// Resolves the names of formulas and works out their types. Every fault raises kFormula; so do
/// formulas that name one another so often that working one out would take more than 100 000 steps,
/// or more than 50 within one another.
class FormulaChecker
{
public:
    /// `names` must outlive the checker.
    explicit FormulaChecker(Names &names) : m_names(names) {}

    enum class Use {
        Anywhere, ///< in a band
        RowOnly,  ///< over a row's fields alone: no aggregates, nothing of the layout
    };

    /// Fills in what the checker finds out and returns the type.
    Type check(Expr &expr, Use use = Use::Anywhere);

    /// How many aggregates have been met; their slots count from 0.
    [[nodiscard]] int slotCount() const { return m_slots; }

private:
    enum class State { Open, Untouched, Done, DoneForRows };

    Type typeOfNode(Expr &expr, Use use);
    Type typeOfBinary(const Expr &expr) const;
    Type typeOfArithmetic(const Expr &expr, Type left, Type right) const;
    Type typeOfChoice(const Expr &expr) const;
    Type typeOfCall(const Expr &expr) const;
    Type typeOfAggregate(Expr &expr);
    Type typeOfFormula(Expr &expr, Use use);

    Names &m_names;
    QHash<const Expr *, State> m_states; // of the named formulas
    int m_open = 0;
    int m_slots = 0;
};

} // namespace report

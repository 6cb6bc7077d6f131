#pragma once

#include "platform/report/Formula.h"

namespace report {

/// What a formula is worked out on.
class Environment
{
public:
    virtual ~Environment() = default;
    [[nodiscard]] virtual Value field(int column) = 0;
    [[nodiscard]] virtual Value aggregate(const Expr &expr) = 0;
    [[nodiscard]] virtual Value special(Special special) = 0;
};

/// The value of a checked tree. Null makes arithmetic Null and a comparison false; it joins as the
/// empty text. Texts compare without regard to case. What goes wrong (an overflow, a division by
/// zero, a date that does not exist) raises kFormula.
[[nodiscard]] Value evaluate(const Expr &expr, Environment &environment);

/// True when the value is true; Null is not.
[[nodiscard]] bool isTrue(const Value &value);

/// Less than 0, 0, or more, as `a` is before, equal to or behind `b`; neither is Null, and both
/// have types that compare.
[[nodiscard]] int compare(const Value &a, const Value &b);

/// The sum of two numeric values, exact when both are money; Null counts as nothing.
[[nodiscard]] Value sumOf(const Value &a, const Value &b);

} // namespace report

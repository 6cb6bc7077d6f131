#pragma once

#include "platform/report/Evaluator.h"

namespace report {

/// Where something stands in a report file, counted from 1.
struct Place
{
    QString file;
    int line = 0;
    int column = 0;
};

/// A formula of a report file, or none.
struct FormulaText
{
    ExprPtr expr; ///< null when the file has none here
    Place place;
    QString name; ///< of the attribute, or "@Name" of a named one; for messages

    explicit operator bool() const { return bool(expr); }
};

/// Raises `number` with "Fak.rpt, linje 12, kolonne 5: why".
[[noreturn]] void raiseAt(const Place &place, const QString &why, int number);
/// Raises kFormula with the place and the name of the formula.
[[noreturn]] void raiseIn(const FormulaText &formula, const QString &why);

/// Parses a formula; its faults carry the place in the file.
[[nodiscard]] FormulaText readFormula(const QString &text, const Place &place, const QString &name);
/// The value of a checked formula; its faults carry the place in the file.
[[nodiscard]] Value valueOf(const FormulaText &formula, Environment &environment);
/// True when the formula holds, and where the file has none.
[[nodiscard]] bool isShown(const FormulaText &visible, Environment &environment);

} // namespace report

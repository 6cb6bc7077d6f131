#pragma once

#include "platform/report/Formula.h"

namespace report {

/// A function of the formula language.
struct Function
{
    QStringView name; ///< found without regard to case
    /// One letter a parameter: n number or money, t text, d date, a anything; those behind "?" may
    /// be left out, and "*" behind the only one lets it be given any number of times.
    const char *parameters;
    /// Type::Null stands for the type of the argument that the function gives back.
    Type result;
    /// Gets arguments of the right types, any of which may be Null. Raises RunTimeError.
    Value (*call)(const std::vector<Value> &arguments);
    bool givesEither = false; ///< gives back the first argument or the second
};

/// The longest text that a formula makes, in characters; error 14 beyond it.
inline constexpr qsizetype kLongestText = 1'000'000;
/// `text` itself, unless it is too long.
[[nodiscard]] QString checkedLength(QString text);

/// Null when there is none of that name.
[[nodiscard]] const Function *findFunction(QStringView name);

/// True when `function` takes so many arguments.
[[nodiscard]] bool takesCount(const Function &function, size_t count);
/// True when argument `index` may have that type; Null fits everywhere.
[[nodiscard]] bool takesType(const Function &function, size_t index, Type type);

/// A value as text: amounts as "1 234,50", dates as "dd.mm.yyyy", truth as "Ja" and "Nei", Null as
/// the empty text, other numbers plain. Error 13 for bytes.
[[nodiscard]] QString textOf(const Value &value);
/// By a pattern of runtime/Format.h, or by "### ##0.00" and "### ##0", which part all thousands by
/// no-break blanks. Null is the empty text. An unknown pattern raises error 5.
[[nodiscard]] QString textOf(const Value &value, QStringView pattern);

/// The number of any numeric value; a single counts as the decimal number that it shows.
[[nodiscard]] double numberOf(const Value &value);
/// The amount of any numeric value, rounded to a ten-thousandth.
[[nodiscard]] Currency moneyOf(const Value &value);

} // namespace report

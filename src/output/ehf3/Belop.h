#pragma once

#include "runtime/Currency.h"

#include <QString>

/// Amounts, quantities and rates of a document: all are Currency, so exact decimals, and none
/// passes through a binary fraction.
namespace ehf3 {

/// A quantity or a rate as the decimal number that its single shows.
[[nodiscard]] Currency fraSingle(float tall);

/// To two decimals, so an amount to the øre, a half away from nought.
[[nodiscard]] Currency tilHundredel(Currency belop);

/// `prosent` percent of `belop`, rounded once, to the øre and a half away from nought.
[[nodiscard]] Currency prosentAv(Currency belop, Currency prosent);

/// `teller` / `nevner`, to the nearest ten-thousandth. `nevner` is not nought.
[[nodiscard]] Currency forhold(Currency teller, Currency nevner);

/// The plain number with a point, at least `desimaler` decimals and as many more as it has.
[[nodiscard]] QString tall(Currency verdi, int desimaler);

} // namespace ehf3

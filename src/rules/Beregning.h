#pragma once

#include "rules/Innstilling.h"
#include "runtime/Currency.h"

#include <QString>

/// How the amounts of an order are formed from the text of its line cells. There is no line object:
/// the cells are the working data, and every sum is formed from them anew.
///
/// LinjeSum and BeregnSummer run with errors passed over, statement by statement: a cell that does
/// not read as a number leaves what the last one that did had given.

/// The columns of the line grid that take part, counted from 1.
namespace linjekolonne {
inline constexpr int kAntall = 3;
inline constexpr int kPris = 4;
inline constexpr int kSumNetto = 6;
inline constexpr int kMvaPst = 7;
inline constexpr int kSumBrutto = 8;
} // namespace linjekolonne

/// The lines of an order as the calculation sees them. Columns and rows count from 1. A
/// RunTimeError out of any of these is passed over like one of the calculation's own.
class OrdreCeller
{
public:
    virtual ~OrdreCeller() = default;

    [[nodiscard]] virtual int antallRader() const = 0; ///< rows that hold data
    [[nodiscard]] virtual QString tekst(int kol, int rad) const = 0;
    virtual void settTekst(int kol, int rad, const QString &tekst) = 0;
};

/// The header fields that the calculation writes, in this order.
enum class SumFelt { SumNetto, MvaKr, SumBrutto, Kontrollsiffer, Avrunding };

/// Takes the header fields. A RunTimeError out of it is passed over.
class OrdreSummer
{
public:
    virtual ~OrdreSummer() = default;

    virtual void settTekst(SumFelt felt, const QString &tekst) = 0;
};

/// The cell's text as an amount by the machine's locale; blanks only count as 0. Not trapped:
/// error 13 for text that is no number, 6 for one outside the range.
[[nodiscard]] Currency CelleBelop(const OrdreCeller &celler, int kol, int rad);

/// The price without VAT of a product as its register row tells it. `bruttoPris` 1 and -1 say that
/// `utPris` includes VAT of `mvaSats` percent. Not trapped: error 11 for a rate of -100, 6 for a
/// price outside the range.
[[nodiscard]] Currency NettoPris(Currency utPris, float mvaSats, int bruttoPris);

/// The module's VAT rates, rising and parted by tabs, as the list of a cell.
[[nodiscard]] QString MvaSatser();

/// Writes the line's net and gross sum, after a cell of quantity, price or VAT percent was left.
void LinjeSum(OrdreCeller &celler, int rad);

/// Writes the order's sums: net, VAT, the amount to pay with its check digit, and the rounding. VAT
/// is added up at four decimals a line. The setting "Avrunding" rounds the amount to pay: 1 to the
/// nearest whole krone with a half to the even one, 2 cuts to whole kroner, any other value does
/// nothing. The field Avrunding shows what was added.
void BeregnSummer(const OrdreCeller &celler, const Innstilling &innstilling, OrdreSummer &summer);

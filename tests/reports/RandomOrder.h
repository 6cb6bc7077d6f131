#pragma once

#include "reports/InvoiceTest.h"

#include <random>

/// Numbers, choices and texts from a start value.
class Dice
{
public:
    explicit Dice(quint32 start) : m_random(start) {}

    /// From `first` to `last`, both included.
    [[nodiscard]] int number(int first, int last)
    {
        return first + static_cast<int>(m_random() % static_cast<quint32>(last - first + 1));
    }
    [[nodiscard]] bool hits(int percent) { return number(1, 100) <= percent; }
    template<class List>
    [[nodiscard]] auto oneOf(const List &list)
    {
        return list[static_cast<size_t>(number(0, static_cast<int>(std::size(list)) - 1))];
    }
    /// Of up to `most` characters, neither blank nor with a blank at its ends: words, one letter
    /// over and over, or any letters of the code page with and without blanks. An apostrophe is not
    /// among them, since no order with one is saved.
    [[nodiscard]] QString text(int most);

private:
    std::mt19937 m_random;
};

/// An order as a user may enter it, and how it is printed.
struct RandomOrder
{
    invoice::Head head;
    std::vector<invoice::Line> lines;
    QString rounding;
    QString form;
    QString note;
    bool original = true;
    bool longSeller = false; ///< the seller's name and address fill their columns
};

/// Product numbers that half of the lines have; for a register in which they have units of any
/// kind.
[[nodiscard]] QStringList productsWithUnits();

/// The same start value draws the same order.
[[nodiscard]] RandomOrder drawOrder(quint32 start);

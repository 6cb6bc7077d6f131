#pragma once

#include "rules/Beregning.h"

#include <QHash>
#include <QString>

#include <array>
#include <vector>

/// The lines of one demo order as cells of a line grid, so that the module's own calculation forms
/// the amounts.
class DemoLines final : public OrdreCeller, public OrdreSummer
{
public:
    /// Columns that the calculation does not touch.
    static constexpr int kProduktNr = 1;
    static constexpr int kProduktNavn = 2;

    void addText(const QString &text);
    /// `price` and the sums are without VAT.
    void addProduct(const QString &number, const QString &name, Currency quantity, Currency price,
                    Currency vatPercent);
    /// Forms the sums; `rounding` is a value of the setting "Avrunding".
    void sumUp(const QString &rounding);

    [[nodiscard]] int antallRader() const override { return int(m_rows.size()); }
    [[nodiscard]] QString tekst(int col, int row) const override;
    void settTekst(int col, int row, const QString &text) override;
    void settTekst(SumFelt felt, const QString &text) override { m_sums.insert(felt, text); }

    /// A number cell; 0 on a line of text only.
    [[nodiscard]] Currency amount(int col, int row) const { return CelleBelop(*this, col, row); }
    [[nodiscard]] Currency sum(SumFelt felt) const;

private:
    std::vector<std::array<QString, 8>> m_rows; // columns 1 to 8
    QHash<SumFelt, QString> m_sums;
};

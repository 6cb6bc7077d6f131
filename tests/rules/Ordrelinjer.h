#pragma once

#include "rules/Beregning.h"
#include "runtime/Conversions.h"
#include "runtime/Support.h"

#include <QList>
#include <QMap>

#include <utility>

/// The line grid and the header fields as plain texts. The tests write and read them with a decimal
/// comma; the calculation meets the form of the machine's locale.
class Ordrelinjer : public OrdreCeller, public OrdreSummer
{
public:
    /// A line of quantity, price and VAT percent; returns its row.
    int add(const QString &antall, const QString &pris, const QString &mvaPst)
    {
        ++m_rows;
        m_cells[{linjekolonne::kAntall, m_rows}] = machineForm(antall);
        m_cells[{linjekolonne::kPris, m_rows}] = machineForm(pris);
        m_cells[{linjekolonne::kMvaPst, m_rows}] = machineForm(mvaPst);
        return m_rows;
    }

    [[nodiscard]] int antallRader() const override
    {
        if (m_isBroken)
            throw RunTimeError(errors::kObjectNotSet);
        return m_rows;
    }
    [[nodiscard]] QString tekst(int col, int row) const override
    {
        if (m_isBroken)
            throw RunTimeError(errors::kObjectNotSet);
        return m_cells.value({col, row});
    }
    void settTekst(int col, int row, const QString &text) override { m_cells[{col, row}] = text; }

    void settTekst(SumFelt felt, const QString &text) override
    {
        m_written += felt;
        if (felt == m_refused)
            throw RunTimeError(errors::kObjectNotSet);
        m_fields[felt] = text;
    }

    [[nodiscard]] QString netto(int row) const
    {
        return machineForm(tekst(linjekolonne::kSumNetto, row));
    }
    [[nodiscard]] QString brutto(int row) const
    {
        return machineForm(tekst(linjekolonne::kSumBrutto, row));
    }
    [[nodiscard]] QString field(SumFelt felt) const { return machineForm(m_fields.value(felt)); }
    [[nodiscard]] const QList<SumFelt> &written() const { return m_written; }

    /// Every reading fails from now on.
    void breakDown() { m_isBroken = true; }
    /// Writing this field fails.
    void refuse(SumFelt felt) { m_refused = felt; }

private:
    int m_rows = 0;
    bool m_isBroken = false;
    QMap<std::pair<int, int>, QString> m_cells;
    QMap<SumFelt, QString> m_fields;
    QList<SumFelt> m_written;
    std::optional<SumFelt> m_refused;
};

/// Settings that hold "Avrunding" in the form of the settings store.
inline Innstilling avrunding(const QString &value)
{
    return [value](const QString &key, const QString &standard) {
        return key == QStringLiteral("Avrunding") ? value + QChar(0) : standard;
    };
}
inline Innstilling utenInnstillinger()
{
    return [](const QString &, const QString &standard) { return standard; };
}

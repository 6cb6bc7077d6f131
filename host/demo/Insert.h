#pragma once

#include "data/RowValues.h"
#include "runtime/Currency.h"

#include <QDate>
#include <QString>
#include <QStringView>

/// Composes one "INSERT INTO table (names) VALUES (values)" in the desktop dialect.
class Insert
{
public:
    explicit Insert(QStringView table);

    Insert &number(QStringView column, int value);
    /// One decimal, as quantities and percents are stored.
    Insert &quantity(QStringView column, Currency value);
    /// Two decimals, rounded half away from zero.
    Insert &amount(QStringView column, Currency value);
    Insert &text(QStringView column, const QString &value);
    Insert &date(QStringView column, QDate value);

    [[nodiscard]] QString statement() const;

private:
    Insert &add(QStringView column, const QString &literal);

    QString m_table;
    RowValues m_row;
};

/// `value` between apostrophes, with its own apostrophes doubled.
[[nodiscard]] QString textLiteral(const QString &value);

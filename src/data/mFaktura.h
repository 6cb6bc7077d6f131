#pragma once

#include "runtime/Currency.h"
#include "runtime/Value.h"

#include <QString>
#include <QStringView>

/// The condition that limits a statement to the active client. A table's name with its point can
/// stand before it.
[[nodiscard]] QString klientVilkar();

/// One field of the first row that `where` (without the word WHERE) finds in `table`, read through
/// gDB. Where the field is Null or there is no row: 0 for a column of the 32-bit integer type, the
/// empty text for every other type. Not trapped: error 91 after a failed read.
[[nodiscard]] Value HentFelt(const QString &field, const QString &table, const QString &where);

/// Typed text as an amount for a statement: read by the machine's locale, shown by `format` (such
/// as "#0.00"), with "." as the decimal mark. Text that does not convert counts as 0.
[[nodiscard]] QString TallTilSql(const QString &text, QStringView format);

/// An amount for a statement, in the same form.
[[nodiscard]] QString BelopTilSql(Currency amount, QStringView format);

/// Typed text as a whole number for a statement, a fraction rounded half to even. Text that does
/// not convert counts as 0.
[[nodiscard]] QString HeltallTilSql(const QString &text);

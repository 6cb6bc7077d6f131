#pragma once

#include "runtime/RunTimeError.h"

#include <QByteArray>
#include <QString>
#include <QStringView>

#include <optional>

/// Numbers beyond their type, told alike by every database. All errors are kOutOfRange.
namespace ado::dialect {

/// " CONSTRAINT … CHECK (condition)", to stand behind a column's type where the database's own type
/// takes more than the dialect's. Its name tells an overflow from other broken constraints.
[[nodiscard]] QByteArray rangeCheck(QStringView column, const QByteArray &condition);

/// The error of a change that broke the constraint of that name; none when it is no such check.
[[nodiscard]] std::optional<RunTimeError> brokenRange(const QString &constraint);

/// The error of a computed number that no column is to blame for.
[[nodiscard]] RunTimeError computedOverflow();

} // namespace ado::dialect

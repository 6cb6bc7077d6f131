#pragma once

#include "platform/ado/dialect/Ast.h"
#include "runtime/Value.h"

#include <QByteArray>
#include <QStringView>

namespace ado::dialect {

/// How one database spells what the dialect says: a method for each true difference. All texts are
/// UTF-8 pieces of a statement. Operands that are handed in can be used as they are in any place,
/// more than once too: they are names, place holders, calls, or stand in parentheses; what is
/// returned has to be so likewise, unless told otherwise.
class Writer
{
public:
    virtual ~Writer() = default;

    /// A name between double quotes: the same for every database.
    [[nodiscard]] static QByteArray name(QStringView name)
    {
        return '"' + name.toUtf8().replace('"', "\"\"") + '"';
    }

    // --- Values
    /// A column of one of the statement's tables; without an alias, of the table that a definition
    /// is about.
    [[nodiscard]] virtual QByteArray column(QStringView alias, QStringView column,
                                            DataType /*type*/) const
    {
        return alias.isEmpty() ? name(column) : name(alias) + '.' + name(column);
    }
    /// The place of parameter `number`, counted from 1; a number may be used several times.
    [[nodiscard]] virtual QByteArray placeHolder(int number, DataType type) const = 0;
    /// Null where a value of the type is reckoned with, compared or stored.
    [[nodiscard]] virtual QByteArray null(DataType /*type*/) const { return "NULL"; }
    /// The constant as a value of a BIT column.
    [[nodiscard]] virtual QByteArray truth(bool value) const = 0;
    /// Turns a number or truth value into another type of number or truth value (`from` differs
    /// from `to`). Truth is -1 as a number and any number but 0 is true; to whole numbers and
    /// CURRENCY the nearest, a half to the even one.
    [[nodiscard]] virtual QByteArray convert(const QByteArray &operand, DataType from,
                                             DataType to) const = 0;
    /// The first `width` characters of a text.
    [[nodiscard]] virtual QByteArray cut(const QByteArray &operand, int width) const = 0;
    /// `left` / `right`, both Double, or an error where `right` is 0. Not an operand.
    [[nodiscard]] virtual QByteArray quotient(const QByteArray &left, const QByteArray &right) const
    {
        return left + " / " + right;
    }
    /// A sum, difference, product or opposite of LONG or CURRENCY, so that it is exact and within
    /// its `type`, or an error. `reckoned` and the result are no operands.
    [[nodiscard]] virtual QByteArray exact(const QByteArray &reckoned, DataType type) const = 0;
    /// A part of a date as a whole number.
    [[nodiscard]] virtual QByteArray datePart(DatePart part, const QByteArray &operand) const = 0;
    /// A function over all rows of a group; `type` is the operand's. The result's type: COUNT
    /// Integer; Sum and Avg Currency for Currency, Double for other numbers; Max and Min `type`.
    [[nodiscard]] virtual QByteArray aggregate(Aggregate function, const QByteArray &operand,
                                               DataType type) const = 0;

    // --- Places
    /// A text where it is compared, sorted, grouped or made distinct, so that this goes in
    /// Norwegian order without regard to case. One operand of a comparison is enough. In ORDER BY
    /// the operand may be the number of a result column.
    [[nodiscard]] virtual QByteArray collated(const QByteArray &text) const = 0;
    /// An item of ORDER BY, Null before all values in ascending order. Not an operand.
    [[nodiscard]] virtual QByteArray orderItem(const QByteArray &operand,
                                               bool descending) const = 0;
    /// An item of a select list, so that it leaves the database as `type`.
    [[nodiscard]] virtual QByteArray resultItem(const QByteArray &operand, DataType type) const = 0;

    /// The condition that a text equals a text column of the joined table known as `alias`, by a
    /// lookup (Translator.h) that the session keeps. Not an operand.
    [[nodiscard]] virtual QByteArray lookup(const QByteArray &text, QStringView alias,
                                            QStringView /*table*/, QStringView column) const
    {
        return collated(text) + " = " + this->column(alias, column, DataType::VarWChar);
    }
    /// The same where rows without a match are left out: what joins the table, and the condition
    /// then. Not operands.
    [[nodiscard]] virtual QByteArray lookupJoin(QStringView /*alias*/, QStringView /*table*/,
                                                QStringView /*column*/) const
    {
        return " INNER JOIN ";
    }
    [[nodiscard]] virtual QByteArray joinedLookup(const QByteArray &text, QStringView alias,
                                                  QStringView column) const
    {
        return lookup(text, alias, {}, column);
    }

    // --- Statements
    /// What an INSERT says for a counter that is to get the next number.
    [[nodiscard]] virtual QByteArray nextNumber() const { return "NULL"; }
    /// What stands behind an INSERT, so that it returns the number in the table's counter first;
    /// `given` when the statement itself gives the number. Empty when the session learns it
    /// otherwise.
    [[nodiscard]] virtual QByteArray counterResult(QStringView /*table*/, QStringView /*counter*/,
                                                   bool /*given*/) const
    {
        return {};
    }
    /// The key given to the last row that this session inserted; 0 or Null when there is none.
    [[nodiscard]] virtual QByteArray identityQuery() const = 0;

    // --- Definitions
    /// What stands behind the name in a column's definition. A BIT that is not given is false, and
    /// a number beyond the type is refused (dialect/Overflow.h).
    [[nodiscard]] virtual QByteArray columnType(QStringView column, DataType type,
                                                int width) const = 0;
    /// The same for a column numbered by the database, which is the table's primary key under the
    /// constraint name (empty for none, else quoted).
    [[nodiscard]] virtual QByteArray counterType(const QByteArray &constraintName) const = 0;
    /// A column added as NOT NULL to a table that may hold rows: what stands behind its type.
    [[nodiscard]] virtual QByteArray addedNotNull(DataType type) const = 0;
    /// The name of a constraint, quoted. The dialect's names need only be unique within a table.
    [[nodiscard]] virtual QByteArray constraintName(QStringView table, QStringView name) const = 0;
};

} // namespace ado::dialect

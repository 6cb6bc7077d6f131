#pragma once

#include "platform/ado/dialect/Writer.h"

namespace ado {

/// Spells statements for PostgreSQL (12 or later, with ICU). Storage: CURRENCY as numeric(19,4),
/// SINGLE and DOUBLE as real and double precision, BIT as boolean, DATE as timestamp(0) without
/// time zone, TEXT(n) as varchar(n), a counter as an identity column.
///
/// Every column and every place holder carries its dialect type from the start, and a text the
/// Norwegian collation, so a table that was made with other types or another collation compares and
/// comes out as one of ours. The server strips casts and collations that change nothing, so indexes
/// are used.
class PostgresWriter final : public dialect::Writer
{
public:
    /// The collation that statements and column definitions refer to, and its locale: Norwegian
    /// order without regard to case (Unicode Technical Standard 35, "Collation Settings").
    static constexpr char kCollation[] = "norsk";
    static constexpr char kLocale[] = "nb-NO-u-ks-level2";
    /// True when the statement cannot run without the collation.
    [[nodiscard]] static bool needsCollation(const QByteArray &sql);
    /// Raises kSyntax for a name in a definition that the server would cut without an error, so
    /// that nothing finds it any more.
    static void requireShortNames(const QByteArray &definition);

    [[nodiscard]] QByteArray column(QStringView alias, QStringView name,
                                    DataType type) const override;
    [[nodiscard]] QByteArray placeHolder(int number, DataType type) const override;
    /// Of two bare ones the server would not know what they are.
    [[nodiscard]] QByteArray null(DataType type) const override;
    [[nodiscard]] QByteArray truth(bool value) const override;
    [[nodiscard]] QByteArray convert(const QByteArray &operand, DataType from,
                                     DataType to) const override;
    [[nodiscard]] QByteArray cut(const QByteArray &operand, int width) const override;
    [[nodiscard]] QByteArray exact(const QByteArray &reckoned, DataType type) const override;
    [[nodiscard]] QByteArray datePart(dialect::DatePart part,
                                      const QByteArray &operand) const override;
    [[nodiscard]] QByteArray aggregate(dialect::Aggregate function, const QByteArray &operand,
                                       DataType type) const override;
    [[nodiscard]] QByteArray collated(const QByteArray &text) const override;
    [[nodiscard]] QByteArray orderItem(const QByteArray &operand, bool descending) const override;
    [[nodiscard]] QByteArray resultItem(const QByteArray &operand, DataType type) const override;
    /// Empty: the session keeps the number that its insert returned.
    [[nodiscard]] QByteArray identityQuery() const override;
    [[nodiscard]] QByteArray nextNumber() const override { return "DEFAULT"; }
    [[nodiscard]] QByteArray counterResult(QStringView table, QStringView counter,
                                           bool given) const override;
    /// A query for whether there is a table or an index of that name.
    [[nodiscard]] static QByteArray knowsRelation(const QByteArray &quotedName);
    /// A query that moves a counter on behind the largest number in its table.
    [[nodiscard]] static QByteArray counterBehindRows(QStringView table, QStringView counter);
    /// The same behind a number, and a query for the last number that it has given.
    [[nodiscard]] static QByteArray counterBehind(QStringView table, QStringView counter,
                                                  qint64 number);
    [[nodiscard]] static QByteArray lastNumber(QStringView table, QStringView counter);
    [[nodiscard]] QByteArray columnType(QStringView column, DataType type,
                                        int width) const override;
    [[nodiscard]] QByteArray counterType(const QByteArray &constraintName) const override;
    [[nodiscard]] QByteArray addedNotNull(DataType type) const override;
    [[nodiscard]] QByteArray constraintName(QStringView table, QStringView name) const override;
};

} // namespace ado

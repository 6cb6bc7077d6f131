#pragma once

#include "platform/ado/dialect/Writer.h"

namespace ado {

/// Spells statements for SQLite. Storage: CURRENCY as a whole number of ten-thousandths, SINGLE and
/// DOUBLE as real, BIT as 0 or 1, DATE as text "yyyy-MM-dd" with " HH:mm:ss" behind it when there
/// is a time of day. Declared types keep the dialect's names, and the schema refers to no collation
/// or function of ours, so that any tool can read and check the file.
class SqliteWriter final : public dialect::Writer
{
public:
    /// The collation that statements refer to. The session has to offer it, and SqliteFunctions.h.
    static constexpr char kCollation[] = "NORSK";

    /// The temporary table (SqliteLookups.h) of a text column.
    [[nodiscard]] static QByteArray lookupTable(QStringView table, QStringView column);

    [[nodiscard]] QByteArray placeHolder(int number, DataType type) const override;
    [[nodiscard]] QByteArray truth(bool value) const override;
    [[nodiscard]] QByteArray convert(const QByteArray &operand, DataType from,
                                     DataType to) const override;
    [[nodiscard]] QByteArray cut(const QByteArray &operand, int width) const override;
    [[nodiscard]] QByteArray quotient(const QByteArray &left,
                                      const QByteArray &right) const override;
    [[nodiscard]] QByteArray exact(const QByteArray &reckoned, DataType type) const override;
    [[nodiscard]] QByteArray datePart(dialect::DatePart part,
                                      const QByteArray &operand) const override;
    [[nodiscard]] QByteArray aggregate(dialect::Aggregate function, const QByteArray &operand,
                                       DataType type) const override;
    [[nodiscard]] QByteArray collated(const QByteArray &text) const override;
    [[nodiscard]] QByteArray orderItem(const QByteArray &operand, bool descending) const override;
    [[nodiscard]] QByteArray resultItem(const QByteArray &operand, DataType type) const override;
    [[nodiscard]] QByteArray lookup(const QByteArray &text, QStringView alias, QStringView table,
                                    QStringView column) const override;
    [[nodiscard]] QByteArray lookupJoin(QStringView alias, QStringView table,
                                        QStringView column) const override;
    [[nodiscard]] QByteArray joinedLookup(const QByteArray &text, QStringView alias,
                                          QStringView column) const override;
    [[nodiscard]] QByteArray identityQuery() const override;
    [[nodiscard]] QByteArray columnType(QStringView column, DataType type,
                                        int width) const override;
    [[nodiscard]] QByteArray counterType(const QByteArray &constraintName) const override;
    [[nodiscard]] QByteArray addedNotNull(DataType type) const override;
    [[nodiscard]] QByteArray constraintName(QStringView table, QStringView name) const override;
};

} // namespace ado

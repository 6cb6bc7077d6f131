#pragma once

#include "runtime/Currency.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <variant>

/// The types of database columns and of values, with the codes that the database interface reports.
enum class DataType : short {
    Empty = 0, ///< no value at all: Null
    SmallInt = 2,
    Integer = 3,
    Single = 4,
    Double = 5,
    Currency = 6,
    Date = 7,
    Boolean = 11,
    VarWChar = 202,
    LongVarBinary = 205,
};

/// One value of any column type, or Null. The conversions are strict: Null raises error 94, text or
/// bytes that do not read as the wanted type raise 13, a number outside the range raises 6.
class Value
{
public:
    Value() = default; ///< Null
    explicit Value(qint16 v) : m_data(v) {}
    explicit Value(qint32 v) : m_data(v) {}
    explicit Value(float v) : m_data(v) {}
    explicit Value(double v) : m_data(v) {}
    explicit Value(Currency v) : m_data(v) {}
    explicit Value(QDateTime v) : m_data(std::move(v)) {}
    explicit Value(bool v) : m_data(v) {}
    explicit Value(QString v) : m_data(std::move(v)) {}
    explicit Value(QByteArray v) : m_data(std::move(v)) {}

    [[nodiscard]] bool isNull() const { return std::holds_alternative<std::monostate>(m_data); }
    /// The type of what is held; Empty for Null.
    [[nodiscard]] DataType type() const;

    /// Numbers by the machine's locale without a leading blank, dates in the short date form (with
    /// the time when there is one), Boolean as "True" and "False", bytes as 13.
    [[nodiscard]] QString toText() const;
    [[nodiscard]] qint32 toLong() const;
    [[nodiscard]] qint16 toInteger() const;
    [[nodiscard]] float toSingle() const;
    [[nodiscard]] double toDouble() const;
    [[nodiscard]] Currency toCurrency() const;
    /// A number counts as days from dateZero().
    [[nodiscard]] QDateTime toDate() const;
    /// A number is true when it is not 0.
    [[nodiscard]] bool toBoolean() const;
    /// Error 13 for everything but bytes.
    [[nodiscard]] QByteArray toBytes() const;

    /// Same type and same content; Null equals Null.
    friend bool operator==(const Value &, const Value &) = default;

private:
    std::variant<std::monostate, qint16, qint32, float, double, Currency, QDateTime, bool, QString,
                 QByteArray>
        m_data;
};

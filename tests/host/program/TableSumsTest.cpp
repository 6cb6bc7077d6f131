#include "host/tasks/TableSums.h"

#include "platform/ado/RowSet.h"
#include "runtime/Moment.h"

#include <gtest/gtest.h>

#include <limits>

using namespace Qt::StringLiterals;

namespace {

using Values = std::vector<Value>;

/// One column of that type and name with these values.
TableSums sums(DataType type, const Values &values, const QString &name = u"Felt"_s)
{
    ado::dialect::ResultColumn column;
    column.name = name;
    column.type = type;
    ado::RowSet rows({column});
    for (const Value &value : values) {
        rows.store(0).append(value);
        rows.closeRow();
    }
    return TableSums(rows);
}

QString difference(DataType type, const Values &values, const Values &copied)
{
    return sums(type, values).difference(sums(type, copied));
}

Value money(qint64 tenThousandths)
{
    return Value(Currency::fromTenThousandths(tenThousandths));
}

TEST(TableSums, AreEqualWhateverTheOrder)
{
    const Values reals{Value(1e300), Value(-1e300), Value(0.1), Value(1e-300)};
    EXPECT_EQ(difference(DataType::Double, reals, {reals[2], reals[0], reals[3], reals[1]}),
              QString());
    EXPECT_EQ(difference(DataType::Currency, {money(1), Value(), money(-5)},
                         {money(-5), money(1), Value()}),
              QString());
}

TEST(TableSums, ZeroHasNoSign)
{
    EXPECT_EQ(difference(DataType::Double, {Value(0.0)}, {Value(-0.0)}), QString());
    EXPECT_EQ(difference(DataType::Single, {Value(0.0F)}, {Value(-0.0F)}), QString());
}

TEST(TableSums, TellTheSmallestDifferenceOfEachType)
{
    struct Pair
    {
        DataType type;
        Value one;
        Value other;
    };
    const QDateTime noon = utcMoment(QDate(2014, 5, 17), QTime(12, 0));
    const Pair pairs[] = {
        {DataType::SmallInt, Value(qint16{1}), Value(qint16{2})},
        {DataType::Integer, Value(std::numeric_limits<qint32>::max()),
         Value(std::numeric_limits<qint32>::max() - 1)},
        {DataType::Single, Value(0.1F), Value(std::nextafter(0.1F, 1.0F))},
        {DataType::Double, Value(1e300), Value(std::nextafter(1e300, 0.0))},
        {DataType::Currency, money(std::numeric_limits<qint64>::max()),
         money(std::numeric_limits<qint64>::max() - 1)},
        {DataType::Date, Value(noon), Value(noon.addSecs(1))},
        {DataType::Boolean, Value(true), Value(false)},
        {DataType::VarWChar, Value(u"Ås"_s), Value(u"Ås "_s)},
        {DataType::LongVarBinary, Value(QByteArray("ab")), Value(QByteArray("a"))},
    };
    for (const Pair &pair : pairs) {
        EXPECT_EQ(difference(pair.type, {pair.one}, {pair.other}).toStdString(),
                  "summen av feltet Felt er en annen")
            << int(pair.type);
        EXPECT_EQ(difference(pair.type, {pair.one}, {pair.one}).toStdString(), "")
            << int(pair.type);
    }
}

TEST(TableSums, TellNullFromZero)
{
    EXPECT_NE(difference(DataType::Integer, {Value(qint32{0})}, {Value()}), QString());
    EXPECT_NE(difference(DataType::VarWChar, {Value(QString())}, {Value()}), QString());
}

TEST(TableSums, TellMissingRowsAndColumns)
{
    EXPECT_EQ(difference(DataType::Integer, {Value(), Value()}, {Value()}).toStdString(),
              "2 rader er blitt til 1");
    EXPECT_EQ(sums(DataType::Integer, {}, u"A"_s).difference(sums(DataType::Integer, {}, u"B"_s)),
              u"feltet A er blitt til B"_s);
}

} // namespace

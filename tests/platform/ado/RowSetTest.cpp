#include "platform/ado/RowSet.h"

#include "platform/ado/Support.h"
#include "runtime/Moment.h"

namespace ado::test {

namespace {

dialect::ResultColumn column(const QString &name, DataType type, int width = 0)
{
    dialect::ResultColumn result;
    result.name = name;
    result.type = type;
    result.width = width;
    result.baseColumn = name;
    return result;
}

QDateTime moment(int year, int month, int day, int hour = 0)
{
    return utcMoment(QDate(year, month, day), QTime(hour, 0));
}

/// Two rows: 1 "Kari", 2 "Ola".
RowSet people()
{
    RowSet rows({column(u"Nr"_s, DataType::SmallInt), column(u"Navn"_s, DataType::VarWChar, 5)},
                u"Folk"_s);
    for (const auto &[number, name] : {std::pair(1, "Kari"), std::pair(2, "Ola")}) {
        rows.store(0).append(static_cast<qint16>(number));
        rows.store(1).appendBytes(name, strlen(name));
        rows.closeRow();
    }
    return rows;
}

} // namespace

TEST(ColumnStore, GivesBackWhatEachTypeTook)
{
    const std::vector<Value> values{
        Value(qint16{-32768}),
        Value(qint32{2147483647}),
        Value(0.1F),
        Value(-1.5e300),
        Value(Currency::fromTenThousandths(std::numeric_limits<qint64>::min())),
        Value(moment(2014, 3, 9, 13)),
        Value(true),
        Value(u"Bjørnåsen Æ\u20ac"_s),
        Value(QByteArray("\0\xff", 2)),
    };
    for (const Value &value : values) {
        ColumnStore store(value.type());
        store.append(value);
        EXPECT_EQ(store.value(0), value) << static_cast<int>(value.type());
    }
}

TEST(ColumnStore, NullsStandBesideEmptyAndZeroValues)
{
    ColumnStore texts(DataType::VarWChar);
    texts.append(Value(QString(u""_s)));
    texts.appendNull();
    texts.append(Value(u"a"_s));
    ColumnStore numbers(DataType::Integer);
    numbers.append(qint32{0});
    numbers.appendNull();
    numbers.append(qint32{7});

    for (const ColumnStore *store : {&texts, &numbers}) {
        EXPECT_EQ(store->size(), 3U);
        EXPECT_FALSE(store->isNull(0));
        EXPECT_TRUE(store->isNull(1));
        EXPECT_TRUE(store->value(1).isNull());
        EXPECT_FALSE(store->isNull(2));
    }
    EXPECT_EQ(texts.value(0).toText(), QString(u""_s));
    EXPECT_EQ(texts.value(2).toText(), u"a"_s);
    EXPECT_EQ(numbers.value(2).toLong(), 7);
}

TEST(ColumnStore, DateIsTakenAsItShowsWhateverItsZone)
{
    ColumnStore store(DataType::Date);
    store.append(Value(QDateTime::fromString(u"2014-03-09T00:30:00+02:00"_s, Qt::ISODate)));
    EXPECT_EQ(store.value(0).toDate().date(), QDate(2014, 3, 9));
    EXPECT_EQ(store.value(0).toDate().time(), QTime(0, 30));
}

TEST(RowSet, SetValueTakesTheColumnsType)
{
    RowSet rows = people();
    rows.setValue(0, 0, Value(2.5));
    EXPECT_EQ(rows.value(0, 0), Value(qint16{2}));
    rows.setValue(0, 1, Value(qint32{12}));
    EXPECT_EQ(rows.value(0, 1), Value(u"12"_s));
    rows.setValue(1, 1, Value());
    EXPECT_TRUE(rows.isNull(1, 1));
}

TEST(RowSet, TruthIsNeverNull)
{
    RowSet rows({column(u"Sant"_s, DataType::Boolean)}, u"Folk"_s);
    const int row = rows.addRow();
    rows.setValue(row, 0, Value());
    EXPECT_EQ(rows.value(row, 0), Value(false));
}

TEST(RowSet, TextIsCutToTheColumnsWidthAndNotWithinACharacter)
{
    RowSet rows = people();
    rows.setValue(0, 1, Value(u"Kristin"_s));
    EXPECT_EQ(rows.value(0, 1).toText(), u"Krist"_s);
    rows.setValue(0, 1, Value(u"abcd\U0001F69B!"_s));
    EXPECT_EQ(rows.value(0, 1).toText(), u"abcd\U0001F69B"_s);
}

TEST(RowSet, ValueThatDoesNotFitIsRefusedAndTheOldOneStays)
{
    RowSet rows = people();
    EXPECT_EQ(errorOf([&] { rows.setValue(0, 0, Value(qint32{32768})); }), errors::kOutOfRange);
    EXPECT_EQ(errorOf([&] { rows.setValue(0, 0, Value(u"mange"_s)); }), errors::kTypeMismatch);
    EXPECT_EQ(errorOf([&] { rows.setValue(0, 1, Value(QByteArray("x"))); }), errors::kTypeMismatch);
    EXPECT_EQ(rows.value(0, 0), Value(qint16{1}));
    EXPECT_TRUE(rows.changedRows().empty());
}

TEST(RowSet, DateOutsideTheCalendarOfTheModuleIsRefused)
{
    RowSet rows({column(u"Dato"_s, DataType::Date)}, u"Folk"_s);
    const int row = rows.addRow();
    for (const Value &late : {Value(moment(10000, 1, 1)), Value(2958465.9999999)})
        EXPECT_EQ(errorOf([&] { rows.setValue(row, 0, late); }), errors::kOutOfRange);
    EXPECT_EQ(errorOf([&] { rows.setValue(row, 0, Value(moment(99, 12, 31))); }),
              errors::kOutOfRange);
}

TEST(RowSet, DateIsTheNearestSecondThatTheDatabaseKeeps)
{
    RowSet rows({column(u"Dato"_s, DataType::Date)}, u"Folk"_s);
    const int row = rows.addRow();
    rows.setValue(row, 0, Value(2958465.99998));
    EXPECT_EQ(rows.value(row, 0).toDate(), utcMoment(QDate(9999, 12, 31), QTime(23, 59, 58)));
    rows.setValue(row, 0, Value(utcMoment(QDate(1899, 12, 29), QTime(5, 59, 59, 700))));
    EXPECT_EQ(rows.value(row, 0).toDate(), utcMoment(QDate(1899, 12, 29), QTime(6, 0)));
}

TEST(RowSet, ComputedColumnCannotBeChanged)
{
    dialect::ResultColumn sum = column(u"Expr1000"_s, DataType::Double);
    sum.baseColumn.clear();
    RowSet rows({sum}, u"Folk"_s);
    const int row = rows.addRow();
    EXPECT_EQ(errorOf([&] { rows.setValue(row, 0, Value(1.0)); }), errors::kReadOnlySet);
}

TEST(RowSet, OnlyChangedCellsAreToldAndTheirStoredValuesKept)
{
    RowSet rows = people();
    rows.setValue(1, 0, Value(qint16{9}));
    EXPECT_EQ(rows.changedRows(), std::vector<int>{1});
    EXPECT_EQ(rows.changedColumns(1), std::vector<int>{0});
    EXPECT_EQ(rows.storedValue(1, 0), Value(qint16{2}));
    EXPECT_EQ(rows.storedValue(1, 1), Value(u"Ola"_s));

    rows.accept(1);
    EXPECT_TRUE(rows.changedRows().empty());
    EXPECT_EQ(rows.storedValue(1, 0), Value(qint16{9}));
    rows.setValue(1, 0, Value(qint16{10}));
    EXPECT_EQ(rows.storedValue(1, 0), Value(qint16{9}));
}

TEST(RowSet, AddedRowsStandLast)
{
    RowSet rows = people();
    const int first = rows.addRow();
    const int second = rows.addRow();
    rows.setValue(second, 1, Value(u"Eva"_s));
    EXPECT_EQ(first, 2);
    EXPECT_EQ(rows.rowCount(), 4);
    EXPECT_TRUE(rows.isNull(first, 0));
    EXPECT_TRUE(rows.isNew(first));
    EXPECT_EQ(rows.value(second, 1).toText(), u"Eva"_s);
    EXPECT_EQ(rows.changedRows(), (std::vector{first, second}));
}

TEST(RowSet, AcceptedRowIsNoLongerNew)
{
    RowSet rows = people();
    const int row = rows.addRow();
    rows.setValue(row, 0, Value(qint16{3}));
    rows.accept(row);
    EXPECT_FALSE(rows.isNew(row));
    EXPECT_EQ(rows.value(row, 0), Value(qint16{3}));
    EXPECT_EQ(rows.storedValue(row, 0), Value(qint16{3}));
}

} // namespace ado::test

#include "platform/ado/KeptRows.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace ado::test {

namespace {

/// A reader of one list in a database whose contents have a moment.
class KeptRowsTest : public ::testing::Test
{
protected:
    static RowSet listOf(int count)
    {
        dialect::ResultColumn number;
        number.name = u"Nr"_s;
        number.type = DataType::Integer;
        RowSet rows({number});
        for (qint32 row = 0; row < count; ++row) {
            rows.store(0).append(row);
            rows.closeRow();
        }
        return rows;
    }
    /// Whether the list has to be read from the database.
    bool reads(const QString &statement = u"SELECT Nr FROM Liste"_s)
    {
        if (kept.answerTo(statement))
            return false;
        kept.take(statement, listOf(rows));
        return true;
    }

    QByteArray moment = "1";
    int rows = 200;
    KeptRows kept{[this] { return moment; }};
};

TEST_F(KeptRowsTest, TheSecondReadingIsKept)
{
    EXPECT_TRUE(reads());
    EXPECT_TRUE(reads());
    EXPECT_FALSE(reads());
    EXPECT_FALSE(reads());
}

TEST_F(KeptRowsTest, AListThatHasChangedIsReadOnce)
{
    for (int reading = 0; reading < 3; ++reading)
        reads();
    moment = "2";
    rows = 201;
    EXPECT_TRUE(reads());
    EXPECT_FALSE(reads());
    EXPECT_EQ(kept.answerTo(u"SELECT Nr FROM Liste")->rowCount(), 201);
}

TEST_F(KeptRowsTest, WithoutAMomentNothingIsKept)
{
    moment.clear();
    for (int reading = 0; reading < 4; ++reading)
        EXPECT_TRUE(reads());
}

TEST_F(KeptRowsTest, AnotherListTakesItsPlace)
{
    for (int reading = 0; reading < 3; ++reading)
        reads();
    EXPECT_TRUE(reads(u"SELECT Nr FROM Annen"_s));
    EXPECT_TRUE(reads());
}

TEST_F(KeptRowsTest, AShortListIsNot)
{
    rows = 199;
    for (int reading = 0; reading < 4; ++reading)
        EXPECT_TRUE(reads());
}

TEST_F(KeptRowsTest, AListThatHasBecomeShortIsNot)
{
    for (int reading = 0; reading < 3; ++reading)
        reads();
    moment = "2";
    rows = 1;
    EXPECT_TRUE(reads());
    EXPECT_TRUE(reads());
}

} // namespace

} // namespace ado::test

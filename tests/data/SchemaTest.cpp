#include "data/Schema.h"

#include "data/clsAdoUtils.h"
#include "runtime/Value.h"
#include "state/Messages.h"
#include "state/SharedState.h"
#include "support/ModuleTest.h"
#include "support/SessionTap.h"

using namespace Qt::StringLiterals;

namespace {

class SchemaTest : public ModuleTest
{
protected:
    SchemaTest()
    {
        messages::setBox([this](const QString &text, int style) {
            boxes += QString::number(style) + u'|' + text;
        });
    }

    /// Table "Test" with one column of every type, known to the module.
    void makeTable()
    {
        run(u"CREATE TABLE Test (ID COUNTER CONSTRAINT ID PRIMARY KEY, Kort SHORT, Lang LONG, "
            u"Tall SINGLE, Stort DOUBLE, Penger CURRENCY, Dato DATE, Merke BIT, Tekst TEXT(12), "
            u"Bilde LONGBINARY)"_s);
        connect();
        ASSERT_TRUE(TableExists(u"Test"_s));
    }

    static int typeOf(const QString &column)
    {
        qint16 type = -1;
        return FieldExists(u"Test"_s, column, type, false) ? type : -2;
    }

    QStringList boxes;
};

TEST_F(SchemaTest, ThePictureHoldsTheCatalogueFromIndexOneOn)
{
    makeTable();
    ASSERT_EQ(gSchema.size(), 11u);
    EXPECT_EQ(gSchema[0].table, QString());
    EXPECT_EQ(gSchema[0].column, QString());
    EXPECT_EQ(gSchema[1].table, u"Test"_s);
    EXPECT_EQ(gSchema[1].column, u"ID"_s);
    EXPECT_EQ(gSchema[10].column, u"Bilde"_s);
}

TEST_F(SchemaTest, FieldExistsGivesTheTypeCode)
{
    makeTable();
    EXPECT_EQ(typeOf(u"ID"_s), 3);
    EXPECT_EQ(typeOf(u"Kort"_s), 2);
    EXPECT_EQ(typeOf(u"Lang"_s), 3);
    EXPECT_EQ(typeOf(u"Tall"_s), 4);
    EXPECT_EQ(typeOf(u"Stort"_s), 5);
    EXPECT_EQ(typeOf(u"Penger"_s), 6);
    EXPECT_EQ(typeOf(u"Dato"_s), 7);
    EXPECT_EQ(typeOf(u"Merke"_s), 11);
    EXPECT_EQ(typeOf(u"Tekst"_s), 202);
    EXPECT_EQ(typeOf(u"Bilde"_s), 205);
    EXPECT_EQ(typeOf(u"Mangler"_s), -2);
}

TEST_F(SchemaTest, NamesAreComparedTrimmedAndWithRegardToCase)
{
    makeTable();
    EXPECT_EQ(typeOf(u" Kort "_s), 2);
    EXPECT_TRUE(TableExists(u"  Test "_s));
    EXPECT_EQ(typeOf(u"kort"_s), -2);
    EXPECT_FALSE(TableExists(u"TEST"_s));
}

TEST_F(SchemaTest, TableOnlyLeavesTheTypeAlone)
{
    makeTable();
    qint16 type = 77;
    EXPECT_TRUE(FieldExists(u"Test"_s, u"Mangler"_s, type, true));
    EXPECT_EQ(type, 77);
    EXPECT_FALSE(FieldExists(u"Borte"_s, QString(), type, true));
}

TEST_F(SchemaTest, ThePictureIsNeverRefreshed)
{
    makeTable();
    run(u"CREATE TABLE Ny (Nr LONG)"_s);
    run(u"DROP TABLE Test"_s);
    EXPECT_FALSE(TableExists(u"Ny"_s));
    EXPECT_TRUE(TableExists(u"Test"_s));
}

TEST_F(SchemaTest, AnEmptyCatalogueIsAskedAgain)
{
    connect();
    EXPECT_FALSE(TableExists(u"Ny"_s));
    EXPECT_TRUE(gSchema.empty());
    run(u"CREATE TABLE Ny (Nr LONG)"_s);
    EXPECT_TRUE(TableExists(u"Ny"_s));
}

TEST_F(SchemaTest, WithoutAnOpenConnectionNothingExists)
{
    run(u"CREATE TABLE Test (Nr LONG)"_s);
    EXPECT_FALSE(TableExists(u"Test"_s));
    gConn = Ref<ado::Connection>::make();
    EXPECT_FALSE(TableExists(u"Test"_s));
    EXPECT_TRUE(gSchema.empty());
    gConn->open(connectionString());
    EXPECT_TRUE(TableExists(u"Test"_s));
}

TEST_F(SchemaTest, AddFieldWritesEachTypeAsTheDialectHasIt)
{
    makeTable();
    const std::vector<std::pair<FieldType, QString>> types{
        {FieldType::Bit, u"BIT"_s},           {FieldType::Counter, u"COUNTER"_s},
        {FieldType::Currency, u"CURRENCY"_s}, {FieldType::DateTime, u"DATETIME"_s},
        {FieldType::Double, u"DOUBLE"_s},     {FieldType::Long, u"LONG NULL"_s},
        {FieldType::Short, u"SHORT NULL"_s},  {FieldType::Single, u"SINGLE"_s},
        {FieldType::Text, u"TEXT(40)"_s},     {FieldType::LongBinary, u"LONGBINARY NULL"_s},
    };
    for (int code = 1; code <= 10; ++code) {
        const auto &[type, text] = types[static_cast<size_t>(code) - 1];
        ASSERT_EQ(static_cast<int>(type), code);
        const QString column = u"Ny"_s + QString::number(code);
        SessionTap tap;
        // A table has one counter only, so that one is refused.
        EXPECT_EQ(AddField(u"Test"_s, column, type, 40), type != FieldType::Counter);
        EXPECT_EQ(tap.statements(),
                  QStringList(u"ALTER TABLE Test ADD COLUMN "_s + column + u' ' + text));
    }
    EXPECT_EQ(boxes, QStringList());

    gSchema.clear();
    EXPECT_EQ(typeOf(u"Ny1"_s), 11);
    EXPECT_EQ(typeOf(u"Ny2"_s), -2);
    EXPECT_EQ(typeOf(u"Ny3"_s), 6);
    EXPECT_EQ(typeOf(u"Ny4"_s), 7);
    EXPECT_EQ(typeOf(u"Ny5"_s), 5);
    EXPECT_EQ(typeOf(u"Ny6"_s), 3);
    EXPECT_EQ(typeOf(u"Ny7"_s), 2);
    EXPECT_EQ(typeOf(u"Ny8"_s), 4);
    EXPECT_EQ(typeOf(u"Ny9"_s), 202);
    EXPECT_EQ(typeOf(u"Ny10"_s), 205);
}

TEST_F(SchemaTest, AddFieldOfAKnownColumnSendsNothing)
{
    makeTable();
    SessionTap tap;
    EXPECT_TRUE(AddField(u"Test"_s, u"Tekst"_s, FieldType::Bit));
    EXPECT_EQ(tap.statements(), QStringList());
}

TEST_F(SchemaTest, AddFieldThatTheDatabaseRefusesIsFalseWithoutAMessage)
{
    makeTable();
    // Another case is another name to the picture, and the same one to the database.
    EXPECT_FALSE(AddField(u"Test"_s, u"TEKST"_s, FieldType::Text, 12));
    EXPECT_TRUE(gDB->LastError().startsWith(u"-2147217858 - "));
    EXPECT_FALSE(AddField(u"Borte"_s, u"Tekst"_s, FieldType::Text, 12));
    EXPECT_TRUE(gDB->LastError().startsWith(u"-2147217865 - "));
    EXPECT_EQ(boxes, QStringList());
}

TEST_F(SchemaTest, AddFieldOfAnUnknownTypeShowsNumberAndDescription)
{
    makeTable();
    SessionTap tap;
    EXPECT_FALSE(AddField(u"Test"_s, u"Ny"_s, static_cast<FieldType>(11)));
    EXPECT_EQ(boxes, QStringList(u"0|5 "_s + RunTimeError(errors::kInvalidCall).description()));
    EXPECT_EQ(tap.statements(), QStringList());
    EXPECT_EQ(gDB->LastError(), QString());
}

TEST_F(SchemaTest, DropFieldDropsWhatThePictureHolds)
{
    makeTable();
    SessionTap tap;
    EXPECT_TRUE(DropField(u"Test"_s, u"Mangler"_s));
    EXPECT_EQ(tap.statements(), QStringList());
    EXPECT_TRUE(DropField(u"Test"_s, u"Tekst"_s));
    EXPECT_EQ(tap.statements(), QStringList(u"ALTER TABLE Test DROP COLUMN Tekst"_s));
    // The picture still holds it, so it is sent once more, and refused.
    EXPECT_FALSE(DropField(u"Test"_s, u"Tekst"_s));
    EXPECT_TRUE(gDB->LastError().startsWith(u"-2147217904 - "));
}

} // namespace

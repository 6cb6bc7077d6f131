#include "platform/ado/AnyDatabase.h"

namespace ado::test {

/// How statements of the desktop dialect fare on a database.
class SessionTest : public AnyDatabaseTest
{
protected:
    Opened m_connection{dsn()};
};

TEST_F(SessionTest, StatementsOfOneShapeTakeTheirOwnValues)
{
    m_connection.run(u"CREATE TABLE T (Nr SHORT, Navn TEXT(5))"_s);
    m_connection.run(u"INSERT INTO T (Nr, Navn) VALUES (1, 'en')"_s);
    m_connection.run(u"INSERT INTO T (Nr, Navn) VALUES (2, 'altfor langt')"_s);
    EXPECT_EQ(errorOf([&] { m_connection.run(u"INSERT INTO T (Nr, Navn) VALUES (40000, 'x')"_s); }),
              errors::kOutOfRange);
    EXPECT_EQ(m_connection.value(u"SELECT Navn FROM T WHERE Nr=1"_s), Value(u"en"_s));
    EXPECT_EQ(m_connection.value(u"SELECT Navn FROM T WHERE Nr=2"_s), Value(u"altfo"_s));
    const Recordset none = m_connection.rows(u"SELECT Navn FROM T WHERE Nr=3"_s);
    EXPECT_EQ(none.recordCount(), 0);
    EXPECT_EQ(none.field(none.fieldIndex(u"Navn")).definedSize, 5);
}

TEST_F(SessionTest, ManyShapesGoThroughTheBoundedStore)
{
    m_connection.run(u"CREATE TABLE T (Nr LONG)"_s);
    for (int round = 0; round < 2; ++round) {
        QString condition = u"Nr=0"_s;
        for (int i = 0; i < 100; ++i) {
            condition += u" OR Nr=1"_s;
            EXPECT_EQ(m_connection.rows(u"SELECT Nr FROM T WHERE "_s + condition).recordCount(),
                      round);
        }
        m_connection.run(u"INSERT INTO T (Nr) VALUES (1)"_s);
    }
}

TEST_F(SessionTest, OwnSchemaChangeIsSeenAtOnce)
{
    m_connection.run(u"CREATE TABLE T (Nr LONG)"_s);
    EXPECT_EQ(m_connection.rows(u"SELECT * FROM T"_s).fieldCount(), 1);
    m_connection.run(u"ALTER TABLE T ADD COLUMN Navn TEXT(5)"_s);
    EXPECT_EQ(m_connection.rows(u"SELECT * FROM T"_s).fieldCount(), 2);
    m_connection.run(u"ALTER TABLE T DROP COLUMN Navn"_s);
    EXPECT_EQ(errorOf([&] { m_connection.run(u"SELECT Navn FROM T"_s); }), errors::kNoSuchColumn);
    m_connection.run(u"DROP TABLE T"_s);
    EXPECT_EQ(errorOf([&] { m_connection.run(u"SELECT Nr FROM T"_s); }), errors::kNoSuchTable);
}

TEST_F(SessionTest, SchemaListsTablesByNameAndColumnsByPosition)
{
    EXPECT_EQ(m_connection.openSchema(SchemaList::Columns)->recordCount(), 0);
    m_connection.run(u"CREATE TABLE Produkt (ID COUNTER CONSTRAINT ID PRIMARY KEY, ProduktNavn "
                     "TEXT(100), Pris CURRENCY, BruttoPris BIT, Sats SINGLE, Dag DATE)"_s);
    m_connection.run(u"CREATE TABLE bil (Nr SHORT, Bilde LONGBINARY, Vekt DOUBLE)"_s);
    m_connection.run(u"ALTER TABLE BIL ADD COLUMN RegNr TEXT(10)"_s);
    const Ref<Recordset> list = m_connection.openSchema(SchemaList::Columns);
    const std::vector<std::pair<QString, DataType>> fields{
        {u"TABLE_NAME"_s, DataType::VarWChar},
        {u"COLUMN_NAME"_s, DataType::VarWChar},
        {u"ORDINAL_POSITION"_s, DataType::Integer},
        {u"DATA_TYPE"_s, DataType::SmallInt},
        {u"CHARACTER_MAXIMUM_LENGTH"_s, DataType::Integer}};
    ASSERT_EQ(list->fieldCount(), 5);
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(list->field(i).name, fields[static_cast<size_t>(i)].first);
        EXPECT_EQ(list->field(i).type, fields[static_cast<size_t>(i)].second);
    }
    EXPECT_EQ(list->field(list->fieldIndex(u"TABLE_NAME")).definedSize, 0); // no limit
    QStringList lines;
    for (; !list->eof(); list->moveNext())
        lines << list->text(u"Table_Name") + u'.' + list->text(u"Column_Name") + u' ' +
                     list->text(u"Ordinal_Position") + u' ' + list->text(u"Data_Type") + u' ' +
                     (list->isNull(4) ? u"-"_s : list->text(4));
    EXPECT_EQ(lines.join(u'|').toStdString(),
              "bil.Nr 1 2 -|bil.Bilde 2 205 -|bil.Vekt 3 5 -|bil.RegNr 4 202 10|Produkt.ID 1 3 -|"
              "Produkt.ProduktNavn 2 202 100|Produkt.Pris 3 6 -|Produkt.BruttoPris 4 11 -|"
              "Produkt.Sats 5 4 -|Produkt.Dag 6 7 -");
    EXPECT_EQ(list->recordCount(), 10);
    EXPECT_EQ(errorOf([&] { list->requery(); }), errors::kNoConnection);
    EXPECT_EQ(m_connection.rows(u"SELECT produktnavn FROM produkt"_s).field(0).name,
              u"ProduktNavn"_s);
}

} // namespace ado::test

#include "platform/ado/dialect/Fixture.h"

namespace ado::dialect::test {

TEST(Select, TellsWhereAColumnComesFrom)
{
    const Translation t =
        translated(u"select id, ORDRE.ordrenr, KLIENTNR as nyttnr, [betalt] from ORDRE"_s);
    EXPECT_EQ(t.kind, StatementKind::Select);
    EXPECT_EQ(t.baseTable, u"Ordre"_s);
    EXPECT_TRUE(t.columns[0].key);
    EXPECT_FALSE(t.columns[1].key);
    EXPECT_EQ(t.columns[2].baseColumn, u"KlientNr"_s);
}

TEST(Select, OnlyPlainRowsOfOneTableHaveABaseTable)
{
    EXPECT_EQ(translated(u"SELECT ID, Bilde FROM Ordre O WHERE O.ID=1"_s).baseTable, u"Ordre"_s);
    for (const QString &statement :
         {u"SELECT DISTINCT ID FROM Ordre"_s, u"SELECT ID FROM Ordre GROUP BY ID"_s,
          u"SELECT Max(ID) FROM Ordre"_s, u"SELECT Ordre.ID FROM Ordre, Poststed"_s})
        EXPECT_EQ(translated(statement).baseTable, QString()) << statement.toStdString();
}

TEST(Select, IdentityIsAQueryOfItsOwn)
{
    EXPECT_EQ(translated(u"select @@identity;"_s).kind, StatementKind::Identity);
}

TEST(Select, QuotesWhatStandsInNames)
{
    Catalog names;
    names.add({u"a\"b"_s, {{u"c; DROP TABLE d--"_s, DataType::Integer, 0, false, false}}});
    const Translation t =
        translate(lex(u"SELECT [c; DROP TABLE d--] FROM [a\"b]"), names, SqliteWriter());
    EXPECT_EQ(t.sql, "SELECT \"a\"\"b\".\"c; DROP TABLE d--\" FROM \"a\"\"b\"");
}

} // namespace ado::dialect::test

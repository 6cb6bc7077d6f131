#include "platform/ado/dialect/Fixture.h"

namespace ado::dialect::test {

TEST(Translator, TellsTheKindOfAStatement)
{
    EXPECT_EQ(translated(u"UPDATE Ordre SET Betalt=1"_s).kind, StatementKind::Update);
    EXPECT_EQ(translated(u"DELETE FROM Ordre"_s).kind, StatementKind::Delete);
    EXPECT_EQ(translated(u"ALTER TABLE Ordre DROP COLUMN ID"_s).kind, StatementKind::AlterTable);
    EXPECT_EQ(translated(u"DROP TABLE Ordre"_s).kind, StatementKind::DropTable);
    const Translation created = translated(u"CREATE TABLE T (a LONG)"_s);
    EXPECT_EQ(created.kind, StatementKind::CreateTable);
    EXPECT_TRUE(created.changesSchema());
}

TEST(Translator, TellsWhereALiteralGoes)
{
    const Translation t =
        translated(u"INSERT INTO ordre (KLIENTNR,Betalt,OrdreStatus) VALUES ( 1,True,'Ordre')"_s);
    EXPECT_EQ(t.kind, StatementKind::Insert);
    EXPECT_FALSE(t.returnsRows());
    EXPECT_FALSE(t.changesSchema());
    ASSERT_EQ(t.parameters.size(), 2u);
    EXPECT_EQ(t.parameters[0].type, DataType::SmallInt);
    EXPECT_EQ(t.parameters[0].column, u"KlientNr"_s);
    EXPECT_EQ(t.parameters[1].width, 10);
}

TEST(Translator, OneTranslationServesEveryStatementOfItsShape)
{
    const Lexed first = lex(u"UPDATE Ordre SET SumBrutto=-1.5 WHERE ID= 1AND OrdreStatus='a'");
    const Lexed second =
        lex(u"UPDATE Ordre SET SumBrutto=-99.25 WHERE ID= 12345AND OrdreStatus='b'");
    ASSERT_EQ(first.shape, second.shape);
    const Translation t = translate(first, catalog(), SqliteWriter());
    const std::vector<Value> values = parameterValues(t, second);
    ASSERT_EQ(values.size(), 3u);
    EXPECT_EQ(values[0], Value(Currency::fromTenThousandths(-992500)));
    EXPECT_EQ(values[1], Value(qint32{12345}));
    EXPECT_EQ(values[2], Value(u"b"_s));
}

} // namespace ado::dialect::test

#include "platform/ado/dialect/Fixture.h"

namespace ado::dialect::test {

TEST(Change, InsertsNamedColumns)
{
    const Translation t =
        translated(u"INSERT INTO ordre (KLIENTNR,Betalt,OrdreStatus) VALUES ( 1,True,'Ordre')"_s);
    EXPECT_EQ(t.kind, StatementKind::Insert);
    EXPECT_FALSE(t.returnsRows());
    EXPECT_FALSE(t.changesSchema());
    EXPECT_EQ(t.sql, "INSERT INTO \"Ordre\" (\"KlientNr\", \"Betalt\", \"OrdreStatus\") "
                     "VALUES (?1, 1, ?2)");
    ASSERT_EQ(t.parameters.size(), 2u);
    EXPECT_EQ(t.parameters[0].type, DataType::SmallInt);
    EXPECT_EQ(t.parameters[0].column, u"KlientNr"_s);
    EXPECT_EQ(t.parameters[1].width, 10);
}

TEST(Change, InsertsAllColumnsWithoutAList)
{
    EXPECT_EQ(sqlOf(u"INSERT INTO Poststed VALUES ('0150','OSLO');"_s),
              u"INSERT INTO \"Poststed\" (\"PostNr\", \"PostSted\") VALUES (?1, ?2)"_s);
}

TEST(Change, InsertsAsManyValuesAsColumns)
{
    const Failure failure = failureOf(u"INSERT INTO Poststed (PostNr) VALUES ('0150','OSLO')"_s);
    EXPECT_EQ(failure.number, errors::kSyntax);
    EXPECT_TRUE(failure.text.contains(u"det er 1 felt og 2 verdier"));
    EXPECT_EQ(failureOf(u"INSERT INTO Poststed VALUES ('0150')"_s).number, errors::kSyntax);
}

TEST(Change, NamesEachColumnOnce)
{
    EXPECT_EQ(failureOf(u"INSERT INTO Poststed (PostNr,POSTNR) VALUES ('1','2')"_s).number,
              errors::kSyntax);
    EXPECT_EQ(failureOf(u"UPDATE Poststed SET PostNr='1',postnr='2'"_s).number, errors::kSyntax);
}

TEST(Change, ValuesOfAnInsertKnowNoColumns)
{
    EXPECT_EQ(failureOf(u"INSERT INTO Ordre (OrdreNr) VALUES (KlientNr)"_s).number,
              errors::kNoSuchColumn);
    EXPECT_EQ(failureOf(u"INSERT INTO Ordre (OrdreNr) VALUES (abc)"_s).text,
              u"Finner ikke feltet «abc» ved tegn 37."_s);
}

TEST(Change, UpdatesWhatTheConditionHits)
{
    const Translation t =
        translated(u"UPDATE Ordre SET OrdreStatus='Betalt',OrdreNr=OrdreNr+1 WHERE id= 7"_s);
    EXPECT_EQ(t.kind, StatementKind::Update);
    EXPECT_EQ(t.sql, "UPDATE \"Ordre\" SET \"OrdreStatus\" = ?1, \"OrdreNr\" = "
                     "(HELTALL(\"Ordre\".\"OrdreNr\" + ?2)) WHERE \"Ordre\".\"ID\" = ?3");
    EXPECT_EQ(sqlOf(u"UPDATE Ordre SET Betalt=1"_s), u"UPDATE \"Ordre\" SET \"Betalt\" = ?1"_s);
}

TEST(Change, DeletesWhatTheConditionHits)
{
    const Translation t = translated(u"DELETE FROM OrdreLinjer WHERE OrdreID= 7"_s);
    EXPECT_EQ(t.kind, StatementKind::Delete);
    EXPECT_EQ(t.sql, "DELETE FROM \"OrdreLinjer\" WHERE \"OrdreLinjer\".\"OrdreID\" = ?1");
    EXPECT_EQ(sqlOf(u"DELETE FROM Ordre"_s), u"DELETE FROM \"Ordre\""_s);
}

TEST(Change, UnknownNamesAreErrors)
{
    EXPECT_EQ(failureOf(u"INSERT INTO X (A) VALUES (1)"_s).number, errors::kNoSuchTable);
    EXPECT_EQ(failureOf(u"UPDATE X SET A=1"_s).number, errors::kNoSuchTable);
    EXPECT_EQ(failureOf(u"DELETE FROM X"_s).number, errors::kNoSuchTable);
    EXPECT_EQ(failureOf(u"INSERT INTO Ordre (A) VALUES (1)"_s).number, errors::kNoSuchColumn);
    EXPECT_EQ(failureOf(u"UPDATE Ordre SET A=1"_s).number, errors::kNoSuchColumn);
    EXPECT_EQ(failureOf(u"DELETE FROM Ordre WHERE A=1"_s).number, errors::kNoSuchColumn);
}

TEST(Change, ATruthValueIsNeverNull)
{
    EXPECT_EQ(sqlOf(u"UPDATE Ordre SET Betalt=Null,OrdreDato=Null"_s),
              u"UPDATE \"Ordre\" SET \"Betalt\" = COALESCE(NULL, 0), \"OrdreDato\" = NULL"_s);
}

TEST(Change, ExpressionsAreTurnedIntoTheColumnsType)
{
    EXPECT_EQ(sqlOf(u"UPDATE Ordre SET SumBrutto=OrdreNr"_s),
              u"UPDATE \"Ordre\" SET \"SumBrutto\" = (\"Ordre\".\"OrdreNr\" * 10000)"_s);
    EXPECT_EQ(sqlOf(u"UPDATE Ordre SET Betalt=OrdreNr"_s),
              u"UPDATE \"Ordre\" SET \"Betalt\" = COALESCE((\"Ordre\".\"OrdreNr\" <> 0), 0)"_s);
    EXPECT_EQ(sqlOf(u"UPDATE Poststed SET PostNr=PostSted"_s),
              u"UPDATE \"Poststed\" SET \"PostNr\" = substr(\"Poststed\".\"PostSted\", 1, 10)"_s);
    EXPECT_EQ(failureOf(u"UPDATE Ordre SET OrdreNr=OrdreStatus"_s).number, errors::kTypeMismatch);
    EXPECT_EQ(failureOf(u"UPDATE Ordre SET OrdreStatus=True"_s).number, errors::kTypeMismatch);
    EXPECT_EQ(failureOf(u"UPDATE Ordre SET Bilde='x'"_s).number, errors::kTypeMismatch);
    EXPECT_EQ(failureOf(u"UPDATE Ordre SET OrdreNr=#1/1/2014#"_s).text,
              u"Verdien «#1/1/2014#» ved tegn 26 har feil datatype for feltet «OrdreNr»."_s);
}

TEST(Change, StackedStatementsInATextAreText)
{
    const QString statement =
        u"INSERT INTO Poststed (PostNr,PostSted) VALUES ('1','''); DROP TABLE Ordre;--')"_s;
    EXPECT_EQ(translated(statement).parameters.size(), 2u);
    EXPECT_EQ(valuesOf(statement).at(1).toText(), u"'); DROP TABLE Ordre;--"_s);
    const QString open =
        u"INSERT INTO Poststed (PostNr,PostSted) VALUES ('1',''); DROP TABLE Ordre;--')"_s;
    EXPECT_EQ(failureOf(open).number, errors::kSyntax);
}

TEST(Change, OneTranslationServesEveryStatementOfItsShape)
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

#include "platform/ado/dialect/Fixture.h"

namespace ado::dialect::test {

namespace {

QStringList namesOf(const Translation &translation)
{
    QStringList names;
    for (const ResultColumn &column : translation.columns)
        names += column.name;
    return names;
}

DataType typeOf(const QString &expression)
{
    return translated(u"SELECT %1 FROM Ordre"_s.arg(expression)).columns.at(0).type;
}

} // namespace

TEST(Select, NamesComeOutAsCreatedAndAliasesAsWritten)
{
    const Translation t =
        translated(u"select id, ORDRE.ordrenr, KLIENTNR as nyttnr, [betalt] from ORDRE"_s);
    EXPECT_EQ(t.sql, "SELECT \"Ordre\".\"ID\", \"Ordre\".\"OrdreNr\", \"Ordre\".\"KlientNr\", "
                     "\"Ordre\".\"Betalt\" FROM \"Ordre\" ORDER BY \"Ordre\".\"ID\"");
    EXPECT_EQ(namesOf(t), (QStringList{u"ID"_s, u"OrdreNr"_s, u"nyttnr"_s, u"Betalt"_s}));
    EXPECT_EQ(t.baseTable, u"Ordre"_s);
    EXPECT_TRUE(t.columns[0].key);
    EXPECT_FALSE(t.columns[1].key);
    EXPECT_EQ(t.columns[2].baseColumn, u"KlientNr"_s);
}

TEST(Select, StarsStandForTheColumnsInOrder)
{
    EXPECT_EQ(namesOf(translated(u"SELECT * FROM Poststed"_s)),
              (QStringList{u"PostNr"_s, u"PostSted"_s}));
    const Translation joined =
        translated(u"SELECT P.*, L.ID FROM OrdreLinjer L INNER JOIN Poststed AS P ON "
                   "L.ProduktNr=P.PostNr"_s);
    EXPECT_EQ(namesOf(joined), (QStringList{u"PostNr"_s, u"PostSted"_s, u"ID"_s}));
    EXPECT_EQ(joined.baseTable, QString());
    EXPECT_EQ(translated(u"SELECT * FROM Ordre, Poststed"_s).columns.size(), 12u);
    EXPECT_EQ(failureOf(u"SELECT X.* FROM Ordre"_s).number, errors::kNoSuchTable);
}

TEST(Select, TellsTheTypeOfEveryColumn)
{
    const Translation t = translated(u"SELECT * FROM Ordre"_s);
    std::vector<DataType> types;
    for (const ResultColumn &column : t.columns)
        types.push_back(column.type);
    EXPECT_EQ(types,
              (std::vector{DataType::Integer, DataType::SmallInt, DataType::Integer,
                           DataType::VarWChar, DataType::Boolean, DataType::Date, DataType::Single,
                           DataType::Double, DataType::Currency, DataType::LongVarBinary}));
    EXPECT_EQ(t.columns[3].width, 10);
}

TEST(Select, TellsTheTypeOfComputedColumns)
{
    EXPECT_EQ(typeOf(u"COUNT(*)"_s), DataType::Integer);
    EXPECT_EQ(typeOf(u"Count (Bilde)"_s), DataType::Integer);
    EXPECT_EQ(typeOf(u"Sum(SumBrutto)"_s), DataType::Currency);
    EXPECT_EQ(typeOf(u"Sum(KlientNr)"_s), DataType::Double);
    EXPECT_EQ(typeOf(u"Sum(RabattPst)"_s), DataType::Double);
    EXPECT_EQ(typeOf(u"Avg(SumBrutto)"_s), DataType::Currency);
    EXPECT_EQ(typeOf(u"Avg(OrdreNr)"_s), DataType::Double);
    EXPECT_EQ(typeOf(u"Max(OrdreDato)"_s), DataType::Date);
    EXPECT_EQ(typeOf(u"Min(KlientNr)"_s), DataType::SmallInt);
    EXPECT_EQ(typeOf(u"Max(RabattPst)"_s), DataType::Single);
    EXPECT_EQ(typeOf(u"Max(Betalt)"_s), DataType::Integer);
    EXPECT_EQ(typeOf(u"Max([OrdreNr])+1"_s), DataType::Integer);
    EXPECT_EQ(typeOf(u"Year(OrdreDato)"_s), DataType::SmallInt);
    EXPECT_EQ(typeOf(u"-KlientNr"_s), DataType::Integer);
    EXPECT_EQ(typeOf(u"-SumBrutto"_s), DataType::Currency);
    EXPECT_EQ(typeOf(u"ID=1"_s), DataType::Boolean);
    EXPECT_EQ(typeOf(u"Null"_s), DataType::VarWChar);
    EXPECT_EQ(typeOf(u"'x'"_s), DataType::VarWChar);
    EXPECT_EQ(typeOf(u"1.5"_s), DataType::Double);
    const Translation text = translated(u"SELECT Max(OrdreStatus) FROM Ordre"_s);
    EXPECT_EQ(text.columns.at(0).width, 10);
}

TEST(Select, NumbersComputedColumnsWithoutAlias)
{
    EXPECT_EQ(namesOf(translated(u"SELECT ID+1, ID, ID+2 AS To, ID+3 FROM Ordre"_s)),
              (QStringList{u"Expr1000"_s, u"ID"_s, u"To"_s, u"Expr1001"_s}));
}

TEST(Select, OnlyPlainRowsOfOneTableHaveABaseTable)
{
    EXPECT_EQ(translated(u"SELECT ID, Bilde FROM Ordre O WHERE O.ID=1"_s).baseTable, u"Ordre"_s);
    EXPECT_EQ(translated(u"SELECT DISTINCT ID FROM Ordre"_s).baseTable, QString());
    EXPECT_EQ(translated(u"SELECT ID FROM Ordre GROUP BY ID"_s).baseTable, QString());
    EXPECT_EQ(translated(u"SELECT Max(ID) FROM Ordre"_s).baseTable, QString());
}

TEST(Select, IdentityIsAQueryOfItsOwn)
{
    for (const QString &statement : {u"SELECT @@IDENTITY"_s, u"select @@identity;"_s}) {
        const Translation t = translated(statement);
        EXPECT_EQ(t.kind, StatementKind::Identity);
        EXPECT_EQ(t.sql, "SELECT last_insert_rowid()");
        EXPECT_EQ(namesOf(t), QStringList{u"@@IDENTITY"_s});
        EXPECT_EQ(t.columns[0].type, DataType::Integer);
    }
}

TEST(Select, ChainsOfJoinsNeedNoParentheses)
{
    EXPECT_EQ(sqlOf(u"SELECT O.ID FROM (Ordre AS O LEFT JOIN Poststed AS P ON O.OrdreStatus="
                    "P.PostNr) RIGHT OUTER JOIN OrdreLinjer L ON O.ID=L.OrdreID ORDER BY O.ID"_s),
              u"SELECT \"O\".\"ID\" FROM \"Ordre\" AS \"O\" LEFT JOIN \"Poststed\" AS \"P\" ON "
              "\"O\".\"OrdreStatus\" COLLATE NORSK = \"P\".\"PostNr\" RIGHT JOIN \"OrdreLinjer\" "
              "AS \"L\" ON \"O\".\"ID\" = \"L\".\"OrdreID\" ORDER BY 1, \"O\".\"ID\", "
              "\"P\".\"PostNr\" COLLATE NORSK"_s);
    EXPECT_EQ(sqlOf(u"SELECT O.ID FROM Ordre O INNER JOIN (OrdreLinjer L INNER JOIN Poststed P ON "
                    "L.ProduktNr=P.PostNr) ON O.ID=L.OrdreID ORDER BY O.ID"_s),
              u"SELECT \"O\".\"ID\" FROM \"Ordre\" AS \"O\" INNER JOIN (\"OrdreLinjer\" AS \"L\" "
              "INNER JOIN \"Poststed\" AS \"P\" ON \"L\".\"ProduktNr\" COLLATE NORSK = "
              "\"P\".\"PostNr\") ON \"O\".\"ID\" = \"L\".\"OrdreID\" ORDER BY 1, \"O\".\"ID\", "
              "\"L\".\"ID\""_s);
}

// Which table or index a database reads first is its own choice; the order of the rows is not.
TEST(Select, RowsComeByTheKeysOfAllTablesButTheLastOfSeveral)
{
    const auto order = [](const QString &statement) {
        const QString sql = sqlOf(statement);
        return sql.contains(u" ORDER BY ") ? sql.sliced(sql.indexOf(u" ORDER BY ") + 10)
                                           : QString();
    };
    EXPECT_EQ(order(u"SELECT OrdreNr FROM Ordre"_s), u"\"Ordre\".\"ID\""_s);
    EXPECT_EQ(order(u"SELECT Max(OrdreNr) FROM Ordre"_s), QString());
    EXPECT_EQ(order(u"SELECT OrdreNr FROM Ordre O LEFT JOIN Poststed ON OrdreStatus=PostNr"_s),
              u"\"O\".\"ID\""_s);
    EXPECT_EQ(order(u"SELECT OrdreNr FROM Ordre O, OrdreLinjer L, Poststed"_s),
              u"\"O\".\"ID\", \"L\".\"ID\""_s);
    EXPECT_EQ(order(u"SELECT DISTINCT MvaPst,OrdreNr FROM Ordre O, OrdreLinjer L"_s), u"1, 2"_s);
    EXPECT_EQ(order(u"SELECT COUNT(*) FROM Ordre O, OrdreLinjer L GROUP BY MvaPst"_s),
              u"\"L\".\"MvaPst\""_s);
    EXPECT_EQ(order(u"SELECT COUNT(*) FROM Ordre O, OrdreLinjer L"_s), QString());
}

TEST(Select, DistinctRowsComeByTheirValues)
{
    EXPECT_EQ(sqlOf(u"SELECT DISTINCT PostNr,ID FROM Poststed, Ordre WHERE ID=1"_s)
                  .section(u" ORDER BY "_s, 1),
              u"1 COLLATE NORSK, 2"_s);
    EXPECT_EQ(sqlOf(u"SELECT DISTINCT ID,OrdreNr,KlientNr FROM Ordre ORDER BY OrdreNr DESC,ID"_s)
                  .section(u" ORDER BY "_s, 1),
              u"2 DESC, 1, 2, 3"_s);
    EXPECT_EQ(sqlOf(u"SELECT DISTINCT OrdreNr FROM Ordre"_s),
              u"SELECT DISTINCT \"Ordre\".\"OrdreNr\" FROM \"Ordre\" ORDER BY 1"_s);
}

TEST(Select, AJoinSeesItsOwnTablesOnly)
{
    const QString late = u"SELECT O.ID FROM Ordre O INNER JOIN OrdreLinjer L ON P.PostNr='1' "
                         "INNER JOIN Poststed P ON O.ID=L.OrdreID"_s;
    EXPECT_EQ(failureOf(late).number, errors::kNoSuchColumn);
    const QString comma = u"SELECT O.ID FROM Ordre O, OrdreLinjer L INNER JOIN Poststed P ON "
                          "O.OrdreStatus=P.PostNr"_s;
    EXPECT_EQ(failureOf(comma).number, errors::kNoSuchColumn);
}

TEST(Select, NamesThatCannotBeResolved)
{
    const auto failure = [](const QString &statement, int number, const QString &said) {
        const Failure f = failureOf(statement);
        EXPECT_EQ(f.number, number) << statement.toStdString();
        EXPECT_EQ(f.text, said) << statement.toStdString();
    };
    failure(u"SELECT ID FROM Finnesikke"_s, errors::kNoSuchTable,
            u"Finner ikke tabellen «Finnesikke» ved tegn 16."_s);
    failure(u"SELECT Gruppe FROM Ordre"_s, errors::kNoSuchColumn,
            u"Finner ikke feltet «Gruppe» ved tegn 8."_s);
    failure(u"SELECT ID FROM Ordre WHERE X.ID=1"_s, errors::kNoSuchColumn,
            u"Finner ikke feltet «X» ved tegn 28."_s);
    failure(u"SELECT Ordre.ID FROM Ordre AS O"_s, errors::kNoSuchColumn,
            u"Finner ikke feltet «Ordre» ved tegn 8."_s);
    failure(u"SELECT ID FROM Ordre O, OrdreLinjer L"_s, errors::kNoSuchColumn,
            u"Feltet «ID» ved tegn 8 finnes i flere av tabellene."_s);
    failure(u"SELECT 1 FROM Ordre, ORDRE"_s, errors::kSyntax,
            u"Syntaksfeil i setningen ved tegn 22: «Ordre» står to ganger blant tabellene."_s);
}

TEST(Select, AComparisonThatDoesNotFitIsFoundWhereItStands)
{
    const auto said = [](const QString &condition) {
        return failureOf(u"SELECT ID FROM Ordre WHERE "_s + condition).text;
    };
    EXPECT_EQ(said(u"OrdreStatus=Betalt"_s),
              u"Datatypene passer ikke sammen ved tegn 40: «Betalt»."_s);
    EXPECT_EQ(said(u"OrdreStatus=(NOT Betalt)"_s),
              u"Datatypene passer ikke sammen ved tegn 41: «NOT»."_s);
}

TEST(Select, TextIsComparedInNorwegianWherever)
{
    EXPECT_EQ(whereOf(u"OrdreStatus='ordre'"_s), u"\"Ordre\".\"OrdreStatus\" COLLATE NORSK = ?1"_s);
    EXPECT_EQ(whereOf(u"'a'<=OrdreStatus"_s), u"?1 COLLATE NORSK <= \"Ordre\".\"OrdreStatus\""_s);
    EXPECT_EQ(whereOf(u"OrdreStatus NOT IN ('a','b')"_s),
              u"\"Ordre\".\"OrdreStatus\" COLLATE NORSK NOT IN (?1, ?2)"_s);
    EXPECT_EQ(whereOf(u"OrdreStatus BETWEEN 'a' AND 'b'"_s),
              u"\"Ordre\".\"OrdreStatus\" COLLATE NORSK BETWEEN ?1 AND ?2"_s);
    EXPECT_EQ(sqlOf(u"SELECT Max(PostSted) FROM Poststed GROUP BY PostNr ORDER BY PostNr DESC"_s),
              u"SELECT MAX(\"Poststed\".\"PostSted\" COLLATE NORSK) FROM \"Poststed\" GROUP BY "
              "\"Poststed\".\"PostNr\" COLLATE NORSK ORDER BY \"Poststed\".\"PostNr\" COLLATE "
              "NORSK DESC, \"Poststed\".\"PostNr\" COLLATE NORSK"_s);
    EXPECT_FALSE(whereOf(u"OrdreStatus IS NULL"_s).contains(u"COLLATE"));
}

TEST(Select, OrdersByTheNumberOfAResultColumnWherePossible)
{
    const auto order = [](const QString &statement) {
        const QString sql = sqlOf(statement);
        return sql.sliced(sql.indexOf(u" ORDER BY ") + 10);
    };
    EXPECT_EQ(order(u"SELECT ID, OrdreNr FROM Ordre ORDER BY ordreNr DESC"_s),
              u"2 DESC, \"Ordre\".\"ID\""_s);
    EXPECT_EQ(order(u"SELECT ID, OrdreNr AS Nr FROM Ordre ORDER BY nr, Ordre.OrdreNr"_s),
              u"2, 2, \"Ordre\".\"ID\""_s);
    EXPECT_EQ(order(u"SELECT DISTINCT PostNr FROM Poststed ORDER BY PostNr ASC"_s),
              u"1 COLLATE NORSK"_s);
    EXPECT_EQ(order(u"SELECT KlientNr FROM Ordre O, OrdreLinjer L ORDER BY KlientNr"_s),
              u"1, \"O\".\"ID\""_s);
    EXPECT_EQ(order(u"SELECT ID FROM Ordre ORDER BY KlientNr+1"_s),
              u"(HELTALL(\"Ordre\".\"KlientNr\" + ?1)), \"Ordre\".\"ID\""_s);
    EXPECT_EQ(failureOf(u"SELECT O.ID, L.ID FROM Ordre O, OrdreLinjer L ORDER BY ID"_s).number,
              errors::kNoSuchColumn);
    EXPECT_EQ(failureOf(u"SELECT DISTINCT ID FROM Ordre ORDER BY OrdreNr"_s).number,
              errors::kSyntax);
    EXPECT_EQ(failureOf(u"SELECT ID FROM Ordre ORDER BY 1"_s).number, errors::kSyntax);
    EXPECT_EQ(failureOf(u"SELECT ID FROM Ordre ORDER BY Gruppe"_s).number, errors::kNoSuchColumn);
}

TEST(Select, GroupsEveryColumnThatIsNoSum)
{
    EXPECT_EQ(sqlOf(u"SELECT MvaPst As Mva,Sum(Sum) As S FROM OrdreLinjer GROUP BY MvaPst HAVING "
                    "Sum(Sum)<>0;"_s),
              u"SELECT \"OrdreLinjer\".\"MvaPst\", SUM(\"OrdreLinjer\".\"Sum\") FROM "
              "\"OrdreLinjer\" GROUP BY \"OrdreLinjer\".\"MvaPst\" HAVING "
              "SUM(\"OrdreLinjer\".\"Sum\") <> ?1 ORDER BY \"OrdreLinjer\".\"MvaPst\""_s);
    const Failure failure = failureOf(u"SELECT ID FROM OrdreLinjer GROUP BY MvaPst"_s);
    EXPECT_EQ(failure.number, errors::kSyntax);
    EXPECT_EQ(failure.text, u"Syntaksfeil i setningen ved tegn 8: feltet «ID» står verken i GROUP "
                            "BY eller i en sumfunksjon."_s);
    EXPECT_EQ(failureOf(u"SELECT Max(ID), ID FROM Ordre"_s).number, errors::kSyntax);
    EXPECT_EQ(failureOf(u"SELECT Max(ID) FROM Ordre HAVING ID=1"_s).number, errors::kSyntax);
    EXPECT_EQ(failureOf(u"SELECT Max(ID) FROM Ordre ORDER BY ID"_s).number, errors::kSyntax);
    EXPECT_EQ(failureOf(u"SELECT ID FROM Ordre ORDER BY Max(ID)"_s).number, errors::kSyntax);
    EXPECT_EQ(failureOf(u"SELECT Year(OrdreDato) FROM Ordre GROUP BY Year(OrdreDato)"_s).number, 0);
    EXPECT_EQ(failureOf(u"SELECT Month(OrdreDato) FROM Ordre GROUP BY Year(OrdreDato)"_s).number,
              errors::kSyntax);
    EXPECT_EQ(failureOf(u"SELECT COUNT(*) FROM Ordre GROUP BY 1"_s).number, errors::kSyntax);
    EXPECT_EQ(failureOf(u"SELECT OrdreNr<ID FROM Ordre GROUP BY Ordre.OrdreNr<Ordre.ID"_s).number,
              0);
    EXPECT_EQ(failureOf(u"SELECT OrdreNr=ID FROM Ordre GROUP BY OrdreNr<ID"_s).number,
              errors::kSyntax);
    // Each run may bring another number, so these are not the same expression.
    EXPECT_EQ(failureOf(u"SELECT ID+1 FROM Ordre GROUP BY ID+1"_s).number, errors::kSyntax);
}

TEST(Select, ASumOfTheWholeTableStandsInTheResult)
{
    EXPECT_EQ(failureOf(u"SELECT 7 FROM Ordre HAVING Avg(Null)<>7"_s).text,
              u"Syntaksfeil i setningen ved tegn 37: det trengs GROUP BY eller en sumfunksjon i "
              "resultatet."_s);
    EXPECT_EQ(failureOf(u"SELECT 7 FROM Ordre HAVING True"_s).number, errors::kSyntax);
    EXPECT_EQ(failureOf(u"SELECT 7 FROM Ordre ORDER BY Max(ID)"_s).number, errors::kSyntax);
    EXPECT_EQ(failureOf(u"SELECT Max(ID) FROM Ordre HAVING Avg(ID)<>7 ORDER BY Min(ID)"_s).number,
              0);
}

// A database could take the constant for the number of a result column.
TEST(Select, AConstantIsNoOrderAndNoGroup)
{
    for (const char16_t *constant : {u"1", u"-1", u"True", u"-True", u"Null", u"1+1", u"'x'"}) {
        const QString text = QString::fromUtf16(constant);
        EXPECT_EQ(failureOf(u"SELECT ID FROM Ordre ORDER BY "_s + text).number, errors::kSyntax);
        EXPECT_EQ(failureOf(u"SELECT COUNT(*) FROM Ordre GROUP BY "_s + text).number,
                  errors::kSyntax);
    }
}

TEST(Select, ASumHasItsPlaces)
{
    EXPECT_EQ(failureOf(u"SELECT ID FROM Ordre WHERE Max(ID)=1"_s).number, errors::kSyntax);
    EXPECT_EQ(failureOf(u"SELECT Sum(Max(ID)) FROM Ordre"_s).number, errors::kSyntax);
    EXPECT_EQ(failureOf(u"SELECT COUNT(*) FROM Ordre GROUP BY Max(ID)"_s).number, errors::kSyntax);
    EXPECT_EQ(
        failureOf(u"SELECT O.ID FROM Ordre O INNER JOIN OrdreLinjer L ON Max(O.ID)=1"_s).number,
        errors::kSyntax);
    EXPECT_EQ(failureOf(u"UPDATE Ordre SET ID=Max(ID)"_s).number, errors::kSyntax);
}

TEST(Select, TypesThatDoNotMeet)
{
    for (const char16_t *condition :
         {u"KlientNr='1'", u"OrdreStatus=1", u"OrdreDato=1", u"OrdreDato='1.1.2014'",
          u"Bilde=Bilde", u"Betalt='x'", u"OrdreStatus=OrdreNr", u"ID IN (1,'a')",
          u"ID BETWEEN 1 AND 'a'", u"OrdreStatus+'x'='y'", u"OrdreDato+1=OrdreDato", u"Year(ID)=1",
          u"-OrdreStatus='a'", u"ID", u"NOT ID", u"ID=1 AND OrdreStatus", u"1"}) {
        const Failure failure =
            failureOf(u"SELECT ID FROM Ordre WHERE "_s + QString::fromUtf16(condition));
        EXPECT_EQ(failure.number, errors::kTypeMismatch) << failure.text.toStdString();
    }
    EXPECT_EQ(failureOf(u"SELECT Sum(OrdreStatus) FROM Ordre"_s).number, errors::kTypeMismatch);
    EXPECT_EQ(failureOf(u"SELECT Max(Bilde) FROM Ordre"_s).number, errors::kTypeMismatch);
    EXPECT_EQ(failureOf(u"SELECT DISTINCT * FROM Ordre"_s).number, errors::kTypeMismatch);
    EXPECT_EQ(failureOf(u"SELECT ID FROM Ordre ORDER BY Bilde"_s).number, errors::kTypeMismatch);
    EXPECT_EQ(failureOf(u"SELECT ID, Bilde FROM Ordre ORDER BY Bilde"_s).number,
              errors::kTypeMismatch);
    EXPECT_EQ(failureOf(u"SELECT COUNT(*) FROM Ordre GROUP BY Bilde"_s).number,
              errors::kTypeMismatch);
    EXPECT_EQ(failureOf(u"SELECT ID FROM Ordre WHERE OrdreStatus=1"_s).text,
              u"Datatypene passer ikke sammen ved tegn 40: «1»."_s);
}

TEST(Select, NumbersAreTurnedIntoWhatTheyMeet)
{
    EXPECT_EQ(whereOf(u"SumBrutto=RabattPst"_s),
              u"(\"Ordre\".\"SumBrutto\" / 10000.0) = CAST(\"Ordre\".\"RabattPst\" AS REAL)"_s);
    EXPECT_EQ(whereOf(u"SumBrutto=KlientNr"_s),
              u"\"Ordre\".\"SumBrutto\" = (\"Ordre\".\"KlientNr\" * 10000)"_s);
    EXPECT_EQ(whereOf(u"KlientNr=OrdreNr"_s), u"\"Ordre\".\"KlientNr\" = \"Ordre\".\"OrdreNr\""_s);
    EXPECT_EQ(whereOf(u"OrdreNr/2=1"_s),
              u"(KVOTIENT(CAST(\"Ordre\".\"OrdreNr\" AS REAL), ?1)) = ?2"_s);
    EXPECT_EQ(whereOf(u"SumBrutto+1=2"_s), u"(EKSAKT(\"Ordre\".\"SumBrutto\" + ?1)) = ?2"_s);
    EXPECT_EQ(whereOf(u"Betalt>-1"_s), u"(-(\"Ordre\".\"Betalt\")) > ?1"_s);
    EXPECT_EQ(whereOf(u"Betalt=True"_s), u"\"Ordre\".\"Betalt\" = 1"_s);
    EXPECT_EQ(whereOf(u"KlientNr=True"_s), u"\"Ordre\".\"KlientNr\" = (-(1))"_s);
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

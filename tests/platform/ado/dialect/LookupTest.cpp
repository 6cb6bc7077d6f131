#include "platform/ado/dialect/Fixture.h"

namespace ado::dialect::test {

namespace {

/// Tables that sessions keep lookups of, and one, `Uten`, without them.
Catalog lookedUp()
{
    const auto text = [](const QString &name, bool textOnly) {
        ColumnInfo column{name, DataType::VarWChar, 10, false, false};
        column.textOnly = textOnly;
        return column;
    };
    Catalog catalog;
    for (const QString &name : {u"A"_s, u"B"_s, u"Uten"_s}) {
        TableInfo table{name, {{u"ID"_s, DataType::Integer, 0, false, false}}};
        table.columns.push_back(text(u"T"_s, true));
        table.columns.push_back(text(u"Alt"_s, false));
        table.hasLookups = name != u"Uten"_s;
        catalog.add(table);
    }
    return catalog;
}

Translation joined(const QString &from)
{
    return translate(lex(u"SELECT A.ID FROM "_s + from), lookedUp(), SqliteWriter());
}

QString conditionOf(const QString &from)
{
    return QString::fromUtf8(joined(from).sql).section(u" ON "_s, 1);
}

const QString kLookup = u"\"A\".\"T\" COLLATE NORSK = +\"B\".\"T\" AND \"B\"._rowid_ IN "
                        u"(SELECT number FROM temp.\"\"\"B\"\".\"\"T\"\"\" "
                        u"WHERE text = \"A\".\"T\")"_s;

const QString kJoinedLookup = u"\"\"\"B\"\".\"\"T\"\"\".text = \"A\".\"T\" AND "
                              u"\"B\"._rowid_ = \"\"\"B\"\".\"\"T\"\"\".number AND "
                              u"\"A\".\"T\" COLLATE NORSK = +\"B\".\"T\""_s;

bool isJoined(const QString &from)
{
    const Translation translation = joined(from);
    EXPECT_FALSE(translation.lookups.empty()) << from.toStdString();
    return translation.sql.contains(" CROSS JOIN temp.\"\"\"B\"\".\"\"T\"\"\" AS ");
}

} // namespace

TEST(Lookup, StandsBesideTheComparison)
{
    EXPECT_EQ(conditionOf(u"A LEFT JOIN B ON A.T=B.T"_s), kLookup);
    EXPECT_EQ(conditionOf(u"A LEFT JOIN B ON A.ID=B.ID AND B.T=A.T"_s),
              u"(\"A\".\"ID\" = \"B\".\"ID\") AND ("_s + kLookup + u')');
    EXPECT_EQ(conditionOf(u"A INNER JOIN B ON B.T=A.T"_s), kJoinedLookup);
    EXPECT_EQ(conditionOf(u"A INNER JOIN B ON A.ID=B.ID AND A.T=B.T"_s),
              u"(\"A\".\"ID\" = \"B\".\"ID\") AND ("_s + kJoinedLookup + u')');
    const std::vector<dialect::Lookup> wanted{{u"B"_s, u"T"_s}};
    EXPECT_EQ(joined(u"A LEFT JOIN B ON A.T=B.T"_s).lookups, wanted);
    EXPECT_EQ(joined(u"A INNER JOIN B ON A.T=B.T"_s).lookups, wanted);
}

TEST(Lookup, IsJoinedWhereRowsWithoutAMatchAreLeftOut)
{
    for (const QString &from :
         {u"A INNER JOIN B ON A.T=B.T"_s, u"A LEFT JOIN B ON A.T=B.T WHERE B.ID=1"_s,
          u"A LEFT JOIN B ON A.T=B.T WHERE A.ID=1 AND b.ID<>1 AND A.ID=2"_s,
          u"A LEFT JOIN B AS X ON A.T=X.T WHERE X.Alt<'x'"_s})
        EXPECT_TRUE(isJoined(from)) << from.toStdString();
    for (const QString &from :
         {u"A LEFT JOIN B ON A.T=B.T"_s, u"A LEFT JOIN B ON A.T=B.T WHERE A.ID=1"_s,
          u"A LEFT JOIN B ON A.T=B.T WHERE B.ID Is Null"_s,
          u"A LEFT JOIN B ON A.T=B.T WHERE B.ID=1 OR A.ID=1"_s,
          u"A LEFT JOIN B ON A.T=B.T WHERE NOT (B.ID=1 AND A.ID=1)"_s,
          u"A LEFT JOIN B AS X ON A.T=X.T, B AS Y WHERE Y.ID=1"_s})
        EXPECT_FALSE(isJoined(from)) << from.toStdString();
}

TEST(Lookup, IsJoinedOnceForATable)
{
    const QByteArray sql = joined(u"(A INNER JOIN A AS C ON A.ID=C.ID) INNER JOIN B ON B.T=A.T "
                                  u"AND C.T=B.T"_s)
                               .sql;
    EXPECT_EQ(sql.count(" CROSS JOIN "), 2);
    EXPECT_EQ(sql.count(" IN (SELECT number"), 1);
}

TEST(Lookup, IsOfTheTableOnTheRight)
{
    const Translation translation = joined(u"(A LEFT JOIN B AS X ON A.T=X.T) LEFT JOIN B AS Y ON "
                                           u"Y.T=X.T AND X.T=A.T AND Y.T=Y.T"_s);
    const std::vector<dialect::Lookup> wanted{{u"B"_s, u"T"_s}, {u"B"_s, u"T"_s}};
    EXPECT_EQ(translation.lookups, wanted);
}

TEST(Lookup, IsLeftAloneWhereItWouldNotHold)
{
    for (const QString &from :
         {u"A RIGHT JOIN B ON A.T=B.T"_s, u"A LEFT JOIN Uten ON A.T=Uten.T"_s,
          u"A LEFT JOIN B ON A.Alt=B.T"_s, u"A LEFT JOIN B ON A.T=B.Alt"_s,
          u"A LEFT JOIN B ON A.T<>B.T"_s, u"A LEFT JOIN B ON A.T<B.T"_s,
          u"A LEFT JOIN B ON A.T=B.T OR A.ID=1"_s, u"A LEFT JOIN B ON NOT A.T=B.T"_s,
          u"A LEFT JOIN B ON B.T='x'"_s, u"A LEFT JOIN B ON B.T=B.T"_s,
          u"A LEFT JOIN B ON A.ID=B.ID"_s, u"A, B WHERE A.T=B.T"_s,
          u"A LEFT JOIN (B INNER JOIN Uten ON B.ID=Uten.ID) ON A.T=B.T"_s}) {
        const Translation translation = joined(from);
        EXPECT_TRUE(translation.lookups.empty()) << from.toStdString();
        EXPECT_FALSE(translation.sql.contains("_rowid_")) << from.toStdString();
    }
}

} // namespace ado::dialect::test

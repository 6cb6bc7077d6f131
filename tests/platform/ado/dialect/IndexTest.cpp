#include "platform/ado/dialect/IndexTranslator.h"

#include "platform/ado/dialect/Fixture.h"

namespace ado::dialect::test {

namespace {

/// Empty for an index that is left out.
QString indexOf(const QStringList &items, const QString &table = u"ordre"_s,
                const Catalog &tables = catalog())
{
    const auto made = translateIndex(table, u"Ny"_s, items, tables, SqliteWriter());
    return made ? QString::fromUtf8(made->sql) : QString();
}

int errorOf(const QStringList &items, const QString &table = u"Ordre"_s)
{
    return passOver([&] { static_cast<void>(indexOf(items, table)); });
}

} // namespace

TEST(Index, HoldsColumnsAndPartsOfDates)
{
    EXPECT_EQ(indexOf({u"klientnr"_s, u"YEAR(OrdreDato)"_s, u"[OrdreNr]"_s}),
              u"CREATE INDEX IF NOT EXISTS \"Ordre.Ny\" ON \"Ordre\" (\"KlientNr\", "
              u"CAST(substr(\"OrdreDato\", 1, 4) AS INTEGER), \"OrdreNr\")"_s);
}

TEST(Index, SpellsAPartOfADateAsQueriesDo)
{
    const QString asked =
        sqlOf(u"SELECT Year(Ordre.OrdreDato) AS Aar FROM Ordre"_s).remove(u"\"Ordre\"."_s);
    const QString held = indexOf({u"Year(OrdreDato)"_s}).section(u" ("_s, 1).chopped(1);
    EXPECT_TRUE(asked.contains(held)) << asked.toStdString();
}

TEST(Index, ThatBeginsWithATextIsLeftOutWhereLookupsStandInItsPlace)
{
    Catalog tables;
    for (const QString &name : {u"Med"_s, u"Uten"_s}) {
        TableInfo table{name, {{u"Nr"_s, DataType::VarWChar, 20}, {u"Rad"_s, DataType::Integer}}};
        table.hasLookups = name == u"Med"_s;
        tables.add(table);
    }
    EXPECT_EQ(indexOf({u"Nr"_s, u"Rad"_s}, u"Med"_s, tables), QString());
    EXPECT_NE(indexOf({u"Rad"_s, u"Nr"_s}, u"Med"_s, tables), QString());
    EXPECT_NE(indexOf({u"Nr"_s}, u"Uten"_s, tables), QString());
}

// What a tool that knows no function of ours could not work out.
TEST(Index, HoldsNothingElse)
{
    for (const QString &item : {u"OrdreNr+1"_s, u"-OrdreNr"_s, u"Max(OrdreNr)"_s, u"5"_s, u"Null"_s,
                                u"OrdreNr DESC"_s, u"OrdreNr)"_s, u""_s, u"OrdreNr, KlientNr"_s})
        EXPECT_EQ(errorOf({item}), errors::kSyntax) << item.toStdString();
    EXPECT_EQ(errorOf({u"Finnes"_s}), errors::kNoSuchColumn);
    EXPECT_EQ(errorOf({u"Year(OrdreNr)"_s}), errors::kTypeMismatch);
    EXPECT_EQ(errorOf({u"ID"_s}, u"Finnes"_s), errors::kNoSuchTable);
}

} // namespace ado::dialect::test

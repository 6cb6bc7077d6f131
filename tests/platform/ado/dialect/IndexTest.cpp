#include "platform/ado/dialect/IndexTranslator.h"

#include "platform/ado/dialect/Fixture.h"

namespace ado::dialect::test {

namespace {

QString indexOf(const QStringList &items, const QString &table = u"ordre"_s)
{
    return QString::fromUtf8(translateIndex(table, u"Ny"_s, items, catalog(), SqliteWriter()).sql);
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

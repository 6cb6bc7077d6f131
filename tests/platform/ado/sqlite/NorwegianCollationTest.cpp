#include "platform/ado/sqlite/NorwegianCollation.h"

#include "platform/ado/Support.h"

namespace ado::test {

class NorwegianCollation : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_EQ(sqlite3_open(":memory:", &m_database), SQLITE_OK);
        addNorwegianCollation(m_database);
    }
    void TearDown() override { EXPECT_EQ(sqlite3_close(m_database), SQLITE_OK); }

    /// The words in the collation's order, parted by blanks.
    QString sorted(const QStringList &words)
    {
        QString sql = u"SELECT group_concat(w, ' ') FROM (SELECT w FROM (SELECT NULL AS w"_s;
        for (const QString &word : words)
            sql += u" UNION ALL SELECT '"_s + word + u'\'';
        return text(sql + u") WHERE w NOTNULL ORDER BY w COLLATE NORSK)"_s);
    }
    bool equal(const QString &a, const QString &b)
    {
        return text(u"SELECT '%1' = '%2' COLLATE NORSK"_s.arg(a, b)) == u"1"_s;
    }
    QString text(const QString &sql)
    {
        sqlite3_stmt *statement = nullptr;
        EXPECT_EQ(sqlite3_prepare_v2(m_database, sql.toUtf8().constData(), -1, &statement, nullptr),
                  SQLITE_OK)
            << sqlite3_errmsg(m_database);
        EXPECT_EQ(sqlite3_step(statement), SQLITE_ROW);
        const QString result =
            QString::fromUtf8(reinterpret_cast<const char *>(sqlite3_column_text(statement, 0)));
        sqlite3_finalize(statement);
        return result;
    }

    sqlite3 *m_database = nullptr;
};

TEST_F(NorwegianCollation, PutsTheThreeLettersLast)
{
    EXPECT_EQ(sorted({u"Åse"_s, u"zebra"_s, u"øre"_s, u"Ærlig"_s, u"anna"_s, u"Oslo"_s}),
              u"anna Oslo zebra Ærlig øre Åse"_s);
}

TEST_F(NorwegianCollation, TakesNoNoticeOfCase)
{
    EXPECT_TRUE(equal(u"Bjørnåsen TRANSPORT"_s, u"bjørnÅSEN transport"_s));
    EXPECT_TRUE(equal(u"ÆØÅ"_s, u"æøå"_s));
    EXPECT_FALSE(equal(u"Oslo"_s, u"Osla"_s));
    EXPECT_FALSE(equal(u"Oslo"_s, u"Oslo "_s));
}

TEST_F(NorwegianCollation, KeepsLettersWithMarksApart)
{
    EXPECT_FALSE(equal(u"e"_s, u"é"_s));
    EXPECT_FALSE(equal(u"a"_s, u"å"_s));
    EXPECT_FALSE(equal(u"o"_s, u"ø"_s));
}

TEST_F(NorwegianCollation, SortsDoubleABesideÅ)
{
    EXPECT_EQ(sorted({u"Aase"_s, u"Zakarias"_s, u"Abel"_s}), u"Abel Zakarias Aase"_s);
}

TEST_F(NorwegianCollation, PutsTheEmptyTextAndDigitsFirst)
{
    EXPECT_EQ(sorted({u"a"_s, u"10"_s, u"9"_s, QString()}), u" 10 9 a"_s);
}

} // namespace ado::test

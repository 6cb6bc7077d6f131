#include "platform/report/Selection.h"
#include "platform/report/Query.h"
#include "platform/report/ReportError.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

namespace report::test {

using namespace Qt::StringLiterals;

namespace {

/// A line of the case file: a selection, behind " => " the condition or "error: " and a part of
/// the text.
struct Case
{
    int line = 0;
    QString selection;
    QString expected;
};

std::vector<Case> casesOf(const QString &name)
{
    QFile file(QDir(QStringLiteral(SELECTION_CASES)).filePath(name));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << file.fileName().toStdString();
    std::vector<Case> cases;
    int number = 0;
    for (const QString &line : QString::fromUtf8(file.readAll()).split(u'\n')) {
        ++number;
        if (line.trimmed().isEmpty() || line.startsWith(u'#'))
            continue;
        const qsizetype mark = line.indexOf(" => "_L1);
        EXPECT_GE(mark, 0) << "line " << number;
        cases.push_back({number, line.left(mark), line.mid(mark + 4)});
    }
    EXPECT_FALSE(cases.empty());
    return cases;
}

const Query &query()
{
    static const Query made(u"SELECT Klient.Navn, Ordre.OrdreNr FROM Klient INNER JOIN Ordre ON "
                            "Klient.KlientNr=Ordre.KlientNr"_s);
    return made;
}

} // namespace

TEST(SelectionTest, TurnsIntoConditions)
{
    for (const Case &one : casesOf(u"selections.txt"_s)) {
        QString result;
        try {
            result = conditionOf(one.selection, query());
        } catch (const RunTimeError &error) {
            EXPECT_EQ(error.number(), errors::kFormula);
            result = u"error: "_s + error.description();
        }
        if (one.expected.startsWith("error: "_L1))
            EXPECT_TRUE(result.startsWith("error: "_L1) && result.contains(one.expected.mid(7)))
                << "line " << one.line << ": " << result.toStdString();
        else
            EXPECT_EQ(result.toStdString(), one.expected.toStdString()) << "line " << one.line;
    }
}

TEST(SelectionTest, ABlankSelectionLimitsNothing)
{
    EXPECT_EQ(conditionOf(u"", query()), QString());
    EXPECT_EQ(conditionOf(u"  \n", query()), QString());
}

TEST(SelectionTest, LinksOfOneOperatorAreNotNested)
{
    const QString one = u"{Ordre.OrdreNr}=1"_s;
    QStringList links;
    for (int i = 0; i < 100; ++i)
        links += one;
    const QString condition = conditionOf(links.join(u" and "_s), query());
    EXPECT_FALSE(condition.contains(u'('));
    EXPECT_EQ(condition.count(u"AND"_s), 99);
}

TEST(QueryTest, PutsTheConditionInItsPlace)
{
    const auto limited = [](const QString &statement) {
        return Query(statement).limitedBy(u"A.B=2"_s).simplified().toStdString();
    };
    EXPECT_EQ(limited(u"SELECT A.B FROM A"_s), "SELECT A.B FROM A WHERE A.B=2");
    EXPECT_EQ(limited(u"SELECT A.B FROM A;"_s), "SELECT A.B FROM A WHERE A.B=2 ;");
    EXPECT_EQ(limited(u"SELECT A.B FROM A ORDER BY A.B"_s),
              "SELECT A.B FROM A WHERE A.B=2 ORDER BY A.B");
    EXPECT_EQ(limited(u"SELECT A.B FROM A WHERE A.C=1 OR A.C=2 ORDER BY A.B"_s),
              "SELECT A.B FROM A WHERE (A.C=1 OR A.C=2) AND (A.B=2) ORDER BY A.B");
    EXPECT_EQ(limited(u"SELECT A.B, Sum(A.C) AS S FROM A GROUP BY A.B HAVING Sum(A.C)>0"_s),
              "SELECT A.B, Sum(A.C) AS S FROM A WHERE A.B=2 GROUP BY A.B HAVING Sum(A.C)>0");
    EXPECT_EQ(limited(u"SELECT A.B FROM A WHERE A.C=' ORDER BY '"_s),
              "SELECT A.B FROM A WHERE (A.C=' ORDER BY ') AND (A.B=2)");
    EXPECT_EQ(Query(u"SELECT A.B FROM A"_s).limitedBy({}), u"SELECT A.B FROM A"_s);
}

TEST(QueryTest, FindsColumnsByTableAndByName)
{
    const Query query(u"SELECT K.Navn, O.Navn, O.Nr AS Nummer, Sum(O.S) AS Sum FROM Klient K, "
                      "Ordre O GROUP BY K.Navn, O.Navn, O.Nr"_s);
    EXPECT_EQ(query.column(u"K.Navn"), 0);
    EXPECT_EQ(query.column(u"o.navn"), 1);
    EXPECT_EQ(query.column(u"O.Nr"), 2);
    EXPECT_EQ(query.column(u"Nummer"), 2);
    EXPECT_EQ(query.column(u"Sum"), 3);
    EXPECT_EQ(query.column(u"Navn"), -1);
    EXPECT_EQ(query.column(u"Nr"), -1);
    EXPECT_EQ(query.column(u"Klient.Navn"), -1);
    EXPECT_TRUE(query.readsTable(u"k"));
    EXPECT_FALSE(query.readsTable(u"Klient"));
}

TEST(QueryTest, RefusesWhatFormulasCouldNotName)
{
    EXPECT_THROW(Query(u"SELECT * FROM A"_s), RunTimeError);
    EXPECT_THROW(Query(u"SELECT A.* FROM A"_s), RunTimeError);
    EXPECT_THROW(Query(u"SELECT Sum(A.B) FROM A"_s), RunTimeError);
    EXPECT_THROW(Query(u"SELECT @@IDENTITY"_s), RunTimeError);
    EXPECT_THROW(Query(u"DELETE FROM A"_s), RunTimeError);
    EXPECT_THROW(Query(u"SELECT A.B FROM A; DROP TABLE A"_s), RunTimeError);
}

} // namespace report::test

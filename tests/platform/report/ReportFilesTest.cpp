#include "platform/report/ReportFiles.h"

#include "platform/report/ReportError.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace report::test {

/// A report that takes its only style from an included file.
class ReportFilesTest : public testing::Test
{
protected:
    ReportFilesTest()
    {
        write(u"a.rpt"_s, reportIncluding("b.part"));
        write(u"b.part"_s, styleOf(7));
    }

    static QByteArray reportIncluding(const QByteArray &part)
    {
        return "<report version=\"1\"><query>SELECT T.A FROM T</query>\n<include file=\"" + part +
               "\"/></report>";
    }
    static QByteArray styleOf(int size)
    {
        return "<part version=\"1\"><style name=\"a\" size=\"" + QByteArray::number(size) +
               "\"/></part>";
    }
    void write(const QString &name, const QByteArray &bytes)
    {
        QFile file(m_folder.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(bytes), bytes.size());
    }
    void remove(const QString &name) { ASSERT_TRUE(QFile::remove(m_folder.filePath(name))); }
    ReportFile read(const QString &name) { return readReportFile(m_folder.filePath(name)); }
    double sizeIn(const QString &name) { return read(name).styles.front().font.pointSizeF(); }

    /// Error number and text.
    QString faultOf(const QString &name)
    {
        try {
            static_cast<void>(read(name));
        } catch (const RunTimeError &error) {
            return QString::number(error.number()) + u' ' +
                   QString(error.description()).remove(m_folder.path() + u'/');
        }
        return {};
    }

private:
    const QTemporaryDir m_folder;
};

TEST_F(ReportFilesTest, ReadsAFileWithWhatItIncludes)
{
    EXPECT_EQ(sizeIn(u"a.rpt"_s), 7);
    EXPECT_EQ(sizeIn(u"a.rpt"_s), 7);
}

TEST_F(ReportFilesTest, AFileThatIsNotThereIsAnErrorOfItsOwn)
{
    EXPECT_EQ(faultOf(u"borte.rpt"_s),
              QString::number(errors::kFileNotFound) + u" Filen borte.rpt finnes ikke."_s);
}

TEST_F(ReportFilesTest, AChangeIsSeenAtOnce)
{
    EXPECT_EQ(sizeIn(u"a.rpt"_s), 7);
    write(u"b.part"_s, styleOf(8)); // as long as before and as old, as far as the clock can tell
    EXPECT_EQ(sizeIn(u"a.rpt"_s), 8);
    write(u"c.part"_s, styleOf(9));
    write(u"a.rpt"_s, reportIncluding("c.part"));
    EXPECT_EQ(sizeIn(u"a.rpt"_s), 9);
    write(u"b.part"_s, "no longer a part"); // of nobody
    EXPECT_EQ(sizeIn(u"a.rpt"_s), 9);
}

TEST_F(ReportFilesTest, AnIncludedFileThatGoesIsToldWithItsPlace)
{
    EXPECT_EQ(sizeIn(u"a.rpt"_s), 7);
    remove(u"b.part"_s);
    for (int time = 0; time < 2; ++time) {
        EXPECT_EQ(faultOf(u"a.rpt"_s),
                  QString::number(errors::kReportFile) +
                      u" a.rpt, linje 2, kolonne 1: Filen b.part finnes ikke."_s)
            << time;
    }
    write(u"b.part"_s, styleOf(10));
    EXPECT_EQ(sizeIn(u"a.rpt"_s), 10);
    remove(u"a.rpt"_s);
    EXPECT_EQ(faultOf(u"a.rpt"_s),
              QString::number(errors::kFileNotFound) + u" Filen a.rpt finnes ikke."_s);
}

TEST_F(ReportFilesTest, AFaultIsToldWithTheFilesNameAsItIs)
{
    write(u"20%2 %1.rpt"_s, reportIncluding("borte.part"));
    EXPECT_EQ(faultOf(u"20%2 %1.rpt"_s),
              QString::number(errors::kReportFile) +
                  u" 20%2 %1.rpt, linje 2, kolonne 1: Filen borte.part finnes ikke."_s);
}

TEST_F(ReportFilesTest, AFileOfTheSameBytesElsewhereIsAnotherOne)
{
    EXPECT_EQ(read(u"a.rpt"_s).path.section(u'/', -1), u"a.rpt"_s);
    write(u"x.rpt"_s, reportIncluding("b.part"));
    EXPECT_EQ(read(u"x.rpt"_s).path.section(u'/', -1), u"x.rpt"_s);
}

TEST_F(ReportFilesTest, WhoeverGetsAReportMayChangeIt)
{
    write(u"b.part"_s, "<part version=\"1\"><formula name=\"F\">1 + 2</formula></part>");
    ReportFile mine = read(u"a.rpt"_s);
    ASSERT_EQ(mine.formulas.size(), 1u);
    Expr &sum = *mine.formulas[0].text.expr;
    sum.op = Operator::Subtract;
    sum.arguments[1] = parseFormula(u"{T.A}");
    mine.formulas[0].name = u"G"_s;
    mine.styles.clear();

    const ReportFile theirs = read(u"a.rpt"_s);
    EXPECT_EQ(theirs.styles.size(), 1u);
    EXPECT_EQ(theirs.formulas[0].name, u"F"_s);
    EXPECT_EQ(theirs.formulas[0].text.expr->op, Operator::Add);
    EXPECT_EQ(theirs.formulas[0].text.expr->arguments[1]->kind, ExprKind::Constant);
}

} // namespace report::test

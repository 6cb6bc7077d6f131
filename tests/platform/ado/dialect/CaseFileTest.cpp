#include "platform/ado/dialect/CaseFile.h"

#include "platform/ado/dialect/Fixture.h"

#include <QFile>
#include <QTemporaryDir>

#include <stdexcept>

namespace ado::dialect::test {

namespace {

class CaseFileTest : public testing::Test
{
protected:
    QString written(const QString &name, const QByteArray &text)
    {
        QFile file(m_folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        return file.fileName();
    }

    QTemporaryDir m_folder;
};

} // namespace

TEST_F(CaseFileTest, ReadsEveryKindOfStep)
{
    written(u"tables"_s, "run\nA\n");
    const std::vector<CaseStep> steps = readCaseFile(
        written(u"x.test"_s, "# comment\ninclude tables\n\nrun\nB\nC\n\nerror -5 some text\nD\n\n"
                             "query unordered\nE\n----\na:3\n1\n2\n\nschema T\na:3:0"));
    ASSERT_EQ(steps.size(), 5u);
    EXPECT_EQ(steps[0].statements, QStringList{u"A"_s});
    EXPECT_EQ(steps[0].file, u"tables"_s);
    EXPECT_EQ(steps[1].statements, (QStringList{u"B"_s, u"C"_s}));
    EXPECT_EQ(steps[1].line, 4);
    EXPECT_EQ(steps[2].kind, CaseStep::Kind::Error);
    EXPECT_EQ(steps[2].number, -5);
    EXPECT_EQ(steps[2].text, u"some text"_s);
    EXPECT_EQ(steps[3].statements, QStringList{u"E"_s});
    EXPECT_EQ(steps[3].expected, (QStringList{u"a:3"_s, u"1"_s, u"2"_s}));
    EXPECT_TRUE(steps[3].unordered);
    EXPECT_EQ(steps[4].table, u"T"_s);
    EXPECT_EQ(steps[4].expected, QStringList{u"a:3:0"_s});
}

TEST_F(CaseFileTest, ReadsStepsThatNeedNoDatabase)
{
    const std::vector<CaseStep> steps = readCaseFile(written(
        u"x.test"_s, "refused -5\nsaid | A\nB\n\nvalues C=%1\n1:3 | '1'\n\nsql\nD\nE\nF\n"));
    ASSERT_EQ(steps.size(), 4u);
    EXPECT_EQ(steps[0].kind, CaseStep::Kind::Error);
    EXPECT_EQ(steps[0].number, -5);
    EXPECT_EQ(steps[0].text, u"said"_s);
    EXPECT_EQ(steps[0].statements, QStringList{u"A"_s});
    EXPECT_EQ(steps[1].line, 3);
    EXPECT_EQ(steps[1].text, QString());
    EXPECT_EQ(steps[1].statements, QStringList{u"B"_s});
    EXPECT_EQ(steps[2].statements, QStringList{u"C='1'"_s});
    EXPECT_EQ(steps[2].expected, QStringList{u"1:3"_s});
    EXPECT_EQ(steps[3].statements, QStringList{u"D"_s});
    EXPECT_EQ(steps[3].expected, (QStringList{u"E"_s, u"F"_s}));
}

TEST_F(CaseFileTest, RefusesWhatItDoesNotUnderstand)
{
    EXPECT_THROW((void)readCaseFile(m_folder.filePath(u"none"_s)), std::runtime_error);
    EXPECT_THROW((void)readCaseFile(written(u"a"_s, "what\nA\n")), std::runtime_error);
    EXPECT_THROW((void)readCaseFile(written(u"b"_s, "query\nA\n")), std::runtime_error);
    EXPECT_THROW((void)readCaseFile(written(u"c"_s, "query\nA\nB\n----\na:3\n")),
                 std::runtime_error);
    EXPECT_THROW((void)readCaseFile(written(u"d"_s, "error -1\nA\nB\n")), std::runtime_error);
}

} // namespace ado::dialect::test

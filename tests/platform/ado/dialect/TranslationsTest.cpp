#include "platform/ado/dialect/CaseFile.h"
#include "platform/ado/dialect/Fixture.h"

namespace ado::dialect::test {

namespace {

const QString kFolder = u"translations"_s;

/// What steps that need no database look at: statements on the few tables of `catalog()`, as they
/// are translated for SQLite.
class Translations : public testing::TestWithParam<std::string>
{
};

QStringList spelled(const QString &statement)
{
    const Translation translation = translated(statement);
    QStringList lines{QString::fromUtf8(translation.sql)};
    for (const QByteArray &followUp : translation.followUps)
        lines += QString::fromUtf8(followUp);
    return lines;
}

QStringList columnsOf(const QString &statement)
{
    QStringList lines;
    for (const ResultColumn &column : translated(statement).columns)
        lines +=
            u"%1:%2:%3"_s.arg(column.name).arg(static_cast<int>(column.type)).arg(column.width);
    return lines;
}

QStringList literalsOf(const QString &statement)
{
    QStringList lines;
    for (const Value &value : valuesOf(statement))
        lines += u"%1:%2"_s.arg(shown(value)).arg(static_cast<int>(value.type()));
    return lines;
}

QStringList resultOf(const CaseStep &step)
{
    const QString &statement = step.statements.front();
    switch (step.kind) {
    case CaseStep::Kind::Sql:
        return spelled(statement);
    case CaseStep::Kind::Columns:
        return columnsOf(statement);
    case CaseStep::Kind::Value:
        return literalsOf(statement);
    default:
        return {u"a step that needs a database"_s};
    }
}

} // namespace

TEST(TranslationsFolder, HoldsCases)
{
    EXPECT_FALSE(caseNames(kFolder).empty());
}

TEST_P(Translations, Hold)
{
    for (const CaseStep &step : stepsOf(GetParam(), kFolder)) {
        SCOPED_TRACE(step.file.toStdString() + ':' + std::to_string(step.line));
        const Failure failure = failureOf(step.statements.front());
        if (step.kind == CaseStep::Kind::Error) {
            EXPECT_EQ(failure.number, step.number) << failure.text.toStdString();
            EXPECT_TRUE(failure.text.contains(step.text)) << failure.text.toStdString();
        } else if (failure.number != 0) {
            ADD_FAILURE() << failure.text.toStdString();
        } else {
            EXPECT_EQ(resultOf(step), step.expected);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Files, Translations, testing::ValuesIn(caseNames(kFolder)),
                         [](const auto &tested) { return tested.param; });

} // namespace ado::dialect::test

#include "platform/ado/AnyDatabase.h"
#include "platform/ado/dialect/CaseFile.h"

namespace ado::test {

using namespace dialect::test;

namespace {

/// Runs a case file on a new database, through the record interface; every difference from what the
/// file tells is a failure with the file's line.
class Cases : public AnyDatabaseTest, public testing::WithParamInterface<std::string>
{
};

QStringList linesOf(Recordset &set)
{
    const auto line = [&](const auto &cell) {
        QStringList cells;
        for (int i = 0; i < set.fieldCount(); ++i)
            cells += cell(i);
        return cells.join(u" | "_s);
    };
    QStringList lines{line([&](int i) {
        return u"%1:%2"_s.arg(set.field(i).name).arg(static_cast<int>(set.field(i).type));
    })};
    for (; !set.eof(); set.moveNext())
        lines += line([&](int i) { return shown(set.value(i)); });
    return lines;
}

QStringList schemaOf(const QString &table, Opened &connection)
{
    QStringList lines;
    for (Ref<Recordset> list = connection.openSchema(SchemaList::Columns); !list->eof();
         list->moveNext()) {
        if (list->text(u"TABLE_NAME") != table)
            continue;
        const Value width = list->value(u"CHARACTER_MAXIMUM_LENGTH");
        lines += u"%1:%2:%3"_s.arg(list->text(u"COLUMN_NAME"), list->text(u"DATA_TYPE"))
                     .arg(width.isNull() ? 0 : width.toLong());
    }
    return lines;
}

void runQuery(const CaseStep &step, Opened &connection)
{
    Recordset set = connection.rows(step.statements.front());
    QStringList there = linesOf(set);
    QStringList wanted = step.expected;
    if (step.unordered) {
        std::sort(there.begin() + 1, there.end());
        std::sort(wanted.begin() + 1, wanted.end());
    }
    EXPECT_EQ(there.join(u'\n').toStdString(), wanted.join(u'\n').toStdString());
}

void runError(const CaseStep &step, Opened &connection)
{
    try {
        // A query fails through a record set as the module's own do, all else by execute.
        if (step.statements.front().startsWith(u"SELECT"_s, Qt::CaseInsensitive)) {
            (void)connection.rows(step.statements.front());
        } else {
            connection.execute(step.statements.front());
        }
        ADD_FAILURE() << "no error";
    } catch (const RunTimeError &error) {
        EXPECT_EQ(error.number(), step.number) << error.what();
        EXPECT_TRUE(error.description().contains(step.text)) << error.what();
    }
}

void runStep(const CaseStep &step, Opened &connection)
{
    switch (step.kind) {
    case CaseStep::Kind::Run:
        for (const QString &statement : step.statements) {
            SCOPED_TRACE(statement.toStdString());
            connection.execute(statement);
        }
        break;
    case CaseStep::Kind::Error:
        runError(step, connection);
        break;
    case CaseStep::Kind::Query:
        runQuery(step, connection);
        break;
    case CaseStep::Kind::Schema:
        EXPECT_EQ(schemaOf(step.table, connection).join(u'\n').toStdString(),
                  step.expected.join(u'\n').toStdString());
        break;
    default:
        ADD_FAILURE() << "a step that needs no database";
    }
}

} // namespace

TEST(CaseFolder, HoldsCases)
{
    EXPECT_FALSE(caseNames().empty());
}

TEST_P(Cases, Hold)
{
    {
        Opened connection(dsn());
        for (const CaseStep &step : stepsOf(GetParam())) {
            SCOPED_TRACE(step.file.toStdString() + ':' + std::to_string(step.line));
            try {
                runStep(step, connection);
            } catch (const RunTimeError &error) {
                ADD_FAILURE() << error.number() << ' ' << error.what();
            }
        }
    }
    m_database->check();
}

INSTANTIATE_TEST_SUITE_P(Files, Cases, testing::ValuesIn(caseNames()),
                         [](const auto &tested) { return tested.param; });

} // namespace ado::test

#include "platform/ado/dialect/CaseRunner.h"

#include "platform/ado/Connection.h"
#include "platform/ado/Recordset.h"
#include "platform/ado/dialect/Fixture.h"

#include <QDir>

namespace ado::dialect::test {

namespace {

QDir folderOf(const QString &folder)
{
    return QDir(QStringLiteral(DIALECT_CASES) + u'/' + folder);
}

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

QStringList schemaOf(const QString &table, Connection &connection)
{
    QStringList lines;
    for (Ref<Recordset> list = connection.openSchema(); !list->eof(); list->moveNext()) {
        if (list->text(u"TABLE_NAME") != table)
            continue;
        const Value width = list->value(u"CHARACTER_MAXIMUM_LENGTH");
        lines += u"%1:%2:%3"_s.arg(list->text(u"COLUMN_NAME"), list->text(u"DATA_TYPE"))
                     .arg(width.isNull() ? 0 : width.toLong());
    }
    return lines;
}

void runQuery(const CaseStep &step, Connection &connection)
{
    Recordset set;
    set.setActiveConnection(connection);
    set.setSource(step.statements.front());
    set.open();
    QStringList there = linesOf(set);
    QStringList wanted = step.expected;
    if (step.unordered) {
        std::sort(there.begin() + 1, there.end());
        std::sort(wanted.begin() + 1, wanted.end());
    }
    EXPECT_EQ(there.join(u'\n').toStdString(), wanted.join(u'\n').toStdString());
}

void runError(const CaseStep &step, Connection &connection)
{
    try {
        // A query fails through a record set as the module's own do, all else by execute.
        if (step.statements.front().startsWith(u"SELECT"_s, Qt::CaseInsensitive)) {
            Recordset set;
            set.setActiveConnection(connection);
            set.setSource(step.statements.front());
            set.open();
        } else {
            connection.execute(step.statements.front());
        }
        ADD_FAILURE() << "no error";
    } catch (const RunTimeError &error) {
        EXPECT_EQ(error.number(), step.number) << error.what();
        EXPECT_TRUE(error.description().contains(step.text)) << error.what();
    }
}

void runStep(const CaseStep &step, Connection &connection)
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
    case CaseStep::Kind::Sql:
    case CaseStep::Kind::Columns:
    case CaseStep::Kind::Value:
        ADD_FAILURE() << "a step that needs no database";
    }
}

} // namespace

QString shown(const Value &value)
{
    switch (value.type()) {
    case DataType::Empty:
        return u"NULL"_s;
    case DataType::SmallInt:
    case DataType::Integer:
        return QString::number(value.toLong());
    case DataType::Single:
        return QString::number(value.toSingle(), 'g', 7);
    case DataType::Double:
        return QString::number(value.toDouble(), 'g', 15);
    case DataType::Currency: {
        const qint64 count = value.toCurrency().tenThousandths();
        return (count < 0 ? u"-"_s : QString()) + QString::number(std::abs(count / 10000)) + u'.' +
               QString::number(std::abs(count % 10000)).rightJustified(4, u'0');
    }
    case DataType::Date: {
        const QDateTime date = value.toDate();
        return date.toString(date.time() == QTime(0, 0) ? u"yyyy-MM-dd"_s
                                                        : u"yyyy-MM-dd HH:mm:ss"_s);
    }
    case DataType::Boolean:
        return value.toBoolean() ? u"True"_s : u"False"_s;
    case DataType::VarWChar:
        return u'\'' + value.toText() + u'\'';
    case DataType::LongVarBinary:
        return u"x'"_s + QString::fromLatin1(value.toBytes().toHex()) + u'\'';
    }
    return {};
}

std::vector<std::string> caseNames(const QString &folder)
{
    std::vector<std::string> names;
    for (const QString &file : folderOf(folder).entryList({u"*.test"_s}, QDir::Files, QDir::Name))
        names.push_back(file.chopped(5).toStdString());
    return names;
}

std::vector<CaseStep> stepsOf(const std::string &name, const QString &folder)
{
    return readCaseFile(folderOf(folder).filePath(QString::fromStdString(name + ".test")));
}

void runCase(const std::string &name, const CaseDatabaseMaker &makeDatabase)
{
    const std::unique_ptr<CaseDatabase> database = makeDatabase();
    {
        Connection connection;
        connection.open(database->connectionString());
        for (const CaseStep &step : stepsOf(name)) {
            SCOPED_TRACE(step.file.toStdString() + ':' + std::to_string(step.line));
            try {
                runStep(step, connection);
            } catch (const RunTimeError &error) {
                ADD_FAILURE() << error.number() << ' ' << error.what();
            }
        }
    }
    database->check();
}

} // namespace ado::dialect::test

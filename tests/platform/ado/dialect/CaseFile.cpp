#include "platform/ado/dialect/CaseFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace ado::dialect::test {

namespace {

class Reader
{
public:
    explicit Reader(const QString &path) : m_path(path) {}

    std::vector<CaseStep> read()
    {
        QFile file(m_path);
        if (!file.open(QIODevice::ReadOnly))
            fail("cannot be read");
        QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n');
        lines += QString(); // ends the last step
        QStringList step;
        for (const QString &line : lines) {
            ++m_line;
            if (line.startsWith(u"# "))
                continue;
            if (!line.trimmed().isEmpty()) {
                step += line;
                continue;
            }
            if (!step.isEmpty())
                add(step);
            step.clear();
        }
        return std::move(m_steps);
    }

private:
    [[noreturn]] void fail(const std::string &why) const
    {
        throw std::runtime_error(m_path.toStdString() + ':' + std::to_string(m_line) + ": " + why);
    }

    void add(QStringList &lines)
    {
        const QString head = lines.takeFirst();
        const QString word = head.section(u' ', 0, 0);
        const QString rest = head.section(u' ', 1);
        if (word == u"include"_s) {
            const std::vector<CaseStep> included =
                Reader(QFileInfo(m_path).path() + u'/' + rest).read();
            m_steps.insert(m_steps.end(), included.begin(), included.end());
        } else if (word == u"refused"_s || word == u"values"_s) {
            addRows(word, rest, lines);
        } else {
            m_steps.push_back(stepOf(word, rest, lines));
        }
    }

    CaseStep stepFrom(qsizetype linesBefore) const
    {
        CaseStep step;
        step.file = QFileInfo(m_path).fileName();
        step.line = m_line - static_cast<int>(linesBefore);
        return step;
    }

    void addRows(const QString &word, const QString &rest, const QStringList &lines)
    {
        for (qsizetype i = 0; i < lines.size(); ++i) {
            CaseStep step = stepFrom(lines.size() - i);
            const qsizetype mark = lines[i].indexOf(u" | ");
            const QString told = mark < 0 ? QString() : lines[i].first(mark);
            const QString given = mark < 0 ? lines[i] : lines[i].sliced(mark + 3);
            if (word == u"refused"_s) {
                step.kind = CaseStep::Kind::Error;
                step.number = rest.toInt();
                step.text = told;
                step.statements = {given};
            } else {
                step.kind = CaseStep::Kind::Value;
                step.statements = {rest.arg(given)};
                step.expected = {told};
            }
            m_steps.push_back(std::move(step));
        }
    }

    CaseStep stepOf(const QString &word, const QString &rest, const QStringList &lines) const
    {
        CaseStep step = stepFrom(lines.size() + 1);
        if (word == u"run"_s) {
            step.kind = CaseStep::Kind::Run;
            step.statements = lines;
        } else if (word == u"error"_s) {
            step.kind = CaseStep::Kind::Error;
            step.number = rest.section(u' ', 0, 0).toInt();
            step.text = rest.section(u' ', 1);
            step.statements = lines;
        } else if (word == u"query"_s) {
            step.kind = CaseStep::Kind::Query;
            step.unordered = rest == u"unordered"_s;
            splitExpected(lines, step);
        } else if (word == u"schema"_s) {
            step.kind = CaseStep::Kind::Schema;
            step.table = rest;
            step.expected = lines;
        } else if (word == u"sql"_s || word == u"columns"_s) {
            step.kind = word == u"sql"_s ? CaseStep::Kind::Sql : CaseStep::Kind::Columns;
            step.statements = lines.first(1);
            step.expected = lines.sliced(1);
        } else {
            fail("unknown step \"" + word.toStdString() + '"');
        }
        const bool single =
            step.kind == CaseStep::Kind::Error || step.kind == CaseStep::Kind::Query;
        if (single && step.statements.size() != 1)
            fail("one statement expected");
        return step;
    }

    void splitExpected(const QStringList &lines, CaseStep &step) const
    {
        const qsizetype mark = lines.indexOf(u"----"_s);
        if (mark < 0 || mark + 1 == lines.size())
            fail("\"----\" and the columns expected");
        step.statements = lines.first(mark);
        step.expected = lines.sliced(mark + 1);
    }

    QString m_path;
    int m_line = 0;
    std::vector<CaseStep> m_steps;
};

QDir folderOf(const QString &folder)
{
    return QDir(QStringLiteral(DIALECT_CASES) + u'/' + folder);
}

} // namespace

std::vector<CaseStep> readCaseFile(const QString &path)
{
    return Reader(path).read();
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

} // namespace ado::dialect::test

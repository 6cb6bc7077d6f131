#include "platform/report/Formula.h"
#include "platform/report/ReportReader.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <string>

/// Holds docs/REPORTS.md against the reader and the language. What they take is found by trying
/// every word of the page and every word that stands in quotes in their sources.
namespace report::test {

using namespace Qt::StringLiterals;

namespace {

using Words = std::set<QString>;

QString contents(const QString &path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return QString::fromUtf8(file.readAll());
}

const QString &page()
{
    static const QString text = contents(QStringLiteral(REPORT_PAGE));
    return text;
}

/// The page from `start` to the next `end`.
QString part(const QString &start, const QString &end)
{
    const qsizetype from = page().indexOf(start);
    EXPECT_GE(from, 0) << start.toStdString();
    return page().mid(from, page().indexOf(end, from + start.size()) - from);
}

Words matches(const QString &text, const QString &pattern)
{
    Words words;
    for (const QRegularExpressionMatch &match : QRegularExpression(pattern).globalMatch(text))
        words.insert(match.captured(1));
    return words;
}

/// The names in back quotes: `font`, `version="1"`, `<line>`, `Mid(t, from)`.
Words namesIn(const QString &text)
{
    return matches(text, u"`<?([A-Za-z]\\w*)(?:=\"[^`]*|\\([^`]*|>)?`"_s);
}

/// The cells of each row of a table, heading included.
QList<QStringList> rowsOf(const QString &text)
{
    QList<QStringList> rows;
    for (const QString &line : text.split(u'\n')) {
        if (line.startsWith(u"| ") && !line.startsWith(u"| |"))
            rows += line.split(u'|').mid(1);
    }
    return rows;
}

Words joined(Words words, const Words &others)
{
    words.insert(others.begin(), others.end());
    return words;
}

/// Every word that may be one of the language's or the reader's.
const Words &vocabulary()
{
    static const Words words = [] {
        Words found = matches(page(), u"\\b([A-Za-z]\\w*)\\b"_s);
        const QDir sources(QStringLiteral(REPORT_SOURCES));
        for (const QString &name : sources.entryList({u"*.cpp"_s, u"*.h"_s}))
            found.merge(matches(contents(sources.filePath(name)), u"u\"([A-Za-z]\\w*)\""_s));
        return found;
    }();
    return words;
}

const Words kPageBands{u"pageHeader"_s, u"pageFooter"_s};
const Words kReportBands{u"reportHeader"_s, u"reportFooter"_s, u"detail"_s, u"pageHeader"_s,
                         u"pageFooter"_s};
const Words kGroupBands{u"header"_s, u"footer"_s, u"carryHeader"_s, u"carryFooter"_s};
const Words kItems{u"text"_s, u"line"_s, u"box"_s, u"picture"_s};

// --- What the page tells

using Attributes = std::map<QString, Words>; // by element

Attributes documentedAttributes()
{
    Attributes attributes;
    for (const QStringList &row : rowsOf(part(u"## Elements of the report"_s, u"\nNumbers "_s))) {
        for (const QString &element : namesIn(row[0]))
            attributes[element] = namesIn(row[1]);
    }
    for (const QStringList &row : rowsOf(part(u"| Attribute | Of |"_s, u"\nWhat stays"_s))) {
        const QString of = row[1].trimmed();
        for (const QString &band : joined(kReportBands, kGroupBands)) {
            const bool ofPage = kPageBands.count(band) > 0;
            if (of == u"all" || ofPage == (of == u"page bands"))
                attributes[band].merge(namesIn(row[0]));
        }
    }
    // Each item's paragraph begins with its name in bold type.
    for (const QString &section : part(u"## Items"_s, u"\n## "_s).split(u"\n**`<"_s).mid(1)) {
        const QString item = section.section(u'>', 0, 0);
        Words &names = attributes[item];
        names = namesIn(section.section(u"**"_s, 1).section(u"\n\n"_s, 0, 0));
        for (const QStringList &row : rowsOf(section))
            names.merge(namesIn(row[0]));
        names.merge(Words{u"x"_s, u"y"_s, u"visible"_s});
        if (item != u"line")
            names.merge(Words{u"width"_s, u"height"_s});
    }
    attributes[u"part"_s] = {u"version"_s};
    return attributes;
}

// --- What the reader takes

/// What is wrong with a report of these elements; nothing else is than what they bring.
QString faultOf(const QString &report, const QString &included = {})
{
    try {
        static_cast<void>(readReport(report.toUtf8(), u"/rpt/Prove.rpt"_s,
                                     [&](const QString &) { return included.toUtf8(); }));
    } catch (const RunTimeError &error) {
        return error.description();
    }
    return {};
}

/// A report around an element: at the top, in a group or in a band. `inner` is "<name
/// attributes/>".
QString reportAround(const QString &element, const QString &inner)
{
    const QString query = u"<query>SELECT A.B FROM A</query>"_s;
    QString body = inner;
    if (kGroupBands.count(element) > 0)
        body = u"<group name='G' on='{A.B}'>%1</group>"_s.arg(inner);
    else if (kItems.count(element) > 0)
        body = u"<detail height='9'>%1</detail>"_s.arg(inner);
    return u"<report version='1'>%1%2</report>"_s.arg(query, body);
}

/// Attributes without which an element has another fault than the one looked for.
std::map<QString, QString> requiredOf(const QString &element)
{
    if (element == u"group")
        return {{u"name"_s, u"G"_s}, {u"on"_s, u"{A.B}"_s}};
    if (element == u"formula" || element == u"style")
        return {{u"name"_s, u"N"_s}};
    if (element == u"include")
        return {{u"file"_s, u"F.part"_s}};
    if (element == u"report" || element == u"part")
        return {{u"version"_s, u"1"_s}};
    std::map<QString, QString> required;
    if (kItems.count(element) > 0) {
        required = {{u"x"_s, u"1"_s}, {u"y"_s, u"1"_s}};
        if (element == u"picture")
            required[u"file"_s] = u"F.png"_s;
        if (element != u"line")
            required[u"width"_s] = required[u"height"_s] = u"1"_s;
    } else if (kReportBands.count(element) > 0 || kGroupBands.count(element) > 0) {
        required[u"height"_s] = u"1"_s;
    }
    return required;
}

bool takesAttribute(const QString &element, const QString &attribute)
{
    std::map<QString, QString> attributes = requiredOf(element);
    attributes.emplace(attribute, u"1"_s);
    QString written;
    for (const auto &[name, value] : attributes)
        written += u" %1='%2'"_s.arg(name, value);

    const QString part = u"<part version='1'/>"_s;
    QString fault;
    if (element == u"part")
        fault =
            faultOf(reportAround({}, u"<include file='F.part'/>"_s), u"<part%1/>"_s.arg(written));
    else if (element == u"report")
        fault = faultOf(u"<report%1/>"_s.arg(written));
    else
        fault = faultOf(reportAround(element, u"<%1%2/>"_s.arg(element, written)), part);
    return !fault.contains(u"har ikke noe «%1»"_s.arg(attribute));
}

/// `parent` is "report", "group" or a band.
bool takesChild(const QString &parent, const QString &child)
{
    const QString inner = u"<%1/>"_s.arg(child);
    QString report = reportAround({}, inner);
    if (parent == u"group")
        report = reportAround({}, u"<group name='G' on='{A.B}'>%1</group>"_s.arg(inner));
    else if (parent != u"report")
        report = reportAround(parent, u"<%1 height='9'>%2</%1>"_s.arg(parent, inner));
    return !faultOf(report).contains(u"<%1> hører ikke hjemme i <%2>"_s.arg(child, parent));
}

Words takenChildren(const QString &parent)
{
    Words taken;
    for (const QString &word : vocabulary()) {
        if (takesChild(parent, word))
            taken.insert(word);
    }
    return taken;
}

// --- What the language takes

QString formulaFault(const QString &formula)
{
    try {
        static_cast<void>(parseFormula(formula));
    } catch (const RunTimeError &error) {
        return error.description();
    }
    return {};
}

/// A word that calls a function or is a value.
bool isTaken(const QString &word)
{
    return formulaFault(word).isEmpty() ||
           !formulaFault(word + u"(1)"_s).contains(u"ingen kjent funksjon"_s);
}

/// The words of sentences, such as `if a then b`; those in front are no function's name.
const Words kGrammar{u"if"_s,  u"then"_s, u"else"_s, u"in"_s, u"to"_s,
                     u"and"_s, u"or"_s,   u"not"_s,  u"mod"_s};

std::string text(const Words &words)
{
    return QStringList(words.begin(), words.end()).join(u' ').toStdString();
}

} // namespace

TEST(ReportPageTest, TellsTheElements)
{
    const Attributes documented = documentedAttributes();
    Words top;
    for (const QStringList &row : rowsOf(part(u"## Elements of the report"_s, u"\nNumbers "_s)))
        top.merge(namesIn(row[0]));
    EXPECT_EQ(top.erase(u"report"_s), 1U);
    const Words include{u"include"_s};

    EXPECT_EQ(text(takenChildren(u"report"_s)), text(top));
    EXPECT_EQ(text(takenChildren(u"group"_s)), text(joined(kGroupBands, include)));
    for (const QString &band : joined(kReportBands, kGroupBands))
        EXPECT_EQ(text(takenChildren(band)), text(joined(kItems, include))) << band.toStdString();

    // The names of this test are the page's own.
    for (const QStringList &row : rowsOf(part(u"## Elements of the report"_s, u"\nNumbers "_s))) {
        const Words elements = namesIn(row[0]);
        if (elements.count(u"group"_s) > 0) {
            EXPECT_EQ(text(namesIn(row[2])), text(kGroupBands));
        }
        if (elements.count(u"detail"_s) > 0) {
            EXPECT_EQ(text(elements), text(kReportBands));
        }
    }
    EXPECT_EQ(text(matches(page(), u"\n\\*\\*`<(\\w+)>`\\*\\*"_s)), text(kItems));
}

TEST(ReportPageTest, TellsTheAttributesOfEachElement)
{
    for (const auto &[element, names] : documentedAttributes()) {
        Words taken;
        for (const QString &word : vocabulary()) {
            if (takesAttribute(element, word))
                taken.insert(word);
        }
        EXPECT_EQ(text(taken), text(names)) << element.toStdString();
    }
}

TEST(ReportPageTest, TellsTheFunctionsAndValues)
{
    Words documented;
    for (const QStringList &row : rowsOf(part(u"| Function | Result |"_s, u"\n\n"_s)))
        documented.merge(namesIn(row[0]));
    documented.merge(matches(part(u"**Sums.**"_s, u" are over "_s), u"`(\\w+)\\("_s));
    documented.merge(matches(part(u"They see all"_s, u"A group's name"_s), u"`(\\w+)\\("_s));
    documented.merge(namesIn(part(u"| Values |"_s, u"\n"_s)));

    Words taken;
    for (const QString &word : vocabulary()) {
        // Words may be written in any case, and the page's way is the one that is looked for.
        const bool otherwise =
            std::any_of(documented.begin(), documented.end(), [&](const auto &d) {
                return d != word && d.compare(word, Qt::CaseInsensitive) == 0;
            });
        if (!otherwise && kGrammar.count(word.toLower()) == 0 && isTaken(word))
            taken.insert(word);
    }
    EXPECT_EQ(text(taken), text(documented));
}

TEST(ReportPageTest, TellsTheWordsOfTheLanguage)
{
    const QString table = part(u"| Fields |"_s, u"\n\n"_s);
    const QString parser = contents(QStringLiteral(REPORT_SOURCES "/FormulaParser.cpp"));
    EXPECT_EQ(text(matches(parser, u"Word\\(u\"(\\w+)\"\\)"_s)), text(kGrammar));
    const Words told = matches(table, u"\\b([a-z]+)\\b"_s);
    for (const QString &word : kGrammar)
        EXPECT_EQ(told.count(word), 1U) << word.toStdString();
}

} // namespace report::test

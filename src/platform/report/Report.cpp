#include "platform/report/Report.h"

#include "platform/report/FormulaChecker.h"
#include "platform/report/Functions.h"
#include "platform/report/PageFiller.h"
#include "platform/report/ReportError.h"
#include "platform/report/ReportFiles.h"
#include "platform/report/Selection.h"
#include "runtime/Moment.h"

using namespace Qt::StringLiterals;

namespace report {

namespace {

/// The names that the formulas of one report may use.
class ReportNames : public Names
{
public:
    ReportNames(ReportFile &file, const Rows &rows) : m_file(file), m_rows(rows) {}

    FieldInfo field(QStringView name) const override
    {
        const int column = m_file.query->column(name);
        return {column, column < 0 ? Type::Null : m_rows.type(column)};
    }

    int group(QStringView name) const override
    {
        for (size_t i = 0; i < m_file.groups.size(); ++i) {
            if (m_file.groups[i].name.compare(name, Qt::CaseInsensitive) == 0)
                return int(i);
        }
        return name.compare(u"report", Qt::CaseInsensitive) == 0 ? kWholeReport : kOwnScope;
    }

    Expr *formula(QStringView name) override
    {
        for (DeclaredFormula &formula : m_file.formulas) {
            if (formula.name.compare(name, Qt::CaseInsensitive) == 0)
                return formula.text.expr.get();
        }
        return nullptr;
    }

private:
    ReportFile &m_file;
    const Rows &m_rows;
};

/// Checks all formulas of a file against its rows.
class ReportChecker
{
public:
    ReportChecker(ReportFile &file, Names &names) : m_file(file), m_checker(names) {}

    /// The number of aggregates.
    int check()
    {
        for (DeclaredFormula &formula : m_file.formulas)
            check(formula.text);
        check(m_file.fileName);
        check(m_file.author);
        for (Group &group : m_file.groups) {
            check(group.on, FormulaChecker::Use::RowOnly);
            for (std::vector<Band> *bands :
                 {&group.headers, &group.footers, &group.carryHeaders, &group.carryFooters})
                check(*bands);
        }
        for (std::vector<Band> *bands :
             {&m_file.reportHeaders, &m_file.pageHeaders, &m_file.details, &m_file.pageFooters,
              &m_file.reportFooters})
            check(*bands);
        return m_checker.slotCount();
    }

private:
    Type check(FormulaText &formula, FormulaChecker::Use use = FormulaChecker::Use::Anywhere)
    {
        if (!formula)
            return Type::Null;
        try {
            return m_checker.check(*formula.expr, use);
        } catch (const RunTimeError &error) {
            raiseIn(formula, error.description());
        }
    }

    void check(std::vector<Band> &bands)
    {
        for (Band &band : bands) {
            checkCondition(band.visible);
            check(band.each, FormulaChecker::Use::RowOnly);
            for (Item &item : band.items)
                check(item);
        }
    }

    void checkCondition(FormulaText &formula)
    {
        const Type type = check(formula);
        if (type != Type::Truth && type != Type::Null)
            raiseIn(formula, u"her skal et vilkår stå, ikke %1"_s.arg(nameOf(type)));
    }

    void check(Item &item)
    {
        checkCondition(item.visible);
        const Type type = check(item.value);
        const bool bytes = type == Type::Bytes;
        if (type != Type::Null && bytes != (item.kind == ItemKind::Picture))
            raiseIn(item.value, u"%1 kan ikke vises her"_s.arg(nameOf(type)));
        if (item.value && !item.format.isEmpty())
            checkFormat(item, type);
    }

    static void checkFormat(const Item &item, Type type)
    {
        Value sample;
        if (type == Type::Number)
            sample = Value(0.0);
        else if (type == Type::Money)
            sample = Value(Currency());
        else if (type == Type::Date)
            sample = Value(utcMoment(QDate(2000, 1, 1)));
        try {
            static_cast<void>(textOf(sample, item.format));
        } catch (const RunTimeError &) {
            raiseIn(item.value,
                    u"formatet «%1» passer ikke til %2"_s.arg(item.format, nameOf(type)));
        }
    }

    ReportFile &m_file;
    FormulaChecker m_checker;
};

/// "Name=expression" in place of the file's own formula.
void replaceFormula(ReportFile &file, const QString &text)
{
    const qsizetype mark = text.indexOf(u'=');
    const QString name = text.left(std::max<qsizetype>(mark, 0)).trimmed();
    for (DeclaredFormula &formula : file.formulas) {
        if (mark < 0 || formula.name.compare(name, Qt::CaseInsensitive) != 0)
            continue;
        formula.text = readFormula(text.sliced(mark + 1), formula.text.place, u"@"_s + name);
        return;
    }
    raise(errors::kFormula, u"Rapporten har ingen formel som heter «%1»."_s.arg(name));
}

Groups groupsOf(const ReportFile &file, Rows &rows, const Checkpoint &checkpoint)
{
    const auto count = int(file.groups.size());
    const Groups none(0, rows.count());
    RowEnvironment environment(rows, none, 0, checkpoint);
    Groups groups(count, rows.count());
    std::vector<Value> before(file.groups.size());
    for (int row = 0; row < rows.count(); ++row) {
        environment.setRow(row);
        int level = row == 0 ? 0 : count;
        for (int group = count - 1; group >= 0; --group) {
            const auto at = size_t(group);
            Value value = valueOf(file.groups[at].on, environment);
            const bool same = value.isNull() || before[at].isNull()
                                  ? value.isNull() == before[at].isNull()
                                  : compare(value, before[at]) == 0;
            if (!same)
                level = group;
            before[at] = std::move(value);
        }
        groups.add(level);
    }
    return groups;
}

/// Whether the expression has the same value on every row and page.
bool isConstant(const Expr &expr)
{
    switch (expr.kind) {
    case ExprKind::Field:
    case ExprKind::Special:
        return false;
    case ExprKind::Aggregate:
        return expr.scope == kWholeReport && !isRunning(expr.aggregate);
    case ExprKind::FormulaName:
        return isConstant(*expr.formula);
    default:
        return std::all_of(expr.arguments.begin(), expr.arguments.end(),
                           [](const ExprPtr &argument) { return isConstant(*argument); });
    }
}

/// Page footers keep their room where they are not shown, but not those that never are.
void dropUnshownFooters(ReportFile &file, RowEnvironment &environment)
{
    std::erase_if(file.pageFooters, [&](const Band &band) {
        return band.visible && isConstant(*band.visible.expr) &&
               !isShown(band.visible, environment);
    });
}

QString statementFor(const Query &query, const QString &selection)
{
    try {
        return query.limitedBy(conditionOf(selection, query));
    } catch (const RunTimeError &error) {
        raise(errors::kFormula, u"Utvalget «%1»: %2"_s.arg(selection, error.description()));
    }
}

} // namespace

Document makeReport(const Request &request, const Checkpoint &checkpoint)
{
    ReportFile file = readReportFile(request.file);
    for (const QString &formula : request.formulas)
        replaceFormula(file, formula);
    Rows rows(request.connectionString, statementFor(*file.query, request.selection));

    ReportNames names(file, rows);
    const int slotCount = ReportChecker(file, names).check();
    if (rows.count() == 0)
        raise(errors::kNoData, u"Utvalget gir ingen rader."_s);

    const Groups groups = groupsOf(file, rows, checkpoint);
    RowEnvironment environment(rows, groups, slotCount, checkpoint);
    dropUnshownFooters(file, environment);
    Pictures pictures;
    Document document;
    document.title = file.title;
    environment.setRow(0);
    const auto inFirstRow = [&](const FormulaText &formula) {
        return formula ? textOf(valueOf(formula, environment)) : QString();
    };
    document.fileName = inFirstRow(file.fileName);
    document.author = inFirstRow(file.author);
    document.paper = file.paper;
    document.pages = PageFiller(file, environment, groups, pictures).fill();
    document.pictures = pictures.takeAll();
    document.styles = std::move(file.styles);
    return document;
}

} // namespace report

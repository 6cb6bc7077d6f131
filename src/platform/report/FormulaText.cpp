#include "platform/report/FormulaText.h"

#include "platform/report/ReportError.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace report {

void raiseAt(const Place &place, const QString &why, int number)
{
    raise(number, u"%1, linje %2, kolonne %3: %4"_s.arg(QFileInfo(place.file).fileName(),
                                                        QString::number(place.line),
                                                        QString::number(place.column), why));
}

void raiseIn(const FormulaText &formula, const QString &why)
{
    raiseAt(formula.place, formula.name + ": "_L1 + why, errors::kFormula);
}

FormulaText readFormula(const QString &text, const Place &place, const QString &name)
{
    FormulaText formula{{}, place, name};
    try {
        formula.expr = parseFormula(text);
    } catch (const RunTimeError &error) {
        raiseIn(formula, error.description());
    }
    return formula;
}

Value valueOf(const FormulaText &formula, Environment &environment)
{
    try {
        return evaluate(*formula.expr, environment);
    } catch (const RunTimeError &error) {
        raiseIn(formula, error.description());
    }
}

bool isShown(const FormulaText &visible, Environment &environment)
{
    return !visible || isTrue(valueOf(visible, environment));
}

} // namespace report

#include "platform/report/CrystalReport.h"

#include "platform/report/Report.h"
#include "platform/report/ReportError.h"
#include "runtime/Paths.h"

using namespace Qt::StringLiterals;

namespace {

size_t checkedFormula(int index)
{
    if (index < 0 || index >= CrystalReport::kFormulas)
        throw RunTimeError(errors::kInvalidCall);
    return size_t(index);
}

} // namespace

void CrystalReport::reset()
{
    m_properties = {};
    m_document.reset();
}

void CrystalReport::setFormula(int index, const QString &text)
{
    m_properties.formulas[checkedFormula(index)] = text;
}

const QString &CrystalReport::formula(int index) const
{
    return m_properties.formulas[checkedFormula(index)];
}

void CrystalReport::run(const report::Checkpoint &checkpoint)
{
    if (!m_output)
        report::raise(report::errors::kOutput, u"Rapporten har ingen vei til skjerm og skriver."_s);
    if (m_properties.savedData)
        report::raise(report::errors::kNoData, u"Rapportfilen har ingen lagrede data."_s);
    m_document.reset();

    report::Request request;
    request.file = paths::toSystem(m_properties.reportFileName);
    request.connectionString = m_properties.connect;
    request.selection = m_properties.selection;
    for (const QString &formula : m_properties.formulas) {
        if (!formula.isEmpty())
            request.formulas.push_back(formula);
    }
    auto document =
        std::make_shared<const report::Document>(report::makeReport(request, checkpoint));
    if (m_properties.destination == Destination::Printer)
        m_output->print(*document);
    else
        m_output->show(document, m_properties.window);
    m_document = std::move(document);
}

void CrystalReport::pageZoom(int percent)
{
    shownOn().setZoom(percent);
}

void CrystalReport::windowInFront()
{
    shownOn().bringToFront();
}

void CrystalReport::printReport()
{
    shownOn().print(*m_document);
}

report::ReportOutput &CrystalReport::shownOn() const
{
    if (!m_output || !m_document)
        report::raise(report::errors::kOutput, u"Ingen rapport er kjørt."_s);
    return *m_output;
}

#include "host/tasks/PdfTask.h"

#include "data/clsAdoUtils.h"
#include "host/tasks/HostError.h"
#include "host/tasks/OutputFile.h"
#include "output/printout/Fakturautskrift.h"
#include "platform/report/PdfFile.h"
#include "platform/report/Report.h"
#include "runtime/ComponentFolder.h"
#include "runtime/Paths.h"
#include "runtime/RunTimeError.h"
#include "state/SharedState.h"

using namespace Qt::StringLiterals;

void writeInvoicePdf(const Invoice &invoice, const QString &target, bool replace)
{
    checkTarget(target, replace);
    std::vector<QString> formulas{fakTypeFormel(invoice.isCreditNote, !invoice.isIssued)};
    if (const QString note = merknadFormel(); !note.isEmpty())
        formulas.push_back(note);
    try {
        // The host lies where the component lies, so the report files are found the same way.
        const report::Document document = report::makeReport(
            {paths::toSystem(rapportMappe(componentFolder()) + fakturablankett()),
             gDB->ConnectionString(), fakturautvalg(QString::number(invoice.number)), formulas});
        report::writePdf(document, target);
    } catch (const RunTimeError &error) {
        throw HostError(u"ordre %1 lot seg ikke skrive: %2 - %3"_s.arg(invoice.number)
                            .arg(error.number())
                            .arg(error.description()));
    }
}

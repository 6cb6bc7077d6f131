#include "benchmarks/works/Documents.h"

#include "data/clsAdoUtils.h"
#include "output/ehf/EhfFil.h"
#include "platform/report/PdfFile.h"
#include "platform/report/Report.h"
#include "state/SharedState.h"

#include <QBuffer>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

report::Document pages(const QString &file, const QString &selection)
{
    report::Request request;
    request.file = QStringLiteral(REPORT_FOLDER "/") + file;
    request.connectionString = gDB->ConnectionString() + u"; DSQ="_s;
    request.selection = selection;
    return report::makeReport(request);
}

void writeEhf(QByteArray &bytes, int order)
{
    bytes.resize(0);
    QBuffer file(&bytes);
    file.open(QIODevice::WriteOnly);
    SkrivEhfFil(file, 0, QString::number(order));
    if (!bytes.endsWith("</Invoice>\r\n"))
        qFatal("a document is not whole");
}

} // namespace

Work ehfDocuments(int orders)
{
    return {.name = "ehf", .unit = "document", .units = orders, .run = [orders] {
                QByteArray bytes;
                for (int order = 1; order <= orders; ++order)
                    writeEhf(bytes, order);
            }};
}

report::Document invoicePages(int order)
{
    return pages(u"Fak-mgiro-ulogo.rpt"_s,
                 u"{Ordre.KlientNr}= 5 and {Ordre.OrdreNr}=%1"_s.arg(order));
}

report::Document listPages()
{
    return pages(u"Ordreoversikt.rpt"_s, u"{Klient.KlientNr}= 5"_s);
}

Work invoicesToPdf(const QString &folder, int orders)
{
    return {.name = "invoice", .unit = "invoice", .units = orders, .run = [=] {
                for (int order = 1; order <= orders; ++order)
                    report::writePdf(invoicePages(order), folder + u"/faktura.pdf"_s);
            }};
}

Work listToPdf(const QString &folder)
{
    return {.name = "list", .unit = "list", .run = [=] {
                report::writePdf(listPages(), folder + u"/liste.pdf"_s);
            }};
}

} // namespace bench

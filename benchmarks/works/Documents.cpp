#include "benchmarks/works/Documents.h"

#include "data/clsAdoUtils.h"
#include "output/ehf/EhfFil.h"
#include "output/ehf3/Ehf3.h"
#include "platform/report/PdfFile.h"
#include "platform/report/Report.h"
#include "state/SharedState.h"

#include <QBuffer>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

constexpr int kReadAtOnce = 100;

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

Work ehf3Documents(int orders)
{
    return {.name = "ehf3", .unit = "document", .units = orders, .run = [orders] {
                for (int order = 1; order <= orders; ++order) {
                    if (!Ehf3Skriver(gKlient).lag(order).mangler.isEmpty())
                        qFatal("a document is refused");
                }
            }};
}

Work ehf3Files(const QString &folder, int orders)
{
    return {.name = "ehf3 files", .unit = "file", .units = orders, .run = [=] {
                Ehf3Skriver writer(gKlient, kReadAtOnce);
                for (int order = 1; order <= orders; ++order) {
                    const QString file = folder + u"/Faktura-%1.xml"_s.arg(order);
                    if (!writer.skriv(order, file).isEmpty())
                        qFatal("a file is not written");
                }
            }};
}

Work ehf3Reads(int orders)
{
    return {.name = "ehf3 reads", .unit = "order", .units = orders, .run = [orders] {
                for (int order = 1; order <= orders; ++order) {
                    if (!ehf3::Grunnlagsleser(gKlient).les(order))
                        qFatal("an order is not there");
                }
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

// How fast reports come out: one-page invoices to PDF beside the toolkit's own text documents of
// the same words, and a list of a thousand pages beside the toolkit's own painting of its texts,
// with the memory that it takes.

#include "benchmarks/support/Company.h"
#include "benchmarks/support/FileDatabase.h"
#include "benchmarks/support/ModuleDatabase.h"
#include "benchmarks/works/Documents.h"

#include <QFile>
#include <QGuiApplication>
#include <QPainter>
#include <QPdfWriter>
#include <QTextDocument>

#include <cstring>

using namespace Qt::StringLiterals;

namespace {

constexpr int kInvoices = 50;
constexpr int kLines = 6;          // which leave room on the page
constexpr int kListOrders = 54500; // a thousand pages and some
constexpr int kColumns = 4;
constexpr int kRounds = 5;
constexpr int kDotsPerInch = 1200;
constexpr double kMillimetresPerInch = 25.4;

/// The toolkit's own way for pages of the same words in the same type, which need not be read from
/// anywhere.
void writeTextDocuments(const QString &folder, const QString &html)
{
    for (int page = 1; page <= kInvoices; ++page) {
        QPdfWriter writer(folder + u"/tekst.pdf"_s);
        writer.setPageSize(QPageSize(QPageSize::A4));
        QTextDocument document;
        document.setDefaultFont(QFont(u"Liberation Sans"_s, 9));
        document.setHtml(html);
        document.print(&writer);
    }
}

/// The texts of a page as a table of as many columns as fill one page. The typefaces are those of
/// the page: to embed one takes longer than to set its text.
QString htmlOf(const report::Document &document)
{
    QString html = u"<table>"_s;
    int cells = 0;
    for (const report::TextCommand &text : document.pages.at(0).texts) {
        if (cells++ % kColumns == 0)
            html += u"<tr>"_s;
        const QFont &font = document.styles[static_cast<size_t>(text.style())].font;
        html += u"<td style=\"font-family:'%1';font-size:%2pt;font-weight:%3\">%4</td>"_s
                    .arg(font.family())
                    .arg(font.pointSizeF())
                    .arg(int(font.weight()))
                    .arg(text.text().toHtmlEscaped());
    }
    return html + u"</table>"_s;
}

/// The toolkit's own way for pages whose texts are set already.
void paintTexts(const report::Document &document, const QString &path)
{
    QPdfWriter writer(path);
    writer.setPageSize(QPageSize(document.paper, QPageSize::Millimeter));
    writer.setPageMargins(QMarginsF());
    writer.setResolution(kDotsPerInch);
    QPainter painter(&writer);
    for (const report::Page &page : document.pages) {
        if (&page != &document.pages.front())
            writer.newPage();
        for (const report::TextCommand &text : page.texts) {
            painter.setFont(document.styles[static_cast<size_t>(text.style())].font);
            painter.drawText(text.baseline * (kDotsPerInch / kMillimetresPerInch), text.text());
        }
    }
}

/// Lets the peak of the memory begin anew at what is held now.
void forgetPeak()
{
    QFile file(u"/proc/self/clear_refs"_s);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) || file.write("5") != 1)
        qFatal("the peak of the memory cannot be put back");
}

/// The most memory that the program has held since then, in MB.
double peakMemory()
{
    QFile file(u"/proc/self/status"_s);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("the peak of the memory cannot be read");
    const QByteArray status = file.readAll();
    const qsizetype at = status.indexOf("VmHWM:") + qsizetype(std::strlen("VmHWM:"));
    return status.mid(at, status.indexOf("kB", at) - at).trimmed().toDouble() / 1024;
}

void measureInvoices(const QString &folder)
{
    const QString html = htmlOf(bench::invoicePages(1));
    const bench::Work invoices = bench::invoicesToPdf(folder, kInvoices);
    const bench::Pair seconds = bench::inTurn(
        kRounds, [&] { return invoices.cpuSeconds(); },
        [&] { return bench::cpuSecondsOf([&] { writeTextDocuments(folder, html); }) / kInvoices; });
    bench::report("one-page invoice to PDF, with its database read", 1 / seconds.ours,
                  1 / seconds.plain, "pages/s", 1 / seconds.ratio, bench::Aim::ratioAtLeast(3.3));
}

void measureList(const QString &folder)
{
    forgetPeak();
    const double before = peakMemory();
    const double seconds = bench::listToPdf(folder).cpuSeconds();
    const double peak = peakMemory();

    const report::Document list = bench::listPages();
    if (list.pages.size() < 1000)
        qFatal("the list has %zu pages", list.pages.size());
    const double plain = bench::cpuSecondsOf([&] { paintTexts(list, folder + u"/tekster.pdf"_s); });
    bench::report("order list of " + std::to_string(list.pages.size()) + " pages to PDF", seconds,
                  plain, "s", bench::Aim::ratioAtMost(0.9));
    bench::report("peak memory of it, beside the program without it", peak, before, "MB",
                  bench::Aim::valueAtMost(60));
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv); // the module starts without its screens
    bench::FileDatabase database;
    const bench::ModuleDatabase module(database);
    bench::Company company(database, kLines);
    measureInvoices(database.folder());
    company.growOrders(kListOrders);
    measureList(database.folder());
    return 0;
}

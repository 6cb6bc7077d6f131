// How fast reports come out: one-page invoices to PDF beside the toolkit's own text documents of
// the same words, and a list of a thousand pages with the memory that it takes.

#include "benchmarks/ModuleDatabase.h"
#include "benchmarks/Report.h"
#include "platform/report/PdfFile.h"
#include "platform/report/Report.h"

#include <QApplication>
#include <QPdfWriter>
#include <QTemporaryDir>
#include <QTextDocument>

#include <sys/resource.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int kInvoices = 50;
constexpr int kLines = 6;
constexpr int kListOrders = 54500; // a thousand pages and some
constexpr int kColumns = 4;
constexpr int kRounds = 5;
const QString kReports = QStringLiteral(REPORT_FOLDER "/");

void insertOrders()
{
    gConn->beginTrans();
    bench::ModuleDatabase::insertClient();
    for (int order = 1; order <= kListOrders; ++order) {
        gConn->execute(
            u"INSERT INTO Ordre (KlientNr,OrdreNr,OrdreStatus,EgenRef,DeresRef,KundeNr,KundeNavn,"
            u"FakAdresse1,FakAdresse2,FakPostNr,FakPoststed,LevAdresse1,LevAdresse2,LevPostNr,"
            u"LevPoststed,KID,BetBet,OrdreDato,FakDato,ForfallDato,LevDato,SumNetto,MvaKr,"
            u"SumBrutto,Avrunding) VALUES (5,%1,'Fakturert','Kåre','Innkjøp',10001,"
            u"'Ærlig Øl AS','Postboks 7','Åsveien 3','0010','Oslo','Terminal 2','Lagerveien 9',"
            u"'2317','Hamar','2001000100018',14,#03/09/2014#,#03/09/2014#,#03/23/2014#,"
            u"#03/07/2014#,7407.30,1851.84,9259.14,0)"_s.arg(order));
    }
    for (int order = 1; order <= kInvoices; ++order) {
        for (int line = 1; line <= kLines; ++line) {
            gConn->execute(
                u"INSERT INTO OrdreLinjer (OrdreID,PosNr,ProduktNr,ProduktNavn,Antall,Pris,"
                u"RabattPst,RabattKr,MvaPst,SumNetto,SumBrutto) VALUES (%1,%2,'P%3',"
                u"'Kjøring på Østlandet',2.5,493.82,0,0,25,1234.55,1543.19)"_s.arg(order)
                    .arg(line * 10)
                    .arg(line));
        }
    }
    gConn->commitTrans();
}

report::Document made(const QString &file, const QString &selection)
{
    report::Request request;
    request.file = kReports + file;
    request.connectionString = gDB->ConnectionString() + u"; DSQ="_s;
    request.selection = selection;
    return report::makeReport(request);
}

/// The invoices, each read, laid out and written by itself.
void writeInvoices(const QString &folder)
{
    for (int order = 1; order <= kInvoices; ++order) {
        const report::Document document = made(
            u"Fak-mgiro-ulogo.rpt"_s, u"{Ordre.KlientNr}= 5 and {Ordre.OrdreNr}=%1"_s.arg(order));
        if (document.pages.size() != 1)
            qFatal("an invoice has %zu pages", document.pages.size());
        report::writePdf(document, folder + u"/faktura.pdf"_s);
    }
}

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
        const QFont &font = document.styles[static_cast<size_t>(text.style)].font;
        html += u"<td style=\"font-family:'%1';font-size:%2pt;font-weight:%3\">%4</td>"_s
                    .arg(font.family())
                    .arg(font.pointSizeF())
                    .arg(int(font.weight()))
                    .arg(text.text.toHtmlEscaped());
    }
    return html + u"</table>"_s;
}

/// The most memory that the program has held so far, in MB.
double peakMemory()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss) / 1024;
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv); // the module starts without its screens
    const QTemporaryDir folder;
    const bench::ModuleDatabase module(folder.filePath(u"rapporter.db"_s));
    insertOrders();
    const QString html =
        htmlOf(made(u"Fak-mgiro-ulogo.rpt"_s, u"{Ordre.KlientNr}= 5 and {Ordre.OrdreNr}=1"_s));

    std::vector<double> invoices;
    std::vector<double> texts;
    for (int round = 0; round < kRounds; ++round) {
        invoices.push_back(bench::secondsOf([&] { writeInvoices(folder.path()); }));
        texts.push_back(bench::secondsOf([&] { writeTextDocuments(folder.path(), html); }));
    }
    const double ours = kInvoices / bench::median(invoices);
    const double theirs = kInvoices / bench::median(texts);
    bench::report("one-page invoice to PDF, with its database read", bench::amount(ours, "pages/s"),
                  bench::amount(theirs, "pages/s"), ours / theirs,
                  "at least 2 of text document to PDF");

    const double before = peakMemory();
    size_t pages = 0;
    const double seconds = bench::secondsOf([&] {
        const report::Document list = made(u"Ordreoversikt.rpt"_s, u"{Klient.KlientNr}= 5"_s);
        pages = list.pages.size();
        report::writePdf(list, folder.filePath(u"liste.pdf"_s));
    });
    if (pages < 1000)
        qFatal("the list has %zu pages", pages);
    const double peak = peakMemory();
    std::printf("order list of %zu pages to PDF: %.1f s\n", pages, seconds);
    bench::report("peak memory of it", bench::amount(peak, "MB"), bench::amount(before, "MB"),
                  peak / before, "below 200 MB");
}

#include "output/printing/Skriver.h"

#include "output/printing/Ventenotat.h"
#include "platform/forms/CommonDialog.h"
#include "platform/report/Painter.h"
#include "platform/report/PdfFile.h"
#include "platform/report/ReportError.h"

#include <QPageSize>
#include <QPainter>
#include <QPrinter>
#include <QPrinterInfo>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

constexpr double kMmPerTomme = 25.4;

const Skrivere *gSkrivere = nullptr;
const ValgtSkriver *gValgt = nullptr;

[[noreturn]] void nektet(const QPrinter &printer)
{
    report::raise(report::errors::kOutput,
                  u"Skriveren «%1» tar ikke imot utskriften."_s.arg(printer.printerName()));
}

} // namespace

QString Skrivere::standard() const
{
    const QString standard = QPrinterInfo::defaultPrinterName();
    return standard.isEmpty() ? QPrinterInfo::availablePrinterNames().value(0) : standard;
}

std::unique_ptr<QPrinter> Skrivere::lag(const QString &navn) const
{
    const QPrinterInfo skriver = QPrinterInfo::printerInfo(navn);
    return skriver.isNull() ? nullptr
                            : std::make_unique<QPrinter>(skriver, QPrinter::HighResolution);
}

const Skrivere &Skrivere::gjeldende()
{
    static const Skrivere maskinens;
    return gSkrivere ? *gSkrivere : maskinens;
}

BrukSkrivere::BrukSkrivere(const Skrivere &skrivere)
    : m_forrige(std::exchange(gSkrivere, &skrivere))
{
}

BrukSkrivere::~BrukSkrivere()
{
    gSkrivere = m_forrige;
}

ValgtSkriver::ValgtSkriver(const CommonDialog &dialog, int antall)
    : skriver(dialog.printerName), pdfFil(dialog.pdfFile), eksemplarer(antall),
      m_forrige(std::exchange(gValgt, this))
{
}

ValgtSkriver::~ValgtSkriver()
{
    gValgt = m_forrige;
}

void skrivUt(const report::Document &document)
{
    const QString navn = gValgt ? gValgt->skriver : Skrivere::gjeldende().standard();
    if (navn.isEmpty()) {
        const std::optional<QString> fil =
            gValgt ? std::optional(gValgt->pdfFil) : velgPdfFil(u"Skriv til fil (PDF)"_s, document);
        if (fil)
            skrivPdf(document, *fil);
        return;
    }
    const std::unique_ptr<QPrinter> printer = Skrivere::gjeldende().lag(navn);
    if (!printer)
        report::raise(report::errors::kOutput, u"Skriveren «%1» finnes ikke."_s.arg(navn));
    skrivPaa(*printer, document, gValgt ? gValgt->eksemplarer : 1);
}

void skrivPdf(const report::Document &document, const QString &fil)
{
    Ventenotat notat(u"Skriver PDF-filen …"_s);
    report::writePdf(document, fil, [&] { notat.sjekk(); });
}

void skrivPaa(QPrinter &printer, const report::Document &document, int eksemplarer)
{
    const bool liggende = document.paper.width() > document.paper.height();
    printer.setFullPage(true);
    printer.setPageSize(QPageSize(liggende ? document.paper.transposed() : document.paper,
                                  QPageSize::Millimeter, {}, QPageSize::ExactMatch));
    printer.setPageOrientation(liggende ? QPageLayout::Landscape : QPageLayout::Portrait);
    printer.setPageMargins({});
    printer.setDocName(document.title);
    // A printer that cannot repeat a printout by itself gets its pages again.
    const bool gjentar = printer.supportsMultipleCopies();
    printer.setCopyCount(gjentar ? eksemplarer : 1);

    QPainter painter;
    if (!painter.begin(&printer))
        nektet(printer);
    const int sider = static_cast<int>(document.pages.size());
    const int alle = gjentar ? sider : sider * eksemplarer;
    for (int nr = 0; nr < alle; ++nr) {
        if (nr > 0 && !printer.newPage())
            nektet(printer);
        report::paintPage(painter, document, nr % sider, printer.resolution() / kMmPerTomme);
    }
    const bool ferdig = painter.end();
    const QPrinter::PrinterState tilstand = printer.printerState();
    if (!ferdig || tilstand == QPrinter::Error || tilstand == QPrinter::Aborted)
        nektet(printer);
}

QString pdfNavn(const report::Document &document)
{
    static const QRegularExpression ugyldig(u"[\\\\/:*?\"<>|\\x00-\\x1f]+"_s);
    QString navn = document.fileName.isEmpty() ? document.title : document.fileName;
    navn = navn.replace(ugyldig, u" "_s).simplified();
    return (navn.isEmpty() ? u"Utskrift"_s : navn) + u".pdf"_s;
}

std::optional<QString> velgPdfFil(const QString &tittel, const report::Document &document)
{
    CommonDialog dialog;
    dialog.dialogTitle = tittel;
    dialog.flags = dialogflags::kOverwritePrompt | dialogflags::kHideReadOnly;
    dialog.filter = u"PDF-filer (*.pdf)|*.pdf"_s;
    dialog.filterIndex = 1;
    dialog.defaultExt = u"pdf"_s;
    dialog.fileKind = u"PDF"_s;
    dialog.fileName = pdfNavn(document);
    dialog.cancelError = true;
    const int error = passOver([&] { dialog.showSave(); });
    return error == 0 ? std::optional(dialog.fileName) : std::nullopt;
}

#include "output/printing/Skriver.h"

#include "output/printing/Ventenotat.h"
#include "platform/forms/CommonDialog.h"
#include "platform/report/Painter.h"
#include "platform/report/PdfFile.h"
#include "platform/report/ReportError.h"
#include "presentation/screens/Timeglass.h"

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

[[noreturn]] void nektet(const QPrinter &skriver)
{
    report::raise(report::errors::kOutput,
                  u"Skriveren «%1» tar ikke imot utskriften."_s.arg(skriver.printerName()));
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

BrukSkrivere::BrukSkrivere(const Skrivere &skrivere) : m_iBruk(gSkrivere, &skrivere) {}

ValgtSkriver::ValgtSkriver(const CommonDialog &dialog, int antall)
    : skriver(dialog.printerName), pdfFil(dialog.pdfFile), eksemplarer(antall),
      m_iBruk(gValgt, this)
{
}

void skrivUt(const report::Document &dokument)
{
    const QString navn = gValgt ? gValgt->skriver : Skrivere::gjeldende().standard();
    if (navn.isEmpty()) {
        const std::optional<QString> fil =
            gValgt ? std::optional(gValgt->pdfFil) : velgPdfFil(u"Skriv til fil (PDF)"_s, dokument);
        if (fil)
            skrivPdf(dokument, *fil);
        return;
    }
    const std::unique_ptr<QPrinter> skriver = Skrivere::gjeldende().lag(navn);
    if (!skriver)
        report::raise(report::errors::kOutput, u"Skriveren «%1» finnes ikke."_s.arg(navn));
    skrivPaa(*skriver, dokument, gValgt ? gValgt->eksemplarer : 1);
}

void skrivPdf(const report::Document &dokument, const QString &fil)
{
    Ventenotat notat(u"Skriver PDF-filen …"_s);
    report::writePdf(dokument, fil, [&] { notat.sjekk(); });
}

void skrivPaa(QPrinter &skriver, const report::Document &dokument, int eksemplarer)
{
    const bool liggende = dokument.paper.width() > dokument.paper.height();
    skriver.setFullPage(true);
    skriver.setPageSize(QPageSize(liggende ? dokument.paper.transposed() : dokument.paper,
                                  QPageSize::Millimeter, {}, QPageSize::ExactMatch));
    skriver.setPageOrientation(liggende ? QPageLayout::Landscape : QPageLayout::Portrait);
    skriver.setPageMargins({});
    skriver.setDocName(dokument.title);
    // A printer that cannot repeat a printout by itself gets its pages again.
    const bool gjentar = skriver.supportsMultipleCopies();
    skriver.setCopyCount(gjentar ? eksemplarer : 1);

    QPainter maler;
    if (!maler.begin(&skriver))
        nektet(skriver);
    const int sider = int(dokument.pages.size());
    const int alle = gjentar ? sider : sider * eksemplarer;
    // What has come to a printer comes out of it, so a note to cancel by would promise too much.
    Timeglass timeglass;
    for (int nr = 0; nr < alle; ++nr) {
        timeglass.holdVinduene();
        if (nr > 0 && !skriver.newPage())
            nektet(skriver);
        report::paintPage(maler, dokument, nr % sider, skriver.resolution() / kMmPerTomme);
    }
    const bool ferdig = maler.end();
    const QPrinter::PrinterState tilstand = skriver.printerState();
    if (!ferdig || tilstand == QPrinter::Error || tilstand == QPrinter::Aborted)
        nektet(skriver);
}

QString pdfNavn(const report::Document &dokument)
{
    static const QRegularExpression ugyldig(u"[\\\\/:*?\"<>|\\x00-\\x1f]+"_s);
    QString navn = dokument.fileName.isEmpty() ? dokument.title : dokument.fileName;
    navn = navn.replace(ugyldig, u" "_s).simplified();
    return (navn.isEmpty() ? u"Utskrift"_s : navn) + u".pdf"_s;
}

std::optional<QString> velgPdfFil(const QString &tittel, const report::Document &dokument)
{
    CommonDialog dialog;
    dialog.dialogTitle = tittel;
    dialog.flags = dialogflags::kOverwritePrompt | dialogflags::kHideReadOnly;
    dialog.filter = u"PDF-filer (*.pdf)|*.pdf"_s;
    dialog.filterIndex = 1;
    dialog.defaultExt = u"pdf"_s;
    dialog.fileKind = u"PDF"_s;
    dialog.fileName = pdfNavn(dokument);
    dialog.cancelError = true;
    const int feil = passOver([&] { dialog.showSave(); });
    return feil == 0 ? std::optional(dialog.fileName) : std::nullopt;
}

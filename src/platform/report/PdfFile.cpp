#include "platform/report/PdfFile.h"

#include "platform/report/Painter.h"
#include "platform/report/ReportError.h"
#include "runtime/WholeFile.h"

#include <QBuffer>
#include <QFileInfo>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>

#include <qpdf/QPDF.hh>
#include <qpdf/QPDFWriter.hh>

using namespace Qt::StringLiterals;

namespace report {

namespace {

constexpr int kResolution = 1200; // dots per inch

QString reasonFor(const QString &path)
{
    const QFileInfo file(path);
    const QFileInfo folder(file.absolutePath());
    if (file.isDir())
        return u"navnet er en mappe"_s;
    if (!folder.isDir())
        return u"mappen finnes ikke"_s;
    if (!folder.isWritable() || (file.exists() && !file.isWritable()))
        return u"du har ikke adgang til å skrive der"_s;
    return u"disken er full eller lar seg ikke skrive til"_s;
}

[[noreturn]] void raiseNotWritten(const QSaveFile &file)
{
    raise(errors::kOutput,
          u"Kan ikke skrive PDF-filen %1: %2."_s.arg(file.fileName(), reasonFor(file.fileName())));
}

/// The pages alone, as Qt writes them; none when it refuses.
QByteArray pagesOf(const Document &document, const Checkpoint &checkpoint)
{
    QBuffer bytes;
    bytes.open(QIODevice::WriteOnly);
    QPdfWriter writer(&bytes);
    writer.setTitle(document.fileName.isEmpty() ? document.title : document.fileName);
    writer.setCreator(u"Regningsdel"_s);
    writer.setResolution(kResolution);
    writer.setPageSize(QPageSize(document.paper, QPageSize::Millimeter, {}, QPageSize::ExactMatch));
    writer.setPageMargins({});
    QPainter painter;
    if (!painter.begin(&writer))
        return {};
    for (size_t page = 0; page < document.pages.size(); ++page) {
        if (checkpoint)
            checkpoint();
        if (page > 0)
            writer.newPage();
        paintPage(painter, document, static_cast<int>(page), kResolution / 25.4);
    }
    return painter.end() ? bytes.data() : QByteArray();
}

/// Qt embeds the letters that are used and gives the descriptor of such a subset its tag of six
/// capitals, but not the font, where readers look for it.
void tagSubsets(QPDF &pdf)
{
    for (QPDFObjectHandle &font : pdf.getAllObjects()) {
        if (!font.isDictionaryOfType("/Font", "/Type0"))
            continue;
        QPDFObjectHandle letters = font.getKey("/DescendantFonts").getArrayItem(0);
        const QPDFObjectHandle name = letters.getKey("/FontDescriptor").getKey("/FontName");
        letters.replaceKey("/BaseFont", name);
        font.replaceKey("/BaseFont", name);
    }
}

QPDFObjectHandle pdfText(const QString &text)
{
    return QPDFObjectHandle::newUnicodeString(text.toStdString());
}

/// The pages with what Qt's writer has no words for.
QByteArray completed(const QByteArray &pages, const QString &author)
{
    QPDF pdf;
    pdf.processMemoryFile("pages", pages.constData(), static_cast<size_t>(pages.size()));
    QPDFObjectHandle root = pdf.getRoot();
    root.replaceKey("/Lang", pdfText(u"nb-NO"_s));
    root.replaceKey("/ViewerPreferences", QPDFObjectHandle::parse("<< /DisplayDocTitle true >>"));
    if (!author.isEmpty())
        pdf.getTrailer().getKey("/Info").replaceKey("/Author", pdfText(author));
    tagSubsets(pdf);
    QPDFWriter writer(pdf);
    writer.setOutputMemory();
    writer.write();
    const auto bytes = writer.getBufferSharedPointer();
    return {reinterpret_cast<const char *>(bytes->getBuffer()),
            static_cast<qsizetype>(bytes->getSize())};
}

} // namespace

void writePdf(const Document &document, const QString &path, const Checkpoint &checkpoint)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        raiseNotWritten(file);
    const QByteArray pages = pagesOf(document, checkpoint);
    if (pages.isEmpty())
        raiseNotWritten(file);
    const QByteArray whole = completed(pages, document.author);
    if (file.write(whole) != whole.size() || !commitWhole(file))
        raiseNotWritten(file);
}

} // namespace report

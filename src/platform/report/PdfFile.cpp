#include "platform/report/PdfFile.h"

#include "platform/report/Painter.h"
#include "platform/report/ReportError.h"

#include <QFileInfo>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>

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

} // namespace

void writePdf(const Document &document, const QString &path)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        raiseNotWritten(file);
    {
        QPdfWriter writer(&file);
        writer.setTitle(document.title);
        writer.setResolution(kResolution);
        writer.setPageSize(
            QPageSize(document.paper, QPageSize::Millimeter, {}, QPageSize::ExactMatch));
        writer.setPageMargins({});
        QPainter painter;
        if (!painter.begin(&writer))
            raiseNotWritten(file);
        for (size_t page = 0; page < document.pages.size(); ++page) {
            if (page > 0)
                writer.newPage();
            paintPage(painter, document, static_cast<int>(page), kResolution / 25.4);
        }
        if (!painter.end())
            raiseNotWritten(file);
    }
    if (!file.commit())
        raiseNotWritten(file);
}

} // namespace report

#include "platform/report/PdfFile.h"

#include "platform/report/Painter.h"
#include "platform/report/PdfTexts.h"
#include "platform/report/Qpdf.h"
#include "platform/report/ReportError.h"
#include "platform/report/Typesetting.h"
#include "runtime/WholeFile.h"

#include <QDir>
#include <QFileInfo>
#include <QFontInfo>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>
#include <QTemporaryFile>

#include <memory>

using namespace Qt::StringLiterals;

namespace report {

namespace {

/// Dots per inch, of which each is one of the units that text is set in.
constexpr int kResolution = int(72 * kUnitsPerPoint);

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

[[noreturn]] void raiseNotWritten(const QString &path, const QString &reason)
{
    raise(errors::kOutput, u"Kan ikke skrive PDF-filen %1: %2."_s.arg(path, reason));
}

/// Writes the pages alone, as Qt does it; false when they find no room.
bool writePages(QFile &file, const Document &document, const Checkpoint &checkpoint)
{
    QPdfWriter writer(&file);
    writer.setTitle(document.fileName.isEmpty() ? document.title : document.fileName);
    writer.setCreator(u"Regningsdel"_s);
    writer.setResolution(kResolution);
    writer.setPageSize(QPageSize(document.paper, QPageSize::Millimeter, {}, QPageSize::ExactMatch));
    writer.setPageMargins({});
    PdfTexts texts(document.styles);
    QPainter painter;
    if (!painter.begin(&writer))
        return false;
    for (size_t page = 0; page < document.pages.size(); ++page) {
        if (checkpoint)
            checkpoint();
        if (page > 0)
            writer.newPage();
        paintPage(painter, document, int(page), kUnitsPerMm, &texts);
    }
    return painter.end() && file.flush();
}

/// A PDF file that is being completed, which owns all handles of its objects.
struct CloseQpdf
{
    void operator()(_qpdf_data *pdf) const { qpdf_cleanup(&pdf); }
};
using Qpdf = std::unique_ptr<_qpdf_data, CloseQpdf>;

/// Qt embeds the letters that are used and gives the descriptor of such a subset its tag of six
/// capitals, but not the font, where readers look for it.
void tagSubset(qpdf_data pdf, qpdf_oh font)
{
    const qpdf_oh letters =
        qpdf_oh_get_array_item(pdf, qpdf_oh_get_key(pdf, font, "/DescendantFonts"), 0);
    const qpdf_oh name =
        qpdf_oh_get_key(pdf, qpdf_oh_get_key(pdf, letters, "/FontDescriptor"), "/FontName");
    qpdf_oh_replace_key(pdf, letters, "/BaseFont", name);
    qpdf_oh_replace_key(pdf, font, "/BaseFont", name);
}

void tagSubsets(qpdf_data pdf, const Checkpoint &checkpoint)
{
    const int pages = qpdf_get_num_pages(pdf);
    for (int page = 0; page < pages; ++page) {
        if (checkpoint)
            checkpoint();
        const qpdf_oh resources =
            qpdf_oh_get_key(pdf, qpdf_get_page_n(pdf, size_t(page)), "/Resources");
        const qpdf_oh fonts = qpdf_oh_get_key(pdf, resources, "/Font");
        qpdf_oh_begin_dict_key_iter(pdf, fonts);
        while (qpdf_oh_dict_more_keys(pdf))
            tagSubset(pdf, qpdf_oh_get_key(pdf, fonts, qpdf_oh_dict_next_key(pdf)));
        qpdf_oh_release_all(pdf);
    }
}

/// Writes the pages with what Qt's writer has no words for; false when they have not all reached
/// the disk, or now find no room.
bool complete(const QFile &pages, const QFile &whole, const QString &author,
              const Checkpoint &checkpoint)
{
    const Qpdf owner(qpdf_init());
    const qpdf_data pdf = owner.get();
    if (qpdf_read(pdf, QFile::encodeName(pages.fileName()).constData(), nullptr) != QPDF_SUCCESS)
        return false;
    const qpdf_oh root = qpdf_get_root(pdf);
    qpdf_oh_replace_key(pdf, root, "/Lang", qpdf_oh_new_unicode_string(pdf, "nb-NO"));
    qpdf_oh_replace_key(pdf, root, "/ViewerPreferences",
                        qpdf_oh_parse(pdf, "<< /DisplayDocTitle true >>"));
    if (!author.isEmpty()) {
        const qpdf_oh info = qpdf_oh_get_key(pdf, qpdf_get_trailer(pdf), "/Info");
        qpdf_oh_replace_key(pdf, info, "/Author",
                            qpdf_oh_new_unicode_string(pdf, author.toUtf8().constData()));
    }
    tagSubsets(pdf, checkpoint);
    const QByteArray target = QFile::encodeName(whole.fileName()); // qpdf keeps the pointer alone
    qpdf_init_write(pdf, target.constData());
    return qpdf_write(pdf) == QPDF_SUCCESS;
}

/// Whether the file has found room to its end, which qpdf does not tell.
bool hasItsEnd(QFile &pdf)
{
    const QByteArray end = "%%EOF\n"_ba;
    return pdf.seek(std::max<qint64>(pdf.size() - end.size(), 0)) && pdf.readAll() == end;
}

} // namespace

void writePdf(const Document &document, const QString &path, const Checkpoint &checkpoint)
{
    if (QFontInfo(QFont()).family().isEmpty()) // Qt would set boxes in the place of letters
        raise(errors::kOutput, u"Kan ikke skrive PDF-filen: maskinen har ingen skrifter."_s);
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        raiseNotWritten(path, reasonFor(path));
    // In files, so that the pages of a long list are not in memory beside the list itself.
    QTemporaryFile pages;
    QTemporaryFile whole;
    if (!pages.open() || !whole.open() || !writePages(pages, document, checkpoint) ||
        !complete(pages, whole, document.author, checkpoint) || !hasItsEnd(whole))
        raiseNotWritten(path, u"mappen for midlertidige filer, %1, er full eller lar seg ikke "
                              "skrive til"_s.arg(QDir::tempPath()));
    if (!whole.seek(0) || !writeWhole(file, whole))
        raiseNotWritten(path, reasonFor(path));
}

} // namespace report

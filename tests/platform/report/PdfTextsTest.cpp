#include "platform/report/PdfTexts.h"

#include "platform/report/Painter.h"
#include "platform/report/PdfFaces.h"
#include "platform/report/PdfFile.h"
#include "platform/report/Support.h"
#include "platform/report/Typesetting.h"

#include <QFontDatabase>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QPdfWriter>
#include <QProcess>
#include <QRawFont>
#include <QtEndian>

namespace report::test {

namespace {

/// What tells of a text in a PDF file by the tools of a reader.
class PdfTextsTest : public ReportTest
{
protected:
    static Document inStyles(const QStringList &texts)
    {
        Document document;
        document.paper = {210, 297};
        for (const auto &[family, size] :
             {std::pair(u"Liberation Sans"_s, 9.0), std::pair(u"Liberation Mono"_s, 10.5),
              std::pair(u"OCR B"_s, 10.0), std::pair(u"Liberation Sans"_s, 60.0)}) {
            QFont font(family);
            font.setPointSizeF(size);
            document.styles.push_back({{}, font, 0xff000000});
        }
        document.styles[1].font.setBold(true);
        document.styles[3].font.setItalic(true);
        document.styles.push_back(document.styles[0]);
        document.styles.back().font.setUnderline(true);
        Page page;
        double y = 500; // in whole units, so that both ways begin at the same place
        for (size_t style = 0; style < document.styles.size(); ++style) {
            for (const QString &text : texts) {
                page.texts.push_back({QPointF(900, y += 400) / kUnitsPerMm, 0, int(style), text});
            }
            y += style == 2 ? 900 : 0;
        }
        document.pages = {page, page}; // the second one says the same again
        return document;
    }
    /// The same pages as the painter itself draws them.
    void writePlain(const Document &document, const QString &path) const
    {
        QPdfWriter writer(path);
        writer.setResolution(int(72 * kUnitsPerPoint));
        writer.setPageSize(
            QPageSize(document.paper, QPageSize::Millimeter, {}, QPageSize::ExactMatch));
        writer.setPageMargins({});
        QPainter painter(&writer);
        for (int page = 0; page < int(document.pages.size()); ++page) {
            if (page > 0)
                writer.newPage();
            paintPage(painter, document, page, kUnitsPerMm);
        }
    }
    [[nodiscard]] QByteArray told(const QString &tool, const QStringList &arguments) const
    {
        QProcess process;
        process.setWorkingDirectory(folder());
        process.start(tool, arguments);
        EXPECT_TRUE(process.waitForFinished()) << tool.toStdString();
        EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
        return process.readAllStandardOutput();
    }
    /// What a page is drawn with: the first stream with places of glyphs. Which others stand before
    /// it is the affair of Qt's writer and of qpdf.
    [[nodiscard]] QByteArray drawing(const QString &name) const
    {
        QFile file(folder() + u'/' + name);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        const QByteArray pdf = file.readAll();
        const QByteArrayView begin = "\nstream\n";
        const QByteArray unknownSize(4, '\0');
        for (qsizetype at = pdf.indexOf(begin); at >= 0; at = pdf.indexOf(begin, at + 1)) {
            const qsizetype start = at + begin.size();
            if (pdf[start] != 'x') // not deflated, as what tells of the document
                continue;
            const QByteArray stream = qUncompress(
                unknownSize + pdf.sliced(start, pdf.indexOf("endstream", start) - start));
            if (stream.contains(" Td <"))
                return stream;
        }
        return {};
    }
    [[nodiscard]] QStringList fontsOf(const QString &name) const
    {
        QStringList fonts;
        const QStringList lines = QString::fromUtf8(told(u"pdffonts"_s, {name})).split(u'\n');
        for (const QString &line : lines.sliced(2)) {
            if (line.isEmpty())
                continue;
            fonts += line.section(u'+', 1).section(u' ', 0, 0);
            EXPECT_TRUE(line.contains(u" yes yes yes "_s)) << line.toStdString();
        }
        fonts.sort();
        return fonts;
    }
    void expectTheSameAsPlain(const QStringList &texts) const
    {
        const Document document = inStyles(texts);
        writePdf(document, folder() + u"/ut.pdf"_s);
        writePlain(document, folder() + u"/jevn.pdf"_s);
        const auto textOf = [&](const QString &name) {
            return told(u"pdftotext"_s, {u"-layout"_s, name, u"-"_s}) +
                   told(u"pdftotext"_s, {u"-raw"_s, name, u"-"_s});
        };
        EXPECT_EQ(textOf(u"ut.pdf"_s).toStdString(), textOf(u"jevn.pdf"_s).toStdString());
        const auto lookOf = [&](const QString &name) {
            return told(u"pdftoppm"_s, {u"-r"_s, u"150"_s, u"-gray"_s, name});
        };
        EXPECT_TRUE(lookOf(u"ut.pdf"_s) == lookOf(u"jevn.pdf"_s));
    }
};

QRawFont faceOf(const QString &family)
{
    QFont font(family);
    font.setPixelSize(216);
    font.setHintingPreference(QFont::PreferNoHinting);
    return QRawFont::fromFont(font);
}

} // namespace

TEST_F(PdfTextsTest, TextsAreReadAndLookAsThePainterDrawsThem)
{
    expectTheSameAsPlain(
        {u"Blåbær, øl & ærfugl: 1 234,50 kr – «fi» fl AVATo"_s, u"123456789>00123<"_s});
}

TEST_F(PdfTextsTest, SoDoTextsOfOtherLetters)
{
    expectTheSameAsPlain({u"Ωμέγα Жук e\u0301a\u030a n\u0303"_s, u"漢字 かな 😀 Å"_s,
                          u"שלום 12 مرحبا x"_s, u"a\u00adb\u200bc\td\u2028e"_s});
}

TEST_F(PdfTextsTest, TheFileNamesItsTypefacesAndHasTheirSubsets)
{
    const Document document = inStyles({u"Sum 12,50"_s});
    writePdf(document, folder() + u"/ut.pdf"_s);
    const QStringList fonts = fontsOf(u"ut.pdf"_s);
    EXPECT_TRUE(fonts.contains(u"LiberationSans"_s)) << fonts.join(u' ').toStdString();
    EXPECT_TRUE(fonts.contains(u"LiberationMono-Bold"_s));
    EXPECT_TRUE(fonts.contains(u"OCRB-Regular"_s));
}

TEST_F(PdfTextsTest, GlyphsStandOnWholeNumbers)
{
    Document document = inStyles({});
    document.pages.resize(1);
    document.pages[0].texts.push_back({QPointF(20.07, 30.03), 0, 0, u"Wil AV To 1111"_s});
    writePdf(document, folder() + u"/ut.pdf"_s);
    int places = 0;
    for (const QByteArray &line : drawing(u"ut.pdf"_s).split('\n')) {
        const qsizetype glyph = line.indexOf(" Td <");
        if (glyph < 0)
            continue;
        ++places;
        EXPECT_FALSE(line.first(glyph).contains('.')) << line.toStdString();
    }
    EXPECT_EQ(places, 14);
}

TEST_F(PdfTextsTest, AQuickFaceHasTheGlyphsOfItsFace)
{
    for (const QString &family : {u"Liberation Sans"_s, u"Liberation Mono"_s, u"OCR B"_s}) {
        SCOPED_TRACE(family.toStdString());
        const QRawFont face = faceOf(family);
        const std::optional<QRawFont> quick = quickFace(face, face.pixelSize());
        ASSERT_TRUE(quick.has_value());
        for (char32_t code = 0; code < 0x10000; ++code) {
            if (QChar::isSurrogate(code))
                continue;
            const QChar character{char16_t(code)};
            const QList<quint32> glyph = face.glyphIndexesForString(character);
            ASSERT_EQ(quick->glyphIndexesForString(character), glyph) << std::hex << uint(code);
        }
        const QByteArray map = quick->fontTable("cmap");
        ASSERT_GT(map.size(), 14);
        EXPECT_EQ(qFromBigEndian<quint16>(map.constData() + 12), 10) << "looked up, not searched";
        if (family != u"OCR B"_s) { // which has no such program
            EXPECT_EQ(quick->fontTable("prep"), "\xb1\x01\x01\x8e"_ba) << "no hinting";
        }
        const QList<quint32> glyphs = face.glyphIndexesForString(u"Ågq8,"_s);
        EXPECT_EQ(quick->advancesForGlyphIndexes(glyphs), face.advancesForGlyphIndexes(glyphs));
        for (const quint32 glyph : glyphs)
            EXPECT_EQ(quick->pathForGlyph(glyph), face.pathForGlyph(glyph)) << glyph;
    }
}

TEST_F(PdfTextsTest, AQuickFaceIsMadeOnceUnderANameOfItsOwn)
{
    const QRawFont face = faceOf(u"Liberation Sans"_s);
    const std::optional<QRawFont> quick = quickFace(face, face.pixelSize());
    ASSERT_TRUE(quick.has_value());
    EXPECT_FALSE(quick->familyName().contains(u"Liberation"_s))
        << quick->familyName().toStdString();
    const QStringList families = QFontDatabase::families();
    EXPECT_EQ(quickFace(face, 2 * face.pixelSize())->familyName(), quick->familyName());
    EXPECT_EQ(QFontDatabase::families(), families);
    EXPECT_EQ(faceOf(u"Liberation Sans"_s).familyName(), u"Liberation Sans"_s);
}

TEST_F(PdfTextsTest, AQuickFaceThatWasRemovedIsMadeAnew)
{
    ASSERT_TRUE(quickFace(faceOf(u"OCR B"_s), 216).has_value());
    QFontDatabase::removeAllApplicationFonts();
    EXPECT_FALSE(quickFace(faceOf(u"OCR B"_s), 216).has_value());
    EXPECT_TRUE(quickFace(faceOf(u"OCR B"_s), 216).has_value());
}

} // namespace report::test

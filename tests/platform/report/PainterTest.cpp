#include "platform/report/Painter.h"

#include "platform/report/PdfFile.h"
#include "platform/report/Support.h"
#include "platform/report/Typesetting.h"
#include "support/FileSizeLimit.h"
#include "support/Variable.h"

#include <QDir>
#include <QFontDatabase>
#include <QFontInfo>
#include <QFontMetricsF>
#include <QImage>
#include <QPainter>
#include <QRegularExpression>
#include <QTemporaryDir>

namespace report::test {

namespace {

constexpr int kPixelsPerMm = 4;

class PainterTest : public ReportTest
{
protected:
    static QImage painted(const Document &document, int page, double unitsPerMm = kPixelsPerMm)
    {
        QImage image((document.paper * unitsPerMm).toSize(), QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        paintPage(painter, document, page, unitsPerMm);
        return image;
    }
    /// The smallest rectangle around all that is not white, in millimetres.
    static QRectF ink(const QImage &image, double unitsPerMm = kPixelsPerMm)
    {
        QRect rect;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (image.pixel(x, y) != 0xffffffff)
                    rect |= QRect(x, y, 1, 1);
            }
        }
        return {QPointF(rect.topLeft()) / unitsPerMm, QSizeF(rect.size()) / unitsPerMm};
    }
    static Document blank()
    {
        Document document;
        document.paper = {210, 297};
        TextStyle style;
        style.font.setFamily(u"Liberation Sans"_s);
        style.font.setPointSizeF(20);
        document.styles.push_back(style);
        document.pages.resize(1);
        return document;
    }
};

void expectNear(const QRectF &actual, const QRectF &expected, double tolerance)
{
    EXPECT_NEAR(actual.left(), expected.left(), tolerance);
    EXPECT_NEAR(actual.top(), expected.top(), tolerance);
    EXPECT_NEAR(actual.right(), expected.right(), tolerance);
    EXPECT_NEAR(actual.bottom(), expected.bottom(), tolerance);
}

} // namespace

TEST_F(PainterTest, TheReportsFontsAreInstalled)
{
    const QStringList families = QFontDatabase::families();
    for (const QString &family : {u"Liberation Sans"_s, u"Liberation Mono"_s, u"OCR B"_s})
        EXPECT_TRUE(families.contains(family)) << family.toStdString();
    // OCR B at 10 points sets ten characters to the inch.
    QFont ocr(u"OCR B"_s);
    ocr.setPointSizeF(10);
    const QFontMetricsF metrics(fontInUnits(ocr));
    EXPECT_NEAR(metrics.horizontalAdvance(u"1234567890"_s) / kUnitsPerMm, 25.4, 0.2);
}

TEST_F(PainterTest, DrawsWhereThePageSays)
{
    Document document = blank();
    document.pages[0].boxes.push_back({QRectF(20, 30, 50, 40), 0, 0xff000000, 0xff808080, 0});
    expectNear(ink(painted(document, 0)), QRectF(20, 30, 50, 40), 0.3);

    document = blank();
    document.pages[0].boxes.push_back({QRectF(20, 30, 50, 40), 2, 0xff000000, 0, 0});
    const QImage frame = painted(document, 0);
    expectNear(ink(frame), QRectF(20, 30, 50, 40), 0.3);
    EXPECT_EQ(frame.pixel(45 * kPixelsPerMm, 50 * kPixelsPerMm), 0xffffffff);

    document = blank();
    document.pages[0].lines.push_back({QLineF(10, 20, 110, 20), 1, 0xff000000, false});
    expectNear(ink(painted(document, 0)), QRectF(10, 19.5, 100, 1), 0.3);

    document = blank();
    document.pictures.emplace_back(10, 10, QImage::Format_RGB32);
    document.pictures[0].fill(Qt::red);
    document.pages[0].pictures.push_back({QRectF(5, 6, 7, 8), 0});
    expectNear(ink(painted(document, 0)), QRectF(5, 6, 7, 8), 0.3);

    document = blank();
    document.pages[0].texts.push_back({QPointF(50, 60), 0, 0, u"H"_s});
    const QRectF letter = ink(painted(document, 0));
    EXPECT_NEAR(letter.bottom(), 60, 0.3);
    EXPECT_NEAR(letter.height(), 20 * 0.729 * 25.4 / 72, 0.6); // a capital of Liberation Sans
    EXPECT_GT(letter.left(), 50);
}

TEST_F(PainterTest, ATextIsAsWideAsItWasMeasuredAtEveryResolution)
{
    addOrder(1001, 1);
    const Document document =
        made(lineReport("<detail height=\"5\"><text x=\"0\" y=\"0\" width=\"190\" "
                        "height=\"5\">Helt lik bredde overalt: Wil AV To 1111H</text></detail>"));
    const TextCommand text = document.pages[0].texts[0];
    for (const double unitsPerMm : {3.0, 3.7795, 11.811, 23.622}) {
        const QRectF inked = ink(painted(document, 0, unitsPerMm), unitsPerMm);
        EXPECT_NEAR(inked.right(), text.baseline.x() + text.width(), 0.6) << unitsPerMm;
    }
}

TEST_F(PainterTest, LeavesThePainterAsItWas)
{
    Document document = blank();
    document.pages[0].texts.push_back({QPointF(50, 60), 0, 0, u"H"_s});
    QImage image(100, 100, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.setPen(Qt::green);
    painter.translate(3, 4);
    const QTransform before = painter.transform();
    paintPage(painter, document, 0, 4);
    EXPECT_EQ(painter.transform(), before);
    EXPECT_EQ(painter.pen().color(), QColor(Qt::green));
}

TEST_F(PainterTest, WritesAPdfOfThePapersSize)
{
    Document document = blank();
    document.title = u"Prøve"_s;
    document.author = u"Ås Grus"_s;
    document.paper = {100, 50};
    document.pages.resize(3);
    for (Page &page : document.pages)
        page.texts.push_back({QPointF(10, 20), 0, 0, u"Takk"_s});
    const QString path = folder() + u"/ut.pdf"_s;
    writePdf(document, path);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray pdf = file.readAll();
    EXPECT_TRUE(pdf.startsWith("%PDF-"));
    EXPECT_EQ(pdf.count("/Type /Page "), 3);
    const qsizetype start = pdf.indexOf("/MediaBox [") + 11;
    const QList<QByteArray> corners =
        pdf.mid(start, pdf.indexOf(']', start) - start).simplified().split(' ');
    ASSERT_EQ(corners.size(), 4);
    EXPECT_NEAR(corners[2].toDouble(), 100 / 25.4 * 72, 1);
    EXPECT_NEAR(corners[3].toDouble(), 50 / 25.4 * 72, 1);
    EXPECT_TRUE(pdf.contains("/Lang (nb-NO)"));
    EXPECT_TRUE(pdf.contains("/Author (\xc5s Grus)")) << "in the PDF's own code page";
    EXPECT_TRUE(pdf.contains("/CreationDate"));
    EXPECT_TRUE(QString::fromLatin1(pdf).contains(QRegularExpression(u"/BaseFont /[A-Z]{6}\\+"_s)))
        << "a subset says so";
}

TEST_F(PainterTest, APdfCanBeEndedWhileItIsCompleted)
{
    Document document = blank();
    document.pages[0].texts.push_back({QPointF(50, 60), 0, 0, u"Takk"_s});
    document.pages.resize(3, document.pages[0]);
    const QString path = written(u"ut.pdf"_s, "fra i fjor");
    const QStringList files = QDir(folder()).entryList(QDir::Files);
    int passed = 0;
    const auto end = [&] {
        if (++passed == 5) // behind the pages, which have one each
            raise(errors::kCancelled, u"Avbrutt."_s);
    };
    EXPECT_EQ(passOver([&] { writePdf(document, path, end); }), errors::kCancelled);
    EXPECT_EQ(QFileInfo(path).size(), 10);
    EXPECT_EQ(QDir(folder()).entryList(QDir::Files), files);
}

TEST_F(PainterTest, APdfThatFindsNoRoomLeavesTheFormerFile)
{
    Document document = blank();
    document.pages[0].texts.push_back({QPointF(50, 60), 0, 0, u"Takk"_s});
    const QString path = folder() + u"/ut.pdf"_s;
    writePdf(document, path);
    const qint64 whole = QFileInfo(path).size();
    const QString former = written(u"ut.pdf"_s, "fra i fjor");
    ASSERT_EQ(former, path);
    const QStringList files = QDir(folder()).entryList(QDir::Files);
    for (qint64 room = 0; room < whole && !HasFailure(); room += 97) {
        SCOPED_TRACE(room);
        {
            const FileSizeLimit limit(static_cast<rlim_t>(room));
            EXPECT_EQ(passOver([&] { writePdf(document, path); }), errors::kOutput);
        }
        EXPECT_EQ(QFileInfo(path).size(), 10);
        EXPECT_EQ(QDir(folder()).entryList(QDir::Files), files);
    }
}

TEST_F(PainterTest, NothingIsLeftOfAPdfButTheFile)
{
    Document document = blank();
    document.pages[0].texts.push_back({QPointF(50, 60), 0, 0, u"Takk"_s});
    document.pages.push_back(document.pages[0]);
    const QString path = written(u"ut.pdf"_s, "fra i fjor");
    const QTemporaryDir temporary;
    const Variable variable("TMPDIR", temporary.path());
    const auto left = [&] { return QDir(temporary.path()).entryList(QDir::Files | QDir::Hidden); };
    const QStringList files = QDir(folder()).entryList(QDir::Files);

    int pages = 0;
    const auto givenUp = [&] {
        if (++pages == 2)
            raise(errors::kCancelled, {});
    };
    EXPECT_EQ(passOver([&] { writePdf(document, path, givenUp); }), errors::kCancelled);
    EXPECT_EQ(QFileInfo(path).size(), 10) << "the former one";
    EXPECT_EQ(left(), QStringList());

    writePdf(document, path);
    EXPECT_GT(QFileInfo(path).size(), 10);
    EXPECT_EQ(left(), QStringList());
    EXPECT_EQ(QDir(folder()).entryList(QDir::Files), files);
}

TEST_F(PainterTest, APdfThatCannotBeWrittenTellsWhy)
{
    const auto fault = [](const QString &path) {
        try {
            writePdf(blank(), path);
        } catch (const RunTimeError &error) {
            EXPECT_EQ(error.number(), errors::kOutput);
            return error.description();
        }
        return QString();
    };
    const QString told = QStringLiteral("Kan ikke skrive PDF-filen %1: %2.");
    const QString nowhere = folder() + QStringLiteral("/borte/ut.pdf");
    EXPECT_EQ(fault(nowhere), told.arg(nowhere, QStringLiteral("mappen finnes ikke")));
    EXPECT_EQ(fault(folder()), told.arg(folder(), QStringLiteral("navnet er en mappe")));

    const QString noFolder = written(u"fil"_s, {});
    const Variable temporary("TMPDIR", noFolder);
    const QString here = folder() + QStringLiteral("/ut.pdf");
    EXPECT_EQ(fault(here), told.arg(here, QStringLiteral("mappen for midlertidige filer, %1, er "
                                                         "full eller lar seg ikke skrive til")
                                              .arg(noFolder)));
    EXPECT_FALSE(QFile::exists(here));
}

} // namespace report::test

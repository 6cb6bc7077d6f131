#include "output/printing/Skriver.h"

#include "output/printing/UtskriftTest.h"
#include "output/printing/Ventenotat.h"
#include "platform/report/ReportError.h"

#include <QDir>

using namespace Qt::StringLiterals;

namespace {

class SkriverTest : public UtskriftTest
{
protected:
    static report::Document side(QSizeF papir, size_t antall = 1)
    {
        report::Document document;
        document.title = u"Prøve"_s;
        document.paper = papir;
        report::TextStyle stil;
        stil.font.setFamily(u"Liberation Sans"_s);
        stil.font.setPointSizeF(10);
        document.styles.push_back(stil);
        document.pages.resize(antall);
        for (report::Page &p : document.pages) {
            p.boxes.push_back({QRectF(10, 10, 50, 20), 0.3, 0xff204060, 0xfff0f0f0, 2});
            p.texts.push_back({QPointF(12, 25), 30, 0, u"Blåbær og øl"_s});
        }
        return document;
    }
    QByteArray skrevetPaa(const QString &navn, const report::Document &document)
    {
        skrivPaa(*skrivere.lag(navn), document);
        return utskrifter().constLast();
    }
};

/// A printer whose paper is a picture of 96 dots per inch.
class Bildeskriver : public QPrinter
{
public:
    explicit Bildeskriver(const QString &fil) : bilde(794, 1123, QImage::Format_RGB32)
    {
        setOutputFormat(QPrinter::PdfFormat);
        setOutputFileName(fil);
        setResolution(96);
        bilde.fill(Qt::white);
    }

    mutable QImage bilde;

protected:
    QPaintDevice *redirected(QPoint *) const override { return &bilde; }
};

/// The largest difference of two pixels, in steps of 255. Where a page begins on the device may
/// round a shade by one.
int storsteForskjell(const QImage &a, const QImage &b)
{
    EXPECT_EQ(a.size(), b.size());
    int storst = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x)
            storst = std::max(storst, std::abs(qGray(a.pixel(x, y)) - qGray(b.pixel(x, y))));
    }
    return storst;
}

} // namespace

TEST_F(SkriverTest, ThePageBelongsToTheReport)
{
    for (const QString &navn : {u"Kontor"_s, u"Etikett"_s, u"Liggende"_s}) {
        EXPECT_EQ(papir(skrevetPaa(navn, side({210, 297}))), QSize(595, 842)) << navn.toStdString();
        EXPECT_EQ(papir(skrevetPaa(navn, side({297, 210}))), QSize(842, 595)) << navn.toStdString();
        EXPECT_EQ(papir(skrevetPaa(navn, side({100, 150}))), QSize(283, 425)) << navn.toStdString();
    }
}

TEST_F(SkriverTest, PrintsAllPages)
{
    EXPECT_EQ(antallSider(skrevetPaa(u"Kontor"_s, side({210, 297}, 3))), 3);
}

TEST_F(SkriverTest, APrinterThatRefusesRaises)
{
    const auto printer = skrivere.lag(u"Nekter"_s);
    EXPECT_EQ(raised([&] { skrivPaa(*printer, side({210, 297})); }), report::errors::kOutput);
    skrivere.standardnavn = u"Ukjent"_s;
    EXPECT_EQ(raised([&] { skrivUt(side({210, 297})); }), report::errors::kOutput);
}

TEST_F(SkriverTest, APdfFileThatCannotBeWrittenRaises)
{
    CommonDialog dialog;
    dialog.pdfFile = fil(u"finnes/ikke.pdf"_s);
    const ValgtSkriver valgt(dialog);
    EXPECT_EQ(raised([&] { skrivUt(side({210, 297})); }), report::errors::kOutput);
}

TEST_F(SkriverTest, APdfFileThatTakesLongCanBeCancelled)
{
    QFile liggerDer(fil(u"ut.pdf"_s));
    ASSERT_TRUE(liggerDer.open(QIODevice::WriteOnly));
    liggerDer.write("fra i fjor");
    liggerDer.close();
    const QStringList filer = QDir(folder()).entryList(QDir::Files);
    const LangsomTid tid;
    onNextModal<QProgressDialog>([](QProgressDialog &notat) {
        EXPECT_EQ(notat.labelText(), u"Skriver PDF-filen …"_s);
        notat.cancel();
    });
    EXPECT_EQ(raised([&] { skrivPdf(side({210, 297}, 5), liggerDer.fileName()); }),
              report::errors::kCancelled);
    EXPECT_EQ(innhold(u"ut.pdf"_s), "fra i fjor");
    EXPECT_EQ(QDir(folder()).entryList(QDir::Files), filer);
}

TEST_F(SkriverTest, TheNoteIsUpWithinHalfASecond)
{
    const LangsomTid tid(500);
    Ventenotat notat(u"Skriver PDF-filen …"_s);
    onNextModal<QProgressDialog>([](QProgressDialog &vist) { vist.cancel(); });
    EXPECT_EQ(raised([&] { notat.sjekk(); }), report::errors::kCancelled);
}

TEST_F(SkriverTest, TheHourglassStandsWhileAPrinterGetsItsPages)
{
    /// Sees the mouse pointer at each look at the time.
    class Vitne : public Clock
    {
    public:
        [[nodiscard]] QDateTime now() const override
        {
            ++sett;
            staar = staar && (sett == 1 || QApplication::overrideCursor());
            return Clock::now();
        }
        mutable int sett = 0;
        mutable bool staar = true;
    } vitne;
    const ScopedClock iKraft(vitne);
    EXPECT_EQ(antallSider(skrevetPaa(u"Kontor"_s, side({210, 297}, 200))), 200);
    EXPECT_GT(vitne.sett, 1) << "time is looked at among the pages";
    EXPECT_TRUE(vitne.staar);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(SkriverTest, TheInnermostChoiceIsInForce)
{
    skrivere.standardnavn = u"Kontor"_s;
    CommonDialog dialog;
    dialog.printerName = u"Etikett"_s;
    {
        const ValgtSkriver ytre(dialog);
        {
            dialog.printerName = u"Liggende"_s;
            const ValgtSkriver indre(dialog);
            skrivUt(side({210, 297}));
        }
        skrivUt(side({210, 297}));
    }
    skrivUt(side({210, 297}));
    EXPECT_EQ(skrivere.brukt, QStringList({u"Liggende"_s, u"Etikett"_s, u"Kontor"_s}));
}

TEST_F(SkriverTest, TheSuggestedFileNameHoldsNoSignThatAFileMayNotHave)
{
    report::Document document = side({210, 297});
    const std::pair<QString, QString> titler[] = {{u"Faktura 12"_s, u"Faktura 12.pdf"_s},
                                                  {u"A/B: \"C\"?"_s, u"A B C.pdf"_s},
                                                  {u"  "_s, u"Utskrift.pdf"_s},
                                                  {QString(), u"Utskrift.pdf"_s}};
    for (const auto &[tittel, navn] : titler) {
        document.title = tittel;
        QString foreslatt;
        onNextModal<QFileDialog>([&](QFileDialog &dialog) {
            foreslatt = dialog.findChild<QLineEdit *>(u"fileNameEdit"_s)->text();
            dialog.reject();
        });
        EXPECT_FALSE(velgPdfFil(u"Lagre"_s, document).has_value());
        EXPECT_EQ(foreslatt, navn);
    }
}

TEST_F(SkriverTest, ADocumentsOwnFileNameGoesAheadOfItsTitle)
{
    report::Document document = side({210, 297});
    EXPECT_EQ(pdfNavn(document), u"Prøve.pdf"_s);
    document.fileName = u"Faktura-1062"_s;
    EXPECT_EQ(pdfNavn(document), u"Faktura-1062.pdf"_s);
}

TEST_F(SkriverTest, APdfFileThatIsThereIsReplacedOnlyByConsent)
{
    QFile liggerDer(fil(u"gammel.pdf"_s));
    ASSERT_TRUE(liggerDer.open(QIODevice::WriteOnly));
    meldinger.svar = 6; // Yes
    onNextModal<QFileDialog>(
        [&](QFileDialog &dialog) { svarMedFil(dialog, liggerDer.fileName()); });
    EXPECT_EQ(velgPdfFil(u"Lagre"_s, side({210, 297})), liggerDer.fileName());
    EXPECT_EQ(meldinger.ta().size(), 1);
}

TEST_F(SkriverTest, ThePrintedPageIsThatOfThePreview)
{
    Forhandsvisning *vist = visListe(8);
    const QRect plass = sider(vist)->sideplass(0);
    ASSERT_EQ(plass.size(), QSize(794, 1123));
    vist->resize(1000, 1300);
    runEvents();
    sider(vist)->visSide(0);
    const QImage paaSkjermen = sider(vist)
                                   ->viewport()
                                   ->grab(sider(vist)->sideplass(0))
                                   .toImage()
                                   .convertToFormat(QImage::Format_RGB32);
    report::Document forste = dokument(vist);
    forste.pages.resize(1);
    Bildeskriver printer(fil(u"bilde.pdf"_s));
    skrivPaa(printer, forste);
    EXPECT_LE(storsteForskjell(printer.bilde, paaSkjermen), 1);
    // The same report of another day is another picture.
    report::TextCommand &tekst = forste.pages[0].texts[2];
    tekst = {tekst.baseline, tekst.width(), tekst.style(), tekst.text() + u'.'};
    Bildeskriver annen(fil(u"annen.pdf"_s));
    skrivPaa(annen, forste);
    EXPECT_GT(storsteForskjell(annen.bilde, paaSkjermen), 100);
}

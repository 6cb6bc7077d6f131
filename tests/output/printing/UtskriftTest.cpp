#include "output/printing/UtskriftTest.h"

#include "output/printing/RapportUtgang.h"
#include "output/printing/frmUtskrift.h"
#include "platform/forms/Forms.h"
#include "presentation/screens/frmInvisible.h"

#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QPushButton>
#include <QSpinBox>

using namespace Qt::StringLiterals;

std::unique_ptr<QPrinter> Proveskrivere::lag(const QString &navn) const
{
    brukt += navn;
    if (!QStringList{u"Kontor"_s, u"Etikett"_s, u"Liggende"_s, u"Nekter"_s}.contains(navn))
        return Skrivere::lag(navn);
    auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
    printer->setOutputFormat(QPrinter::PdfFormat);
    printer->setOutputFileName(navn == u"Nekter" ? m_mappe + u"/finnes/ikke.pdf"_s
                                                 : u"%1/%2.pdf"_s.arg(m_mappe).arg(brukt.size()));
    if (navn == u"Etikett")
        printer->setPageSize(QPageSize(QSizeF(62, 29), QPageSize::Millimeter));
    if (navn == u"Liggende")
        printer->setPageOrientation(QPageLayout::Landscape);
    printer->setPageMargins({20, 20, 20, 20});
    return printer;
}

UtskriftTest::UtskriftTest() : skrivere(folder()), brukSkrivere(skrivere)
{
    frmOrdre::settUtskriftApner(frmUtskrift::apne);
}

void UtskriftTest::TearDown()
{
    RapportUtgang::felles().lukkAlle();
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    OrdreSkjerm::TearDown();
}

QList<Forhandsvisning *> UtskriftTest::vinduer()
{
    QList<Forhandsvisning *> alle;
    for (const auto &vindu : RapportUtgang::felles().vinduer())
        alle += vindu.data();
    return alle;
}

Forhandsvisning *UtskriftTest::vindu()
{
    return vinduer().isEmpty() ? nullptr : vinduer().constLast();
}

Sidevisning *UtskriftTest::sider(const Forhandsvisning *vindu)
{
    return vindu->findChild<Sidevisning *>(u"sider"_s);
}

const report::Document &UtskriftTest::dokument(const Forhandsvisning *vindu)
{
    return *vindu->dokument();
}

QStringList UtskriftTest::tekster(const Forhandsvisning *vindu)
{
    QStringList alle;
    for (const report::Page &side : dokument(vindu).pages) {
        for (const report::TextCommand &tekst : side.texts)
            alle += tekst.text();
    }
    return alle;
}

CrystalReport *UtskriftTest::kontroll()
{
    auto *skjult = qobject_cast<frmInvisible *>(Forms::byName(u"frmInvisible"_s));
    return skjult ? &skjult->CrystalReport1 : nullptr;
}

QStringList UtskriftTest::lasteSkjermer()
{
    QStringList navn;
    for (const QPointer<Form> &form : Forms::loaded())
        navn += form->objectName();
    return navn;
}

QList<QByteArray> UtskriftTest::utskrifter() const
{
    QList<QByteArray> alle;
    for (int nr = 1; nr <= skrivere.brukt.size(); ++nr) {
        if (const QByteArray pdf = innhold(u"%1.pdf"_s.arg(nr)); !pdf.isEmpty())
            alle += pdf;
    }
    return alle;
}

QByteArray UtskriftTest::innhold(const QString &navn) const
{
    QFile file(fil(navn));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void UtskriftTest::leggOrdrer(int antall)
{
    for (int nr = 1; nr <= antall; ++nr)
        leggOrdre({.ordreNr = nr, .kundeNavn = u"Kunde %1"_s.arg(nr), .medLinje = false});
}

Forhandsvisning *UtskriftTest::visListe(int ordrer)
{
    leggOrdrer(ordrer);
    SkrivRapport(u"Liste.rpt"_s, 0, {}, {}, {});
    Forhandsvisning *vist = vindu();
    if (!vist)
        qFatal("no preview");
    EXPECT_TRUE(QTest::qWaitForWindowActive(vist));
    runEvents();
    return vist;
}

QSize papir(const QByteArray &pdf)
{
    const QByteArray merke = "/MediaBox [";
    const qsizetype start = pdf.indexOf(merke) + merke.size();
    const QList<QByteArray> tall = pdf.mid(start, pdf.indexOf(']', start) - start).split(' ');
    return QSizeF(tall.value(2).toDouble(), tall.value(3).toDouble()).toSize();
}

qsizetype antallSider(const QByteArray &pdf)
{
    return pdf.count("/Type /Page\n") + pdf.count("/Type /Page ");
}

void svarMedFil(QFileDialog &dialog, const QString &navn)
{
    auto *edit = dialog.findChild<QLineEdit *>(u"fileNameEdit"_s);
    dialog.setDirectory(QFileInfo(navn).path());
    dialog.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    hands::typeOver(*edit, QFileInfo(navn).fileName());
    for (QPushButton *button : dialog.findChildren<QPushButton *>()) {
        if (button->isDefault())
            QTest::mouseClick(button, Qt::LeftButton);
    }
}

void svarMedSkriver(QDialog &dialog, const QString &skriver, int eksemplarer)
{
    // The machine that tests may have no printers to choose from.
    auto *liste = dialog.findChild<QComboBox *>(u"cmbSkriver"_s);
    if (!skriver.isEmpty()) {
        if (liste->findData(skriver) < 0)
            liste->addItem(skriver, skriver);
        liste->setCurrentIndex(liste->findData(skriver));
    }
    auto *antall = dialog.findChild<QSpinBox *>(u"spnEksemplarer"_s);
    hands::typeOver(*antall, QString::number(eksemplarer));
    QTest::mouseClick(dialog.findChild<QPushButton *>(u"cmdSkriv"_s), Qt::LeftButton);
}

#include "platform/forms/PrinterDialog.h"

#include "support/TestApplication.h"

#include <QComboBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

QStringList offered(const PrinterDialog &dialog)
{
    QStringList result;
    const auto *box = dialog.findChild<QComboBox *>(u"cmbSkriver"_s);
    for (int i = 0; i < box->count(); ++i)
        result << box->itemText(i);
    return result;
}

const QStringList kPrinters{u"Kontor"_s, u"Lager"_s};

} // namespace

TEST(PrinterDialog, OffersThePrintersAndAPdfFileWhereWanted)
{
    EXPECT_EQ(offered(PrinterDialog(kPrinters, true)),
              (QStringList{u"Kontor"_s, u"Lager"_s, u"PDF-fil"_s}));
    EXPECT_EQ(offered(PrinterDialog(kPrinters, false)), kPrinters);
}

TEST(PrinterDialog, AChosenPrinterIsReturnedWithoutAFile)
{
    PrinterDialog dialog(kPrinters, true);
    dialog.choose(u"Lager"_s);
    dialog.findChild<QPushButton *>(u"cmdSkriv"_s)->click();
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_EQ(dialog.printer(), u"Lager"_s);
    EXPECT_EQ(dialog.pdfFile(), QString());
}

TEST(PrinterDialog, APrinterThatIsChosenAfterAFileTakesItsPlace)
{
    PrinterDialog dialog(kPrinters, true);
    dialog.findChild<QComboBox *>(u"cmbSkriver"_s)->setCurrentIndex(2); // the PDF file
    onNextModal<QFileDialog>([](QFileDialog &question) {
        question.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&question));
        QTest::keyClick(question.findChild<QLineEdit *>(u"fileNameEdit"_s), Qt::Key_Return);
    });
    dialog.findChild<QPushButton *>(u"cmdSkriv"_s)->click();
    EXPECT_EQ(QFileInfo(dialog.pdfFile()).fileName(), u"Utskrift.pdf"_s);
    dialog.choose(u"Lager"_s);
    dialog.findChild<QPushButton *>(u"cmdSkriv"_s)->click();
    EXPECT_EQ(dialog.pdfFile(), QString());
}

TEST(PrinterDialog, ItsFieldsStandBehindTheirCaptions)
{
    PrinterDialog dialog(kPrinters, true);
    dialog.show();
    QStringList captions;
    for (const QLabel *caption : dialog.findChildren<QLabel *>()) {
        captions << caption->text();
        ASSERT_NE(caption->buddy(), nullptr);
        EXPECT_LT(caption->geometry().right(), caption->buddy()->geometry().left());
    }
    EXPECT_EQ(captions, (QStringList{u"&Skriver:"_s, u"Antall &eksemplarer:"_s}));
}

TEST(PrinterDialog, AnUnknownPrinterIsNotChosen)
{
    PrinterDialog dialog(kPrinters, false);
    dialog.choose(u"Lager"_s);
    dialog.choose(u"Ukjent"_s);
    EXPECT_EQ(dialog.printer(), u"Lager"_s);
}

TEST(PrinterDialog, CopiesAreAtLeastOne)
{
    PrinterDialog dialog(kPrinters, false);
    dialog.setCopies(0);
    EXPECT_EQ(dialog.copies(), 1);
    dialog.setCopies(999);
    EXPECT_EQ(dialog.copies(), 999);
}

#include "presentation/options/OptionsFixture.h"

#include "platform/forms/Image.h"
#include "platform/forms/OwnPicture.h"
#include "platform/pictures/PictureBytes.h"
#include "presentation/screens/frmInvisible.h"

#include <QDialog>
#include <QFileDialog>

namespace {

/// The page of the form and the logo.
class FrmOptionsLogoTest : public OptionsFixture
{
protected:
    /// The miniature on the screen, as it is painted.
    static QImage miniature()
    {
        auto &image = control<Image>(u"imgBlankett"_s);
        return image.picture().pixmap(image.size()).toImage();
    }
    static QImage miniatureOf(int index)
    {
        const QSize size = control<Image>(u"imgBlankett"_s).size();
        return ownPicture(u":/faktura/blankett-%1.png"_s.arg(index), size).pixmap(size).toImage();
    }
    static bool isLogoOn()
    {
        EXPECT_EQ(isOn(u"cmdLogoInn"_s), isOn(u"frLogo"_s));
        EXPECT_EQ(isOn(u"cmdLogoSlett"_s), isOn(u"frLogo"_s));
        return isOn(u"frLogo"_s);
    }
    /// Opens the screen on its second page, with a form that has a logo.
    static void openOnLogo()
    {
        open();
        press(u"optLogo_1"_s, 2);
    }
    /// Presses "Sett inn logo" and has `answer` deal with the file dialog.
    static void insertLogo(const std::function<void(QFileDialog &)> &answer)
    {
        bool shown = false;
        onNextModal<QFileDialog>([&](QFileDialog &dialog) {
            shown = true;
            answer(dialog);
        });
        press(u"cmdLogoInn"_s);
        EXPECT_TRUE(shown);
    }
    /// Writes the file's name into the dialog.
    static void insertLogo(const QString &path)
    {
        // Else the file of the last time would be selected in the list.
        SharedForm<frmInvisible>::get().CommonDialog1.fileName.clear();
        insertLogo([&](QFileDialog &dialog) {
            auto *name = dialog.findChild<QLineEdit *>(u"fileNameEdit"_s);
            name->setText(path);
            QTest::keyClick(name, Qt::Key_Return);
        });
    }
    static QImage blank() { return control<PictureBox>(u"imgTomLogo"_s).picture(); }
};

// --- The form

TEST_F(FrmOptionsLogoTest, TheStoredFormIsChosenWithItsMiniature)
{
    for (const int index : {3, 2, 1, 0}) {
        store(u"Fakturablankett"_s, QString::number(index));
        open();
        clickTab(2);
        EXPECT_EQ(chosen(u"optLogo"_s), index);
        EXPECT_TRUE(control(u"imgBlankett"_s).isVisible());
        EXPECT_EQ(miniature(), miniatureOf(index)) << index;
        EXPECT_EQ(isLogoOn(), index == 1 || index == 3) << index;
        press(u"cmdCancel"_s);
    }
}

TEST_F(FrmOptionsLogoTest, TheMiniaturesDiffer)
{
    open();
    for (int i = 0; i < 4; ++i) {
        for (int j = 0; j < i; ++j)
            EXPECT_NE(miniatureOf(i), miniatureOf(j)) << i << j;
    }
}

TEST_F(FrmOptionsLogoTest, ChoosingAFormShowsItAndTurnsTheLogoOnOrOff)
{
    open();
    for (const int index : {1, 0, 3, 2}) {
        press(u"optLogo_%1"_s.arg(index), 2);
        EXPECT_EQ(chosen(u"optLogo"_s), index);
        EXPECT_EQ(miniature(), miniatureOf(index)) << index;
        EXPECT_EQ(isLogoOn(), index == 1 || index == 3) << index;
    }
    // The arrow keys choose as well.
    option(u"optLogo_2"_s).setFocus();
    QTest::keyClick(&option(u"optLogo_2"_s), Qt::Key_Down);
    EXPECT_EQ(chosen(u"optLogo"_s), 3);
    EXPECT_EQ(miniature(), miniatureOf(3));
    EXPECT_TRUE(isLogoOn());
}

TEST_F(FrmOptionsLogoTest, AFormOutsideTheFourLeavesTheDesign)
{
    for (const QString &value : {u"4"_s, u"-1"_s, u"40000"_s, u"1e99"_s}) {
        store(u"Fakturablankett"_s, value);
        open();
        EXPECT_EQ(chosen(u"optLogo"_s), 0) << value.toStdString();
        EXPECT_FALSE(isLogoOn()) << value.toStdString();
        EXPECT_TRUE(control(u"imgBlankett"_s).isVisibleTo(&page(1))) << value.toStdString();
        EXPECT_EQ(miniature(), miniatureOf(0)) << value.toStdString();
        press(u"cmdCancel"_s);
    }
}

// --- The stored logo

TEST_F(FrmOptionsLogoTest, TheStoredLogoIsShown)
{
    putLogo(content(writePicture(u"logo.bmp"_s, "BMP", QSize(40, 20), Qt::darkGreen)));
    open();
    EXPECT_EQ(logo().size(), QSize(40, 20));
    EXPECT_EQ(logo().pixelColor(20, 10), QColor(Qt::darkGreen));
}

TEST_F(FrmOptionsLogoTest, ALogoThatIsNoPictureLeavesTheDesignPicture)
{
    for (const QByteArray &bytes : {QByteArray("dette er et brev"), QByteArray("BM")}) {
        putLogo(bytes);
        open();
        EXPECT_EQ(logo(), blank());
        press(u"cmdCancel"_s);
    }
}

TEST_F(FrmOptionsLogoTest, WithoutALogoTheBlankPictureIsStored)
{
    open();
    EXPECT_EQ(logo(), blank());
    press(u"cmdApply"_s);
    const QImage stored = QImage::fromData(storedLogo());
    EXPECT_EQ(stored.size(), QSize(237, 76));
    EXPECT_EQ(stored.convertToFormat(QImage::Format_RGB32), blank());
}

TEST_F(FrmOptionsLogoTest, AnUntouchedLogoIsStoredAtEverySave)
{
    putLogo(content(writePicture(u"logo.gif"_s, "BMP", QSize(40, 20), Qt::darkGreen)));
    open();
    putLogo("noe annet");
    press(u"cmdApply"_s);
    const QImage stored = QImage::fromData(storedLogo());
    EXPECT_EQ(stored.size(), QSize(40, 20));
    EXPECT_EQ(stored.pixelColor(3, 3), QColor(Qt::darkGreen));
}

TEST_F(FrmOptionsLogoTest, AClientWithoutARowIsToldAboutItsLogoAlone)
{
    run(u"DELETE FROM Klient WHERE KlientNr=5"_s);
    open();
    EXPECT_TRUE(logo().isNull());
    press(u"chkPrintVis"_s, 3);
    QString said;
    onNextModal<QMessageBox>([&](QMessageBox &message) {
        said = message.text();
        QTest::keyClick(&message, Qt::Key_Return);
    });
    press(u"cmdApply"_s);
    EXPECT_EQ(said, u"Feil ved lagring av logo: 380 Ugyldig egenskapsverdi"_s);
    EXPECT_EQ(stored(u"PrintVis"_s), u"1"_s);
}

TEST_F(FrmOptionsLogoTest, TheMenuMayTakeTheScreenAwayUnderTheMessage)
{
    run(u"DELETE FROM Klient WHERE KlientNr=5"_s);
    open();
    onNextModal<QMessageBox>([&](QMessageBox &message) {
        screen()->unload();
        QTest::keyClick(&message, Qt::Key_Return);
    });
    QTest::mouseClick(&control<QPushButton>(u"cmdOK"_s), Qt::LeftButton);
    runEvents();
    EXPECT_EQ(screen(), nullptr);
    EXPECT_EQ(stored(u"PrintVis"_s), u"0"_s);
}

// --- A new logo

TEST_F(FrmOptionsLogoTest, TheDialogAsksForPicturesAndOpensOnTheFirstFilter)
{
    openOnLogo();
    insertLogo([](QFileDialog &dialog) {
        EXPECT_EQ(dialog.windowTitle(), u"Åpne"_s);
        EXPECT_EQ(dialog.acceptMode(), QFileDialog::AcceptOpen);
        EXPECT_EQ(dialog.nameFilters(),
                  QStringList({u"Bitmaps(*.bmp) (*.bmp)"_s, u"Bitmaps(*.dib) (*.dib)"_s,
                               u"GIF bilder(*.gif) (*.gif)"_s, u"JPEG bilder(*.jpg) (*.jpg)"_s,
                               u"WMF filer(*.wmf) (*.wmf)"_s, u"Alle filer (*.*) (*)"_s}));
        EXPECT_TRUE(dialog.selectedNameFilter().startsWith(u"Bitmaps(*.bmp)"_s));
        dialog.reject();
    });
    const CommonDialog &dialog = SharedForm<frmInvisible>::get().CommonDialog1;
    EXPECT_TRUE(dialog.cancelError);
    EXPECT_EQ(dialog.flags, 4);
    EXPECT_EQ(dialog.filterIndex, 0);
}

TEST_F(FrmOptionsLogoTest, TheDialogOpensOnTheFirstFilterWhateverWasChosenBefore)
{
    const QString path = writeFile(u"logo.gif"_s, kGif);
    openOnLogo();
    insertLogo([&](QFileDialog &dialog) {
        dialog.selectNameFilter(u"GIF bilder(*.gif) (*.gif)"_s);
        auto *name = dialog.findChild<QLineEdit *>(u"fileNameEdit"_s);
        name->setText(path);
        QTest::keyClick(name, Qt::Key_Return);
    });
    EXPECT_EQ(SharedForm<frmInvisible>::get().CommonDialog1.filterIndex, 3);
    insertLogo([](QFileDialog &dialog) {
        EXPECT_TRUE(dialog.selectedNameFilter().startsWith(u"Bitmaps(*.bmp)"_s));
        dialog.reject();
    });
}

TEST_F(FrmOptionsLogoTest, TheNextStartsDialogOpensWhereTheLastLogoLay)
{
    const QString path = writePicture(u"logo.bmp"_s, "BMP", QSize(40, 20), Qt::darkBlue);
    openOnLogo();
    insertLogo(path);
    reload();
    Main();
    connect();
    openOnLogo();
    QString opened;
    SharedForm<frmInvisible>::get().CommonDialog1.fileName = u"/Faktura-12.xml"_s;
    insertLogo([&](QFileDialog &dialog) {
        opened = dialog.directory().path();
        dialog.reject();
    });
    EXPECT_EQ(opened, QFileInfo(path).path());
}

TEST_F(FrmOptionsLogoTest, AChosenFileIsShownAndStoredWithTheSaveOnly)
{
    const QString path = writePicture(u"logo.bmp"_s, "BMP", QSize(237, 76), Qt::darkBlue);
    openOnLogo();
    const SessionTap tap;
    insertLogo(path);
    EXPECT_EQ(logo().size(), QSize(237, 76));
    EXPECT_EQ(logo().pixelColor(9, 9), QColor(Qt::darkBlue));
    EXPECT_EQ(tap.statements(), QStringList());
    EXPECT_TRUE(storedLogo().isNull());
    press(u"cmdApply"_s);
    EXPECT_EQ(QImage::fromData(storedLogo()).pixelColor(9, 9), QColor(Qt::darkBlue));
    reopen();
    EXPECT_EQ(logo().pixelColor(9, 9), QColor(Qt::darkBlue));
}

TEST_F(FrmOptionsLogoTest, EveryOfferedFormatIsStoredAsABitmap)
{
    const QString bitmap = writePicture(u"logo.bmp"_s, "BMP", QSize(40, 20), Qt::darkBlue);
    const std::vector<std::pair<QString, QSize>> offered{
        {bitmap, QSize(40, 20)},
        {writeFile(u"logo.dib"_s, content(bitmap).mid(14)), QSize(40, 20)},
        {writeFile(u"logo.gif"_s, kGif), QSize(1, 1)},
        {writePicture(u"logo.jpg"_s, "JPG", QSize(30, 10), Qt::darkBlue), QSize(30, 10)},
        {writeFile(u"logo.wmf"_s, kMetafile), QSize(1200, 386)}};
    openOnLogo();
    for (const auto &[path, size] : offered) {
        insertLogo(path);
        EXPECT_EQ(logo().size(), size) << path.toStdString();
        press(u"cmdApply"_s);
        EXPECT_TRUE(storedLogo().startsWith("BM")) << path.toStdString();
        EXPECT_EQ(QImage::fromData(storedLogo()).size(), size) << path.toStdString();
    }
}

TEST_F(FrmOptionsLogoTest, ALogoIsLostWithAvbryt)
{
    const QString path = writePicture(u"logo.bmp"_s, "BMP", QSize(237, 76), Qt::darkBlue);
    openOnLogo();
    insertLogo(path);
    reopen();
    EXPECT_EQ(logo(), blank());
    EXPECT_TRUE(storedLogo().isNull());
}

TEST_F(FrmOptionsLogoTest, ACancelledDialogChangesNothing)
{
    putLogo(content(writePicture(u"logo.bmp"_s, "BMP", QSize(40, 20), Qt::darkGreen)));
    openOnLogo();
    const QImage before = logo();
    insertLogo([](QFileDialog &dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
    EXPECT_EQ(logo(), before);
    ASSERT_NE(screen(), nullptr);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(FrmOptionsLogoTest, AFileThatWillNotLoadChangesNothing)
{
    putLogo(content(writePicture(u"logo.bmp"_s, "BMP", QSize(40, 20), Qt::darkGreen)));
    openOnLogo();
    const QImage before = logo();
    const QByteArray whole = content(writePicture(u"hel.bmp"_s, "BMP", QSize(90, 90), Qt::red));
    // 20,000 by 10,000 pixels that the file does hold, as a file with a hole.
    QByteArray promise = whole.left(54);
    promise.replace(18, 8, QByteArray::fromHex("204e000010270000"));
    QFile huge(writeFile(u"stor.bmp"_s, promise));
    ASSERT_TRUE(huge.resize(54 + 20000ll * 10000 * 4));
    for (const QString &path :
         {writeFile(u"brev.bmp"_s, "dette er et brev"), writeFile(u"tom.jpg"_s, QByteArray()),
          writeFile(u"kuttet.bmp"_s, whole.left(whole.size() / 2)), file(u"finnes-ikke.gif"_s),
          huge.fileName()}) {
        insertLogo(path);
        EXPECT_EQ(logo(), before) << path.toStdString();
        EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    }
}

TEST_F(FrmOptionsLogoTest, ARemovedLogoIsStoredAsABlankPicture)
{
    putLogo(content(writePicture(u"logo.bmp"_s, "BMP", QSize(40, 20), Qt::darkGreen)));
    openOnLogo();
    press(u"cmdLogoSlett"_s);
    EXPECT_EQ(logo(), blank());
    EXPECT_EQ(QImage::fromData(storedLogo()).size(), QSize(40, 20));
    press(u"cmdApply"_s);
    const QImage stored = QImage::fromData(storedLogo());
    EXPECT_EQ(stored.convertToFormat(QImage::Format_RGB32), blank());
}

TEST_F(FrmOptionsLogoTest, WithAFormWithoutLogoTheButtonsCannotBeUsed)
{
    putLogo(content(writePicture(u"logo.bmp"_s, "BMP", QSize(40, 20), Qt::darkGreen)));
    openOnLogo();
    press(u"optLogo_2"_s);
    press(u"cmdLogoSlett"_s);
    EXPECT_EQ(logo().size(), QSize(40, 20));
}

} // namespace

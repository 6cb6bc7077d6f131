#include "registers/products/frmKalkyle.h"

#include "platform/forms/Image.h"
#include "platform/forms/MsgBox.h"
#include "platform/forms/Twips.h"
#include "shell/settings/clsRegSettings.h"
#include "state/SharedState.h"
#include "support/Caption.h"
#include "support/ScreenHands.h"
#include "support/SessionTap.h"
#include "support/SettingsFolder.h"

#include <QFileInfo>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {

class FrmKalkyleTest : public ScreenTest, public ScreenHands<frmKalkyle>
{
protected:
    FrmKalkyleTest()
    {
        makeParentTables();
        startModule();
        open();
    }
    ~FrmKalkyleTest() override { qputenv("PATH", m_path); }
    static QRadioButton &option(int number)
    {
        return control<QRadioButton>(u"Option%1"_s.arg(number));
    }
    static QLineEdit &box(const QString &name) { return control<QLineEdit>(name); }
    /// Makes a program of that name in the folder that is searched for programs; the path of the
    /// file that it makes when it runs.
    QString makeProgram(const QString &name)
    {
        const QString sign = folder() + u"/startet-"_s + name;
        QFile program(folder() + u'/' + name);
        EXPECT_TRUE(program.open(QIODevice::WriteOnly));
        program.write("#!/bin/sh\n: > '" + sign.toUtf8() + "'\n");
        program.close();
        ::chmod(program.fileName().toUtf8().constData(), 0700);
        return sign;
    }

    SettingsFolder settings;

private:
    const QByteArray m_path = qgetenv("PATH");
};

const QStringList kBoxes{u"Text1"_s, u"Text2"_s, u"Text3_0"_s, u"Text3_1"_s};

TEST_F(FrmKalkyleTest, OpensAsDesigned)
{
    EXPECT_EQ(screen()->windowTitle(), u"Kalkyle"_s);
    EXPECT_EQ(screen()->place(), QRect(195, 195, 7950, 3165));
    EXPECT_EQ(option(1).text(), u"Legg til         % på alle ut-priser"_s);
    EXPECT_EQ(option(2).text(), u"Legg til         % på alle inn-priser "_s);
    EXPECT_EQ(option(3).text(), u"Legg til         % på alle inn-priser og oppdater ut-pris "
                                u"tilsvarende med samme kronebeløp"_s);
    EXPECT_EQ(option(4).text(), u"Legg til         % på alle inn-priser og oppdater ut-pris "
                                u"tilsvarende med samme prosentsats"_s);
    for (int i = 1; i <= 4; ++i)
        EXPECT_EQ(option(i).isChecked(), i == 1);
    for (const QString &name : kBoxes) {
        EXPECT_EQ(box(name).text(), u"0"_s);
        EXPECT_EQ(box(name).alignment() & Qt::AlignHorizontal_Mask, Qt::AlignRight);
    }
    EXPECT_EQ(captionOf(control<QPushButton>(u"btnExecute"_s)), u"Utfør"_s);
    EXPECT_EQ(captionOf(control<QPushButton>(u"btnWinCalc"_s)), u"Kalkulator"_s);
    EXPECT_EQ(captionOf(control<QPushButton>(u"btnClose"_s)), u"Avslutt"_s);
    EXPECT_EQ(control<Image>(u"imgF1"_s).size(), QSize(24, 24));
}

TEST_F(FrmKalkyleTest, EachTextBoxStandsInTheGapOfItsCaption)
{
    for (int i = 1; i <= 4; ++i) {
        const QLineEdit &standing = box(kBoxes[i - 1]);
        const int indicator = 30; // pixels, generously
        const QFontMetrics metrics(option(i).font());
        EXPECT_EQ(standing.parentWidget(), &option(i));
        EXPECT_GE(standing.x(), metrics.horizontalAdvance(u"Legg til"_s));
        EXPECT_LE(standing.x(), metrics.horizontalAdvance(u"Legg til"_s) + indicator);
        EXPECT_GE(standing.contentsRect().width(), metrics.horizontalAdvance(u"12,5"_s));
    }
    // Between the words, on paper: nothing of the caption is painted under the box.
    option(1).clearFocus();
    box(u"Text1"_s).hide();
    const QImage picture = option(1).grab(box(u"Text1"_s).geometry()).toImage();
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            ASSERT_EQ(picture.pixel(x, y), picture.pixel(0, 0)) << x << ", " << y;
    }
}

TEST_F(FrmKalkyleTest, ALongCaptionIsWrapped)
{
    EXPECT_GT(option(3).heightForWidth(300), option(3).heightForWidth(2000));
    screen()->setPlace(195, 195, 4000, 3165);
    runEvents();
    EXPECT_GE(option(3).height(), option(3).heightForWidth(option(3).width()));
    EXPECT_FALSE(option(3).geometry().intersects(option(4).geometry()));
}

TEST_F(FrmKalkyleTest, AClickOnTheCaptionChooses)
{
    QTest::mouseClick(&option(3), Qt::LeftButton, {},
                      QPoint(option(3).width() - 5, option(3).height() - 5));
    EXPECT_TRUE(option(3).isChecked());
    EXPECT_FALSE(option(1).isChecked());
}

TEST_F(FrmKalkyleTest, UtforSaysThatItIsNotThereWhateverIsChosen)
{
    run(u"INSERT INTO Produkt (KlientNr,ProduktNr,InnPris,UtPris) VALUES (5,'A1',10,20)"_s);
    const SessionTap tap;
    for (int i = 1; i <= 4; ++i) {
        option(i).setChecked(true);
        box(kBoxes[i - 1]).setText(i == 2 ? u"tull"_s : u"12,5"_s);
        bool shown = false;
        onNextModal<QMessageBox>([&](QMessageBox &message) {
            shown = true;
            EXPECT_EQ(message.text(), u"Funksjonen er ikke lagt inn enda."_s);
            EXPECT_EQ(message.icon(), QMessageBox::Information);
            EXPECT_EQ(message.windowTitle(), applicationTitle());
            QTest::keyClick(&message, Qt::Key_Return);
        });
        press(u"btnExecute"_s);
        EXPECT_TRUE(shown);
    }
    EXPECT_EQ(tap.statements(), QStringList());
    EXPECT_EQ(rows(u"SELECT InnPris,UtPris FROM Produkt"_s), QStringList({u"10|20"_s}));
}

TEST_F(FrmKalkyleTest, KalkulatorStartsTheDesktopsCalculator)
{
    const QString sign = makeProgram(u"galculator"_s);
    qputenv("PATH", folder().toUtf8());
    press(u"btnWinCalc"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return QFileInfo::exists(sign); }, 10000));
    EXPECT_NE(screen(), nullptr);
}

TEST_F(FrmKalkyleTest, WithoutACalculatorTheButtonDoesNothing)
{
    qputenv("PATH", folder().toUtf8());
    press(u"btnWinCalc"_s);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    EXPECT_NE(screen(), nullptr);
}

TEST_F(FrmKalkyleTest, EscapeAndAvsluttClose)
{
    QTest::keyClick(&box(u"Text2"_s), Qt::Key_Escape);
    EXPECT_EQ(screen(), nullptr);
    SharedForm<frmKalkyle>::get().show();
    QTest::mouseClick(&control<QPushButton>(u"btnClose"_s), Qt::LeftButton);
    EXPECT_EQ(screen(), nullptr);
}

TEST_F(FrmKalkyleTest, HelpGoesToItsTopicByKeyAndMouse)
{
    QTest::keyClick(&option(2), Qt::Key_F1);
    EXPECT_EQ(gHelpTopic, u"html\\kalkyle.htm"_s);
    gHelpTopic.clear();
    screen()->activateWindow();
    runEvents();
    QTest::mouseClick(&control<Image>(u"imgF1"_s), Qt::LeftButton);
    runEvents();
    EXPECT_EQ(gHelpTopic, u"html\\kalkyle.htm"_s);
}

TEST_F(FrmKalkyleTest, HoldsItsSmallestWidth)
{
    screen()->setPlace(195, 195, 1500, 4500);
    runEvents();
    EXPECT_EQ(screen()->width(), twipsToPixels(4000));
    auto &close = control<QPushButton>(u"btnClose"_s);
    EXPECT_EQ(close.geometry().bottom(), screen()->height() - 8 - 1) << "the bar is at the foot";
    EXPECT_TRUE(screen()->rect().contains(close.geometry()));
}

TEST_F(FrmKalkyleTest, KeepsItsPlace)
{
    screen()->setPlace(600, 750, 9000, 4500);
    screen()->close();
    runEvents();
    SharedForm<frmKalkyle>::get().show();
    EXPECT_EQ(screen()->place(), QRect(600, 750, 9000, 4500));
}

TEST_F(FrmKalkyleTest, ClosesWithTheSessionAndWithTheMenu)
{
    Forms::byName(u"frmRegningsdel"_s)->close();
    EXPECT_EQ(screen(), nullptr);
    SharedForm<frmKalkyle>::get().show();
    EXPECT_TRUE(Forms::instance().logOff());
    EXPECT_EQ(screen(), nullptr);
}

} // namespace

#include "platform/forms/PictureButton.h"

#include "support/TestApplication.h"

#include <QLineEdit>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

namespace {

class PictureButtons : public FormsFixture
{
protected:
    void SetUp() override
    {
        form = new RecordingForm;
        edit = new QLineEdit(form);
        button = new PictureButton(form);
        button->setText(u"Bokfør"_s);
        button->setToolTip(u"Bokfør fakturaer i regnskapet"_s);
        QPixmap red(32, 32);
        red.fill(Qt::red);
        button->setPicture(QIcon(red), red.size());
        button->setGeometry(10, 40, 100, 70);
        form->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(form));
        edit->setFocus();
    }

    RecordingForm *form = nullptr;
    QLineEdit *edit = nullptr;
    PictureButton *button = nullptr;
};

} // namespace

TEST_F(PictureButtons, ThePictureStandsAboveTheCaption)
{
    EXPECT_EQ(button->toolButtonStyle(), Qt::ToolButtonTextUnderIcon);
    const QImage image = button->grab().toImage();
    int lowestRed = -1;
    int highestRed = image.height();
    for (int y = 0; y < image.height(); ++y) {
        if (image.pixelColor(image.width() / 2, y) == QColor(Qt::red)) {
            lowestRed = y;
            highestRed = std::min(highestRed, y);
        }
    }
    ASSERT_GE(lowestRed, 0) << "the picture is not there";
    EXPECT_EQ(lowestRed - highestRed + 1, 32);
    EXPECT_LT(lowestRed, image.height() - button->fontMetrics().height());
}

TEST_F(PictureButtons, TakesTheFocusByTabAndShowsIt)
{
    const QImage without = button->grab().toImage();
    QTest::keyClick(edit, Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), button);
    EXPECT_NE(button->grab().toImage(), without);
}

TEST_F(PictureButtons, MouseSpaceAndEnterPressIt)
{
    const QSignalSpy clicks(button, &QAbstractButton::clicked);
    QTest::mouseClick(button, Qt::LeftButton);
    button->setFocus();
    QTest::keyClick(form->windowHandle(), Qt::Key_Space);
    QTest::keyClick(form->windowHandle(), Qt::Key_Return);
    EXPECT_EQ(clicks.count(), 3);
}

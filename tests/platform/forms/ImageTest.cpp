#include "platform/forms/Image.h"

#include "support/TestApplication.h"

namespace {

class ImageTest : public FormsFixture
{
protected:
    ImageTest() : form(new RecordingForm), image(new Image(form))
    {
        image->setGeometry(10, 10, 24, 24);
        QObject::connect(image, &Image::clicked, form, [this] { ++clicks; });
        form->resize(200, 100);
        form->show();
    }

    static QIcon red(int side)
    {
        QPixmap pixmap(side, side);
        pixmap.fill(Qt::red);
        return QIcon(pixmap);
    }
    [[nodiscard]] QColor colorAt(int x, int y) const
    {
        return image->grab().toImage().pixelColor(x, y);
    }

    RecordingForm *form;
    Image *image;
    int clicks = 0;
};

} // namespace

TEST_F(ImageTest, ThePictureFillsTheControl)
{
    image->setPicture(red(24));
    EXPECT_EQ(colorAt(0, 0), QColor(Qt::red));
    EXPECT_EQ(colorAt(23, 23), QColor(Qt::red));
}

TEST_F(ImageTest, ALargerPictureIsFittedIn)
{
    image->setPicture(red(96));
    EXPECT_EQ(colorAt(12, 12), QColor(Qt::red));
    EXPECT_EQ(image->size(), QSize(24, 24));
}

TEST_F(ImageTest, WithoutAPictureNothingIsDrawn)
{
    EXPECT_EQ(colorAt(12, 12), form->palette().window().color());
}

TEST_F(ImageTest, OnlyALeftPressEndsHere)
{
    const auto endsHere = [this](Qt::MouseButton button) {
        QMouseEvent press(QEvent::MouseButtonPress, QPointF(5, 5),
                          image->mapToGlobal(QPointF(5, 5)), button, button, Qt::NoModifier);
        QApplication::sendEvent(image, &press);
        return press.isAccepted();
    };
    EXPECT_TRUE(endsHere(Qt::LeftButton));
    EXPECT_FALSE(endsHere(Qt::RightButton));
}

TEST_F(ImageTest, ALeftClickInsideCounts)
{
    QTest::mouseClick(image, Qt::LeftButton);
    EXPECT_EQ(clicks, 1);
    QTest::mouseClick(image, Qt::RightButton);
    QTest::mousePress(image, Qt::LeftButton);
    QTest::mouseRelease(image, Qt::LeftButton, Qt::NoModifier, QPoint(60, 5));
    EXPECT_EQ(clicks, 1);
}

TEST_F(ImageTest, ItTakesNoFocus)
{
    QTest::mouseClick(image, Qt::LeftButton);
    QTest::keyClick(form, Qt::Key_Tab);
    EXPECT_FALSE(image->hasFocus());
}

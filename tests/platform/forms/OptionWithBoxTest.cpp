#include "platform/forms/OptionWithBox.h"

#include <QLineEdit>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

class OptionsWithBoxes : public ::testing::Test
{
protected:
    OptionsWithBoxes()
    {
        option.setText(u"Kundenr (      siffer) + Faktura (       siffer) + slutt"_s);
        first = new QLineEdit(&option);
        second = new QLineEdit(&option);
        second->setMinimumWidth(17);
    }
    void showWide(int width)
    {
        option.resize(width, option.heightForWidth(width));
        option.grab(); // lays it out
    }

    OptionWithBox option;
    QLineEdit *first;
    QLineEdit *second;
};

} // namespace

TEST_F(OptionsWithBoxes, EachBoxStandsInItsGap)
{
    showWide(option.sizeHint().width());
    const QFontMetrics metrics(option.font());
    EXPECT_EQ(option.height(), option.sizeHint().height());
    EXPECT_GE(first->x(), metrics.horizontalAdvance(u"Kundenr ("_s));
    EXPECT_GE(second->x(),
              first->geometry().right() + metrics.horizontalAdvance(u"siffer) + Faktura ("_s));
    EXPECT_EQ(first->y(), second->y());
    EXPECT_EQ(second->width(), 17);
    EXPECT_GE(first->width(), metrics.horizontalAdvance(u"12345"_s));
    EXPECT_LE(second->geometry().right() + metrics.horizontalAdvance(u"siffer) + slutt"_s),
              option.width());
}

TEST_F(OptionsWithBoxes, NothingOfTheCaptionIsPaintedUnderABox)
{
    showWide(option.sizeHint().width());
    for (QLineEdit *box : {first, second}) {
        box->hide();
        const QImage picture = option.grab(box->geometry()).toImage();
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x)
                ASSERT_EQ(picture.pixel(x, y), picture.pixel(0, 0)) << x << ", " << y;
        }
    }
}

TEST_F(OptionsWithBoxes, TheCircleStandsInTheFirstLineWhereAnyOptionHasIt)
{
    OptionWithBox bare;
    QRadioButton plain;
    const QSize line(100, bare.heightForWidth(100));
    plain.resize(line);
    bare.resize(line.width(), 3 * line.height());
    EXPECT_EQ(bare.grab(QRect({}, line)).toImage(), plain.grab().toImage());
}

TEST_F(OptionsWithBoxes, ABoxOnALaterLineHasItsRoomThere)
{
    const int width = option.sizeHint().width() / 2;
    showWide(width);
    EXPECT_GT(second->y(), first->geometry().bottom());
    EXPECT_LE(second->geometry().bottom(), option.height());
    EXPECT_LT(second->geometry().right(), width);
    EXPECT_GT(option.heightForWidth(width), 2 * first->height());
}

TEST_F(OptionsWithBoxes, AFirstLineWithoutABoxIsAsHighAsOneWithIt)
{
    OptionWithBox late;
    late.setText(u"Fakturanummer og kundenummer (      siffer)"_s);
    const auto *box = new QLineEdit(&late);
    const int width = late.sizeHint().width() - 1;
    late.resize(width, late.heightForWidth(width));
    late.grab(); // lays it out
    ASSERT_GT(box->y(), 0);
    EXPECT_EQ(box->y(), box->height());
}

TEST_F(OptionsWithBoxes, ABoxWithoutAGapStaysWhereItIs)
{
    auto *third = new QLineEdit(&option);
    third->setGeometry(1, 2, 3, 4);
    showWide(option.sizeHint().width());
    EXPECT_EQ(third->geometry(), QRect(1, 2, 3, 4));
}

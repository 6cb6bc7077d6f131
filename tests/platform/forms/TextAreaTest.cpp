#include "platform/forms/TextArea.h"

#include <QApplication>
#include <QClipboard>
#include <QTest>

#include <ctime>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

class TextAreas : public ::testing::Test
{
protected:
    TextAreas() { area.setMaxLength(10); }

    void paste(const QString &text)
    {
        QApplication::clipboard()->setText(text);
        area.paste();
    }
    void moveTo(int position)
    {
        QTextCursor cursor = area.textCursor();
        cursor.setPosition(position);
        area.setTextCursor(cursor);
    }

    TextArea area;
};

} // namespace

TEST_F(TextAreas, PartLinesByCrLfHoweverTheyCame)
{
    area.setText(u"a\r\nb\nc"_s);
    EXPECT_EQ(area.text(), u"a\r\nb\r\nc"_s);
    EXPECT_EQ(area.blockCount(), 3);
}

TEST_F(TextAreas, TakeNoMoreThanTheirLength)
{
    QTest::keyClicks(&area, u"123456789012345"_s);
    EXPECT_EQ(area.text(), u"1234567890"_s);
    moveTo(3);
    QTest::keyClicks(&area, u"xyz"_s);
    EXPECT_EQ(area.text(), u"1234567890"_s);
}

TEST_F(TextAreas, ALineEndCountsAsTwo)
{
    QTest::keyClicks(&area, u"1234567"_s);
    QTest::keyClick(&area, Qt::Key_Return);
    QTest::keyClicks(&area, u"89"_s);
    EXPECT_EQ(area.text(), u"1234567\r\n8"_s);
    area.setText(u"123456789"_s);
    moveTo(4);
    QTest::keyClick(&area, Qt::Key_Return);
    EXPECT_EQ(area.text(), u"123456789"_s);
}

TEST_F(TextAreas, APasteIsCutAtItsEnd)
{
    area.setText(u"abcdefg"_s);
    moveTo(3);
    paste(u"12345"_s);
    EXPECT_EQ(area.text(), u"abc123defg"_s);
    EXPECT_EQ(area.textCursor().position(), 6);
}

TEST_F(TextAreas, APasteOverASelectionHasItsRoom)
{
    area.setText(u"abcdefghij"_s);
    area.selectAll();
    paste(u"0123456789xx"_s);
    EXPECT_EQ(area.text(), u"0123456789"_s);
}

TEST_F(TextAreas, APairOfSurrogatesIsNotTornApart)
{
    area.setText(u"abcdefghi"_s);
    moveTo(9);
    paste(u"\U0001F69A"_s);
    EXPECT_EQ(area.text(), u"abcdefghi"_s);
}

TEST_F(TextAreas, ALongTextThatIsSetIsCutAtItsEnd)
{
    area.setText(u"123456789012345"_s);
    EXPECT_EQ(area.text(), u"1234567890"_s);
}

TEST_F(TextAreas, ACutPasteIsUndoneAsOne)
{
    area.setText(QString());
    QTest::keyClicks(&area, u"abc"_s);
    moveTo(0);
    paste(u"123456789"_s);
    EXPECT_EQ(area.text(), u"1234567abc"_s);
    area.undo();
    EXPECT_EQ(area.text(), u"abc"_s);
}

TEST_F(TextAreas, AnImmensePasteTakesNoTime)
{
    const std::clock_t start = std::clock(); // of this process alone, whatever else runs
    paste(QString(200'000, u'x'));
    EXPECT_EQ(area.text(), u"xxxxxxxxxx"_s);
    EXPECT_LT(std::clock() - start, 5 * CLOCKS_PER_SEC);
}

TEST_F(TextAreas, ABlankThatBreaksNoLineStaysOne)
{
    area.setText(u"1\u00a0000\nkr"_s);
    EXPECT_EQ(area.text(), u"1\u00a0000\r\nkr"_s);
    area.setText(u"a\u2028b"_s);
    EXPECT_EQ(area.text(), u"a\r\nb"_s);
}

TEST_F(TextAreas, TabLeavesThem)
{
    QWidget window;
    auto *first = new TextArea(&window);
    auto *second = new TextArea(&window);
    window.show();
    first->setFocus();
    QTest::keyClick(first, Qt::Key_Tab);
    EXPECT_EQ(window.focusWidget(), second);
    EXPECT_EQ(first->text(), QString());
}

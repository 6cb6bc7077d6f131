#include "platform/forms/OneLine.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QLineEdit>
#include <QTest>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

class OneLineTest : public ::testing::Test
{
protected:
    OneLineTest() { holdOneLine(field); }

    /// Pastes `text` at the bar in `around`; what stands there then, with a bar at the cursor.
    QString pasted(const QString &text, const QString &around = u"|"_s)
    {
        field.setText(QString(around).remove(u'|'));
        field.setCursorPosition(int(around.indexOf(u'|')));
        QGuiApplication::clipboard()->setText(text);
        QTest::keyClick(&field, Qt::Key_V, Qt::ControlModifier);
        return field.text().insert(field.cursorPosition(), u'|');
    }

    QLineEdit field;
};

TEST_F(OneLineTest, LinesAndTabsArePartedByBlanks)
{
    EXPECT_EQ(pasted(u"en\r\nto\ntre\tfire\u2028fem\rseks"_s), u"en to tre fire fem seks|"_s);
    EXPECT_EQ(pasted(u"\n\nen"_s), u"  en|"_s);
}

TEST_F(OneLineTest, LineEndsBehindTheTextFallAway)
{
    EXPECT_EQ(pasted(u"T110\r\n"_s), u"T110|"_s);
    EXPECT_EQ(pasted(u"T110\n\n"_s), u"T110|"_s);
    EXPECT_EQ(pasted(u"\n"_s), u"|"_s);
}

TEST_F(OneLineTest, TheTextAroundStays)
{
    EXPECT_EQ(pasted(u"to\ntre\n"_s, u"en |fire"_s), u"en to tre|fire"_s);
    EXPECT_EQ(pasted(u"to"_s, u" en |fire "_s), u" en to|fire "_s);
}

TEST_F(OneLineTest, TextOfOneLineCanStillBeTakenBack)
{
    EXPECT_EQ(pasted(u"to"_s, u"en|"_s), u"ento|"_s);
    field.undo();
    EXPECT_EQ(field.text(), u"en"_s);
}

TEST_F(OneLineTest, WhatTheProgramSetsStays)
{
    field.setText(u"en\nto"_s);
    EXPECT_EQ(field.text(), u"en\nto"_s);
}

} // namespace

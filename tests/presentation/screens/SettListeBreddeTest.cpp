#include "presentation/screens/Skjerm.h"
#include "support/TestApplication.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QFontMetrics>

using namespace Qt::StringLiterals;

namespace {

class SettListeBreddeTest : public FormsFixture
{
protected:
    SettListeBreddeTest() : form(new RecordingForm), list(new QComboBox(form))
    {
        list->setGeometry(10, 10, 60, 24);
        form->resize(400, 200);
    }

    int measured(const QStringList &entries)
    {
        list->clear();
        list->addItems(entries);
        qint32 width = 0;
        SettListeBredde(*list, width);
        return width;
    }
    /// The text's width in the form's font and 320 twips, in whole pixels.
    int expected(const QString &text) const
    {
        return QFontMetrics(form->font()).horizontalAdvance(text) + 21;
    }

    RecordingForm *form;
    QComboBox *list;
};

} // namespace

TEST_F(SettListeBreddeTest, AnEmptyListMeasures320Twips)
{
    EXPECT_EQ(measured({}), 21);
}

TEST_F(SettListeBreddeTest, TheLongestEntryByCharactersIsMeasured)
{
    // The one with more characters counts, though the other is wider.
    EXPECT_EQ(measured({u"WWWWWW"_s, u"iiiiiii"_s, u"a"_s}), expected(u"iiiiiii"_s));
}

TEST_F(SettListeBreddeTest, AmongEqualsTheFirstIsMeasured)
{
    EXPECT_EQ(measured({u"a"_s, u"iii"_s, u"WWW"_s}), expected(u"iii"_s));
    EXPECT_EQ(measured({u"a"_s, u"WWW"_s, u"iii"_s}), expected(u"WWW"_s));
}

TEST_F(SettListeBreddeTest, TheFormsFontCounts)
{
    QFont large = form->font();
    large.setPointSize(30);
    QFont small = form->font();
    small.setPointSize(5);
    list->setFont(small);
    form->setFont(large);
    EXPECT_EQ(measured({u"1500 Kundefordringer"_s}), expected(u"1500 Kundefordringer"_s));
}

TEST_F(SettListeBreddeTest, OnlyTheDropDownPartIsWidened)
{
    list->addItem(u"Kort"_s);
    qint32 width = 333;
    SettListeBredde(*list, width);
    EXPECT_EQ(width, 333);
    form->show();
    list->showPopup();
    EXPECT_GE(list->view()->width(), 333);
    EXPECT_EQ(list->width(), 60);
    list->hidePopup();
}

TEST_F(SettListeBreddeTest, ANegativeWidthAsksForMeasuring)
{
    list->addItem(u"abc"_s);
    qint32 width = -5;
    SettListeBredde(*list, width);
    EXPECT_EQ(width, expected(u"abc"_s));
    EXPECT_EQ(list->view()->minimumWidth(), width);
}

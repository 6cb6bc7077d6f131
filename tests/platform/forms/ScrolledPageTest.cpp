#include "support/TestApplication.h"

#include <QLineEdit>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

/// Forms for which the screen of the tests, with 800 by 800 pixels, has no room.
class ScrolledPageTest : public FormsFixture
{
protected:
    /// A field at the top, one at the bottom, and so many pixels between them.
    void makeFields(int between)
    {
        auto *column = new QVBoxLayout(form);
        column->addWidget(first);
        column->addSpacing(between);
        column->addWidget(last);
    }
    [[nodiscard]] bool isScrolled() const { return form->findChild<QScrollArea *>() != nullptr; }
    static bool isInView(const QWidget &field)
    {
        return field.visibleRegion().boundingRect() == field.rect();
    }

    RecordingForm *form = new RecordingForm;
    QLineEdit *first = new QLineEdit(form);
    QLineEdit *last = new QLineEdit(form);
};

TEST_F(ScrolledPageTest, AWindowStaysOnTheScreenAndShowsTheFieldThatHasTheFocus)
{
    makeFields(1000);
    form->show();
    runEvents();
    EXPECT_TRUE(form->screen()->availableGeometry().contains(form->frameGeometry()));
    first->setFocus();
    EXPECT_TRUE(isInView(*first));
    EXPECT_FALSE(isInView(*last));
    QTest::keyClick(first, Qt::Key_Tab);
    EXPECT_TRUE(last->hasFocus());
    EXPECT_TRUE(isInView(*last));
    QTest::keyClick(last, Qt::Key_Tab, Qt::ShiftModifier);
    EXPECT_TRUE(isInView(*first));
}

TEST_F(ScrolledPageTest, APageKeyScrollsWhereNoControlWantsIt)
{
    makeFields(1000);
    form->show();
    first->setFocus();
    runEvents();
    QTest::keyClick(first, Qt::Key_PageDown);
    EXPECT_TRUE(isInView(*last));
    EXPECT_TRUE(first->hasFocus());
}

TEST_F(ScrolledPageTest, TheToldSizeIsThatOfThePage)
{
    form->setMinimumTwips(15000, 9000);
    last->setGeometry(900, 550, 90, 30);
    form->show();
    runEvents();
    EXPECT_EQ(form->pageSize(), QSize(1000, 600));
    EXPECT_EQ(form->takeEvents(), (QStringList{u"load"_s, u"resize"_s, u"activate"_s}));
    EXPECT_FALSE(isInView(*last));
    last->setFocus();
    EXPECT_TRUE(isInView(*last));
    form->resize(600, 700);
    runEvents();
    EXPECT_GT(form->pageSize().height(), 600);
    EXPECT_EQ(form->takeEvents(), QStringList{u"resize"_s});
}

TEST_F(ScrolledPageTest, ALargerWindowThatWasStoredBecomesAsLargeAsTheScreen)
{
    makeFields(1000);
    form->setPlace(3000, 3000, 30000, 30000);
    form->show();
    EXPECT_TRUE(form->screen()->availableGeometry().contains(form->frameGeometry()));
}

TEST_F(ScrolledPageTest, WhereTheScreenHasRoomNothingIsScrolled)
{
    makeFields(500);
    form->setPlace(1500, 1500, 9000, 10000);
    form->show();
    EXPECT_FALSE(isScrolled());
    EXPECT_EQ(form->pageSize(), form->size());
}

} // namespace

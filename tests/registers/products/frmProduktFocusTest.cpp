#include "registers/products/ProduktFixture.h"
#include "support/RoadsIntoAField.h"

#include <QAbstractItemView>
#include <QContextMenuEvent>

// What protects the details outside the edit modes, and what the two amounts do with the focus.

namespace {

class FrmProduktFocusTest : public ProduktFixture
{
protected:
    void SetUp() override
    {
        addThreeProducts();
        open();
    }
    static std::vector<QWidget *> detailControls()
    {
        return {&field(0), &field(1), &field(2), &field(3),
                &rate(),   &field(4), &field(5), &gross()};
    }
};

TEST_F(FrmProduktFocusTest, ABrowsedFieldSendsTheFocusOnToTheButtons)
{
    doubleClickCell(1, 1);
    for (QWidget *each : detailControls()) {
        each->setFocus();
        EXPECT_EQ(focused(), each->objectName());
        settle();
        EXPECT_EQ(focused(), u"btnNew"_s) << each->objectName().toStdString();
    }
}

TEST_F(FrmProduktFocusTest, ABrowsedFieldTakesTextOnNoRoad)
{
    doubleClickCell(1, 1);
    std::vector<QLineEdit *> fields;
    for (int index = 0; index < 6; ++index)
        fields.push_back(&field(index));
    fields.push_back(rate().lineEdit());
    for (QLineEdit *each : fields) {
        const QString before = each->text();
        tryEveryRoad(*each, u"77"_s);
        settle();
        EXPECT_EQ(each->text(), before) << each->objectName().toStdString();
    }
    changeFirst();
    tryEveryRoad(field(1), u"77"_s);
    EXPECT_TRUE(field(1).text().contains(u"77"_s));
    control<QPushButton>(u"btnCancel"_s).click();
    const QString before = field(1).text();
    tryEveryRoad(field(1), u"88"_s);
    EXPECT_EQ(field(1).text(), before);
}

TEST_F(FrmProduktFocusTest, TabIntoTheFirstFieldPassesStraightOn)
{
    clickTab(2);
    control<TabStrip>(u"TabStrip1"_s).tabBar()->setFocus();
    QTest::keyClick(screen()->focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(focused(), u"txtFields_0"_s);
    QCoreApplication::processEvents();
    EXPECT_NE(focused(), u"txtFields_0"_s);
    settle();
    EXPECT_EQ(focused(), u"btnNew"_s);
}

TEST_F(FrmProduktFocusTest, AMenuOverABrowsedFieldGivesTheFocusBackToBeSentOn)
{
    doubleClickCell(1, 1);
    for (QWidget *each : {static_cast<QWidget *>(&field(1)), static_cast<QWidget *>(&field(4))}) {
        each->setFocus(Qt::MouseFocusReason);
        const QPoint place(5, 5);
        QContextMenuEvent asked(QContextMenuEvent::Mouse, place, each->mapToGlobal(place));
        QApplication::sendEvent(each, &asked);
        settle(); // the sent key has gone to the menu
        QWidget *menu = QApplication::activePopupWidget();
        ASSERT_NE(menu, nullptr);
        ASSERT_EQ(focused(), each->objectName());
        QTest::keyClick(menu, Qt::Key_Escape);
        settle();
        EXPECT_EQ(focused(), u"btnNew"_s) << each->objectName().toStdString();
    }
}

TEST_F(FrmProduktFocusTest, AMenuOverAnEditedAmountLeavesItAsItIs)
{
    changeFirst();
    type(field(4), u"12"_s);
    field(4).setCursorPosition(1);
    const QPoint place(5, 5);
    QContextMenuEvent asked(QContextMenuEvent::Mouse, place, field(4).mapToGlobal(place));
    QApplication::sendEvent(&field(4), &asked);
    settle();
    QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Escape);
    settle();
    EXPECT_EQ(focused(), u"txtFields_4"_s);
    EXPECT_EQ(field(4).text(), u"12"_s);
    EXPECT_FALSE(field(4).hasSelectedText());
}

TEST_F(FrmProduktFocusTest, TheTabsTakeTheFocusOfAPageThatGoes)
{
    const QTabBar *tabs = control<TabStrip>(u"TabStrip1"_s).tabBar();
    grid().setFocus();
    doubleClickCell(1, 1);
    EXPECT_EQ(screen()->focusWidget(), tabs);
    press(u"btnChange"_s);
    field(2).setFocus();
    clickTab(1);
    EXPECT_EQ(screen()->focusWidget(), tabs);
}

TEST_F(FrmProduktFocusTest, AnEditedFieldKeepsTheFocus)
{
    changeFirst();
    for (QWidget *each : detailControls()) {
        each->setFocus();
        settle();
        EXPECT_EQ(focused(), each->objectName());
    }
}

TEST_F(FrmProduktFocusTest, TabGoesThroughTheFieldsFromTheTop)
{
    changeFirst();
    field(0).setFocus();
    settle();
    QStringList names;
    for (int i = 0; i < 10; ++i) {
        names += focused();
        key(Qt::Key_Tab);
    }
    EXPECT_EQ(names,
              QStringList({u"txtFields_0"_s, u"txtFields_1"_s, u"txtFields_2"_s, u"txtFields_3"_s,
                           u"cmbMvaSats"_s, u"txtFields_4"_s, u"txtFields_5"_s, u"chkBruttoPris"_s,
                           u"btnSave"_s, u"btnCancel"_s}));
}

TEST_F(FrmProduktFocusTest, AMouseClickDoesNotChangeABrowsedPage)
{
    doubleClickCell(1, 1);
    const QStringList before = details();
    // As a hand does it: the events of the press run before the release.
    for (QWidget *each : detailControls()) {
        const QPoint place(each->width() - 8, each->height() / 2);
        QTest::mousePress(each, Qt::LeftButton, {}, each == &gross() ? QPoint(8, 8) : place);
        settle();
        QTest::mouseRelease(each, Qt::LeftButton, {}, each == &gross() ? QPoint(8, 8) : place);
        settle();
        EXPECT_EQ(focused(), u"btnNew"_s) << each->objectName().toStdString();
    }
    EXPECT_FALSE(rate().view()->isVisible());
    EXPECT_EQ(details(), before);
}

TEST_F(FrmProduktFocusTest, APressPastTheFocusLeavesABrowsedMark)
{
    doubleClickCell(1, 1);
    const QStringList before = details();
    gross().click(); // as assistive technology does it
    EXPECT_EQ(details(), before);
    changeFirst();
    gross().click();
    EXPECT_NE(details(), before);
}

TEST_F(FrmProduktFocusTest, TheListOfRatesOpensWhileEditing)
{
    changeFirst();
    QTest::mouseClick(&rate(), Qt::LeftButton, {}, QPoint(rate().width() - 8, rate().height() / 2));
    runEvents();
    EXPECT_TRUE(rate().view()->isVisible());
    rate().hidePopup();
}

TEST_F(FrmProduktFocusTest, TheWheelPassesOverARateWithoutTheFocus)
{
    doubleClickCell(1, 1);
    QWheelEvent wheel(QPointF(5, 5), rate().mapToGlobal(QPointF(5, 5)), {}, QPoint(0, -120),
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&rate(), &wheel);
    EXPECT_EQ(rate().currentText(), u"25,0"_s);
}

// --- The two amounts

TEST_F(FrmProduktFocusTest, AnAmountIsSelectedWhenItGetsTheFocus)
{
    changeFirst();
    for (const int index : {4, 5}) {
        field(index).setFocus();
        EXPECT_EQ(field(index).selectedText(), field(index).text());
    }
}

TEST_F(FrmProduktFocusTest, TheSelectionStartsWhereItWas)
{
    changeFirst();
    field(4).setText(u"1234,00"_s);
    field(4).setCursorPosition(2);
    field(4).setFocus(Qt::TabFocusReason);
    EXPECT_EQ(field(4).selectedText(), u"34,00"_s);
}

TEST_F(FrmProduktFocusTest, ABrowsedAmountIsSelectedToo)
{
    doubleClickCell(1, 1);
    field(5).setFocus();
    EXPECT_EQ(field(5).selectedText(), u" 20,00"_s);
}

TEST_F(FrmProduktFocusTest, AnAmountThatIsLeftIsWrittenInItsForm)
{
    changeFirst();
    for (const int index : {4, 5}) {
        type(field(index), u"1234,5"_s);
        key(Qt::Key_Tab);
        EXPECT_EQ(field(index).text(), u"1 234,50"_s);
        type(field(index), u"7"_s);
        key(Qt::Key_Tab);
        EXPECT_EQ(field(index).text(), u" 7,00"_s);
    }
}

TEST_F(FrmProduktFocusTest, ATextThatIsNoAmountStaysAsTyped)
{
    changeFirst();
    for (const QString &text : {u"ti kroner"_s, u"12.50"_s, QString()}) {
        type(field(4), text);
        key(Qt::Key_Tab);
        EXPECT_EQ(field(4).text(), text);
    }
}

TEST_F(FrmProduktFocusTest, TheOtherFieldsStayAsTyped)
{
    changeFirst();
    type(field(0), u"1234,5"_s);
    key(Qt::Key_Tab);
    EXPECT_EQ(field(0).text(), u"1234,5"_s);
}

TEST_F(FrmProduktFocusTest, AWindowThatLosesTheUserLeavesTheAmountAlone)
{
    changeFirst();
    type(field(4), u"12"_s);
    QFocusEvent away(QEvent::FocusOut, Qt::ActiveWindowFocusReason);
    QApplication::sendEvent(&field(4), &away);
    EXPECT_EQ(field(4).text(), u"12"_s);
}

TEST_F(FrmProduktFocusTest, NeitherFlagNorRateRecomputesAPrice)
{
    changeFirst();
    gross().setFocus();
    QTest::keyClick(&gross(), Qt::Key_Space);
    type(*rate().lineEdit(), u"15"_s);
    key(Qt::Key_Tab);
    EXPECT_TRUE(gross().isChecked());
    EXPECT_EQ(field(4).text(), u" 10,00"_s);
    EXPECT_EQ(field(5).text(), u" 20,00"_s);
}

} // namespace

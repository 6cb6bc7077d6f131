#include "platform/forms/DTPicker.h"

#include "runtime/RunTimeError.h"
#include "support/TestApplication.h"

#include <QCalendarWidget>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTableView>
#include <QWheelEvent>

using namespace Qt::StringLiterals;

namespace {

class Picker : public FormsFixture
{
protected:
    void SetUp() override
    {
        form = new RecordingForm;
        before = new QLineEdit(form);
        picker = new DTPicker(form);
        picker->setGeometry(10, 40, 120, 26);
        picker->setLimits(QDate(2026, 1, 1), QDate(2027, 12, 31));
        picker->setValue(QDate(2026, 5, 17));
        form->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(form));
        before->setFocus();
        chosen = std::make_unique<QSignalSpy>(picker, &DTPicker::dateChosen);
        entered = std::make_unique<QSignalSpy>(picker, &DTPicker::entered);
    }
    void TearDown() override
    {
        chosen.reset();
        entered.reset();
        FormsFixture::TearDown();
    }

    void openCalendar() const
    {
        QTest::mouseClick(picker, Qt::LeftButton, {}, QPoint(picker->width() - 8, 13));
        ASSERT_NE(QApplication::activePopupWidget(), nullptr);
    }
    /// Moves to `day` in the open calendar with the keys, and chooses it.
    void chooseInCalendar(int day) const
    {
        auto *view = picker->calendarWidget()->findChild<QTableView *>();
        const int steps = day - picker->calendarWidget()->selectedDate().day();
        for (int i = 0; i < std::abs(steps); ++i)
            QTest::keyClick(view, steps > 0 ? Qt::Key_Right : Qt::Key_Left);
        QTest::keyClick(view, Qt::Key_Return);
        runEvents();
    }
    void type(const QString &date) const
    {
        before->setFocus();
        picker->setFocus(Qt::TabFocusReason);
        QTest::keyClicks(picker, date);
    }

    RecordingForm *form = nullptr;
    QLineEdit *before = nullptr;
    DTPicker *picker = nullptr;
    std::unique_ptr<QSignalSpy> chosen;
    std::unique_ptr<QSignalSpy> entered;
};

} // namespace

TEST_F(Picker, ShowsDayMonthYear)
{
    EXPECT_EQ(picker->text(), u"17.05.2026"_s);
    picker->setValue(QDate(2027, 12, 1));
    EXPECT_EQ(picker->text(), u"01.12.2027"_s);
}

TEST_F(Picker, SettingTheValueByCodeRaisesNothing)
{
    picker->setValue(QDate(2026, 8, 1));
    EXPECT_EQ(picker->value(), QDate(2026, 8, 1));
    EXPECT_EQ(chosen->count(), 0);
    EXPECT_EQ(entered->count(), 0);
}

TEST_F(Picker, OnlyTheLeftButtonOpensTheCalendar)
{
    for (const Qt::MouseButton button : {Qt::RightButton, Qt::MiddleButton}) {
        QTest::mouseClick(picker, button, {}, QPoint(picker->width() - 8, 13));
        EXPECT_EQ(QApplication::activePopupWidget(), nullptr) << button;
    }
    openCalendar();
}

TEST_F(Picker, AValueOutsideTheLimitsIsAnErrorAndChangesNothing)
{
    EXPECT_EQ(passOver([&] { picker->setValue(QDate(2025, 12, 31)); }), 35773);
    EXPECT_EQ(passOver([&] { picker->setValue(QDate(2028, 1, 1)); }), 35773);
    EXPECT_EQ(passOver([&] { picker->setValue(QDate()); }), 13);
    EXPECT_EQ(picker->value(), QDate(2026, 5, 17));
    EXPECT_EQ(passOver([&] { picker->setValue(QDate(2026, 1, 1)); }), 0);
    EXPECT_EQ(passOver([&] { picker->setValue(QDate(2027, 12, 31)); }), 0);
}

TEST_F(Picker, NewLimitsPullTheValueInWithoutAnEvent)
{
    picker->setLimits(QDate(2030, 1, 1), QDate(2031, 12, 31));
    EXPECT_EQ(picker->value(), QDate(2030, 1, 1));
    picker->setLimits(QDate(2010, 1, 1), QDate(2012, 12, 31));
    EXPECT_EQ(picker->value(), QDate(2012, 12, 31));
    EXPECT_EQ(chosen->count(), 0);
}

TEST_F(Picker, ATypedDateCountsOnceWhenEnterIsPressedOrTheFieldIsLeft)
{
    type(u"24.12.2026"_s);
    EXPECT_EQ(chosen->count(), 0) << "not yet";
    QTest::keyClick(picker, Qt::Key_Return);
    EXPECT_EQ(chosen->count(), 1);
    EXPECT_EQ(picker->value(), QDate(2026, 12, 24));

    type(u"01.02.2027"_s);
    before->setFocus();
    EXPECT_EQ(chosen->count(), 2);
    EXPECT_EQ(picker->value(), QDate(2027, 2, 1));
}

TEST_F(Picker, DatesAreTypedWithOrWithoutMarksAndWithShortParts)
{
    const std::pair<QString, QDate> dates[] = {
        {u"24122026"_s, QDate(2026, 12, 24)}, {u"24.12.2026"_s, QDate(2026, 12, 24)},
        {u"1.2.2027"_s, QDate(2027, 2, 1)},   {u"01,02,2027"_s, QDate(2027, 2, 1)},
        {u"1-2-27"_s, QDate(2027, 2, 1)},     {u"24.12.26"_s, QDate(2026, 12, 24)},
        {u"3"_s, QDate(2026, 5, 3)},
    };
    for (const auto &[typed, date] : dates) {
        picker->setValue(QDate(2026, 5, 17));
        type(typed);
        QTest::keyClick(picker, Qt::Key_Return);
        EXPECT_EQ(picker->value().toString(Qt::ISODate), date.toString(Qt::ISODate))
            << typed.toStdString();
    }
}

// The days on which clocks change somewhere: Oslo, New York, Auckland, and Santiago, where one of
// them has no midnight. Each of them is a day like others in every zone.
TEST_F(Picker, ADayOnWhichTheClocksChangeStaysThatDay)
{
    const QDate days[] = {QDate(2026, 3, 29), QDate(2026, 10, 25), QDate(2026, 3, 8),
                          QDate(2026, 11, 1), QDate(2026, 4, 5),   QDate(2026, 9, 27),
                          QDate(2026, 9, 6),  QDate(2027, 3, 28)};
    for (const QDate day : days) {
        SCOPED_TRACE(day.toString(Qt::ISODate).toStdString());
        type(day.toString(u"dd.MM.yyyy"));
        QTest::keyClick(picker, Qt::Key_Return);
        EXPECT_EQ(picker->value(), day);
        EXPECT_EQ(picker->text(), day.toString(u"dd.MM.yyyy"));
        // Enter on a date that nobody typed leaves it.
        QTest::keyClick(picker, Qt::Key_Return);
        EXPECT_EQ(picker->value(), day);
        picker->setCurrentSection(QDateTimeEdit::DaySection);
        picker->stepBy(1);
        EXPECT_EQ(picker->value(), day.addDays(1));
        picker->stepBy(-1);
        EXPECT_EQ(picker->value(), day);
    }
}

TEST_F(Picker, ATypedDayWaitsForItsMonthAndItsYear)
{
    picker->setLimits(QDate(2010, 1, 1), QDate(2027, 12, 31));
    const std::tuple<QDate, QString, QDate> dates[] = {
        {QDate(2014, 4, 9), u"31.12.2014"_s, QDate(2014, 12, 31)},
        {QDate(2014, 4, 9), u"31122014"_s, QDate(2014, 12, 31)},
        {QDate(2014, 2, 9), u"31-1-15"_s, QDate(2015, 1, 31)},
        {QDate(2015, 5, 10), u"29.02.2016"_s, QDate(2016, 2, 29)},
        {QDate(2015, 5, 10), u"29.2.16"_s, QDate(2016, 2, 29)},
        {QDate(2016, 2, 29), u"31.03.2015"_s, QDate(2015, 3, 31)},
    };
    for (const auto &[before_, typed, date] : dates) {
        picker->setValue(before_);
        chosen->clear();
        type(typed);
        QTest::keyClick(picker, Qt::Key_Return);
        EXPECT_EQ(picker->value().toString(Qt::ISODate), date.toString(Qt::ISODate))
            << typed.toStdString();
        EXPECT_EQ(picker->text(), date.toString(u"dd.MM.yyyy"_s));
        EXPECT_EQ(chosen->count(), 1);
    }
}

TEST_F(Picker, ATypedDayIsCutAtTheEndWhenItsMonthIsTooShort)
{
    type(u"31.02.2027"_s);
    EXPECT_EQ(picker->text(), u"31.02.2027"_s);
    QTest::keyClick(picker, Qt::Key_Return);
    EXPECT_EQ(picker->value(), QDate(2027, 2, 28));
    EXPECT_EQ(picker->text(), u"28.02.2027"_s);

    picker->setValue(QDate(2026, 4, 9));
    type(u"31"_s);
    before->setFocus();
    EXPECT_EQ(picker->value(), QDate(2026, 4, 30)) << "the month that stands is the last word";
    EXPECT_EQ(picker->text(), u"30.04.2026"_s);
}

TEST_F(Picker, ADigitThatNoOtherCanFollowMovesOn)
{
    type(u"4"_s);
    EXPECT_EQ(picker->text(), u"04.05.2026"_s);
    QTest::keyClicks(picker, u"22027"_s);
    QTest::keyClick(picker, Qt::Key_Return);
    EXPECT_EQ(picker->value(), QDate(2027, 2, 4));
    // February has no day in the thirties, but the day is typed before its month.
    picker->setValue(QDate(2026, 2, 10));
    type(u"3.12"_s);
    QTest::keyClick(picker, Qt::Key_Return);
    EXPECT_EQ(picker->value(), QDate(2026, 12, 3));
}

TEST_F(Picker, NothingIsToldWhileADateIsTyped)
{
    for (const QString &date : {u"1.2.2027"_s, u"31.4.2027"_s, u"5-6-26"_s}) {
        picker->setValue(QDate(2026, 5, 17));
        type(date);
        EXPECT_EQ(chosen->count(), 0) << date.toStdString();
        EXPECT_EQ(picker->value(), QDate(2026, 5, 17)) << date.toStdString();
        QTest::keyClick(picker, Qt::Key_Return);
        EXPECT_EQ(chosen->count(), 1) << date.toStdString();
        chosen->clear();
    }
}

TEST_F(Picker, MovingAboutInATypedDateChangesNothingOfIt)
{
    picker->setValue(QDate(2026, 4, 9));
    type(u"31"_s);
    for (const Qt::Key key : {Qt::Key_End, Qt::Key_Home, Qt::Key_Right, Qt::Key_Right,
                              Qt::Key_Right, Qt::Key_Right, Qt::Key_Left})
        QTest::keyClick(picker, key);
    EXPECT_EQ(picker->text(), u"31.04.2026"_s);
    EXPECT_EQ(chosen->count(), 0);
    picker->setSelectedSection(QDateTimeEdit::MonthSection);
    QTest::keyClicks(picker, u"12"_s);
    before->setFocus();
    EXPECT_EQ(picker->value(), QDate(2026, 12, 31));
    EXPECT_EQ(chosen->count(), 1);
}

TEST_F(Picker, ATypedPartMayBeTakenBack)
{
    picker->setValue(QDate(2026, 4, 9));
    type(u"31"_s);
    QTest::keyClick(picker, Qt::Key_Backspace);
    EXPECT_EQ(picker->text(), u"31..2026"_s);
    QTest::keyClick(picker, Qt::Key_Backspace);
    EXPECT_EQ(picker->text(), u"31..2026"_s) << "the marks stay";
    QTest::keyClicks(picker, u"13"_s);
    EXPECT_EQ(picker->text(), u"31.1.2026"_s) << "there is no such month";
    QTest::keyClicks(picker, u"2"_s);
    QTest::keyClick(picker, Qt::Key_Return);
    EXPECT_EQ(picker->value(), QDate(2026, 12, 31));
}

TEST_F(Picker, APartThatIsLeftEmptyRefusesTheDate)
{
    type(u"31"_s);
    QTest::keyClick(picker, Qt::Key_Delete);
    before->setFocus();
    EXPECT_EQ(picker->value(), QDate(2026, 5, 17));
    EXPECT_EQ(picker->text(), u"17.05.2026"_s);
    EXPECT_EQ(chosen->count(), 0);
}

TEST_F(Picker, EscapeDropsWhatIsTypedAndGoesOnToTheForm)
{
    type(u"31.12"_s);
    form->takeEvents();
    QTest::keyClick(picker, Qt::Key_Escape);
    EXPECT_EQ(form->takeEvents(), QStringList{u"key"_s});
    EXPECT_EQ(picker->text(), u"17.05.2026"_s);
    before->setFocus();
    EXPECT_EQ(picker->value(), QDate(2026, 5, 17));
    EXPECT_EQ(chosen->count(), 0);
}

TEST_F(Picker, AnArrowKeyStepsFromTheTypedDate)
{
    picker->setValue(QDate(2026, 4, 9));
    type(u"31.12"_s);
    QTest::keyClick(picker, Qt::Key_Up);
    EXPECT_EQ(picker->value(), QDate(2027, 12, 31)) << "the year is next";
    EXPECT_EQ(picker->text(), u"31.12.2027"_s);
}

TEST_F(Picker, ADateIsTypedThroughDatesOutsideTheLimits)
{
    picker->setLimits(QDate(2026, 3, 10), QDate(2026, 11, 20));
    picker->setValue(QDate(2026, 3, 15));
    type(u"05.11.2026"_s);
    QTest::keyClick(picker, Qt::Key_Return);
    EXPECT_EQ(picker->value(), QDate(2026, 11, 5));
    type(u"25.04.2026"_s);
    QTest::keyClick(picker, Qt::Key_Return);
    EXPECT_EQ(picker->value(), QDate(2026, 4, 25));
}

TEST_F(Picker, TheProgramsDateTakesTheTypedOnesPlace)
{
    type(u"31.12"_s);
    picker->setValue(QDate(2027, 3, 8));
    EXPECT_EQ(picker->text(), u"08.03.2027"_s);
    before->setFocus();
    EXPECT_EQ(picker->value(), QDate(2027, 3, 8));
    EXPECT_EQ(chosen->count(), 0);
}

TEST_F(Picker, TheCalendarOpensOnTheTypedDate)
{
    picker->setValue(QDate(2026, 4, 9));
    type(u"31.12"_s);
    QTest::keyClick(picker, Qt::Key_F4);
    ASSERT_NE(QApplication::activePopupWidget(), nullptr);
    EXPECT_EQ(chosen->count(), 1);
    EXPECT_EQ(picker->calendarWidget()->selectedDate(), QDate(2026, 12, 31));
    QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Escape);
    runEvents();
    EXPECT_EQ(picker->text(), u"31.12.2026"_s);
}

TEST_F(Picker, ATypedDateOutsideTheLimitsIsRefused)
{
    for (const QString &date : {u"31.12.2025"_s, u"01.01.2028"_s, u"24.12.30"_s}) {
        type(date);
        before->setFocus();
        EXPECT_EQ(picker->value(), QDate(2026, 5, 17)) << date.toStdString();
        EXPECT_EQ(picker->text(), u"17.05.2026"_s);
    }
    EXPECT_EQ(chosen->count(), 0);
}

TEST_F(Picker, TypingOverTheWholeSelectedDateBeginsAtItsDay)
{
    picker->setFocus();
    picker->selectAll();
    QTest::keyClicks(picker, u"24.12.2026"_s);
    QTest::keyClick(picker, Qt::Key_Return);
    EXPECT_EQ(picker->value(), QDate(2026, 12, 24));
}

TEST_F(Picker, ArrowKeysChoose)
{
    picker->setFocus();
    QTest::keyClick(picker, Qt::Key_Up);
    EXPECT_EQ(picker->value(), QDate(2026, 5, 18));
    EXPECT_EQ(chosen->count(), 1);
}

TEST_F(Picker, ADateOfTheCalendarIsChosenOnce)
{
    openCalendar();
    chooseInCalendar(20);
    EXPECT_EQ(picker->value(), QDate(2026, 5, 20));
    EXPECT_EQ(chosen->count(), 1);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}

TEST_F(Picker, ChoosingTheShownDateOfTheCalendarCountsToo)
{
    openCalendar();
    chooseInCalendar(17);
    EXPECT_EQ(picker->value(), QDate(2026, 5, 17));
    EXPECT_EQ(chosen->count(), 1);
}

TEST_F(Picker, OneClickOnTheShownDateOfTheCalendarChoosesIt)
{
    openCalendar();
    const auto *view = picker->calendarWidget()->findChild<QTableView *>();
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {},
                      view->visualRect(view->currentIndex()).center());
    runEvents();
    EXPECT_EQ(picker->value(), QDate(2026, 5, 17));
    EXPECT_EQ(chosen->count(), 1);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}

TEST_F(Picker, ClosingTheCalendarWithoutAChoiceIsNoChoice)
{
    openCalendar();
    QTest::keyClick(picker->calendarWidget()->findChild<QTableView *>(), Qt::Key_Right);
    QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Escape);
    runEvents();
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    EXPECT_EQ(picker->value(), QDate(2026, 5, 17));
    EXPECT_EQ(chosen->count(), 0);
}

TEST_F(Picker, GettingTheFocusIsEntering)
{
    QTest::keyClick(before, Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), picker);
    EXPECT_EQ(entered->count(), 1);
    EXPECT_EQ(chosen->count(), 0);
}

TEST_F(Picker, TheCalendarShowsTheValueThatEnteringSets)
{
    QObject::connect(picker, &DTPicker::entered, picker,
                     [this] { picker->setValue(QDate(2027, 3, 8)); });
    openCalendar();
    EXPECT_GE(entered->count(), 1);
    EXPECT_EQ(picker->calendarWidget()->selectedDate(), QDate(2027, 3, 8));
}

TEST_F(Picker, ComingBackFromTheCalendarIsNoEntering)
{
    openCalendar();
    const qsizetype before_ = entered->count();
    chooseInCalendar(20);
    EXPECT_EQ(entered->count(), before_);
}

TEST_F(Picker, F4AndAltDownDropTheCalendarDown)
{
    picker->setFocus();
    for (const auto &[key, modifiers] :
         {std::pair(Qt::Key_F4, Qt::NoModifier), std::pair(Qt::Key_Down, Qt::AltModifier)}) {
        entered->clear();
        QTest::keyClick(picker, key, modifiers);
        ASSERT_NE(QApplication::activePopupWidget(), nullptr) << key;
        EXPECT_EQ(entered->count(), 1);
        QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Escape);
        runEvents();
    }
}

TEST_F(Picker, TheCalendarBeginsOnMondayOnAnyMachine)
{
    const QLocale machine;
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    {
        const DTPicker american;
        EXPECT_EQ(american.calendarWidget()->firstDayOfWeek(), Qt::Monday);
    }
    QLocale::setDefault(machine);
}

TEST_F(Picker, TheCalendarKeepsToTheLimitsAndSpeaksNorwegian)
{
    const QCalendarWidget *calendar = picker->calendarWidget();
    openCalendar();
    EXPECT_EQ(calendar->minimumDate(), QDate(2026, 1, 1));
    EXPECT_EQ(calendar->maximumDate(), QDate(2027, 12, 31));
    EXPECT_EQ(calendar->firstDayOfWeek(), Qt::Monday);
    EXPECT_EQ(calendar->locale().monthName(5), u"mai"_s);
    EXPECT_EQ(calendar->locale().dayName(7), u"søndag"_s);
    const auto *view = calendar->findChild<QTableView *>();
    for (int column = 0; column < view->model()->columnCount(); ++column) {
        const QString name = view->model()->index(0, column).data().toString();
        EXPECT_LT(view->fontMetrics().horizontalAdvance(name), view->columnWidth(column))
            << name.toStdString();
    }
    QApplication::activePopupWidget()->close();
}

TEST_F(Picker, AWheelThatPassesOverLeavesTheDateAndTheFocus)
{
    const auto turn = [&] {
        QWheelEvent wheel(QPointF(15, 13), picker->mapToGlobal(QPointF(15, 13)), {},
                          QPoint(0, -120), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(picker, &wheel);
    };
    turn();
    EXPECT_EQ(picker->value(), QDate(2026, 5, 17));
    EXPECT_EQ(chosen->count(), 0);
    EXPECT_EQ(entered->count(), 0);
    EXPECT_TRUE(before->hasFocus());
    picker->setFocus(Qt::TabFocusReason);
    turn();
    EXPECT_NE(picker->value(), QDate(2026, 5, 17));
    EXPECT_EQ(chosen->count(), 1);
}

TEST_F(Picker, AStepFromOutsideGoesInFirst)
{
    QObject::connect(picker, &DTPicker::entered, picker,
                     [this] { picker->setValue(QDate(2026, 11, 23)); });
    picker->stepBy(1); // as assistive technology does it
    EXPECT_EQ(entered->count(), 1);
    EXPECT_EQ(chosen->count(), 1);
    EXPECT_EQ(picker->value(), QDate(2026, 11, 24));
}

TEST_F(Picker, AFocusThatComesWithTheWindowIsAnEnteringTheFirstTime)
{
    QWidget other;
    other.show();
    other.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    picker->setFocus();
    EXPECT_EQ(entered->count(), 0);
    form->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(form));
    EXPECT_EQ(entered->count(), 1);

    other.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    form->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(form));
    EXPECT_EQ(entered->count(), 1) << "the user has not left it";
}

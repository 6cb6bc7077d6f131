#include "platform/forms/DTPicker.h"

#include "runtime/RunTimeError.h"

#include <QCalendarWidget>
#include <QKeyEvent>
#include <QLineEdit>
#include <QScopedValueRollback>
#include <QStyleOptionComboBox>
#include <QTextCharFormat>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr int kOutsideLimits = 35773;

void dressCalendar(QCalendarWidget &calendar)
{
    calendar.setFirstDayOfWeek(Qt::Monday); // by itself that of the machine
    // By itself it makes its columns too narrow for the names of the days.
    constexpr int kDays = 7;
    constexpr int kColumnMargin = 14;
    const int nameWidth = calendar.fontMetrics().horizontalAdvance(u"man."_s);
    calendar.setMinimumWidth(kDays * (nameWidth + kColumnMargin));
    // A Saturday is no red-letter day in Norway.
    calendar.setWeekdayTextFormat(Qt::Saturday, calendar.weekdayTextFormat(Qt::Friday));
}

} // namespace

DTPicker::DTPicker(QWidget *parent) : QDateEdit(parent)
{
    setLocale(QLocale(QLocale::NorwegianBokmal, QLocale::Norway));
    setDisplayFormat(u"dd.MM.yyyy"_s);
    setCalendarPopup(true);
    setKeyboardTracking(false);
    // The base class lets the value follow every move in the open calendar.
    disconnect(calendarWidget(), &QCalendarWidget::selectionChanged, nullptr, nullptr);
    connect(this, &QDateEdit::dateChanged, this, &DTPicker::tellChoice);
    dressCalendar(*calendarWidget());
    connect(calendarWidget(), &QCalendarWidget::clicked, this, &DTPicker::pickedInCalendar);
    connect(calendarWidget(), &QCalendarWidget::activated, this, &DTPicker::pickedInCalendar);
}

void DTPicker::setValue(QDate value)
{
    if (!value.isValid())
        throw RunTimeError(errors::kTypeMismatch);
    if (value < minimumDate() || value > maximumDate())
        throw RunTimeError(kOutsideLimits, u"Datoen er utenfor grensene for datofeltet"_s);
    const QScopedValueRollback byCode(m_byCode, true);
    setDate(value);
}

void DTPicker::setLimits(QDate lowest, QDate highest)
{
    const QScopedValueRollback byCode(m_byCode, true);
    setDateRange(lowest, highest);
}

void DTPicker::focusInEvent(QFocusEvent *event)
{
    // Coming back from the calendar or from another window is no entering.
    if (event->reason() != Qt::PopupFocusReason && event->reason() != Qt::ActiveWindowFocusReason)
        Q_EMIT entered();
    QDateEdit::focusInEvent(event);
}

void DTPicker::focusOutEvent(QFocusEvent *event)
{
    judgeTyped();
    QDateEdit::focusOutEvent(event);
}

void DTPicker::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        judgeTyped();
    const bool altDown = event->key() == Qt::Key_Down && event->modifiers() == Qt::AltModifier;
    if (altDown || event->key() == Qt::Key_F4) {
        dropDown();
        return;
    }
    const QString typed = event->text();
    if (typed.size() == 1 && u".,/-"_s.contains(typed[0])) {
        // The second digit of a day or a month has moved on by itself.
        if (!std::exchange(m_movedOn, false)) {
            QKeyEvent point(QEvent::KeyPress, Qt::Key_Period, Qt::NoModifier, u"."_s);
            QDateEdit::keyPressEvent(&point);
        }
        return;
    }
    const bool isDigit = typed.size() == 1 && typed[0].isDigit();
    // Typing over the whole date begins at its beginning.
    if (isDigit && lineEdit()->selectedText() == text())
        setSelectedSection(DaySection);
    const Section section = currentSection();
    QDateEdit::keyPressEvent(event);
    m_movedOn = isDigit && currentSection() != section;
}

void DTPicker::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton && arrow().contains(event->pos())) {
        m_choiceTold = false;
        Q_EMIT entered();
    }
    QDateEdit::mousePressEvent(event);
}

void DTPicker::tellChoice()
{
    m_choiceTold = true;
    if (!m_byCode)
        Q_EMIT dateChosen();
}

QRect DTPicker::arrow() const
{
    // The style draws a picker with a calendar as a combo box.
    QStyleOptionComboBox option;
    option.initFrom(this);
    option.editable = true;
    option.frame = hasFrame();
    option.subControls = QStyle::SC_All;
    return style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxArrow, this);
}

void DTPicker::dropDown()
{
    // The base class opens its calendar on a press of the arrow and in no other way.
    const QPointF at = arrow().center();
    QMouseEvent press(QEvent::MouseButtonPress, at, mapToGlobal(at), Qt::LeftButton, Qt::LeftButton,
                      Qt::NoModifier);
    mousePressEvent(&press);
}

void DTPicker::judgeTyped()
{
    // The base class takes the nearest date that it allows for a text that is none; here such a
    // text is refused, but for a year of two digits, which is one of this century.
    constexpr int kCentury = 2000;
    const QStringList parts = text().split(u'.');
    int year = parts.value(2).toInt();
    if (parts.value(2).size() <= 2)
        year += kCentury;
    const QDate typed(year, parts.value(1).toInt(), parts.value(0).toInt());
    const bool isInside = typed.isValid() && typed >= minimumDate() && typed <= maximumDate();
    const QString judged = (isInside ? typed : value()).toString(displayFormat());
    if (judged != text())
        lineEdit()->setText(judged);
}

void DTPicker::pickedInCalendar()
{
    if (!m_choiceTold)
        tellChoice();
}

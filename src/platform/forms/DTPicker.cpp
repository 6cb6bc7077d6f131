#include "platform/forms/DTPicker.h"

#include "runtime/RunTimeError.h"

#include <QCalendarWidget>
#include <QKeyEvent>
#include <QLineEdit>
#include <QScopedValueRollback>
#include <QStyleOptionComboBox>
#include <QTextCharFormat>

#include <algorithm>
#include <iterator>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr int kOutsideLimits = 35773;

constexpr QChar kMark = u'.';
/// The parts of a date, in the order in which they are shown: their digits, and the highest number,
/// which a part that is typed in full has to keep to.
struct Part
{
    qsizetype digits;
    int highest;
};
constexpr Part kParts[] = {{2, 31}, {2, 12}, {4, 9999}};

/// Whether `text` may come to stand for a part.
bool isTyped(const QString &text, const Part &part)
{
    const auto isDigit = [](QChar c) { return c >= u'0' && c <= u'9'; };
    if (text.size() > part.digits || !std::all_of(text.begin(), text.end(), isDigit))
        return false;
    return text.size() < part.digits || (text.toInt() >= 1 && text.toInt() <= part.highest);
}

/// With a zero in front of a day or a month of one digit.
QString padded(const QString &text)
{
    QStringList parts = text.split(kMark);
    for (QString &part : parts) {
        if (part.size() == 1 && part != "0"_L1 && &part != &parts.back())
            part.prepend(u'0');
    }
    return parts.join(kMark);
}

/// The date of a text with all its parts, invalid for any other. A year of two digits is one of
/// this century, and a day that its month is too short for is the month's last.
QDate readDate(const QString &text)
{
    constexpr int kCentury = 2000;
    const QStringList parts = text.split(kMark);
    const int day = parts.value(0).toInt();
    int year = parts.value(2).toInt();
    if (parts.value(2).size() <= 2)
        year += kCentury;
    const QDate month(year, parts.value(1).toInt(), 1);
    return day == 0 ? QDate() : month.addDays(std::min(day, month.daysInMonth()) - 1);
}

/// Whether the focus moves for the time of an open list or menu, or of another window.
bool isForAWhile(const QFocusEvent &event)
{
    return event.reason() == Qt::PopupFocusReason || event.reason() == Qt::ActiveWindowFocusReason;
}

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
    connect(lineEdit(), &QLineEdit::textEdited, this, [this] { m_typing = true; });
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
    m_typing = false;
    setDate(value);
}

void DTPicker::setLimits(QDate lowest, QDate highest)
{
    const QScopedValueRollback byCode(m_byCode, true);
    setDateRange(lowest, highest);
}

QValidator::State DTPicker::validate(QString &text, int &pos) const
{
    QStringList parts = text.split(kMark);
    if (parts.size() != std::ssize(kParts))
        return QValidator::Invalid;
    for (qsizetype i = 0; i < parts.size(); ++i) {
        if (!isTyped(parts[i], kParts[i]))
            return QValidator::Invalid;
    }
    if (!m_typing)
        return QValidator::Acceptable;
    // Typing moves on from a part that is full, or that another digit would make too high.
    const qsizetype at = QStringView(text).first(pos).count(kMark);
    if (parts[at].size() == 1 && parts[at].toInt() * 10 > kParts[at].highest) {
        text = padded(text);
        ++pos;
        return QValidator::Acceptable;
    }
    return parts[at].size() < kParts[at].digits ? QValidator::Intermediate : QValidator::Acceptable;
}

QDateTime DTPicker::dateTimeFromText(const QString &text) const
{
    const QDate typed = m_typing ? QDate() : readDate(text);
    const bool isInside = typed.isValid() && typed >= minimumDate() && typed <= maximumDate();
    // The field's own kind of time is kept: local midnight would be the day before in a field of
    // UTC.
    QDateTime moment = dateTime();
    if (isInside)
        moment.setDate(typed);
    return moment;
}

QString DTPicker::textFromDateTime(const QDateTime &dateTime) const
{
    return m_typing ? padded(text()) : QDateEdit::textFromDateTime(dateTime);
}

void DTPicker::stepBy(int steps)
{
    // A step that comes past the focus, as from assistive technology, is an entering too: else it
    // would start from a value that has nothing to do with what the picker is for.
    if (!hasFocus())
        Q_EMIT entered();
    judgeTyped();
    QDateEdit::stepBy(steps);
}

void DTPicker::focusInEvent(QFocusEvent *event)
{
    // Coming back from the calendar or from another window is no entering; but the window may have
    // been left with the focus elsewhere.
    if (!std::exchange(m_inside, true) || !isForAWhile(*event))
        Q_EMIT entered();
    QDateEdit::focusInEvent(event);
}

void DTPicker::focusOutEvent(QFocusEvent *event)
{
    judgeTyped();
    m_inside = isForAWhile(*event);
    QDateEdit::focusOutEvent(event);
}

void DTPicker::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        m_typing = false;
    if (event->key() == Qt::Key_Escape && std::exchange(m_typing, false))
        setDate(value());
    if (dropsDown(*event)) {
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
    m_typing = m_typing || isDigit;
    QDateEdit::keyPressEvent(event);
    m_movedOn = isDigit && currentSection() != section;
}

void DTPicker::mousePressEvent(QMouseEvent *event)
{
    // The base class drops the calendar down under any button.
    if (event->button() != Qt::LeftButton)
        return;
    if (arrow().contains(event->pos())) {
        judgeTyped();
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

bool DTPicker::dropsDown(const QKeyEvent &event)
{
    return event.keyCombination() == QKeyCombination(Qt::Key_F4) ||
           event.keyCombination() == (Qt::ALT | Qt::Key_Down);
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
    if (std::exchange(m_typing, false))
        interpretText();
}

void DTPicker::pickedInCalendar()
{
    if (!m_choiceTold)
        tellChoice();
}

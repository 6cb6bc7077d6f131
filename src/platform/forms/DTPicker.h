#pragma once

#include <QDateEdit>

/// A date picker: a field for a date, shown as "dd.mm.yyyy", with a calendar that drops down.
///
/// Its events are of two kinds. `dateChosen` tells that the user has chosen a date, by the calendar
/// (also the date that stood there), by typing or by the arrow keys and the wheel; a typed date
/// counts when the field is left or Enter is pressed, and Escape drops it. `entered` tells that the
/// user goes into the picker, is about to open its calendar or takes a step from outside. Setting
/// value and limits by the functions of this class raises neither. Day, month and year are typed
/// with or without marks between them, the year with two digits or four. Until it counts, a typed
/// date stands as it is typed and the value does not follow; then a day beyond the end of its month
/// becomes the month's last, and a date outside the limits is refused: the picker keeps its value.
///
/// The calendar drops down on a click on the arrow, F4 and Alt+Down.
class DTPicker : public QDateEdit
{
    Q_OBJECT

public:
    explicit DTPicker(QWidget *parent = nullptr);

    [[nodiscard]] QDate value() const { return date(); }
    /// Error 13 for an invalid date, 35773 for one outside the limits; the picker keeps its value
    /// then.
    void setValue(QDate value);

    /// The lowest and the highest date, both allowed. A value outside the new limits becomes the
    /// nearest one inside them.
    void setLimits(QDate lowest, QDate highest);

    void stepBy(int steps) override;

    /// Opens the calendar, as a click on the arrow does.
    void dropDown();
    /// Whether the key opens a calendar: F4 and Alt+Down.
    [[nodiscard]] static bool dropsDown(const QKeyEvent &event);

Q_SIGNALS:
    void dateChosen();
    void entered();

protected:
    // While a date is typed, the base class sees a text that fits its form and a value that stays.
    QValidator::State validate(QString &text, int &pos) const override;
    QDateTime dateTimeFromText(const QString &text) const override;
    QString textFromDateTime(const QDateTime &dateTime) const override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;

private:
    [[nodiscard]] QRect arrow() const;
    /// Lets the typed date count, if there is one.
    void judgeTyped();
    void pickedInCalendar();
    void tellChoice();

    bool m_byCode = false;
    bool m_inside = false;     ///< the user has gone in and not left again
    bool m_typing = false;     ///< what is shown has been typed and does not count yet
    bool m_choiceTold = false; ///< since the calendar was opened
    bool m_movedOn = false;    ///< the last digit typed has moved on to the next part of the date
};

#include "host/guide/ScreenGuide.h"

#include "host/guide/Hands.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QTimer>

#include <chrono>
#include <exception>

using namespace Qt::StringLiterals;

namespace screentour {

namespace {

constexpr int kPatience = 5000; // milliseconds for a window to come or go
constexpr int kMoment = 1000;   // milliseconds for a window to get the keyboard
constexpr std::chrono::milliseconds kGlance{10};

[[noreturn]] void stop(const QString &why)
{
    throw ScreenError(why);
}

/// The visible widget of that name inside `window`, or the visible window itself when that is null.
QWidget *visible(const QString &name, const QWidget *window = nullptr)
{
    for (QWidget *widget : QApplication::allWidgets()) {
        if (widget->objectName() == name && widget->isVisible() &&
            (window ? widget->window() == window : widget->isWindow()))
            return widget;
    }
    return nullptr;
}

template<class Class, class Widget>
auto &as(Widget &widget, QStringView kind)
{
    auto *found = qobject_cast<Class *>(&widget);
    if (!found)
        stop(u"%1 er ikke %2"_s.arg(widget.objectName(), kind));
    return *found;
}

/// The grid, in which that cell must be.
template<class Widget>
auto &gridWith(Widget &grid, int row, int col)
{
    using View =
        std::conditional_t<std::is_const_v<Widget>, const QAbstractItemView, QAbstractItemView>;
    View &view = as<View>(grid, u"et rutenett");
    if (!view.model()->hasIndex(row - 1, col - 1))
        stop(u"%1 har ikke rad %2, kolonne %3"_s.arg(grid.objectName()).arg(row).arg(col));
    return view;
}

/// Where the screen has put the focus; `fallback` while the window system gives none.
QWidget &focused(QWidget &fallback)
{
    QWidget *widget = QApplication::focusWidget();
    return widget ? *widget : fallback;
}

void bringToFront(const QWidget &widget)
{
    if (!widget.isEnabled())
        stop(u"%1 er sperret"_s.arg(widget.objectName()));
    QWidget &window = *widget.window();
    window.activateWindow();
    QCoreApplication::processEvents();
    // A desktop gives it the keyboard a moment later; where nobody manages windows, never.
    static_cast<void>(QTest::qWaitFor([&] { return window.isActiveWindow(); }, kMoment));
}

/// Takes a window down that nobody answers, so that the one who waits for it goes on.
void dismiss(QWidget &window)
{
    if (auto *box = qobject_cast<QMessageBox *>(&window))
        box->buttons().constFirst()->click();
    else
        window.close();
}

/// What stands in a window that was not expected.
QString contentOf(const QWidget &window)
{
    const auto *box = qobject_cast<const QMessageBox *>(&window);
    return box ? box->text().simplified() : window.objectName();
}

/// Sees a window come, however short it stands.
class Arrival : public QObject
{
public:
    explicit Arrival(const QString &name) : m_name(name) { qApp->installEventFilter(this); }

    [[nodiscard]] bool seen() const { return m_seen; }

    bool eventFilter(QObject *object, QEvent *event) override
    {
        if (event->type() == QEvent::Show && object->isWidgetType() &&
            object->objectName() == m_name)
            m_seen = true;
        return false;
    }

private:
    const QString m_name;
    bool m_seen = false;
};

void pick(QComboBox &combo, const QString &text)
{
    const int wanted = combo.findText(text);
    if (wanted < 0)
        stop(u"%1 har ikke valget %2"_s.arg(combo.objectName(), text));
    hands::pick(combo, wanted);
}

} // namespace

Guide::Guide(QString folder, const Say &say) : m_folder(std::move(folder)), m_say(say) {}

QWidget &Guide::window(const QString &name)
{
    QWidget *found = nullptr;
    if (!QTest::qWaitFor([&] { return (found = visible(name)) != nullptr; }, kPatience))
        stop(u"skjermbildet %1 kom ikke fram"_s.arg(name));
    return *found;
}

QWidget &Guide::control(const QWidget &window, const QString &name)
{
    QWidget *found = visible(name, &window);
    if (!found)
        stop(u"%1 har ikke kontrollen %2"_s.arg(window.objectName(), name));
    return *found;
}

QString Guide::cell(const QWidget &grid, int row, int col)
{
    return hands::textAt(gridWith(grid, row, col), col, row);
}

int Guide::rowOf(const QWidget &grid, int col, const QString &text)
{
    const int rows = as<const QAbstractItemView>(grid, u"et rutenett").model()->rowCount();
    for (int row = 1; row <= rows; ++row) {
        if (cell(grid, row, col) == text)
            return row;
    }
    stop(u"%1 har ingen rad med %2"_s.arg(grid.objectName(), text));
}

void Guide::click(QWidget &control)
{
    bringToFront(control);
    perform([&] { hands::click(control); });
}

void Guide::key(QWidget &control, QKeyCombination key)
{
    bringToFront(control);
    perform([&] { QTest::keyClick(&control, key.key(), key.keyboardModifiers()); });
}

void Guide::type(QWidget &control, const QString &text)
{
    click(control);
    QWidget &field = focused(control);
    perform([&] { QTest::keyClick(&field, Qt::Key_A, Qt::ControlModifier); });
    typeText(text);
}

void Guide::choose(QWidget &combo, const QString &text)
{
    auto &box = as<QComboBox>(combo, u"en nedtrekksliste");
    bringToFront(combo);
    perform([&] {
        combo.setFocus(Qt::MouseFocusReason);
        QTest::keyClick(&combo, Qt::Key_Down, Qt::AltModifier);
        pick(box, text);
    });
}

void Guide::chooseTab(QWidget &tabs, const QString &text)
{
    QTabBar &bar = *as<QTabWidget>(tabs, u"en fanelinje").tabBar();
    bringToFront(bar);
    for (int i = 0; i < bar.count(); ++i) {
        if (bar.tabText(i).remove(u'&') == text) {
            perform([&] { hands::clickTab(bar, i + 1); });
            return;
        }
    }
    stop(u"%1 har ikke fanen %2"_s.arg(tabs.objectName(), text));
}

void Guide::clickCell(QWidget &grid, int row, int col)
{
    QAbstractItemView &view = gridWith(grid, row, col);
    bringToFront(grid);
    perform([&] { hands::clickCell(view, col, row); });
}

void Guide::doubleClickCell(QWidget &grid, int row, int col)
{
    QAbstractItemView &view = gridWith(grid, row, col);
    bringToFront(grid);
    perform([&] { hands::doubleClickCell(view, col, row); });
}

void Guide::typeInCell(QWidget &grid, int row, int col, const QString &text)
{
    clickCell(grid, row, col);
    perform([&] {
        // A click may have begun the editing already.
        if (!qobject_cast<QLineEdit *>(QApplication::focusWidget()))
            QTest::keyClick(&focused(grid), Qt::Key_F2);
        QTest::keyClick(&focused(grid), Qt::Key_A, Qt::ControlModifier);
    });
    typeText(text);
    perform([&] { QTest::keyClick(&focused(grid), Qt::Key_Return); });
}

void Guide::chooseInCell(QWidget &grid, int row, int col, const QString &text)
{
    clickCell(grid, row, col);
    perform([&] {
        // A click may have opened the list already.
        if (!grid.findChild<QComboBox *>())
            QTest::keyClick(&focused(grid), Qt::Key_Down, Qt::AltModifier);
        const QPointer<QComboBox> list = grid.findChild<QComboBox *>();
        if (!list)
            stop(u"%1 har ingen liste i rad %2, kolonne %3"_s.arg(grid.objectName())
                     .arg(row)
                     .arg(col));
        pick(*list, text);
        QCoreApplication::processEvents();
        if (list)
            QTest::keyClick(list.data(), Qt::Key_Return);
    });
}

void Guide::close(QWidget &window)
{
    const QString name = window.objectName();
    perform([&] { window.close(); });
    expectClosed(name);
}

void Guide::expectClosed(const QString &name)
{
    if (!QTest::qWaitFor([&] { return visible(name) == nullptr; }, kPatience))
        stop(u"skjermbildet %1 lukket seg ikke"_s.arg(name));
}

void Guide::note(const QString &name, const Action &shows)
{
    const Arrival arrival(name);
    perform(shows);
    if (!QTest::qWaitFor([&] { return arrival.seen(); }, kPatience))
        stop(u"skjermbildet %1 kom ikke fram"_s.arg(name));
    if (QWidget *standing = visible(name))
        standing->close();
}

void Guide::modal(const QString &name, const Action &opens,
                  const std::function<void(QWidget &)> &answers)
{
    bool answered = false;
    std::exception_ptr failure; // none may cross the event loop that the window lives in
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, [&] {
        const QPointer<QWidget> found = visible(name);
        if (!found)
            return;
        watch.stop();
        answered = true;
        try {
            answers(*found);
            if (found && found->isVisible())
                stop(u"skjermbildet %1 ble ikke lukket"_s.arg(name));
        } catch (...) {
            failure = std::current_exception();
            if (found && found->isVisible())
                dismiss(*found);
        }
        m_expected.removeLast();
    });
    watch.start(kGlance);
    m_expected += name;
    try {
        perform(opens);
        // A window that leaves the action free to come back may stand a moment later.
        if (!answered && !QTest::qWaitFor([&] { return answered; }, kPatience))
            stop(u"skjermbildet %1 kom ikke fram"_s.arg(name));
    } catch (...) {
        if (!failure)
            failure = std::current_exception();
    }
    if (!answered)
        m_expected.removeLast();
    if (failure)
        std::rethrow_exception(failure);
}

QString Guide::answer(const QString &button, const Action &opens, const QString &picture)
{
    QString said;
    modal(u"MsgBox"_s, opens, [&](QWidget &window) {
        auto &box = as<QMessageBox>(window, u"en melding");
        said = box.text();
        if (!picture.isEmpty())
            this->picture(box, picture, said.simplified());
        for (QAbstractButton *choice : box.buttons()) {
            if (choice->text().remove(u'&') == button) {
                click(*choice);
                return;
            }
        }
        stop(u"meldingen har ikke knappen %1: %2"_s.arg(button, said.simplified()));
    });
    return said;
}

void Guide::saveAs(QWidget &button, const QString &name)
{
    QFile::remove(m_folder + u'/' + name);
    modal(
        u"CommonDialog"_s, [&] { click(button); },
        [&](QWidget &window) {
            auto &dialog = as<QFileDialog>(window, u"en fildialog");
            dialog.setDirectory(m_folder);
            type(control(dialog, u"fileNameEdit"_s), name);
            for (QPushButton *choice : dialog.findChildren<QPushButton *>()) {
                if (choice->isDefault()) {
                    click(*choice);
                    return;
                }
            }
            stop(u"fildialogen har ingen lagreknapp"_s);
        });
}

void Guide::picture(QWidget &window, const QString &name, const QString &told)
{
    QCoreApplication::processEvents();
    const auto number = m_pictures.size() + 1;
    const QString file = u"%1-%2.png"_s.arg(number, 2, 10, QChar(u'0')).arg(name);
    const QString path = m_folder + u'/' + file;
    if (!window.grab().save(path))
        stop(u"bildet %1 lot seg ikke skrive"_s.arg(path));
    m_pictures.push_back({file, told});
    m_say(u"%1. %2: %3"_s.arg(number).arg(told, path));
}

/// Does what a user does. A window that the module waits for and no stop expects would hold the
/// tour for ever: it is taken down, and the tour ends.
void Guide::perform(const Action &action)
{
    const QPointer<QWidget> before = QApplication::activeModalWidget();
    QString surprise;
    QTimer guard;
    QObject::connect(&guard, &QTimer::timeout, [&] {
        QWidget *now = QApplication::activeModalWidget();
        if (!now || now == before || m_expected.contains(now->objectName()))
            return;
        surprise = contentOf(*now);
        dismiss(*now);
    });
    guard.start(kGlance);
    action();
    QCoreApplication::processEvents();
    if (!surprise.isEmpty())
        stop(u"uventet melding: "_s + surprise);
}

/// Letter by letter, each to the widget that has the focus then.
void Guide::typeText(const QString &text)
{
    for (const QChar letter : text) {
        perform([&] {
            QWidget *target = QApplication::focusWidget();
            if (!target)
                stop(u"ingen kontroll tar imot \"%1\""_s.arg(text));
            hands::type(*target, letter);
        });
    }
}

} // namespace screentour

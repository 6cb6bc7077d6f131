#include "platform/forms/Form.h"

#include "platform/forms/Forms.h"
#include "platform/forms/ModalDialog.h"
#include "platform/forms/OuterRim.h"
#include "platform/forms/PassingWheel.h"
#include "platform/forms/ScrolledPage.h"
#include "platform/forms/Twips.h"
#include "runtime/RunTimeError.h"

#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QAccessibleWidget>
#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QEventLoop>
#include <QKeyEvent>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QWindow>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr int kAlreadyDisplayed = 400;
constexpr int kLongestSide = 150000; // twips, 10,000 pixels

/// Without a role of its own a window would be a widget like any other to a screen reader.
QAccessible::Role roleOf(FormKind kind)
{
    switch (kind) {
    case FormKind::Dialog:
        return QAccessible::Dialog;
    case FormKind::Note:
        return QAccessible::AlertMessage;
    case FormKind::Screen:
        break;
    }
    return QAccessible::Window;
}

/// What a control is called, by itself or by the label that leads to it.
QString nameOf(const QWidget &control, const Form &form)
{
    if (!control.accessibleName().isEmpty())
        return control.accessibleName();
    const QList<QLabel *> labels = form.findChildren<QLabel *>();
    const auto label = std::ranges::find(labels, &control, &QLabel::buddy);
    return label == labels.end() ? QString() : (*label)->text().remove(u'&');
}

/// The field inside a list or a picker takes the focus, and so does the list when it is down: that
/// is what a screen reader names then.
void nameInnerParts(const Form &form)
{
    for (QLineEdit *field : form.findChildren<QLineEdit *>()) {
        const QWidget *outer = field->parentWidget();
        if (qobject_cast<const QComboBox *>(outer) || qobject_cast<const QAbstractSpinBox *>(outer))
            field->setAccessibleName(nameOf(*outer, form));
    }
    for (const QComboBox *box : form.findChildren<QComboBox *>())
        box->view()->setAccessibleName(nameOf(*box, form));
}

/// A letter with Alt belongs to a button or to a field's caption. One that finds none, or one that
/// is disabled, would be typed where the focus is.
bool isLetterWithAlt(const QKeyEvent &key)
{
    constexpr Qt::KeyboardModifiers kAltGr = Qt::ControlModifier | Qt::AltModifier;
    const QString text = key.text();
    return (key.modifiers() & kAltGr) == Qt::AltModifier && !text.isEmpty() &&
           text.front().isPrint();
}

void clickIfPossible(QAbstractButton *button)
{
    if (button && button->isEnabled() && button->isVisible())
        button->click();
}

} // namespace

Form::Form(const QString &name, FormKind kind)
    : QWidget(nullptr, kind == FormKind::Screen ? Qt::Window : Qt::Dialog), m_kind(kind)
{
    setObjectName(name);
    setLocale(QLocale(QLocale::NorwegianBokmal, QLocale::Norway));
    ignorePassingWheel(*this);
}

Form::~Form()
{
    if (m_modalLoop)
        m_modalLoop->quit();
    Forms::instance().forget(*this);
}

void Form::load()
{
    if (m_life != Life::Made)
        return;
    m_life = Life::Loaded;
    scrollOnSmallScreen();
    // Not in the constructor: it counts for the class that the form is by then.
    QAccessible::registerAccessibleInterface(new QAccessibleWidget(this, roleOf(m_kind)));
    nameInnerParts(*this);
    Forms::instance().add(*this);
    for (QPushButton *button : findChildren<QPushButton *>())
        connect(button, &QAbstractButton::pressed, button, [button] { button->setFocus(); });
    atOuterRim([this] { onLoad(); });
}

void Form::setVisible(bool visible)
{
    if (!visible) {
        QWidget::setVisible(false);
        return;
    }
    load();
    if (m_life != Life::Loaded)
        return;
    if (isVisible()) {
        if (state() == FormState::Minimised)
            setWindowState(windowState() & ~Qt::WindowMinimized);
        raise();
    } else {
        if (m_scrolled || !testAttribute(Qt::WA_Moved)) // a stored size is taken as it is
            resize(size().boundedTo(roomFor(*this)));
        if (m_kind != FormKind::Screen)
            belongToActiveWindow();
        else if (testAttribute(Qt::WA_Moved))
            comeBackOnScreen();
        QWidget::setVisible(true);
    }
    activateWindow();
    m_activationTold = !isActiveWindow();
    becomeActive();
}

void Form::showModal()
{
    if (isVisible())
        throw RunTimeError(kAlreadyDisplayed, u"Skjermbildet er allerede åpent."_s);
    setWindowModality(Qt::ApplicationModal);
    QEventLoop loop;
    m_modalLoop = &loop;
    const QPointer<Form> self = this;
    show();
    // The handlers that ran in show may have closed the form already.
    if (self && isVisible())
        loop.exec(QEventLoop::DialogExec);
    if (self) {
        m_modalLoop = nullptr;
        setWindowModality(Qt::NonModal);
    }
}

bool Form::unload(UnloadMode mode)
{
    if (m_life == Life::Unloading || m_life == Life::Unloaded)
        return true;
    if (m_life == Life::Loaded) {
        // A handler that unloads the form when asked is not asked a second time.
        if (!m_asking) {
            bool cancel = false;
            m_asking = true;
            atOuterRim([&] { onQueryUnload(cancel, mode); });
            m_asking = false;
            if (m_life == Life::Unloaded)
                return true;
            if (cancel)
                return false;
        }
        m_life = Life::Unloading;
        atOuterRim([this] { onUnload(); });
    }
    m_life = Life::Unloaded;
    Forms::instance().remove(*this);
    // Not hide: the program may end with its last window.
    if (isVisible())
        close();
    deleteAfterHandlers(this);
    return true;
}

void Form::bringToFront()
{
    raise();
    for (const QPointer<Form> &form : Forms::loaded()) {
        if (form && form != this && form->m_activationTold)
            form->m_inFront = this;
    }
}

FormState Form::state() const
{
    if (isMinimized())
        return FormState::Minimised;
    return isMaximized() ? FormState::Maximised : FormState::Normal;
}

void Form::setState(FormState state)
{
    const Qt::WindowStates others = windowState() & ~(Qt::WindowMinimized | Qt::WindowMaximized);
    setWindowState(state == FormState::Minimised   ? others | Qt::WindowMinimized
                   : state == FormState::Maximised ? others | Qt::WindowMaximized
                                                   : others);
}

QRect Form::place() const
{
    return {pixelsToTwips(x()), pixelsToTwips(y()), pixelsToTwips(width()),
            pixelsToTwips(height())};
}

void Form::setPlace(int left, int top, int width, int height)
{
    move(twipsToPixels(left), twipsToPixels(top));
    resize(twipsToPixels(std::min(width, kLongestSide)),
           twipsToPixels(std::min(height, kLongestSide)));
}

void Form::setMinimumTwips(int width, int height)
{
    setMinimumSize(twipsToPixels(width), twipsToPixels(height));
}

QSize Form::pageSize() const
{
    return m_scrolled ? m_scrolled->widget()->size() : size();
}

void Form::centreOnScreen()
{
    QRect place = frameGeometry();
    place.moveCenter(screen()->availableGeometry().center());
    move(place.topLeft());
}

void Form::announce(const QString &text)
{
    setAccessibleDescription(text);
#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)
    QAccessibleAnnouncementEvent event(this, text);
#else
    QAccessibleEvent event(this, QAccessible::Alert);
#endif
    QAccessible::updateAccessibility(&event);
}

void Form::centreOverOwner()
{
    const QWindow *handle = windowHandle();
    if (handle && handle->transientParent())
        centreOver(*this, handle->transientParent()->frameGeometry());
}

void Form::setDefaultButton(QAbstractButton *button)
{
    if (auto *former = qobject_cast<QPushButton *>(m_defaultButton))
        former->setDefault(false);
    m_defaultButton = button;
    if (auto *pushButton = qobject_cast<QPushButton *>(button))
        pushButton->setDefault(true);
}

void Form::setCommandKey(QKeyCombination key, QAbstractButton *button)
{
    m_commandKeys.push_back({key, button});
    if (button->toolTip().isEmpty())
        button->setToolTip(QKeySequence(key).toString(QKeySequence::NativeText));
}

void Form::onQueryUnload(bool &, UnloadMode) {}

bool Form::onKeyDown(Qt::Key, Qt::KeyboardModifiers)
{
    return false;
}

bool Form::event(QEvent *event)
{
    const bool handled = QWidget::event(event);
    if (event->type() == QEvent::WindowActivate) {
        if (!std::exchange(m_activationTold, false))
            becomeActive();
        if (Form *inFront = m_inFront.data())
            inFront->raise();
        m_inFront = nullptr;
    }
    return handled;
}

void Form::closeEvent(QCloseEvent *event)
{
    if (!unload(Forms::instance().isLoggingOff() ? UnloadMode::LoggingOff : UnloadMode::User))
        event->ignore();
}

bool Form::focusNextPrevChild(bool next)
{
    // Behind the command that has just been given stands, on most screens, the one that closes
    // them; the next Enter would be for that.
    const QWidget *focused = focusWidget();
    return QWidget::focusNextPrevChild(next && (!focused || focused->isEnabled()));
}

void Form::hideEvent(QHideEvent *event)
{
    QWidget::hideEvent(event);
    if (event->spontaneous())
        return;
    m_activationTold = false;
    if (m_modalLoop)
        m_modalLoop->quit();
    Forms::instance().hidden(*this);
}

void Form::keyPressEvent(QKeyEvent *event)
{
    // What reaches this place no control has wanted.
    if (event->key() == Qt::Key_Escape && m_cancelButton) {
        clickIfPossible(m_cancelButton);
    } else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        auto *focused = qobject_cast<QAbstractButton *>(focusWidget());
        clickIfPossible(focused && !focused->isCheckable() ? focused : m_defaultButton.data());
    } else {
        QWidget::keyPressEvent(event);
    }
}

void Form::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    if (m_life == Life::Loaded && !m_scrolled)
        atOuterRim([this] { onResize(); });
}

void Form::scrollOnSmallScreen()
{
    const QSize drawn = layout() ? layout()->totalMinimumSize() : QSize(0, 0);
    const QSize needed = minimumSize().expandedTo(drawn);
    const QSize room = roomFor(*this);
    if (needed.boundedTo(room) == needed)
        return;
    m_scrolled = new ScrolledPage(*this, needed);
    // A bar in one direction takes room in the other.
    const int bar = m_scrolled->verticalScrollBar()->sizeHint().width();
    const QSize bars(needed.height() > room.height() ? bar : 0,
                     needed.width() > room.width() ? bar : 0);
    setMinimumSize((needed + bars).boundedTo(room));
    connect(m_scrolled, &ScrolledPage::pageResized, this, [this] {
        if (m_life == Life::Loaded)
            atOuterRim([this] { onResize(); });
    });
}

void Form::belongToActiveWindow()
{
    const QWidget *owner = QApplication::activeWindow();
    if (!owner)
        owner = Forms::instance().active();
    winId();
    windowHandle()->setTransientParent(owner && owner != this ? owner->windowHandle() : nullptr);
    centreOverOwner();
}

/// A stored place may be that of a larger screen, and of a spoilt file one that no screen has.
void Form::comeBackOnScreen()
{
    resize(size().boundedTo(screen()->virtualSize()));
    putOnScreen(*this);
}

void Form::becomeActive()
{
    if (m_life == Life::Loaded && Forms::instance().makeActive(*this))
        atOuterRim([this] { onActivate(); });
}

bool Form::previewKey(QKeyEvent *event)
{
    bool swallowed = false;
    atOuterRim([&] { swallowed = onKeyDown(Qt::Key(event->key()), event->modifiers()); });
    return swallowed || m_life != Life::Loaded || pressCommand(event->keyCombination()) ||
           isLetterWithAlt(*event);
}

bool Form::pressCommand(QKeyCombination key)
{
    const auto command = std::ranges::find(m_commandKeys, key, &CommandKey::key);
    if (command == m_commandKeys.end())
        return false;
    const QPointer<QAbstractButton> button = command->button;
    const QPointer<QWidget> before = focusWidget();
    if (button && button->isEnabled() && button->isVisible())
        button->setFocus(Qt::ShortcutFocusReason);
    clickIfPossible(button);
    // A command that leads nowhere else leaves the user where he was, also when a message of it has
    // only just gone and the window is not active again yet.
    if (button && before && focusWidget() == button)
        before->setFocus(Qt::ShortcutFocusReason);
    return true;
}

#include "platform/forms/Forms.h"

#include "platform/forms/Form.h"
#include "platform/forms/NorwegianTexts.h"
#include "platform/forms/PassingWheel.h"

#include <QApplication>
#include <QKeyEvent>
#include <QSessionManager>

#include <algorithm>
#include <utility>

namespace {

Forms *theForms = nullptr;

/// A shortcut is looked for ahead of the press.
bool isKey(const QEvent &event)
{
    return event.type() == QEvent::ShortcutOverride || event.type() == QEvent::KeyPress ||
           event.type() == QEvent::KeyRelease;
}

} // namespace

Forms &Forms::instance()
{
    if (!theForms) {
        theForms = new Forms;
        qAddPostRoutine(deleteAll);
    }
    return *theForms;
}

Forms::Forms()
{
    installNorwegianTexts();
    qApp->installEventFilter(this);
    connect(qApp, &QGuiApplication::commitDataRequest, this, [this](QSessionManager &session) {
        if (!logOff())
            session.cancel();
    });
}

void Forms::deleteAll()
{
    if (!theForms)
        return;
    qRemovePostRoutine(deleteAll);
    const QWidgetList windows = QApplication::topLevelWidgets();
    const std::vector<QPointer<QWidget>> snapshot(windows.begin(), windows.end());
    for (const QPointer<QWidget> &window : snapshot) {
        if (auto *form = qobject_cast<Form *>(window)) {
            form->m_life = Form::Life::Unloaded;
            delete form;
        }
    }
    delete std::exchange(theForms, nullptr);
}

std::vector<QPointer<Form>> Forms::loaded()
{
    const std::vector<Form *> &forms = instance().m_loaded;
    return {forms.begin(), forms.end()};
}

Form *Forms::byName(const QString &name)
{
    const std::vector<Form *> &forms = instance().m_loaded;
    const auto found = std::find_if(forms.begin(), forms.end(),
                                    [&](const Form *form) { return form->objectName() == name; });
    return found == forms.end() ? nullptr : *found;
}

bool Forms::logOff()
{
    m_loggingOff = true;
    bool all = true;
    for (const QPointer<Form> &form : loaded()) {
        if (form && !form->unload(UnloadMode::LoggingOff))
            all = false;
    }
    m_loggingOff = false;
    return all;
}

bool Forms::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyRelease)
        m_lastKey = nullptr;
    if (endsAsPassingWheel(*watched, *event))
        return true;
    if (!event->isInputEvent() || !watched->isWidgetType())
        return false;
    const auto *receiver = static_cast<const QWidget *>(watched);
    if (isKey(*event) && isHeldFromElsewhere(*receiver, static_cast<QKeyEvent &>(*event))) {
        event->accept();
        return true;
    }
    auto *form = qobject_cast<Form *>(receiver->window());
    // What is left of a click finds nothing to press any more, so no handler begins.
    if (form && form->isUnloaded())
        return true;
    if (event->type() != QEvent::KeyPress || !isFirstReceiver(receiver, event))
        return false;
    return form && form->isLoaded() && form->previewKey(static_cast<QKeyEvent *>(event));
}

/// What a key has opened or uncovered is not for the same key while it is held down.
bool Forms::isHeldFromElsewhere(const QWidget &receiver, const QKeyEvent &key)
{
    if (key.type() == QEvent::KeyRelease) {
        m_releasedKey = key.key();
        m_releasedAt = key.timestamp();
        return false;
    }
    // X tells of a held key as of one that is let go and pressed in the same moment, which Qt sees
    // through only when both have arrived by then.
    static const bool onX = QGuiApplication::platformName() == u"xcb";
    const bool held = key.isAutoRepeat() ||
                      (onX && key.key() == m_releasedKey && key.timestamp() == m_releasedAt);
    if (!held)
        m_keyWindow = receiver.window();
    return held && m_keyWindow != receiver.window();
}

/// A key that a control does not want goes on to its parents with the same event object; the form
/// has seen it by then.
bool Forms::isFirstReceiver(const QWidget *receiver, const QEvent *event)
{
    const bool passedOn = event == m_lastKey && receiver == m_nextReceiver;
    m_lastKey = event;
    m_nextReceiver = receiver->parentWidget();
    return !passedOn;
}

void Forms::add(Form &form)
{
    m_loaded.push_back(&form);
}

void Forms::remove(Form &form)
{
    std::erase(m_loaded, &form);
}

void Forms::forget(Form &form)
{
    remove(form);
    std::erase(m_recent, &form);
    if (m_active == &form)
        m_active = nullptr;
}

void Forms::hidden(Form &form)
{
    std::erase(m_recent, &form);
    if (m_active != &form)
        return;
    m_active = nullptr;
    // Not every window system picks the window to go on with by itself. A window of the parent that
    // is active by now stays so.
    const QWidget *active = QApplication::activeWindow();
    if (active && !qobject_cast<const Form *>(active))
        return;
    const auto next = std::find_if(m_recent.rbegin(), m_recent.rend(), [](const Form *other) {
        return other->state() != FormState::Minimised;
    });
    if (next != m_recent.rend())
        (*next)->activateWindow();
}

bool Forms::makeActive(Form &form)
{
    std::erase(m_recent, &form);
    m_recent.push_back(&form);
    return std::exchange(m_active, &form) != &form;
}

#pragma once

#include <QObject>
#include <QPointer>

#include <vector>

class Form;
class QKeyEvent;
class QWidget;

/// The collection of loaded forms, in the order in which they were loaded, and what concerns them
/// all: which of them is active, keys on their way to their controls, the end of the session.
///
/// Lives from the first form until the application object goes; forms that are left then are
/// deleted without further events.
class Forms : public QObject
{
    Q_OBJECT

public:
    /// The one collection. Needs a QApplication.
    [[nodiscard]] static Forms &instance();

    /// A snapshot: forms may come and go while it is walked.
    [[nodiscard]] static std::vector<QPointer<Form>> loaded();
    /// The loaded form of that name, compared case-sensitively; null when there is none.
    [[nodiscard]] static Form *byName(const QString &name);
    /// The one of them that was active last; null when none is visible.
    [[nodiscard]] Form *active() const { return m_active; }

    /// Unloads every form with UnloadMode::LoggingOff, as when the session ends. Returns false when
    /// a form refused; the others are unloaded all the same.
    bool logOff();
    [[nodiscard]] bool isLoggingOff() const { return m_loggingOff; }

    /// Deletes the collection and all forms, shown or not, without any of their events. The next
    /// form begins a new one.
    static void deleteAll();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    friend class Form;

    Forms();

    void add(Form &form);
    void remove(Form &form);
    void forget(Form &form);
    void hidden(Form &form);
    /// Returns false when the form was the active one already.
    bool makeActive(Form &form);
    bool isFirstReceiver(const QWidget *receiver, const QEvent *event);
    bool isHeldFromElsewhere(const QWidget &receiver, const QKeyEvent &key);

    std::vector<Form *> m_loaded;
    /// Visible forms, the one that was active last at the end.
    std::vector<Form *> m_recent;
    Form *m_active = nullptr;
    bool m_loggingOff = false;
    const QEvent *m_lastKey = nullptr;
    const QWidget *m_nextReceiver = nullptr;
    QPointer<QWidget> m_keyWindow; ///< where the last key was pressed, if that is still there
    int m_releasedKey = 0;
    quint64 m_releasedAt = 0;
};

/// The single shared instance of the form class T, made on first use. After it has been unloaded,
/// the next use makes a new one. T has a constructor without arguments.
template<class T>
class SharedForm
{
public:
    /// The instance, made (but not loaded) if there is none.
    [[nodiscard]] static T &get()
    {
        if (!existing())
            s_instance = new T;
        return *s_instance;
    }
    /// The instance, or null; asking makes none.
    [[nodiscard]] static T *existing()
    {
        return s_instance && !s_instance->isUnloaded() ? s_instance.data() : nullptr;
    }

private:
    static inline QPointer<T> s_instance;
};

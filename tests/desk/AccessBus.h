#pragma once

#include <QDBusMessage>
#include <QObject>
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>

#include <functional>
#include <vector>

/// What a program shows at one place of its tree of windows and controls, as it tells it to
/// assistive technology in other programs.
class Accessible
{
public:
    /// The states that the tests ask for, with the interface's numbers.
    enum class State { Enabled = 8, Focusable = 11, Showing = 25, ReadOnly = 43 };

    /// The object of that path in the program of that name on the bus; by default there is none.
    explicit Accessible(QString service = {}, QString path = {});

    [[nodiscard]] QString name() const { return property(QStringLiteral("Name")); }
    [[nodiscard]] QString description() const { return property(QStringLiteral("Description")); }
    /// As the interface calls it: "push button".
    [[nodiscard]] QString role() const;
    [[nodiscard]] bool is(State state) const;
    [[nodiscard]] std::vector<Accessible> children() const;
    /// All that stands below it; the cells of a table are left out.
    [[nodiscard]] std::vector<Accessible> all() const;
    /// What is below it with that role and name.
    [[nodiscard]] Accessible find(const QString &role, const QString &name) const;
    [[nodiscard]] bool exists() const { return !m_path.isEmpty(); }

    [[nodiscard]] QString text() const;
    /// Puts a text in the place of what stands there.
    void setText(const QString &text) const;
    /// Does what a click does, without waiting: the screen may be busy with it until a window that
    /// it opens is closed.
    void press() const;

private:
    [[nodiscard]] QVariant ask(const QString &interface, const QString &method,
                               const QVariantList &arguments = {}) const;
    [[nodiscard]] QString property(const QString &name) const;

    QString m_service;
    QString m_path;
};

/// A session of the desktop for the tests alone, with its accessibility bus switched on as by a
/// screen reader. Everything ends with this object, and with the program that made it.
class AccessBus : public QObject
{
    Q_OBJECT

public:
    /// `display` is the one of the desk.
    explicit AccessBus(const QString &display);
    ~AccessBus() override;
    Q_DISABLE_COPY_MOVE(AccessBus)

    /// Why there is none, in one line; empty when there is one.
    [[nodiscard]] const QString &reason() const { return m_reason; }
    /// What a program finds in its variable DBUS_SESSION_BUS_ADDRESS.
    [[nodiscard]] const QString &session() const { return m_session; }
    /// The windows of all programs.
    [[nodiscard]] std::vector<Accessible> windows() const;

    /// What programs have announced: by an event of its own, or by a change of what describes a
    /// window where they know of no such event (Qt before 6.8).
    [[nodiscard]] const QStringList &told() const { return m_told; }

private Q_SLOTS:
    void hear(const QDBusMessage &event);

private:
    bool startSession(const QString &display);
    bool switchOn();

    QTemporaryDir m_folder;
    QProcess m_daemon;
    QString m_session;
    QString m_reason;
    QStringList m_told;
};

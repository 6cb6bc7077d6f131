#include "desk/AccessBus.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusObjectPath>
#include <QDBusVariant>

#include <csignal>
#include <sys/prctl.h>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr int kPatience = 10000; // milliseconds, for a machine with much to do

const QString kSessionName = u"desk-session"_s;
const QString kAccessName = u"desk-access"_s;
const QString kAccessibleInterface = u"org.a11y.atspi.Accessible"_s;
const QString kProperties = u"org.freedesktop.DBus.Properties"_s;
const QString kRegistry = u"org.a11y.atspi.Registry"_s;

QVariant call(const QDBusConnection &bus, const QString &service, const QString &path,
              const QString &interface, const QString &method, const QVariantList &arguments)
{
    QDBusMessage message = QDBusMessage::createMethodCall(service, path, interface, method);
    message.setArguments(arguments);
    const QDBusMessage answer = bus.call(message);
    return answer.type() == QDBusMessage::ReplyMessage ? answer.arguments().value(0) : QVariant();
}

/// An array of D-Bus, element by element.
template<class Element>
void readArray(const QVariant &value, const Element &element)
{
    if (!value.canConvert<QDBusArgument>())
        return;
    const auto array = value.value<QDBusArgument>();
    array.beginArray();
    while (!array.atEnd())
        element(array);
    array.endArray();
}

} // namespace

Accessible::Accessible(QString service, QString path)
    : m_service(std::move(service)), m_path(std::move(path))
{
}

QString Accessible::role() const
{
    return ask(kAccessibleInterface, u"GetRoleName"_s).toString();
}

bool Accessible::is(State state) const
{
    constexpr int kBits = 32;
    std::vector<uint> words;
    readArray(ask(kAccessibleInterface, u"GetState"_s), [&](const QDBusArgument &array) {
        uint word = 0;
        array >> word;
        words.push_back(word);
    });
    const auto number = size_t(state);
    return words.size() > number / kBits && (words[number / kBits] >> (number % kBits) & 1U) != 0;
}

std::vector<Accessible> Accessible::children() const
{
    std::vector<Accessible> found;
    readArray(ask(kAccessibleInterface, u"GetChildren"_s), [&](const QDBusArgument &array) {
        QString service;
        QDBusObjectPath path;
        array.beginStructure();
        array >> service >> path;
        array.endStructure();
        found.emplace_back(service, path.path());
    });
    return found;
}

std::vector<Accessible> Accessible::all() const
{
    std::vector<Accessible> found;
    for (const Accessible &child : children()) {
        found.push_back(child);
        if (child.role() == u"table")
            continue;
        const std::vector<Accessible> below = child.all();
        found.insert(found.end(), below.begin(), below.end());
    }
    return found;
}

Accessible Accessible::find(const QString &role, const QString &name) const
{
    for (const Accessible &one : all()) {
        if (one.name() == name && one.role() == role)
            return one;
    }
    return Accessible();
}

QString Accessible::text() const
{
    return ask(u"org.a11y.atspi.Text"_s, u"GetText"_s, {0, -1}).toString();
}

void Accessible::setText(const QString &text) const
{
    static_cast<void>(ask(u"org.a11y.atspi.EditableText"_s, u"SetTextContents"_s, {text}));
}

void Accessible::press() const
{
    QDBusMessage message = QDBusMessage::createMethodCall(
        m_service, m_path, u"org.a11y.atspi.Action"_s, u"DoAction"_s);
    message.setArguments({0});
    QDBusConnection(kAccessName).send(message);
}

QVariant Accessible::ask(const QString &interface, const QString &method,
                         const QVariantList &arguments) const
{
    return exists()
               ? call(QDBusConnection(kAccessName), m_service, m_path, interface, method, arguments)
               : QVariant();
}

QString Accessible::property(const QString &name) const
{
    return ask(kProperties, u"Get"_s, {kAccessibleInterface, name})
        .value<QDBusVariant>()
        .variant()
        .toString();
}

AccessBus::AccessBus(const QString &display)
{
    if (!startSession(display))
        m_reason = u"no session of a desktop can be had here (dbus-daemon)"_s;
    else if (!switchOn())
        m_reason = u"no accessibility bus can be had here (at-spi2-core)"_s;
}

AccessBus::~AccessBus()
{
    QDBusConnection::disconnectFromBus(kAccessName);
    QDBusConnection::disconnectFromBus(kSessionName);
    m_daemon.terminate();
    m_daemon.waitForFinished();
}

bool AccessBus::startSession(const QString &display)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"DISPLAY"_s, display);
    environment.insert(u"XDG_RUNTIME_DIR"_s, m_folder.path());
    environment.insert(u"GSETTINGS_BACKEND"_s, u"memory"_s); // what is switched on here stays here
    m_daemon.setProcessEnvironment(environment);
    m_daemon.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGTERM); });
    m_daemon.start(u"dbus-daemon"_s,
                   {u"--session"_s, u"--nofork"_s, u"--nopidfile"_s, u"--print-address"_s});
    while (!m_daemon.canReadLine()) {
        if (!m_daemon.waitForReadyRead(kPatience))
            return false;
    }
    m_session = QString::fromLocal8Bit(m_daemon.readLine()).trimmed();
    return QDBusConnection::connectToBus(m_session, kSessionName).isConnected();
}

bool AccessBus::switchOn()
{
    const QDBusConnection session(kSessionName);
    const QString service = u"org.a11y.Bus"_s;
    const QString path = u"/org/a11y/bus"_s;
    const QString address = call(session, service, path, service, u"GetAddress"_s, {}).toString();
    if (address.isEmpty())
        return false;
    call(session, service, path, kProperties, u"Set"_s,
         {u"org.a11y.Status"_s, u"IsEnabled"_s, QVariant::fromValue(QDBusVariant(true))});
    QDBusConnection bus = QDBusConnection::connectToBus(address, kAccessName);
    // Programs send only what somebody has asked for.
    for (const QString &event : {u"PropertyChange"_s, u"Announcement"_s}) {
        call(bus, kRegistry, u"/org/a11y/atspi/registry"_s, kRegistry, u"RegisterEvent"_s,
             {u"Object:"_s + event + u':'});
        bus.connect({}, {}, u"org.a11y.atspi.Event.Object"_s, event, this,
                    SLOT(hear(QDBusMessage)));
    }
    return bus.isConnected();
}

std::vector<Accessible> AccessBus::windows() const
{
    const Accessible desktop(kRegistry, u"/org/a11y/atspi/accessible/root"_s);
    std::vector<Accessible> found;
    for (const Accessible &program : desktop.children()) {
        for (const Accessible &window : program.children())
            found.push_back(window);
    }
    return found;
}

void AccessBus::hear(const QDBusMessage &event)
{
    if (event.member() == u"Announcement")
        m_told += event.arguments().value(3).value<QDBusVariant>().variant().toString();
    else if (event.arguments().value(0) == u"accessible-description"_s)
        m_told += Accessible(event.service(), event.path()).description();
}

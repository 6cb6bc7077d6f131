#include "host/tasks/Component.h"

#include "host/tasks/HostError.h"

#include <QFileInfo>
#include <QMetaObject>
#include <QObject>
#include <QVariant>

using namespace Qt::StringLiterals;

Component::Component(const QString &file) : m_file(file), m_loader(file) {}

void Component::load()
{
    if (!QFileInfo::exists(m_file))
        throw HostError(u"komponenten %1 finnes ikke"_s.arg(m_file));
    QObject *factory = m_loader.instance();
    if (!factory) {
        throw HostError(u"komponenten %1 lot seg ikke laste (%2)"_s.arg(
            m_file, m_loader.errorString().simplified()));
    }
    QObject *instance = nullptr;
    if (!QMetaObject::invokeMethod(factory, "CreateInstance", Qt::DirectConnection,
                                   Q_RETURN_ARG(QObject *, instance)) ||
        !instance) {
        throw HostError(u"komponenten %1 gir ingen instans av clsFaktura"_s.arg(m_file));
    }
    m_instance.reset(instance);
}

void Component::unload()
{
    m_instance.reset(); // its code goes with the library
    m_loader.unload();
}

int Component::start(const QString &connectionString, qint16 client, qint16 year)
{
    if (!m_instance)
        load();
    m_instance->setProperty("ConnectStreng", connectionString);
    m_instance->setProperty("Klient", QVariant::fromValue(client));
    m_instance->setProperty("CurrentYear", QVariant::fromValue(year));
    if (!QMetaObject::invokeMethod(m_instance.get(), "StartModul", Qt::DirectConnection))
        throw HostError(u"komponenten har ingen StartModul"_s);
    return m_instance->property("ModuleInit").toInt();
}

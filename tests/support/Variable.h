#pragma once

#include <QByteArray>
#include <QString>

/// A variable of the environment while it lives.
class Variable
{
public:
    Variable(const char *name, const QString &value) : m_name(name), m_before(qgetenv(name))
    {
        qputenv(name, value.toUtf8());
    }
    ~Variable()
    {
        if (m_before.isNull())
            qunsetenv(m_name);
        else
            qputenv(m_name, m_before);
    }
    Variable(const Variable &) = delete;
    Variable &operator=(const Variable &) = delete;

private:
    const char *m_name;
    const QByteArray m_before;
};

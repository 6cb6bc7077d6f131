#pragma once

#include <QObject>
#include <QString>

/// The control of that name on a screen. Ends the program when there is none, or no screen.
template<class Control>
Control &controlOf(const QObject *screen, const QString &name)
{
    auto *found = screen ? screen->findChild<Control *>(name) : nullptr;
    if (!found)
        qFatal("no control %s", qPrintable(name));
    return *found;
}

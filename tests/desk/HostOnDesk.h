#pragma once

#include "desk/DeskTest.h"

#include <QProcess>

/// The host program on the desk, in a process of its own, with the demo company.
class HostOnDesk : public DeskTest
{
protected:
    HostOnDesk();
    ~HostOnDesk() override;
    void SetUp() override;

    /// Starts it and waits for its menu.
    void startHost();
    /// A property of the menu's window as its manager sees it.
    [[nodiscard]] QString told(const QString &name) const;

private:
    QProcess m_host;
    QString m_window;
};

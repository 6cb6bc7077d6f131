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
    /// Waits for a window of the host, which is then the one that `told` asks of.
    [[nodiscard]] bool windowComes();
    /// A property of the window as its manager sees it.
    [[nodiscard]] QString told(const QString &name) const;

private:
    QProcess m_host;
    QString m_window;
};

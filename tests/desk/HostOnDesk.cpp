#include "desk/HostOnDesk.h"

using namespace Qt::StringLiterals;

HostOnDesk::HostOnDesk()
{
    m_host.setProcessChannelMode(QProcess::ForwardedErrorChannel);
}

HostOnDesk::~HostOnDesk()
{
    m_host.terminate();
    m_host.waitForFinished();
}

void HostOnDesk::SetUp()
{
    if (display().isEmpty())
        GTEST_SKIP() << reason();
    makeDemo();
}

void HostOnDesk::startHost()
{
    environment.insert(u"DISPLAY"_s, display());
    prepare(m_host);
    m_host.start(programFile(), {u"--dsn"_s, path(u"demo.db"_s), u"--aar"_s, u"2014"_s});
    ASSERT_TRUE(windowComes());
}

bool HostOnDesk::windowComes()
{
    return comes([this] {
        m_window = QString::fromLatin1(look(u"xdotool"_s, {u"search"_s, u"--onlyvisible"_s,
                                                           u"--class"_s, u"strekkbok-vert"_s}))
                       .trimmed();
        return !m_window.isEmpty();
    });
}

QString HostOnDesk::told(const QString &name) const
{
    return QString::fromUtf8(look(u"xprop"_s, {u"-id"_s, m_window, name})).trimmed();
}

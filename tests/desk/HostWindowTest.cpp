#include "desk/DeskTest.h"

#include <QProcess>

using namespace Qt::StringLiterals;

namespace {

/// The host program on the desk, in a process of its own.
class HostWindowTest : public DeskTest
{
protected:
    HostWindowTest() { m_host.setProcessChannelMode(QProcess::ForwardedErrorChannel); }
    ~HostWindowTest() override
    {
        m_host.terminate();
        m_host.waitForFinished();
    }
    void startHost()
    {
        environment.insert(u"DISPLAY"_s, display());
        prepare(m_host);
        m_host.start(programFile(), {u"--dsn"_s, path(u"demo.db"_s), u"--aar"_s, u"2014"_s});
        const auto find = [this] {
            m_window = QString::fromLatin1(look(u"xdotool"_s, {u"search"_s, u"--onlyvisible"_s,
                                                               u"--class"_s, u"strekkbok-vert"_s}))
                           .trimmed();
            return !m_window.isEmpty();
        };
        ASSERT_TRUE(comes(find));
    }
    [[nodiscard]] QString told(const QString &name) const
    {
        return QString::fromUtf8(look(u"xprop"_s, {u"-id"_s, m_window, name})).trimmed();
    }

private:
    QProcess m_host;
    QString m_window;
};

TEST_F(HostWindowTest, TheDesktopKnowsTheProgramByNameAndIcon)
{
    startHost();
    EXPECT_EQ(told(u"WM_CLASS"_s), u"WM_CLASS(STRING) = \"strekkbok-vert\", \"strekkbok-vert\""_s);
    EXPECT_EQ(told(u"_NET_WM_NAME"_s), u"_NET_WM_NAME(UTF8_STRING) = \"Strekkbok - Faktura\""_s);
    EXPECT_TRUE(told(u"_NET_WM_ICON"_s).contains(u"Icon ("_s))
        << told(u"_NET_WM_ICON"_s).left(200).toStdString();
}

} // namespace

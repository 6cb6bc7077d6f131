#include "desk/HostOnDesk.h"

using namespace Qt::StringLiterals;

namespace {

using HostWindowTest = HostOnDesk;

TEST_F(HostWindowTest, TheDesktopKnowsTheProgramByNameAndIcon)
{
    startHost();
    EXPECT_EQ(told(u"WM_CLASS"_s), u"WM_CLASS(STRING) = \"strekkbok-vert\", \"strekkbok-vert\""_s);
    EXPECT_EQ(told(u"_NET_WM_NAME"_s), u"_NET_WM_NAME(UTF8_STRING) = \"Strekkbok - Faktura\""_s);
    EXPECT_TRUE(told(u"_NET_WM_ICON"_s).contains(u"Icon ("_s))
        << told(u"_NET_WM_ICON"_s).left(200).toStdString();
}

/// A window gets the keyboard there a moment after it has come up.
TEST_F(HostWindowTest, ATourOnADesktopTypesTheNamesOfItsFiles)
{
    environment.insert(u"DISPLAY"_s, display());
    environment.insert(u"QT_QPA_PLATFORM"_s, u"xcb"_s);
    const Outcome tour = host({u"--tur"_s, path(u"tur"_s), u"--aar"_s, u"2014"_s});
    EXPECT_EQ(tour.status, 0) << ::testing::PrintToString(tour);
    for (const QString &name : {u"Faktura"_s, u"Kreditnota"_s, u"Ordreliste"_s, u"Purreliste"_s,
                                u"Fakturajournal"_s, u"Salgsjournal"_s})
        EXPECT_TRUE(content(u"tur/%1.pdf"_s.arg(name)).startsWith("%PDF")) << name.toStdString();
}

TEST_F(HostWindowTest, AStartFromTheDesktopTellsInAWindowWhyItFails)
{
    write(u"demo-ut"_s, "mitt"); // where the folder would be
    environment.insert(u"DISPLAY"_s, display());
    QProcess host;
    prepare(host);
    host.start(programFile(), QStringList());
    ASSERT_TRUE(windowComes());
    ASSERT_TRUE(comes([&] {
        key(u"Return"_s); // until the window has the keyboard
        return host.waitForFinished(0) || host.state() == QProcess::NotRunning;
    }));
    EXPECT_EQ(host.exitCode(), 1);
    EXPECT_TRUE(QString::fromUtf8(host.readAllStandardError()).contains(u"demo-ut lot seg ikke"_s));
}

} // namespace

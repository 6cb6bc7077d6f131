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

} // namespace

#include "runtime/Paths.h"

#include "runtime/Support.h"

using namespace Qt::StringLiterals;

TEST(Paths, TakeTheSystemsFormAndTheToldForm)
{
    EXPECT_EQ(paths::toSystem(uR"(\home\kari\rpt)"_s), u"/home/kari/rpt"_s);
    EXPECT_EQ(paths::toModule(u"/home/kari/rpt"_s), uR"(\home\kari\rpt)"_s);
    EXPECT_EQ(paths::toSystem(QString()), QString());
}

TEST(Paths, AreTheSameAfterBothWays)
{
    const QString path = u"/home/kåre ødegård/my docs/rpt.d"_s;
    EXPECT_EQ(paths::toSystem(paths::toModule(path)), path);
}

TEST(Paths, ApplicationFolderStandsBeforeTheFirstBin)
{
    EXPECT_EQ(paths::applicationFolder(uR"(C:\Prog\bin\moduler)"_s), uR"(C:\Prog)"_s);
    EXPECT_EQ(paths::applicationFolder(uR"(\opt\bin\x\bin\y)"_s), uR"(\opt)"_s);
}

TEST(Paths, ApplicationFolderIsTheWholePathWithoutBin)
{
    EXPECT_EQ(paths::applicationFolder(uR"(C:\Prog)"_s), uR"(C:\Prog)"_s);
    EXPECT_EQ(paths::applicationFolder(QString()), QString());
}

TEST(Paths, ApplicationFolderIsNotLookedForByWholePathElements)
{
    EXPECT_EQ(paths::applicationFolder(uR"(C:\Prog\binder)"_s), uR"(C:\Prog)"_s);
    EXPECT_EQ(paths::applicationFolder(uR"(C:\cabin\x)"_s), uR"(C:\cabin\x)"_s);
}

TEST(Paths, ApplicationFolderMindsTheCaseOfBin)
{
    EXPECT_EQ(paths::applicationFolder(uR"(C:\Prog\Bin\x)"_s), uR"(C:\Prog\Bin\x)"_s);
    EXPECT_EQ(paths::applicationFolder(uR"(C:\BIN\bin)"_s), uR"(C:\BIN)"_s);
}

TEST(Paths, ApplicationFolderOfAPathThatStartsWithBinIsEmpty)
{
    EXPECT_EQ(paths::applicationFolder(uR"(\bin)"_s), QString());
}

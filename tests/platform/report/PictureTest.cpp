#include "platform/pictures/PictureBytes.h"
#include "platform/report/Support.h"

#include <QDir>
#include <QFileInfo>

#include <sys/stat.h>

namespace report::test {

namespace {

class PictureTest : public ReportTest
{
protected:
    PictureTest() { addOrder(1001, 2); }

    void storeLogo(const QByteArray &bytes)
    {
        ado::Recordset set;
        set.setActiveConnection(dsn());
        set.setLockType(ado::LockType::Optimistic);
        set.setSource(u"SELECT KlientNr, Logo FROM Klient WHERE KlientNr=1"_s);
        set.open();
        set.setValue(u"Logo", Value(bytes));
        set.updateBatch();
    }

    [[nodiscard]] Document madeWith(const QByteArray &attributes) const
    {
        return made(lineReport("<detail height=\"30\"><picture x=\"10\" y=\"5\" width=\"40\" "
                               "height=\"20\" " +
                               attributes + "/></detail>"));
    }
};

} // namespace

TEST_F(PictureTest, AColumnsPictureIsScaledWithoutDistortion)
{
    storeLogo(greenPicture({400, 100}, "PNG"));
    const Document document = madeWith("value=\"{Klient.Logo}\"");
    const Page &page = document.pages.front();
    ASSERT_EQ(page.pictures.size(), 2u);
    EXPECT_EQ(page.pictures[0].rect, QRectF(20, 15, 40, 10));
    EXPECT_EQ(page.pictures[1].rect, QRectF(20, 45, 40, 10));
    // Kept once, however often it is shown.
    EXPECT_EQ(page.pictures[1].picture, page.pictures[0].picture);
    ASSERT_EQ(document.pictures.size(), 1u);
    EXPECT_EQ(document.pictures.front().size(), QSize(400, 100));
}

TEST_F(PictureTest, IsPlacedWithinItsBox)
{
    storeLogo(greenPicture({100, 100}, "BMP"));
    EXPECT_EQ(madeWith("value=\"{Klient.Logo}\"").pages[0].pictures[0].rect,
              QRectF(20, 15, 20, 20));
    EXPECT_EQ(madeWith("value=\"{Klient.Logo}\" align=\"center\"").pages[0].pictures[0].rect,
              QRectF(30, 15, 20, 20));
    EXPECT_EQ(madeWith("value=\"{Klient.Logo}\" align=\"right\"").pages[0].pictures[0].rect,
              QRectF(40, 15, 20, 20));
    storeLogo(greenPicture({400, 100}, "JPG"));
    EXPECT_EQ(madeWith("value=\"{Klient.Logo}\" valign=\"middle\"").pages[0].pictures[0].rect,
              QRectF(20, 20, 40, 10));
    EXPECT_EQ(madeWith("value=\"{Klient.Logo}\" valign=\"bottom\"").pages[0].pictures[0].rect,
              QRectF(20, 25, 40, 10));
}

TEST_F(PictureTest, WhatIsNoPictureIsLeftOut)
{
    EXPECT_TRUE(madeWith("value=\"{Klient.Logo}\"").pages[0].pictures.empty());
    storeLogo("ikke noe bilde");
    EXPECT_TRUE(madeWith("value=\"{Klient.Logo}\"").pages[0].pictures.empty());
    EXPECT_TRUE(madeWith("file=\"borte.png\"").pages[0].pictures.empty());
}

TEST_F(PictureTest, ADrawingThatMayNameOtherFilesIsLeftOut)
{
    const QByteArray drawing =
        "<svg xmlns='http://www.w3.org/2000/svg' width='40' height='20'><rect width='9' "
        "height='9'/></svg>";
    storeLogo(drawing);
    EXPECT_TRUE(madeWith("value=\"{Klient.Logo}\"").pages[0].pictures.empty());
    written(u"bilde.svg"_s, drawing);
    EXPECT_TRUE(madeWith("file=\"bilde.svg\"").pages[0].pictures.empty());
}

TEST_F(PictureTest, ACutBitmapIsLeftOut)
{
    const QByteArray whole = greenPicture({40, 20}, "BMP");
    storeLogo(whole.chopped(1));
    EXPECT_TRUE(madeWith("value=\"{Klient.Logo}\"").pages[0].pictures.empty());
}

TEST_F(PictureTest, AMetafileIsDrawn)
{
    storeLogo(kMetafile);
    const Document document = madeWith("value=\"{Klient.Logo}\"");
    ASSERT_EQ(document.pictures.size(), 1u);
    EXPECT_EQ(document.pictures.front().width(), 1200);
}

TEST_F(PictureTest, NobodyIsWaitedFor)
{
    const QString other = written(u"annen.png"_s, greenPicture({10, 20}, "PNG"));
    const QString pipe = QFileInfo(other).dir().filePath(u"ror.png"_s);
    ASSERT_EQ(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    EXPECT_TRUE(madeWith("file=\"ror.png\"").pages[0].pictures.empty());
}

TEST_F(PictureTest, AFileLiesBesideTheReport)
{
    written(u"bilde.png"_s, greenPicture({10, 20}, "PNG"));
    EXPECT_EQ(madeWith("file=\"bilde.png\"").pages[0].pictures[0].rect, QRectF(20, 15, 10, 20));
}

} // namespace report::test

#include "reports/InvoiceTest.h"

#include "platform/ado/Recordset.h"
#include "platform/pictures/PictureBytes.h"
#include "platform/report/ReportFiles.h"

using namespace Qt::StringLiterals;

namespace {

const QRectF kPlace(20, 9, 63, 20); // mm

class LogoTest : public InvoiceTest
{
protected:
    LogoTest() : m_order(enterOrder(hours(2))) {}

    report::Page page(const QString &form = u"Fak-mgiro-mlogo.rpt"_s)
    {
        return print(form, m_order).pages.front();
    }
    /// The seller's name in large type.
    bool hasName(const report::Page &page) const
    {
        const qsizetype index = textsOf(page).indexOf(u"Gråbein Bilfrakt AS"_s);
        return index >= 0 && page.texts[static_cast<size_t>(index)].baseline.y() < 20;
    }

    const int m_order;
};

} // namespace

TEST_F(LogoTest, FillsItsPlaceWithoutDistortion)
{
    for (const QSize &size : {QSize(237, 76), QSize(2000, 100), QSize(40, 400)}) {
        storeLogo(greenPicture(size, "PNG"));
        const report::Page first = page();
        ASSERT_EQ(first.pictures.size(), 1u);
        const QRectF rect = first.pictures[0].rect;
        EXPECT_TRUE(kPlace.adjusted(-1e-6, -1e-6, 1e-6, 1e-6).contains(rect));
        EXPECT_NEAR(rect.width() / rect.height(), double(size.width()) / size.height(), 1e-3);
        EXPECT_EQ(rect.topLeft(), kPlace.topLeft());
        EXPECT_TRUE(std::abs(rect.width() - 63) < 1e-6 || std::abs(rect.height() - 20) < 1e-6);
        EXPECT_FALSE(hasName(first));
        EXPECT_TRUE(textsOf(first).contains(
            u"Gråbein Bilfrakt AS, Postboks 41, Terminalvegen 7, 2815 Gjøvik"_s));
    }
}

TEST_F(LogoTest, IsReadInWhateverFormatItIsStored)
{
    for (const QByteArray &bytes :
         {greenPicture({237, 76}, "BMP"), greenPicture({237, 76}, "JPG"), kGif}) {
        storeLogo(bytes);
        EXPECT_EQ(page().pictures.size(), 1u);
    }
}

TEST_F(LogoTest, WithoutAPictureTheNameStandsInItsPlace)
{
    const report::Page none = page();
    EXPECT_TRUE(none.pictures.empty());
    EXPECT_TRUE(hasName(none));
    EXPECT_EQ(textsOf(none), textsOf(page(u"Fak-mgiro-ulogo.rpt"_s)));
}

TEST_F(LogoTest, WhatIsNoPictureIsLeftOut)
{
    storeLogo(QByteArray("no picture"));
    EXPECT_TRUE(page().pictures.empty());
}

// A removed logo is stored as a white picture, so a picture does not tell who sells.
TEST_F(LogoTest, TheNameStandsBelowThePictureWhateverItShows)
{
    for (const QByteArray &bytes : {greenPicture({237, 76}, "BMP"), QByteArray("no picture")}) {
        storeLogo(bytes);
        const report::Document document = print(u"Fak-ugiro-mlogo.rpt"_s, m_order);
        const report::TextCommand name = textOn(document.pages[0], u"Gråbein Bilfrakt AS"_s);
        EXPECT_TRUE(document.styles[static_cast<size_t>(name.style())].font.bold());
        EXPECT_GT(name.baseline.y(), kPlace.bottom());
        EXPECT_LT(
            textOn(document.pages[0], u"Postboks 41, Terminalvegen 7, 2815 Gjøvik"_s).baseline.y(),
            46);
    }
}

TEST_F(LogoTest, StandsOnTheFormsWithLogoAndTheirFirstPage)
{
    storeLogo(greenPicture({237, 76}, "BMP"));
    EXPECT_EQ(page(u"Fak-ugiro-mlogo.rpt"_s).pictures.size(), 1u);
    for (const QString &form : {u"Fak-mgiro-ulogo.rpt"_s, u"Fak-ugiro-ulogo.rpt"_s}) {
        EXPECT_TRUE(page(form).pictures.empty());
        EXPECT_TRUE(hasName(page(form)));
    }
    const report::Document document = print(u"Fak-ugiro-mlogo.rpt"_s, enterOrder(hours(60)));
    ASSERT_EQ(document.pages.size(), 2u);
    EXPECT_EQ(document.pages[0].pictures.size(), 1u);
    EXPECT_TRUE(document.pages[1].pictures.empty());
}

// A line that could not be stored leaves its position free, and rows of other programs have
// positions of their own.
TEST_F(LogoTest, ComesWithTheFirstLineWhateverItsPosition)
{
    storeLogo(greenPicture({237, 76}, "BMP"));
    const QString id = rows(u"SELECT ID FROM Ordre WHERE OrdreNr=%1"_s.arg(m_order)).value(0);
    for (const QString &position : {u"PosNr+10"_s, u"0"_s, u"-PosNr"_s, u"Null"_s}) {
        run(u"UPDATE OrdreLinjer SET PosNr=%1 WHERE OrdreID=%2"_s.arg(position, id));
        EXPECT_EQ(page().pictures.size(), 1u) << position.toStdString();
    }
}

TEST_F(LogoTest, IsReadWithOneLineOnly)
{
    storeLogo(greenPicture({237, 76}, "BMP"));
    const int order = enterOrder(hours(40));
    const report::ReportFile file =
        report::readReportFile(QStringLiteral(REPORT_FOLDER "/Fak-ugiro-mlogo.rpt"));
    ado::Recordset set;
    set.setActiveConnection(connectionString());
    set.setSource(file.query->limitedBy(u"Ordre.OrdreNr=%1"_s.arg(order)));
    int rowsRead = 0;
    int logos = 0;
    for (set.open(); !set.eof(); set.moveNext()) {
        ++rowsRead;
        logos += set.isNull(set.fieldIndex(u"Logo"_s)) ? 0 : 1;
    }
    EXPECT_EQ(rowsRead, 40);
    EXPECT_EQ(logos, 1);
}

#include "platform/help/HelpBook.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

/// A small book: contents, two pages, and one that the contents do not know.
class HelpBookTest : public ::testing::Test
{
protected:
    HelpBookTest()
    {
        write(u"innhold.htm"_s, "<h1>Innhold</h1><p><a href=\"to.htm\">To</a> <a "
                                "href=\"en.htm\">En</a> <a href=\"borte.htm\">Borte</a></p>");
        write(u"en.htm"_s, "<h1 data-stikkord=\"ørret; Abbor\">Side <b>en</b></h1><p>Fisk i\n"
                           "elva</p><table><tr><td>laks</td><td>sjø</td></tr></table>");
        write(u"to.htm"_s, "<h1>Side to</h1><h2 id=\"fugl\" data-stikkord=\"and;abbor ;\">Fugler\n"
                           "her</h2><h2>Uten merke</h2><p>Fisken i <b>ELV</b>a</p>");
        write(u"ukjent.htm"_s, "<h1 data-stikkord=\"ukjent\">Ukjent fisk</h1>");
    }

    void write(const QString &name, const QByteArray &body) const
    {
        QFile file(m_folder.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("<!DOCTYPE html>\n<html><head><title>fisk</title></head><body>" + body +
                   "</body></html>");
    }
    [[nodiscard]] HelpBook book() const { return HelpBook(m_folder.path()); }

    static QStringList lines(const std::vector<HelpBook::Entry> &entries)
    {
        QStringList lines;
        for (const HelpBook::Entry &entry : entries)
            lines += entry.text + u" -> "_s + entry.target;
        return lines;
    }

private:
    QTemporaryDir m_folder;
};

TEST_F(HelpBookTest, ThePagesStandInTheOrderOfTheContents)
{
    const HelpBook read = book();
    QStringList titles;
    for (const HelpBook::Page &page : read.pages())
        titles += page.sections.front().title;
    EXPECT_EQ(titles, (QStringList{u"Innhold"_s, u"Side to"_s, u"Side en"_s}));
}

TEST_F(HelpBookTest, AHeadingWithAMarkIsASection)
{
    const HelpBook read = book();
    const std::vector<HelpBook::Section> &sections = read.pages()[1].sections;
    ASSERT_EQ(sections.size(), 2U);
    EXPECT_EQ(sections[0].target, u"to.htm"_s);
    EXPECT_EQ(sections[1].target, u"to.htm#fugl"_s);
    EXPECT_EQ(sections[1].title, u"Fugler her"_s);
}

TEST_F(HelpBookTest, KeywordsAreSortedAndToldApart)
{
    EXPECT_EQ(lines(book().keywords({})),
              (QStringList{u"Abbor (Side en) -> en.htm"_s, u"abbor (Side to) -> to.htm#fugl"_s,
                           u"and -> to.htm#fugl"_s, u"ørret -> en.htm"_s}));
    write(u"en.htm"_s, "<h1 data-stikkord=\"and\">Side en</h1>");
    EXPECT_EQ(lines(book().keywords(u"AN"_s)),
              (QStringList{u"and (Side en) -> en.htm"_s, u"and (Side to) -> to.htm#fugl"_s}));
    EXPECT_TRUE(book().keywords(u"hest"_s).empty());
}

TEST_F(HelpBookTest, APageIsFoundWhenItHasAllTheWords)
{
    EXPECT_EQ(lines(book().pagesWith(u" fisk  elva "_s)),
              (QStringList{u"Side to -> to.htm"_s, u"Side en -> en.htm"_s}));
    EXPECT_EQ(lines(book().pagesWith(u"laks fisk"_s)), QStringList{u"Side en -> en.htm"_s});
    EXPECT_TRUE(book().pagesWith(u"laks fugl"_s).empty());
    EXPECT_TRUE(book().pagesWith(u"  "_s).empty());
}

TEST_F(HelpBookTest, WordsEndWithTheirCellAndTheHeadIsNotRead)
{
    EXPECT_TRUE(book().pagesWith(u"lakssjø"_s).empty());
    EXPECT_TRUE(book().pagesWith(u"elvafugl"_s).empty());
    EXPECT_EQ(book().pagesWith(u"fisk"_s).size(), 2U) << "the title in the head is not the page";
}

TEST_F(HelpBookTest, APageThatIsNoXmlIsLeftOut)
{
    write(u"en.htm"_s, "<h1>Side en</h1><p>uten slutt");
    EXPECT_EQ(book().pages().size(), 2U);
    EXPECT_TRUE(HelpBook(u"/finnes/ikke"_s).pages().empty());
}

} // namespace

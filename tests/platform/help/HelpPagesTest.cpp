// The pages of the help as they stand in the tree: that all in them leads somewhere, and that they
// use the words of the screens.

#include "platform/help/HelpBook.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QImage>
#include <QRegularExpression>
#include <QSet>
#include <QXmlStreamReader>

#include <gtest/gtest.h>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

QDir folder()
{
    return QDir(QStringLiteral(HELP_SOURCES "/html"));
}

QString content(const QString &path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return QString::fromUtf8(file.readAll());
}

QStringList pageNames()
{
    return folder().entryList({u"*.htm"_s});
}

/// Without the ending, and without those for fine screens.
QStringList pictureNames()
{
    QStringList names;
    for (const QString &file : QDir(folder().filePath(u"bilder"_s)).entryList({u"*.png"_s})) {
        if (!file.contains(u'@'))
            names += file.chopped(4);
    }
    return names;
}

/// The values of an attribute on a page, wherever it stands.
QStringList valuesOf(const QString &attribute, const QString &page)
{
    QStringList values;
    QXmlStreamReader xml(content(folder().filePath(page)));
    while (!xml.atEnd()) {
        if (xml.readNext() == QXmlStreamReader::StartElement &&
            xml.attributes().hasAttribute(attribute))
            values += xml.attributes().value(attribute).toString();
    }
    EXPECT_FALSE(xml.hasError()) << page.toStdString() << ": " << xml.errorString().toStdString();
    return values;
}

/// What a page shows in bold letters: captions, titles and messages of the screens.
QStringList captionsOn(const QString &page)
{
    QStringList captions;
    QXmlStreamReader xml(content(folder().filePath(page)));
    while (!xml.atEnd()) {
        if (xml.readNext() == QXmlStreamReader::StartElement && xml.name() == "b"_L1)
            captions += xml.readElementText().simplified();
    }
    return captions;
}

/// All texts of the sources that may be on a screen, without the marks of letters.
QString textsOfTheScreens()
{
    static const QRegularExpression literal(u"\"((?:[^\"\\\\\n]|\\\\.)*)\""_s);
    QString texts;
    QDirIterator files(QStringLiteral(SCREEN_SOURCES), {u"*.ui"_s, u"*.cpp"_s}, QDir::Files,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString file = files.next();
        if (file.endsWith(".ui"_L1)) {
            QXmlStreamReader xml(content(file));
            while (!xml.atEnd()) {
                if (xml.readNext() == QXmlStreamReader::StartElement && xml.name() == "string"_L1)
                    texts += u'\n' + xml.readElementText().remove(u'&').simplified() + u'\n';
            }
        } else {
            for (const QRegularExpressionMatch &found : literal.globalMatch(content(file)))
                texts +=
                    u'\n' + found.captured(1).remove(u'&').replace(u"\\r\\n"_s, u"\n"_s) + u'\n';
        }
    }
    return texts;
}

TEST(HelpPages, EveryPageStandsInTheContents)
{
    const HelpBook book(folder().path());
    QStringList listed;
    for (const HelpBook::Page &page : book.pages())
        listed += page.sections.front().target;
    listed.sort();
    EXPECT_EQ(listed, pageNames());
}

TEST(HelpPages, EveryLinkAndPictureLeadsToWhatIsThere)
{
    int links = 0;
    for (const QString &page : pageNames()) {
        for (const QString &target : valuesOf(u"href"_s, page) + valuesOf(u"src"_s, page)) {
            ++links;
            const QString name = target.section(u'#', 0, 0);
            ASSERT_TRUE(folder().exists(name)) << page.toStdString() << ' ' << target.toStdString();
            const QString anchor = target.section(u'#', 1);
            EXPECT_TRUE(anchor.isEmpty() || valuesOf(u"id"_s, name).contains(anchor))
                << page.toStdString() << ' ' << target.toStdString();
        }
    }
    EXPECT_GT(links, 50);
}

TEST(HelpPages, EveryHeadingHasItsOwnMark)
{
    for (const QString &page : pageNames()) {
        const QStringList marks = valuesOf(u"id"_s, page);
        EXPECT_EQ(marks.size(), content(folder().filePath(page)).count("<h2"_L1))
            << page.toStdString();
        EXPECT_EQ(QSet<QString>(marks.begin(), marks.end()).size(), marks.size())
            << page.toStdString();
    }
}

TEST(HelpPages, NoKeywordIsThereTwiceOnAPage)
{
    int keywords = 0;
    const HelpBook book(folder().path());
    for (const HelpBook::Page &page : book.pages()) {
        QStringList words;
        for (const HelpBook::Section &section : page.sections)
            words += section.keywords;
        EXPECT_EQ(words.removeDuplicates(), 0) << page.sections.front().target.toStdString();
        keywords += int(words.size());
    }
    EXPECT_GT(keywords, 100);
}

TEST(HelpPages, EveryPictureIsInUseAndToldInWords)
{
    QStringList used;
    for (const QString &page : pageNames()) {
        const QStringList pictures = valuesOf(u"src"_s, page);
        const QStringList words = valuesOf(u"alt"_s, page);
        EXPECT_EQ(words.size(), pictures.size()) << page.toStdString();
        EXPECT_FALSE(words.contains(QString())) << page.toStdString();
        used += pictures;
    }
    for (const QString &picture : pictureNames()) {
        EXPECT_TRUE(used.contains(u"bilder/%1.png"_s.arg(picture))) << picture.toStdString();
    }
    EXPECT_GT(used.size(), 10);
}

TEST(HelpPages, EveryPictureIsThereForFineScreensToo)
{
    for (const QString &name : pictureNames()) {
        const QImage picture(folder().filePath(u"bilder/%1.png"_s.arg(name)));
        const QImage fine(folder().filePath(u"bilder/%1@2x.png"_s.arg(name)));
        EXPECT_FALSE(picture.isNull()) << name.toStdString();
        EXPECT_EQ(fine.size(), picture.size() * 2) << name.toStdString();
    }
    EXPECT_GT(pictureNames().size(), 10);
}

/// What is shown in bold letters is on the screens, to the letter; other emphasis is <strong>.
TEST(HelpPages, EveryCaptionIsOneOfTheScreens)
{
    const QString texts = textsOfTheScreens();
    int captions = 0;
    for (const QString &page : pageNames()) {
        for (const QString &caption : captionsOn(page)) {
            ++captions;
            // A message may go on behind what the page quotes of it, but no word does.
            const QRegularExpression whole(u'\n' + QRegularExpression::escape(caption) +
                                               u"(?!\\w)"_s,
                                           QRegularExpression::UseUnicodePropertiesOption);
            EXPECT_TRUE(texts.contains(whole))
                << page.toStdString() << ": " << caption.toStdString();
        }
    }
    EXPECT_GT(captions, 60);
}

} // namespace

#include "platform/help/HelpBook.h"

#include <QCollator>
#include <QFile>
#include <QXmlStreamReader>

#include <algorithm>
#include <map>

using namespace Qt::StringLiterals;

namespace {

/// Elements between which a word does not go on.
constexpr QStringView kBlocks[] = {u"h1", u"h2", u"p", u"li", u"th", u"td"};

/// Reads one page from its beginning to its end.
class PageReader
{
public:
    PageReader(QFile &file, QString name) : m_xml(&file), m_name(std::move(name)) {}

    /// False when it is no page.
    bool read()
    {
        while (!m_xml.atEnd()) {
            switch (m_xml.readNext()) {
            case QXmlStreamReader::StartElement:
                start();
                break;
            case QXmlStreamReader::EndElement:
                m_heading = m_heading && m_xml.name() != m_headingName;
                m_inBody = m_inBody && m_xml.name() != "body"_L1;
                break;
            case QXmlStreamReader::Characters:
                text();
                break;
            default:
                break;
            }
        }
        page.text = page.text.simplified();
        for (HelpBook::Section &section : page.sections)
            section.title = section.title.simplified();
        return !m_xml.hasError() && !page.sections.empty();
    }

    HelpBook::Page page;
    QStringList links; ///< to other pages

private:
    void start()
    {
        const QStringView element = m_xml.name();
        const QXmlStreamAttributes attributes = m_xml.attributes();
        if (std::ranges::find(kBlocks, element) != std::end(kBlocks))
            page.text += u' ';
        if (element == "body"_L1)
            m_inBody = true;
        else if (element == "a"_L1)
            links += attributes.value("href"_L1).toString();
        const QString anchor = attributes.value("id"_L1).toString();
        if (element != "h1"_L1 && (element != "h2"_L1 || anchor.isEmpty()))
            return;
        m_heading = true;
        m_headingName = element.toString();
        QStringList keywords =
            attributes.value("data-stikkord"_L1).toString().split(u';', Qt::SkipEmptyParts);
        for (QString &keyword : keywords)
            keyword = keyword.simplified();
        page.sections.push_back(
            {{}, anchor.isEmpty() ? m_name : m_name + u'#' + anchor, std::move(keywords)});
    }
    void text()
    {
        if (m_inBody)
            page.text += m_xml.text();
        if (m_heading)
            page.sections.back().title += m_xml.text();
    }

    QXmlStreamReader m_xml;
    const QString m_name;
    QString m_headingName;
    bool m_inBody = false;
    bool m_heading = false;
};

/// All keywords of the pages; one that leads to several places tells them apart.
std::vector<HelpBook::Entry> keywordsOf(const std::vector<HelpBook::Page> &pages)
{
    std::map<QString, int> places;
    for (const HelpBook::Page &page : pages) {
        for (const HelpBook::Section &section : page.sections) {
            for (const QString &keyword : section.keywords)
                ++places[keyword.toCaseFolded()];
        }
    }
    std::vector<HelpBook::Entry> entries;
    for (const HelpBook::Page &page : pages) {
        for (const HelpBook::Section &section : page.sections) {
            for (const QString &keyword : section.keywords) {
                const QString where = places[keyword.toCaseFolded()] > 1
                                          ? u" (%1)"_s.arg(page.sections.front().title)
                                          : QString();
                entries.push_back({keyword + where, section.target});
            }
        }
    }
    QCollator order(QLocale(QLocale::NorwegianBokmal, QLocale::Norway));
    order.setCaseSensitivity(Qt::CaseInsensitive);
    std::ranges::stable_sort(entries, order, &HelpBook::Entry::text);
    return entries;
}

} // namespace

HelpBook::HelpBook(const QString &folder)
{
    QStringList names{kContents.toString()};
    for (qsizetype i = 0; i < names.size(); ++i) {
        QFile file(folder + u'/' + names[i]);
        if (!file.open(QIODevice::ReadOnly))
            continue;
        PageReader reader(file, names[i]);
        if (!reader.read())
            continue;
        if (names[i] == kContents)
            names += reader.links;
        m_pages.push_back(std::move(reader.page));
    }
    m_keywords = keywordsOf(m_pages);
}

std::vector<HelpBook::Entry> HelpBook::keywords(const QString &part) const
{
    std::vector<Entry> found;
    std::ranges::copy_if(m_keywords, std::back_inserter(found), [&](const Entry &entry) {
        return entry.text.contains(part.simplified(), Qt::CaseInsensitive);
    });
    return found;
}

std::vector<HelpBook::Entry> HelpBook::pagesWith(const QString &words) const
{
    const QStringList sought = wordsOf(words);
    std::vector<Entry> found;
    for (const Page &page : m_pages) {
        const bool hasAll = std::ranges::all_of(sought, [&](const QString &word) {
            return page.text.contains(word, Qt::CaseInsensitive);
        });
        if (hasAll && !sought.isEmpty())
            found.push_back({page.sections.front().title, page.sections.front().target});
    }
    return found;
}

QStringList HelpBook::wordsOf(const QString &words)
{
    return words.simplified().split(u' ', Qt::SkipEmptyParts);
}
